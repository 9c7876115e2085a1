#include "platform/Log.h"

#include <string>

#ifdef __APPLE__
#include <os/log.h>
#else
#include <syslog.h>
#endif

namespace platform {
namespace {

constexpr const char* subsystem = "com.mirrowfen.Zelto";

}  // namespace

void log(LogLevel level, std::string_view category, std::string_view message) {
  const std::string name(category), line(message);
#ifdef __APPLE__
  const os_log_t target = os_log_create(subsystem, name.c_str());
  os_log_with_type(target, level == LogLevel::error ? OS_LOG_TYPE_ERROR : OS_LOG_TYPE_INFO, "%{public}s",
                   line.c_str());
#else
  ::openlog(subsystem, LOG_PID, LOG_USER);
  ::syslog(level == LogLevel::error ? LOG_ERR : LOG_INFO, "%s: %s", name.c_str(), line.c_str());
  ::closelog();
#endif
}

}  // namespace platform
