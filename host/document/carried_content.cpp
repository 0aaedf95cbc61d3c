#include "host/document/carried_content.h"

#include <algorithm>
#include <functional>
#include <map>
#include <pugixml.hpp>
#include <unordered_map>

#include "host/document/element_knowledge.h"

namespace vorn_host {

namespace {

/// One element on the way from the root: the n-th of its tag below its parent, in the order of the model.
struct Step {
  std::string_view tag;  ///< of `KnownElement`
  int index = 0;
};
using Path = std::vector<Step>;

enum class Place { BeforeRoot, AfterRoot, InElement };

/// One carried node (or attribute) and where it stood.
struct Item {
  Place place = Place::InElement;
  Path parent;
  /// The modelled siblings before it, the last of each tag, the nearest first.
  std::vector<Step> anchors;
  pugi::xml_node node;  ///< in the store; empty for an attribute
  std::string attributeName;
  std::string attributeValue;
  std::string name;  ///< for reports
};

constexpr std::string_view kTarget = "tsf:FormCtrlTarget";
constexpr std::string_view kTargetPnt = "tsf:FormCtrlTargetPnt";
constexpr std::string_view kXSection = "tsf:XSection";
constexpr std::string_view kBuildForm = "tsf:BuildForm";
constexpr std::string_view kExistingBuildForm = "tsf:ExistingBuildForm";

template <typename Range, typename Value>
bool Contains(const Range& range, const Value& value) {
  return std::find(std::begin(range), std::end(range), value) != std::end(range);
}

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

void AddRow(std::vector<CarriedContent::Row>& rows, const std::string& name) {
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& existing) { return existing.name == name; });
  if (row == rows.end()) {
    rows.push_back({name, 1});
  } else {
    ++row->count;
  }
}

