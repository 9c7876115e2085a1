#include "client/StartAPI.h"
#include "client/SystemRoot.h"

// open(1) of macOS; on many other desktops a program of that name takes URLs too.
const char* const zelto::launcherPath = ZELTO_LAUNCHER;
const char* const zelto::systemRoot = ZELTO_SYSTEM_ROOT;
