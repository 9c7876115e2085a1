// The settable fields of a rule: the ones that agents are told of, and all that a rule's body may hold.
#pragma once

#include <string_view>
#include <vector>

#include "client/APICall.h"

namespace zelto {

/// From a field's name to its JSON Schema: the fields that `zelto_create_rule` and `zelto_update_rule` share.
const JSONObject& ruleFieldSchema();

/// The keys that the body of a rule's creation or update may hold.
const std::vector<std::string_view>& ruleBodyKeys();

/// The JSON Schema of one property; an empty `description` is left out.
JSONObject propertySchema(std::string_view type, std::string_view description);

}  // namespace zelto
