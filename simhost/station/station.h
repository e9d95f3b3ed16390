// The in-memory station: its items, parameters and selection.
#pragma once

#include "cell_checker_cache.h"
#include "cell_stats.h"
#include "sim_item.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <unordered_set>
#include <vector>

class HostMonitor;

// Told when the 3D view has something new to show.
class SceneListener {
public:
    // A drawing or a joint sequence came.
    virtual void sceneChanged() = 0;
    // The host was asked to refresh the view (update()).
    virtual void refresh() = 0;

protected:
    ~SceneListener() = default;
};

// The configurations a robot was last asked to show, one per entry.
struct JointSequence {
    SimItem* robot = nullptr;
    std::vector<std::vector<double>> configurations;
    int serial = 0;  // grows with every new sequence
};

// The in-memory station: its items in station order (one list per type), its
// host parameters, data parameters, selection and display mode. The station
// owns every item it ever held; deleted ones stay alive but leave the lists.
// It is the world its robots' 3D checks look at.
class Station final : public CellWorld {
public:
    Station() = default;
    Station(const Station&) = delete;
    Station& operator=(const Station&) = delete;

    // Appends a new item of that type; an id <= 0 takes the next free one.
    // An id given must be free (station files are checked for that first).
    SimItem* create(int type, const QString& name, int id = 0);
    // Keeps that id for the item a file gives it: new items take higher ones
    // while there are higher ones, and never that one.
    void reserveId(int id)
    {
        usedIds_.insert(id);
        nextId_ = std::max(nextId_, qint64(id) + 1);
    }

    // The first item of that type and name in station order, or null.
    SimItem* find(const QString& name, int type) const;
    // The first item of that name, looked up as target, program, robot, frame.
    SimItem* findAny(const QString& name) const;
    // The live item with that id, or null.
    SimItem* findId(int id) const;

    const std::vector<SimItem*>& items(int type) const;
    // Every live item: frames, robots, targets, programs, objects.
    std::vector<SimItem*> allItems() const;

    // True while the item belongs to this station and was not deleted.
    bool holds(const HostItem* item) const;
    // True when the item is one of this station's, deleted or not.
    bool knows(const HostItem* item) const { return item && members_.count(item); }
    void remove(SimItem* item);
    // Marks every item deleted, when another station takes this one's place.
    void retire();

    // The host parameter "PathStepCollisionDeg"; 4.0 when missing or not a number.
    double pathStepDeg() const;
    // Pairs (robot, box) whose box holds the robot's current joints, plus the
    // pairs the 3D model finds at the robots' current joints.
    int collisions() const;

    // The robot's 3D checker, kept until the station's geometry changes.
    CellChecker& cellChecker(const SimItem* robot) const { return cellCheckers_.checkerFor(*this, robot); }
    // Tells the 3D checks that the geometry changed: call it after changing
    // an item's pose, parent, solid or arm in place. Adding and removing
    // items and moving a rail tell it themselves (a new item's solid set
    // after a check came in between is a change in place).
    void geometryChanged() const { cellCheckers_.invalidate(); }
    long long cellCheckerBuilds() const { return cellCheckers_.builds(); }

    // Counts the changes of what a station file holds (items, their names,
    // joints and instructions, parameters, data): a window compares it with
    // the count at the last save to know whether there is work to lose.
    // A station read from its file starts at 0.
    std::uint64_t revision() const { return revision_; }
    void changed() { ++revision_; }
    void forgetChanges() { revision_ = 0; }

    // CellWorld
    std::vector<std::shared_ptr<const CellObject>> cellObjects() const override;
    CellStats& cellWork() const override { return cellStats; }

    QMap<QString, QString> params;
    // Parameters the file gave as numbers and nobody changed since: saved as numbers again.
    QSet<QString> numberParams;
    // The file's own fields the host does not know, saved back as they were.
    QJsonObject keptFields;
    QMap<QString, QByteArray> data;
    QList<SimItem*> selection;
    int renderMode = 0;
    HostMonitor* monitor = nullptr;
    SceneListener* scene = nullptr;
    JointSequence shownSequence;
    // Work of the 3D model, counted even in calls that look at the station only.
    mutable CellStats cellStats;

private:
    // The parameter's text the step was last read from, and the step: every
    // joint move asks, and the text seldom changes.
    mutable QString stepText_;
    mutable double step_ = 4.0;

    std::vector<SimItem*>& list(int type);
    int freeId();

    std::vector<std::unique_ptr<SimItem>> owned_;
    std::unordered_set<const HostItem*> members_;
    std::vector<SimItem*> frames_;
    std::vector<SimItem*> robots_;
    std::vector<SimItem*> targets_;
    std::vector<SimItem*> programs_;
    std::vector<SimItem*> objects_;
    std::vector<SimItem*> others_;
    std::unordered_set<int> usedIds_;
    qint64 nextId_ = 1;     // above every id used, while that is an int
    int lowestUnused_ = 1;  // no id below it is free, once ids above the largest ran out
    std::uint64_t revision_ = 0;
    mutable CellCheckerCache cellCheckers_;
};
