#pragma once

#include <string>
#include <vector>

#include "host/document/document_error.h"

namespace vorn_host {

/// What one editing step changed.
struct EditReport {
  /// A total.
  struct Count {
    std::string what;  ///< "crossing points", plural
    int count = 0;     ///< how often
  };
  /// What a step did in one section.
  struct Change {
    std::string path;  ///< of the cross section
    std::string what;  ///< in words
  };

  std::string step;  ///< as the user named it
  /// Cross sections that changed, in the order of the document.
  std::vector<Change> changes;
  /// Cross sections that did not change as the step would have it, and why.
  std::vector<Change> remarks;
  /// Totals of what changed, none of them 0.
  std::vector<Count> counts;
  /// What the user has to know besides, one sentence each.
  std::vector<std::string> notes;

  /// Whether the step changed anything.
  [[nodiscard]] bool HasChanged() const { return !changes.empty() || !counts.empty(); }
  /// Adds to the total of that text.
  void Add(const std::string& what, int count);
};

/// A step that cannot be done. The message names the cross section and the reason; the design may be half edited, and
/// must not be written.
class EditError : public DocumentError {
 public:
  /// What cannot be done, and where.
  EditError(const std::string& path, const std::string& reason) : DocumentError(path + ": " + reason) {}
};

}  // namespace vorn_host
