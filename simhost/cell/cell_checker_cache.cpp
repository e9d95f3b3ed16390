// The 3D checkers a station keeps per robot until its geometry changes.
#include "cell_checker_cache.h"

#include "cell_checker.h"

CellCheckerCache::CellCheckerCache() = default;
CellCheckerCache::~CellCheckerCache() = default;

CellChecker& CellCheckerCache::checkerFor(const CellWorld& world, const CellPart* robot)
{
    Entry* entry = nullptr;
    for (Entry& candidate : entries_) {
        if (candidate.robot == robot)
            entry = &candidate;
    }
    if (!entry) {
        entries_.push_back(Entry{robot, 0, nullptr});
        entry = &entries_.back();
    }
    if (!entry->checker || entry->revision != revision_) {
        entry->checker = std::make_unique<CellChecker>(world, robot);
        entry->revision = revision_;
        ++builds_;
    }
    return *entry->checker;
}
