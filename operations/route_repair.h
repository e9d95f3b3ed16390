// Checking a found route against the cell as it is now.
#pragma once

class OperationScope;

// A stored map can be older than the cell: an object added since may stand
// across an edge. The moves of the route just found (the map's route, from
// node `start` to node `end`, 0-based) are tested again with the host's
// joint-move test; a move the host now refuses loses its edge in the map (that
// edge only), and the search runs again, until every move of the route is free
// or no route is left. True when the route is free; `removed` counts the
// edges taken out of the map.
bool repairRoute(OperationScope& operation, int start, int end, int* removed);
