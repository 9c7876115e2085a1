// An error whose text may hold any character, and the text of any error.
#pragma once

#include <exception>
#include <string>

namespace text {

/// Carries a text that may hold any character; `what()` ends at its first NUL.
struct TextError : std::exception {
  virtual const std::string& text() const noexcept = 0;
  const char* what() const noexcept override { return text().c_str(); }
};

/// What the error says, to people: "out of memory" for an allocation that failed.
std::string errorText(const std::exception& error);

}  // namespace text
