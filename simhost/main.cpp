// vorlik-sim's entry: reads the command line and starts a run of the host.
#include "host_run.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>
#include <cstring>

namespace {

bool given(int argc, char** argv, const char* option)
{
    const size_t length = std::strlen(option);
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], option, length) == 0)
            return true;
    }
    return false;
}

bool haveDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool sameFile(const QString& a, const QString& b)
{
    return !a.isEmpty() && !b.isEmpty() && QFileInfo(a).absoluteFilePath() == QFileInfo(b).absoluteFilePath();
}

// The plug-in loaded when none is named: the one built beside the program (a
// build tree), else the one installed with it under the same prefix. When
// neither is there, the message names the first.
QString defaultPlugin()
{
    const QDir here(QApplication::applicationDirPath());
    const QString beside = here.filePath(QStringLiteral("libzelvane.so"));
    const QString installed = QDir::cleanPath(here.filePath(QStringLiteral("../lib/vorlik/plugins/libzelvane.so")));
    return !QFileInfo::exists(beside) && QFileInfo::exists(installed) ? installed : beside;
}

int usageError(const QString& message)
{
    std::fprintf(stderr, "vorlik-sim: %s\n", qUtf8Printable(message));
    return 2;
}

}  // namespace

// Qt warns at every start when the session has no runtime folder (as in CI
// and containers); a private one of our own keeps the output clean.
static void ensureRuntimeFolder()
{
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QByteArray folder = QDir::tempPath().toLocal8Bit() + "/vorlik-sim-runtime-" + QByteArray::number(getuid());
    ::mkdir(folder.constData(), 0700);
    struct stat info {};
    if (::stat(folder.constData(), &info) == 0 && info.st_uid == getuid() && (info.st_mode & 0777) == 0700)
        qputenv("XDG_RUNTIME_DIR", folder);
}

int main(int argc, char** argv)
{
    ensureRuntimeFolder();
    // A scripted run shows nothing and needs no display, unless the window or a picture of it is asked for.
    const bool showsWindow = given(argc, argv, "--gui") || given(argc, argv, "--screenshot");
    const bool scripted = given(argc, argv, "--script");
    const bool help = given(argc, argv, "--help") || given(argc, argv, "-h");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        if ((scripted && !showsWindow) || help)
            qputenv("QT_QPA_PLATFORM", "offscreen");
        else if (!haveDisplay())
            return usageError(QStringLiteral("no display to show the window on: run it under a display, "
                                             "or give --script SCENARIO.json to run without a window"));
    }
    // The host's options are read before Qt sees them: Qt would take "--plugin" for its own.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    int qtArgc = 1;
    QApplication app(qtArgc, argv);
    QApplication::setApplicationName(QStringLiteral("vorlik-sim"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The simulated Vorlik host."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("station"),
                                 QStringLiteral("The station file to open (the window may start without one)."),
                                 QStringLiteral("[station]"));
    parser.addOption({QStringLiteral("script"), QStringLiteral("Run this scenario headless."), QStringLiteral("scenario")});
    parser.addOption({QStringLiteral("transcript"), QStringLiteral("Write the transcript (JSON lines) here."),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("plugin"), QStringLiteral("The plug-in file to load."), QStringLiteral("file")});
    parser.addOption({QStringLiteral("save"), QStringLiteral("Save the station here after the run."),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("print"), QStringLiteral("Print what happened, readably, as it happens.")});
    parser.addOption({QStringLiteral("gui"), QStringLiteral("Show the window and leave it to you (after the scenario).")});
    parser.addOption({QStringLiteral("screenshot"),
                      QStringLiteral("Write a PNG picture of the window once the scenario has run."),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("render"),
                      QStringLiteral("Write a PNG picture of the 3D view of the station once the scenario has run."),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("verbose"),
                      QStringLiteral("With the window, print the plug-in's debug log, not only its warnings.")});
    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    const QStringList stations = parser.positionalArguments();
    if (stations.size() > 1 || (stations.isEmpty() && parser.isSet(QStringLiteral("script"))))
        return usageError(QStringLiteral("give exactly one station file (see --help)"));

    RunOptions options;
    options.station = stations.value(0);
    options.script = parser.value(QStringLiteral("script"));
    options.transcript = parser.value(QStringLiteral("transcript"));
    options.save = parser.value(QStringLiteral("save"));
    options.print = parser.isSet(QStringLiteral("print"));
    options.gui = parser.isSet(QStringLiteral("gui"));
    options.screenshot = parser.value(QStringLiteral("screenshot"));
    options.render = parser.value(QStringLiteral("render"));
    options.verbose = parser.isSet(QStringLiteral("verbose"));
    options.plugin = parser.isSet(QStringLiteral("plugin"))
                         ? parser.value(QStringLiteral("plugin"))
                         : defaultPlugin();
    // Outputs never overwrite the files the run reads.
    for (const QString& output : {options.transcript, options.save, options.screenshot, options.render}) {
        for (const QString& input : {options.station, options.script}) {
            if (sameFile(output, input))
                return usageError(QStringLiteral("%1: an output file cannot also be an input").arg(output));
        }
    }
    if (!options.render.isEmpty() && options.script.isEmpty())
        return usageError(QStringLiteral("--render draws the station after a scenario: give --script too"));
    return options.script.isEmpty() ? runWindow(options) : runScenario(options);
}
