// The error of a command.
#pragma once

#include <string>
#include <utility>

#include "text/TextError.h"

namespace zelto {

/// What a command reports to a person; printed as "Error: " and the description, status 1.
struct CLIError : text::TextError {
  explicit CLIError(std::string text) : description(std::move(text)) {}
  const std::string& text() const noexcept override { return description; }
  std::string description;
};

}  // namespace zelto
