// Settings and maps in the station's data parameters.
#pragma once

#include <QString>

class HostApi;
class PlannerSession;
class WrittenMapRecord;

// Settings and maps travel inside the station as data parameters: the
// plug-in's settings record under its name, and one map record per robot
// under "<name>-Rob <robot>". A map is written only under the robot it was
// built or loaded for; a stored record that cannot be used is reported and
// left as it is until a new map is computed for its robot.
class MapStore {
public:
    MapStore(PlannerSession& session, HostApi* host, QString pluginName, WrittenMapRecord& written);

    // Reads the settings record and chooses its robot (or the first one), with
    // that robot's map. False when there is no record or it cannot be used.
    bool loadSettings();
    // Writes both records when something changed.
    void saveSettings();
    // Replaces the map by the stored map of the chosen robot.
    void loadRobotMap();
    void saveRobotMap();

private:
    QString robotMapKey(const QString& robotName) const { return pluginName_ + "-Rob " + robotName; }
    QString optionsKey() const { return pluginName_ + "-Options"; }
    // The options newer than the settings record, in a record of their own so
    // that the settings record keeps its format: int32 version, then bool
    // shortenRoutes (version 1), then int32 growLimit and bool checkRoutes
    // (version 2). A station that never had options gets none; a record of a
    // later version is reported, not used and never overwritten.
    void loadOptions();
    void saveOptions();

    PlannerSession& session_;
    HostApi* host_;
    QString pluginName_;
    WrittenMapRecord& written_;  // the record written last, given again for an unchanged map
};
