#include "fuzz/carried_holdings.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <utility>

#include "host/document/root_namespaces.h"
#include "host/document/text_encoding.h"
#include "host/document/xml_nodes.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_fuzz {

namespace {

using vorn_host::CarriedItem;
using vorn_host::DesignDocument;
using vorn_host::ElementPath;
using vorn_host::TextEncoding;
using Holdings = std::vector<std::string>;

std::string Quoted(std::string_view text) { return " \"" + std::string(text) + '"'; }

/// What a comment becomes when it is written: no two dashes may stand in a row there, nor one at its end.
std::string WithDashesApart(std::string_view comment) {
  std::string text;
  for (std::size_t i = 0; i < comment.size(); ++i) {
    text += comment[i];
    if (comment[i] == '-' && (i + 1 == comment.size() || comment[i + 1] == '-')) text += ' ';
  }
  return text;
}

/// A node with all below it, each node with its level.
std::string TextOf(pugi::xml_node top) {
  std::string text;
  vorn_host::WalkNodes(top, [&](pugi::xml_node node, int level) {
    const std::string value = node.type() == pugi::node_comment ? WithDashesApart(node.value()) : node.value();
    text += std::to_string(level) + ':' + std::to_string(node.type()) + Quoted(node.name()) + Quoted(value);
    for (const pugi::xml_attribute attribute : node.attributes()) {
      text += Quoted(attribute.name()) + '=' + Quoted(attribute.value());
    }
    text += ' ';
  });
  return text;
}

/// A text of UTF-8 as it is in a document of that encoding.
std::string AsWritten(std::string utf8, TextEncoding encoding) {
  if (encoding == TextEncoding::Utf8) return utf8;
  std::size_t replaced = 0;
  const std::string bytes = vorn_host::EncodeShiftJis(utf8, "a carried item", true, replaced);
  std::string again;
  (void)code_page_932::AppendAsUtf8(bytes, again);
  return again;
}

/// Text among elements is told line by line, without layout: where the element between two texts goes with a change of
/// the edition, they become one.
void AddLines(std::string_view text, const std::string& place, Holdings& holdings) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = vorn_host::WithoutBlanks(text.substr(0, end));
    if (!line.empty()) holdings.push_back(place + "line" + Quoted(line));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void AddItem(const CarriedItem& item, Holdings& holdings) {
  constexpr std::string_view kPlaces[] = {"before the root ", "behind the root ", "carried "};
  const std::string place(kPlaces[static_cast<std::size_t>(item.place)]);
  if (item.node.type() == pugi::node_pcdata) {
    AddLines(item.node.value(), place, holdings);
  } else {
    holdings.push_back(place + (item.node ? TextOf(item.node) : item.attributeName + Quoted(item.attributeValue)));
  }
}

std::string PlaceOf(const ElementPath& element) {
  std::string place;
  for (const vorn_host::ElementStep& step : element) {
    place.append(step.tag).append("/").append(std::to_string(step.index)).append(" ");
  }
  return place;
}

/// The attributes of a document's root that are its own: those that declare the edition are the host's, but in a pure
/// road-geometry document, which has none.
vorn_host::XmlAttributes RootAttributes(const DesignDocument& document) {
  vorn_host::XmlAttributes attributes = document.carried.RootAttributes();
  if (document.edition == vorn_host::Edition::RoadGm) return attributes;
  const vorn_host::XmlAttributes ofHost = vorn_host::AttributesOfHost(attributes);
  std::erase_if(attributes, [&](const auto& attribute) {
    return std::any_of(ofHost.begin(), ofHost.end(), [&](const auto& one) { return one.first == attribute.first; });
  });
  return attributes;
}

/// The order within an element is left to the bytes: an item goes with the sibling that it follows, and the document
/// that is read again may have others between them.
void Settle(Holdings& holdings, TextEncoding encoding) {
  for (std::string& item : holdings) item = AsWritten(std::move(item), encoding);
  std::sort(holdings.begin(), holdings.end());
}

}  // namespace

CarriedHoldings::CarriedHoldings(const DesignDocument& document, TextEncoding encoding) {
  for (const auto& [name, value] : RootAttributes(document)) {
    m_root.push_back("root attribute " + name + Quoted(value));
  }
  for (const CarriedItem& item : document.carried.Items()) {
    if (item.parent.empty()) {
      AddItem(item, m_root);
      continue;
    }
    Element& element = m_elements[PlaceOf(item.parent)];
    AddItem(item, element.holdings);
    ++element.items;
  }
  Settle(m_root, encoding);
  for (auto& [place, element] : m_elements) Settle(element.holdings, encoding);
}

Holdings CarriedHoldings::Take(const ElementPath& element) {
  if (m_elements.empty()) return {};
  auto taken = m_elements.extract(PlaceOf(element));
  return taken ? std::move(taken.mapped().holdings) : Holdings();
}

int CarriedHoldings::CountLeft() const {
  return std::accumulate(m_elements.begin(), m_elements.end(), 0,
                         [](int count, const auto& element) { return count + element.second.items; });
}

}  // namespace vorn_fuzz
