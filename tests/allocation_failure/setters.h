#pragma once

#include "tests/allocation_failure/old_or_new.h"

namespace allocation_test {

/// Gives an object a value by each of its setters, while every allocation fails once: the object has the value
/// afterwards, or is as it was.
template <typename Object, typename Value, typename... Setters>
void ExpectTaken(const Object& object, const Value& value, Setters... setters) {
  (ExpectOldOrNew(object, [&](Object& changing) { (changing.*setters)(value); }), ...);
}

}  // namespace allocation_test
