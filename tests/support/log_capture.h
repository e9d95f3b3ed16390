#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

// Collects Qt's debug log while it lives; one entry per message.
class LogCapture {
public:
    LogCapture()
    {
        lines().clear();
        previous_ = qInstallMessageHandler(&LogCapture::collect);
    }
    ~LogCapture() { qInstallMessageHandler(previous_); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const QStringList& messages() const { return lines(); }
    int countStartingWith(const QString& prefix) const
    {
        int count = 0;
        for (const QString& line : lines())
            if (line.startsWith(prefix))
                ++count;
        return count;
    }

private:
    static QStringList& lines()
    {
        static QStringList collected;
        return collected;
    }
    static void collect(QtMsgType, const QMessageLogContext&, const QString& message) { lines().append(message); }

    QtMessageHandler previous_ = nullptr;
};
