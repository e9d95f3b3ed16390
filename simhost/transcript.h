#pragma once

#include <QFile>
#include <QJsonObject>
#include <QString>
#include <QtGlobal>

// The JSON-lines transcript of a run: one record a line, written and flushed
// as things happen, so that a run that dies still leaves what it did.
class Transcript {
public:
    Transcript() = default;
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;
    ~Transcript();

    // Starts the file; without a path records are dropped.
    bool open(const QString& path, QString* error);
    void write(const QJsonObject& record);
    void writeError(const QString& text);
    // Also prints a readable line for each record a person cares about.
    void setEcho(bool echo) { echo_ = echo; }

    // Turns Qt's debug log into "log" records, one a line, until released.
    void captureLog();
    void releaseLog();

private:
    static void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

    QFile file_;
    QtMessageHandler previous_ = nullptr;
    bool capturing_ = false;
    bool echo_ = false;
};
