#include "host/report/section_report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/paper.h"
#include "host/drawing/section_words.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_host {

namespace {

using Json = nlohmann::ordered_json;

/// A value with as many parts to the unit as anybody can see or measure; no number stays none.
Json Rounded(double value, double parts) {
  const double rounded = std::round(value * parts) / parts + 0.0;  // no negative zero
  return std::isfinite(rounded) ? Json(rounded) : Json(nullptr);
}
/// The four decimals of a document, rounded as everywhere: the page only writes the number down.
Json Metres(double value) {
  constexpr int kPlaces = 4;
  const double rounded = FixedDecimal::Round(value, kPlaces) + 0.0;  // no negative zero
  return std::isfinite(rounded) ? Json(rounded) : Json(nullptr);
}
Json Metres(const std::optional<double>& value) { return value ? Metres(*value) : Json(nullptr); }
/// On paper a thousandth of a millimetre is a tenth of one at 1:100, which is the last place of a document.
Json Millimetres(double value) { return Rounded(value, 1e3); }
Json Degrees(double value) { return Rounded(value, 1e3); }

/// Where the places of a drawing lie on its paper, as seen from the centre line: that is the same in every language,
/// whatever room the words around the section need.
class Sheet {
 public:
  Sheet(const SectionView& view, const SectionDrawing& drawing)
      : m_centerHeight(view.centerHeight.value_or(0.0)), m_scale(drawing.scale, drawing.exaggeration) {}

  void AddPlace(Json& row, const SectionPlace& place) const { AddDistance(row, {0.0, m_centerHeight}, place); }
  /// From one place to another.
  void AddDistance(Json& row, const SectionPlace& from, const SectionPlace& to) const {
    const PaperPlace distance = m_scale.ToPaper({to.offset - from.offset, to.height - from.height});
    row.push_back(Millimetres(distance.x));
    row.push_back(Millimetres(-distance.y));
  }
  /// Left, top, width and height.
  [[nodiscard]] Json Box(const SectionDrawing& drawing) const {
    Json box = Json::array();
    AddPlace(box, {drawing.left, drawing.top});
    AddDistance(box, {drawing.left, drawing.top}, {drawing.right, drawing.bottom});
    return box;
  }

 private:
  double m_centerHeight;
  PaperScale m_scale;
};

// --- the drawing -----------------------------------------------------------------------------------------------------

Json ToJson(const DrawnLine& line, const Sheet& sheet) {
  Json row = {static_cast<int>(line.kind), line.form, line.target};
  for (const SectionPlace& place : line.places) sheet.AddPlace(row, place);
  return row;
}

/// A place that a line belongs to, and as seen from there the line's own places.
Json ToJsonFrom(const SectionPlace& origin, const DrawnLine& line, const Sheet& sheet) {
  Json row = {static_cast<int>(line.kind), line.form, line.target};
  sheet.AddPlace(row, origin);
  for (const SectionPlace& place : line.places) sheet.AddDistance(row, origin, place);
  return row;
}

Json ToJson(const DrawnMark& mark, const Sheet& sheet) {
  Json row = {static_cast<int>(mark.kind), mark.form, mark.target, static_cast<int>(mark.shape), Degrees(mark.angle)};
  sheet.AddPlace(row, mark.place);
  return row;
}

Json ToJson(const DrawnText& text, const Sheet& sheet) {
  Json row = {static_cast<int>(text.kind),
              text.form,
              text.target,
              WordOf(text.anchor),
              Degrees(text.angle),
              Millimetres(text.sizeMm),
              Millimetres(text.alongMm),
              Millimetres(text.liftMm),
              text.text};
  sheet.AddPlace(row, text.place);
  return row;
}

Json ToJson(const SectionDrawing& drawing, const Sheet& sheet) {
  Json lines = Json::array();
  Json leaders = Json::array();
  Json extensions = Json::array();
  for (const DrawnLine& line : drawing.lines) {
    if (!std::all_of(line.places.begin(), line.places.end(), IsFinite)) continue;
    if (line.leadsTo) {
      leaders.push_back(ToJsonFrom(*line.leadsTo, line, sheet));
    } else if (line.beginsBeside) {
      extensions.push_back(ToJsonFrom(*line.beginsBeside, line, sheet));
    } else {
      lines.push_back(ToJson(line, sheet));
    }
  }
  Json marks = Json::array();
  for (const DrawnMark& mark : drawing.marks) {
    if (IsFinite(mark.place)) marks.push_back(ToJson(mark, sheet));
  }
  Json texts = Json::array();
  for (const DrawnText& text : drawing.texts) {
    if (IsFinite(text.place)) texts.push_back(ToJson(text, sheet));
  }
  return {{"box", sheet.Box(drawing)}, {"scale", drawing.scale},        {"exaggeration", drawing.exaggeration},
          {"lines", std::move(lines)}, {"leaders", std::move(leaders)}, {"extensions", std::move(extensions)},
          {"marks", std::move(marks)}, {"texts", std::move(texts)},     {"measured", drawing.measured}};
}

/// The members that another drawing has otherwise.
Json Differences(const Json& drawing, const Json& other) {
  Json differences = Json::object();
  for (const auto& [name, value] : other.items()) {
    if (drawing.at(name) != value) differences[name] = value;
  }
  return differences;
}

/// Takes the texts from one on out of a drawing.
Json TakenFrom(Json& texts, std::ptrdiff_t first) {
  Json taken = Json::array();
  for (auto text = texts.begin() + first; text != texts.end(); ++text) taken.push_back(std::move(*text));
  texts.erase(texts.begin() + first, texts.end());
  return taken;
}

/// Takes the words of each language out of two drawings, which leaves them the texts that they begin with alike: those
/// of the section itself.
Json TakenWords(Json& english, Json& japanese) {
  const auto differ = std::mismatch(english.begin(), english.end(), japanese.begin(), japanese.end());
  const std::ptrdiff_t alike = differ.first - english.begin();
  return {{"en", TakenFrom(english, alike)}, {"ja", TakenFrom(japanese, alike)}};
}

// --- the section -----------------------------------------------------------------------------------------------------

/// Null for a point that has no place: the indices of the others stay.
/// @param kinds of the lines that end at the point
Json ToJson(const ViewPoint& point, const std::set<DrawingKind>& kinds, const Sheet& sheet) {
  if (!IsFinite(point.place)) return nullptr;
  Json row = {point.code,
              point.from,
              WordOf(point.part),
              point.side,
              point.input,
              point.grade,
              point.exists ? 1 : 0,
              point.isCrossing ? 1 : 0,
              Metres(point.place.offset),
              Metres(point.place.height)};
  sheet.AddPlace(row, point.place);
  row.push_back(kinds);
  return row;
}

/// For every point of a form the kinds of the lines that end there: the point is seen with any of them. Where no line
/// does, that of the line which would lead to it.
std::vector<std::set<DrawingKind>> KindsAtPoints(const ViewForm& form) {
  std::vector<std::set<DrawingKind>> kinds(form.points.size());
  for (const std::vector<int>& line : form.lines) {
    for (std::size_t i = 1; i < line.size(); ++i) {
      for (const int end : {line[i - 1], line[i]}) {
        kinds[static_cast<std::size_t>(end)].insert(SegmentKind(form, line[i - 1], line[i]));
      }
    }
  }
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (kinds[i].empty()) kinds[i].insert(KindOf(form.role, form.points[i].part));
  }
  return kinds;
}

