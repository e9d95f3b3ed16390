// The map record written last, kept with the map it holds.
#pragma once

#include "roadmap_graph.h"
#include "roadmap_matrix.h"

#include <QByteArray>
#include <QString>

class RobotMap;

// The map record the plug-in wrote last and a copy of the map it holds. A
// record runs to a gigabyte and more (its graph is dense), and the station is
// saved and closed, and robots switched, often with the map unchanged: such a
// map is not encoded again, its record is handed to the host once more. The
// copy is compared value by value, bit for bit, so that the record given back
// is the one encoding the map would give.
//
// The bytes are shared with the host, which keeps them under the key; they are
// let go with forget() when the station closes, another one opens, or the
// plug-in is unloaded.
class WrittenMapRecord {
public:
    // The record last written under `key`, when `map` is still what it holds;
    // a null array otherwise.
    QByteArray reuse(const QString& key, const RobotMap& map) const;
    // `bytes`, just written under `key`, hold `map`.
    void remember(const QString& key, const RobotMap& map, const QByteArray& bytes);
    void forget();

private:
    static bool same(const RoadmapMatrix* copy, const RoadmapMatrix* matrix);
    static bool same(const RoadmapGraph& copy, const RoadmapGraph& graph);

    QString key_;        // empty: nothing kept
    QByteArray bytes_;   // the record
    ScopedMatrix samples_ = makeScopedMatrix();  // the map it holds
    RoadmapGraph graph_;
    ScopedMatrix route_ = makeScopedMatrix();
};
