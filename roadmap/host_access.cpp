// The host the roadmap core reaches without a plug-in object.
#include "host_access.h"

namespace {
HostApi* currentHost = nullptr;
}

void setRoadmapHost(HostApi* host)
{
    currentHost = host;
}

HostApi* roadmapHost()
{
    return currentHost;
}