Json ToJson(const ViewForm& form, const Sheet& sheet) {
  Json points = Json::array();
  const std::vector<std::set<DrawingKind>> kinds = KindsAtPoints(form);
  for (std::size_t i = 0; i < kinds.size(); ++i) points.push_back(ToJson(form.points[i], kinds[i], sheet));
  return {{"name", form.name}, {"type", form.xSectType}, {"points", std::move(points)}};
}

Json ToJson(const ViewGround& ground, const Sheet& sheet) {
  Json points = Json::array();
  for (const SectionPlace& place : ground.line) {
    if (!IsFinite(place)) continue;
    Json row = {Metres(place.offset), Metres(place.height)};
    sheet.AddPlace(row, place);
    points.push_back(std::move(row));
  }
  return {{"name", ground.name}, {"kind", DrawingKind::Ground}, {"points", std::move(points)}};
}

/// Where the form or point with an index in the document stands among those shown; -1 where it is left out.
template <typename Shown>
int ShownIndexOf(int documentIndex, const std::vector<Shown>& shown) {
  const auto found = std::lower_bound(shown.begin(), shown.end(), documentIndex,
                                      [](const Shown& one, int wanted) { return one.documentIndex < wanted; });
  return documentIndex < 0 || found == shown.end() || found->documentIndex != documentIndex
             ? -1
             : static_cast<int>(found - shown.begin());
}

}  // namespace

Json ToJson(const ViewTarget& target) {
  Json points = Json::array();
  for (const ViewTarget::Pnt& point : target.points) {
    Json row = {point.form, point.point, point.name, Metres(point.designValue)};
    if (point.elsewhere) row.insert(row.end(), {point.elsewhere->stationText, point.elsewhere->isBehindChange ? 1 : 0});
    points.push_back(std::move(row));
  }
  return {{"item", target.itemText},
          {"form", target.formName},
          {"workType", target.workType},
          {"scope", target.scope},
          {"regulation", target.regulation},
          {"points", std::move(points)},
          {"value", Metres(target.designValue)}};
}

Json ToJson(const Finding& finding, const SectionView& view) {
  const int form = ShownIndexOf(finding.place.form, view.forms);
  const int point =
      form < 0 ? -1 : ShownIndexOf(finding.place.point, view.forms[static_cast<std::size_t>(form)].points);
  return {finding.severity == Severity::Error ? 0 : 1, finding.kind, finding.path, finding.reason, form, point};
}

Json ToJson(const SectionReport& report) {
  const SectionView& view = report.view;
  const std::vector<ViewNote> notes = NotesOf(view, report.drawing);
  const Sheet sheet(view, report.drawing);
  Json drawing = ToJson(report.drawing, sheet);
  Json japanese = ToJson(report.japanese, sheet);
  Json words = TakenWords(drawing["texts"], japanese["texts"]);
  japanese = Differences(drawing, japanese);
  Json forms = Json::array();
  for (const ViewForm& form : view.forms) forms.push_back(ToJson(form, sheet));
  Json grounds = Json::array();
  for (const ViewGround& ground : view.grounds) grounds.push_back(ToJson(ground, sheet));
  Json targets = Json::array();
  for (const ViewTarget& target : view.targets) targets.push_back(ToJson(target));
  Json findings = Json::array();
  for (const Finding& finding : report.findings) findings.push_back(ToJson(finding, view));
  return {{"centerHeight", Metres(view.centerHeight)},
          {"isHeightAssumed", view.isHeightAssumed},
          {"isControlSection", view.isControlSection},
          {"drawing", std::move(drawing)},
          {"japanese", std::move(japanese)},
          {"words", std::move(words)},
          {"forms", std::move(forms)},
          {"grounds", std::move(grounds)},
          {"targets", std::move(targets)},
          {"findings", std::move(findings)},
          {"notes", {{"en", NoteTexts(notes, Language::English)}, {"ja", NoteTexts(notes, Language::Japanese)}}}};
}

}  // namespace vorn_host
