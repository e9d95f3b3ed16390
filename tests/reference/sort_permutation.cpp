#include "sort_permutation.h"

#include "index_matrix.h"
#include "roadmap_matrix.h"

#include <algorithm>
#include <vector>

namespace {
struct Entry {
    double value;
    int32_t position;  // 1-based place before sorting
};

// Merges the sorted runs [begin, middle) and [middle, end) of `from` into `to`.
// Taking from the left run unless the right one is strictly smaller keeps
// equal values in their original order.
void merge(const std::vector<Entry>& from, std::vector<Entry>& to, size_t begin, size_t middle, size_t end)
{
    size_t left = begin;
    size_t right = middle;
    for (size_t out = begin; out < end; ++out) {
        if (left < middle && (right >= end || !(from[right].value < from[left].value)))
            to[out] = from[left++];
        else
            to[out] = from[right++];
    }
}
}  // namespace

void sortWithPermutation(RoadmapMatrix* values, IndexMatrix* permutation)
{
    const int count = elementCount(values);
    if (values->dimensionCount == 2)
        setSize(permutation, values->extents[0], values->extents[1]);
    else
        setSize(permutation, count, 1);

    std::vector<Entry> entries(static_cast<size_t>(count > 0 ? count : 0));
    for (size_t i = 0; i < entries.size(); ++i)
        entries[i] = {values->values[i], static_cast<int32_t>(i + 1)};

    // Bottom-up merge sort, runs of width 1, 2, 4, ...
    std::vector<Entry> scratch(entries.size());
    const size_t n = entries.size();
    for (size_t width = 1; width < n; width *= 2) {
        for (size_t begin = 0; begin < n; begin += 2 * width) {
            const size_t middle = std::min(begin + width, n);
            const size_t end = std::min(begin + 2 * width, n);
            merge(entries, scratch, begin, middle, end);
        }
        entries.swap(scratch);
    }

    for (size_t i = 0; i < n; ++i) {
        values->values[i] = entries[i].value;
        permutation->values[i] = entries[i].position;
    }
}
