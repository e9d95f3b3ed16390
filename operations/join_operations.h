// The joins users start on their selection, from the menu, the form and the commands.
#pragma once

#include "vorlik/host_item.h"

#include <QList>
#include <QString>

class PlannerSession;

// Links what the user selected: programs when the first selected item is a
// program, targets otherwise.
void linkSelection(PlannerSession& session, bool silent);

// Links two targets (the given ones, completed from the selected targets) by a
// new program named after both. Computes the map first when there is none.
Item linkTargets(PlannerSession& session, bool silent, Item target1, Item target2);

// Chains programs: every gap of more than 1.0 between the end of one and the
// start of the next gets a linking program, and a main program calls them all
// in order. False when a needed link could not be made.
bool linkPrograms(PlannerSession& session, bool silent, const QList<Item>& programs, const QString& progname_in);
