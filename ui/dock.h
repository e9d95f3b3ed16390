// Docks of the host's main window.
#pragma once

#include <Qt>

class QDockWidget;
class QMainWindow;
class QString;
class QWidget;

// Puts the widget into a new dock of the main window and shows it. Area 0
// (no dock area) makes the dock float.
QDockWidget* createDock(QMainWindow* mainWindow, QWidget* widget, const QString& title,
                        Qt::DockWidgetAreas allowedAreas, Qt::DockWidgetArea area, bool closable, bool deleteOnClose);
