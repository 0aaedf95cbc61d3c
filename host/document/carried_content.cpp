#include "host/document/carried_content.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <span>

#include "host/document/carried_item.h"
#include "host/document/document_scan.h"
#include "host/document/element_knowledge.h"
#include "host/document/root_namespaces.h"
#include "host/document/text_encoding.h"
#include "host/document/xml_nodes.h"

namespace vorn_host {

namespace {

std::string DescribeNode(pugi::xml_node node) {
  switch (node.type()) {
    case pugi::node_comment:
      return "comment";
    case pugi::node_pi:
      return std::string("processing instruction ") + node.name();
    case pugi::node_doctype:
      return "document type";
    case pugi::node_pcdata:
    case pugi::node_cdata:
      return std::string("text of ") + node.parent().name();
    default:
      return node.name();
  }
}

/// Where each cross section of a set element stands in the model, which orders them by station.
std::vector<int> ModelOrder(pugi::xml_node set, const Vorn_XSectionArray& sections) {
  using Key = std::pair<double, bool>;
  std::vector<Key> keys;
  for (const pugi::xml_node section : set.children(kXSectionTag.data())) {
    const pugi::xml_attribute station = section.attribute("cumulativeDist");
    const double value = station ? Vorn_Base::TurnReal(station.value()) : kNurUnsetReal;
    keys.emplace_back(value, std::string_view(section.attribute("xSectChg").value()) == "true");
  }
  // Sections alike in station and flag keep their order, so the n-th in the document is the n-th in the model.
  std::map<Key, std::vector<int>> places;
  for (int i = sections.GetSize() - 1; i >= 0; --i) {
    places[Key(sections[i].GetCumulativeDist().Value(), sections[i].GetXSectChg())].push_back(i);
  }
  std::vector<int> order;
  for (const Key& key : keys) {
    std::vector<int>& free = places[key];
    order.push_back(free.empty() ? -1 : free.back());
    if (!free.empty()) free.pop_back();
  }
  return order;
}

/// Text that stands between elements, without the layout around it: each rewriting would add some more.
void RemoveLayout(pugi::xml_node text) {
  const std::string content(WithoutBlanks(text.value()));
  SetValue(text, content.c_str());
}

/// Replaces the URI of namespace declarations in an element and below it.
void ReplaceNamespace(pugi::xml_node element, const std::string& from, const std::string& to) {
  WalkNodes(element, [&](pugi::xml_node node, int) {
    for (pugi::xml_attribute attribute : node.attributes()) {
      if (std::string_view(attribute.name()).starts_with("xmlns") && from == attribute.value()) {
        SetValue(attribute, to.c_str());
      }
    }
  });
}

}  // namespace

// --- rows ------------------------------------------------------------------------------------------------------------

void RowCounter::Add(const std::string& name) {
  const auto [place, isNew] = m_places.try_emplace(name, m_rows.size());
  if (isNew) m_rows.push_back({name, 0});
  ++m_rows[place->second].count;
}

std::vector<CarriedContent::Row> RowCounter::Take() {
  m_places.clear();
  return std::exchange(m_rows, {});
}

// --- collecting ------------------------------------------------------------------------------------------------------

namespace {

/// Walks a source document beside the model and takes out what the model does not hold.
class Collector {
 public:
  Collector(const DocumentScan& scan, const Vorn_XSectionsArray& sets, bool edition20, std::size_t mostItems,
            CarriedContent::Impl& into)
      : m_scan(scan), m_sets(sets), m_edition20(edition20), m_mostItems(mostItems), m_into(into) {}

  /// Whether all has been taken; else there was more than allowed, and the rest is not looked at.
  [[nodiscard]] bool IsWhole() const { return m_into.items.size() <= m_mostItems; }

  void CollectBelow(pugi::xml_node element, std::span<const std::string_view> children, bool hasText) {
    std::vector<ElementStep> last;  // the last modelled sibling of each tag, the nearest at the end
    for (pugi::xml_node child = element.first_child(); child && IsWhole(); child = child.next_sibling()) {
      const pugi::xml_node_type type = child.type();
      if (IsText(child) && (hasText || WithoutBlanks(child.value()).empty())) continue;
      const std::string_view name = child.name();
      const KnownElement* known =
          type == pugi::node_element && Contains(children, name) ? FindKnownElement(name) : nullptr;
      if (known == nullptr) {
        Keep(child, CarriedItem::Place::InElement, last);
        continue;
      }
      const ElementStep step{known->tag, NextIndex(last, known->tag)};
      CollectElement(child, *known, step);
    }
  }

  void Keep(pugi::xml_node node, CarriedItem::Place place, const std::vector<ElementStep>& last) {
    CarriedItem item;
    item.place = place;
    item.parent = m_path;
    item.anchors.assign(last.rbegin(), last.rend());
    for (ElementStep& anchor : item.anchors) anchor.index = ModelIndex(anchor);
    item.node = AppendCopy(m_into.store, node);
    if (node.type() == pugi::node_pcdata) RemoveLayout(item.node);
    item.name = DescribeNode(node);
    m_into.items.push_back(std::move(item));
  }

