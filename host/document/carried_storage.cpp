// Carried content in a document of its own, for projects: their records hold the design alone.
//
//     <root tag="tsf:TSFormControlData" order="tsf:FileInfo tsf:XSections">
//       <attribute name="version" value="3"/>
//     </root>
//     <sections order="0 2 1"/>                                      one for each set
//     <item in="tsf:XSections/0 tsf:XSection/4" behind="tsf:BuildForm/1 tsf:ExistingBuildForm/0"><!--node--></item>
//     <item in="tsf:XSections/0" attribute="note" value="checked"/>
//     <item place="before-root" doctype="..."/>

#include <algorithm>
#include <charconv>
#include <limits>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/carried_content.h"
#include "host/document/carried_item.h"
#include "host/document/document_error.h"
#include "host/document/element_knowledge.h"

namespace vorn_host {

namespace {

constexpr const char* kBeforeRoot = "before-root";
constexpr const char* kAfterRoot = "after-root";

std::string PathText(const std::vector<ElementStep>& steps) {
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
  pugi::xml_node element = parent.append_child("item");
  if (item.place != CarriedItem::Place::InElement) {
    element.append_attribute("place") = item.place == CarriedItem::Place::BeforeRoot ? kBeforeRoot : kAfterRoot;
  }
  if (!item.parent.empty()) element.append_attribute("in") = PathText(item.parent).c_str();
  if (!item.anchors.empty()) element.append_attribute("behind") = PathText(item.anchors).c_str();
  element.append_attribute("name") = item.name.c_str();
  if (!item.node) {
    element.append_attribute("attribute") = item.attributeName.c_str();
    element.append_attribute("value") = item.attributeValue.c_str();
  } else if (item.node.type() == pugi::node_doctype) {
    element.append_attribute("doctype") = item.node.value();  // no element may hold one
  } else {
    element.append_copy(item.node);
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

class Loader {
 public:
  Loader(CarriedContent::Impl& into, const std::string& name) : m_into(into), m_name(name) {}

  void LoadRoot(pugi::xml_node root) {
    m_into.rootTag = root.attribute("tag").value();
    for (const pugi::xml_node attribute : root.children("attribute")) {
      m_into.rootAttributes.emplace_back(attribute.attribute("name").value(), attribute.attribute("value").value());
    }
    ForEachWord(root.attribute("order").value(), [&](std::string_view tag) { m_into.rootOrder.push_back(Tag(tag)); });
  }

  void LoadSections(pugi::xml_node sections) {
    std::vector<int>& order = m_into.sectionOrders.emplace_back();
    ForEachWord(sections.attribute("order").value(), [&](std::string_view word) { order.push_back(Number(word)); });
  }

  void LoadItem(pugi::xml_node element) {
    CarriedItem item;
    const std::string_view place = element.attribute("place").value();
    if (place == kBeforeRoot) item.place = CarriedItem::Place::BeforeRoot;
    if (place == kAfterRoot) item.place = CarriedItem::Place::AfterRoot;
    item.parent = Steps(element.attribute("in").value());
    item.anchors = Steps(element.attribute("behind").value());
    RequireNesting(item);
    item.name = element.attribute("name").value();
    if (const pugi::xml_attribute attribute = element.attribute("attribute")) {
      item.attributeName = attribute.value();
      item.attributeValue = element.attribute("value").value();
    } else if (const pugi::xml_attribute doctype = element.attribute("doctype")) {
      item.node = m_into.store.append_child(pugi::node_doctype);
      item.node.set_value(doctype.value());
    } else if (element.first_child()) {
      item.node = m_into.store.append_copy(element.first_child());
    } else {
      Damaged("an item is empty");
    }
    m_into.items.push_back(std::move(item));
  }

 private:
  [[noreturn]] void Damaged(const std::string& what) const {
    throw DocumentError(m_name + ": what is carried over from the document is damaged: " + what);
  }

  [[nodiscard]] std::string_view Tag(std::string_view tag) const {
    const KnownElement* known = FindKnownElement(tag);
    if (known == nullptr) Damaged("there is no element " + std::string(tag));
    return known->tag;
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

  /// Every step has to be a child of the one before it, and so have the siblings: whoever looks for the place relies on
  /// it.
  void RequireNesting(const CarriedItem& item) const {
    std::span<const std::string_view> children = kRootChildren;
    const auto require = [&](const ElementStep& step) {
      if (std::find(children.begin(), children.end(), step.tag) == children.end()) {
        Damaged("there is no " + std::string(step.tag) + " where an item stands");
      }
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
};

}  // namespace

void CarriedContent::Store(pugi::xml_node parent) const {
  pugi::xml_node root = parent.append_child("root");
  root.append_attribute("tag") = RootTag().c_str();
  std::string order;
  for (const std::string_view tag : RootOrder()) (order += order.empty() ? "" : " ") += tag;
  root.append_attribute("order") = order.c_str();
  for (const auto& [name, value] : RootAttributes()) {
    pugi::xml_node attribute = root.append_child("attribute");
    attribute.append_attribute("name") = name.c_str();
    attribute.append_attribute("value") = value.c_str();
  }
  for (const std::vector<int>& sections : m_impl->sectionOrders) {
    std::string places;
    for (const int place : sections) (places += places.empty() ? "" : " ") += std::to_string(place);
    parent.append_child("sections").append_attribute("order") = places.c_str();
  }
  for (const CarriedItem& item : Items()) StoreItem(parent, item);
}

CarriedContent CarriedContent::Load(pugi::xml_node parent, const std::string& name) {
  CarriedContent carried;
  Loader loader(*carried.m_impl, name);
  for (const pugi::xml_node child : parent.children()) {
    const std::string_view tag = child.name();
    if (tag == "root") loader.LoadRoot(child);
    if (tag == "sections") loader.LoadSections(child);
    if (tag == "item") loader.LoadItem(child);
  }
  return carried;
}

}  // namespace vorn_host
