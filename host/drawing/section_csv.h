#pragma once

#include <string>
#include <string_view>

#include "host/document/atomic_file.h"
#include "host/drawing/section_view.h"

namespace vorn_host {

/// What the rows of a table are.
enum class CsvContent {
  Points,   ///< the points of the build forms
  Ground,   ///< the points of the existing ground
  Targets,  ///< the points that control targets name; one row without a point for a target that names none
};

/// A text of a design as a table has it. Spreadsheets run what begins like a formula (`=`, `+`, `-`, `@`, in full width
/// too, a tab or a line break), so such a text has an apostrophe put before it, and so has one that begins with an
/// apostrophe: who takes one apostrophe away from the beginning has the text again. Control characters that no text
/// has stay visible as their symbols (U+2400 on).
[[nodiscard]] std::string CsvDesignText(std::string_view utf8);

/// Writes cross sections as a table: comma-separated values in UTF-8 with a header row, quoted where needed, lines
/// ended by CR LF. Numbers have a decimal point and are in metres; sets, sections, forms and points count from 1, as
/// in messages. A value that is not known is empty.
class SectionCsvWriter {
 public:
  /// @param byteOrderMark whether the text begins with one, by which spreadsheets know UTF-8
  SectionCsvWriter(TextSink sink, CsvContent content, bool byteOrderMark = false);

  /// A view without a section adds its control targets, with nothing where the section would be told.
  void Add(const SectionView& view);
  /// How many rows there are below the header.
  [[nodiscard]] int RowCount() const { return m_rows; }

 private:
  void AddPoints(const SectionView& view);
  void AddGround(const SectionView& view);
  void AddTargets(const SectionView& view);
  /// A row of what tells the cross section, and of the cells of its own columns.
  template <typename Columns, typename Row>
  void AddRow(const SectionView& view, const Columns& columns, const Row& row);
  /// Ends the row, and hands it over.
  void WriteRow();

  TextSink m_sink;
  CsvContent m_content;
  std::string m_row;
  int m_rows = 0;
};

}  // namespace vorn_host
