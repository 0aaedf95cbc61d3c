#include "host/document/unread_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <utility>

#include "host/document/element_knowledge.h"
#include "host/document/text_encoding.h"
#include "host/document/xml_cursor.h"
#include "vorn/control/form_ctrl_target.h"
#include "vorn/framework/base.h"
#include "vorn/model/composed_pnt.h"

namespace vorn_host {

namespace {

constexpr std::size_t kLongestText = 80;

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

bool IsNumber(std::string_view text) { return NumberKindOf(text) == NumberKind::Number; }

std::string WhyNoNumber(std::string_view text) {
  return NumberKindOf(text) == NumberKind::OutOfRange ? "is a number out of range" : "is no number";
}

// --- dates -----------------------------------------------------------------------------------------------------------

/// What may follow the seconds: a fraction, then a zone. Neither is kept, and neither makes the date another one.
bool IsFractionAndZone(std::string_view text) {
  if (Take('.', text) && TakeDigits(text) == 0) return false;
  if (text.empty() || text == "Z") return true;
  if (!Take('+', text) && !Take('-', text)) return false;
  return TakeDigits(text) == 2 && Take(':', text) && TakeDigits(text) == 2 && text.empty();
}

/// The library takes a text that stops short, "yesterday" included, for 30 December 1899.
bool IsCompleteDate(std::string_view text) {
  if (Vorn_Base::TurnDate(text).GetStatus() != COleDateTime::valid) return false;
  text = WithoutBlanks(text);
  for (const char separator : {'-', '-', 'T', ':', ':'}) {
    if (TakeDigits(text) == 0 || !Take(separator, text)) return false;
  }
  return TakeDigits(text) == 2 && IsFractionAndZone(text);
}

// --- attributes ------------------------------------------------------------------------------------------------------

/// The library's parsers are members of what they fill.
struct Scratch {
  VornComposedPnt point;
  VornFormCtrlTarget target;
};

/// What the values of one attribute have to be. An empty value is always fine: it says that there is none.
struct AttributeRule {
  std::string_view name;
  bool (*isUnderstood)(Scratch& scratch, std::string_view value);
  std::string (*whyNot)(std::string_view value);
};

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

constexpr auto kIsTrueOrFalse = [](Scratch&, std::string_view value) { return value == "true" || value == "false"; };
constexpr auto kWhyNotTrueOrFalse = [](std::string_view) { return std::string("is neither true nor false"); };
constexpr auto kIsNumber = [](Scratch&, std::string_view value) { return IsNumber(value); };
constexpr auto kIsDate = [](Scratch&, std::string_view value) { return IsCompleteDate(value); };
constexpr auto kWhyNoDate = [](std::string_view) { return std::string("is no date"); };

using Point = VornComposedPnt;
using Target = VornFormCtrlTarget;

constexpr std::array kPointRules = {
    AttributeRule{
        "location", [](Scratch& s, std::string_view value) { return s.point.SetLocationStr(value); },
        [](std::string_view) { return NoneOf<VornLocation>([](VornLocation v) { return Point::GetLocationStr(v); }); }},
    AttributeRule{
        "componentType", [](Scratch& s, std::string_view value) { return s.point.SetComponentTypeStr(value); },
        [](std::string_view) {
          return NoneOf<Point::ComponentType>([](Point::ComponentType v) { return Point::GetComponentTypeStr(v); });
        }},
    AttributeRule{"dataType", [](Scratch& s, std::string_view value) { return s.point.SetDataTypeStr(value); },
                  [](std::string_view) {
                    return NoneOf<Point::DataType>([](Point::DataType v) { return Point::GetDataTypeStr(v); });
                  }},
    AttributeRule{"existence", [](Scratch& s, std::string_view value) { return s.point.SetExistenceString(value); },
                  kWhyNotTrueOrFalse},
    AttributeRule{"slopeType", [](Scratch& s, std::string_view value) { return s.point.SetSlopeTypeStr(value); },
                  [](std::string_view) {
                    return NoneOf<Point::SlopeType>([](Point::SlopeType v) { return Point::GetSlopeTypeStr(v); });
                  }},
    AttributeRule{"seriesPnt", kIsTrueOrFalse, kWhyNotTrueOrFalse},
};

constexpr std::array kTargetRules = {
    AttributeRule{"workType", [](Scratch& s, std::string_view value) { return s.target.SetWorkTypeString(value); },
                  [](std::string_view) {
                    return NoneOf<Target::WorkType>([](Target::WorkType v) { return Target::GetWorkTypeString(v); });
                  }},
    AttributeRule{
        "controlItem", [](Scratch& s, std::string_view value) { return s.target.SetControlItemString(value); },
        [](std::string_view) {
          return NoneOf<Target::ControlItem>([](Target::ControlItem v) { return Target::GetControlItemString(v); });
        }},
    AttributeRule{"targetPntType",
                  [](Scratch& s, std::string_view value) { return s.target.SetTargetPntTypeString(value); },
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
    AttributeRule{"createDate", kIsDate, kWhyNoDate},
    AttributeRule{"changeDate", kIsDate, kWhyNoDate},
};

enum class NumbersIn { None, Text, TextIfAny };

/// What is looked at in an element of one tag.
struct ElementRule {
  std::string_view tag;
  /// The attribute that tells one element of the tag from another.
  const char* identity;
  std::span<const AttributeRule> attributes;
  NumbersIn numbers;
};

// The most frequent elements first.
constexpr std::array<ElementRule, 6> kElementRules = {{
    {"tsf:ComposedPnt", "code", kPointRules, NumbersIn::Text},
    {"tsf:ExistingComposedPnt", "name", {}, NumbersIn::TextIfAny},
    {"tsf:FormCtrlTargetPnt", "code", kTargetPntRules, NumbersIn::None},
    {"tsf:FormCtrlTarget", "targetScope", kTargetRules, NumbersIn::None},
    {"tsf:XSection", "name", kSectionRules, NumbersIn::None},
    {"tsf:XSections", "refAlign", kSetRules, NumbersIn::None},
}};
constexpr ElementRule kFileInfoRule = {"tsf:FileInfo", "", kFileInfoRules, NumbersIn::None};
constexpr ElementRule kStructureTypeRule = {"tsf:StructureType", "", {}, NumbersIn::None};
constexpr ElementRule kNoRule = {"", "", {}, NumbersIn::None};

const ElementRule& FindRule(std::string_view tag) {
  const auto found = std::find_if(kElementRules.begin(), kElementRules.end(),
                                  [tag](const ElementRule& rule) { return rule.tag == tag; });
  return found == kElementRules.end() ? kNoRule : *found;
}

std::string Shortened(std::string_view text) {
  if (text.size() <= kLongestText) return std::string(text);
  std::size_t end = kLongestText;
  while (end > 0 && IsUtf8Continuation(text[end])) --end;
  return std::string(text.substr(0, end)) + "...";
}

// --- the walk --------------------------------------------------------------------------------------------------------

class Walker {
 public:
  Walker(std::string_view text, bool edition20) : m_text(text), m_edition20(edition20) {}

  std::vector<UnreadValue> Walk(pugi::xml_node root) {
    bool structureTypeSeen = false;
    for (const pugi::xml_node child : root.children()) {
      const std::string_view tag = child.name();
      if (tag == "tsf:XSections") {
        WalkElement(child, *FindKnownElement(tag));
      } else if (tag == kFileInfoRule.tag) {
        CheckAttributes(child, kFileInfoRule);
      } else if (tag == kStructureTypeRule.tag) {
        if (structureTypeSeen) Add(child, kStructureTypeRule, "", {}, "is given twice; the last one is read");
        structureTypeSeen = true;
      }
    }
    return std::move(m_found);
  }

 private:
  void WalkElement(pugi::xml_node element, const KnownElement& known) {
    const ElementRule& rule = FindRule(known.tag);
    CheckAttributes(element, rule);
    if (rule.numbers != NumbersIn::None) CheckNumbers(element, rule);
    if (known.children.empty() || (m_edition20 && known.tag == "tsf:FormCtrlTarget")) return;
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
      const std::string_view tag = child.name();
      if (tag.empty() || std::find(known.children.begin(), known.children.end(), tag) == known.children.end()) continue;
      if (child.type() == pugi::node_element) WalkElement(child, *FindKnownElement(tag));
    }
  }

  void CheckAttributes(pugi::xml_node element, const ElementRule& rule) {
    if (rule.attributes.empty()) return;
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
      const std::string_view name = attribute.name();
      for (const AttributeRule& wanted : rule.attributes) {
        if (wanted.name != name) continue;
        const std::string_view value = attribute.value();
        if (!value.empty() && !wanted.isUnderstood(m_scratch, value)) {
          Add(element, rule, ", attribute " + std::string(name), value, wanted.whyNot(value));
        }
        break;
      }
    }
  }

