#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/atomic_file.h"

namespace vorn_host {

/// A place in a CAD drawing, in metres.
struct DxfPlace {
  double x = 0.0;  ///< to the right
  double y = 0.0;  ///< upward

  friend bool operator==(const DxfPlace&, const DxfPlace&) = default;
};

/// A rectangle in a CAD drawing.
struct DxfArea {
  DxfPlace low;   ///< lower left corner
  DxfPlace high;  ///< upper right corner
};

/// How a layer draws its lines. Lengths of dashes are millimetres on paper.
enum class DxfLineType { Continuous, Dashed, Center };

/// A layer and how it looks.
struct DxfLayer {
  std::string_view name;  ///< capital letters, digits and underscores
  int color = 7;          ///< colour number: 1 red, 2 yellow, ..., 7 white or black, whichever the background is not
  DxfLineType lineType = DxfLineType::Continuous;  ///< of its lines
};

/// An area that a CAD program shows when it is asked for by name.
struct DxfView {
  std::string name;  ///< as a layer's
  DxfArea area;      ///< what is shown
};

/// What stands at the beginning of a drawing.
struct DxfHeader {
  DxfArea extents;                   ///< of everything drawn
  double metresPerMillimetre = 0.1;  ///< how long a millimetre on paper is in the drawing
  std::span<const DxfLayer> layers;  ///< all that the drawing uses
  std::vector<DxfView> views;        ///< in the order in which they are listed
};

/// How a text stands.
struct DxfTextStyle {
  /// Which end of the text stands at its place.
  enum class Anchor { Start, Middle, End };
  double height = 1.0;            ///< metres in the drawing
  double angle = 0.0;             ///< degrees, counter-clockwise
  Anchor anchor = Anchor::Start;  ///< at the place
};

/// A text as a drawing file holds it: code page 932, with `\U+XXXX` for what that lacks. Nothing in it is taken for a
/// control code (`%%d`, which becomes `％％d`, `^J`) or ends its line; control characters become blanks. It is cut
/// where the format's limit of 255 bytes would be passed.
[[nodiscard]] std::string DxfText(std::string_view utf8);

/// Writes a CAD drawing in the oldest version of DXF that is still read everywhere, R12 in ASCII, with Japanese text in
/// code page 932. The file is complete with `Finish`. It is passed on in pieces, so that no more than one of them is
/// in memory.
class DxfWriter {
 public:
  /// Writes the header and the tables; the drawing's entities follow. Throws `DocumentError` for a number that is
  /// none, here and in every entity.
  DxfWriter(TextSink sink, const DxfHeader& header);

  /// A point.
  void Point(std::string_view layer, DxfPlace place);
  /// A line from one place to another.
  void Line(std::string_view layer, DxfPlace from, DxfPlace to);
  /// A line through all places; nothing when there are fewer than two.
  void Polyline(std::string_view layer, std::span<const DxfPlace> places);
  /// A circle; the radius in metres.
  void Circle(std::string_view layer, DxfPlace center, double radius);
  /// A triangle, filled with the colour of its layer.
  void FilledTriangle(std::string_view layer, DxfPlace a, DxfPlace b, DxfPlace c);
  /// Nothing when there is no text.
  void Text(std::string_view layer, DxfPlace place, std::string_view utf8, const DxfTextStyle& style);
  /// Ends the drawing and hands out the last piece.
  void Finish();

 private:
  void Group(int code, std::string_view value);
  void Group(int code, int value);
  void Real(int code, double value);
  /// X, Y and Z, under the code of X.
  void Place(int code, DxfPlace place, double z = 0.0);
  void Entity(std::string_view type, std::string_view layer);
  void BeginTable(std::string_view name, std::size_t entries);

  void HeaderSection(const DxfHeader& header);
  void Tables(const DxfHeader& header);
  void Viewport(const DxfArea& extents);
  void LineTypes();
  void Layers(std::span<const DxfLayer> layers);
  void TextStyle();
  void Views(std::span<const DxfView> views);
  void PassOn();

  TextSink m_sink;
  std::string m_piece;
};

}  // namespace vorn_host
