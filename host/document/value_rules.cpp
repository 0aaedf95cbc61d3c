#include "host/document/value_rules.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

#include "host/document/text_encoding.h"
#include "vorn/framework/base.h"

namespace vorn_host {

namespace {

// --- numbers ---------------------------------------------------------------------------------------------------------

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the digits off the front of a text and tells how many there were.
std::size_t TakeDigits(std::string_view& text) {
  std::size_t count = 0;
  while (count < text.size() && IsDigit(text[count])) ++count;
  text.remove_prefix(count);
  return count;
}

bool Take(char c, std::string_view& text) {
  if (!text.starts_with(c)) return false;
  text.remove_prefix(1);
  return true;
}

enum class NumberKind { Number, OutOfRange, None };

/// The library reads the leading number of a text and ignores the rest; here the whole text has to be one.
NumberKind NumberKindOf(std::string_view text) {
  constexpr std::size_t kSurelyInRange = 300;
  text = WithoutBlanks(text);
  if (!Take('-', text)) Take('+', text);
  const std::string_view magnitude = text;
  const std::size_t whole = TakeDigits(text);
  const std::size_t fraction = Take('.', text) ? TakeDigits(text) : 0;
  if (whole + fraction == 0) return NumberKind::None;
  if (text.empty() && whole < kSurelyInRange) return NumberKind::Number;
  double value = 0.0;
  const char* const last = magnitude.data() + magnitude.size();
  const auto [end, error] = std::from_chars(magnitude.data(), last, value);
  if (end != last) return NumberKind::None;
  return error == std::errc() ? NumberKind::Number : NumberKind::OutOfRange;
}

// --- dates -----------------------------------------------------------------------------------------------------------

/// What may follow the seconds: a fraction, then a zone. Neither is kept, and neither makes the date another one.
bool IsFractionAndZone(std::string_view text) {
  if (Take('.', text) && TakeDigits(text) == 0) return false;
  if (text.empty() || text == "Z") return true;
  if (!Take('+', text) && !Take('-', text)) return false;
  return TakeDigits(text) == 2 && Take(':', text) && TakeDigits(text) == 2 && text.empty();
}

/// The library takes a text that stops short, "yesterday" and an empty one included, for 30 December 1899.
bool IsCompleteDate(std::string_view text) {
  if (Vorn_Base::TurnDate(text).GetStatus() != COleDateTime::valid) return false;
  text = WithoutBlanks(text);
  for (const char separator : {'-', '-', 'T', ':', ':'}) {
    if (TakeDigits(text) == 0 || !Take(separator, text)) return false;
  }
  return TakeDigits(text) == 2 && IsFractionAndZone(text);
}

// --- attributes ------------------------------------------------------------------------------------------------------

/// "is none of Center, Left, Right", from the texts of a library's enumeration.
template <typename Enum, typename TextOf>
std::string NoneOf(TextOf&& textOf) {
  constexpr int kBeyondEveryEnumeration = 16;
  std::vector<std::string> texts;
  for (int i = 0; i < kBeyondEveryEnumeration; ++i) {
    std::string text(textOf(static_cast<Enum>(i)).View());
    if (!text.empty() && std::find(texts.begin(), texts.end(), text) == texts.end()) texts.push_back(std::move(text));
  }
  std::string reason = "is none of ";
  for (std::size_t i = 0; i < texts.size(); ++i) reason += (i == 0 ? "" : ", ") + texts[i];
  return reason;
}

constexpr auto kIsTrueOrFalse = [](ParserScratch&, std::string_view value) {
  return value == "true" || value == "false";
};
constexpr auto kWhyNotTrueOrFalse = [](std::string_view) { return std::string("is neither true nor false"); };
constexpr auto kIsNumber = [](ParserScratch&, std::string_view value) { return IsNumber(value); };
constexpr auto kIsDate = [](ParserScratch&, std::string_view value) { return IsCompleteDate(value); };
constexpr auto kWhyNoDate = [](std::string_view value) {
  return std::string(value.empty() ? "is empty, which is no date" : "is no date");
};

using Point = VornComposedPnt;
using Target = VornFormCtrlTarget;

constexpr std::array kPointRules = {
    AttributeRule{
        "location", [](ParserScratch& s, std::string_view value) { return s.point.SetLocationStr(value); },
        [](std::string_view) { return NoneOf<VornLocation>([](VornLocation v) { return Point::GetLocationStr(v); }); }},
    AttributeRule{
        "componentType", [](ParserScratch& s, std::string_view value) { return s.point.SetComponentTypeStr(value); },
        [](std::string_view) {
          return NoneOf<Point::ComponentType>([](Point::ComponentType v) { return Point::GetComponentTypeStr(v); });
        }},
    AttributeRule{"dataType", [](ParserScratch& s, std::string_view value) { return s.point.SetDataTypeStr(value); },
                  [](std::string_view) {
                    return NoneOf<Point::DataType>([](Point::DataType v) { return Point::GetDataTypeStr(v); });
                  }},
    AttributeRule{"existence",
                  [](ParserScratch& s, std::string_view value) { return s.point.SetExistenceString(value); },
                  kWhyNotTrueOrFalse},
    AttributeRule{"slopeType", [](ParserScratch& s, std::string_view value) { return s.point.SetSlopeTypeStr(value); },
                  [](std::string_view) {
                    return NoneOf<Point::SlopeType>([](Point::SlopeType v) { return Point::GetSlopeTypeStr(v); });
                  }},
    AttributeRule{"seriesPnt", kIsTrueOrFalse, kWhyNotTrueOrFalse},
};

constexpr std::array kTargetRules = {
    AttributeRule{"workType",
                  [](ParserScratch& s, std::string_view value) { return s.target.SetWorkTypeString(value); },
                  [](std::string_view) {
                    return NoneOf<Target::WorkType>([](Target::WorkType v) { return Target::GetWorkTypeString(v); });
                  }},
    AttributeRule{
        "controlItem", [](ParserScratch& s, std::string_view value) { return s.target.SetControlItemString(value); },
        [](std::string_view) {
          return NoneOf<Target::ControlItem>([](Target::ControlItem v) { return Target::GetControlItemString(v); });
        }},
    AttributeRule{"targetPntType",
                  [](ParserScratch& s, std::string_view value) { return s.target.SetTargetPntTypeString(value); },
                  [](std::string_view) {
                    return NoneOf<Target::TargetPntType>(
                        [](Target::TargetPntType v) { return Target::GetTargetPntTypeString(v); });
                  }},
};

constexpr std::array kTargetPntRules = {
    AttributeRule{"cumulativeDist", kIsNumber, WhyNoNumber},
    AttributeRule{"xSectChg", kIsTrueOrFalse, kWhyNotTrueOrFalse},
};

constexpr std::array kSectionRules = {
    AttributeRule{"cumulativeDist", kIsNumber, WhyNoNumber},
    AttributeRule{"xSectChg", kIsTrueOrFalse, kWhyNotTrueOrFalse},
    AttributeRule{"controlSect", kIsTrueOrFalse, kWhyNotTrueOrFalse},
};

constexpr std::array kSetRules = {AttributeRule{"alignment", kIsTrueOrFalse, kWhyNotTrueOrFalse}};

constexpr std::array kFileInfoRules = {
    AttributeRule{"createDate", kIsDate, kWhyNoDate, EmptyValue::IsMisread},
    AttributeRule{"changeDate", kIsDate, kWhyNoDate, EmptyValue::IsMisread},
};

// --- elements --------------------------------------------------------------------------------------------------------

struct ElementRuleRow {
  ElementKind kind;
  const char* identity;
  std::span<const AttributeRule> attributes;
  NumbersIn numbers;
};

constexpr std::array kElementRules = {
    ElementRuleRow{ElementKind::ComposedPnt, "code", kPointRules, NumbersIn::Text},
    ElementRuleRow{ElementKind::ExistingComposedPnt, "name", {}, NumbersIn::TextIfAny},
    ElementRuleRow{ElementKind::FormCtrlTargetPnt, "code", kTargetPntRules, NumbersIn::None},
    ElementRuleRow{ElementKind::FormCtrlTarget, "targetScope", kTargetRules, NumbersIn::None},
    ElementRuleRow{ElementKind::XSection, "name", kSectionRules, NumbersIn::None},
    ElementRuleRow{ElementKind::XSections, "refAlign", kSetRules, NumbersIn::None},
    ElementRuleRow{ElementKind::FileInfo, "", kFileInfoRules, NumbersIn::None},
};

using RuleTable = std::array<ElementRule, kElementKinds>;

RuleTable MakeRuleTable() {
  RuleTable table;
  for (const ElementRuleRow& row : kElementRules) {
    ElementRule& rule = table[static_cast<std::size_t>(row.kind)];
    rule.identity = row.identity;
    rule.numbers = row.numbers;
    const auto names = KnownElementOf(row.kind).attributes;
    for (const AttributeRule& attribute : row.attributes) {
      const auto name = std::find(names.begin(), names.end(), attribute.name);
      if (name == names.end()) throw std::logic_error("there is a rule for an attribute that no element has");
      rule.attributes[static_cast<std::size_t>(name - names.begin())] = &attribute;
    }
  }
  return table;
}

}  // namespace

const ElementRule& RuleOf(ElementKind kind) {
  static const RuleTable kTable = MakeRuleTable();
  return kTable[static_cast<std::size_t>(kind)];
}

bool IsNumber(std::string_view text) { return NumberKindOf(text) == NumberKind::Number; }

std::string WhyNoNumber(std::string_view text) {
  return NumberKindOf(text) == NumberKind::OutOfRange ? "is a number out of range" : "is no number";
}

}  // namespace vorn_host
