// What the files of this folder share about stat(2).
#pragma once

#include <cerrno>

#include <sys/stat.h>

#include "platform/Files.h"

namespace platform {

/// Whether that `errno` of a look-up means that nothing is there.
inline bool meansAbsent(int error) {
  return error == ENOENT || error == ENOTDIR;
}

FileState stateOf(const struct stat& status);

}  // namespace platform
