// The interface the station reports the plug-in's host calls to.
#pragma once

class QJsonObject;

// What the host reports about the plug-in's calls while it answers them: the
// recorder and the scenario runner listen here.
class HostMonitor {
public:
    // Called at the start of every operation the plug-in asks of the host.
    virtual void hostCalled() = 0;
    // Called when the host answers a collision test (a configuration or a joint move).
    virtual void collisionTested() = 0;
    // A transcript record of something the plug-in made the host do.
    virtual void record(const QJsonObject& record) = 0;
    // Whether records are kept at all: building one costs more than most answers.
    virtual bool recording() const = 0;

protected:
    ~HostMonitor() = default;
};
