// Entry points of the plug-in that no exception leaves.
#pragma once

#include <exception>
#include <new>
#include <utility>

class HostApi;
class PlannerResources;

// The plug-in lives in the host's process: an exception that left one of its
// entry points would end the user's whole session. Every entry point runs its
// body through guardedEntry(): running out of memory, or anything else that
// throws, is reported to the user, an operation it interrupted is closed, and
// the entry point gives its empty answer.
void reportEntryFailure(PlannerResources& resources, HostApi* host, const char* what);

template <typename Body, typename Result>
Result guardedEntry(PlannerResources& resources, HostApi* host, Result failed, Body&& body)
{
    try {
        return std::forward<Body>(body)();
    } catch (const std::bad_alloc&) {
        reportEntryFailure(resources, host, nullptr);
    } catch (const std::exception& error) {
        reportEntryFailure(resources, host, error.what());
    } catch (...) {
        reportEntryFailure(resources, host, "");
    }
    return failed;
}

template <typename Body> void guardedEntry(PlannerResources& resources, HostApi* host, Body&& body)
{
    guardedEntry(resources, host, 0, [&body] {
        std::forward<Body>(body)();
        return 0;
    });
}
