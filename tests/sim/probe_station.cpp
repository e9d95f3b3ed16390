#include "probe_station.h"

const char* const probeStation = R"({
  "params":   { "PathStepCollisionDeg": "4.0" },
  "frames":   [ { "name": "Cell", "parent": null } ],
  "robots":   [ { "name": "Arm1", "parent": "Cell", "lower": [-180, -90, -90], "upper": [180, 90, 90],
                  "joints": [0, 0, 0], "jointBoxes": [ { "lower": [10, -20, -90], "upper": [40, 20, 90] } ],
                  "carries": null } ],
  "targets":  [ { "name": "Home", "robot": "Arm1", "parent": "Cell", "joints": [0, 0, 0] },
                { "name": "Far", "robot": "Arm1", "parent": "Cell", "joints": [60, 0, 0] } ],
  "programs": [ { "name": "P1", "robot": "Arm1", "instructions": [ { "moveJoint": "Home" }, { "moveJoint": "Far" } ] } ]
})";
