#pragma once

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
  int index = 0;

  friend bool operator==(const ElementStep&, const ElementStep&) = default;
};
using ElementPath = std::vector<ElementStep>;

/// One node (or attribute) that is carried over, and where it stood.
struct CarriedItem {
  enum class Place { BeforeRoot, AfterRoot, InElement };

  Place place = Place::InElement;
  ElementPath parent;
  /// The modelled siblings before it, the last of each tag, the nearest first.
  std::vector<ElementStep> anchors;
  pugi::xml_node node;  ///< in the store of the carried content; empty for an attribute
  std::string attributeName;
  std::string attributeValue;
  std::string name;  ///< for reports
};

/// All that a document holds beside the model.
struct CarriedContent::Impl {
  pugi::xml_document store;  ///< holds the nodes of the items
  std::vector<CarriedItem> items;
  std::string rootTag;
  std::vector<std::pair<std::string, std::string>> rootAttributes;
  std::vector<std::string_view> rootOrder;      ///< of `kRootChildren`
  std::vector<std::vector<int>> sectionOrders;  ///< of each set
};

}  // namespace vorn_host
