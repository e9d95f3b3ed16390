// Paints the station's 3D view into a PNG file.
#pragma once

#include <QSize>
#include <QString>

class SimHostApi;

// Paints the 3D view of the station, as the window's view would show it with
// the whole station in sight, into a PNG file; false and a message naming the
// file when it cannot be written.
bool renderStation(SimHostApi& api, const QString& path, const QSize& size, QString* error);
