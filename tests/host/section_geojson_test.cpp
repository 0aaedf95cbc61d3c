// Cross sections as GeoJSON in their own planes.

#include "host/drawing/section_geojson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/drawn_sections.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using namespace vorn_host;  // NOLINT(google-build-using-namespace)
using Json = nlohmann::json;
using testing::SizeIs;

Json CollectionOf(const std::vector<SectionView>& views) {
  std::string text;
  SectionGeoJsonWriter writer([&](std::string_view piece) { text += piece; });
  for (const SectionView& view : views) writer.Add(view);
  writer.Finish();
  const Json json = Json::parse(text, nullptr, false);
  EXPECT_FALSE(json.is_discarded()) << text;
  EXPECT_EQ(json["features"].size(), static_cast<std::size_t>(writer.FeatureCount()));
  return json;
}

std::vector<Json> FeaturesOf(const SectionView& view, std::string_view kind) {
  const Json collection = CollectionOf({view});
  std::vector<Json> features;
  for (const Json& feature : collection["features"]) {
    if (feature["properties"]["kind"].get<std::string>() == kind) features.push_back(feature);
  }
  return features;
}

TEST(SectionGeoJson, IsACollectionThatTellsItsPlane) {
  const Json json = CollectionOf({HandMadeView(), HandMadeView()});
  EXPECT_EQ(json["type"], "FeatureCollection");
  EXPECT_EQ(json["metadata"]["coordinates"], (Json{"offset", "height"}));
  EXPECT_EQ(json["metadata"]["unit"], "metre");
  EXPECT_THAT(json["features"], SizeIs(8));
  for (const Json& feature : json["features"]) {
    EXPECT_EQ(feature["type"], "Feature");
    EXPECT_EQ(feature["properties"]["section"], 3);
    EXPECT_EQ(feature["properties"]["stationText"], "No.6+0.0000");
    EXPECT_TRUE(feature["geometry"].is_object());
  }
}

TEST(SectionGeoJson, IsValidWithoutSections) { EXPECT_EQ(CollectionOf({})["features"], Json::array()); }

TEST(SectionGeoJson, HasAFeatureForTheSection) {
  const std::vector<Json> sections = FeaturesOf(HandMadeView(), "section");
  ASSERT_THAT(sections, SizeIs(1));
  EXPECT_EQ(sections[0]["geometry"], (Json{{"type", "Point"}, {"coordinates", {0.0, 62.5}}}));
  const Json& properties = sections[0]["properties"];
  EXPECT_EQ(properties["name"], "No.6");
  EXPECT_EQ(properties["alignment"], "主要道路");
  EXPECT_EQ(properties["station"], 120.0);
  EXPECT_EQ(properties["centerHeight"], 62.5);
  EXPECT_EQ(properties["heights"], "elevation");
  EXPECT_EQ(properties["notes"], Json::array({"form S has no points"}));
}

TEST(SectionGeoJson, TellsWhereTheHeightComesFrom) {
  SectionView view = HandMadeView();
  const auto source = [&] { return FeaturesOf(view, "section").at(0)["properties"]["centerHeightSource"]; };
  EXPECT_EQ(source(), "told");
  view.isHeightAssumed = true;
  EXPECT_EQ(source(), "ground");
  view.centerHeight.reset();
  EXPECT_EQ(source(), nullptr);
}

TEST(SectionGeoJson, HasTheInputValuesAsNumbers) {
  SectionView view = HandMadeView();
  view.forms[0].points[2].values = {ViewInput::Reading::Rate, -4.0, 1.500000004};
  view.forms[0].points[1].values = {ViewInput::Reading::Percent, 3.5, {}};
  const Json points = FeaturesOf(view, "form").at(0)["properties"]["points"];
  EXPECT_EQ(points[0]["inputX"], -4.0);
  EXPECT_EQ(points[0]["inputY"], 1.500000004);
  EXPECT_EQ(points[0]["inputReading"], "height and rate");
  EXPECT_EQ(points[1]["inputY"], nullptr);
  EXPECT_EQ(points[1]["inputReading"], "width and percent");
  EXPECT_EQ(points[2]["inputReading"], "width and height");
}

TEST(SectionGeoJson, HasAFeatureForATargetWithoutASection) {
  const Json features = CollectionOf({ViewOfTargetWithoutSection()})["features"];
  ASSERT_EQ(features.size(), 1u) << "no feature for a section that is not there";
  EXPECT_EQ(features[0]["geometry"], nullptr);
  EXPECT_EQ(features[0]["properties"]["section"], nullptr);
  const Json& point = features[0]["properties"]["points"][0];
  EXPECT_EQ(point["height"], nullptr);
  EXPECT_EQ(point["name"], "S L1");
  EXPECT_EQ(point["elsewhere"], (Json{{"station", 30.0}, {"stationText", "30.0000"}, {"behindChange", true}}));
}

TEST(SectionGeoJson, TellsHeightsAboveTheCentreLine) {
  SectionView view = HandMadeView();
  view.centerHeight.reset();
  view.station.reset();
  const Json section = FeaturesOf(view, "section").at(0);
  EXPECT_EQ(section["properties"]["heights"], "above the centre line");
  EXPECT_TRUE(section["properties"]["centerHeight"].is_null());
  EXPECT_TRUE(section["properties"]["station"].is_null());
  EXPECT_EQ(section["geometry"]["coordinates"], (Json{0.0, 0.0}));
}

