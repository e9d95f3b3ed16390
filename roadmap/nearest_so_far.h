// The nearest candidates met so far in a search, at most a fixed number.
#pragma once

#include "neighbour_strategy.h"

#include <algorithm>
#include <vector>

// The `wanted` nearest candidates offered so far, by ascending (distance,
// index): the place a stable sort of all distances gives each sample. A
// bounded heap whose top is the farthest kept; the order is an inline
// function object, since it is asked millions of times.
class NearestSoFar {
public:
    struct Nearer {
        bool operator()(const NeighbourStrategy::Candidate& a, const NeighbourStrategy::Candidate& b) const
        {
            if (a.distance != b.distance)
                return a.distance < b.distance;
            return a.index < b.index;
        }
    };

    // Starts a search for the `wanted` nearest; the list keeps its room.
    void start(int wanted)
    {
        heap_.clear();
        wanted_ = std::max(wanted, 0);
        heap_.reserve(static_cast<size_t>(wanted_));
    }
    int wanted() const { return wanted_; }
    // True when `wanted` are kept: from then on only a nearer one gets in.
    bool full() const { return static_cast<int>(heap_.size()) >= wanted_; }
    // The distance of the farthest kept; only when full().
    double farthest() const { return heap_.front().distance; }

    void offer(int index, double distance)
    {
        const NeighbourStrategy::Candidate candidate{index, distance};
        if (!full()) {
            heap_.push_back(candidate);
            std::push_heap(heap_.begin(), heap_.end(), Nearer());
        } else if (wanted_ > 0 && Nearer()(candidate, heap_.front())) {
            std::pop_heap(heap_.begin(), heap_.end(), Nearer());
            heap_.back() = candidate;
            std::push_heap(heap_.begin(), heap_.end(), Nearer());
        }
    }

    // Sorts what is kept, nearest first; the search is over.
    const std::vector<NeighbourStrategy::Candidate>& finish()
    {
        std::sort_heap(heap_.begin(), heap_.end(), Nearer());
        return heap_;
    }

private:
    std::vector<NeighbourStrategy::Candidate> heap_;  // the heap, then the answer
    int wanted_ = 0;
};
