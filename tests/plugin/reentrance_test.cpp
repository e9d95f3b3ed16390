// Everything a host or a person can do while a map computation or a link runs
// (its progress dialog runs the event loop), done from inside the host's
// answer to one of its collision tests: what would change the map or the
// settings is refused and the running operation ends exactly as undisturbed;
// an unload, a deleted robot or another station stop it without a crash and
// without storing its map anywhere.
#include "plugin_fixture.h"

#include "dense_graph.h"
#include "form_prm.h"
#include "planner_session.h"
#include "planner_resources.h"

#include <QCoreApplication>
#include <QPushButton>
#include <QSpinBox>

#include <functional>
#include <vector>

namespace {

// What a map is, to compare two of them.
struct MapPicture {
    std::vector<double> samples;
    std::vector<double> graph;
    bool operator==(const MapPicture& other) const { return samples == other.samples && graph == other.graph; }
};

const QString BusyText =
    "The collision-free planner is busy with another operation. Wait for it to finish or cancel it.";

class Reentrance : public LoadedPlugin {
protected:
    void SetUp() override
    {
        load();
        robot = addRobot("Arm1");
        robot->boxes.push_back({{-40, -40, -181}, {40, 40, 181}});
        other = addRobot("Arm2");
        addTarget("T1", {-100, -100, 0}, robot);
        addTarget("T2", {100, 100, 0}, robot);
        // Targets of the other robot are no seeds of Arm1's map: linking them tests moves.
        addTarget("T3", {-150, 10, 50}, other);
        addTarget("T4", {150, -10, -50}, other);
        ASSERT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
        ASSERT_EQ(plugin->pluginCommand("Samples", "25"), "OK");
        ASSERT_EQ(plugin->pluginCommand("Edges", "5"), "OK");
    }

    void addTarget(const QString& name, std::vector<double> joints, HostItem* owner)
    {
        FakeItem* target = host.addItem(ItemType::Target, name, owner);
        target->setJoints(JointVector(joints.data(), 3));
    }

    MapPicture picture()
    {
        MapPicture picture;
        const RoadmapMatrix* samples = map().samples();
        picture.samples.assign(samples->values, samples->values + std::max(elementCount(samples), 0));
        ScopedMatrix dense = makeScopedMatrix();
        denseFromGraph(map().graph(), dense.get());
        picture.graph.assign(dense->values, dense->values + elementCount(dense.get()));
        return picture;
    }

    // Runs `operation` twice from the same point of the random sequence and
    // the same map: once undisturbed, once with `disturbance` done at its
    // `at`-th collision test. The two maps.
    std::pair<MapPicture, MapPicture> runBoth(const std::function<void()>& operation, int at,
                                              const std::function<void()>& disturbance)
    {
        const MersenneTwister start = session().resources().random();
        session().markChanged();
        plugin->saveSettings();
        const QByteArray base = host.dataParams.value("Zelvane-Rob Arm1");
        operation();
        const MapPicture undisturbed = picture();

        session().resources().random() = start;
        host.dataParams["Zelvane-Rob Arm1"] = base;
        plugin->loadRobotMap();  // the same map as the first run started from
        int seen = 0;
        disturbed = false;
        host.onCollisionTest = [&, at](int) {
            if (++seen == at && !disturbed) {
                disturbed = true;
                disturbance();
            }
        };
        operation();
        host.onCollisionTest = nullptr;
        EXPECT_TRUE(disturbed) << "the operation made fewer than " << at << " collision tests";
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const MapPicture found = plugin->session() ? picture() : MapPicture();
        // Each case starts from the same map.
        host.dataParams["Zelvane-Rob Arm1"] = base;
        if (plugin->session())
            plugin->loadRobotMap();
        return {undisturbed, found};
    }

