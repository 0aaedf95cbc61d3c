#include "host/document/document_scan.h"

#include <algorithm>
#include <span>
#include <utility>

#include "host/document/element_knowledge.h"
#include "host/document/text_encoding.h"
#include "host/document/value_rules.h"
#include "host/document/xml_nodes.h"
#include "vorn/framework/base.h"

namespace vorn_host {

namespace {

constexpr std::size_t kLongestText = 80;

std::string Shortened(std::string_view text) {
  if (text.size() <= kLongestText) return std::string(text);
  std::size_t end = kLongestText;
  while (end > 0 && IsUtf8Continuation(text[end])) --end;
  return std::string(text.substr(0, end)) + "...";
}

class Scanner {
 public:
  Scanner(const TextLines& lines, bool edition20, DocumentScan& scan)
      : m_lines(lines), m_edition20(edition20), m_scan(scan) {}

  DocumentFault Scan(pugi::xml_node root) {
    CheckFault(root, 1);
    bool structureTypeSeen = false;
    for (pugi::xml_node child = root.first_child(); child && m_fault.reason.empty(); child = child.next_sibling()) {
      const auto known = std::find(kRootChildren.begin(), kRootChildren.end(), child.name());
      if (known == kRootChildren.end()) {
        CheckFaults(child, 2);
        continue;
      }
      const KnownElement& element = *FindKnownElement(*known);
      ScanElement(child, element, 2);
      if (element.kind != ElementKind::StructureType) continue;
      if (structureTypeSeen) Add(child, element, "", {}, "is given twice; the last one is read");
      structureTypeSeen = true;
    }
    return std::move(m_fault);
  }

 private:
  /// @returns whether the element holds something that the library leaves alone
  bool ScanElement(pugi::xml_node element, const KnownElement& known, int level) {
    const ElementRule& rule = RuleOf(known.kind);
    bool holdsMore = ScanAttributes(element, known, rule, level);
    if (rule.numbers != NumbersIn::None) CheckNumbers(element, known, rule);
    holdsMore = ScanBelow(element, BelowOf(known, m_edition20), level) || holdsMore;
    if (holdsMore) m_scan.holders.insert(element.hash_value());
    return holdsMore;
  }

  bool ScanBelow(pugi::xml_node element, const KnownBelow& below, int level) {
    bool holdsMore = false;
    const KnownElement* former = nullptr;  // siblings are mostly alike
    for (pugi::xml_node child = element.first_child(); child && m_fault.reason.empty(); child = child.next_sibling()) {
      const pugi::xml_node_type type = child.type();
      if (type == pugi::node_pcdata || type == pugi::node_cdata) {
        holdsMore = holdsMore || !(below.hasText || WithoutBlanks(child.value()).empty());
        continue;
      }
      const std::string_view tag = child.name();
      const bool isFormer = former != nullptr && former->tag == tag;
      const KnownElement* known = isFormer ? former : Contains(below.children, tag) ? FindKnownElement(tag) : nullptr;
      if (known == nullptr || type != pugi::node_element) {
        holdsMore = true;
        CheckFaults(child, level + 1);
        continue;
      }
      former = known;
      holdsMore = ScanElement(child, *known, level + 1) || holdsMore;
    }
    return holdsMore;
  }

  bool ScanAttributes(pugi::xml_node element, const KnownElement& known, const ElementRule& rule, int level) {
    const auto names = known.attributes;
    unsigned seen = 0;
    int unknown = 0;
    bool repeated = false;
    std::size_t expected = 0;  // documents have the attributes in the known order, perhaps without some
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
      const std::size_t index = FindFrom(expected, names, attribute.name());
      if (index == names.size()) {
        ++unknown;
        continue;
      }
      expected = index + 1;
      repeated = repeated || (seen >> index & 1U) != 0;
      seen |= 1U << index;
      const AttributeRule* wanted = rule.attributes[index];
      if (wanted != nullptr) CheckValue(element, known, *wanted, attribute.value());
    }
    if (repeated || unknown > 1) CheckFault(element, level);
    return unknown > 0;
  }

  /// The index of a name, looked for from a place on and then before it; the number of names when it is none of them.
  static std::size_t FindFrom(std::size_t first, std::span<const std::string_view> names, std::string_view name) {
    for (std::size_t i = first; i < names.size(); ++i) {
      if (names[i] == name) return i;
    }
    for (std::size_t i = 0; i < std::min(first, names.size()); ++i) {
      if (names[i] == name) return i;
    }
    return names.size();
  }

  void CheckValue(pugi::xml_node element, const KnownElement& known, const AttributeRule& wanted,
                  std::string_view value) {
    if (value.empty() && wanted.empty == EmptyValue::SaysNone) return;
    if (wanted.isUnderstood(m_scratch, value)) return;
    Add(element, known, ", attribute " + std::string(wanted.name), value, wanted.whyNot(value));
  }

  /// Two numbers with a blank between them. A value that is not set is written as nothing, so " 12.3" lacks the first
  /// and "12.3 " the second.
  void CheckNumbers(pugi::xml_node element, const KnownElement& known, const ElementRule& rule) {
    constexpr int kWanted = 2;
    m_joined.clear();
    const auto text = ElementText(element, m_joined);
    if (!text) {
      if (rule.numbers == NumbersIn::Text) Add(element, known, ", text", {}, "holds no numbers");
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
      Add(element, known, ", text", item, WhyNoNumber(item));
    });
    if (last > kWanted) {
      Add(element, known, ", text", *text, "holds " + std::to_string(last) + " values instead of two");
    } else if (alike && count < kWanted && !text->ends_with(' ') && rule.numbers == NumbersIn::Text) {
      Add(element, known, ", text", *text, "holds one number instead of two");
    }
  }

  void Add(pugi::xml_node element, const KnownElement& known, const std::string& what, std::string_view value,
           std::string reason) {
    std::string where(known.tag);
    const std::string_view identity = element.attribute(RuleOf(known.kind).identity).value();
    if (!identity.empty()) where += " " + Shortened(identity);
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(element.offset_debug(), 0));
    m_scan.unreadValues.push_back({m_lines.LineOf(offset), where + what, Shortened(value), std::move(reason)});
  }

  // --- faults --------------------------------------------------------------------------------------------------------

  void CheckFault(pugi::xml_node node, int level) {
    std::string reason = FaultOf(node, level);
    if (!reason.empty() && m_fault.reason.empty()) m_fault = {node.offset_debug(), std::move(reason)};
  }

  void CheckFaults(pugi::xml_node top, int level) {
    WalkNodes(top, [&](pugi::xml_node node, int below) { CheckFault(node, level + below - 1); });
  }

  const TextLines& m_lines;
  bool m_edition20;
  DocumentScan& m_scan;
  ParserScratch m_scratch;
  std::string m_joined;
  DocumentFault m_fault;
};

}  // namespace

DocumentFault ScanDocument(const pugi::xml_document& tree, const TextLines& lines, bool edition20, DocumentScan& scan) {
  return Scanner(lines, edition20, scan).Scan(tree.document_element());
}

}  // namespace vorn_host