TEST(SectionGeoJson, HasAFeatureForEachLineOfAForm) {
  SectionView view = HandMadeView();
  view.forms[0].lines = {{2, 1}, {0, 3}};
  const std::vector<Json> lines = FeaturesOf(view, "form");
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ(lines[0]["geometry"]["type"], "LineString");
  EXPECT_EQ(lines[0]["geometry"]["coordinates"], (Json{{-9.5, 58.45}, {-3.5, 62.45}}));
  const Json& properties = lines[0]["properties"];
  EXPECT_EQ(properties["form"], 1);
  EXPECT_EQ(properties["name"], "盛土面");
  EXPECT_EQ(properties["xSectType"], "盛土工");
  EXPECT_EQ(properties["role"], "design surface");
  ASSERT_THAT(properties["points"], SizeIs(2));
  EXPECT_EQ(properties["points"][0]["code"], "XL");
  EXPECT_EQ(properties["points"][0]["part"], "slope");
  EXPECT_EQ(properties["points"][0]["from"], 2);
  EXPECT_EQ(properties["points"][0]["crossing"], true);
  EXPECT_TRUE(lines[1]["properties"]["points"][0]["from"].is_null());
}

TEST(SectionGeoJson, CountsFormsAndPointsAsTheDocumentDoes) {
  const Json form = FeaturesOf(ViewWithPiecesLeftOut(), "form").at(0)["properties"];
  EXPECT_EQ(form["form"], 2);
  EXPECT_EQ(form["points"][0]["code"], "XL");
  EXPECT_EQ(form["points"][0]["point"], 4);
  EXPECT_EQ(form["points"][0]["from"], 3);
  const Json target = FeaturesOf(ViewWithPiecesLeftOut(), "target").at(0)["properties"];
  EXPECT_EQ(target["points"][1]["form"], 2);
  EXPECT_EQ(target["points"][1]["point"], 5);
}

TEST(SectionGeoJson, HasAPointWhereNoLineReachesOne) {
  SectionView view = HandMadeView();
  view.forms[0].lines = {{2, 1, 0}};
  const std::vector<Json> lines = FeaturesOf(view, "form");
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ(lines[1]["geometry"], (Json{{"type", "Point"}, {"coordinates", {3.5, 62.45}}}));
  EXPECT_EQ(lines[1]["properties"]["points"][0]["code"], "R1");
}

TEST(SectionGeoJson, HasAFeatureForEachGround) {
  SectionView view = HandMadeView();
  view.grounds.push_back({"計画前", {}});
  const std::vector<Json> grounds = FeaturesOf(view, "ground");
  ASSERT_THAT(grounds, SizeIs(2));
  EXPECT_EQ(grounds[0]["geometry"]["coordinates"], (Json{{-20.0, 58.0}, {-9.5, 58.45}, {20.0, 60.0}}));
  EXPECT_EQ(grounds[0]["properties"]["name"], "現況");
  EXPECT_TRUE(grounds[1]["geometry"].is_null()) << "a ground without points";
}

TEST(SectionGeoJson, HasAFeatureForEachTarget) {
  SectionView view = HandMadeView();
  const Json target = FeaturesOf(view, "target").at(0);
  EXPECT_EQ(target["geometry"]["type"], "MultiPoint");
  EXPECT_EQ(target["geometry"]["coordinates"], (Json{{-3.5, 62.45}, {3.5, 62.45}}));
  EXPECT_EQ(target["properties"]["item"], "width");
  EXPECT_EQ(target["properties"]["designValue"], 7.0);
  ASSERT_THAT(target["properties"]["points"], SizeIs(3));
  EXPECT_EQ(target["properties"]["points"][1]["point"], 4);
  EXPECT_EQ(target["properties"]["points"][2]["name"], "盛土面 R9");
  EXPECT_TRUE(target["properties"]["points"][2]["point"].is_null());

  view.targets[0].points.clear();
  view.targets[0].designValue.reset();
  const Json empty = FeaturesOf(view, "target").at(0);
  EXPECT_TRUE(empty["geometry"].is_null());
  EXPECT_TRUE(empty["properties"]["designValue"].is_null());
}

TEST(SectionGeoJson, HasOnlyFiniteNumbers) {
  SectionView view = HandMadeView();
  view.forms[0].points[1].place.height = std::numeric_limits<double>::infinity();
  view.forms[0].points[3].place.offset = 0.1 + 0.2;
  const Json line = FeaturesOf(view, "form").at(0);
  EXPECT_EQ(line["geometry"]["coordinates"], (Json{{-9.5, 58.45}, {0.0, 62.5}, {0.3, 62.45}}));
  EXPECT_EQ(line["properties"]["points"].size(), 3u) << "a point for each position";
}

TEST(SectionGeoJson, TakesHostileNamesForText) {
  SectionView view = HandMadeView();
  const std::string hostile = std::string("</script>\"\\\n") + '\0' + "\x1B";
  view.name = hostile;
  view.forms[0].name = "broken \xFF";
  EXPECT_EQ(FeaturesOf(view, "section").at(0)["properties"]["name"], hostile);
  EXPECT_EQ(FeaturesOf(view, "form").at(0)["properties"]["name"], "broken \xEF\xBF\xBD");
}

}  // namespace
