// The docks of the control form that the plug-in opened.
#pragma once

#include <QPointer>

#include <vector>

class FormPRM;
class QDockWidget;
class QObject;

// Every dock of the control form the plug-in opened that still exists. The
// plug-in's own field names the open one; this list is what an unload closes,
// whatever that field was told meanwhile (another plug-in may invoke the slot
// that clears it while the dock stays open).
class FormDocks {
public:
    void add(QDockWidget* dock, FormPRM* form);
    // Closes every open dock after cutting its form off from `plugin` and the
    // host: it reports nothing and starts nothing more. True when there was
    // one. The docks are deleted later, as one may be closed from inside a
    // signal of its own form.
    bool closeAll(QObject* plugin);
    // Deletes at once every dock still there, closed or not: the plug-in
    // itself goes, and its code may go with it.
    void deleteAll(QObject* plugin);

private:
    struct Opened {
        QPointer<QDockWidget> dock;
        QPointer<FormPRM> form;
        bool closed = false;
    };
    void cutOff(Opened& opened, QObject* plugin);

    std::vector<Opened> opened_;
};
