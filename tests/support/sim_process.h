#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <vector>

// One finished run of vorlik-sim and what it left.
struct SimRun {
    int exitCode = -1;
    QString errorOutput;
    std::vector<QJsonObject> records;

    std::vector<QJsonObject> ofType(const QString& type) const;
    // The only record of that type; an empty object (and a test failure) otherwise.
    QJsonObject single(const QString& type) const;
};

// A temporary folder holding the files of one run of vorlik-sim with one plug-in.
class SimFolder {
public:
    explicit SimFolder(const QString& plugin) : plugin_(plugin) {}

    QString path(const QString& name) const { return folder_.filePath(name); }
    QString write(const QString& name, const QByteArray& contents) const;
    QByteArray read(const QString& name) const;

    // Runs the host on the station and scenario in this folder, with the
    // folder's plug-in, writing the transcript "out.jsonl".
    SimRun run(const QString& station, const QString& scenario, const QStringList& more = {}) const;
    // Runs the host with exactly these arguments.
    SimRun runWith(const QStringList& arguments) const;
    // A run still going after this long is stopped and fails (default: a minute).
    void setTimeLimit(int seconds) { timeLimitMs_ = seconds * 1000; }

private:
    QString plugin_;
    int timeLimitMs_ = 60000;
    QTemporaryDir folder_;
};
