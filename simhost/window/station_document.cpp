// The station file a window works on, and whether it holds everything.
#include "station_document.h"

#include <QFileInfo>

QString StationDocument::windowTitle() const
{
    const QString name = path_.isEmpty() ? QStringLiteral("untitled") : QFileInfo(path_).fileName();
    // A "[*]" in a file name would be taken for the mark.
    QString shown = name;
    shown.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
    return shown + QStringLiteral("[*] - Vorlik");
}
