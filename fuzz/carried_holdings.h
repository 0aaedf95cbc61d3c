#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/document/carried_content.h"
#include "host/document/carried_item.h"
#include "host/document/design_document.h"

namespace vorn_fuzz {

/// What a document carries over, by the elements that hold it: each attribute, comment, instruction and element with
/// all below it, in as many words.
class CarriedHoldings {
 public:
  /// @param encoding of the document that it is written into: characters that the encoding lacks are replaced there
  CarriedHoldings(const vorn_host::DesignDocument& document, vorn_host::TextEncoding encoding);

  /// What stands beside the root, and in it: its own attributes too, but those that the host writes itself.
  [[nodiscard]] const std::vector<std::string>& OfRoot() const { return m_root; }
  /// What stands in an element below the root, by its place in the model; nothing when it was taken before.
  [[nodiscard]] std::vector<std::string> Take(const vorn_host::ElementPath& element);
  /// How many carried items stand in elements that were not asked for.
  [[nodiscard]] int CountLeft() const;

 private:
  /// What one element holds.
  struct Element {
    std::vector<std::string> holdings;
    int items = 0;
  };

  std::vector<std::string> m_root;
  std::map<std::string, Element> m_elements;  ///< by their places
};

}  // namespace vorn_fuzz
