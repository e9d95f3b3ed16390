#pragma once

// The host's own set-up of its window before the plug-in loads; a scenario
// may ask for another than the usual one.
struct HostSetup {
    int utilitiesActions = 0;  // actions put into "menu-Utilities"; -1: no such menu
    bool collisionMenu = true;  // whether "toolbar-CollisionMenu" exists
};
