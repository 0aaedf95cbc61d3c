#include "host/drawing/dxf_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <utility>

#include "host/document/document_error.h"
#include "host/document/utf8_character.h"
#include "host/drawing/plain_number.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 16;
constexpr std::string_view kTextStyleName = "JAPANESE";
/// How narrow letters are, so that neighbouring labels stay apart.
constexpr double kLetterWidth = 0.7;
constexpr double kLensLength = 50.0;
/// Height of the eye in the direction of a view.
constexpr double kFromAbove = 1.0;

struct LineTypePattern {
  DxfLineType type;
  std::string_view name;
  std::string_view description;
  std::array<double, 4> dashes;  ///< millimetres; a gap is negative; 0 ends the pattern
};

constexpr std::array<LineTypePattern, 3> kLineTypes = {{
    {DxfLineType::Continuous, "CONTINUOUS", "Solid line", {}},
    {DxfLineType::Dashed, "DASHED", "__ __ __ __ __", {3.0, -1.5}},
    {DxfLineType::Center, "CENTER", "____ _ ____ _ ____", {12.0, -2.0, 2.0, -2.0}},
}};

std::string_view NameOf(DxfLineType type) {
  for (const LineTypePattern& known : kLineTypes) {
    if (known.type == type) return known.name;
  }
  return kLineTypes.front().name;
}

/// `\U+XXXX` for a character, in two halves where it is beyond the first 65,536.
std::string UnicodeEscape(char32_t character) {
  const auto escape = [](unsigned unit) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "\\U+%04X", unit & 0xFFFFu);
    return std::string(text.data());
  };
  if (character < 0x10000) return escape(character);
  const char32_t beyond = character - 0x10000;
  return escape(0xD800 + (beyond >> 10)) + escape(0xDC00 + (beyond & 0x3FF));
}

constexpr char32_t kReplacement = 0xFFFD;

/// A character of UTF-8 text in code page 932, or escaped.
std::string Encoded(std::string_view character) {
  using Fault = code_page_932::Conversion::Fault;
  std::string bytes;
  const auto done = code_page_932::AppendFromUtf8(character, bytes);
  if (done) return bytes;
  return UnicodeEscape(done.fault == Fault::kUnmappable ? done.codePoint : kReplacement);
}

/// Control characters of ASCII, those above it (U+0080 to U+009F), and the two that separate lines and paragraphs.
bool IsControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first < 0x20 || first == 0x7F;
  if (character.size() == 2) return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
  return character == "\xE2\x80\xA8" || character == "\xE2\x80\xA9";
}

/// The character that starts at a position, safe behind what is written already.
std::string Escaped(std::string_view utf8, std::size_t at, std::size_t end, std::string_view written) {
  const std::string_view character = utf8.substr(at, end - at);
  const auto next = [&](char c) { return end < utf8.size() && utf8[end] == c; };
  if (IsControl(character)) return " ";
  if (character == "^") return "^ ";
  // Two percent signs begin a control code, and programs differ in how a sign is spelled out: in a run they are
  // full-width ones, which all show alike.
  if (character == "%" && (next('%') || (at > 0 && utf8[at - 1] == '%'))) return Encoded("％");
  // What reads like an escape and is none, behind a backslash or a character whose second byte looks like one.
  if ((character == "U" || character == "M") && next('+') && written.ends_with('\\')) {
    return UnicodeEscape(static_cast<unsigned char>(character[0]));
  }
  return Encoded(character);
}

}  // namespace

std::string DxfText(std::string_view utf8) {
  constexpr std::size_t kLongest = 255;
  constexpr std::string_view kCut = "...";
  std::string text;
  std::size_t roomForCut = 0;  // the last place where the text can be cut and still be marked so
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t end = EndOfCharacter(utf8, at);
    text += Escaped(utf8, at, end, text);
    if (text.size() > kLongest) return text.substr(0, roomForCut) + std::string(kCut);
    if (text.size() + kCut.size() <= kLongest) roomForCut = text.size();
    at = end;
  }
  return text;
}

DxfWriter::DxfWriter(TextSink sink, const DxfHeader& header) : m_sink(std::move(sink)) {
  HeaderSection(header);
  Tables(header);
  Group(0, "SECTION");
  Group(2, "ENTITIES");
}

void DxfWriter::Point(std::string_view layer, DxfPlace place) {
  Entity("POINT", layer);
  Place(10, place);
}

