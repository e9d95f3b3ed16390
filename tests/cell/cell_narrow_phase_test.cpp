#include "cell_narrow_phase.h"
#include "cell_solids.h"
#include "slow_distance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace cell_solids;
using cell_narrow_phase::Verdict;
using Kind = Solid::Kind;
using Vector = Eigen::Vector3d;

// A millionth of a millimetre on either side of contact: far above rounding,
// far below anything GJK's tolerance would notice.
constexpr double hair = 1e-6;

// Expects the exact test to answer touch when the solids overlap by a hair and
// apart when a hair separates them, whichever comes first, and the slow
// distance to agree on the side each time.
void expectContactAt(const Solid& one, const Eigen::Isometry3d& onePose, const Solid& two,
                     const std::function<Eigen::Isometry3d(double)>& twoAtGap, const char* what)
{
    for (double gap : {hair, -hair}) {
        const PlacedSolid a = placed(one, onePose), b = placed(two, twoAtGap(gap));
        const Verdict expected = gap > 0 ? Verdict::Apart : Verdict::Touch;
        EXPECT_EQ(cell_narrow_phase::exactTest(a, b), expected) << what << ", gap " << gap;
        EXPECT_EQ(cell_narrow_phase::exactTest(b, a), expected) << what << ", either order, gap " << gap;
        EXPECT_EQ(slow_distance::signedGap(a, b) > 0, gap > 0) << what << ": the slow distance, gap " << gap;
    }
}

TEST(NarrowPhase, ACapsuleMeetsABoxFaceCornerAndEdgeExactly)
{
    const auto cube = box(20, 20, 20);
    const auto capsule = round(Kind::Capsule, 5, 40);
    // Upright beside the face x = 10: the side of the capsule meets the face.
    expectContactAt(*cube, at(Vector::Zero()), *capsule, [](double gap) { return at(Vector(15 + gap, 0, 0)); },
                    "side to face");
    // Upright with its lower cap's centre on the diagonal out of the corner (10, 10, 10).
    expectContactAt(*cube, at(Vector::Zero()), *capsule, [](double gap) {
        const double away = (5 + gap) / std::sqrt(3.0);
        return at(Vector(10 + away, 10 + away, 30 + away));
    }, "cap to corner");
    // Lying across the top edge (y = 10, z = 10) at 45 degrees to both faces.
    expectContactAt(*cube, at(Vector::Zero()), *capsule, [](double gap) {
        const double away = (5 + gap) / std::sqrt(2.0);
        return at(Vector(0, 10 + away, 10 + away), 90, Vector::UnitY());
    }, "side across an edge");
}

TEST(NarrowPhase, CapsulesMeetCrossedAndSideBySide)
{
    const auto thin = round(Kind::Capsule, 3, 20);
    const auto thick = round(Kind::Capsule, 4, 30);
    // Along x, and along y above it: their axes are 7 apart where they cross.
    expectContactAt(*thin, at(Vector::Zero(), 90, Vector::UnitY()), *thick,
                    [](double gap) { return at(Vector(0, 0, 7 + gap), 90, Vector::UnitX()); }, "crossed");
    // Parallel along x, overlapping along it: 7 apart side by side.
    expectContactAt(*thin, at(Vector::Zero(), 90, Vector::UnitY()), *thick,
                    [](double gap) { return at(Vector(12, 7 + gap, 0), 90, Vector::UnitY()); }, "side by side");
    // Parallel and end to end along x: cap to cap.
    expectContactAt(*thin, at(Vector::Zero(), 90, Vector::UnitY()), *thick,
                    [](double gap) { return at(Vector(10 + 15 + 7 + gap, 0, 0), 90, Vector::UnitY()); }, "end to end");
}

TEST(NarrowPhase, SpheresMeetEveryShapeIncludingACylindersRim)
{
    const auto ball = round(Kind::Sphere, 2);
    const auto cylinder = round(Kind::Cylinder, 10, 20);
    expectContactAt(*cylinder, at(Vector::Zero()), *ball, [](double gap) {
        const double away = (2 + gap) / std::sqrt(2.0);
        return at(Vector(10 + away, 0, 10 + away));
    }, "on the rim");
    expectContactAt(*cylinder, at(Vector::Zero()), *ball, [](double gap) { return at(Vector(0, 0, 12 + gap)); },
                    "on the end face");
    expectContactAt(*ball, at(Vector::Zero()), *round(Kind::Sphere, 3),
                    [](double gap) { return at(Vector(0, 5 + gap, 0)); }, "sphere");
    expectContactAt(*box(4, 4, 4), at(Vector::Zero()), *ball, [](double gap) {
        const double away = (2 + gap) / std::sqrt(3.0);
        return at(Vector::Constant(2 + away));
    }, "box corner");
}

