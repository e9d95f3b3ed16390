// Growing the map when a link fails, a round at a time.
#pragma once

class OperationScope;

// The samples a failed link may still add to the map, and one round of them.
class MapGrowth {
public:
    // `limit`: the samples the map may grow by in all (the "GrowMap" setting).
    explicit MapGrowth(int limit) : limit_(limit) {}

    // True while the limit leaves room and nothing stopped the growth.
    bool canGrow() const { return !stopped_ && grown_ < limit_; }
    int grown() const { return grown_; }
    bool cancelled() const { return cancelled_; }

    // Adds the next round of samples under a progress dialog: a tenth of the
    // map (at least 10), as far as the limit and the size a station keeps
    // allow. A cancel stops the growth with what was added so far. The number
    // of samples added.
    int growRound(OperationScope& operation);

private:
    int limit_;
    int grown_ = 0;
    int rounds_ = 0;
    bool cancelled_ = false;
    bool stopped_ = false;
};
