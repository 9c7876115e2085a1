// The application's state in memory: rules, profiles and the two feeds, and what firing a rule does. Safe to
// use from any thread.
#pragma once

#include <atomic>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json.hpp>

#include "Feed.h"

namespace standin {

/// A refusal that the client gets to see: the status and the text of the answer's `error`.
struct APIError : std::runtime_error {
  APIError(int httpStatus, const std::string& text) : std::runtime_error(text), status(httpStatus) {}
  int status;
};

/// Random text, good for a secret.
std::string randomHex(std::size_t digits);

/// The member as text, or an empty text if there is none.
std::string textOf(const boost::json::object& object, std::string_view key);

/// Rules are kept as flat field objects, the form in which they are written, and shown with their fields
/// sorted into nested objects. What is not there or not valid is raised as `APIError`.
class Store {
  using Object = boost::json::object;

 public:
  /// Takes all but the reference texts from the seed.
  explicit Store(const Object& seed);

  Object health();
  /// `scope` is "all" or "visible", which leaves only the active profile's rules.
  boost::json::array rules(std::string_view scope);
  Object createRule(const Object& fields);
  /// Changes the rule's `fields` and returns it; a null takes a field away.
  Object updateRule(std::string_view id, const Object& fields);
  void removeRule(std::string_view id);
  /// Puts an event on the feed and runs the rule's action to its end.
  void fireRule(std::string_view id);

  /// In the order in which the groups first occur among the rules.
  boost::json::array groups();
  /// Sets one field of every rule of the group.
  void updateGroup(std::string_view name, std::string_view field, const boost::json::value& value);

  boost::json::array profiles();
  Object createProfile(const std::string& name, const std::string& icon);
  void activateProfile(std::string_view id);

  /// Ends waits and running scripts, for the end of the server.
  void stop();

  Feed events{"events"};
  Feed actions{"actions"};
  std::atomic<bool> stopping = false;

 private:
  Object& find(std::vector<Object>& list, std::string_view id, const char* what);
  void activate(std::string_view id);
  void assign(Object& rule, const Object& fields) const;
  const Object* subEvent(const Object& rule) const;
  Object view(const Object& rule) const;
  std::string act(const Object& rule, const Object& values, Object& entry, Object& next);

  const std::string version;
  const boost::json::array triggerTypes;
  std::mutex mutex;
  std::vector<Object> ruleList;
  std::vector<Object> profileList;
  std::size_t active = 0;  // index of the active profile
};

}  // namespace standin
