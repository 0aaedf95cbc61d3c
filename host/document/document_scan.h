#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/document/text_lines.h"
#include "host/document/unread_values.h"

namespace vorn_host {

/// What a look at every node of a parsed document finds, before the library reads it. There is one look only: the
/// nodes of a large document are far apart in memory, and going over them costs more than what is done with them.
struct DocumentScan {
  /// In the order of the document.
  std::vector<UnreadValue> unreadValues;

  /// Whether a modelled element holds something that the library leaves alone, in itself or below.
  [[nodiscard]] bool HoldsMore(pugi::xml_node element) const { return holders.contains(element.hash_value()); }

  std::unordered_set<std::size_t> holders;  ///< hash values of these elements; pugixml's are of the node itself
};

/// Why a document that could be parsed is malformed all the same, and where.
struct DocumentFault {
  std::ptrdiff_t offset = 0;  ///< of the node, in the text that was parsed
  std::string reason;         ///< empty when nothing is wrong
};

/// Looks at a document up to the first fault.
/// @param lines of the text that was parsed
/// @param edition20 whether the document is read as one of edition 2.0, whose control targets have no points
DocumentFault ScanDocument(const pugi::xml_document& tree, const TextLines& lines, bool edition20, DocumentScan& scan);

}  // namespace vorn_host
