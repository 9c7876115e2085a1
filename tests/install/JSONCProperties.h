// What must hold of an edit of any text, whatever is in it; the generated tests and the fuzzer ask the same.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json.hpp>

#include "install/JSONCEditor.h"
#include "install/JSONCScanner.h"

namespace properties {

using Value = std::optional<boost::json::value>;

/// Gives a name to what the library reads as not a number ("0E344"), for that equals nothing, not even
/// itself.
inline void nameNaNs(boost::json::value& value) {
  if (const auto* number = value.if_double(); number != nullptr && *number != *number) value = "not a number";
  if (auto* array = value.if_array()) std::for_each(array->begin(), array->end(), nameNaNs);
  if (auto* object = value.if_object()) {
    for (auto& member : *object) nameNaNs(member.value());
  }
}

inline Value parsed(std::string_view text, bool lenient) {
  boost::json::parse_options options;
  options.max_depth = 512;
  options.allow_comments = options.allow_trailing_commas = lenient;
  boost::json::error_code error;
  auto value = boost::json::parse(text, error, {}, options);
  if (error || !value.is_object()) return {};
  nameNaNs(value);
  return value;
}

/// The object in `text` as a parser with comments and trailing commas of its own reads it; nothing if it does
/// not, or where it may take comments differently (it misses the end of one in "**/", for instance).
inline Value reading(std::string_view text) {
  if (text.find("/*/") != text.npos || text.find("**/") != text.npos ||
      text.find_first_of("\v\f\xC2\xE2") != text.npos)
    return {};
  for (std::size_t i = text.find('\r'); i != text.npos; i = text.find('\r', i + 1)) {
    if (text.substr(i, 2) != "\r\n") return {};
  }
  return parsed(text, true);
}

/// `value` without the entry, and without the object that held it if that is empty then.
inline Value withoutEntry(Value value) {
  auto& members = value->as_object();
  auto* servers = members.if_contains("mcpServers");
  if (servers == nullptr || !servers->is_object()) return value;
  servers->as_object().erase("zelto");
  if (servers->as_object().empty()) members.erase("mcpServers");
  return value;
}

/// Whether taking one stretch out of `longer` makes `shorter` of it.
inline bool cuts(std::string_view longer, std::string_view shorter) {
  const auto end = std::mismatch(shorter.begin(), shorter.end(), longer.begin(), longer.end()).first;
  return longer.ends_with(std::string_view(end, shorter.end()));
}

/// All that stands in the comments of `text`, without spaces and commas.
inline std::string commentsOf(const std::string& text) {
  const std::string blanked = zelto::JSONCEditor::blankComments(text);
  std::string comments;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != blanked[i] && text[i] != ',') comments += text[i];
  }
  return comments;
}

/// Names the property that `text` breaks; empty if all hold.
inline std::string broken(const std::string& text) {
  using namespace zelto::JSONCEditor;
  const auto install = [](const std::string& old) {
    return set(old, "mcpServers", "zelto", "{\n\"a\": [1]}").applied();
  };
  const auto uninstall = [](const std::string& old) {
    const auto splice = remove(old, "mcpServers", "zelto");
    return splice ? std::optional(splice->applied()) : std::nullopt;
  };
  const Value before = reading(text);
  const auto readsAlike = [&before](const std::string& other) {
    const Value after = reading(other);
    return !before || (after && withoutEntry(after) == withoutEntry(before));
  };
  const std::string blanked = blankComments(text);
  if (blanked.size() != text.size()) return "blanking keeps the length";
  if (before && parsed(blanked, false) != before) return "the blanked copy reads the same";

  const auto removed = uninstall(text);
  if (removed && !cuts(text, *removed)) return "remove cuts out one stretch";
  if (removed && !readsAlike(*removed)) return "remove takes the entry alone";
  if (removed && before && !cuts(commentsOf(text), commentsOf(*removed))) return "remove keeps comments";
  std::string changed;
  try {
    changed = install(text);
  } catch (const EditError&) {
    const auto* servers = before ? before->as_object().if_contains("mcpServers") : nullptr;
    return before && (servers == nullptr || servers->is_object()) ? "set takes a sound text" : "";
  }
  // What replaces a broken value can leave what follows it looking like something else.
  if (removed && !before) return "";
  if (install(changed) != changed) return "set twice is set once";
  if (!readsAlike(changed)) return "set changes the entry alone";
  const auto undone = uninstall(changed);
  if (!undone || !readsAlike(*undone)) return "remove undoes set";
  if (removed) return *undone == *removed ? "" : "set replaces the entry alone";
  if (Scanner(text).firstBrace(0) && !cuts(changed, text)) return "set inserts one stretch";
  if (before && commentsOf(changed) != commentsOf(text)) return "set keeps comments";
  // With equal keys, or one in escapes, a parser may look at another member than the editor.
  const bool clear = text.find("mcpServers") == text.rfind("mcpServers") && text.find('\\') == text.npos;
  const bool isSet = !clear || !before || reading(changed)->at("mcpServers").as_object().contains("zelto");
  return isSet ? "" : "set sets the entry";
}

}  // namespace properties