void DxfWriter::Line(std::string_view layer, DxfPlace from, DxfPlace to) {
  Entity("LINE", layer);
  Place(10, from);
  Place(11, to);
}

void DxfWriter::Polyline(std::string_view layer, std::span<const DxfPlace> places) {
  if (places.size() < 2) return;
  if (places.size() == 2) return Line(layer, places[0], places[1]);
  Entity("POLYLINE", layer);
  Group(66, 1);
  Place(10, {});
  Group(70, 0);
  for (const DxfPlace place : places) {
    Entity("VERTEX", layer);
    Place(10, place);
  }
  Entity("SEQEND", layer);
}

void DxfWriter::Circle(std::string_view layer, DxfPlace center, double radius) {
  Entity("CIRCLE", layer);
  Place(10, center);
  Real(40, radius);
}

void DxfWriter::FilledTriangle(std::string_view layer, DxfPlace a, DxfPlace b, DxfPlace c) {
  Entity("SOLID", layer);
  Place(10, a);
  Place(11, b);
  Place(12, c);
  Place(13, c);
}

void DxfWriter::Text(std::string_view layer, DxfPlace place, std::string_view utf8, const DxfTextStyle& style) {
  if (utf8.empty()) return;
  Entity("TEXT", layer);
  Place(10, place);
  Real(40, style.height);
  Group(1, DxfText(utf8));
  Real(50, style.angle);
  Real(41, kLetterWidth);
  Group(7, kTextStyleName);
  if (style.anchor == DxfTextStyle::Anchor::Start) return;
  Group(72, style.anchor == DxfTextStyle::Anchor::Middle ? 1 : 2);
  Place(11, place);
}

void DxfWriter::Finish() {
  Group(0, "ENDSEC");
  Group(0, "EOF");
  PassOn();
}

void DxfWriter::Group(int code, std::string_view value) {
  std::array<char, 16> line{};
  std::snprintf(line.data(), line.size(), "%3d\r\n", code);
  m_piece += line.data();
  m_piece += value;
  m_piece += "\r\n";
  if (m_piece.size() >= kPieceSize) PassOn();
}

void DxfWriter::Group(int code, int value) { Group(code, std::to_string(value)); }

void DxfWriter::Real(int code, double value) {
  std::string text = PlainNumber(value);
  if (text.empty()) throw DocumentError("a drawing cannot hold a coordinate that is no finite number");
  if (text.find('.') == std::string::npos) text += ".0";
  Group(code, text);
}

void DxfWriter::Place(int code, DxfPlace place, double z) {
  constexpr int kNextCoordinate = 10;
  Real(code, place.x);
  Real(code + kNextCoordinate, place.y);
  Real(code + 2 * kNextCoordinate, z);
}

void DxfWriter::Entity(std::string_view type, std::string_view layer) {
  Group(0, type);
  Group(8, layer);
}

void DxfWriter::HeaderSection(const DxfHeader& header) {
  const auto variable = [this](std::string_view name) { Group(9, name); };
  const auto corner = [&](std::string_view name, DxfPlace place) {
    variable(name);
    Real(10, place.x);
    Real(20, place.y);
  };
  Group(0, "SECTION");
  Group(2, "HEADER");
  variable("$ACADVER");
  Group(1, "AC1009");
  variable("$DWGCODEPAGE");
  Group(3, "ANSI_932");
  variable("$INSBASE");
  Place(10, {});
  variable("$EXTMIN");
  Place(10, header.extents.low);
  variable("$EXTMAX");
  Place(10, header.extents.high);
  corner("$LIMMIN", header.extents.low);
  corner("$LIMMAX", header.extents.high);
  variable("$LTSCALE");  // patterns are given on paper
  Real(40, header.metresPerMillimetre);
  variable("$TEXTSTYLE");
  Group(7, kTextStyleName);
  variable("$LUNITS");  // decimal
  Group(70, 2);
  variable("$LUPREC");  // millimetres
  Group(70, 3);
  Group(0, "ENDSEC");
}

void DxfWriter::Tables(const DxfHeader& header) {
  Group(0, "SECTION");
  Group(2, "TABLES");
  Viewport(header.extents);
  LineTypes();
  Layers(header.layers);
  TextStyle();
  Views(header.views);
  Group(0, "ENDSEC");
}

