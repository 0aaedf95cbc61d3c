#include "host/project/document_part.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <sstream>
#include <utility>

#include "host/document/document_error.h"
#include "host/document/xml_nodes.h"

namespace vorn_host {

namespace {

constexpr const char* kDocumentElement = "document";

// Everything comes back as it was: line ends, blanks and all kinds of nodes, and nothing is passed over in silence.
constexpr unsigned kParseOptions = pugi::parse_minimal | pugi::parse_escapes | pugi::parse_cdata |
                                   pugi::parse_comments | pugi::parse_pi | pugi::parse_ws_pcdata |
                                   pugi::parse_declaration | pugi::parse_doctype | pugi::parse_fragment;

/// An element of the document part, with its attributes and the elements that may stand in it.
struct PartElement {
  std::string_view tag;
  std::array<std::string_view, 7> attributes;
  std::array<std::string_view, 4> children;
  /// Whether it holds a node of the document, which may be anything.
  bool holdsNode = false;
};

constexpr std::array kElements = {
    PartElement{
        kDocumentElement, {"edition", "encoding", "structureType", "roadCenter"}, {"set", "root", "sections", "item"}},
    PartElement{"set", {"alignment"}, {}},
    PartElement{"root", {"tag", "order"}, {"attribute"}},
    PartElement{"attribute", {"name", "value"}, {}},
    PartElement{"sections", {"order"}, {}},
    PartElement{"item", {"in", "behind", "place", "name", "attribute", "value", "doctype"}, {}, true},
};

bool Holds(std::span<const std::string_view> names, std::string_view name) {
  return !name.empty() && std::find(names.begin(), names.end(), name) != names.end();
}

const PartElement& ElementOf(std::string_view tag) {
  return *std::find_if(kElements.begin(), kElements.end(),
                       [tag](const PartElement& element) { return element.tag == tag; });
}

/// Reads a document part that has been parsed.
class Reader {
 public:
  explicit Reader(const std::string& name) : m_name(name) {}

  [[noreturn]] void Damaged(const std::string& what) const {
    throw DocumentError(m_name + ": the document part of the project is damaged: " + what);
  }

  /// Refuses attributes and nodes that no program up to this one writes, in an element and below it.
  void RequireKnown(pugi::xml_node element, const PartElement& known) const {
    for (const pugi::xml_attribute attribute : element.attributes()) {
      if (!Holds(known.attributes, attribute.name())) {
        Damaged(std::string(known.tag) + " has an unknown attribute \"" + attribute.name() + "\"");
      }
    }
    if (known.holdsNode) return;
    for (const pugi::xml_node child : element.children()) {
      if (child.type() != pugi::node_element) Damaged(std::string(known.tag) + " holds something beside elements");
      if (!Holds(known.children, child.name())) {
        Damaged(std::string(known.tag) + " holds an unknown element \"" + child.name() + "\"");
      }
      RequireKnown(child, ElementOf(child.name()));
    }
  }

  [[nodiscard]] bool Flag(pugi::xml_attribute attribute) const {
    const std::string_view text = attribute.value();
    if (attribute && text != "true" && text != "false") {
      Damaged(std::string(attribute.name()) + " is \"" + attribute.value() + "\" instead of true or false");
    }
    return text == "true";
  }

  [[nodiscard]] Edition EditionNamed(const std::string& edition) const {
    if (edition == EditionName(Edition::RoadGm)) return Edition::RoadGm;
    const std::optional<Edition> known = ParseEdition(edition);
    if (!known) {
      throw DocumentError(m_name + ": the project's document is of edition \"" + edition +
                          "\", which this program does not know");
    }
    return *known;
  }

  [[nodiscard]] int Alignment(pugi::xml_node set) const {
    const std::string_view text = set.attribute("alignment").value();
    int index = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), index);
    if (error != std::errc() || end != text.data() + text.size() || index < 0) {
      Damaged("a set has no alignment of its own");
    }
    return index;
  }

 private:
  const std::string& m_name;
};

}  // namespace

std::string DocumentPart::ToText() const {
  pugi::xml_document tree;
  const pugi::xml_node element = AppendElement(tree, kDocumentElement);
  AppendAttribute(element, "edition", std::string(EditionName(edition)).c_str());
  AppendAttribute(element, "encoding", encodingName.c_str());
  AppendAttribute(element, "structureType", hasStructureType ? "true" : "false");
  if (inRoadCenter) AppendAttribute(element, "roadCenter", "true");
  for (const int index : emptySets) {
    AppendAttribute(AppendElement(element, "set"), "alignment", std::to_string(index).c_str());
  }
  carried.Store(element);
  std::ostringstream text;
  text.exceptions(std::ios::badbit);  // otherwise a lack of memory cuts the text short
  tree.save(text, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(text).str();
}

DocumentPart DocumentPart::Parse(std::string_view text, const std::string& name, std::size_t mostCarriedItems) {
  const Reader reader(name);
  pugi::xml_document tree;
  const pugi::xml_parse_result result = tree.load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
  RequireMemory(result);
  if (!result) reader.Damaged(result.description());
  const pugi::xml_node element = tree.child(kDocumentElement);
  if (!element) reader.Damaged("there is no document");
  if (element != tree.first_child() || element.next_sibling()) reader.Damaged("something stands beside the document");
  reader.RequireKnown(element, ElementOf(kDocumentElement));

  DocumentPart part;
  part.edition = reader.EditionNamed(element.attribute("edition").value());
  part.encodingName = element.attribute("encoding").value();
  part.hasStructureType = reader.Flag(element.attribute("structureType"));
  part.inRoadCenter = reader.Flag(element.attribute("roadCenter"));
  for (const pugi::xml_node set : element.children("set")) part.emptySets.push_back(reader.Alignment(set));
  if (!std::is_sorted(part.emptySets.begin(), part.emptySets.end(), std::less_equal<>())) {
    reader.Damaged("a set has no alignment of its own");
  }
  part.carried = CarriedContent::Load(element, name, mostCarriedItems);
  return part;
}

}  // namespace vorn_host
