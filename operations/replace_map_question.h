// The "Replace map" question after a cancelled computation.
#pragma once

class QWidget;

// Asks whether a map whose computation was cancelled should replace the stored
// one. Only an explicit Yes counts; No, Cancel and closing the box keep the map.
bool askReplaceMap(QWidget* parent);
