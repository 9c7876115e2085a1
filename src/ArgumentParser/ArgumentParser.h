// A declarative command-line framework: declare a command once, as a record, and get parsing, errors, help,
// completion scripts and a machine-readable dump. See README.md beside this file.
#pragma once

#include "ArgumentParser/Command.h"
#include "ArgumentParser/CommandTree.h"
#include "ArgumentParser/ParserError.h"
#include "ArgumentParser/Program.h"
