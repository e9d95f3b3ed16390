// The JSON-lines transcript of a run.
#pragma once

#include <QFile>
#include <QJsonObject>
#include <QString>
#include <QtGlobal>

// The JSON-lines transcript of a run: one record a line. Records are kept in
// a buffer written out every 64 KB, before anything is printed and at the end;
// a run that dies of a signal writes the buffer out first, so that it still
// leaves what it did.
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
    // The two records written by the ten thousand, without building a JSON object.
    void writeLog(const QString& text);
    void writeProgress(const QString& title, const QString& label, int value);
    // Writes the buffered records out.
    void flush();
    // Also prints a readable line for each record a person cares about.
    void setEcho(bool echo) { echo_ = echo; }
    // Whether a record goes anywhere: to the file or to the screen.
    bool recording() const { return echo_ || file_.isOpen(); }

    // Turns Qt's debug log into "log" records, one a line, until released.
    void captureLog();
    void releaseLog();

private:
    void flushWhenFull();
    static void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

    QFile file_;
    QByteArray buffer_;
    QtMessageHandler previous_ = nullptr;
    bool capturing_ = false;
    bool echo_ = false;
};
