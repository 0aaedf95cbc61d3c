#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/label_stand.h"
#include "host/drawing/paper.h"
#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// Finds room on paper for the labels of a drawing, and adds them to it: no label lies on another one or on a line, and
/// no leader runs through a label.
class LabelPlacer {
 public:
  /// On which side of a segment a text along it is tried first.
  enum class FirstTry { Above, Below };

  /// @param room that labels have on paper
  /// @param drawing receives texts and lines
  LabelPlacer(const PaperScale& scale, const PaperBox& room, SectionDrawing& drawing)
      : m_scale(scale), m_drawing(drawing), m_grid(room), m_labels(room) {}

  // --- what labels keep clear of ---

  /// Labels keep clear of a line.
  void KeepLabelsOff(const DrawnLine& line);
  /// Labels keep clear of a place on paper.
  void KeepLabelsOff(const LabelBox& box) { m_grid.Occupy(box); }
  /// Leaders keep clear of a place on paper.
  void KeepLeadersOff(const LabelBox& box) { m_labels.Occupy(box); }
  /// Leaders cross no such line.
  void KeepLeadersOff(const PaperPlace& from, const PaperPlace& to) { m_labels.OccupyLine(from, to); }
  /// The room of a label: both keep clear of it.
  void Cover(const LabelBox& box);
  /// The points with their marks, which labels of others are rather not to stand at.
  /// @param radius of the mark in millimetres
  void AddPoint(const PaperPlace& place, double radius) { m_points.push_back({place, radius}); }
  /// To be called when all points are there.
  void SortPoints();
  /// Whether a label has room there.
  [[nodiscard]] bool IsFree(const LabelBox& box) const { return m_grid.IsFree(box); }

  // --- lines on paper ---

  /// Adds a line to the drawing.
  void AddPaperLine(DrawingKind kind, const PaperPlace& from, const PaperPlace& to, int form = -1, int target = -1);
  /// The same for a line that labels keep clear of.
  void AddCoveringLine(DrawingKind kind, const PaperPlace& from, const PaperPlace& to, int form, int target);

  // --- labels ---

  /// Adds a text where it finds room; false when it does not. So do the functions below.
  bool AddText(const DrawnText& text);
  /// Whether a text along a segment of that length is no longer than the segment.
  [[nodiscard]] static bool HasLengthFor(const std::string& label, double length);
  /// A text along a segment, above or below it, where it is no longer than the segment.
  bool AddAlong(DrawnText text, const PaperPlace& from, const PaperPlace& to, FirstTry first);
  /// A text in the first way in which it finds room.
  bool AddAt(DrawnText text, const std::vector<LabelStand>& stands);
  /// The same for a code, which stands no nearer than this to another point.
  bool AddApart(DrawnText text, const std::vector<LabelStand>& stands, double apart);
  /// The same where the marks of neighbours do not touch the text.
  bool AddUntouched(DrawnText text, const std::vector<LabelStand>& stands);
  /// A text with its leader where it stands free, and the leader runs through no label and crosses no other.
  /// @param footAbove how far above the place a leader upward begins: on top of what is drawn there
  bool AddLed(const DrawnText& text, double footAbove);
  /// The same in the first of several ways.
  bool AddLedNear(DrawnText text, const std::vector<LabelStand>& stands, double footAbove);
  /// The same far from the place, in the way that costs least: the leader is short, crosses few lines and runs through
  /// no other point, and the text stands at no other.
  bool AddLedFar(DrawnText text, double footAbove);

 private:
  /// A point with its mark.
  struct MarkedPoint {
    PaperPlace place;
    double radius = 0.0;
  };
  using PointRange = std::pair<std::vector<MarkedPoint>::const_iterator, std::vector<MarkedPoint>::const_iterator>;

  [[nodiscard]] std::optional<LabelLeader> LeaderTo(const DrawnText& text, double footAbove) const;
  [[nodiscard]] bool IsLeaderFree(const std::optional<LabelLeader>& leader) const;
  [[nodiscard]] double LengthOnLines(const LabelLeader& leader) const;
  [[nodiscard]] PointRange PointsBetween(double left, double right) const;
  [[nodiscard]] bool RunsThroughPoint(const LabelLeader& leader, const PaperPlace& own, double apart) const;
  [[nodiscard]] double CostOf(const DrawnText& text, const std::optional<LabelLeader>& leader) const;
  [[nodiscard]] bool IsAtAnotherPoint(const DrawnText& text, double apart) const;
  void AddLeader(const LabelLeader& leader, const DrawnText& text);

  const PaperScale& m_scale;
  SectionDrawing& m_drawing;
  PaperGrid m_grid;                   ///< all that labels keep clear of
  PaperGrid m_labels;                 ///< what leaders keep clear of: labels, other leaders, triangles, dimension lines
  std::vector<MarkedPoint> m_points;  ///< from left to right
};

}  // namespace vorn_host
