// How a planning step shows its state and learns of a cancel.
#pragma once

#include <QString>

// How a planning step shows its state and learns that it must stop: a
// headline, a detail line and a percentage. The progress dialog implements it
// in the plug-in; unit tests record what they are told.
class PlannerProgress {
public:
    virtual ~PlannerProgress() = default;

    virtual void setHeadline(const QString& text) = 0;
    virtual void setDetail(const QString& text) = 0;
    // Shows the headline, the detail and value (0..100, or -1 to leave the
    // bar as it is); true when the step is cancelled.
    virtual bool update(int value) = 0;
    // True when the step must stop at once and ask the checker nothing more
    // (its robot or station is gone).
    virtual bool abandoned() const = 0;
};
