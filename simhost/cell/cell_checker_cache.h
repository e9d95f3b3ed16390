// The 3D checkers a station keeps per robot until its geometry changes.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class CellChecker;
class CellPart;
class CellWorld;

// A station's collision checkers, one per robot, kept from check to check so
// that the view of the cell is built once. Whatever changes the station's
// geometry (an object added, moved or deleted, a robot placed elsewhere or
// carried along, a tool or solid changed) calls invalidate(): each robot's
// next check then builds its view afresh.
class CellCheckerCache {
public:
    CellCheckerCache();
    ~CellCheckerCache();
    CellCheckerCache(const CellCheckerCache&) = delete;
    CellCheckerCache& operator=(const CellCheckerCache&) = delete;

    CellChecker& checkerFor(const CellWorld& world, const CellPart* robot);
    void invalidate() { ++revision_; }
    // How many checkers were built so far.
    long long builds() const { return builds_; }

private:
    struct Entry {
        const CellPart* robot = nullptr;
        std::uint64_t revision = 0;
        std::unique_ptr<CellChecker> checker;
    };

    std::vector<Entry> entries_;
    std::uint64_t revision_ = 0;
    long long builds_ = 0;
};
