// Putting a widget into a dock of the host's main window.
#include "dock.h"

#include <QDebug>
#include <QDockWidget>
#include <QMainWindow>

QDockWidget* createDock(QMainWindow* mainWindow, QWidget* widget, const QString& title,
                        Qt::DockWidgetAreas allowedAreas, Qt::DockWidgetArea area, bool closable, bool deleteOnClose)
{
    auto* dock = new QDockWidget(title, mainWindow, Qt::WindowFlags());
    dock->setObjectName(title);
    QDockWidget::DockWidgetFeatures features = QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable;
    if (closable)
        features |= QDockWidget::DockWidgetClosable;
    dock->setFeatures(features);
    dock->setWidget(widget);
    if (deleteOnClose)
        dock->setAttribute(Qt::WA_DeleteOnClose);
    dock->setAllowedAreas(allowedAreas);
    qDebug().noquote().nospace() << "Adding new docked window: " << title;
    if (area == Qt::NoDockWidgetArea) {
        dock->setFloating(true);
        dock->show();
    } else {
        mainWindow->addDockWidget(area, dock);
    }
    dock->setVisible(true);
    return dock;
}