 private:
  /// Counts a modelled sibling, and makes it the nearest.
  static int NextIndex(std::vector<ElementStep>& last, std::string_view tag) {
    if (!last.empty() && last.back().tag == tag) return ++last.back().index;
    const auto former =
        std::find_if(last.begin(), last.end(), [tag](const ElementStep& step) { return step.tag == tag; });
    const int index = former == last.end() ? 0 : former->index + 1;
    if (former != last.end()) last.erase(former);
    last.push_back({tag, index});
    return index;
  }

  /// Index of a child in the model: the document's, but for the cross sections of a set.
  [[nodiscard]] int ModelIndex(const ElementStep& step) const {
    return step.tag == kXSectionTag ? m_into.sectionOrders.back()[static_cast<std::size_t>(step.index)] : step.index;
  }

  void CollectElement(pugi::xml_node element, const KnownElement& known, const ElementStep& step) {
    m_path.push_back({step.tag, ModelIndex(step)});
    if (step.tag == kXSectionsTag) {
      m_into.sectionOrders.push_back(ModelOrder(element, m_sets[step.index].GetXSectionArray()));
    }
    if (m_scan.HoldsMore(element)) {
      CollectAttributes(element, known);
      const KnownBelow below = BelowOf(known, m_edition20);
      CollectBelow(element, below.children, below.hasText);
    }
    m_path.pop_back();
  }

  void CollectAttributes(pugi::xml_node element, const KnownElement& known) {
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute && IsWhole();
         attribute = attribute.next_attribute()) {
      const std::string_view name = attribute.name();
      if (Contains(known.attributes, name)) continue;
      CarriedItem item;
      item.parent = m_path;
      item.attributeName = attribute.name();
      item.attributeValue = attribute.value();
      item.name = "attribute " + item.attributeName + " of " + std::string(known.tag);
      m_into.items.push_back(std::move(item));
    }
  }

  const DocumentScan& m_scan;
  const Vorn_XSectionsArray& m_sets;
  bool m_edition20;
  std::size_t m_mostItems;
  CarriedContent::Impl& m_into;
  ElementPath m_path;
};

}  // namespace

CarriedContent::CarriedContent() : m_impl(std::make_unique<Impl>()) {}
CarriedContent::~CarriedContent() = default;
CarriedContent::CarriedContent(CarriedContent&&) noexcept = default;
CarriedContent& CarriedContent::operator=(CarriedContent&&) noexcept = default;

bool CarriedContent::Collect(const pugi::xml_document& source, const DocumentScan& scan,
                             const Vorn_XSectionsArray& sets, bool edition20, std::size_t mostItems) {
  m_impl = std::make_unique<Impl>();
  const pugi::xml_node root = source.document_element();
  m_impl->rootTag = root.name();
  for (const pugi::xml_attribute attribute : root.attributes()) {
    if (!m_impl->HasRoomAtRoot(mostItems)) return false;
    m_impl->rootAttributes.emplace_back(attribute.name(), attribute.value());
  }
  for (const pugi::xml_node child : root.children()) {
    const auto known = std::find(kRootChildren.begin(), kRootChildren.end(), child.name());
    if (known != kRootChildren.end() && !Contains(m_impl->rootOrder, *known)) m_impl->rootOrder.push_back(*known);
  }

  Collector collector(scan, sets, edition20, mostItems, *m_impl);
  bool beforeRoot = true;
  for (const pugi::xml_node node : source.children()) {
    if (!collector.IsWhole()) break;
    if (node == root) {
      beforeRoot = false;
      collector.CollectBelow(root, kRootChildren, false);
    } else if (node.type() != pugi::node_declaration) {
      collector.Keep(node, beforeRoot ? CarriedItem::Place::BeforeRoot : CarriedItem::Place::AfterRoot, {});
    }
  }
  return collector.IsWhole();
}

const std::string& CarriedContent::RootTag() const { return m_impl->rootTag; }

const XmlAttributes& CarriedContent::RootAttributes() const { return m_impl->rootAttributes; }

const std::vector<std::string_view>& CarriedContent::RootOrder() const { return m_impl->rootOrder; }

const std::vector<CarriedItem>& CarriedContent::Items() const { return m_impl->items; }

const std::vector<int>& CarriedContent::SectionOrder(int set) const {
  static const std::vector<int> kNone;
  const auto index = static_cast<std::size_t>(set);
  return index < m_impl->sectionOrders.size() ? m_impl->sectionOrders[index] : kNone;
}

std::vector<CarriedContent::Row> CarriedContent::Rows() const {
  RowCounter rows;
  const XmlAttributes ofHost = AttributesOfHost(m_impl->rootAttributes);
  for (const auto& [name, value] : m_impl->rootAttributes) {
    const auto isThis = [&name = name](const auto& attribute) { return attribute.first == name; };
    if (std::none_of(ofHost.begin(), ofHost.end(), isThis)) rows.Add("attribute " + name + " of " + m_impl->rootTag);
  }
  for (const CarriedItem& item : m_impl->items) rows.Add(item.name);
  return rows.Take();
}

