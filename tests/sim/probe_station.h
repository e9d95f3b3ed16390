#pragma once

// A station with a frame, one three-joint robot with one obstacle box, two
// targets and a program.
extern const char* const probeStation;
