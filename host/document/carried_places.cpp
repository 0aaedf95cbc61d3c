#include "host/document/carried_places.h"

#include <algorithm>

namespace vorn_host {

namespace {

bool IsWritten(const VornBuildForm& form) {
  return form.GetOmitFlag() == 0 && form.GetExport() != 0 && form.GetComposedPntArray().GetSize() >= 2;
}

bool IsWritten(const VornExistingBuildForm& form) { return form.GetComposedPntArray().GetSize() >= 2; }

/// How many of the first forms, up to and with the one at index, are written.
template <typename Forms>
int CountWrittenUpTo(const Forms& forms, int index) {
  const int end = std::min(index + 1, forms.GetSize());
  return static_cast<int>(
      std::count_if(forms.begin(), forms.begin() + end, [](const auto& form) { return IsWritten(form); }));
}

void AddUnplaced(const CarriedPlaces::Element& element, std::vector<CarriedContent::Row>& rows) {
  if (!element.isWritten) {
    for (const CarriedItem* item : element.attributes) AddRow(rows, item->name);
    for (const CarriedItem* item : element.nodes) AddRow(rows, item->name);
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
  const bool isForm = anchor.tag == "tsf:BuildForm";
  const bool isGround = anchor.tag == "tsf:ExistingBuildForm";
  if (!isForm && !isGround) return anchor.index;  // all of them are written, or none
  if (!m_sets.IsRange(parent[0].index)) return -1;
  const Vorn_XSectionArray& sections = m_sets[parent[0].index].GetXSectionArray();
  if (!sections.IsRange(parent[1].index)) return -1;
  const VornXSection& section = sections[parent[1].index];
  return (isForm ? CountWrittenUpTo(section.GetBuildFormArray(), anchor.index)
                 : CountWrittenUpTo(section.GetExistingBuildFormArray(), anchor.index)) -
         1;
}

std::vector<CarriedContent::Row> CarriedPlaces::Unplaced() const {
  std::vector<CarriedContent::Row> rows;
  for (const CarriedItem* item : m_withoutPlace) AddRow(rows, item->name);
  AddUnplaced(m_root, rows);
  return rows;
}

}  // namespace vorn_host
