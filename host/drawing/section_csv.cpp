#include "host/drawing/section_csv.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "host/document/text_encoding.h"
#include "host/drawing/plain_number.h"
#include "host/drawing/section_words.h"

namespace vorn_host {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// Whether a spreadsheet could take the text for a formula, or the apostrophe at its beginning for one put there.
bool NeedsApostrophe(std::string_view text) {
  constexpr std::array<std::string_view, 12> kBeginnings = {"=",  "+",  "-",  "@",  "'",  "\t",
                                                            "\r", "\n", "＝", "＋", "－", "＠"};
  return std::any_of(kBeginnings.begin(), kBeginnings.end(),
                     [&](std::string_view beginning) { return text.starts_with(beginning); });
}

/// A control character as its symbol; tabs and line breaks, which a cell may have, stay.
void AppendVisible(char byte, std::string& out) {
  constexpr std::string_view kSymbols = "\xE2\x90";  // U+2400 to U+243F without their last byte
  constexpr char kDelete = 0x7F;
  constexpr char kDeleteSymbol = 0x21;
  const bool isControl = (static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\r' && byte != '\n');
  if (!isControl && byte != kDelete) {
    out += byte;
    return;
  }
  out += kSymbols;
  out += static_cast<char>(0x80 + (byte == kDelete ? kDeleteSymbol : byte));
}

/// Appends cells to a row, each with the comma behind it.
class CsvCells {
 public:
  explicit CsvCells(std::string& row) : m_row(row) {}

  void Text(std::string_view text) {
    const bool quoted = text.find_first_of(",\"\r\n") != std::string_view::npos;
    if (quoted) m_row += '"';
    for (const char byte : text) {
      if (byte == '"') m_row += '"';
      m_row += byte;
    }
    if (quoted) m_row += '"';
    m_row += ',';
  }
  void Design(std::string_view text) { Text(CsvDesignText(text)); }
  void Number(const std::optional<double>& value) { Text(value ? PlainNumber(*value) : std::string()); }
  /// An index, counted from 1; empty for -1.
  void Index(int index) { Text(index < 0 ? std::string() : std::to_string(index + 1)); }
  void Flag(const std::optional<bool>& value) { Text(!value ? "" : *value ? "true" : "false"); }

 private:
  std::string& m_row;
};

/// A column of a table: its name, and what a row has there.
template <typename Row>
struct Column {
  std::string_view name;
  void (*write)(CsvCells& cells, const Row& row);
};

/// Whether a section is behind a change, and the like; none for what stands in no section.
std::optional<bool> OfSection(const SectionView& view, bool value) {
  return view.section < 0 ? std::nullopt : std::optional(value);
}

/// Every row begins with what tells its cross section.
constexpr std::array<Column<SectionView>, 10> kSectionColumns = {{
    {"set", [](CsvCells& cells, const SectionView& view) { cells.Index(view.set); }},
    {"section", [](CsvCells& cells, const SectionView& view) { cells.Index(view.section); }},
    {"station", [](CsvCells& cells, const SectionView& view) { cells.Number(view.station); }},
    // Vorn's own: a negative one is a number, which no spreadsheet runs.
    {"station_text", [](CsvCells& cells, const SectionView& view) { cells.Text(view.stationText); }},
    {"section_name", [](CsvCells& cells, const SectionView& view) { cells.Design(view.name); }},
    {"alignment", [](CsvCells& cells, const SectionView& view) { cells.Design(view.alignment); }},
    {"behind_change",
     [](CsvCells& cells, const SectionView& view) { cells.Flag(OfSection(view, view.isBehindChange)); }},
    {"control_section",
     [](CsvCells& cells, const SectionView& view) { cells.Flag(OfSection(view, view.isControlSection)); }},
    {"center_height", [](CsvCells& cells, const SectionView& view) { cells.Number(view.centerHeight); }},
    {"center_height_source", [](CsvCells& cells, const SectionView& view) { cells.Text(HeightSourceOf(view)); }},
}};

struct PointRow {
  const ViewForm& form;
  const ViewPoint& point;
};

constexpr std::array<Column<PointRow>, 18> kPointColumns = {{
    {"form", [](CsvCells& cells, const PointRow& row) { cells.Index(row.form.documentIndex); }},
    {"form_name", [](CsvCells& cells, const PointRow& row) { cells.Design(row.form.name); }},
    {"xsect_type", [](CsvCells& cells, const PointRow& row) { cells.Design(row.form.xSectType); }},
    {"role", [](CsvCells& cells, const PointRow& row) { cells.Text(WordOf(row.form.role)); }},
    {"point", [](CsvCells& cells, const PointRow& row) { cells.Index(row.point.documentIndex); }},
    {"code", [](CsvCells& cells, const PointRow& row) { cells.Design(row.point.code); }},
    {"from_point", [](CsvCells& cells, const PointRow& row) { cells.Index(OriginIndexOf(row.form, row.point)); }},
    {"side", [](CsvCells& cells, const PointRow& row) { cells.Design(row.point.side); }},
    {"part", [](CsvCells& cells, const PointRow& row) { cells.Text(WordOf(row.point.part)); }},
    {"offset", [](CsvCells& cells, const PointRow& row) { cells.Number(row.point.place.offset); }},
    {"height", [](CsvCells& cells, const PointRow& row) { cells.Number(row.point.place.height); }},
    {"input", [](CsvCells& cells, const PointRow& row) { cells.Text(row.point.input); }},
    {"input_x", [](CsvCells& cells, const PointRow& row) { cells.Number(row.point.values.x); }},
    {"input_y", [](CsvCells& cells, const PointRow& row) { cells.Number(row.point.values.y); }},
    {"input_reading", [](CsvCells& cells, const PointRow& row) { cells.Text(WordOf(row.point.values.reading)); }},
    {"grade", [](CsvCells& cells, const PointRow& row) { cells.Text(row.point.grade); }},
    {"exists", [](CsvCells& cells, const PointRow& row) { cells.Flag(row.point.exists); }},
    {"crossing", [](CsvCells& cells, const PointRow& row) { cells.Flag(row.point.isCrossing); }},
}};

struct GroundRow {
  int index;
  const ViewGround& ground;
  int point;  ///< index

  [[nodiscard]] const SectionPlace& Place() const { return ground.line[static_cast<std::size_t>(point)]; }
};

constexpr std::array<Column<GroundRow>, 5> kGroundColumns = {{
    {"ground", [](CsvCells& cells, const GroundRow& row) { cells.Index(row.index); }},
    {"ground_name", [](CsvCells& cells, const GroundRow& row) { cells.Design(row.ground.name); }},
    {"point", [](CsvCells& cells, const GroundRow& row) { cells.Index(row.point); }},
    {"offset", [](CsvCells& cells, const GroundRow& row) { cells.Number(row.Place().offset); }},
    {"height", [](CsvCells& cells, const GroundRow& row) { cells.Number(row.Place().height); }},
}};

struct TargetRow {
  int index;
  const ViewTarget& target;
  int pointIndex;          ///< -1 for a target that names none
  ViewTarget::Pnt named;   ///< that point
  const ViewForm* form;    ///< that it lies in; null where the section has no such point
  const ViewPoint* found;  ///< the point itself, null likewise

  [[nodiscard]] std::optional<double> Station() const {
    return named.elsewhere ? named.elsewhere->station : std::nullopt;
  }
  [[nodiscard]] std::optional<bool> IsBehindChange() const {
    return named.elsewhere ? std::optional(named.elsewhere->isBehindChange) : std::nullopt;
  }
  [[nodiscard]] std::optional<double> Offset() const {
    return found != nullptr ? std::optional(found->place.offset) : std::nullopt;
  }
  [[nodiscard]] std::optional<double> Height() const {
    return found != nullptr ? std::optional(found->place.height) : std::nullopt;
  }
};

constexpr std::array<Column<TargetRow>, 17> kTargetColumns = {{
    {"target", [](CsvCells& cells, const TargetRow& row) { cells.Index(row.index); }},
    {"item", [](CsvCells& cells, const TargetRow& row) { cells.Text(WordOf(row.target.item)); }},
    {"item_text", [](CsvCells& cells, const TargetRow& row) { cells.Design(row.target.itemText); }},
    {"form_name", [](CsvCells& cells, const TargetRow& row) { cells.Design(row.target.formName); }},
    {"work_type", [](CsvCells& cells, const TargetRow& row) { cells.Design(row.target.workType); }},
    {"scope", [](CsvCells& cells, const TargetRow& row) { cells.Design(row.target.scope); }},
    {"regulation", [](CsvCells& cells, const TargetRow& row) { cells.Design(row.target.regulation); }},
    {"design_value", [](CsvCells& cells, const TargetRow& row) { cells.Number(row.target.designValue); }},
    {"target_point", [](CsvCells& cells, const TargetRow& row) { cells.Index(row.pointIndex); }},
    {"point_name", [](CsvCells& cells, const TargetRow& row) { cells.Design(row.named.name); }},
    {"point_station", [](CsvCells& cells, const TargetRow& row) { cells.Number(row.Station()); }},
    {"point_behind_change", [](CsvCells& cells, const TargetRow& row) { cells.Flag(row.IsBehindChange()); }},
    {"form",
     [](CsvCells& cells, const TargetRow& row) { cells.Index(row.found != nullptr ? row.form->documentIndex : -1); }},
    {"point",
     [](CsvCells& cells, const TargetRow& row) { cells.Index(row.found != nullptr ? row.found->documentIndex : -1); }},
    {"code", [](CsvCells& cells,
                const TargetRow& row) { cells.Design(row.found != nullptr ? row.found->code : std::string()); }},
    {"offset", [](CsvCells& cells, const TargetRow& row) { cells.Number(row.Offset()); }},
    {"height", [](CsvCells& cells, const TargetRow& row) { cells.Number(row.Height()); }},
}};

template <typename Columns>
void AppendNames(const Columns& columns, std::string& row) {
  for (const auto& column : columns) row.append(column.name) += ',';
}

}  // namespace

std::string CsvDesignText(std::string_view utf8) {
  std::string text;
  if (NeedsApostrophe(utf8)) text += '\'';
  for (const char byte : utf8) AppendVisible(byte, text);
  return text;
}

SectionCsvWriter::SectionCsvWriter(TextSink sink, CsvContent content, bool byteOrderMark)
    : m_sink(std::move(sink)), m_content(content) {
  if (byteOrderMark) m_row += kUtf8ByteOrderMark;
  AppendNames(kSectionColumns, m_row);
  switch (content) {
    case CsvContent::Points:
      AppendNames(kPointColumns, m_row);
      break;
    case CsvContent::Ground:
      AppendNames(kGroundColumns, m_row);
      break;
    case CsvContent::Targets:
      AppendNames(kTargetColumns, m_row);
      break;
  }
  WriteRow();
}

void SectionCsvWriter::Add(const SectionView& view) {
  switch (m_content) {
    case CsvContent::Points:
      return AddPoints(view);
    case CsvContent::Ground:
      return AddGround(view);
    case CsvContent::Targets:
      return AddTargets(view);
  }
}

void SectionCsvWriter::AddPoints(const SectionView& view) {
  for (const ViewForm& form : view.forms) {
    for (const ViewPoint& point : form.points) AddRow(view, kPointColumns, PointRow{form, point});
  }
}

void SectionCsvWriter::AddGround(const SectionView& view) {
  for (std::size_t ground = 0; ground < view.grounds.size(); ++ground) {
    const ViewGround& one = view.grounds[ground];
    for (std::size_t i = 0; i < one.line.size(); ++i) {
      AddRow(view, kGroundColumns, GroundRow{static_cast<int>(ground), one, static_cast<int>(i)});
    }
  }
}

void SectionCsvWriter::AddTargets(const SectionView& view) {
  for (std::size_t i = 0; i < view.targets.size(); ++i) {
    const ViewTarget& target = view.targets[i];
    const auto add = [&](int point, const ViewTarget::Pnt& named) {
      AddRow(view, kTargetColumns,
             TargetRow{static_cast<int>(i), target, point, named, FormOf(view, named), PointOf(view, named)});
    };
    if (target.points.empty()) add(-1, {});
    for (std::size_t point = 0; point < target.points.size(); ++point) {
      add(static_cast<int>(point), target.points[point]);
    }
  }
}

template <typename Columns, typename Row>
void SectionCsvWriter::AddRow(const SectionView& view, const Columns& columns, const Row& row) {
  m_row.clear();
  CsvCells cells(m_row);
  for (const auto& column : kSectionColumns) column.write(cells, view);
  for (const auto& column : columns) column.write(cells, row);
  WriteRow();
  ++m_rows;
}

void SectionCsvWriter::WriteRow() {
  m_row.pop_back();  // the comma behind the last cell
  m_row += kLineEnd;
  m_sink(m_row);
}

}  // namespace vorn_host