TEST(NarrowPhase, BoxesMeetFaceToEdgeAndEdgeToEdge)
{
    const auto cube = box(2, 2, 2);
    // Turned 45 degrees about z, an edge of the second meets the face x = 1.
    expectContactAt(*cube, at(Vector::Zero()), *cube,
                    [](double gap) { return at(Vector(1 + std::sqrt(2.0) + gap, 0.3, 0.2), 45); }, "edge to face");
    // A ridge along y under a ridge along x: only the cross product of the
    // two edges separates them.
    expectContactAt(*cube, at(Vector::Zero(), 45, Vector::UnitY()), *cube, [](double gap) {
        return at(Vector(0, 0, 2 * std::sqrt(2.0) + gap), 45, Vector::UnitX());
    }, "ridge to ridge");
}

TEST(NarrowPhase, CylindersAreExactBesideTheirSideWalls)
{
    const auto post = round(Kind::Cylinder, 10, 40);
    expectContactAt(*post, at(Vector::Zero()), *round(Kind::Capsule, 5, 30),
                    [](double gap) { return at(Vector(15 + gap, 0, 3), 90, Vector::UnitX()); }, "capsule across");
    expectContactAt(*post, at(Vector::Zero()), *box(10, 30, 10),
                    [](double gap) { return at(Vector(15 + gap, 2, -4)); }, "box face");
    expectContactAt(*post, at(Vector::Zero()), *round(Kind::Cylinder, 3, 40),
                    [](double gap) { return at(Vector(0, 13 + gap, 5), 90, Vector::UnitY()); }, "cylinder across");
}

TEST(NarrowPhase, NearACylindersRimTheAnswerComesFromFclOrAPointInside)
{
    const auto post = round(Kind::Cylinder, 10, 40);
    const auto capsule = round(Kind::Capsule, 5, 30);
    // Lying along y above the rim at x = 10, z = 20, a tenth of a millimetre
    // off it: no closed form covers the rim, and FCL answers.
    const double away = 5.1 / std::sqrt(2.0);
    const PlacedSolid a = placed(*post, at(Vector::Zero()));
    const PlacedSolid apart = placed(*capsule, at(Vector(10 + away, 0, 20 + away), 90, Vector::UnitX()));
    EXPECT_EQ(cell_narrow_phase::exactTest(a, apart), Verdict::Unsure);
    cell_narrow_phase::Counts counts;
    EXPECT_FALSE(cell_narrow_phase::touch(a, apart, &counts));
    EXPECT_EQ(counts.fcl, 1);
    // A tenth of a millimetre into it, the capsule's point nearest the axis lies inside.
    const double into = 4.9 / std::sqrt(2.0);
    const PlacedSolid overlapping = placed(*capsule, at(Vector(10 + into, 0, 20 + into), 90, Vector::UnitX()));
    EXPECT_EQ(cell_narrow_phase::exactTest(a, overlapping), Verdict::Touch);
    EXPECT_LT(slow_distance::signedGap(a, overlapping), 0);
    EXPECT_GT(slow_distance::signedGap(a, apart), 0);
}

TEST(NarrowPhase, FarApartNearTheRimACheapAxisAnswersWithoutFcl)
{
    const auto post = round(Kind::Cylinder, 10, 40);
    // Beyond the end face, off to the side: the axis gives no closed form,
    // but the post's own axis parts them.
    const auto cube = box(4, 4, 4);  // a placed solid points at its solid: it must outlive it
    const PlacedSolid a = placed(*post, at(Vector::Zero()));
    const PlacedSolid b = placed(*cube, at(Vector(11, 0, 24)));
    EXPECT_EQ(cell_narrow_phase::exactTest(a, b), Verdict::Unsure);
    cell_narrow_phase::Counts counts;
    EXPECT_FALSE(cell_narrow_phase::touch(a, b, &counts));
    EXPECT_EQ(counts.exact, 1);
    EXPECT_EQ(counts.fcl, 0);
}

}  // namespace
