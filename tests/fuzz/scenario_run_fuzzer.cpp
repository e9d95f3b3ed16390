// Fuzzes vorlik-sim as a whole, in process: a station and a scenario of any
// steps (nested "during" steps, "cancelAt", unload and load, another station
// opened, stations saved) run as `vorlik-sim STATION --script SCENARIO` runs
// them, with the real plug-in loaded from its file. The input is the
// station's JSON, a NUL byte, the scenario's JSON and, optionally, a NUL byte
// and the bytes of a map record that the station then stores as its first
// robot's map. The same station is also there as "other.json", for
// "openStation" steps.
//
// Inputs that would only make a run long, not different, are skipped: maps
// of more than MostSamples samples, robots with a 3D model (the cell has
// fuzzers and tests of its own), and joint boxes that leave a robot almost
// no free configuration (the sampler then searches until cancelled, as it
// must). File names are kept inside the run's own folder.
#include "host_run.h"
#include "station.h"
#include "station_file.h"

#include "vorlik/item_types.h"

#include <QApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLibrary>
#include <QTemporaryDir>

#include <cmath>
#include <cstdint>
#include <random>

namespace {

constexpr int MostSamples = 150;

// The run's folder. Runs work in it, so that the plug-in's "Save" writes there
// too. In memory where the system offers it: every run writes its files anew,
// and on a disk their truncation costs more than the run.
const QTemporaryDir& folder()
{
    // Removed with its files when the process ends.
    static const QTemporaryDir made = [] {
        const QFileInfo memory(QStringLiteral("/dev/shm"));
        return memory.isDir() && memory.isWritable()
                   ? QTemporaryDir(QStringLiteral("/dev/shm/scenario_run_fuzz-XXXXXX"))
                   : QTemporaryDir();
    }();
    return made;
}

QApplication& application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt wants a private runtime folder; the run's own will do.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", folder().path().toLocal8Bit());
    static int argc = 1;
    static char name[] = "scenario_run_fuzz";
    static char* argv[] = {name, nullptr};
    // Never destroyed, as in the host: the process ends with the run.
    static QApplication* app = new QApplication(argc, argv);
    return *app;
}

bool writeFile(const QString& name, const QByteArray& bytes)
{
    QFile file(QDir(folder().path()).filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A file name that stays in the folder.
bool plainName(const QString& name)
{
    return !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) && !name.startsWith(QLatin1Char('.'));
}

double numberOf(const QJsonValue& value)
{
    return value.isString() ? value.toString().toDouble() : value.toDouble();
}

// False for a step (or one nested in it) that would write outside the
// folder or ask for a large map.
bool harmless(const QJsonValue& value)
{
    const QJsonObject step = value.toObject();
    for (const char* key : {"saveStation", "openStation"}) {
        if (step.contains(QLatin1String(key)) && !plainName(step.value(QLatin1String(key)).toString()))
            return false;
    }
    const QString command = step.value(QStringLiteral("command")).toString();
    if (command.startsWith(QLatin1String("save"), Qt::CaseInsensitive)
        && !plainName(step.value(QStringLiteral("value")).toString()))
        return false;
    if (command.startsWith(QLatin1String("samples"), Qt::CaseInsensitive)
        && numberOf(step.value(QStringLiteral("value"))) > MostSamples)
        return false;
    const QJsonObject setValue = step.value(QStringLiteral("setValue")).toObject();
    if (setValue.value(QStringLiteral("widget")).toString() == QLatin1String("spnSamples")
        && numberOf(setValue.value(QStringLiteral("value"))) > MostSamples)
        return false;
    for (const QJsonValue& nested : step.value(QStringLiteral("during")).toObject().value(QStringLiteral("steps")).toArray()) {
        if (!harmless(nested))
            return false;
    }
    return true;
}

// The sample count a stored settings record asks for, or 0.
int storedSampleCount(const Station& station)
{
    QDataStream stream(station.data.value(QStringLiteral("Zelvane")));
    qint32 samples = 0;
    stream >> samples;
    return samples;
}

// True when random configurations of each robot are free often enough for
// the sampler to find some (the other robots stand where they are).
bool robotsCanMove(Station& station)
{
    std::mt19937 random(1);
    const std::vector<SimItem*> robots = station.items(ItemType::Robot);
    for (SimItem* robot : robots) {
        if (robot->arm)
            return false;
        for (size_t i = 0; i < robot->lower.size(); ++i) {
            // A range too wide for a double: every draw falls beyond the limits.
            if (!std::isfinite(robot->upper[i] - robot->lower[i]))
                return false;
        }
        const std::vector<double> kept = robot->jointValues;
        int free = 0;
        for (int trial = 0; trial < 100; ++trial) {
            std::vector<double> q(robot->lower.size());
            for (size_t i = 0; i < q.size(); ++i)
                q[i] = std::uniform_real_distribution<double>(robot->lower[i], robot->upper[i])(random);
            robot->jointValues = q;
            free += station.collisions() == 0;
        }
        robot->jointValues = kept;
        if (free < 3)
            return false;
    }
    return station.items(ObjectType).empty();
}

// The station's text with the record stored as its first robot's map.
QByteArray withRecord(const QByteArray& station, const QByteArray& record)
{
    QJsonObject root = QJsonDocument::fromJson(station).object();
    const QString robot = root.value(QStringLiteral("robots")).toArray().first().toObject().value(QStringLiteral("name")).toString();
    QJsonObject data = root.value(QStringLiteral("data")).toObject();
    data.insert(QStringLiteral("Zelvane-Rob ") + robot, QString::fromLatin1(record.toBase64()));
    root.insert(QStringLiteral("data"), data);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    application();
    folder();
    // Loaded for good before the first run, as a host keeps its plug-ins:
    // its code (and its coverage counters) stay where they are.
    static QLibrary plugin(QStringLiteral(ZELVANE_PLUGIN_PATH));
    plugin.load();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const int initialized = LLVMFuzzerInitialize(nullptr, nullptr);
    (void)initialized;
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    QList<QByteArray> parts = input.split('\0');
    if (parts.size() < 2)
        return 0;
    QByteArray station = parts[0];
    if (parts.size() > 2)
        station = withRecord(station, input.mid(parts[0].size() + parts[1].size() + 2));

    QString problem;
    std::unique_ptr<Station> parsed = station_file::parse(station, &problem, folder().path());
    if (parsed && (!robotsCanMove(*parsed) || storedSampleCount(*parsed) > MostSamples))
        return 0;
    const QJsonArray steps = QJsonDocument::fromJson(parts[1]).object().value(QStringLiteral("steps")).toArray();
    for (const QJsonValue& step : steps) {
        if (!harmless(step))
            return 0;
    }
    if (!writeFile(QStringLiteral("station.json"), station) || !writeFile(QStringLiteral("other.json"), station)
        || !writeFile(QStringLiteral("scenario.json"), parts[1]))
        return 0;

    RunOptions options;
    const QDir here(folder().path());
    options.station = here.filePath(QStringLiteral("station.json"));
    options.script = here.filePath(QStringLiteral("scenario.json"));
    options.transcript = here.filePath(QStringLiteral("transcript.jsonl"));
    options.plugin = QStringLiteral(ZELVANE_PLUGIN_PATH);
    const QString working = QDir::currentPath();
    QDir::setCurrent(folder().path());
    runScenario(options);
    QDir::setCurrent(working);
    return 0;
}