void DxfWriter::BeginTable(std::string_view name, std::size_t entries) {
  Group(0, "TABLE");
  Group(2, name);
  Group(70, static_cast<int>(entries));
}

/// What a CAD program shows first: everything.
void DxfWriter::Viewport(const DxfArea& extents) {
  const double width = extents.high.x - extents.low.x;
  const double height = extents.high.y - extents.low.y;
  constexpr double kScreen = 16.0 / 9.0;  // width by height
  BeginTable("VPORT", 1);
  Group(0, "VPORT");
  Group(2, "*ACTIVE");
  Group(70, 0);
  const auto pair = [this](int code, double x, double y) {
    Real(code, x);
    Real(code + 10, y);
  };
  pair(10, 0.0, 0.0);
  pair(11, 1.0, 1.0);
  pair(12, extents.low.x + width / 2, extents.low.y + height / 2);
  pair(13, 0.0, 0.0);
  pair(14, 1.0, 1.0);
  pair(15, 10.0, 10.0);
  Place(16, {}, kFromAbove);
  Place(17, {});
  Real(40, std::max({height, width / kScreen, 1.0}));
  Real(41, kScreen);
  Real(42, kLensLength);
  Real(43, 0.0);
  Real(44, 0.0);
  Real(50, 0.0);
  Real(51, 0.0);
  constexpr std::array<std::pair<int, int>, 8> kSwitches = {
      {{71, 0}, {72, 100}, {73, 1}, {74, 3}, {75, 0}, {76, 0}, {77, 0}, {78, 0}}};
  for (const auto& [code, value] : kSwitches) Group(code, value);
  Group(0, "ENDTAB");
}

void DxfWriter::LineTypes() {
  BeginTable("LTYPE", kLineTypes.size());
  for (const LineTypePattern& pattern : kLineTypes) {
    int count = 0;
    double length = 0.0;
    for (const double dash : pattern.dashes) {
      if (dash == 0.0) break;
      ++count;
      length += dash < 0.0 ? -dash : dash;
    }
    Group(0, "LTYPE");
    Group(2, pattern.name);
    Group(70, 0);
    Group(3, pattern.description);
    Group(72, 65);
    Group(73, count);
    Real(40, length);
    for (int i = 0; i < count; ++i) Real(49, pattern.dashes[static_cast<std::size_t>(i)]);
  }
  Group(0, "ENDTAB");
}

void DxfWriter::Layers(std::span<const DxfLayer> layers) {
  constexpr DxfLayer kAlwaysThere = {"0", 7, DxfLineType::Continuous};
  const auto layer = [this](const DxfLayer& one) {
    Group(0, "LAYER");
    Group(2, one.name);
    Group(70, 0);
    Group(62, one.color);
    Group(6, NameOf(one.lineType));
  };
  BeginTable("LAYER", layers.size() + 1);
  layer(kAlwaysThere);
  for (const DxfLayer& one : layers) layer(one);
  Group(0, "ENDTAB");
}

void DxfWriter::TextStyle() {
  BeginTable("STYLE", 1);
  Group(0, "STYLE");
  Group(2, kTextStyleName);
  Group(70, 0);
  Real(40, 0.0);
  Real(41, kLetterWidth);
  Real(50, 0.0);
  Group(71, 0);
  Real(42, 1.0);
  Group(3, "txt");
  Group(4, "extfont2");  // the font of double-byte characters
  Group(0, "ENDTAB");
}

void DxfWriter::Views(std::span<const DxfView> views) {
  BeginTable("VIEW", views.size());
  for (const DxfView& view : views) {
    const auto& [low, high] = view.area;
    Group(0, "VIEW");
    Group(2, view.name);
    Group(70, 0);
    Real(40, high.y - low.y);
    Real(10, low.x + (high.x - low.x) / 2);
    Real(20, low.y + (high.y - low.y) / 2);
    Real(41, high.x - low.x);
    Place(11, {}, kFromAbove);
    Place(12, {});
    Real(42, kLensLength);
    Real(43, 0.0);
    Real(44, 0.0);
    Real(50, 0.0);
    Group(71, 0);
  }
  Group(0, "ENDTAB");
}

void DxfWriter::PassOn() {
  if (m_piece.empty()) return;
  m_sink(m_piece);
  m_piece.clear();
}

}  // namespace vorn_host
