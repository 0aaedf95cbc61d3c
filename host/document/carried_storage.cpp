// Carried content in a document of its own, for projects: their records hold the design alone.
//
//     <root tag="tsf:TSFormControlData" order="tsf:FileInfo tsf:XSections">
//       <attribute name="version" value="3"/>
//     </root>
//     <sections order="0 2 1"/>                                      one for each set
//     <item in="tsf:XSections/0 tsf:XSection/4" behind="tsf:BuildForm/1 tsf:ExistingBuildForm/0"
//           name="comment"><!--node--></item>
//     <item in="tsf:XSections/0" name="attribute note of tsf:XSections" attribute="note" value="checked"/>
//     <item place="before-root" name="document type" doctype="..."/>
//
// The name is what reports call the item; nothing else depends on it.

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/carried_content.h"
#include "host/document/carried_item.h"
#include "host/document/control_character.h"
#include "host/document/document_error.h"
#include "host/document/edition.h"
#include "host/document/element_knowledge.h"
#include "host/document/text_encoding.h"
#include "host/document/xml_nodes.h"

namespace vorn_host {

namespace {

constexpr const char* kBeforeRoot = "before-root";
constexpr const char* kAfterRoot = "after-root";

std::string PathText(const ElementPath& steps) {
  std::string text;
  for (const ElementStep& step : steps) {
    if (!text.empty()) text += ' ';
    text += step.tag;
    text += '/';
    text += std::to_string(step.index);
  }
  return text;
}

void StoreItem(pugi::xml_node parent, const CarriedItem& item) {
  const pugi::xml_node element = AppendElement(parent, "item");
  if (item.place != CarriedItem::Place::InElement) {
    AppendAttribute(element, "place", item.place == CarriedItem::Place::BeforeRoot ? kBeforeRoot : kAfterRoot);
  }
  if (!item.parent.empty()) AppendAttribute(element, "in", PathText(item.parent).c_str());
  if (!item.anchors.empty()) AppendAttribute(element, "behind", PathText(item.anchors).c_str());
  AppendAttribute(element, "name", item.name.c_str());
  if (!item.node) {
    AppendAttribute(element, "attribute", item.attributeName.c_str());
    AppendAttribute(element, "value", item.attributeValue.c_str());
  } else if (item.node.type() == pugi::node_doctype) {
    AppendAttribute(element, "doctype", item.node.value());  // no element may hold one
  } else {
    AppendCopy(element, item.node);
  }
}

/// Reads the parts of a text between blanks.
template <typename Read>
void ForEachWord(std::string_view text, Read&& read) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    read(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

/// Whether a text can be the name of an element or attribute, as far as the parser that reads documents distinguishes:
/// what came through it once does so again.
bool IsXmlName(std::string_view text) {
  const auto isStart = [](char c) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || c == '_' || c == ':' || static_cast<unsigned char>(c) > 0x7F;
  };
  const auto isPart = [&](char c) { return isStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
  return !text.empty() && isStart(text.front()) && std::all_of(text.begin(), text.end(), isPart);
}

/// Whether a text is that of a document type and does not reach beyond it.
bool IsDocumentType(const std::string& text) {
  const std::string written = "<!DOCTYPE " + text + ">";
  pugi::xml_document tree;
  const pugi::xml_parse_result result =
      tree.load_buffer(written.data(), written.size(), pugi::parse_doctype | pugi::parse_fragment, pugi::encoding_utf8);
  RequireMemory(result);
  const pugi::xml_node first = tree.first_child();
  return result && first.type() == pugi::node_doctype && first.value() == text && !first.next_sibling();
}

/// Whether bytes are UTF-8 by the rule that holds for documents.
bool IsUtf8(std::string_view bytes) {
  try {
    (void)DecodeDocument(std::string(kUtf8ByteOrderMark).append(bytes), {});
    return true;
  } catch (const DocumentError&) {
    return false;
  }
}

/// Takes what was stored into the carried content. It refuses what no document can have held: written into one, it
/// would make the document unreadable or change the design.
class Loader {
 public:
  Loader(CarriedContent::Impl& into, const std::string& name, bool edition20, std::size_t mostItems)
      : m_into(into), m_name(name), m_edition20(edition20), m_mostItems(mostItems) {}

  void LoadRoot(pugi::xml_node root) {
    if (m_hasRoot) Damaged("there is a second root");
    m_hasRoot = true;
    m_into.rootTag = root.attribute("tag").value();  // empty for a document that was never read
    if (!m_into.rootTag.empty()) RequireName(m_into.rootTag);
    std::set<std::string> names;
    for (const pugi::xml_node attribute : root.children("attribute")) {
      if (!m_into.HasRoomAtRoot(m_mostItems)) throw DocumentError(TooManyCarried(m_name, m_mostItems));
      std::string name = attribute.attribute("name").value();
      std::string value = attribute.attribute("value").value();
      RequireName(name);
      RequireText(value);
      if (!names.insert(name).second) Damaged("the root has the attribute " + name + " twice");
      m_into.rootAttributes.emplace_back(std::move(name), std::move(value));
    }
    ForEachWord(root.attribute("order").value(), [&](std::string_view tag) { AddToRootOrder(tag); });
  }

  void LoadSections(pugi::xml_node sections) {
    std::vector<int>& order = m_into.sectionOrders.emplace_back();
    ForEachWord(sections.attribute("order").value(), [&](std::string_view word) { order.push_back(Number(word)); });
  }

  void LoadItem(pugi::xml_node element) {
    if (m_into.items.size() >= m_mostItems) throw DocumentError(TooManyCarried(m_name, m_mostItems));
    CarriedItem item;
    item.place = Place(element.attribute("place"));
    item.parent = Steps(element.attribute("in").value());
    item.anchors = Steps(element.attribute("behind").value());
    RequireNesting(item);
    item.name = element.attribute("name").value();
    RequireText(item.name);
    RequireOneNode(element);
    if (const pugi::xml_attribute attribute = element.attribute("attribute")) {
      TakeAttribute(attribute.value(), element.attribute("value").value(), item);
    } else if (const pugi::xml_attribute doctype = element.attribute("doctype")) {
      TakeDocumentType(doctype.value(), item);
    } else {
      TakeNode(element.first_child(), item);
    }
    m_into.items.push_back(std::move(item));
  }

 private:
  [[noreturn]] void Damaged(const std::string& what) const {
    throw DocumentError(m_name + ": what is carried over from the document is damaged: " + what);
  }

  // --- items ---

  [[nodiscard]] CarriedItem::Place Place(pugi::xml_attribute attribute) const {
    const std::string_view place = attribute.value();
    if (place == kBeforeRoot) return CarriedItem::Place::BeforeRoot;
    if (place == kAfterRoot) return CarriedItem::Place::AfterRoot;
    if (attribute) Damaged("\"" + std::string(place) + "\" is no place");
    return CarriedItem::Place::InElement;
  }

  void RequireOneNode(pugi::xml_node element) const {
    int nodes = (element.attribute("attribute") ? 1 : 0) + (element.attribute("doctype") ? 1 : 0);
    for (pugi::xml_node child = element.first_child(); child && nodes < 2; child = child.next_sibling()) ++nodes;
    if (nodes == 0) Damaged("an item is empty");
    if (nodes > 1) Damaged("an item holds more than one node");
  }

  void TakeAttribute(const std::string& name, const std::string& value, CarriedItem& item) {
    RequireName(name);
    RequireText(value);
    if (item.place != CarriedItem::Place::InElement || item.parent.empty()) {
      Damaged("the attribute " + name + " stands in no element");
    }
    const std::string_view owner = item.parent.back().tag;
    if (Contains(FindKnownElement(owner)->attributes, name)) {
      Damaged("the attribute " + name + " of " + std::string(owner) + " belongs to the design");
    }
    // A place that is none (-1) is never written, and several items may have lost theirs.
    const bool isPlaced =
        std::all_of(item.parent.begin(), item.parent.end(), [](auto& step) { return step.index >= 0; });
    if (isPlaced && !m_attributes.insert(PathText(item.parent) + ' ' + name).second) {
      Damaged(std::string(owner) + " has the attribute " + name + " twice");
    }
    item.attributeName = name;
    item.attributeValue = value;
  }

  void TakeDocumentType(const std::string& text, CarriedItem& item) {
    RequireText(text);
    if (item.place != CarriedItem::Place::BeforeRoot || std::exchange(m_hasDocumentType, true)) {
      Damaged("one document type may stand, before the root");
    }
    if (!IsDocumentType(text)) Damaged("\"" + text + "\" is no document type");
    item.node = AppendNode(m_into.store, pugi::node_doctype, text.c_str());
  }

  void TakeNode(pugi::xml_node node, CarriedItem& item) {
    const bool isElement = node.type() == pugi::node_element;
    if (item.place != CarriedItem::Place::InElement) {
      if (isElement || IsText(node)) Damaged("only comments and instructions may stand outside the root");
    } else if (isElement && Contains(Below(item.parent).children, node.name())) {
      Damaged("the element " + std::string(node.name()) + " belongs to the design where an item stands");
    } else if (IsText(node) && Below(item.parent).hasText) {
      Damaged("the text of " + std::string(item.parent.back().tag) + " belongs to the design");
    }
    RequireFit(node, static_cast<int>(item.parent.size()) + 1);
    item.node = AppendCopy(m_into.store, node);
  }

  /// @param above how many levels lie above the node
  void RequireFit(pugi::xml_node top, int above) const {
    WalkNodes(top, [&](pugi::xml_node node, int level) {
      const std::string fault = FaultOf(node, above + level);
      if (!fault.empty()) Damaged(fault);
      RequireText(node.name());
      RequireText(node.value());
      for (const pugi::xml_attribute attribute : node.attributes()) {
        RequireText(attribute.name());
        RequireText(attribute.value());
      }
    });
  }

  // --- names and texts ---

  void RequireName(const std::string& name) const {
    if (!IsXmlName(name)) Damaged("\"" + name + "\" is no name");
    RequireText(name);
  }

  /// Refuses text that no document can hold.
  void RequireText(std::string_view text) const {
    const auto control = std::find_if(text.begin(), text.end(), IsControlCharacter);
    if (control != text.end()) {
      Damaged("it holds the control character " + DescribeCharacter(static_cast<char32_t>(*control)));
    }
    if (!IsAscii(text) && !IsUtf8(text)) Damaged("it holds bytes that are not UTF-8");
  }

  // --- places ---

  [[nodiscard]] std::string_view Tag(std::string_view tag) const {
    const KnownElement* known = FindKnownElement(tag);
    if (known == nullptr) Damaged("there is no element " + std::string(tag));
    return known->tag;
  }

  /// An element twice in the order would be written twice.
  void AddToRootOrder(std::string_view tag) {
    tag = Tag(tag);
    if (!Contains(kRootChildren, tag)) Damaged(std::string(tag) + " does not stand directly below the root");
    if (Contains(m_into.rootOrder, tag)) Damaged(std::string(tag) + " is twice in the order of the root");
    m_into.rootOrder.push_back(tag);
  }

  [[nodiscard]] int Number(std::string_view text) const {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    constexpr int kLargest = std::numeric_limits<int>::max() - 1;
    if (error != std::errc() || end != text.data() + text.size() || number < -1 || number > kLargest) {
      Damaged("\"" + std::string(text) + "\" is no place");
    }
    return number;
  }

  /// What the library models in the element that holds an item; the root holds elements only.
  [[nodiscard]] KnownBelow Below(const ElementPath& parent) const {
    if (parent.empty()) return {kRootChildren, false};
    return BelowOf(*FindKnownElement(parent.back().tag), m_edition20);
  }

  /// Every step has to be a child of the one before it, and so have the siblings: whoever looks for the place relies on
  /// it.
  void RequireNesting(const CarriedItem& item) const {
    const bool isOutside = item.place != CarriedItem::Place::InElement;
    if (isOutside && !(item.parent.empty() && item.anchors.empty()))
      Damaged("an item outside the root has a place in it");
    std::span<const std::string_view> children = kRootChildren;
    const auto require = [&](const ElementStep& step) {
      if (!Contains(children, step.tag)) Damaged("there is no " + std::string(step.tag) + " where an item stands");
    };
    for (const ElementStep& step : item.parent) {
      require(step);
      children = FindKnownElement(step.tag)->children;
    }
    for (const ElementStep& anchor : item.anchors) require(anchor);
  }

  [[nodiscard]] std::vector<ElementStep> Steps(std::string_view text) const {
    std::vector<ElementStep> steps;
    ForEachWord(text, [&](std::string_view word) {
      const std::size_t slash = word.find('/');
      if (slash == std::string_view::npos) Damaged("\"" + std::string(word) + "\" is no place");
      steps.push_back({Tag(word.substr(0, slash)), Number(word.substr(slash + 1))});
    });
    return steps;
  }

  CarriedContent::Impl& m_into;
  const std::string& m_name;
  bool m_edition20;
  std::size_t m_mostItems;
  bool m_hasRoot = false;
  bool m_hasDocumentType = false;
  std::set<std::string> m_attributes;  ///< of the items so far, with the paths of their elements
};

}  // namespace

void CarriedContent::Store(pugi::xml_node parent) const {
  const pugi::xml_node root = AppendElement(parent, "root");
  AppendAttribute(root, "tag", RootTag().c_str());
  std::string order;
  for (const std::string_view tag : RootOrder()) (order += order.empty() ? "" : " ") += tag;
  AppendAttribute(root, "order", order.c_str());
  for (const auto& [name, value] : RootAttributes()) {
    const pugi::xml_node attribute = AppendElement(root, "attribute");
    AppendAttribute(attribute, "name", name.c_str());
    AppendAttribute(attribute, "value", value.c_str());
  }
  for (const std::vector<int>& sections : m_impl->sectionOrders) {
    std::string places;
    for (const int place : sections) (places += places.empty() ? "" : " ") += std::to_string(place);
    AppendAttribute(AppendElement(parent, "sections"), "order", places.c_str());
  }
  for (const CarriedItem& item : Items()) StoreItem(parent, item);
}

CarriedContent CarriedContent::Load(pugi::xml_node parent, const std::string& name, std::size_t mostItems) {
  CarriedContent carried;
  const std::optional<Edition> edition = ParseEdition(parent.attribute("edition").value());
  Loader loader(*carried.m_impl, name, !edition || IsEdition20(*edition), mostItems);
  for (const pugi::xml_node child : parent.children()) {
    const std::string_view tag = child.name();
    if (tag == "root") loader.LoadRoot(child);
    if (tag == "sections") loader.LoadSections(child);
    if (tag == "item") loader.LoadItem(child);
  }
  return carried;
}

}  // namespace vorn_host
