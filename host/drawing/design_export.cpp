#include "host/drawing/design_export.h"

#include <algorithm>
#include <cstddef>

#include "host/drawing/section_geojson.h"
#include "host/drawing/section_title.h"
#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

/// The largest scale at which a section could fit, 1:scale.
struct ScaleNeed {
  std::string section;
  double scale = 0.0;
};

/// Names the sections that make the whole drawing much smaller than the others need, as one with a width mistyped does:
/// nobody could read the drawing, or tell from it where the mistake is.
void TakeScaleNotes(const std::vector<ScaleNeed>& needs, double scale, const DesignExport::NoteTaker& take) {
  if (needs.empty()) return;
  constexpr double kMuchSmaller = 10.0;
  std::vector<double> scales;
  scales.reserve(needs.size());
  for (const ScaleNeed& need : needs) scales.push_back(need.scale);
  std::sort(scales.begin(), scales.end());
  const double most = kMuchSmaller * scales[(scales.size() - 1) / 2];
  const double ofOthers = *(std::upper_bound(scales.begin(), scales.end(), most) - 1);
  for (const ScaleNeed& need : needs) {
    if (need.scale <= most) continue;
    take(need.section, "its size makes the whole drawing " + ScaleText(scale) +
                           "; most of the other cross sections need no smaller scale than " + ScaleText(ofOthers));
  }
}

}  // namespace

DesignExport::DesignExport(const DesignDocument& document, std::optional<double> centerHeight, NoteTaker note,
                           Progress progress)
    : m_viewer(document),
      m_centerHeight(centerHeight),
      m_sets(document.sets.GetSize()),
      m_note(std::move(note)),
      m_progress(std::move(progress)) {
  for (int set = 0; set < m_sets; ++set) {
    const int count = document.sets[set].GetXSectionArray().GetSize();
    for (int section = 0; section < count; ++section) m_places.emplace_back(set, section);
  }
}

double DesignExport::WriteDxf(const TextSink& sink, DrawingOptions drawing) const {
  const SheetGrid grid = GridOf(drawing);
  DxfSectionWriter writer(sink, grid, drawing.language);
  ForEach("drawing cross sections", [&](const SectionView& view) {
    const SectionDrawing drawn = Draw(view, drawing);
    TakeNotes(view, NotesOf(view, drawn));
    writer.Add(view, drawn);
  });
  ForRest([&](const SectionView& view) { TakeNotes(view, view.notes); });
  writer.Finish();
  return grid.Scale();
}

int DesignExport::WriteCsv(const TextSink& sink, CsvContent content, bool byteOrderMark) const {
  SectionCsvWriter writer(sink, content, byteOrderMark);
  AddAll(writer);
  return writer.RowCount();
}

int DesignExport::WriteGeoJson(const TextSink& sink) const {
  SectionGeoJsonWriter writer(sink);
  AddAll(writer);
  writer.Finish();
  return writer.FeatureCount();
}

void DesignExport::ForEach(std::string_view doing, const ViewTaker& take) const {
  for (int i = 0; i < SectionCount(); ++i) {
    if (m_progress) m_progress(doing, i, SectionCount());
    const auto& [set, section] = m_places[static_cast<std::size_t>(i)];
    take(m_viewer.Of(set, section, m_centerHeight));
  }
}

void DesignExport::ForRest(const ViewTaker& take) const {
  for (int set = 0; set < m_sets; ++set) {
    const SectionView rest = m_viewer.WithoutSection(set);
    if (!rest.targets.empty()) take(rest);
  }
}

template <typename Writer>
void DesignExport::AddAll(Writer& writer) const {
  const auto add = [&](const SectionView& view) {
    TakeNotes(view, view.notes);
    writer.Add(view);
  };
  ForEach("writing cross sections", add);
  ForRest(add);
}

/// Where every section has its place, at one scale for all. What the sections need at least tells mostly what that
/// scale is, so that each is drawn at no other.
SheetGrid DesignExport::GridOf(DrawingOptions& drawing) const {
  std::vector<ScaleNeed> needs;
  ForEach("measuring cross sections", [&](const SectionView& view) {
    needs.push_back({PlaceOf(view), LargestScale(view, drawing)});
  });
  for (const ScaleNeed& need : needs) drawing.leastScale = std::max(drawing.leastScale, need.scale);
  const auto measured = [&] {
    SheetGrid grid;
    ForEach("placing cross sections", [&](const SectionView& view) { grid.Add(view, Draw(view, drawing)); });
    return grid;
  };
  SheetGrid grid = measured();
  const bool isFinal = grid.HasOneScale();
  drawing.scale = grid.Scale();
  TakeScaleNotes(needs, drawing.scale, m_note);
  return isFinal ? grid : measured();
}

/// "No.6+0.0000 (No.6)", or "set 2 > No.6+0.0000 (No.6)" where there are several sets.
std::string DesignExport::PlaceOf(const SectionView& view) const {
  std::string set = "set " + std::to_string(view.set + 1);
  if (view.section < 0) return set;
  return m_sets > 1 ? set + " > " + TitleOf(view) : TitleOf(view);
}

void DesignExport::TakeNotes(const SectionView& view, const std::vector<ViewNote>& notes) const {
  const std::string where = PlaceOf(view);
  for (const ViewNote& note : notes) m_note(where, NoteText(note, Language::English));
}

}  // namespace vorn_host
