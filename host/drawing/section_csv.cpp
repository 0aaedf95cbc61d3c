#include "host/drawing/section_csv.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "host/document/text_encoding.h"
#include "host/drawing/plain_number.h"
#include "host/drawing/section_words.h"

namespace vorn_host {

namespace {

constexpr std::string_view kSectionColumns =
    "set,section,station,station_text,section_name,alignment,behind_change,control_section,center_height,"
    "center_height_source,";
constexpr std::string_view kPointColumns =
    "form,form_name,xsect_type,role,point,code,from_point,side,part,offset,height,input,input_x,input_y,"
    "input_reading,grade,exists,crossing";
constexpr std::string_view kGroundColumns = "ground,ground_name,point,offset,height";
constexpr std::string_view kTargetColumns =
    "target,item,item_text,form_name,work_type,scope,regulation,design_value,target_point,point_name,point_station,"
    "point_behind_change,form,point,code,offset,height";
constexpr std::string_view kLineEnd = "\r\n";

std::string_view ColumnsOf(CsvContent content) {
  switch (content) {
    case CsvContent::Points:
      break;
    case CsvContent::Ground:
      return kGroundColumns;
    case CsvContent::Targets:
      return kTargetColumns;
  }
  return kPointColumns;
}

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
  m_row += kSectionColumns;
  m_row += ColumnsOf(content);
  m_row += kLineEnd;
  m_sink(m_row);
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
    for (const ViewPoint& point : form.points) {
      BeginRow(view);
      Index(form.documentIndex);
      Design(form.name);
      Design(form.xSectType);
      Cell(WordOf(form.role));
      Index(point.documentIndex);
      Design(point.code);
      Index(OriginIndexOf(form, point));
      Design(point.side);
      Cell(WordOf(point.part));
      Number(point.place.offset);
      Number(point.place.height);
      Cell(point.input);
      Number(point.values.x);
      Number(point.values.y);
      Cell(WordOf(point.values.reading));
      Cell(point.grade);
      Flag(point.exists);
      Flag(point.isCrossing);
      EndRow();
    }
  }
}

void SectionCsvWriter::AddGround(const SectionView& view) {
  for (std::size_t ground = 0; ground < view.grounds.size(); ++ground) {
    const ViewGround& one = view.grounds[ground];
    for (std::size_t i = 0; i < one.line.size(); ++i) {
      BeginRow(view);
      Index(static_cast<int>(ground));
      Design(one.name);
      Index(static_cast<int>(i));
      Number(one.line[i].offset);
      Number(one.line[i].height);
      EndRow();
    }
  }
}

void SectionCsvWriter::AddTargets(const SectionView& view) {
  for (std::size_t target = 0; target < view.targets.size(); ++target) {
    const int index = static_cast<int>(target);
    const int count = static_cast<int>(view.targets[target].points.size());
    if (count == 0) AddTargetRow(view, index, -1);
    for (int point = 0; point < count; ++point) AddTargetRow(view, index, point);
  }
}

void SectionCsvWriter::AddTargetRow(const SectionView& view, int target, int point) {
  const ViewTarget& one = view.targets[static_cast<std::size_t>(target)];
  const ViewTarget::Pnt named = point < 0 ? ViewTarget::Pnt() : one.points[static_cast<std::size_t>(point)];
  const ViewPoint* found = PointOf(view, named);
  BeginRow(view);
  Index(target);
  Cell(WordOf(one.item));
  Design(one.itemText);
  Design(one.formName);
  Design(one.workType);
  Design(one.scope);
  Design(one.regulation);
  Number(one.designValue);
  Index(point);
  Design(named.name);
  Number(named.elsewhere ? named.elsewhere->station : std::nullopt);
  named.elsewhere ? Flag(named.elsewhere->isBehindChange) : Cell({});
  Index(found != nullptr ? FormOf(view, named)->documentIndex : -1);
  Index(found != nullptr ? found->documentIndex : -1);
  Design(found != nullptr ? found->code : std::string());
  Number(found != nullptr ? std::optional(found->place.offset) : std::nullopt);
  Number(found != nullptr ? std::optional(found->place.height) : std::nullopt);
  EndRow();
}

void SectionCsvWriter::BeginRow(const SectionView& view) {
  m_row.clear();
  Index(view.set);
  Index(view.section);
  Number(view.station);
  Cell(view.stationText);  // Vorn's own: a negative one is a number, which no spreadsheet runs
  Design(view.name);
  Design(view.alignment);
  const bool isSection = view.section >= 0;
  isSection ? Flag(view.isBehindChange) : Cell({});
  isSection ? Flag(view.isControlSection) : Cell({});
  Number(view.centerHeight);
  Cell(HeightSourceOf(view));
}

void SectionCsvWriter::Cell(std::string_view text) {
  const bool quoted = text.find_first_of(",\"\r\n") != std::string_view::npos;
  if (quoted) m_row += '"';
  for (const char byte : text) {
    if (byte == '"') m_row += '"';
    m_row += byte;
  }
  if (quoted) m_row += '"';
  m_row += ',';
}

void SectionCsvWriter::Number(const std::optional<double>& value) { Cell(value ? PlainNumber(*value) : std::string()); }

void SectionCsvWriter::Index(int index) { Cell(index < 0 ? std::string() : std::to_string(index + 1)); }

void SectionCsvWriter::EndRow() {
  m_row.pop_back();  // the comma behind the last cell
  m_row += kLineEnd;
  m_sink(m_row);
  ++m_rows;
}

}  // namespace vorn_host
