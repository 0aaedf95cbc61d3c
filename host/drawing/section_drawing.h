#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/drawing/language.h"
#include "host/drawing/section_view.h"

namespace vorn_host {

/// What a piece of a drawing shows: each kind can be switched off, has a colour and a line of its own, and is a layer
/// in CAD.
enum class DrawingKind {
  DesignSurface,
  Slope,  ///< slope and berm segments of the design surface
  PavementLayer,
  OtherForm,
  Ground,
  GroundHatch,
  Crossing,
  CenterLine,
  Code,       ///< codes at the points
  Grade,      ///< slope ratios and grades on the segments
  Dimension,  ///< widths and heights of the control targets
  Frame,      ///< frame, axes with their numbers, scale bar
  Title,      ///< station and name
};

/// What the line that leads to a point of a form shows.
[[nodiscard]] constexpr DrawingKind KindOf(FormRole role, SectionPart part) {
  if (role == FormRole::Layer) return DrawingKind::PavementLayer;
  if (role == FormRole::Other) return DrawingKind::OtherForm;
  return part == SectionPart::Slope || part == SectionPart::Berm ? DrawingKind::Slope : DrawingKind::DesignSurface;
}

/// What the segment between two neighbours on a line of a form shows, by their indices.
[[nodiscard]] inline DrawingKind SegmentKind(const ViewForm& form, int one, int other) {
  return KindOf(form.role, form.points[static_cast<std::size_t>(OuterOf(one, other))].part);
}

/// A line through places, in metres of the section plane.
struct DrawnLine {
  DrawingKind kind = DrawingKind::Frame;  ///< what it shows
  std::vector<SectionPlace> places;       ///< one after the other
  int form = -1;                          ///< index into `SectionView::forms`; -1 where it belongs to none
  int target = -1;                        ///< index into `SectionDrawing::measured`; -1 where it belongs to none
  /// Of the leader of a label, the place that it leads to. Who enlarges the drawing leaves it as long as it is on
  /// paper, around this place, as the label stays as large.
  std::optional<SectionPlace> leadsTo = {};
  /// Of the extension line of a dimension, the place that it begins beside. Who enlarges the drawing leaves the gap
  /// between them as wide as it is on paper.
  std::optional<SectionPlace> beginsBeside = {};
};

/// A mark at a place: a circle at a point, a triangle at a height, the arrow of a dimension.
struct DrawnMark {
  /// What a mark looks like.
  enum class Shape { Point, Crossing, Height, Arrow };
  DrawingKind kind = DrawingKind::Code;  ///< what it shows
  Shape shape = Shape::Point;            ///< what it looks like
  SectionPlace place;                    ///< where it is
  double angle = 0.0;                    ///< degrees, counter-clockwise: where triangles point
  int form = -1;                         ///< index into `SectionView::forms`; -1 where it belongs to none
  int point = -1;                        ///< index into the points of the form
  int target = -1;                       ///< index into `SectionDrawing::measured`; -1 where it belongs to none
};

/// A text at a place. Its size and how far from the place it stands are in millimetres on paper, whatever the scale.
struct DrawnText {
  /// Which end of a text stands at its place.
  enum class Anchor { Start, Middle, End };
  DrawingKind kind = DrawingKind::Code;  ///< what it shows
  SectionPlace place;                    ///< what it says something about
  double alongMm = 0.0;                  ///< how far from the place it is anchored, in the direction of reading
  double liftMm = 0.0;                   ///< how far above the place the text's base line lies, across that direction
  double angle = 0.0;                    ///< degrees, counter-clockwise
  double sizeMm = 2.5;                   ///< height of the letters on paper
  Anchor anchor = Anchor::Middle;        ///< which end stands at the place
  std::string text = {};                 ///< UTF-8, as it is: not escaped for any format
  int form = -1;                         ///< index into `SectionView::forms`; -1 where it belongs to none
  int target = -1;                       ///< index into `SectionDrawing::measured`; -1 where it belongs to none
};

/// "start", "middle", "end".
[[nodiscard]] constexpr std::string_view WordOf(DrawnText::Anchor anchor) {
  switch (anchor) {
    case DrawnText::Anchor::Start:
      return "start";
    case DrawnText::Anchor::Middle:
      return "middle";
    case DrawnText::Anchor::End:
      break;
  }
  return "end";
}

/// A cross section as a drawing: everything to be drawn, independent of any file format. SVG, the report's page and
/// DXF all draw this.
struct SectionDrawing {
  /// What the drawing shows, in metres, with a margin around the design.
  double left = 0.0, right = 0.0, bottom = 0.0, top = 0.0;  ///< its sides
  double scale = 100.0;                                     ///< 1:scale on paper
  double exaggeration = 1.0;                                ///< how many times heights are drawn larger than widths
  std::vector<DrawnLine> lines;                             ///< in the order in which they are drawn
  std::vector<DrawnMark> marks;                             ///< in the order in which they are drawn
  std::vector<DrawnText> texts;                             ///< in the order in which they are drawn
  /// What the dimensions show: of each the control targets that measure it, as they ask for the same at one place.
  /// Indices into `SectionView::targets`.
  std::vector<std::vector<int>> measured;
  int widthsLeftOut = 0;   ///< width dimensions that found no room
  int heightsLeftOut = 0;  ///< heights that did not, beside the triangles at their points
  int lengthsLeftOut = 0;  ///< slope lengths that did not
};

/// How a section is drawn.
struct DrawingOptions {
  double exaggeration = 1.0;  ///< how many times heights are drawn larger than widths
  /// 1:scale on paper; 0 takes the largest usual scale (1:50, 1:100, 1:200, 1:250, 1:500, ...) that fits an A3 sheet.
  double scale = 0.0;
  Language language = Language::English;  ///< of the drawing's own words
  double leastScale = 0.0;                ///< no larger scale than 1:leastScale is taken, for drawings that share one
};

/// Draws a cross section. Labels that would lie on each other are moved apart, or left out where there is no room.
[[nodiscard]] SectionDrawing Draw(const SectionView& view, const DrawingOptions& options = {});

/// The notes of a section and what its drawing had to leave out.
[[nodiscard]] std::vector<ViewNote> NotesOf(const SectionView& view, const SectionDrawing& drawing);

/// The same drawing in several languages, in their order: only words and the room that they need differ. The scale is
/// one at which all of them fit.
[[nodiscard]] std::vector<SectionDrawing> DrawInEach(std::span<const Language> languages, const SectionView& view,
                                                     const DrawingOptions& options);

/// The largest usual scale at which the section could fit, however little room its labels take. Quick, as nothing is
/// drawn: `Draw` takes this scale or a smaller one.
[[nodiscard]] double LargestScale(const SectionView& view, const DrawingOptions& options = {});

}  // namespace vorn_host
