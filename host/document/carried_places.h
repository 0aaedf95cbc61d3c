#pragma once

#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/carried_content.h"
#include "host/document/carried_item.h"

namespace vorn_host {

/// Where carried items belong in the document that is written from a model: a tree of the elements that hold some.
/// A writer walks it beside the elements that it writes; outside these elements it costs nothing.
class CarriedPlaces {
 public:
  /// An element that holds carried items, itself or further below. Indices count what is written.
  struct Element {
    std::vector<const CarriedItem*> attributes;  ///< carried attributes
    std::vector<const CarriedItem*> nodes;       ///< carried nodes, in the order of the document
    std::map<std::pair<std::string_view, int>, std::unique_ptr<Element>> children;  ///< by tag and index
    bool isWritten = false;  ///< whether the element is written by now

    /// The child of that tag and index; null when nothing is carried there.
    [[nodiscard]] Element* Child(std::string_view tag, int index);
  };

  /// Both have to outlive the places, and the edition that is selected is the one to be written.
  CarriedPlaces(const CarriedContent& carried, const Vorn_XSectionsArray& sets);

  /// The root of the document.
  [[nodiscard]] Element& Root() { return m_root; }
  /// What stands before the root.
  [[nodiscard]] const std::vector<const CarriedItem*>& BeforeRoot() const { return m_beforeRoot; }
  /// What stands behind the root.
  [[nodiscard]] const std::vector<const CarriedItem*>& AfterRoot() const { return m_afterRoot; }
  /// What could not be put back, once the document is written: the element that held it was not.
  [[nodiscard]] std::vector<CarriedContent::Row> Unplaced() const;

  /// The last of the written siblings that an item follows: at most the index of its anchor; -1 when none of them was
  /// written.
  [[nodiscard]] int WrittenUpTo(const ElementStep& anchor, const ElementPath& parent) const;

 private:
  /// For the forms of a section, the index among those written: of the form itself or the last one before it.
  struct WrittenForms {
    std::vector<int> forms;
    std::vector<int> grounds;
  };

  [[nodiscard]] Element* Place(const ElementPath& path);
  /// Counted once for each section; none for a section that is not in the model.
  [[nodiscard]] const WrittenForms& FormsOf(int set, int section) const;

  const Vorn_XSectionsArray& m_sets;
  mutable std::map<std::pair<int, int>, WrittenForms> m_writtenForms;
  Element m_root;
  std::vector<const CarriedItem*> m_beforeRoot;
  std::vector<const CarriedItem*> m_afterRoot;
  std::vector<const CarriedItem*> m_withoutPlace;
};

}  // namespace vorn_host
