#pragma once

#include <cmath>
#include <string_view>
#include <vector>

#include "host/drawing/section_drawing.h"

// The sheet of paper that a drawing is laid out on, in millimetres: what a label covers is the same at every scale.

namespace vorn_host {

/// A place on paper, in millimetres; y grows upward, as heights do.
struct PaperPlace {
  double x = 0.0;  ///< to the right
  double y = 0.0;  ///< upward
};

/// How far two places lie apart, in millimetres.
[[nodiscard]] inline double Distance(const PaperPlace& a, const PaperPlace& b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}
/// The place halfway between two.
[[nodiscard]] inline PaperPlace Middle(const PaperPlace& a, const PaperPlace& b) {
  return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0};
}

/// How metres of the section plane become millimetres on paper.
class PaperScale {
 public:
  /// A drawing at 1:scale, its heights drawn so many times larger.
  PaperScale(double scale, double exaggeration) : m_x(1000.0 / scale), m_y(1000.0 / scale * exaggeration) {}

  /// A place of the section on paper.
  [[nodiscard]] PaperPlace ToPaper(const SectionPlace& place) const { return {place.offset * m_x, place.height * m_y}; }
  /// A place on paper in the section.
  [[nodiscard]] SectionPlace ToSection(const PaperPlace& place) const { return {place.x / m_x, place.y / m_y}; }
  /// Millimetres of a metre.
  [[nodiscard]] double Across() const { return m_x; }
  /// Millimetres of a metre of height.
  [[nodiscard]] double Upward() const { return m_y; }

 private:
  double m_x;
  double m_y;
};

/// An upright rectangle on paper; empty until something is included.
struct PaperBox {
  double left = 0.0, right = 0.0, bottom = 0.0, top = 0.0;  ///< its sides
  bool isEmpty = true;                                      ///< whether nothing is included yet

  /// Widens the box to a place.
  void Include(const PaperPlace& place);
  /// In millimetres.
  [[nodiscard]] double Width() const { return right - left; }
  /// In millimetres.
  [[nodiscard]] double Height() const { return top - bottom; }
  /// The box with so much more on each side.
  [[nodiscard]] PaperBox Widened(double by) const;
};

/// Which way a text or a line runs on paper.
struct PaperDirection {
  double cosine = 1.0;  ///< of the angle from the right
  double sine = 0.0;    ///< of the angle from the right

  PaperDirection() = default;
  /// @param degrees counter-clockwise from the right
  explicit PaperDirection(double degrees);

  /// The place so far along the direction and so far to the left of it.
  [[nodiscard]] PaperPlace From(const PaperPlace& place, double along, double across) const {
    return {place.x + along * cosine - across * sine, place.y + along * sine + across * cosine};
  }
};

/// A rectangle on paper that stands at an angle: the room of a text.
struct LabelBox {
  PaperPlace corner;              ///< where its lower left corner lies, as one reads
  double width = 0.0;             ///< along the direction
  double height = 0.0;            ///< across the direction
  PaperDirection direction = {};  ///< which way the text runs

  /// The place so far along and across the box, from its corner.
  [[nodiscard]] PaperPlace At(double along, double across) const { return direction.From(corner, along, across); }
};

/// Room that a text needs, by the usual widths of letters: 1 for a full-width character, 0.6 for others.
[[nodiscard]] double TextWidth(std::string_view utf8, double sizeMm);
/// The room of a text, with as little around it as looks well.
[[nodiscard]] LabelBox BoxOf(const DrawnText& text, const PaperScale& scale);

/// What is covered on a piece of paper, in small cells: it takes the same time to find room among five lines and among
/// thousands.
class PaperGrid {
 public:
  /// A grid that covers an area.
  explicit PaperGrid(const PaperBox& area);

  /// Whether nothing lies there; false outside the area.
  [[nodiscard]] bool IsFree(const LabelBox& box) const;
  /// Covers the room of a label.
  void Occupy(const LabelBox& box);
  /// The same for a line: false as well where a line would be crossed.
  [[nodiscard]] bool IsLineFree(const PaperPlace& from, const PaperPlace& to) const;
  /// How much of a line lies on what is covered, in millimetres.
  [[nodiscard]] double CoveredLength(const PaperPlace& from, const PaperPlace& to) const;
  /// Covers a line.
  void OccupyLine(const PaperPlace& from, const PaperPlace& to);

 private:
  static constexpr double kSmallestCell = 0.5;  ///< mm
  static constexpr int kMostCells = 2000;       ///< in a row or a column

  [[nodiscard]] int CellAt(const PaperPlace& place) const;  ///< -1 outside
  /// Calls visit(cell) until one call returns false, and returns whether none did; -1 is what lies outside.
  template <typename Visit>
  bool ForEachCell(const LabelBox& box, Visit&& visit) const;

  PaperBox m_area;
  double m_cell;
  int m_columns;
  int m_rows;
  std::vector<bool> m_covered;
};

}  // namespace vorn_host
