// field=value texts as the body of a rule.
#pragma once

#include <string>
#include <vector>

#include "client/APICall.h"

namespace zelto {

/// A Boolean for true, yes, false and no (in any case), a floating-point number for plain decimal digits,
/// else the text as typed.
JSONValue coerceFieldValue(const std::string& text);

/// The fields that the texts assign; of equal ones the last counts. Raises `CLIError` at the first text that
/// is no assignment.
JSONObject parseAssignments(const std::vector<std::string>& assignments);

}  // namespace zelto
