#pragma once

#include <cstddef>
#include <string>

namespace vorn_host {

/// A value of a document that the library reads as something else, or not at all: rewriting the document falsifies it.
/// The library reads leniently and never tells; whoever rewrites a document has to be told what will change.
struct UnreadValue {
  std::size_t line = 0;  ///< from 1
  /// "tsf:ComposedPnt L1, attribute location"
  std::string where;
  /// As the document has it, shortened when it is long; empty when there is none.
  std::string text;
  /// "is none of Center, Left, Right"
  std::string reason;
};

/// The text in quotation marks and what is wrong with it: `"Lefft" is none of Center, Left, Right`.
[[nodiscard]] std::string Describe(const UnreadValue& value);
/// "line 12: tsf:ComposedPnt L1, attribute location"
[[nodiscard]] std::string PlaceOf(const UnreadValue& value);

}  // namespace vorn_host
