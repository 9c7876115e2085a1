#include "platform/Launcher.h"

// `open` of macOS; many other desktops have a program of that name, which takes a URL as well.
const char* const platform::launcherPath = ZELTO_LAUNCHER;
