#pragma once

#include "plugin_fixture.h"
#include "dense_graph.h"

#include "form_prm.h"
#include "roadmap_matrix.h"

#include <QDockWidget>

// A loaded plug-in whose control form the tests open, look into and drive.
class FormTest : public LoadedPlugin {
protected:
    void SetUp() override { load(); }

    // Runs the plug-in's "open the form" slot; the form that is open afterwards.
    FormPRM* openForm()
    {
        plugin->callback_robotpilot();
        return openedForm();
    }

    FormPRM* openedForm() const { return window->findChild<FormPRM*>(QStringLiteral("FormPRM")); }

    QDockWidget* dock() const
    {
        return window->findChild<QDockWidget*>(plugin->title());
    }

    template <typename Widget>
    Widget* child(const char* name) const
    {
        FormPRM* form = openedForm();
        return form ? form->findChild<Widget*>(QLatin1String(name)) : nullptr;
    }

    // A map of `count` samples of the robot's joint count, joined in a chain.
    void giveMap(int count, int joints = 3)
    {
        editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
            setSize(samples, joints, count);
            fillZero(samples);
            graph->clear();
            graph->resize(count);
        });
        for (int i = 0; i + 1 < count; ++i)
            editLayout([&](RoadmapMatrix* samples, RoadmapGraph* graph, RoadmapMatrix* route) {
                graph->setLength(i, i + 1, 1.0);
            });
    }

    // Lets queued slots and deferred deletions run.
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};