/// Where each cross section of a set element stands in the model, which orders them by station.
std::vector<int> ModelOrder(pugi::xml_node set, const Vorn_XSectionArray& sections) {
  using Key = std::pair<double, bool>;
  std::vector<Key> keys;
  for (const pugi::xml_node section : set.children("tsf:XSection")) {
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

/// Whether a namespace declaration or the schema location: the host writes these anew.
bool IsWrittenByHost(std::string_view rootAttribute) {
  return rootAttribute == "xmlns:tsf" || rootAttribute == "xmlns:rgm" || rootAttribute == "xmlns:xsi" ||
         rootAttribute == "xsi:schemaLocation";
}

}  // namespace

struct CarriedContent::Impl {
  pugi::xml_document store;
  std::vector<Item> items;
  std::string rootTag;
  std::vector<std::pair<std::string, std::string>> rootAttributes;
  std::vector<std::string_view> rootOrder;
  std::vector<std::vector<int>> sectionOrders;
};

namespace {

/// Walks a source document beside the model and takes out what the model does not hold.
class Collector {
 public:
  Collector(const Vorn_XSectionsArray& sets, bool edition20, CarriedContent::Impl& into)
      : m_sets(sets), m_edition20(edition20), m_into(into) {}

  void CollectBelow(pugi::xml_node element, std::span<const std::string_view> children, bool hasText) {
    std::vector<Step> last;  // the last modelled sibling of each tag, the nearest at the end
    for (const pugi::xml_node child : element.children()) {
      const bool isText = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
      if (isText && (hasText || IsBlank(child.value()))) continue;
      const KnownElement* known = child.type() == pugi::node_element && Contains(children, child.name())
                                      ? FindKnownElement(child.name())
                                      : nullptr;
      if (known == nullptr) {
        Keep(child, Place::InElement, last);
        continue;
      }
      const Step step{known->tag, NextIndex(last, known->tag)};
      CollectElement(child, *known, step);
    }
  }

  void Keep(pugi::xml_node node, Place place, const std::vector<Step>& last) {
    Item item;
    item.place = place;
    item.parent = m_path;
    item.anchors.assign(last.rbegin(), last.rend());
    for (Step& anchor : item.anchors) anchor.index = ModelIndex(anchor);
    item.node = m_into.store.append_copy(node);
    item.name = DescribeNode(node);
    m_into.items.push_back(std::move(item));
  }

 private:
  static bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

  /// Counts a modelled sibling, and makes it the nearest.
  static int NextIndex(std::vector<Step>& last, std::string_view tag) {
    const auto former = std::find_if(last.begin(), last.end(), [tag](const Step& step) { return step.tag == tag; });
    const int index = former == last.end() ? 0 : former->index + 1;
    if (former != last.end()) last.erase(former);
    last.push_back({tag, index});
    return index;
  }

  /// Index of a child in the model: the document's, but for the cross sections of a set.
  [[nodiscard]] int ModelIndex(const Step& step) const {
    return step.tag == kXSection ? m_into.sectionOrders.back()[static_cast<std::size_t>(step.index)] : step.index;
  }

  void CollectElement(pugi::xml_node element, const KnownElement& known, const Step& step) {
    m_path.push_back({step.tag, ModelIndex(step)});
    if (step.tag == "tsf:XSections") {
      m_into.sectionOrders.push_back(ModelOrder(element, m_sets[step.index].GetXSectionArray()));
    }
    CollectAttributes(element, known);
    const bool isTarget = step.tag == kTarget;
    const auto children = isTarget && m_edition20 ? std::span<const std::string_view>() : known.children;
    CollectBelow(element, children, isTarget ? m_edition20 : known.hasText);
    m_path.pop_back();
  }

  void CollectAttributes(pugi::xml_node element, const KnownElement& known) {
    for (const pugi::xml_attribute attribute : element.attributes()) {
      if (Contains(known.attributes, attribute.name())) continue;
      Item item;
      item.parent = m_path;
      item.attributeName = attribute.name();
      item.attributeValue = attribute.value();
      item.name = "attribute " + item.attributeName + " of " + std::string(known.tag);
      m_into.items.push_back(std::move(item));
    }
  }

  const Vorn_XSectionsArray& m_sets;
  bool m_edition20;
  CarriedContent::Impl& m_into;
  Path m_path;
};

/// Finds the places of carried items in a freshly written document.
class Restorer {
 public:
  Restorer(pugi::xml_node root, const Vorn_XSectionsArray& sets) : m_root(root), m_sets(sets) {}

  /// False when the element that held the item is not there.
  bool Restore(const Item& item) {
    pugi::xml_node parent = Resolve(item.parent);
    if (!parent) return false;
    if (!item.node) {
      if (!parent.attribute(item.attributeName.c_str())) {
        parent.append_attribute(item.attributeName.c_str()).set_value(item.attributeValue.c_str());
      }
      return true;
    }
    const pugi::xml_node anchor = FirstOf(item.anchors, item.parent, parent);
    pugi::xml_node& behind = m_lastInserted[anchor ? anchor.hash_value() : parent.hash_value()];
    if (!behind) behind = anchor;
    behind = behind ? parent.insert_copy_after(item.node, behind) : parent.prepend_copy(item.node);
    return true;
  }

 private:
  pugi::xml_node Resolve(const Path& path) {
    pugi::xml_node node = m_root;
    for (std::size_t depth = 0; node && depth < path.size(); ++depth) {
      node = Child(node, path[depth], std::span(path).first(depth));
    }
    return node;
  }

  pugi::xml_node FirstOf(const std::vector<Step>& anchors, const Path& parentPath, pugi::xml_node parent) {
    for (Step anchor : anchors) {
      for (; anchor.index >= 0; --anchor.index) {
        if (const pugi::xml_node node = Child(parent, anchor, parentPath)) return node;
      }
    }
    return {};
  }

  pugi::xml_node Child(pugi::xml_node parent, const Step& step, std::span<const Step> parentPath) {
    const int written = WrittenIndex(step, parentPath);
    const std::vector<pugi::xml_node>& children = ChildrenOf(parent, step.tag);
    return written >= 0 && static_cast<std::size_t>(written) < children.size()
               ? children[static_cast<std::size_t>(written)]
               : pugi::xml_node();
  }

  /// Index of a child among those that were written; -1 when it was not: forms with fewer than two points are left out.
  [[nodiscard]] int WrittenIndex(const Step& step, std::span<const Step> parentPath) const {
    if (step.tag != kBuildForm && step.tag != kExistingBuildForm) return step.index;
    if (!m_sets.IsRange(parentPath[0].index)) return -1;
    const auto& sections = m_sets[parentPath[0].index].GetXSectionArray();
    if (!sections.IsRange(parentPath[1].index)) return -1;
    const VornXSection& section = sections[parentPath[1].index];
    const auto countWritten = [&](const auto& forms, const auto& isWritten) {
      if (step.index >= forms.GetSize() || !isWritten(forms[step.index])) return -1;
      return static_cast<int>(std::count_if(forms.begin(), forms.begin() + step.index, isWritten));
    };
    if (step.tag == kExistingBuildForm) {
      return countWritten(section.GetExistingBuildFormArray(),
                          [](const VornExistingBuildForm& form) { return form.GetComposedPntArray().GetSize() >= 2; });
    }
    return countWritten(section.GetBuildFormArray(), [](const VornBuildForm& form) {
      return form.GetOmitFlag() == 0 && form.GetExport() != 0 && form.GetComposedPntArray().GetSize() >= 2;
    });
  }

  const std::vector<pugi::xml_node>& ChildrenOf(pugi::xml_node parent, std::string_view tag) {
    const auto [entry, isNew] = m_children.try_emplace({parent.hash_value(), tag});
    if (isNew) {
      for (const pugi::xml_node child : parent.children()) {
        if (tag == child.name()) entry->second.push_back(child);
      }
    }
    return entry->second;
  }

  pugi::xml_node m_root;
  const Vorn_XSectionsArray& m_sets;
  std::map<std::pair<std::size_t, std::string_view>, std::vector<pugi::xml_node>> m_children;
  std::unordered_map<std::size_t, pugi::xml_node> m_lastInserted;
};

}  // namespace

CarriedContent::CarriedContent() : m_impl(std::make_unique<Impl>()) {}
CarriedContent::~CarriedContent() = default;
CarriedContent::CarriedContent(CarriedContent&&) noexcept = default;
CarriedContent& CarriedContent::operator=(CarriedContent&&) noexcept = default;

void CarriedContent::Collect(const pugi::xml_document& source, const Vorn_XSectionsArray& sets, bool edition20) {
  m_impl = std::make_unique<Impl>();
  const pugi::xml_node root = source.document_element();
  m_impl->rootTag = root.name();
  for (const pugi::xml_attribute attribute : root.attributes()) {
    m_impl->rootAttributes.emplace_back(attribute.name(), attribute.value());
  }
  for (const pugi::xml_node child : root.children()) {
    const auto known = std::find(kRootChildren.begin(), kRootChildren.end(), child.name());
    if (known != kRootChildren.end() && !Contains(m_impl->rootOrder, *known)) m_impl->rootOrder.push_back(*known);
  }

  Collector collector(sets, edition20, *m_impl);
  bool beforeRoot = true;
  for (const pugi::xml_node node : source.children()) {
    if (node == root) {
      beforeRoot = false;
      collector.CollectBelow(root, kRootChildren, false);
    } else if (node.type() != pugi::node_declaration) {
      collector.Keep(node, beforeRoot ? Place::BeforeRoot : Place::AfterRoot, {});
    }
  }
}

std::vector<CarriedContent::Row> CarriedContent::Restore(pugi::xml_document& target,
                                                         const Vorn_XSectionsArray& sets) const {
  std::vector<Row> unplaced;
  const pugi::xml_node root = target.document_element();
  Restorer restorer(root, sets);
  for (const Item& item : m_impl->items) {
    switch (item.place) {
      case Place::BeforeRoot:
        target.insert_copy_before(item.node, root);
        break;
      case Place::AfterRoot:
        target.append_copy(item.node);
        break;
      case Place::InElement:
        if (!restorer.Restore(item)) AddRow(unplaced, item.name);
        break;
    }
  }
  return unplaced;
}

const std::string& CarriedContent::RootTag() const { return m_impl->rootTag; }

const std::vector<std::pair<std::string, std::string>>& CarriedContent::RootAttributes() const {
  return m_impl->rootAttributes;
}

const std::vector<std::string_view>& CarriedContent::RootOrder() const { return m_impl->rootOrder; }

const std::vector<int>& CarriedContent::SectionOrder(int set) const {
  static const std::vector<int> kNone;
  const auto index = static_cast<std::size_t>(set);
  return index < m_impl->sectionOrders.size() ? m_impl->sectionOrders[index] : kNone;
}

std::vector<CarriedContent::Row> CarriedContent::Rows() const {
  std::vector<Row> rows;
  for (const auto& [name, value] : m_impl->rootAttributes) {
    if (!IsWrittenByHost(name)) AddRow(rows, "attribute " + name + " of " + m_impl->rootTag);
  }
  for (const Item& item : m_impl->items) AddRow(rows, item.name);
  return rows;
}

bool CarriedContent::HasRoadGeometry() const {
  return std::any_of(m_impl->items.begin(), m_impl->items.end(),
                     [](const Item& item) { return std::string_view(item.node.name()).starts_with("rgm:"); });
}

std::vector<CarriedContent::Row> CarriedContent::DropBelowControlTargets() {
  const auto isBelowTarget = [](const Item& item) {
    return std::any_of(item.parent.begin(), item.parent.end(),
                       [](const Step& step) { return step.tag == kTarget || step.tag == kTargetPnt; });
  };
  std::vector<Row> dropped;
  for (const Item& item : m_impl->items) {
    if (isBelowTarget(item)) AddRow(dropped, item.name);
  }
  std::erase_if(m_impl->items, isBelowTarget);
  return dropped;
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
