// The size of a stored map record, and the largest map a station can keep.
#include "map_capacity.h"

#include <limits>

namespace {
// Room for the nodes that links and added targets append to a computed map.
constexpr int64_t GrowthAllowance = 64;
}  // namespace

int64_t storedMatrixBytes(int dimensionCount, int64_t elementCount)
{
    return 4 + 4 * int64_t(dimensionCount) + 8 * elementCount;
}

int64_t robotMapRecordSize(int jointCount, int sampleCount, int routeLength)
{
    const int64_t j = jointCount;
    const int64_t n = sampleCount;
    return storedMatrixBytes(2, j * n) + storedMatrixBytes(2, n * n) + storedMatrixBytes(2, routeLength);
}

int64_t largestRobotMapRecord()
{
    // A QByteArray holds at most 2^31 - 1 bytes with its header and terminator.
    return int64_t(std::numeric_limits<int>::max()) - 64;
}

bool mapCanBeKept(int jointCount, int sampleCount)
{
    if (sampleCount < 1)
        return true;
    const int64_t grown = int64_t(sampleCount) + GrowthAllowance;
    if (grown > std::numeric_limits<int>::max())
        return false;
    return robotMapRecordSize(jointCount, static_cast<int>(grown), static_cast<int>(grown)) <= largestRobotMapRecord();
}

int largestKeepableSampleCount(int jointCount)
{
    int low = 1;
    int high = 1 << 16;
    while (low < high) {
        const int middle = low + (high - low + 1) / 2;
        if (mapCanBeKept(jointCount, middle))
            low = middle;
        else
            high = middle - 1;
    }
    return low;
}
