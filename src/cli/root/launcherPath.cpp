#include "client/StartAPI.h"

// `open` of macOS; many other desktops have a program of that name, which takes a URL as well.
const char* const zelto::launcherPath = ZELTO_LAUNCHER;