bool CarriedContent::HasRoadGeometry() const {
  return std::any_of(m_impl->items.begin(), m_impl->items.end(),
                     [](const CarriedItem& item) { return std::string_view(item.node.name()).starts_with("rgm:"); });
}

void CarriedContent::ChangeNamespace(const std::string& from, const std::string& to) {
  for (CarriedItem& item : m_impl->items) {
    ReplaceNamespace(item.node, from, to);
    if (item.attributeName.starts_with("xmlns") && item.attributeValue == from) item.attributeValue = to;
  }
}

std::vector<CarriedContent::Row> CarriedContent::DropBelowControlTargets() {
  const auto isBelowTarget = [](const CarriedItem& item) {
    return std::any_of(item.parent.begin(), item.parent.end(), [](const ElementStep& step) {
      return step.tag == kFormCtrlTargetTag || step.tag == kFormCtrlTargetPntTag;
    });
  };
  RowCounter dropped;
  for (const CarriedItem& item : m_impl->items) {
    if (isBelowTarget(item)) dropped.Add(item.name);
  }
  std::erase_if(m_impl->items, isBelowTarget);
  return dropped.Take();
}

namespace {

/// Finds where the element that holds an item is now: the item goes with the sibling that it follows, and points may
/// move to another form. False when the element is gone.
bool FollowParent(const CarriedItem& item, const CarriedContent::ElementMoves& moves, ElementPath& parent) {
  parent = item.parent;
  if (!item.anchors.empty()) {
    parent.push_back(item.anchors.front());
    if (moves.follow(parent)) {
      parent.pop_back();
      return true;
    }
    parent = item.parent;
  }
  return moves.follow(parent);
}

/// Moves the anchors of an item: a sibling that is gone gives way to the one before it of the same tag.
void MoveAnchors(CarriedItem& item, const ElementPath& newParent, const CarriedContent::ElementMoves& moves) {
  std::vector<ElementStep> moved;
  for (const ElementStep& anchor : item.anchors) {
    ElementPath former = item.parent;
    former.push_back(anchor);
    for (; former.back().index >= 0; former.back().index = moves.siblingBefore(former)) {
      ElementPath path = former;
      if (!moves.follow(path) || !std::equal(newParent.begin(), newParent.end(), path.begin(), path.end() - 1))
        continue;
      moved.push_back(path.back());
      break;
    }
  }
  item.anchors = std::move(moved);
}

}  // namespace

std::vector<CarriedContent::Row> CarriedContent::MoveElements(const ElementMoves& moves) {
  RowCounter dropped;
  std::erase_if(m_impl->items, [&](CarriedItem& item) {
    if (item.place != CarriedItem::Place::InElement) return false;
    ElementPath parent;
    if (!FollowParent(item, moves, parent)) {
      dropped.Add(item.name);
      return true;
    }
    MoveAnchors(item, parent, moves);
    item.parent = std::move(parent);
    return false;
  });
  return dropped.Take();
}

void CarriedContent::RearrangeSets(const std::vector<int>& formers, int formerCount) {
  std::vector<std::vector<int>> orders;
  std::vector<int> placeOf(static_cast<std::size_t>(formerCount), -1);
  std::set<int> left;
  for (std::size_t i = 0; i < formers.size(); ++i) {
    orders.push_back(SectionOrder(formers[i]));
    if (formers[i] < 0) continue;
    placeOf[static_cast<std::size_t>(formers[i])] = static_cast<int>(i);
    left.insert(formers[i]);
  }
  if (!m_impl->sectionOrders.empty()) m_impl->sectionOrders = std::move(orders);

  const auto follow = [&](ElementPath& path) {
    if (path.empty() || path[0].tag != kXSectionsTag) return true;
    const auto former = static_cast<std::size_t>(path[0].index);
    path[0].index = former < placeOf.size() ? placeOf[former] : -1;
    return path[0].index >= 0;
  };
  const auto siblingBefore = [&](const ElementPath& path) {
    if (path.size() != 1 || path[0].tag != kXSectionsTag) return -1;
    const auto next = left.lower_bound(path[0].index);
    return next == left.begin() ? -1 : *std::prev(next);
  };
  (void)MoveElements({follow, siblingBefore});
}

std::string TooManyCarried(const std::string& name, std::size_t mostItems) {
  return name + ": this holds more than " + std::to_string(mostItems) +
         " attributes, comments and elements that are not of a design, the most that are carried over";
}

std::string Describe(const std::vector<CarriedContent::Row>& rows) {
  std::string text;
  for (const CarriedContent::Row& row : rows) {
    if (!text.empty()) text += ", ";
    text += row.name;
    if (row.count > 1) text += " (" + std::to_string(row.count) + ")";
  }
  return text;
}

}  // namespace vorn_host
