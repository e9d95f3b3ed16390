#include "sim_process.h"

#include <QFile>
#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>



std::vector<QJsonObject> SimRun::ofType(const QString& type) const
{
    std::vector<QJsonObject> found;
    for (const QJsonObject& record : records) {
        if (record.value(QStringLiteral("type")).toString() == type)
            found.push_back(record);
    }
    return found;
}

QJsonObject SimRun::single(const QString& type) const
{
    const auto found = ofType(type);
    EXPECT_EQ(found.size(), 1u) << "records of type " << type.toStdString();
    return found.size() == 1 ? found.front() : QJsonObject();
}

QString SimFolder::write(const QString& name, const QByteArray& contents) const
{
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
    return file.fileName();
}

QByteArray SimFolder::read(const QString& name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

SimRun SimFolder::run(const QString& station, const QString& scenario, const QStringList& more) const
{
    return runWith(QStringList{path(station), QStringLiteral("--script"), path(scenario), QStringLiteral("--transcript"),
                               path(QStringLiteral("out.jsonl")), QStringLiteral("--plugin"), plugin_}
                   + more);
}

SimRun SimFolder::runWith(const QStringList& arguments) const
{
    QProcess process;
    process.start(QStringLiteral(VORLIK_SIM_PATH), arguments);
    SimRun run;
    if (!process.waitForFinished(timeLimitMs_)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "vorlik-sim did not finish";
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.errorOutput = QString::fromLocal8Bit(process.readAllStandardError());
    const int transcriptAt = arguments.indexOf(QStringLiteral("--transcript"));
    if (transcriptAt < 0)
        return run;
    QFile transcript(arguments.value(transcriptAt + 1));
    if (!transcript.open(QIODevice::ReadOnly))
        return run;
    for (const QByteArray& line : transcript.readAll().split('\n')) {
        if (line.isEmpty())
            continue;
        const QJsonDocument document = QJsonDocument::fromJson(line);
        EXPECT_TRUE(document.isObject()) << "transcript line: " << line.toStdString();
        run.records.push_back(document.object());
    }
    return run;
}
