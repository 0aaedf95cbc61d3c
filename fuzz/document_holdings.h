#pragma once

#include <string>
#include <vector>

#include "host/document/design_document.h"

// What a document has to hold is told without its writer: one that leaves an element out does so every time, and what
// it writes stays the same however often it is read.

namespace vorn_fuzz {

/// Everything that a document of the design's edition holds.
struct DocumentHoldings {
  /// One for each element with all that is said of it, and one for each thing that is carried over in it, in the order
  /// of the document.
  std::vector<std::string> items;
  int carriedWithoutPlace = 0;  ///< carried items whose element the document does not hold
};
/// @param encoding of the document: characters of carried items that it lacks are replaced there
[[nodiscard]] DocumentHoldings HoldingsOf(const vorn_host::DesignDocument& document, vorn_host::TextEncoding encoding);

/// What is not the same in two lists of holdings, "tsf:XSection No.1 20.000 became nothing"; empty when they are equal.
[[nodiscard]] std::string FirstDifference(const std::vector<std::string>& held, const std::vector<std::string>& again);

}  // namespace vorn_fuzz
