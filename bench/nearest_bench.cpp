// The nearest older samples as the map's construction asks for them (every
// new sample about all older ones, K = 10), by the linear scan and through the
// k-d tree, on uniform samples of a 6-joint robot: the time of all questions,
// the time a question takes at the end, and whether the answers agree.
// Compare ratios within one run, not absolute times.
#include "nearest_samples.h"
#include "nearest_samples_tree.h"
#include "roadmap_matrix.h"

#include <QElapsedTimer>

#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr int Joints = 6;
constexpr int K = 10;

struct Figures {
    double allMs = 0;   // every question of a map of N samples
    double lastUs = 0;  // one question about N - 1 older samples, on average over the last 100
};

Figures ask(NeighbourStrategy& strategy, const RoadmapMatrix* samples, int n,
            std::vector<std::vector<NeighbourStrategy::Candidate>>* answers)
{
    Figures figures;
    QElapsedTimer timer;
    QElapsedTimer last;
    timer.start();
    for (int k = 0; k < n; ++k) {
        if (k == n - 100)
            last.start();
        answers->at(size_t(k)) = strategy.nearest(samples, k, column(samples, k), Joints, K);
    }
    figures.lastUs = last.nsecsElapsed() / 1000.0 / 100.0;
    figures.allMs = timer.nsecsElapsed() / 1e6;
    return figures;
}

}  // namespace

int main()
{
    std::printf("Nearest samples as the construction asks for them: %d joints, uniform in [-170, 170], K = %d\n\n",
                Joints, K);
    std::printf("%7s | %10s %10s %7s | %10s %10s %7s | %s\n", "samples", "scan ms", "tree ms", "ratio", "scan us/q",
                "tree us/q", "ratio", "answers");
    for (int n : {1000, 2000, 5000, 10000, 15000, 30000}) {
        ScopedMatrix samples = makeScopedMatrix();
        setSize(samples.get(), Joints, n);
        std::mt19937_64 engine{static_cast<uint64_t>(n)};
        std::uniform_real_distribution<double> joint(-170.0, 170.0);
        for (int i = 0; i < Joints * n; ++i)
            samples->values[i] = joint(engine);

        std::vector<std::vector<NeighbourStrategy::Candidate>> byScan(static_cast<size_t>(n));
        std::vector<std::vector<NeighbourStrategy::Candidate>> byTree(static_cast<size_t>(n));
        NearestSamples scan;
        NearestSamplesTree tree(0);  // the tree from the first sample, to show it alone
        const Figures s = ask(scan, samples.get(), n, &byScan);
        const Figures t = ask(tree, samples.get(), n, &byTree);
        int differing = 0;
        for (int k = 0; k < n; ++k) {
            const auto& a = byScan[size_t(k)];
            const auto& b = byTree[size_t(k)];
            bool same = a.size() == b.size();
            for (size_t i = 0; same && i < a.size(); ++i)
                same = a[i].index == b[i].index && a[i].distance == b[i].distance;
            differing += same ? 0 : 1;
        }
        std::printf("%7d | %10.1f %10.1f %7.1f | %10.2f %10.2f %7.1f | %s\n", n, s.allMs, t.allMs, s.allMs / t.allMs,
                    s.lastUs, t.lastUs, s.lastUs / t.lastUs, differing == 0 ? "the same" : "DIFFER");
    }
    std::printf("\nratio: how many times longer the scan takes. us/q: one question about N older samples.\n"
                "The construction uses the scan below %d samples, where it is as fast.\n",
                NearestSamplesTree::DefaultFewest);
    return 0;
}
