#include "host/drawing/dxf_sections.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/text_encoding.h"
#include "host/drawing/drawing_style.h"
#include "host/drawing/paper.h"
#include "host/drawing/value_text.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_host {

namespace {

// --- layers ----------------------------------------------------------------------------------------------------------

constexpr std::string_view kOriginLayer = "ORIGIN";
constexpr std::string_view kIndexLayer = "INDEX";

/// The layers of the kinds, in their order, and those that only CAD drawings have. The colours tell apart on a dark
/// and on a white background.
constexpr std::array<DxfLayer, 15> kLayers = {{
    {"DESIGN_SURFACE", 7, DxfLineType::Continuous},
    {"SLOPE", 150, DxfLineType::Continuous},
    {"PAVEMENT_LAYER", 30, DxfLineType::Continuous},
    {"OTHER_FORM", 6, DxfLineType::Dashed},
    {"GROUND", 3, DxfLineType::Continuous},
    {"GROUND_HATCH", 94, DxfLineType::Continuous},
    {"CROSSING", 20, DxfLineType::Continuous},
    {"CENTER_LINE", 1, DxfLineType::Center},
    {"CODE", 7, DxfLineType::Continuous},
    {"GRADE", 150, DxfLineType::Continuous},
    {"DIMENSION", 7, DxfLineType::Continuous},
    {"FRAME", 8, DxfLineType::Continuous},
    {"TITLE", 7, DxfLineType::Continuous},
    {kOriginLayer, 140, DxfLineType::Continuous},
    {kIndexLayer, 7, DxfLineType::Continuous},
}};
static_assert(kLayers[static_cast<std::size_t>(DrawingKind::Title)].name == "TITLE");

std::string_view LayerOf(DrawingKind kind) { return kLayers[static_cast<std::size_t>(kind)].name; }

// --- sizes, in millimetres on paper ----------------------------------------------------------------------------------

constexpr double kGap = 15.0;  ///< between the sheets
constexpr double kIndexText = 3.5;
constexpr double kOriginArm = 3.0;

// --- parts of an index line, in text heights -------------------------------------------------------------------------

constexpr double kIndexNameWidth = 8.0;  ///< of the sheets' names
constexpr double kIndexGap = 2.0;
constexpr double kIndexLine = 1.8;

/// About how wide a text is, in text heights: rather too much than too little.
double WidthOf(std::string_view utf8) {
  constexpr double kNarrow = 0.8;
  constexpr double kWide = 1.2;
  constexpr std::size_t kMostBytes = 255;  // no text of a drawing has more
  double width = 0.0;
  for (const char byte : utf8.substr(0, kMostBytes)) {
    if (!IsUtf8Continuation(byte)) width += IsAscii({&byte, 1}) ? kNarrow : kWide;
  }
  return width;
}

/// A place as far along a direction and as far to the left of it.
DxfPlace Moved(DxfPlace place, double degrees, double along, double across) {
  const auto [x, y] = PaperDirection(degrees).From({place.x, place.y}, along, across);
  return {x, y};
}

double RoundedUp(double metres) {
  constexpr double kStep = 10.0;
  return std::ceil(metres / kStep) * kStep;
}

/// Of two sections at one station, the one behind the change of shape is told apart.
std::string StationOf(const SectionView& view, Language language) {
  const char* behind = language == Language::Japanese ? " (後)" : " (behind)";
  return (view.stationText.empty() ? "-" : view.stationText) + (view.isBehindChange ? behind : "");
}

/// What stands beside the name of a sheet: the height that its origin lies at. It is marked where the height of the
/// centre line is only assumed, as all elevations of the sheet are then.
std::string ReferenceText(const SectionView& view) {
  const char* name = !view.centerHeight ? "H=" : view.isHeightAssumed ? "DL≒" : "DL=";
  return name + std::string(FixedDecimal(ReferenceHeight(view), 3).View());
}

/// The name, and the alignment where there is one.
std::string NameOf(const SectionView& view) {
  if (view.name.empty() || view.alignment.empty()) return view.name + view.alignment;
  return view.name + "  " + view.alignment;
}

}  // namespace

