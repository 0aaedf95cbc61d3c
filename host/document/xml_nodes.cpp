#include "host/document/xml_nodes.h"

#include <unordered_set>

#include "host/document/text_encoding.h"

namespace vorn_host {

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
