#include "platform/Log.h"

#include <string>

#ifdef __APPLE__
#include <os/log.h>
#else
#include <syslog.h>
#endif

namespace platform {
void log(const LogSource& source, LogLevel level, std::string_view message) {
  const std::string line(message);
#ifdef __APPLE__  // os_log(3)
  const os_log_t target = os_log_create(source.subsystem, source.category);
  os_log_with_type(target, level == LogLevel::error ? OS_LOG_TYPE_ERROR : OS_LOG_TYPE_INFO, "%{public}s",
                   line.c_str());
#else
  ::openlog(source.subsystem, LOG_PID, LOG_USER);
  ::syslog(level == LogLevel::error ? LOG_ERR : LOG_INFO, "%s: %s", source.category, line.c_str());
  ::closelog();
#endif
}

}  // namespace platform
