// The two errors of the program: one written for people, one for agents and people alike.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace zelto {

/// What a command reports to a person; printed as "Error: " and the description, status 1.
struct CLIError : std::exception {
  explicit CLIError(std::string text) : description(std::move(text)) {}
  const char* what() const noexcept override { return description.c_str(); }
  std::string description;
};

/// What the API client and the MCP server raise; its message reaches an agent unchanged.
struct MCPError : std::exception {
  explicit MCPError(std::string text) : message(std::move(text)) {}
  const char* what() const noexcept override { return message.c_str(); }
  std::string message;
};

}  // namespace zelto
