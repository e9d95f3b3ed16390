// The scenario step that plays a program.
#pragma once

#include <QJsonObject>
#include <QString>

class HostWindow;
class Station;

namespace play_step {

// Plays the program of that name as the window's playback does, in its 3D
// view when the window shows one, without waiting: the "play" record of the
// program, its robot and every configuration the playback shows, in order.
// False and the problem when the station has no such program.
bool play(Station& station, HostWindow& window, const QString& name, QJsonObject* record, QString* problem);

}  // namespace play_step