double ReferenceHeight(const SectionView& view) { return std::floor(view.centerHeight.value_or(0.0)); }

// --- the grid --------------------------------------------------------------------------------------------------------

void SheetGrid::Room::Include(double x, double y) {
  left = std::min(left, x);
  right = std::max(right, x);
  bottom = std::min(bottom, y);
  top = std::max(top, y);
}

void SheetGrid::Add(const SectionView& view, const SectionDrawing& drawing) {
  ++m_count;
  m_scale = std::max(m_scale, drawing.scale);
  m_largestScale = std::min(m_largestScale, drawing.scale);
  m_stationWidth = std::max(m_stationWidth, WidthOf(StationOf(view, Language::English)));
  m_nameWidth = std::max(m_nameWidth, WidthOf(vorn_host::NameOf(view)));
  Include(drawing, ReferenceHeight(view));
}

void SheetGrid::Include(const SectionDrawing& drawing, double reference) {
  m_room.Include(drawing.left, drawing.bottom - reference);
  m_room.Include(drawing.right, drawing.top - reference);
  for (const DrawnLine& line : drawing.lines) {
    for (const SectionPlace& place : line.places) m_room.Include(place.offset, place.height - reference);
  }
  for (const DrawnMark& mark : drawing.marks) m_room.Include(mark.place.offset, mark.place.height - reference);
  for (const DrawnText& text : drawing.texts) IncludeText(text, drawing.scale / 1000.0, reference);
}

void SheetGrid::IncludeText(const DrawnText& text, double metresPerMillimetre, double reference) {
  const double height = text.sizeMm * metresPerMillimetre;
  const double start = text.alongMm * metresPerMillimetre;
  const double lift = text.liftMm * metresPerMillimetre;
  const double width = WidthOf(text.text) * height;
  const double before = text.anchor == DrawnText::Anchor::Start    ? 0.0
                        : text.anchor == DrawnText::Anchor::Middle ? width / 2
                                                                   : width;
  const DxfPlace place = {text.place.offset, text.place.height - reference};
  for (const double along : {start - before, start + width - before}) {
    for (const double across : {lift - height / 2, lift + 1.5 * height}) {
      const DxfPlace corner = Moved(place, text.angle, along, across);
      m_room.Include(corner.x, corner.y);
    }
  }
}

double SheetGrid::ColumnPitch() const { return RoundedUp(m_room.right - m_room.left + kGap * MetresPerMillimetre()); }

double SheetGrid::RowPitch() const { return RoundedUp(m_room.top - m_room.bottom + kGap * MetresPerMillimetre()); }

int SheetGrid::Columns() const {
  const double square = std::sqrt(m_count * (RowPitch() / ColumnPitch()));
  return square >= 1.0 ? static_cast<int>(std::min(std::round(square), static_cast<double>(m_count))) : 1;
}

int SheetGrid::Rows() const { return (m_count + Columns() - 1) / Columns(); }

std::string SheetGrid::NameOf(int sheet) const {
  constexpr std::size_t kFewestDigits = 4;
  const std::size_t digits = std::max(kFewestDigits, std::to_string(m_count).size());
  const std::string number = std::to_string(sheet + 1);
  return 'S' + std::string(digits - number.size(), '0') + number;
}

DxfPlace SheetGrid::OriginOf(int sheet) const {
  const int row = sheet / Columns();
  const int column = sheet % Columns();
  return {column * ColumnPitch(), -row * RowPitch()};
}

DxfArea SheetGrid::AreaOf(int sheet) const {
  const DxfPlace origin = OriginOf(sheet);
  return {{origin.x + m_room.left, origin.y + m_room.bottom}, {origin.x + m_room.right, origin.y + m_room.top}};
}

