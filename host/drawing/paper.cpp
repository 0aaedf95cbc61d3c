#include "host/drawing/paper.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "host/document/text_encoding.h"

namespace vorn_host {

namespace {

constexpr double kWideLetter = 1.0;    ///< of the text size
constexpr double kNarrowLetter = 0.6;  ///< digits are a little narrower
/// How far letters reach below and above the base line, of the text size.
constexpr double kDescent = 0.15;
constexpr double kAscent = 0.8;

/// The first byte of the characters from U+1100 on, where full-width ones begin.
constexpr unsigned char kFirstWideByte = 0xE1;

/// Half-width katakana, U+FF61 to U+FF9F: as narrow as letters, though they lie among the full-width characters.
bool IsHalfWidthKatakana(std::string_view character) {
  return character >= std::string_view("\xEF\xBD\xA1") && character <= std::string_view("\xEF\xBE\x9F");
}

}  // namespace

void PaperBox::Include(const PaperPlace& place) {
  left = isEmpty ? place.x : std::min(left, place.x);
  right = isEmpty ? place.x : std::max(right, place.x);
  bottom = isEmpty ? place.y : std::min(bottom, place.y);
  top = isEmpty ? place.y : std::max(top, place.y);
  isEmpty = false;
}

PaperBox PaperBox::Widened(double by) const { return {left - by, right + by, bottom - by, top + by, isEmpty}; }

PaperDirection::PaperDirection(double degrees)
    : cosine(std::cos(degrees * std::numbers::pi / 180.0)), sine(std::sin(degrees * std::numbers::pi / 180.0)) {}

double TextWidth(std::string_view utf8, double sizeMm) {
  double width = 0.0;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    if (IsUtf8Continuation(utf8[i])) continue;
    const bool isWide =
        static_cast<unsigned char>(utf8[i]) >= kFirstWideByte && !IsHalfWidthKatakana(utf8.substr(i, 3));
    width += isWide ? kWideLetter : kNarrowLetter;
  }
  return width * sizeMm;
}

LabelBox BoxOf(const DrawnText& text, const PaperScale& scale) {
  LabelBox box{scale.ToPaper(text.place), TextWidth(text.text, text.sizeMm), (kDescent + kAscent) * text.sizeMm,
               PaperDirection(text.angle)};
  const double before = text.anchor == DrawnText::Anchor::Start ? 0.0
                        : text.anchor == DrawnText::Anchor::End ? box.width
                                                                : box.width / 2.0;
  box.corner = box.At(text.alongMm - before, text.liftMm - kDescent * text.sizeMm);
  return box;
}

PaperGrid::PaperGrid(const PaperBox& area)
    : m_area(area),
      m_cell(std::max({kSmallestCell, area.Width() / kMostCells, area.Height() / kMostCells})),
      m_columns(static_cast<int>(area.Width() / m_cell) + 1),
      m_rows(static_cast<int>(area.Height() / m_cell) + 1),
      m_covered(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows)) {}

int PaperGrid::CellAt(const PaperPlace& place) const {
  const double column = (place.x - m_area.left) / m_cell;
  const double row = (place.y - m_area.bottom) / m_cell;
  if (!(column >= 0.0 && column < m_columns && row >= 0.0 && row < m_rows)) return -1;
  return static_cast<int>(row) * m_columns + static_cast<int>(column);
}

/// Steps are a cell or less, so that no cell on the way is passed over.
template <typename Visit>
bool PaperGrid::ForEachCell(const LabelBox& box, Visit&& visit) const {
  const int along = static_cast<int>(box.width / m_cell) + 1;
  const int across = box.height > 0.0 ? static_cast<int>(box.height / m_cell) + 1 : 0;  // a line is walked once
  for (int i = 0; i <= along; ++i) {
    for (int j = 0; j <= across; ++j) {
      const double up = across > 0 ? box.height * j / across : 0.0;
      if (!visit(CellAt(box.At(box.width * i / along, up)))) return false;
    }
  }
  return true;
}

bool PaperGrid::IsFree(const LabelBox& box) const {
  return ForEachCell(box, [&](int cell) { return cell >= 0 && !m_covered[static_cast<std::size_t>(cell)]; });
}

void PaperGrid::Occupy(const LabelBox& box) {
  ForEachCell(box, [&](int cell) {
    if (cell >= 0) m_covered[static_cast<std::size_t>(cell)] = true;
    return true;
  });
}

namespace {

/// A line as a box of some height, which it runs through the middle of.
LabelBox BoxOfLine(const PaperPlace& from, const PaperPlace& to, double height) {
  const double length = Distance(from, to);
  PaperDirection direction;
  if (length > 0.0) {
    direction.cosine = (to.x - from.x) / length;
    direction.sine = (to.y - from.y) / length;
  }
  return {direction.From(from, 0.0, -height / 2.0), length, height, direction};
}

}  // namespace

/// A cell wide: two thin lines can cross without a common cell, as bishops do on a chessboard.
bool PaperGrid::IsLineFree(const PaperPlace& from, const PaperPlace& to) const {
  return IsFree(BoxOfLine(from, to, m_cell));
}

double PaperGrid::CoveredLength(const PaperPlace& from, const PaperPlace& to) const {
  const LabelBox line = BoxOfLine(from, to, 0.0);
  int visited = 0;
  int covered = 0;
  ForEachCell(line, [&](int cell) {
    ++visited;
    if (cell < 0 || m_covered[static_cast<std::size_t>(cell)]) ++covered;
    return true;
  });
  return line.width * covered / visited;
}

void PaperGrid::OccupyLine(const PaperPlace& from, const PaperPlace& to) { Occupy(BoxOfLine(from, to, 0.0)); }

}  // namespace vorn_host
