// The 3D collision check of one robot against its cell and itself.
#include "cell_checker.h"

#include "cell_world.h"

#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

CellChecker::CellChecker(const CellWorld& world, const CellPart* robot) : CellChecker(world, robot, Options())
{
}

CellChecker::CellChecker(const CellWorld& world, const CellPart* robot, Options options)
    : stats_(world.cellWork()), view_(world, robot), options_(options)
{
    if (!view_.active())
        return;
    objectCount_ = static_cast<int>(view_.objects().size());
    const int bodies = static_cast<int>(view_.bodies().size());
    for (int body = 0; body < bodies; ++body) {
        for (int object = 0; object < objectCount_; ++object)
            pairs_.push_back(Pair{body, object, false});
    }
    for (const auto& [first, second] : view_.selfPairs())
        pairs_.push_back(Pair{first, second, true});
    candidates_.reserve(pairs_.size());
    hits_.assign(pairs_.size(), 0);
    frames_.assign(size_t(view_.jointCount() + 2), Eigen::Isometry3d::Identity());
    bodyCentres_.resize(size_t(bodies));
    const size_t solids = view_.arm().solids.size();
    centres_.resize(solids);
    centredAt_.assign(solids, 0);
    placed_.resize(solids);
    placedAt_.assign(solids, 0);
    found_.resize(size_t(objectCount_));
    point_.resize(size_t(view_.jointCount()));
}

int CellChecker::collidingPairs(const double* q, bool firstOnly)
{
    if (!active())
        return 0;
    const auto start = Clock::now();
    const int count = check(q, true, true, firstOnly);
    stats_.configurations += 1;
    stats_.seconds += since(start);
    return count;
}

int CellChecker::selfPairs(const double* q)
{
    return active() ? check(q, false, true, false) : 0;
}

int CellChecker::testMove(const double* a, const double* b, int n)
{
    if (!active())
        return 0;
    const auto start = Clock::now();
    const size_t count = point_.size();
    long long checked = 0;
    auto collidesAt = [&](int k) {
        for (size_t i = 0; i < count; ++i)
            point_[i] = a[i] + (b[i] - a[i]) * k / n;
        ++checked;
        return check(point_.data(), true, true, true) > 0;
    };
    int answer = collidesAt(0) || collidesAt(n) ? 1 : 0;
    // Halve the intervals level by level, so that a wall in the middle of the
    // move is met after a handful of checks.
    intervals_.clear();
    intervals_.emplace_back(0, n);
    for (size_t next = 0; !answer && next < intervals_.size(); ++next) {
        const auto [low, high] = intervals_[next];
        if (high - low < 2)
            continue;
        const int middle = low + (high - low) / 2;
        if (collidesAt(middle))
            answer = 1;
        intervals_.emplace_back(low, middle);
        intervals_.emplace_back(middle, high);
    }
    stats_.configurations += checked;
    stats_.seconds += since(start);
    return answer;
}

std::vector<CellChecker::Contact> CellChecker::contacts(const double* q)
{
    std::vector<Contact> found;
    if (!active())
        return found;
    ++stamp_;
    place(q);
    const std::vector<CellBody>& bodies = view_.bodies();
    // The base stands still: its pairs are no candidates of the moving links.
    for (int object = 0; view_.firstMovingBody() == 1 && object < objectCount_; ++object) {
        if (objectPairTouches(0, object))
            found.push_back({bodies.front().link, object, -1});
    }
    gatherCandidates(true, true);
    for (const int candidate : candidates_) {
        const Pair& pair = pairs_[size_t(candidate)];
        if (pair.self) {
            if (selfPairTouches(pair.body, pair.other))
                found.push_back({bodies[size_t(pair.body)].link, -1, bodies[size_t(pair.other)].link});
        } else if (objectPairTouches(pair.body, pair.other)) {
            found.push_back({bodies[size_t(pair.body)].link, pair.other, -1});
        }
    }
    return found;
}

int CellChecker::check(const double* q, bool withObjects, bool withSelf, bool firstOnly)
{
    ++stamp_;
    ++stages_.configurations;
    place(q);
    int count = withObjects ? view_.baseObjectHits() : 0;
    if (count > 0 && firstOnly)
        return count;
    gatherCandidates(withObjects, withSelf);
    if (firstOnly)
        orderByHits();
    for (const int candidate : candidates_) {
        const Pair& pair = pairs_[size_t(candidate)];
        if (!(pair.self ? selfPairTouches(pair.body, pair.other) : objectPairTouches(pair.body, pair.other)))
            continue;
        ++count;
        ++hits_[size_t(candidate)];
        if (firstOnly)
            break;
    }
    return count;
}

