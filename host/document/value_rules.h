#pragma once

#include <array>
#include <string>
#include <string_view>

#include "host/document/element_knowledge.h"
#include "vorn/control/form_ctrl_target.h"
#include "vorn/model/composed_pnt.h"

namespace vorn_host {

/// The library's parsers are members of what they fill.
struct ParserScratch {
  VornComposedPnt point;      ///< for the attributes of points
  VornFormCtrlTarget target;  ///< for those of control targets
};

/// What the library makes of an empty value: mostly it says that there is none.
enum class EmptyValue { SaysNone, IsMisread };

/// What the values of one attribute have to be.
struct AttributeRule {
  std::string_view name;  ///< of the attribute
  /// Whether the library reads the value as what it says.
  bool (*isUnderstood)(ParserScratch& scratch, std::string_view value);
  /// What is wrong with one that it does not.
  std::string (*whyNot)(std::string_view value);
  EmptyValue empty = EmptyValue::SaysNone;  ///< what an empty value is taken for
};

/// Where the numbers of an element stand.
enum class NumbersIn { None, Text, TextIfAny };

/// What the values in an element have to be, so that the library reads them as what they say.
struct ElementRule {
  /// The attribute that tells one element of the tag from another.
  const char* identity = "";
  /// The rules of the known attributes, in their order; null where any text will do.
  std::array<const AttributeRule*, kMostAttributes> attributes{};
  NumbersIn numbers = NumbersIn::None;  ///< what the text has to be
};

/// The rule of an element of that kind.
[[nodiscard]] const ElementRule& RuleOf(ElementKind kind);

/// Whether a whole text is a number; the library reads the leading number and ignores the rest.
[[nodiscard]] bool IsNumber(std::string_view text);
/// What is wrong with a text that is no number.
[[nodiscard]] std::string WhyNoNumber(std::string_view text);

}  // namespace vorn_host
