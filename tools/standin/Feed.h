// A numbered log that readers can wait on: trigger events, or runs of actions. Safe to use from any thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

#include <boost/json.hpp>

namespace standin {

/// The present time as entries have it: "2025-11-21T08:12:44.318Z".
std::string timestampNow();

class Feed {
 public:
  /// `listKey` is the key of the entries in an answer.
  explicit Feed(std::string listKey) : key(std::move(listKey)) {}
  /// Numbers the entry, and stamps it with the present time unless it has a `timestamp`.
  void append(boost::json::object entry);
  /// The entries numbered above `since`, at most the newest `limit` of them, newest last, and `lastSeq`.
  /// Waits up to `seconds` while there is none.
  boost::json::object read(std::int64_t since, std::size_t limit, double seconds);
  /// Ends all waits, and lets no later one start.
  void stop();

 private:
  std::string key;
  std::deque<boost::json::object> entries;
  std::int64_t lastSeq = 0;
  bool stopped = false;
  std::mutex mutex;
  std::condition_variable changed;
};

}  // namespace standin
