#pragma once

#include <algorithm>
#include <iterator>
#include <new>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace vorn_host {

/// Whether a value is among those of a range.
template <typename Range, typename Value>
bool Contains(const Range& range, const Value& value) {
  return std::find(std::begin(range), std::end(range), value) != std::end(range);
}

/// Memory that ran out while a text was parsed is no fault of the text: throws `std::bad_alloc`.
inline void RequireMemory(const pugi::xml_parse_result& result) {
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
}

// A tree that grows says nothing where memory runs out: a node stays empty, a name or a value is missing. These throw
// `std::bad_alloc` then, so that nothing is lost in silence.

/// Appends an element.
pugi::xml_node AppendElement(pugi::xml_node parent, const char* name);
/// Appends a node of another kind with that value.
pugi::xml_node AppendNode(pugi::xml_node parent, pugi::xml_node_type type, const char* value);
/// Appends an attribute.
void AppendAttribute(pugi::xml_node element, const char* name, const char* value);
/// Appends a copy of a node and of all below it.
pugi::xml_node AppendCopy(pugi::xml_node parent, pugi::xml_node node);
/// Gives a node, or an attribute, another value.
template <typename Item>
void SetValue(Item item, const char* value) {
  if (!item.set_value(value)) throw std::bad_alloc();
}

/// Whether a node is a piece of text, as character data or as a section of it.
[[nodiscard]] inline bool IsText(pugi::xml_node node) {
  const pugi::xml_node_type type = node.type();
  return type == pugi::node_pcdata || type == pugi::node_cdata;
}

/// The text of an element as content: a line break (or tab) at either end is layout. None when there is no text. A
/// blank stays: it keeps the place of a value that is not set.
/// @param joined holds the text where it stands in several pieces
[[nodiscard]] std::optional<std::string_view> ElementText(pugi::xml_node element, std::string& joined);

/// How deep elements may be nested, the root being the first level. No design document comes near this, and whoever
/// reads one need not fear for his stack.
inline constexpr int kDeepestLevel = 1000;

/// Calls visit(node, level) for a node, which is level 1, and all below it in the order of the document. It takes no
/// more stack for deeply nested nodes.
template <typename Visit>
void WalkNodes(pugi::xml_node top, Visit&& visit) {
  int level = 1;
  for (pugi::xml_node node = top; node;) {
    visit(node, level);
    if (node.first_child()) {
      node = node.first_child();
      ++level;
      continue;
    }
    while (node != top && !node.next_sibling()) {
      node = node.parent();
      --level;
    }
    if (node == top) return;
    node = node.next_sibling();
  }
}

/// Why a node cannot be part of a document although it could be parsed: it lies too deep, or it has an attribute twice.
/// Empty when nothing is wrong.
/// @param level of the node in the document, the root's being 1
[[nodiscard]] std::string FaultOf(pugi::xml_node node, int level);

}  // namespace vorn_host
