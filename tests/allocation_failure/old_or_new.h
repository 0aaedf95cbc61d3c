#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

#include "tests/allocation_failure/failing_allocation.h"
#include "tests/allocation_failure/object_state.h"

namespace allocation_test {

/// What an operation that runs out of memory leaves.
enum class Leaves {
  Whole,     ///< the object as it was or as it is to become
  EachPart,  ///< every object in it as it was or as it is to become; done again, the operation comes to its end
};

/// Lets every allocation of an operation on an object fail once. Afterwards the object is what `leaves` says, and the
/// operation succeeds on it.
/// @param prepare what is done to the object before, with all the memory that it takes
template <typename Object, typename Action, typename Prepare>
void ExpectOldOrNew(const Object& object, Action action, Leaves leaves, Prepare prepare) {
  Object changed = object;
  prepare(changed);
  const State before = StateOf(changed);
  action(changed);
  const State after = StateOf(changed);
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    Object failing = object;
    prepare(failing);
    bool failed = false;
    try {
      AllowAllocations(succeeding, [&] {
        action(failing);
        failed = Succeeding() < 0;
      });
      // Sorting does with less memory when there is none.
      ASSERT_EQ(StateOf(failing), after) << "allocation " << succeeding;
      if (!failed) return;
    } catch (const std::bad_alloc&) {
      const State now = StateOf(failing);
      if (leaves == Leaves::Whole) {
        ASSERT_TRUE(now == before || now == after) << "in between at allocation " << succeeding;
      } else {
        ASSERT_TRUE(IsOldOrNewThroughout(now, before, after)) << "a part in between at allocation " << succeeding;
      }
      if (now == after) continue;
      action(failing);
      ASSERT_EQ(StateOf(failing), after) << "done again after allocation " << succeeding;
    }
  }
}

template <typename Object, typename Action>
void ExpectOldOrNew(const Object& object, Action action, Leaves leaves = Leaves::Whole) {
  ExpectOldOrNew(object, action, leaves, [](Object&) {});
}

}  // namespace allocation_test
