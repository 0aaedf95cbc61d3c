#pragma once

#include "host/document/design_document.h"

namespace vorn_fuzz {

/// Gives a design what it becomes when it is written in its edition and read again, where that is not what it was:
/// such points, dates and ground points are written otherwise, once. All else stays.
void Settle(vorn_host::DesignDocument& document);

}  // namespace vorn_fuzz
