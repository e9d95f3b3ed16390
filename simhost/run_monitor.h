#pragma once

#include "host_monitor.h"

#include <QString>

class QProgressDialog;
class Transcript;

// Watches the plug-in through its calls to the host: writes the records the
// host makes, notes every change of the visible progress dialog, and cancels
// that dialog at a chosen collision test when a scenario asks for it.
class RunMonitor final : public HostMonitor {
public:
    explicit RunMonitor(Transcript& transcript) : transcript_(transcript) {}

    void hostCalled() override { checkProgress(); }
    void collisionTested() override;
    void record(const QJsonObject& record) override;

    // Writes a "progress" record when the visible dialog's label or value changed.
    void checkProgress();
    // From now on, cancel the open progress dialog at the count-th collision test.
    void cancelAtCollisionTest(int count);
    void disarmCancel() { cancelAt_ = 0; }

    static QProgressDialog* visibleProgressDialog();

private:
    Transcript& transcript_;
    bool haveLast_ = false;
    QString lastTitle_;
    QString lastLabel_;
    int lastValue_ = 0;
    int cancelAt_ = 0;
    int testsSeen_ = 0;
};
