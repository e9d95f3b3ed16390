// Handing the map's samples to the robot to show.
#include "show_samples.h"

#include "planner_session.h"
#include "vorlik/host_item.h"

#include <QDebug>

void showSamples(PlannerSession& session)
{
    if (!session.requireRobot(true))
        return;
    qDebug().noquote().nospace() << "Showing robot samples";
    session.robot()->showJointSequence(session.map().samples());
}