DxfArea SheetGrid::Extents() const {
  if (m_count == 0) return {{0.0, 0.0}, {1.0, 1.0}};
  const DxfPlace lastColumn = OriginOf(Columns() - 1);
  const DxfPlace lastRow = OriginOf((Rows() - 1) * Columns());
  const int indexColumns = (m_count + IndexRows() - 1) / IndexRows();
  return {{m_room.left, lastRow.y + m_room.bottom},
          {m_room.left + std::max(lastColumn.x + m_room.right - m_room.left, indexColumns * IndexEntryWidth()),
           IndexTitlePlace().y + 2 * IndexTextHeight()}};
}

double SheetGrid::IndexTextHeight() const { return kIndexText * MetresPerMillimetre(); }

double SheetGrid::IndexStationAt() const { return kIndexNameWidth * IndexTextHeight(); }

double SheetGrid::IndexNameAt() const { return IndexStationAt() + (m_stationWidth + kIndexGap) * IndexTextHeight(); }

double SheetGrid::IndexEntryWidth() const { return IndexNameAt() + (m_nameWidth + 2 * kIndexGap) * IndexTextHeight(); }

/// As many as leave the index no wider than the sheets, where it has to have more than one column.
int SheetGrid::IndexRows() const {
  const double width = Columns() * ColumnPitch();
  const double fitting = std::clamp(std::floor(width / IndexEntryWidth()), 1.0, static_cast<double>(m_count));
  const int columns = static_cast<int>(fitting);
  return (m_count + columns - 1) / columns;
}

DxfPlace SheetGrid::IndexPlaceOf(int sheet) const {
  const int rows = IndexRows();
  const int column = sheet / rows;
  const int row = sheet % rows;
  const double line = kIndexLine * IndexTextHeight();
  const double bottom = m_room.top + 2 * kGap * MetresPerMillimetre();
  return {m_room.left + column * IndexEntryWidth(), bottom + (rows - 1 - row) * line};
}

DxfPlace SheetGrid::IndexTitlePlace() const {
  const DxfPlace first = IndexPlaceOf(0);
  return {first.x, first.y + 2 * kIndexLine * IndexTextHeight()};
}

// --- the writer ------------------------------------------------------------------------------------------------------

namespace {

DxfHeader HeaderOf(const SheetGrid& grid) {
  DxfHeader header;
  header.extents = grid.Extents();
  header.metresPerMillimetre = grid.MetresPerMillimetre();
  header.layers = kLayers;
  header.views.reserve(static_cast<std::size_t>(grid.Count()));
  for (int sheet = 0; sheet < grid.Count(); ++sheet) header.views.push_back({grid.NameOf(sheet), grid.AreaOf(sheet)});
  return header;
}

/// "20 cross sections, 1:100, metres": an engineer has to know the unit, which the format does not tell.
std::string IndexTitle(const SheetGrid& grid, Language language) {
  const std::string count = std::to_string(grid.Count());
  const std::string scale = "1:" + ValueText(grid.Scale(), 0, 3);
  if (language == Language::Japanese) return "横断面 " + count + "  縮尺 " + scale + "  単位 m";
  return count + (grid.Count() == 1 ? " cross section, " : " cross sections, ") + scale + ", metres";
}

DxfTextStyle::Anchor AnchorOf(DrawnText::Anchor anchor) {
  switch (anchor) {
    case DrawnText::Anchor::Start:
      return DxfTextStyle::Anchor::Start;
    case DrawnText::Anchor::Middle:
      return DxfTextStyle::Anchor::Middle;
    case DrawnText::Anchor::End:
      return DxfTextStyle::Anchor::End;
  }
  return DxfTextStyle::Anchor::Start;
}

}  // namespace

DxfSectionWriter::DxfSectionWriter(TextSink sink, const SheetGrid& grid, Language language)
    : m_grid(grid), m_language(language), m_writer(std::move(sink), HeaderOf(grid)) {
  if (grid.Count() == 0) return;
  m_writer.Text(kIndexLayer, grid.IndexTitlePlace(), IndexTitle(grid, language), {grid.IndexTextHeight()});
}

