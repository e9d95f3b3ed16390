// The text command language through which the host and scripts drive the planner.
#include "command_language.h"

#include "guarded_operations.h"
#include "matrix_text.h"
#include "planner_session.h"
#include "translate.h"
#include "vorlik/host_api.h"
#include "vorlik/item_types.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QTextStream>

#include <cmath>
#include <limits>

namespace {
// The most samples a failed link may add (the form's largest value): more than any map a station keeps.
constexpr double MostGrowth = 100000.0;

bool startsWith(const QString& command, const char* keyword)
{
    return command.startsWith(QLatin1String(keyword), Qt::CaseInsensitive);
}

// Truncated toward zero; values beyond the 32-bit range stop at its ends
// (a plain conversion of such a value would be undefined).
int truncatedSetting(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 2147483647.0)
        return std::numeric_limits<int>::max();
    if (value <= -2147483648.0)
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}
}  // namespace

bool CommandLanguage::selectRobot(bool autoSelect, const QString& name)
{
    // The plug-in's own choice, as its slots make it.
    return session_.selectRobot(autoSelect, name);
}

QString CommandLanguage::run(const QString& command, const QString& value)
{
    PlannerSession& session = session_;
    qDebug().noquote().nospace() << "Received command: " << command;
    qDebug().noquote().nospace() << "    With value: " << value;
    // While an operation runs its robot is chosen; none is chosen under it.
    if (!session.robot() && !session.busy())
        selectRobot(true, QString());

    if (startsWith(command, "Join"))
        return joinCommand(command, value);
    if (startsWith(command, "Calc")) {
        GuardedOperations(session).calculateMap();
        return QStringLiteral("Done");
    }
    if (startsWith(command, "Add")) {
        GuardedOperations(session).addTargetsToMap(true, true);
        return QStringLiteral("Done");
    }
    if (startsWith(command, "Clear")) {
        if (session.busy()) {
            session.refuseWhileBusy(true);
            return PlannerSession::busyText();
        }
        session.resetToDefaults();
        session.markChanged();
        return QStringLiteral("Done");
    }
    if (startsWith(command, "SelectRobot")) {
        selectRobot(true, value);
        return session.robotName();
    }
    if (startsWith(command, "Info")) {
        return QStringLiteral("%1-%2-%3")
            .arg(session.map().sampleCount())
            .arg(session.map().edgeCount())
            .arg(session.robotName());
    }
    if (startsWith(command, "Save"))
        return saveCommand(command, value);
    return settingCommand(command, value);
}

// "Join" links two targets when both names are targets, otherwise every name as a program.
QString CommandLanguage::joinCommand(const QString& command, const QString& value)
{
    HostApi* hostApi = session_.host();
    const QStringList commandParts = command.split('=', Qt::SkipEmptyParts);
    const QString requestedName = commandParts.size() >= 2 ? commandParts.at(1) : QString();
    const QStringList names = value.split('|', Qt::KeepEmptyParts);

    HostItem* first = hostApi->getItem(names.at(0), ItemType::Target);
    HostItem* second = names.size() >= 2 ? hostApi->getItem(names.at(1), ItemType::Target) : nullptr;
    if (first && second) {
        HostItem* program = GuardedOperations(session_).joinTargets(true, first, second);
        if (!program)
            return QStringLiteral("Failed");
        if (!requestedName.isEmpty())
            program->setName(requestedName);
        else if (names.size() >= 3)
            program->setName(names.at(2));
        return QStringLiteral("Success");
    }

    QList<Item> programs;
    for (const QString& name : names) {
        HostItem* program = hostApi->getItem(name, ItemType::Program);
        if (!program)
            return QStringLiteral("Failed. Invalid program: ") + name;
        programs << program;
    }
    return GuardedOperations(session_).joinPrograms(true, programs, requestedName) ? QStringLiteral("Success")
                                                                                    : QStringLiteral("Failed");
}

// "Save" writes the samples, "SaveMap" the graph, as comma-separated text.
QString CommandLanguage::saveCommand(const QString& command, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return QCoreApplication::translate("PluginAutoPRM", "Unable to open file for writting: ") + path;
    QTextStream stream(&file);
    const RobotMap& map = session_.map();
    if (command.contains(QLatin1String("Map"), Qt::CaseInsensitive))
        writeGraphText(stream, map.graph(), true);
    else
        writeMatrixText(stream, map.samples(), true);
    stream.flush();
    file.close();
    return QCoreApplication::translate("PluginAutoPRM", "Done");
}

// "Samples", "Edges", "NewNodeEdges", "Display", "Shortcut", "GrowMap",
// "CheckRoutes", and any other keyword with a number.
QString CommandLanguage::settingCommand(const QString& command, const QString& value)
{
    PlannerSession& session = session_;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const bool grow = startsWith(command, "GrowMap");
    const bool check = startsWith(command, "CheckRoutes");
    // The options of a failed link take exactly what they mean: a number of
    // samples from 0, and 1 or 0.
    const bool valid = grow ? isNumber && number >= 0 && number <= MostGrowth && number == std::floor(number)
                     : check ? value == QLatin1String("1") || value == QLatin1String("0")
                             : isNumber;
    if (!valid)
        return QCoreApplication::translate("PluginAutoPRM", "Invalid value");
    if (session.busy()) {
        session.refuseWhileBusy(true);
        return PlannerSession::busyText();
    }
    PlannerSettings settings = session.settings();
    const bool display = startsWith(command, "Display");
    const bool shortcut = startsWith(command, "Shortcut");
    if (startsWith(command, "Samples"))
        settings.samples = truncatedSetting(number);
    else if (startsWith(command, "Edges"))
        settings.edgesPerSample = truncatedSetting(number);
    else if (startsWith(command, "NewNodeEdges"))
        settings.newNodeEdges = truncatedSetting(number);
    else if (display)
        settings.displaySamples = number > 0.0;
    else if (shortcut)
        settings.shortenRoutes = number > 0.0;
    else if (grow)
        settings.growLimit = static_cast<int>(number);
    else if (check)
        settings.checkRoutes = number > 0.0;
    session.changeSettings(settings);
    if (display)
        session.host()->update(1);
    session.notifyChanged();
    return QStringLiteral("OK");
}
