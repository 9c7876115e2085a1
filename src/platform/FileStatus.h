// What the files of this folder share about the system's look at a file.
#pragma once

#include <cerrno>

#include <sys/stat.h>

#include "platform/Files.h"

namespace platform {

/// Whether that error of a look-up says that nothing is there.
inline bool meansAbsent(int error) {
  return error == ENOENT || error == ENOTDIR;
}

FileState stateOf(const struct stat& status);

}  // namespace platform
