// The docks of the control form that the plug-in opened.
#include "form_docks.h"

#include "form_prm.h"

#include <QCoreApplication>
#include <QDockWidget>

#include <algorithm>
#include <utility>

void FormDocks::add(QDockWidget* dock, FormPRM* form)
{
    // Docks that are gone need no place.
    opened_.erase(std::remove_if(opened_.begin(), opened_.end(), [](const Opened& o) { return !o.dock; }),
                  opened_.end());
    opened_.push_back({dock, form, false});
}

void FormDocks::cutOff(Opened& opened, QObject* plugin)
{
    opened.closed = true;
    FormPRM* form = opened.form;
    if (!form)
        return;
    QObject::disconnect(form, nullptr, plugin, nullptr);
    QObject::disconnect(plugin, nullptr, form, nullptr);
    // A refresh already queued would reach the host after the unload.
    QCoreApplication::removePostedEvents(form, QEvent::MetaCall);
    form->release();
}

bool FormDocks::closeAll(QObject* plugin)
{
    bool closed = false;
    for (Opened& opened : opened_) {
        if (!opened.dock || opened.closed)
            continue;
        cutOff(opened, plugin);
        opened.dock->close();
        closed = true;
    }
    return closed;
}

void FormDocks::deleteAll(QObject* plugin)
{
    for (Opened& opened : std::exchange(opened_, {})) {
        if (!opened.dock)
            continue;
        cutOff(opened, plugin);
        delete opened.dock.data();
    }
}
