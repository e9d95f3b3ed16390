#include "transcript.h"

#include "record_printer.h"

#include <QJsonDocument>

#include <cstdio>
#include <cstdlib>

namespace {

Transcript* logTarget = nullptr;

}  // namespace

Transcript::~Transcript()
{
    releaseLog();
}

bool Transcript::open(const QString& path, QString* error)
{
    if (path.isEmpty())
        return true;
    file_.setFileName(path);
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        *error = QStringLiteral("%1: cannot write the transcript: %2").arg(path, file_.errorString());
        return false;
    }
    return true;
}

void Transcript::write(const QJsonObject& record)
{
    if (echo_) {
        const QString line = describeRecord(record);
        if (!line.isEmpty()) {
            std::fprintf(stdout, "%s\n", qUtf8Printable(line));
            std::fflush(stdout);
        }
    }
    if (!file_.isOpen())
        return;
    file_.write(QJsonDocument(record).toJson(QJsonDocument::Compact));
    file_.write("\n");
    file_.flush();
}

void Transcript::writeError(const QString& text)
{
    write(QJsonObject{{QStringLiteral("type"), QStringLiteral("error")}, {QStringLiteral("text"), text}});
}

void Transcript::captureLog()
{
    if (capturing_)
        return;
    logTarget = this;
    previous_ = qInstallMessageHandler(&Transcript::handleMessage);
    capturing_ = true;
}

void Transcript::releaseLog()
{
    if (!capturing_)
        return;
    qInstallMessageHandler(previous_);
    logTarget = nullptr;
    capturing_ = false;
}

void Transcript::handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    QStringList lines = message.split(QLatin1Char('\n'));
    if (lines.size() > 1 && lines.last().isEmpty())
        lines.removeLast();
    if (logTarget) {
        for (const QString& line : lines)
            logTarget->write(QJsonObject{{QStringLiteral("type"), QStringLiteral("log")},
                                         {QStringLiteral("text"), line}});
    }
    // Debug lines are many and only of interest in the transcript; warnings also
    // reach the person running the host.
    if (type != QtDebugMsg && type != QtInfoMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    if (type == QtFatalMsg)
        std::abort();
}
