#pragma once

#include "fuzz/input_reader.h"
#include "host/document/design_document.h"

namespace vorn_fuzz {

/// How many kinds of steps there are; the first are those of the design editor, the others the library's own.
[[nodiscard]] int StepCount();

/// Takes one step on a design. One that has an opposite leads there and back first, and what a step says that it keeps
/// is looked at.
/// @returns false when it cannot be done; the design may be half edited then
bool TakeStep(int step, vorn_host::DesignDocument& design, InputReader& input);

/// Whether a step may split forms, whose halves bear one serial.
[[nodiscard]] bool MaySplitForms(int step);

}  // namespace vorn_fuzz
