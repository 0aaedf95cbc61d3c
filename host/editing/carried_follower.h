#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "host/document/design_document.h"
#include "host/editing/set_targets.h"

namespace vorn_host {

/// Keeps what a document carries over (comments, unknown attributes and elements) at its build form, point or control
/// target while a step moves these about. Costs nothing in sections that hold no such content.
class CarriedFollower {
 public:
  /// The document has to outlive the follower.
  explicit CarriedFollower(DesignDocument& document);

  /// To be called before a section changes, and when it has; in between, its forms, points and control targets
  /// bear marks in their type, drawing and serial identifiers.
  void Mark(int set, int section);
  /// To be called when the section has changed.
  /// @param mirrored whether the existing ground was put in reverse order
  void Trace(int set, int section, bool mirrored);
  /// To be called when targets of a set were removed or their points swapped.
  void FollowTargets(int set, const std::vector<TargetFate>& fates);
  /// Ends a step: puts the content to where its elements are now.
  /// @returns what had to be dropped, as the element that held it is gone
  std::vector<CarriedContent::Row> Apply();

 private:
  using SectionKey = std::pair<int, int>;
  /// An element below a section: tag and index of the form, tag and index in the form (-1 for the form itself).
  using Element = std::tuple<std::string_view, int, std::string_view, int>;
  using Place = std::pair<int, int>;
  using Moves = std::map<Element, Place>;

  /// What the marks stand for while a section changes.
  struct Marked {
    std::vector<std::uint32_t> typeIDs;
    std::vector<std::uint32_t> drawIDs;
    std::vector<Place> points;
    std::vector<std::uint32_t> targetSerials;
    std::vector<Place> targets;
  };

  /// What became of a control target of a set: its index now (-1 when it is gone), and the former index of the one
  /// before it that is left (-1 when there is none).
  struct TargetMove {
    int index = -1;
    int before = -1;
    bool swapped = false;
  };

  void MarkForms(VornXSection& section);
  void TraceForms(VornXSection& section, Moves& moves) const;
  static void TraceGround(const VornXSection& section, bool mirrored, Moves& moves);
  // Each leads a path to where its element is now; false when that is gone.
  [[nodiscard]] bool Follow(ElementPath& path) const;
  [[nodiscard]] bool FollowIntoSection(ElementPath& path) const;
  [[nodiscard]] bool FollowTarget(ElementPath& path) const;
  // Each tells the former index of the last sibling before an element that is left; -1 when there is none.
  [[nodiscard]] int SiblingBefore(const ElementPath& path) const;
  [[nodiscard]] int SiblingBeforeInSection(const ElementPath& path) const;
  [[nodiscard]] int TargetBefore(const ElementPath& path) const;
  static Element ElementOf(const ElementPath& path);

  DesignDocument& m_document;
  std::set<SectionKey> m_carrying;
  Marked m_marked;
  std::map<SectionKey, Moves> m_moves;
  std::map<int, std::vector<TargetMove>> m_targetMoves;
};

}  // namespace vorn_host