    void calc() { EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done"); }
    void join() { joinReply = plugin->pluginCommand("Join=Link", "T3|T4"); }

    // The refusal of everything that would change the map or the settings.
    void expectEachRefusedDuring(const std::function<void()>& operation, int at)
    {
        const std::vector<std::pair<const char*, std::function<void()>>> disturbances = {
            {"Calc", [this] { EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done"); }},
            {"Clear", [this] { EXPECT_EQ(plugin->pluginCommand("Clear", ""), BusyText); }},
            {"Samples", [this] { EXPECT_EQ(plugin->pluginCommand("Samples", "5"), BusyText); }},
            {"Display", [this] { EXPECT_EQ(plugin->pluginCommand("Display", "1"), BusyText); }},
            {"SelectRobot", [this] { EXPECT_EQ(plugin->pluginCommand("SelectRobot", "Arm2"), "Arm1"); }},
            {"Add", [this] { EXPECT_EQ(plugin->pluginCommand("Add", ""), "Done"); }},
            {"Join", [this] { EXPECT_EQ(plugin->pluginCommand("Join", "T1|T2"), "Failed"); }},
            {"Join_Joints slot",
             [this] {
                 const double a[12] = {-100, -100, 0};
                 const double b[12] = {100, 100, 0};
                 EXPECT_EQ(plugin->Join_Joints(false, a, b, "Other"), nullptr);
             }},
            {"link action", [this] { plugin->callback_join_seltargets(); }},
            {"robot choice", [this] { EXPECT_TRUE(plugin->selectRobot(false, "Arm2")); }},
            {"Info", [this] { EXPECT_FALSE(plugin->pluginCommand("Info", "").isEmpty()); }},
            {"save", [this] { plugin->pluginEvent(5); }},
        };
        for (const auto& [what, disturbance] : disturbances) {
            host.messages.clear();
            const auto [undisturbed, found] = runBoth(operation, at, disturbance);
            EXPECT_TRUE(found == undisturbed) << what << ": the running operation's map changed";
            EXPECT_EQ(session().robot(), robot) << what;
            EXPECT_EQ(settings().samples, 25) << what;
            const bool refusedToo = QString(what) != "Info" && QString(what) != "save";
            EXPECT_EQ(hasMessage(BusyText, false) || hasMessage(BusyText, true), refusedToo) << what;
        }
    }

    FakeRobot* robot = nullptr;
    FakeRobot* other = nullptr;
    bool disturbed = false;
    QString joinReply;
};

}  // namespace

TEST_F(Reentrance, DuringACalcEverythingThatChangesTheMapIsRefused)
{
    expectEachRefusedDuring([this] { calc(); }, 40);
}

TEST_F(Reentrance, DuringAJoinEverythingThatChangesTheMapIsRefused)
{
    calc();
    expectEachRefusedDuring([this] { join(); }, 3);
    EXPECT_EQ(joinReply, "Success");
}

TEST_F(Reentrance, TheFormRefusesItsButtonsAndEditorsDuringACalc)
{
    plugin->callback_robotpilot();
    FormPRM* form = window->findChild<FormPRM*>();
    ASSERT_NE(form, nullptr);
    const auto [undisturbed, found] = runBoth([this] { calc(); }, 40, [&] {
        form->widgets().btnMakeMap->click();
        form->widgets().btnLinkTargets->click();
        form->widgets().spnSamples->setValue(7);
    });
    EXPECT_TRUE(found == undisturbed);
    EXPECT_EQ(settings().samples, 25);
    EXPECT_EQ(form->widgets().spnSamples->value(), 25) << "the editor shows the setting again";
}

TEST_F(Reentrance, UnloadDuringACalcStopsItWithoutACrash)
{
    const int testsBefore = host.collisionTests;
    int testsAtUnload = 0;
    host.onCollisionTest = [&](int test) {
        if (test - testsBefore == 40) {
            testsAtUnload = host.collisionTests;
            plugin->pluginUnload();
        }
    };
    EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    host.onCollisionTest = nullptr;
    EXPECT_EQ(plugin->session(), nullptr);
    EXPECT_EQ(host.collisionTests, testsAtUnload) << "no test after the unload";
    EXPECT_EQ(plugin->pluginCommand("Info", ""), "") << "after an unload nothing answers";
    plugin->pluginEvent(4);
    plugin->pluginLoad(window.get(), window->menuBar(), window->statusBar(), &host, QString());
    EXPECT_EQ(plugin->pluginCommand("SelectRobot", "Arm1"), "Arm1");
    EXPECT_EQ(settings().samples, 100) << "a load starts from the defaults";
    EXPECT_EQ(plugin->pluginCommand("Samples", "25"), "OK");
    EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    EXPECT_EQ(map().sampleCount(), 25) << "a fresh load works";
}

TEST_F(Reentrance, UnloadAndLoadDuringAJoinStopIt)
{
    calc();
    host.onCollisionTest = [&](int) {
        host.onCollisionTest = nullptr;
        plugin->pluginUnload();
        plugin->pluginLoad(window.get(), window->menuBar(), window->statusBar(), &host, QString());
    };
    EXPECT_EQ(plugin->pluginCommand("Join", "T3|T4"), "Failed");
    ASSERT_NE(plugin->session(), nullptr);
    EXPECT_EQ(map().sampleCount(), 0) << "the new load starts empty";
    EXPECT_EQ(host.getItem("T3ToT4", ItemType::Program), nullptr);
}

TEST_F(Reentrance, ADeletedRobotStopsTheCalcAndItsMapIsStoredNowhere)
{
    calc();
    session().markChanged();
    plugin->saveSettings();
    const QByteArray stored = host.dataParams.value("Zelvane-Rob Arm1");
    int movesAtDeletion = 0;
    host.onCollisionTest = [&](int) {
        host.onCollisionTest = nullptr;
        robot->deleteItem();
        movesAtDeletion = robot->jointMoveTests + robot->validityChecks;
        plugin->pluginEvent(3);
    };
    EXPECT_EQ(plugin->pluginCommand("Calc", ""), "Done");
    EXPECT_EQ(robot->jointMoveTests + robot->validityChecks, movesAtDeletion) << "the deleted robot is left alone";
    EXPECT_EQ(session().robot(), other) << "another robot is chosen once the computation has stopped";
    session().markChanged();
    plugin->saveSettings();
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm1"), stored) << "the deleted robot's record is untouched";
    EXPECT_EQ(host.dataParams.value("Zelvane-Rob Arm2"), QByteArray::fromHex("000000020000000000000000"
                                                                             "000000020000000000000000"
                                                                             "000000020000000000000000"))
        << "Arm2 gets its own (empty) map, not Arm1's";
}

TEST_F(Reentrance, AnotherStationDuringAJoinStopsItAndDropsTheRobot)
{
    calc();
    const int samplesBefore = map().sampleCount();
    host.onCollisionTest = [&](int) {
        host.onCollisionTest = nullptr;
        plugin->pluginEvent(4);
    };
    EXPECT_EQ(plugin->pluginCommand("Join", "T3|T4"), "Failed");
    EXPECT_EQ(session().robot(), nullptr) << "the old station's robot is not kept";
    EXPECT_EQ(map().sampleCount(), 0) << "the old station's map is gone";
    EXPECT_GE(samplesBefore, 25);
    EXPECT_EQ(host.getItem("T3ToT4", ItemType::Program), nullptr);
}