  /// Two numbers with a blank between them. A value that is not set is written as nothing, so " 12.3" lacks the first
  /// and "12.3 " the second.
  void CheckNumbers(pugi::xml_node element, const ElementRule& rule) {
    constexpr int kWanted = 2;
    m_joined.clear();
    const auto text = ElementText(element, m_joined);
    if (!text) {
      if (rule.numbers == NumbersIn::Text) Add(element, rule, ", text", {}, "holds no numbers");
      return;
    }
    int count = 0;
    int last = 0;  // the last place that is not empty
    bool alike = true;
    Vorn_Base::ForEachDivided(*text, [&](std::string_view item) {
      ++count;
      if (item.empty()) return;
      last = count;
      if (count > kWanted || IsNumber(item)) return;
      alike = false;
      Add(element, rule, ", text", item, WhyNoNumber(item));
    });
    if (last > kWanted) {
      Add(element, rule, ", text", *text, "holds " + std::to_string(last) + " values instead of two");
    } else if (alike && count < kWanted && !text->ends_with(' ') && rule.numbers == NumbersIn::Text) {
      Add(element, rule, ", text", *text, "holds one number instead of two");
    }
  }

  void Add(pugi::xml_node element, const ElementRule& rule, const std::string& what, std::string_view value,
           std::string reason) {
    std::string where(rule.tag);
    const std::string_view identity = element.attribute(rule.identity).value();
    if (!identity.empty()) where += " " + Shortened(identity);
    m_found.push_back({LineOf(element), where + what, Shortened(value), std::move(reason)});
  }

  /// Counts on from the former finding: a document may have very many, each behind the one before.
  std::size_t LineOf(pugi::xml_node element) {
    const auto at =
        std::min(static_cast<std::size_t>(std::max<std::ptrdiff_t>(element.offset_debug(), 0)), m_text.size());
    if (at > m_counted) {
      const std::string_view between = m_text.substr(m_counted, at - m_counted);
      m_line += static_cast<std::size_t>(std::count(between.begin(), between.end(), '\n'));
      m_counted = at;
    }
    return m_line;
  }

  std::string_view m_text;
  bool m_edition20;
  Scratch m_scratch;
  std::string m_joined;
  std::size_t m_counted = 0;
  std::size_t m_line = 1;
  std::vector<UnreadValue> m_found;
};

}  // namespace

std::vector<UnreadValue> FindUnreadValues(const pugi::xml_document& tree, std::string_view text, bool edition20) {
  return Walker(text, edition20).Walk(tree.document_element());
}

std::string Describe(const UnreadValue& value) {
  return value.text.empty() ? value.reason : "\"" + value.text + "\" " + value.reason;
}

std::string PlaceOf(const UnreadValue& value) { return "line " + std::to_string(value.line) + ": " + value.where; }

}  // namespace vorn_host
