#pragma once

#include <string>
#include <vector>

#include "host/document/design_document.h"

// What a document has to hold is told without its writer: one that leaves an element out does so every time, and what
// it writes stays the same however often it is read.

namespace vorn_fuzz {

/// Everything that a document of the design's edition holds of the model, an item for each element with all that is
/// said of it, in the order of the document.
[[nodiscard]] std::vector<std::string> HoldingsOf(const vorn_host::DesignDocument& document);

/// How many elements, attributes and comments are carried over.
[[nodiscard]] int CarriedItems(const std::vector<vorn_host::CarriedContent::Row>& rows);

/// What is not the same in two lists of holdings, "tsf:XSection No.1 20.000 became nothing"; empty when they are equal.
[[nodiscard]] std::string FirstDifference(const std::vector<std::string>& held, const std::vector<std::string>& again);

}  // namespace vorn_fuzz
