#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace vorn_host {

/// A value of a document that the library reads as something else, or not at all: rewriting the document falsifies it.
struct UnreadValue {
  std::size_t line = 0;
  /// "tsf:ComposedPnt L1, attribute location"
  std::string where;
  /// As the document has it, shortened when it is long; empty when there is none.
  std::string text;
  /// "is none of Center, Left, Right"
  std::string reason;
};

/// Every such value in the order of the document. The library reads leniently and never tells; whoever rewrites a
/// document has to be told what will change.
/// @param text what the tree was parsed from, for the lines
/// @param edition20 whether the document is read as one of edition 2.0, whose control targets have no points
[[nodiscard]] std::vector<UnreadValue> FindUnreadValues(const pugi::xml_document& tree, std::string_view text,
                                                        bool edition20);

/// The text in quotation marks and what is wrong with it: `"Lefft" is none of Center, Left, Right`.
[[nodiscard]] std::string Describe(const UnreadValue& value);
/// "line 12: tsf:ComposedPnt L1, attribute location"
[[nodiscard]] std::string PlaceOf(const UnreadValue& value);

}  // namespace vorn_host