void CellChecker::gatherCandidates(bool withObjects, bool withSelf)
{
    candidates_.clear();
    const std::vector<CellBody>& bodies = view_.bodies();
    const int bodyCount = static_cast<int>(bodies.size());
    long long considered = 0;
    for (int body = view_.firstMovingBody(); withObjects && body < bodyCount; ++body) {
        considered += objectCount_;
        if (!options_.culling) {
            for (int object = 0; object < objectCount_; ++object)
                candidates_.push_back(body * objectCount_ + object);
            continue;
        }
        // The broad phase: the objects the body's sphere may reach, by the tree.
        if (!bodies[size_t(body)].mayMeetObjects)
            continue;
        const int found =
            view_.objectTree().reachedBy(bodyCentres_[size_t(body)], bodies[size_t(body)].boundRadius, found_.data());
        for (int i = 0; i < found; ++i)
            candidates_.push_back(body * objectCount_ + found_[size_t(i)]);
    }
    const auto& selfPairs = view_.selfPairs();
    for (size_t pair = 0; withSelf && pair < selfPairs.size(); ++pair) {
        ++considered;
        if (!options_.culling || bodiesMeet(selfPairs[pair].first, selfPairs[pair].second))
            candidates_.push_back(bodyCount * objectCount_ + static_cast<int>(pair));
    }
    stages_.pairs += considered;
    stages_.pairsCulled += considered - static_cast<long long>(candidates_.size());
}

void CellChecker::place(const double* q)
{
    const auto start = stages_.timed ? Clock::now() : Clock::time_point();
    view_.kinematics().frames(view_.base(), q, view_.lastLink(), frames_.data());
    const std::vector<CellBody>& bodies = view_.bodies();
    for (size_t body = 0; body < bodies.size(); ++body)
        bodyCentres_[body] = ArmKinematics::apply(frames_[size_t(bodies[body].link)], bodies[body].boundCentre);
    if (stages_.timed)
        stages_.placeSeconds += since(start);
}

const Eigen::Vector3d& CellChecker::solidCentre(int index)
{
    const size_t at = size_t(index);
    if (centredAt_[at] != stamp_) {
        const LinkSolid& solid = view_.arm().solids[at];
        centres_[at] = ArmKinematics::apply(frames_[size_t(solid.link)], solid.solid.local.translation());
        centredAt_[at] = stamp_;
    }
    return centres_[at];
}

const PlacedSolid& CellChecker::solidAt(int index)
{
    const size_t at = size_t(index);
    if (placedAt_[at] != stamp_) {
        const LinkSolid& solid = view_.arm().solids[at];
        placed_[at].solid = &solid.solid;
        ArmKinematics::compose(frames_[size_t(solid.link)], solid.solid.local, placed_[at].world);
        placedAt_[at] = stamp_;
    }
    return placed_[at];
}

bool CellChecker::objectPairTouches(int body, int object)
{
    const CellBody& link = view_.bodies()[size_t(body)];
    const PlacedSolid& other = view_.objects()[size_t(object)];
    for (int s = link.firstSolid; s < link.firstSolid + link.solidCount; ++s) {
        ++stages_.solidPairs;
        if (options_.culling &&
            !cell_narrow_phase::ballTouches(solidCentre(s), view_.arm().solids[size_t(s)].solid.boundRadius, other)) {
            ++stages_.solidsCulled;
            continue;
        }
        if (narrowTouch(solidAt(s), other))
            return true;
    }
    return false;
}

bool CellChecker::selfPairTouches(int first, int second)
{
    const CellBody& a = view_.bodies()[size_t(first)];
    const CellBody& b = view_.bodies()[size_t(second)];
    auto apart = [](const Eigen::Vector3d& p, double r, const Eigen::Vector3d& q, double s) {
        return (p - q).squaredNorm() > (r + s) * (r + s);
    };
    const std::vector<LinkSolid>& solids = view_.arm().solids;
    for (int i = a.firstSolid; i < a.firstSolid + a.solidCount; ++i) {
        for (int j = b.firstSolid; j < b.firstSolid + b.solidCount; ++j) {
            ++stages_.solidPairs;
            if (options_.culling && apart(solidCentre(i), solids[size_t(i)].solid.boundRadius, solidCentre(j),
                                          solids[size_t(j)].solid.boundRadius)) {
                ++stages_.solidsCulled;
                continue;
            }
            if (narrowTouch(solidAt(i), solidAt(j)))
                return true;
        }
    }
    return false;
}

void CellChecker::orderByHits()
{
    // The likeliest hit first: the pairs that hit most often so far. An
    // insertion sort, as the candidates are few and nothing may be allocated.
    for (size_t i = 1; i < candidates_.size(); ++i) {
        const int candidate = candidates_[i];
        size_t at = i;
        for (; at > 0 && hits_[size_t(candidates_[at - 1])] < hits_[size_t(candidate)]; --at)
            candidates_[at] = candidates_[at - 1];
        candidates_[at] = candidate;
    }
}

bool CellChecker::narrowTouch(const PlacedSolid& a, const PlacedSolid& b)
{
    if (!stages_.timed)
        return cell_narrow_phase::touch(a, b, &stages_.narrow);
    const auto start = Clock::now();
    const bool touching = cell_narrow_phase::touch(a, b, &stages_.narrow);
    stages_.narrowSeconds += since(start);
    return touching;
}
