// The program under test, and what its cases say in terms of a run.
#pragma once

#include <gmock/gmock.h>

#include "support/Application.h"
#include "support/Cases.h"
#include "support/RawServer.h"

namespace zelto {

/// The program beside a stand-in of its own.
struct Zelto : support::Application {
  explicit Zelto(const std::string& program = ZELTO) : Application(program, STANDIN) {}

  /// Leads the program to a server of the test.
  void lookAt(const support::RawServer& server) {
    environment["ZELTO_CONTROL_FILE"] = home / "control.json";
    support::writeFile(home / "control.json", server.controlFile());
  }

  /// Runs the command line of the case and compares its status and all that it prints. The home directory
  /// reads $HOME.
  void expect(const support::Case& expected, bool onTerminal) const;
};

/// The cases of a file beside this one.
std::vector<support::Case> casesIn(const std::string& name);

/// What the API answers in a case: its "<" lines, or an empty object.
std::vector<std::string> answers(const support::Case& of);

/// The line by which an agent calls a tool: "NAME ARGUMENTS", the arguments as JSON.
std::string toolCall(const std::string& call);

/// The text with its escape sequences as marks: "<32>on</>" is a green "on".
std::string marked(std::string text);

/// A text with such marks as it reads without colour.
std::string unmarked(std::string text);

/// The requests of a server, one a line: method, target and body.
std::string summary(const std::vector<std::string>& requests);

}  // namespace zelto
