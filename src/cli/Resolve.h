// From what a person typed to an id of the API.
#pragma once

#include <string>
#include <string_view>

namespace zelto {

/// What a reference on the command line stands for.
struct Resolved {
  std::string id;
  std::string name;
};

/// The one rule whose id is `ref` or begins with it, or whose name it is, ignoring case. Raises `CLIError` if
/// there is none or more than one, or if the list cannot be had.
Resolved resolveRule(std::string_view ref);

/// The same for profiles.
Resolved resolveProfile(std::string_view ref);

/// The first 8 characters of an id, which is how ids are shown in lists.
std::string shortId(std::string_view id);

}  // namespace zelto
