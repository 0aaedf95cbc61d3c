#pragma once

#include <limits>
#include <string>

#include "host/drawing/dxf_writer.h"
#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// The height in the plane of a cross section that lies at its origin in a CAD drawing: the whole metre below the
/// centre line where its elevation is known, else the centre line's height itself, 0.
[[nodiscard]] double ReferenceHeight(const SectionView& view);

/// Where cross sections have their places in a CAD drawing: on a grid of sheets, from left to right and from the top
/// down, as many columns as make the whole about as wide as high. The origin of each section, the centre line at the
/// reference height, lies at a multiple of 10 m, so offsets and heights can be read off the coordinates. No two
/// sheets overlap. An index lies above them.
///
/// Every section is added first, which tells how much room they need; only then are the sheets' places known.
class SheetGrid {
 public:
  /// Makes room for a section.
  void Add(const SectionView& view, const SectionDrawing& drawing);

  /// How many sections there are.
  [[nodiscard]] int Count() const { return m_count; }
  /// 1:scale on paper, the smallest of all sections.
  [[nodiscard]] double Scale() const { return m_scale; }
  /// Whether all sections were drawn at that scale, as they have to be for one sheet.
  [[nodiscard]] bool HasOneScale() const { return m_count == 0 || m_scale == m_largestScale; }
  /// How long a millimetre on paper is in the drawing, in metres.
  [[nodiscard]] double MetresPerMillimetre() const { return m_scale / 1000.0; }

  /// "S0012" for the twelfth: what the index and the named view are called.
  [[nodiscard]] std::string NameOf(int sheet) const;
  /// Where the centre line of a sheet's section lies at the reference height.
  [[nodiscard]] DxfPlace OriginOf(int sheet) const;
  /// The area of a sheet.
  [[nodiscard]] DxfArea AreaOf(int sheet) const;
  /// All sheets and the index.
  [[nodiscard]] DxfArea Extents() const;

  /// Where the index has the line of a sheet, and the parts of one.
  [[nodiscard]] DxfPlace IndexPlaceOf(int sheet) const;
  /// Where the title of the index stands.
  [[nodiscard]] DxfPlace IndexTitlePlace() const;
  /// Height of the texts of the index, in metres.
  [[nodiscard]] double IndexTextHeight() const;
  /// How far from the beginning of a line the station stands, in metres.
  [[nodiscard]] double IndexStationAt() const;
  /// How far from the beginning of a line the name stands, in metres.
  [[nodiscard]] double IndexNameAt() const;

 private:
  /// Room around the origin of a section, in metres.
  struct Room {
    double left = 0.0, right = 0.0, bottom = 0.0, top = 0.0;

    void Include(double x, double y);
  };

  void Include(const SectionDrawing& drawing, double reference);
  void IncludeText(const DrawnText& text, double metresPerMillimetre, double reference);
  [[nodiscard]] double ColumnPitch() const;
  [[nodiscard]] double RowPitch() const;
  [[nodiscard]] int Columns() const;
  [[nodiscard]] int Rows() const;
  [[nodiscard]] double IndexEntryWidth() const;
  [[nodiscard]] int IndexRows() const;

  int m_count = 0;
  double m_scale = 0.0;
  double m_largestScale = std::numeric_limits<double>::infinity();
  Room m_room;
  double m_stationWidth = 0.0;  ///< the widest in the index, in text heights
  double m_nameWidth = 0.0;
};

/// Writes cross sections as a CAD drawing: a layer for each kind of thing drawn, lengths in metres at true scale, texts
/// and marks as large as they are on paper at the grid's scale.
///
///     SheetGrid grid;
///     for (const SectionView& view : views) grid.Add(view, Draw(view, options));
///     DxfSectionWriter writer(sink, grid);
///     for (const SectionView& view : views) writer.Add(view, Draw(view, options));
///     writer.Finish();
class DxfSectionWriter {
 public:
  /// The grid has to outlive the writer.
  /// @param language of the words of the index
  DxfSectionWriter(TextSink sink, const SheetGrid& grid, Language language = Language::English);

  /// Writes the next section; the order is that of the grid.
  void Add(const SectionView& view, const SectionDrawing& drawing);
  /// Ends the drawing.
  void Finish() { m_writer.Finish(); }

 private:
  /// Where the sheet being written has its places.
  struct Sheet {
    DxfPlace origin;
    double reference = 0.0;

    [[nodiscard]] DxfPlace PlaceOf(const SectionPlace& place) const {
      return {origin.x + place.offset, origin.y + (place.height - reference)};
    }
  };

  [[nodiscard]] double Metres(double millimetres) const { return millimetres * m_grid.MetresPerMillimetre(); }
  void Line(const DrawnLine& line, const Sheet& sheet);
  void Mark(const DrawnMark& mark, const Sheet& sheet);
  void Text(const DrawnText& text, const Sheet& sheet);
  void Origin(DxfPlace at);
  void Label(const SectionView& view, DxfPlace corner);
  void IndexEntry(const SectionView& view);

  const SheetGrid& m_grid;
  Language m_language;
  DxfWriter m_writer;
  int m_sheet = 0;
};

}  // namespace vorn_host
