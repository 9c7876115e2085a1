// The two errors of the program: one written for people, one for agents and people alike.
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

/// What the API client and the MCP server raise; its message reaches an agent unchanged.
struct MCPError : text::TextError {
  explicit MCPError(std::string text) : message(std::move(text)) {}
  const std::string& text() const noexcept override { return message; }
  std::string message;
};

}  // namespace zelto
