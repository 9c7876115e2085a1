// The program under test, and the files of expectations that it is held against.
#pragma once

#include <gmock/gmock.h>

#include "support/Application.h"
#include "support/RawServer.h"

namespace zelto {

/// One command line of a file of expectations, and the marked lines below it.
struct Expectation {
  std::string command;
  /// Mark and text of each line.
  std::vector<std::pair<std::string, std::string>> lines;

  /// The lines with one of these marks, each with its line end.
  std::string all(std::string_view marks) const;
  /// What the API answers by the lines marked "<": a body under the status 200 or the one behind the mark
  /// ("<404"); "<<" is a connection that ends without an answer. Without such lines, an empty object.
  std::vector<std::string> responses() const;
};

/// The program beside a stand-in of its own.
struct Zelto : support::Application {
  explicit Zelto(const std::string& program = ZELTO) : Application(program, STANDIN) {}

  /// Leads the program to a server of the test.
  void lookAt(const support::RawServer& server) {
    environment["ZELTO_CONTROL_FILE"] = home / "control.json";
    support::writeFile(home / "control.json", server.controlFile());
  }

  /// Runs the command line and compares all that it prints with the lines marked "=" (output), "+" (output on
  /// a terminal alone), "-" (output in a pipe alone) and "!" (an error, with status 1). The home directory
  /// reads $HOME.
  void expect(const Expectation& expected, bool onTerminal) const;
};

/// Reads a file: "$ " and a command line, then lines of a mark, a blank and a text. "#" is a comment; "@NAME
/// text" gives a text a name, by which "<" lines can call it. A dot at the end of a text holds the blanks
/// before it.
std::vector<Expectation> expectationsIn(const std::string& file);

/// The line by which an agent calls a tool: "NAME ARGUMENTS", the arguments as JSON.
std::string toolCall(const std::string& call);

/// The text with its escape sequences as marks: "<32>on</>" is a green "on".
std::string marked(std::string text);

/// A text with such marks as it reads without colour.
std::string unmarked(std::string text);

/// The requests of a server, one a line: method, target and body.
std::string summary(const std::vector<std::string>& requests);

}  // namespace zelto
