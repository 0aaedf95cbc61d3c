#pragma once

#include "vorn/control/form_ctrl_target.h"

namespace vorn_host {

/// The codes in the text of a control target, as edition 2.0 holds them: an empty one keeps its place.
[[nodiscard]] CStringArray CodesOf(const VornFormCtrlTarget& target);

}  // namespace vorn_host
