// The scenario step that plays a program.
#include "play_step.h"

#include "host_window.h"
#include "program_playback.h"
#include "station.h"
#include "station_view.h"

#include "vorlik/item_types.h"

#include <QJsonArray>

namespace play_step {

bool play(Station& station, HostWindow& window, const QString& name, QJsonObject* record, QString* problem)
{
    const SimItem* program = station.find(name, ItemType::Program);
    if (!program) {
        *problem = QStringLiteral("no program \"%1\" to play").arg(name);
        return false;
    }
    const ProgramPlayback playback = playbackOf(station, program);
    if (auto* view = qobject_cast<StationView*>(window.centralWidget()))
        view->playProgram(program);
    QJsonArray configurations;
    for (const std::vector<double>& configuration : playback.configurations) {
        QJsonArray joints;
        for (double value : configuration)
            joints.append(value);
        configurations.append(joints);
    }
    record->insert(QStringLiteral("program"), name);
    record->insert(QStringLiteral("robot"), playback.robot ? QJsonValue(playback.robot->itemName()) : QJsonValue());
    record->insert(QStringLiteral("configurations"), configurations);
    return true;
}

}  // namespace play_step
