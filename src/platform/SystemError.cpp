#include "platform/SystemError.h"

#include <cerrno>
#include <cstring>

namespace platform {

std::string SystemError::reasonNow() {
  return std::strerror(errno);
}

}  // namespace platform
