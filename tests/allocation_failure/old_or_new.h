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

/// Whether an operation has to change its object for a test of it to tell anything.
enum class Changes {
  Always,   ///< the test prepares an object that the operation changes
  Perhaps,  ///< an operation that writes the object, and settles on the way what in it is not settled yet
};

/// Lets every allocation of an operation on an object fail once. Afterwards the object is what `leaves` says, and the
/// operation succeeds on it. An operation that allocates nothing, or leaves the object unlike what `changes` says, is a
/// mistake of the test: it would pass whatever the library does.
/// @param prepare what is done to the object before, with all the memory that it takes
template <typename Object, typename Action, typename Prepare>
void ExpectOldOrNew(const Object& object, Action action, Leaves leaves, Changes changes, Prepare prepare) {
  Object changed = object;
  prepare(changed);
  const State before = StateOf(changed);
  ASSERT_GT(AllocationsOf([&] { action(changed); }), 0u) << "nothing was allocated";
  const State after = StateOf(changed);
  ASSERT_TRUE(changes == Changes::Perhaps || after != before) << "nothing was changed";
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
      if (now == after && now != before) continue;
      action(failing);
      ASSERT_EQ(StateOf(failing), after) << "done again after allocation " << succeeding;
    }
  }
}

template <typename Object, typename Action>
void ExpectOldOrNew(const Object& object, Action action, Leaves leaves = Leaves::Whole) {
  ExpectOldOrNew(object, action, leaves, Changes::Always, [](Object&) {});
}

/// As `ExpectOldOrNew`, for an operation that writes an object and may have nothing to settle in it.
template <typename Object, typename Action>
void ExpectOldOrNewWhenWritten(const Object& object, Action action) {
  ExpectOldOrNew(object, action, Leaves::EachPart, Changes::Perhaps, [](Object&) {});
}

/// An operation that needs no memory for changing an object: it comes to its end when there is none.
/// @param prepare as above
template <typename Object, typename Action, typename Prepare>
void ExpectNoAllocation(const Object& object, Action action, Prepare prepare) {
  Object changed = object;
  prepare(changed);
  const State before = StateOf(changed);
  EXPECT_EQ(AllocationsOf([&] { action(changed); }), 0u) << "memory is asked for: let that fail";
  EXPECT_NE(StateOf(changed), before) << "nothing was changed";
}

template <typename Object, typename Action>
void ExpectNoAllocation(const Object& object, Action action) {
  ExpectNoAllocation(object, action, [](Object&) {});
}

}  // namespace allocation_test
