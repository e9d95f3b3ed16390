// Records and steers a scripted run through the plug-in's host calls.
#pragma once

#include "host_monitor.h"

#include <QString>

#include <functional>
#include <vector>

class QProgressDialog;
class Transcript;

// Watches the plug-in through its calls to the host: writes the records the
// host makes, notes every change of the visible progress dialog, cancels that
// dialog at a chosen collision test and runs chosen work from inside a chosen
// collision test, when a scenario asks for it.
class RunMonitor final : public HostMonitor {
public:
    explicit RunMonitor(Transcript& transcript) : transcript_(transcript) {}

    void hostCalled() override { checkProgress(); }
    void collisionTested() override;
    void record(const QJsonObject& record) override;
    bool recording() const override;

    // Writes a "progress" record when the visible dialog's label or value changed.
    void checkProgress();
    // From now on, cancel the open progress dialog at the count-th collision test.
    void cancelAtCollisionTest(int count);
    // From now on, run the work from inside the count-th collision test, once;
    // `what` names it while it waits.
    void runAtCollisionTest(int count, const QString& what, std::function<void()> work);
    // Work that was asked for and has not run yet.
    struct Pending {
        QString what;
        int at;    // the collision test it waits for
        int seen;  // the collision tests seen since it was asked for
    };
    std::vector<Pending> pendingWork() const;
    // Forgets what was asked for the coming collision tests.
    void disarm();

    static QProgressDialog* visibleProgressDialog();

private:
    struct Scheduled {
        QString what;
        int at = 0;
        int seen = 0;
        std::function<void()> work;
    };
    // What the scenario asked for the coming collision tests.
    struct Armed {
        int cancelAt = 0;
        int cancelSeen = 0;
        std::vector<Scheduled> work;
    };

    void runScheduled();

    Transcript& transcript_;
    bool haveLast_ = false;
    QString lastTitle_;
    QString lastLabel_;
    int lastValue_ = 0;
    Armed armed_;
};
