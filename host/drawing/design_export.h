#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/drawing/dxf_sections.h"
#include "host/drawing/section_csv.h"
#include "host/drawing/section_drawing.h"
#include "host/drawing/section_view.h"

namespace vorn_host {

/// Exports all cross sections of a design, which are looked at one at a time. The document has to outlive the object
/// and to stay as it is meanwhile.
class DesignExport {
 public:
  /// Hears what of a section could not be shown, or where what is shown was taken from.
  /// @param where the section, "No.6+0.0000 (No.6)", or its set
  /// @param note  one sentence without a full stop
  using NoteTaker = std::function<void(const std::string& where, const std::string& note)>;
  /// Told how many of the cross sections are done.
  using Progress = std::function<void(std::string_view doing, int done, int total)>;

  /// @param centerHeight height of the centre line, in metres, where the document does not tell it
  DesignExport(const DesignDocument& document, std::optional<double> centerHeight, NoteTaker note,
               Progress progress = {});

  /// How many cross sections there are.
  [[nodiscard]] int SectionCount() const { return static_cast<int>(m_places.size()); }

  /// Writes a CAD drawing of them, all at one scale.
  /// @returns the scale that texts and marks have, as 1:scale
  double WriteDxf(const TextSink& sink, DrawingOptions drawing) const;
  /// Writes a table.
  /// @returns how many rows there are below the header
  int WriteCsv(const TextSink& sink, CsvContent content, bool byteOrderMark) const;
  /// Writes a GeoJSON feature collection.
  /// @returns how many features there are
  int WriteGeoJson(const TextSink& sink) const;

 private:
  using ViewTaker = std::function<void(const SectionView&)>;

  /// Hands every cross section over, in the order of the document.
  void ForEach(std::string_view doing, const ViewTaker& take) const;
  /// Hands over, set by set, what stands in none of its cross sections.
  void ForRest(const ViewTaker& take) const;
  /// Adds every section with its notes to a writer, and then the rest.
  template <typename Writer>
  void AddAll(Writer& writer) const;

  [[nodiscard]] SheetGrid GridOf(DrawingOptions& drawing) const;
  [[nodiscard]] std::string PlaceOf(const SectionView& view) const;
  void TakeNotes(const SectionView& view, const std::vector<ViewNote>& notes) const;

  SectionViewer m_viewer;
  std::optional<double> m_centerHeight;
  int m_sets;
  std::vector<std::pair<int, int>> m_places;  ///< set and section
  NoteTaker m_note;
  Progress m_progress;
};

}  // namespace vorn_host
