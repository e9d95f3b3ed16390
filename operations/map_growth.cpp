// Growing the map when a link fails, a round at a time.
#include "map_growth.h"

#include "map_capacity.h"
#include "operation_scope.h"
#include "progress_reporter.h"
#include "host_collision_checker.h"
#include "roadmap_builder.h"
#include "roadmap_matrix.h"
#include "translate.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMainWindow>

#include <algorithm>

namespace {
constexpr int SmallestRound = 10;
}  // namespace

int MapGrowth::growRound(OperationScope& operation)
{
    PlannerSession& session = operation.session();
    RobotMap& map = operation.map();
    const int sampleCount = map.sampleCount();
    const int jointCount = rows(map.samples());
    int round = std::min(std::max(SmallestRound, sampleCount / 10), limit_ - grown_);
    // No further than a station can keep (with room for the links' own nodes).
    while (round > 0 && !mapCanBeKept(jointCount, sampleCount + round))
        round /= 2;
    if (round <= 0) {
        stopped_ = true;
        return 0;
    }
    ++rounds_;
    qDebug().noquote().nospace() << "Growing the map: round " << rounds_ << ", " << round << " samples";
    ProgressReporter& progress = session.progress();
    progress.start(session.mainWindow(), QCoreApplication::translate("PluginAutoPRM", "Growing the map"));
    const int limit = limit_;
    const int before = grown_;
    HostCollisionChecker checker(session.host(), session.robot());
    RoadmapBuilder builder(checker, progress, session.resources().random());
    const int added = builder.grow(session.settings().parameters(), round, map.roadmap(),
                                  [&progress, limit, before, this](int sample) {
                                      progress.setHeadline(
                                          QCoreApplication::translate(
                                              "PluginAutoPRM", "Growing the map, round %1:<br>%2 of at most %3 samples added")
                                              .arg(rounds_)
                                              .arg(before + sample)
                                              .arg(limit));
                                      progress.setDetail(QString());
                                      return progress.update(static_cast<int>((before + sample) * 100LL / limit));
                                  });
    cancelled_ = progress.finish();
    grown_ += added;
    // A map the growth cannot extend (nodes beyond its samples) stops it too.
    stopped_ = cancelled_ || added == 0 || operation.abandoned();
    return added;
}
