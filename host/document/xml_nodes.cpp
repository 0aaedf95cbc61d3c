#include "host/document/xml_nodes.h"

#include <unordered_set>

#include "host/document/text_encoding.h"

namespace vorn_host {

namespace {

/// Whether two nodes are of one kind, name and value, and have the same attributes.
bool AreAlike(pugi::xml_node a, pugi::xml_node b) {
  const auto same = [](const char* one, const char* other) { return std::string_view(one) == other; };
  if (a.type() != b.type() || !same(a.name(), b.name()) || !same(a.value(), b.value())) return false;
  pugi::xml_attribute other = b.first_attribute();
  for (const pugi::xml_attribute attribute : a.attributes()) {
    if (!other || !same(attribute.name(), other.name()) || !same(attribute.value(), other.value())) return false;
    other = other.next_attribute();
  }
  return !other;
}

/// Whether two nodes are alike, and all below them.
bool AreAlikeThroughout(pugi::xml_node top, pugi::xml_node otherTop) {
  pugi::xml_node node = top;
  pugi::xml_node other = otherTop;
  while (AreAlike(node, other)) {
    if (node.first_child() || other.first_child()) {
      node = node.first_child();
      other = other.first_child();
      continue;
    }
    while (node != top && !node.next_sibling() && !other.next_sibling()) {
      node = node.parent();
      other = other.parent();
    }
    if (node == top) return true;
    node = node.next_sibling();
    other = other.next_sibling();
  }
  return false;
}

}  // namespace

pugi::xml_node AppendElement(pugi::xml_node parent, const char* name) {
  const pugi::xml_node element = parent.append_child(pugi::node_element);
  if (!element || !pugi::xml_node(element).set_name(name)) throw std::bad_alloc();
  return element;
}

pugi::xml_node AppendNode(pugi::xml_node parent, pugi::xml_node_type type, const char* value) {
  const pugi::xml_node node = parent.append_child(type);
  if (!node) throw std::bad_alloc();
  SetValue(node, value);
  return node;
}

void AppendAttribute(pugi::xml_node element, const char* name, const char* value) {
  const pugi::xml_attribute attribute = element.append_attribute(name);
  if (!attribute || std::string_view(attribute.name()) != name) throw std::bad_alloc();
  SetValue(attribute, value);
}

pugi::xml_node AppendCopy(pugi::xml_node parent, pugi::xml_node node) {
  const pugi::xml_node copy = parent.append_copy(node);
  if (!copy || !AreAlikeThroughout(node, copy)) throw std::bad_alloc();
  return copy;
}

namespace {

/// Removes layout: white space at an end of the text where it reaches a line break or a tab.
std::string_view WithoutLayout(std::string_view text) {
  constexpr std::string_view kBreak = "\t\r\n";
  const auto isSpace = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  if (!text.empty() && !isSpace(text.front()) && !isSpace(text.back())) return text;
  const std::size_t first = std::min(text.find_first_not_of(kXmlBlanks), text.size());
  if (text.substr(0, first).find_first_of(kBreak) != std::string_view::npos) text.remove_prefix(first);
  const std::size_t last = text.find_last_not_of(kXmlBlanks) + 1;  // npos + 1 is 0
  if (text.substr(last).find_first_of(kBreak) != std::string_view::npos) text.remove_suffix(text.size() - last);
  return text;
}

/// An attribute that an element has twice; empty when there is none. Elements with many attributes do not come, but
/// they must not take for ever.
std::string_view RepeatedAttribute(pugi::xml_node element) {
  constexpr int kFew = 16;
  int count = 0;
  for (const pugi::xml_attribute attribute : element.attributes()) {
    if (++count > kFew) break;
    for (pugi::xml_attribute before = element.first_attribute(); before != attribute;
         before = before.next_attribute()) {
      if (std::string_view(before.name()) == attribute.name()) return attribute.name();
    }
  }
  if (count <= kFew) return {};
  std::unordered_set<std::string_view> names;
  for (const pugi::xml_attribute attribute : element.attributes()) {
    if (!names.insert(attribute.name()).second) return attribute.name();
  }
  return {};
}

}  // namespace

std::optional<std::string_view> ElementText(pugi::xml_node element, std::string& joined) {
  std::optional<std::string_view> text;
  for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
    if (!IsText(child)) continue;
    if (!text) {
      text = child.value();
      continue;
    }
    if (joined.empty()) joined = *text;
    joined += child.value();
    text = joined;
  }
  if (!text) return std::nullopt;
  const std::string_view content = WithoutLayout(*text);
  return content.empty() ? std::nullopt : std::optional(content);
}

std::string FaultOf(pugi::xml_node node, int level) {
  if (node.type() != pugi::node_element) return {};
  if (level > kDeepestLevel) {
    return "elements are nested more than " + std::to_string(kDeepestLevel) + " levels deep";
  }
  const std::string_view repeated = RepeatedAttribute(node);
  if (repeated.empty()) return {};
  return std::string(node.name()) + " has the attribute " + std::string(repeated) + " twice";
}

}  // namespace vorn_host
