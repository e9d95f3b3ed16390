// The JSON-lines transcript of a run.
#include "transcript.h"

#include "record_json.h"
#include "record_printer.h"

#include <QJsonObject>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <signal.h>
#include <unistd.h>

namespace {

Transcript* logTarget = nullptr;

constexpr int BufferBytes = 64 * 1024;

// The transcript open in this process and its buffer, for a run that dies.
int dyingFile = -1;
const QByteArray* dyingBuffer = nullptr;

// The signals a run dies of, and what handled them before (a sanitizer's report, say).
constexpr int FatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
struct sigaction previousHandlers[std::size(FatalSignals)];

extern "C" void writeTranscriptAndDie(int signal)
{
    if (dyingFile >= 0 && dyingBuffer) {
        const char* data = dyingBuffer->constData();
        ssize_t left = dyingBuffer->size();
        while (left > 0) {
            const ssize_t done = ::write(dyingFile, data, size_t(left));
            if (done <= 0)
                break;
            data += done;
            left -= done;
        }
    }
    // The earlier handler, or the default one, then deals with the signal.
    for (size_t i = 0; i < std::size(FatalSignals); ++i) {
        if (FatalSignals[i] == signal)
            sigaction(signal, &previousHandlers[i], nullptr);
    }
    std::raise(signal);
}

}  // namespace

Transcript::~Transcript()
{
    releaseLog();
    flush();
    if (dyingBuffer == &buffer_) {
        dyingBuffer = nullptr;
        dyingFile = -1;
    }
}

bool Transcript::open(const QString& path, QString* error)
{
    if (path.isEmpty())
        return true;
    file_.setFileName(path);
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        *error = QStringLiteral("%1: cannot write the transcript: %2").arg(path, file_.errorString());
        return false;
    }
    buffer_.reserve(BufferBytes + 4096);
    dyingFile = file_.handle();
    dyingBuffer = &buffer_;
    static bool handling = false;  // once a process: a second time would keep ours as the earlier one
    if (!handling) {
        handling = true;
        struct sigaction handler {};
        handler.sa_handler = writeTranscriptAndDie;
        sigemptyset(&handler.sa_mask);
        for (size_t i = 0; i < std::size(FatalSignals); ++i)
            sigaction(FatalSignals[i], &handler, &previousHandlers[i]);
    }
    return true;
}

void Transcript::write(const QJsonObject& record)
{
    if (echo_) {
        const QString line = describeRecord(record);
        if (!line.isEmpty()) {
            // What a person sees is in the file too.
            flush();
            std::fprintf(stdout, "%s\n", qUtf8Printable(line));
            std::fflush(stdout);
        }
    }
    if (!file_.isOpen())
        return;
    record_json::append(buffer_, record);
    flushWhenFull();
}

// --print shows neither debug lines nor progress: these go to the file alone.
void Transcript::writeLog(const QString& text)
{
    if (!file_.isOpen())
        return;
    record_json::appendLog(buffer_, text);
    flushWhenFull();
}

void Transcript::writeProgress(const QString& title, const QString& label, int value)
{
    if (!file_.isOpen())
        return;
    record_json::appendProgress(buffer_, title, label, value);
    flushWhenFull();
}

void Transcript::flushWhenFull()
{
    if (buffer_.size() >= BufferBytes)
        flush();
}

void Transcript::flush()
{
    if (!file_.isOpen() || buffer_.isEmpty())
        return;
    // The file is unbuffered: this goes straight to the system.
    file_.write(buffer_);
    buffer_.resize(0);  // keeps the reserved room
}

void Transcript::writeError(const QString& text)
{
    write(QJsonObject{{QStringLiteral("type"), QStringLiteral("error")}, {QStringLiteral("text"), text}});
    flush();
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
    if (logTarget && logTarget->recording()) {
        // Nearly every message is one line: it goes as it is, without a list of lines.
        if (!message.contains(QLatin1Char('\n'))) {
            logTarget->writeLog(message);
        } else {
            QStringList lines = message.split(QLatin1Char('\n'));
            if (lines.last().isEmpty())
                lines.removeLast();
            for (const QString& line : lines)
                logTarget->writeLog(line);
        }
    }
    // Debug lines are many and only of interest in the transcript; warnings also
    // reach the person running the host.
    if (type != QtDebugMsg && type != QtInfoMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    if (type == QtFatalMsg) {
        if (logTarget)
            logTarget->flush();
        std::abort();
    }
}
