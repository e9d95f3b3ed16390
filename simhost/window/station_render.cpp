// Paints the station's 3D view into a PNG file.
#include "station_render.h"

#include "sim_host_api.h"
#include "station_painter.h"

#include <QImage>
#include <QImageWriter>
#include <QPainter>

bool renderStation(SimHostApi& api, const QString& path, const QSize& size, QString* error)
{
    ViewCamera camera;
    camera.setViewSize(size);
    Eigen::Vector3d low, high;
    stationBounds(api.station(), &low, &high);
    camera.frame(low, high);

    ViewScene scene;
    scene.station = &api.station();
    scene.drawings = &api.drawings().shown();
    scene.program = shownProgram(api.station());

    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    {
        QPainter painter(&image);
        paintStation(painter, scene, camera);
    }
    QImageWriter writer(path, "png");
    if (!writer.write(image)) {
        *error = QStringLiteral("%1: cannot write the picture: %2").arg(path, writer.errorString());
        return false;
    }
    return true;
}
