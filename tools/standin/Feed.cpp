#include "Feed.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace standin {

std::string timestampNow() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  tm utc{};
  gmtime_r(&now.tv_sec, &utc);
  char text[32];
  const std::size_t size = strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &utc);
  std::snprintf(text + size, sizeof text - size, ".%03dZ", static_cast<int>(now.tv_nsec / 1'000'000));
  return text;
}

void Feed::append(boost::json::object entry) {
  constexpr std::size_t kept = 1000;
  entry.emplace("timestamp", timestampNow());
  std::lock_guard lock(mutex);
  entry["seq"] = ++lastSeq;
  entries.push_back(std::move(entry));
  if (entries.size() > kept) entries.pop_front();
  changed.notify_all();
}

boost::json::object Feed::read(std::int64_t since, std::size_t limit, double seconds) {
  std::unique_lock lock(mutex);
  // A cursor from before a restart lies ahead of the new numbers; it must not hide what comes next.
  since = std::min(since, lastSeq);
  changed.wait_for(lock, std::chrono::duration<double>(seconds), [&] { return stopped || lastSeq > since; });
  auto first = std::find_if(entries.begin(), entries.end(),
                            [&](const auto& entry) { return entry.at("seq").as_int64() > since; });
  const auto found = static_cast<std::size_t>(entries.end() - first);
  if (found > limit) first = entries.end() - static_cast<std::ptrdiff_t>(limit);
  return {{key, boost::json::array(first, entries.end())}, {"lastSeq", lastSeq}};
}

void Feed::stop() {
  std::lock_guard lock(mutex);
  stopped = true;
  changed.notify_all();
}

}  // namespace standin