void DxfSectionWriter::Add(const SectionView& view, const SectionDrawing& drawing) {
  const Sheet sheet = {m_grid.OriginOf(m_sheet), ReferenceHeight(view)};
  for (const DrawnLine& line : drawing.lines) Line(line, sheet);
  for (const DrawnMark& mark : drawing.marks) Mark(mark, sheet);
  for (const DrawnText& text : drawing.texts) Text(text, sheet);
  Origin(sheet.origin);
  Label(view, sheet.PlaceOf({drawing.left, drawing.top}));
  IndexEntry(view);
  ++m_sheet;
}

void DxfSectionWriter::Line(const DrawnLine& line, const Sheet& sheet) {
  std::vector<DxfPlace> places;
  places.reserve(line.places.size());
  for (const SectionPlace& place : line.places) places.push_back(sheet.PlaceOf(place));
  m_writer.Polyline(LayerOf(line.kind), places);
}

void DxfSectionWriter::Mark(const DrawnMark& mark, const Sheet& sheet) {
  const std::string_view layer = LayerOf(mark.kind);
  const DxfPlace place = sheet.PlaceOf(mark.place);
  const MarkStyle& style = StyleOf(mark.shape);
  if (style.radiusMm > 0.0) return m_writer.Circle(layer, place, Metres(style.radiusMm));
  // The other corners of a triangle whose tip is at the place.
  const DxfPlace left = Moved(place, mark.angle, -Metres(style.lengthMm), Metres(style.halfBaseMm));
  const DxfPlace right = Moved(place, mark.angle, -Metres(style.lengthMm), -Metres(style.halfBaseMm));
  if (style.isFilled) return m_writer.FilledTriangle(layer, place, left, right);
  m_writer.Polyline(layer, std::array{place, right, left, place});
}

void DxfSectionWriter::Text(const DrawnText& text, const Sheet& sheet) {
  const DxfPlace place = Moved(sheet.PlaceOf(text.place), text.angle, Metres(text.alongMm), Metres(text.liftMm));
  m_writer.Text(LayerOf(text.kind), place, text.text, {Metres(text.sizeMm), text.angle, AnchorOf(text.anchor)});
}

/// The centre line at the reference height: the place that offsets and heights are measured from.
void DxfSectionWriter::Origin(DxfPlace at) {
  const double arm = Metres(kOriginArm);
  m_writer.Point(kOriginLayer, at);
  m_writer.Line(kOriginLayer, {at.x - arm, at.y}, {at.x + arm, at.y});
  m_writer.Line(kOriginLayer, {at.x, at.y - arm}, {at.x, at.y + arm});
}

/// The sheet's name and the height of its origin, above the corner of the drawing.
void DxfSectionWriter::Label(const SectionView& view, DxfPlace corner) {
  const DxfTextStyle style = {m_grid.IndexTextHeight()};
  m_writer.Text(kIndexLayer, corner, m_grid.NameOf(m_sheet), style);
  m_writer.Text(kOriginLayer, {corner.x + m_grid.IndexStationAt(), corner.y}, ReferenceText(view), style);
}

void DxfSectionWriter::IndexEntry(const SectionView& view) {
  const DxfTextStyle style = {m_grid.IndexTextHeight()};
  const DxfPlace place = m_grid.IndexPlaceOf(m_sheet);
  m_writer.Text(kIndexLayer, place, m_grid.NameOf(m_sheet), style);
  m_writer.Text(kIndexLayer, {place.x + m_grid.IndexStationAt(), place.y}, StationOf(view, m_language), style);
  m_writer.Text(kIndexLayer, {place.x + m_grid.IndexNameAt(), place.y}, vorn_host::NameOf(view), style);
}

}  // namespace vorn_host
