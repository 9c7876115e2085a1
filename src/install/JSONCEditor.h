// Changes one entry in a JSONC text, two levels deep, and leaves every other byte as it was. A byte order
// mark counts as no part of the text and stays.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "install/Splice.h"
#include "json/JSONValue.h"

namespace zelto::JSONCEditor {

/// What should hold an object holds something else.
struct EditError : std::runtime_error {
  /// `name` is a file's path, a key, or "this file".
  static EditError notAnObject(const std::string& name) { return EditError(name + " is not a JSON object."); }

 private:
  using std::runtime_error::runtime_error;
};

/// `text` with the JSON text `entry` under `key` in the object under `topKey`: in place of the value that is
/// there, else as a new first member. Continuation lines of `entry` are indented like their surroundings. An
/// empty text, or one of comments alone, gets a whole object. The keys stand in the text as given, without
/// escaping. Like that of `remove`, the result views `text`. Raises `EditError` if the text, or what is under
/// `topKey`, is no object.
Splice set(std::string_view text, std::string_view topKey, std::string_view key, std::string_view entry);

/// `text` without the member `key` of the object under `topKey`, and without that object if nothing else is
/// in it; nothing if there is no such member.
std::optional<Splice> remove(std::string_view text, std::string_view topKey, std::string_view key);

/// The object in the file at `path`, an empty one for a blank file; nothing if there is no file. Raises
/// `EditError` for any other content, and `platform::SystemError` if the file cannot be read or looked for.
std::optional<json::JSONObject> readObject(const std::string& path);

}  // namespace zelto::JSONCEditor
