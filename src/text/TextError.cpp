#include "text/TextError.h"

#include <new>
#include <stdexcept>

namespace text {

std::string errorText(const std::exception& error) {
  if (const auto* known = dynamic_cast<const TextError*>(&error)) return known->text();
  // A length that no container can hold is a failed allocation too, found before it is tried.
  const bool wantsMemory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr ||
                           dynamic_cast<const std::length_error*>(&error) != nullptr;
  return wantsMemory ? "out of memory" : error.what();
}

}  // namespace text
