#include "host/document/carried_places.h"

#include <algorithm>

#include "host/document/edition.h"
#include "host/document/element_knowledge.h"
#include "host/document/written_forms.h"

namespace vorn_host {

namespace {

/// For each form the index that it or the last one before it has among the written ones; -1 when none is written.
template <typename Forms, typename Predicate>
std::vector<int> WrittenIndexes(const Forms& forms, Predicate&& isWritten) {
  std::vector<int> indexes;
  int last = -1;
  for (const auto& form : forms) indexes.push_back(last += isWritten(form) ? 1 : 0);
  return indexes;
}

void AddUnplaced(const CarriedPlaces::Element& element, RowCounter& rows) {
  if (!element.isWritten) {
    for (const CarriedItem* item : element.attributes) rows.Add(item->name);
    for (const CarriedItem* item : element.nodes) rows.Add(item->name);
  }
  for (const auto& [step, child] : element.children) AddUnplaced(*child, rows);
}

}  // namespace

CarriedPlaces::Element* CarriedPlaces::Element::Child(std::string_view tag, int index) {
  const auto child = children.find({tag, index});
  return child == children.end() ? nullptr : child->second.get();
}

CarriedPlaces::CarriedPlaces(const CarriedContent& carried, const Vorn_XSectionsArray& sets) : m_sets(sets) {
  for (const CarriedItem& item : carried.Items()) {
    if (item.place == CarriedItem::Place::BeforeRoot) {
      m_beforeRoot.push_back(&item);
    } else if (item.place == CarriedItem::Place::AfterRoot) {
      m_afterRoot.push_back(&item);
    } else if (Element* element = Place(item.parent)) {
      (item.node ? element->nodes : element->attributes).push_back(&item);
    } else {
      m_withoutPlace.push_back(&item);
    }
  }
}

CarriedPlaces::Element* CarriedPlaces::Place(const ElementPath& path) {
  Element* element = &m_root;
  ElementPath parent;
  for (const ElementStep& step : path) {
    const int written = WrittenUpTo(step, parent);
    const bool itself = written >= 0 && (step.index == 0 || WrittenUpTo({step.tag, step.index - 1}, parent) < written);
    if (!itself) return nullptr;
    std::unique_ptr<Element>& child = element->children[{step.tag, written}];
    if (!child) child = std::make_unique<Element>();
    element = child.get();
    parent.push_back(step);
  }
  return element;
}

int CarriedPlaces::WrittenUpTo(const ElementStep& anchor, const ElementPath& parent) const {
  const bool isForm = anchor.tag == kBuildFormTag;
  const bool isGround = anchor.tag == kExistingBuildFormTag;
  if (!isForm && !isGround) return anchor.index;  // all of them are written, or none
  const WrittenForms& written = FormsOf(parent[0].index, parent[1].index);
  const std::vector<int>& indexes = isForm ? written.forms : written.grounds;
  if (indexes.empty() || anchor.index < 0) return -1;
  return indexes[std::min(static_cast<std::size_t>(anchor.index), indexes.size() - 1)];
}

const CarriedPlaces::WrittenForms& CarriedPlaces::FormsOf(int set, int section) const {
  const auto [written, isNew] = m_writtenForms.try_emplace({set, section});
  if (!isNew || !m_sets.IsRange(set)) return written->second;
  const Vorn_XSectionArray& sections = m_sets[set].GetXSectionArray();
  if (!sections.IsRange(section)) return written->second;
  const bool edition20 = IsEdition20(CurrentEdition());
  written->second = {WrittenIndexes(sections[section].GetBuildFormArray(),
                                    [edition20](const VornBuildForm& form) { return IsWritten(form, edition20); }),
                     WrittenIndexes(sections[section].GetExistingBuildFormArray(),
                                    [](const VornExistingBuildForm& form) { return IsWritten(form); })};
  return written->second;
}

std::vector<CarriedContent::Row> CarriedPlaces::Unplaced() const {
  RowCounter rows;
  for (const CarriedItem* item : m_withoutPlace) rows.Add(item->name);
  AddUnplaced(m_root, rows);
  return rows.Take();
}

}  // namespace vorn_host
