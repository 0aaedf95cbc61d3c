#pragma once

#include "fuzz/input_reader.h"
#include "host/document/design_document.h"

namespace vorn_fuzz {

/// How many kinds of steps there are; the first are those of the design editor, the others the library's own.
[[nodiscard]] int StepCount();

/// Takes one step on a design.
/// @returns false when it cannot be done; the design may be half edited then
bool TakeStep(int step, vorn_host::DesignDocument& design, InputReader& input);

/// Whether a step leaves forms that bear one serial, as splitting a form does.
[[nodiscard]] bool SharesSerials(int step);

}  // namespace vorn_fuzz
