#include "host/drawing/section_geojson.h"

#include <cmath>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "host/drawing/plain_number.h"
#include "host/drawing/section_words.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_host {

namespace {

/// Keeps the order in which members are set.
using Json = nlohmann::ordered_json;

/// Texts are UTF-8 already; whatever is not would be replaced rather than end the export.
std::string TextOf(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// Rounded as in the other exchange files; null where there is no number.
Json NumberOf(double value) {
  return std::isfinite(value) ? Json(FixedDecimal::Round(value, kExchangePlaces)) : Json(nullptr);
}

Json NumberOf(const std::optional<double>& value) { return value ? NumberOf(*value) : Json(nullptr); }

/// Counted from 1; null for -1.
Json NumberOfIndex(int index) { return index < 0 ? Json(nullptr) : Json(index + 1); }

Json PositionOf(const SectionPlace& place) { return Json::array({NumberOf(place.offset), NumberOf(place.height)}); }

/// A line through places; a point where there is one; null where there is none. Places without a number, which GeoJSON
/// cannot express, are left out.
Json GeometryOf(const std::vector<SectionPlace>& places, const char* ofSeveral) {
  Json positions = Json::array();
  for (const SectionPlace& place : places) {
    if (IsFinite(place)) positions.push_back(PositionOf(place));
  }
  if (positions.empty()) return nullptr;
  if (positions.size() == 1) return {{"type", "Point"}, {"coordinates", positions[0]}};
  return {{"type", ofSeveral}, {"coordinates", std::move(positions)}};
}

Json FeatureOf(Json geometry, Json properties) {
  return {{"type", "Feature"}, {"geometry", std::move(geometry)}, {"properties", std::move(properties)}};
}

/// What every feature tells of its cross section.
Json PropertiesOf(const SectionView& view, const char* kind) {
  return {{"kind", kind},
          {"set", view.set + 1},
          {"section", NumberOfIndex(view.section)},
          {"station", NumberOf(view.station)},
          {"stationText", view.stationText}};
}

Json SectionFeature(const SectionView& view) {
  Json properties = PropertiesOf(view, "section");
  properties["name"] = view.name;
  properties["alignment"] = view.alignment;
  properties["behindChange"] = view.isBehindChange;
  properties["controlSection"] = view.isControlSection;
  properties["centerHeight"] = NumberOf(view.centerHeight);
  properties["centerHeightSource"] = view.centerHeight ? Json(HeightSourceOf(view)) : Json(nullptr);
  properties["heights"] = view.centerHeight ? "elevation" : "above the centre line";
  properties["notes"] = NoteTexts(view.notes, Language::English);
  return FeatureOf(GeometryOf({{0.0, view.centerHeight.value_or(0.0)}}, "LineString"), std::move(properties));
}

Json PointProperties(const ViewForm& form, int index) {
  const ViewPoint& point = form.points[static_cast<std::size_t>(index)];
  return {{"point", NumberOfIndex(point.documentIndex)},
          {"code", point.code},
          {"from", NumberOfIndex(OriginIndexOf(form, point))},
          {"side", point.side},
          {"part", WordOf(point.part)},
          {"input", point.input},
          {"inputX", NumberOf(point.values.x)},
          {"inputY", NumberOf(point.values.y)},
          {"inputReading", WordOf(point.values.reading)},
          {"grade", point.grade},
          {"exists", point.exists},
          {"crossing", point.isCrossing}};
}

Json LineFeature(const SectionView& view, const ViewForm& form, const std::vector<int>& line) {
  std::vector<SectionPlace> places;
  Json points = Json::array();
  for (const int index : line) {
    if (index < 0 || static_cast<std::size_t>(index) >= form.points.size()) continue;
    const SectionPlace& place = form.points[static_cast<std::size_t>(index)].place;
    if (!IsFinite(place)) continue;
    places.push_back(place);
    points.push_back(PointProperties(form, index));
  }
  Json properties = PropertiesOf(view, "form");
  properties["form"] = NumberOfIndex(form.documentIndex);
  properties["name"] = form.name;
  properties["xSectType"] = form.xSectType;
  properties["role"] = WordOf(form.role);
  properties["points"] = std::move(points);
  return FeatureOf(GeometryOf(places, "LineString"), std::move(properties));
}

/// The points that no line of the form reaches, in their order.
std::vector<int> SinglePointsOf(const ViewForm& form) {
  std::vector<bool> reached(form.points.size());
  for (const std::vector<int>& line : form.lines) {
    for (const int index : line) {
      if (index >= 0 && static_cast<std::size_t>(index) < reached.size())
        reached[static_cast<std::size_t>(index)] = true;
    }
  }
  std::vector<int> single;
  for (std::size_t i = 0; i < reached.size(); ++i) {
    if (!reached[i]) single.push_back(static_cast<int>(i));
  }
  return single;
}

Json GroundFeature(const SectionView& view, std::size_t index) {
  const ViewGround& ground = view.grounds[index];
  Json properties = PropertiesOf(view, "ground");
  properties["ground"] = index + 1;
  properties["name"] = ground.name;
  return FeatureOf(GeometryOf(ground.line, "LineString"), std::move(properties));
}

/// Null for a point of the section shown.
Json ElsewhereOf(const ViewTarget::Pnt& named) {
  if (!named.elsewhere) return nullptr;
  return {{"station", NumberOf(named.elsewhere->station)},
          {"stationText", named.elsewhere->stationText},
          {"behindChange", named.elsewhere->isBehindChange}};
}

Json TargetFeature(const SectionView& view, std::size_t index) {
  const ViewTarget& target = view.targets[index];
  std::vector<SectionPlace> places;
  Json points = Json::array();
  for (const ViewTarget::Pnt& named : target.points) {
    const ViewPoint* point = PointOf(view, named);
    if (point != nullptr) places.push_back(point->place);
    points.push_back({{"name", named.name},
                      {"elsewhere", ElsewhereOf(named)},
                      {"form", NumberOfIndex(point != nullptr ? FormOf(view, named)->documentIndex : -1)},
                      {"point", NumberOfIndex(point != nullptr ? point->documentIndex : -1)},
                      {"height", point != nullptr ? NumberOf(point->place.height) : Json(nullptr)}});
  }
  Json properties = PropertiesOf(view, "target");
  properties["target"] = index + 1;
  properties["item"] = WordOf(target.item);
  properties["itemText"] = target.itemText;
  properties["form"] = target.formName;
  properties["workType"] = target.workType;
  properties["scope"] = target.scope;
  properties["regulation"] = target.regulation;
  properties["designValue"] = NumberOf(target.designValue);
  properties["points"] = std::move(points);
  return FeatureOf(GeometryOf(places, "MultiPoint"), std::move(properties));
}

}  // namespace

SectionGeoJsonWriter::SectionGeoJsonWriter(TextSink sink) : m_sink(std::move(sink)) {
  const Json metadata = {{"plane", "cross section"},
                         {"coordinates", {"offset", "height"}},
                         {"unit", "metre"},
                         {"offset", "from the centre line, positive to the right as seen along rising stations"},
                         {"height", "as the member \"heights\" of each section tells"},
                         {"count", "sets, sections, forms and points count from 1"}};
  m_sink("{\"type\":\"FeatureCollection\",\n\"metadata\":" + TextOf(metadata) + ",\n\"features\":[");
}

void SectionGeoJsonWriter::Add(const SectionView& view) {
  if (view.section >= 0) Feature(TextOf(SectionFeature(view)));
  for (const ViewForm& form : view.forms) {
    for (const std::vector<int>& line : form.lines) Feature(TextOf(LineFeature(view, form, line)));
    const std::vector<int> single = SinglePointsOf(form);
    for (const int point : single) Feature(TextOf(LineFeature(view, form, {point})));
  }
  for (std::size_t i = 0; i < view.grounds.size(); ++i) Feature(TextOf(GroundFeature(view, i)));
  for (std::size_t i = 0; i < view.targets.size(); ++i) Feature(TextOf(TargetFeature(view, i)));
}

void SectionGeoJsonWriter::Finish() { m_sink("\n]}\n"); }

void SectionGeoJsonWriter::Feature(const std::string& json) {
  m_sink((m_features == 0 ? "\n" : ",\n") + json);
  ++m_features;
}

}  // namespace vorn_host
