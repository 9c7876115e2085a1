// How one rule reads on the screen.
#pragma once

#include "client/APICall.h"

namespace zelto {

/// Prints the block of one rule: its fields, its configuration sections, and the variables it offers.
void printRule(JSONView rule);

}  // namespace zelto
