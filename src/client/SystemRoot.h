// Where other software of the machine is looked for.
#pragma once

namespace zelto {

/// Stands before a path like "/Applications/Cursor.app" when the program looks whether something is there.
/// Empty in the shipped program. In a build for development or tests "~", since what a developer has
/// installed must not change what a test sees. Defined beside `launcherPath`.
extern const char* const systemRoot;

}  // namespace zelto
