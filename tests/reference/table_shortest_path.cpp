// The planner's original shortest-path search, kept word for word as the
// reference that the heap search is checked against: a Dijkstra over the
// dense graph written as an iteration table, with a stable re-sort of the open
// list at every step and a recursive walk back through the table.
#include "table_shortest_path.h"

#include "shortest_path.h"

#include "index_matrix.h"
#include "roadmap_matrix.h"
#include "sort_permutation.h"

#include <cstdio>
#include <utility>
#include <vector>

namespace {
// 1-based element access, as the search and its table are written.
double& cell(RoadmapMatrix* m, int row, int col)
{
    return at(m, row - 1, col - 1);
}

double cell(const RoadmapMatrix* m, int row, int col)
{
    return at(m, row - 1, col - 1);
}

void report(const char* text)
{
    std::fputs(text, stdout);
    std::fflush(stdout);
}

void append(RoadmapMatrix* path, int node)
{
    const int length = columns(path);
    setSize(path, 1, length + 1);
    path->values[length] = node;
}

// The open list: (tentative distance, node label) pairs not yet fixed.
struct OpenList {
    std::vector<double> distance;
    std::vector<int> label;

    // Stable: equal distances keep their order from the previous step.
    void sort()
    {
        const ScopedMatrix keys = makeScopedMatrix();
        const ScopedIndexMatrix order(createIndexMatrix());
        const int count = static_cast<int>(distance.size());
        setSize(keys.get(), count, 1);
        std::copy(distance.begin(), distance.end(), keys->values);
        sortWithPermutation(keys.get(), order.get());
        std::vector<int> sortedLabels(label.size());
        for (int i = 0; i < count; ++i) {
            distance[i] = keys->values[i];
            sortedLabels[i] = label[order->values[i] - 1];
        }
        label.swap(sortedLabels);
    }
};

// Appends the predecessors of d back to the source, reading the table T: the
// last step that lowered d's distance names the node d was reached from.
void walkBack(RoadmapMatrix* path, const RoadmapMatrix* table, int source, int d)
{
    const int n = rows(table);
    if (cell(table, 2, d) == cell(table, n, d)) {
        append(path, source);
        return;
    }
    for (int r = n; r >= 3; --r) {
        if (cell(table, r - 1, d) > cell(table, r, d)) {
            const int p = static_cast<int>(cell(table, r, 1));
            append(path, p == source ? 1 : p);
            walkBack(path, table, source, p);
            return;
        }
    }
}
}  // namespace

void tableShortestPath(const RoadmapMatrix* graph, int source, int destination, double* cost, RoadmapMatrix* path)
{
    *cost = NoPathCost;
    setSize(path, 1, 0);

    if (rows(graph) != columns(graph)) {
        report("Internal problem: PRM matrix is not square!");
        return;
    }
    const int n = rows(graph);
    if (source > n || destination > n) {
        report("Internal problem: Index out of bounds!!");
        return;
    }
    if (source == destination) {
        *cost = 0.0;
        append(path, source);
        return;
    }

    const ScopedMatrix weightsOwner = makeScopedMatrix();
    RoadmapMatrix* w = weightsOwner.get();
    copyMatrix(graph, w);
    for (int i = 0; i < n * n; ++i)
        if (w->values[i] == 0.0)
            w->values[i] = NoPathCost;

    // Relabel so that the source is node 1; label `source` then stands for the
    // caller's node 1.
    if (destination == 1)
        destination = source;
    for (int c = 1; c <= n; ++c)
        std::swap(cell(w, 1, c), cell(w, source, c));
    for (int r = 1; r <= n; ++r)
        std::swap(cell(w, r, 1), cell(w, r, source));

    const ScopedMatrix tableOwner = makeScopedMatrix();
    RoadmapMatrix* table = tableOwner.get();
    setSize(table, n, n);
    fillZero(table);
    for (int i = 2; i <= n; ++i) {
        cell(table, 1, i) = i;
        cell(table, 2, i) = cell(w, 1, i);
    }

    std::vector<double> tentative(static_cast<size_t>(n) + 1);
    OpenList open;
    for (int i = 1; i <= n; ++i) {
        tentative[i] = cell(w, 1, i);
        if (i >= 2) {
            open.distance.push_back(tentative[i]);
            open.label.push_back(i);
        }
    }

    // n - 2 steps, no early exit; the node left last is never fixed.
    for (int step = 3; step <= n; ++step) {
        open.sort();
        const int k = open.label.front();
        cell(table, step, 1) = k;
        open.distance.erase(open.distance.begin());
        open.label.erase(open.label.begin());
        for (size_t row = 0; row < open.label.size(); ++row) {
            const int j = open.label[row];
            const double candidate = tentative[k] + cell(w, k, j);
            if (candidate < tentative[j]) {
                tentative[j] = candidate;
                open.distance[row] = candidate;
            }
        }
        for (int i = 2; i <= n; ++i)
            cell(table, step, i) = tentative[i];
    }

    *cost = cell(table, n, destination);
    append(path, destination == source ? 1 : destination);
    walkBack(path, table, source, destination);
}
