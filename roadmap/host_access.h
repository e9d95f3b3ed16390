// The host the roadmap core talks to.
#pragma once

class HostApi;

// The host the roadmap core talks to. The plug-in publishes it at load, before
// any sampling or collision test; the core reaches the host without a plug-in.
void setRoadmapHost(HostApi* host);
HostApi* roadmapHost();
