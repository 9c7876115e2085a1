// A declarative command-line framework: declare a command once, as a record, and get parsing, errors, help,
// completion scripts, manual pages and a machine-readable dump. See README.md beside this file.
#pragma once

#include "ArgumentParser/Program.h"
#include "ArgumentParser/declarations/Command.h"
#include "ArgumentParser/declarations/CommandTree.h"
#include "ArgumentParser/declarations/Exits.h"
