// The byte format of a robot's stored map.
#pragma once

#include <QByteArray>
#include <QString>

class RoadmapGraph;
struct RoadmapMatrix;

// The robot map record: the samples, the graph and the last route, each in
// the binary matrix format (int32 dimension count, the int32 sizes, then the
// float64 elements column by column, all big-endian as QDataStream writes
// them). The graph is stored as its dense N x N matrix, the one format users'
// stations hold; it is written from and read into the sparse working form
// without ever holding the dense matrix in memory.

// The record, or a null array (and `problem` set) when it would be too large
// or its memory cannot be had.
QByteArray encodeRobotMap(const RoadmapMatrix* samples, const RoadmapGraph* graph, const RoadmapMatrix* route,
                          QString* problem);

// Reads a record into the three parts, logging as the planner always has
// ("Loading matrix of dimensions: ", "No data to read"). A record that is
// damaged or was not built for a robot of `jointCount` joints is not used: the
// result is false, `problem` says what is wrong, and the three are left empty.
bool decodeRobotMap(const QByteArray& bytes, int jointCount, RoadmapMatrix* samples, RoadmapGraph* graph,
                    RoadmapMatrix* route, QString* problem);
