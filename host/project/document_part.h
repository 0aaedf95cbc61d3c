#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/carried_content.h"
#include "host/document/edition.h"

namespace vorn_host {

/// What a project keeps of the document that its design came from, beside the records of the archive
/// (docs/project-file.md).
struct DocumentPart {
  /// The part as it is written: UTF-8, without layout.
  [[nodiscard]] std::string ToText() const;
  /// Reads what `ToText` wrote. Throws `DocumentError` for anything else, in however little it differs: what a newer
  /// program added would be gone after the next save; and for more carried items than that. Name stands for the file in
  /// messages.
  [[nodiscard]] static DocumentPart Parse(std::string_view text, const std::string& name,
                                          std::size_t mostCarriedItems = CarriedContent::kMostItems);

  Edition edition = Edition::V41;      ///< of the document
  std::string encodingName = "UTF-8";  ///< what the document calls its encoding
  bool hasStructureType = false;       ///< whether the document has a structure type
  /// The design stands in the alignments of the road centre instead of the construction information.
  bool inRoadCenter = false;
  /// Alignments whose sets hold nothing, and yet are sets of the document; ascending, each once, from 0.
  std::vector<int> emptySets;
  CarriedContent carried;  ///< what the library does not model
};

}  // namespace vorn_host
