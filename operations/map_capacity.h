// How large a map a station can keep.
#pragma once

#include <cstdint>

// How large a map a station can keep. The map is stored as one record holding
// the samples (J x N), the graph as a dense N x N matrix and the route, each
// element 8 bytes; a station's data parameter holds at most what a QByteArray
// does. So the graph's N^2 decides: about 16,000 samples at the most.

// Bytes one matrix takes in the record: its dimension count, one size per
// dimension, then its elements, 8 bytes each.
int64_t storedMatrixBytes(int dimensionCount, int64_t elementCount);
// Bytes of the record of N samples of J joints with a route of L nodes.
int64_t robotMapRecordSize(int jointCount, int sampleCount, int routeLength);
// The largest record a station can hold.
int64_t largestRobotMapRecord();
// The most samples a map of J joints may have so that its record, with a
// route through every node and the nodes that links add, can be kept.
int largestKeepableSampleCount(int jointCount);
// True when a map of N samples of J joints can be kept.
bool mapCanBeKept(int jointCount, int sampleCount);
