#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/carried_content.h"

namespace vorn_host {

/// One element on the way from the root: the n-th of its tag below its parent, in the order of the model.
struct ElementStep {
  std::string_view tag;  ///< of a `KnownElement`
  int index = 0;         ///< among the siblings of its tag, from 0

  friend bool operator==(const ElementStep&, const ElementStep&) = default;
};

/// One node (or attribute) that is carried over, and where it stood.
struct CarriedItem {
  /// Where a node stood.
  enum class Place { BeforeRoot, AfterRoot, InElement };

  Place place = Place::InElement;  ///< where the node stood
  ElementPath parent;              ///< the element that held it
  /// The modelled siblings before it, the last of each tag, the nearest first.
  std::vector<ElementStep> anchors;
  pugi::xml_node node;         ///< in the store of the carried content; empty for an attribute
  std::string attributeName;   ///< of an attribute
  std::string attributeValue;  ///< of an attribute
  std::string name;            ///< for reports
};

/// All that a document holds beside the model.
struct CarriedContent::Impl {
  pugi::xml_document store;                     ///< holds the nodes of the items
  std::vector<CarriedItem> items;               ///< in the order of the document
  std::string rootTag;                          ///< empty for a new document
  XmlAttributes rootAttributes;                 ///< as they stood, in order
  std::vector<std::string_view> rootOrder;      ///< of `kRootChildren`
  std::vector<std::vector<int>> sectionOrders;  ///< of each set

  /// Whether the root may have one attribute more. A few do not count: namespaces and the like, which every document
  /// has.
  [[nodiscard]] bool HasRoomAtRoot(std::size_t mostItems) const {
    constexpr std::size_t kUsualAttributes = 16;
    return rootAttributes.size() < kUsualAttributes || rootAttributes.size() - kUsualAttributes < mostItems;
  }
};

}  // namespace vorn_host
