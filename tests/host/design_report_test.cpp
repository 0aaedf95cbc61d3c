#include "host/report/design_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "host/drawing/drawing_style.h"
#include "host/report/page_parts.h"
#include "host/report/page_text.h"
#include "host/report/section_report.h"
#include "host/sample/sample_design.h"
#include "tests/host/documents.h"
#include "tests/host/report_pages.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using Json = nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kEndless = std::numeric_limits<double>::infinity();

// --- text in a page --------------------------------------------------------------------------------------------------

TEST(PageText, WritesBase64WithPadding) {
  EXPECT_EQ(Base64(""), "");
  EXPECT_EQ(Base64("f"), "Zg==");
  EXPECT_EQ(Base64("fo"), "Zm8=");
  EXPECT_EQ(Base64("foo"), "Zm9v");
  EXPECT_EQ(Base64("foob"), "Zm9vYg==");
  EXPECT_EQ(Base64("\xFF\xEF\xBE"), "/+++");
  EXPECT_EQ(Base64(std::string_view("\0\0", 2)), "AAA=");
}

TEST(PageText, TakesHexadecimalDigitsInPairs) {
  EXPECT_EQ(BytesOfHex(""), "");
  EXPECT_EQ(BytesOfHex("00ff7e"), std::string("\0\xFF\x7E", 3));
  EXPECT_THROW((void)BytesOfHex("0g"), std::invalid_argument);
}

TEST(PageText, DeflatesWhatInflatesAgain) {
  std::string text = "No.6+0.0000 路面";
  for (int i = 0; i < 4; ++i) text += text + std::to_string(i);
  EXPECT_EQ(Inflated(Deflated(text)), text);
  EXPECT_LT(Deflated(text).size(), text.size());
  EXPECT_EQ(Inflated(Deflated("")), "");
}

TEST(PageText, LeavesNothingThatCouldEndAScript) {
  const std::string json = Json("</script><!--<script>").dump();
  EXPECT_THAT(ScriptJson(json), Not(HasSubstr("<")));
  EXPECT_EQ(Json::parse(ScriptJson(json)), "</script><!--<script>");
}

// --- one section -----------------------------------------------------------------------------------------------------

/// A drawing of 10 m by 4 m at 1:100 with its left upper corner 5 m to the left of the centre line and 2 m above it.
SectionDrawing EmptyDrawing() {
  SectionDrawing drawing;
  drawing.left = -5.0;
  drawing.right = 5.0;
  drawing.bottom = 8.0;
  drawing.top = 12.0;
  return drawing;
}

SectionReport ReportOf(const SectionDrawing& drawing) {
  SectionReport report{{}, drawing, drawing, {}};
  report.view.centerHeight = 10.0;
  return report;
}

ViewPoint PointAt(double offset, double height) {
  ViewPoint point;
  point.place = {offset, height};
  return point;
}

Json JsonOf(const SectionReport& report) { return Json::parse(ToJson(report).dump()); }

TEST(SectionReportJson, PutsPlacesOnPaper) {
  SectionDrawing drawing = EmptyDrawing();
  drawing.lines.push_back({DrawingKind::Slope, {{-5.0, 12.0}, {0.0, 10.0}, {5.0, 8.0}}, 2, -1});
  const Json json = JsonOf(ReportOf(drawing))["drawing"];
  EXPECT_EQ(json["box"], (Json{-50.0, -20.0, 100.0, 40.0}));
  EXPECT_EQ(json["lines"], (Json{{1, 2, -1, -50.0, -20.0, 0.0, 0.0, 50.0, 20.0}}));
}

TEST(SectionReportJson, CountsFromTheCentreLineWithoutElevationsToo) {
  SectionReport report = ReportOf(EmptyDrawing());
  report.view.centerHeight.reset();
  EXPECT_EQ(JsonOf(report)["drawing"]["box"], (Json{-50.0, -120.0, 100.0, 40.0}));
}

TEST(SectionReportJson, TellsLeadersFromWhereTheyLead) {
  SectionDrawing drawing = EmptyDrawing();
  drawing.lines.push_back({DrawingKind::Code, {{1.0, 11.1}, {1.5, 11.5}}, 2, -1, SectionPlace{1.0, 11.0}});
  const Json json = JsonOf(ReportOf(drawing))["drawing"];
  EXPECT_TRUE(json["lines"].empty());
  EXPECT_EQ(json["leaders"], (Json{{8, 2, -1, 10.0, -10.0, 0.0, -1.0, 5.0, -5.0}}));
}

TEST(SectionReportJson, TellsExtensionLinesFromWhereTheyBegin) {
  SectionDrawing drawing = EmptyDrawing();
  DrawnLine line{DrawingKind::Dimension, {{1.0, 11.1}, {1.0, 11.5}}, 2, 0};
  line.beginsBeside = SectionPlace{1.0, 11.0};
  drawing.lines.push_back(line);
  const Json json = JsonOf(ReportOf(drawing))["drawing"];
  EXPECT_TRUE(json["lines"].empty());
  EXPECT_EQ(json["extensions"], (Json{{10, 2, 0, 10.0, -10.0, 0.0, -1.0, 0.0, -5.0}}));
}

TEST(SectionReportJson, FollowsScaleAndExaggeration) {
  SectionDrawing drawing = EmptyDrawing();
  drawing.scale = 200.0;
  drawing.exaggeration = 5.0;
  drawing.lines.push_back({DrawingKind::Ground, {{0.0, 11.0}}, -1, -1});
  const Json json = JsonOf(ReportOf(drawing))["drawing"];
  EXPECT_EQ(json["box"], (Json{-25.0, -50.0, 50.0, 100.0}));
  EXPECT_EQ(json["lines"], (Json{{4, -1, -1, 0.0, -25.0}}));
  EXPECT_EQ(json["scale"], 200.0);
  EXPECT_EQ(json["exaggeration"], 5.0);
}

TEST(SectionReportJson, WritesMarksAndTexts) {
  SectionDrawing drawing = EmptyDrawing();
  drawing.marks.push_back({DrawingKind::Dimension, DrawnMark::Shape::Arrow, {0.0, 10.0}, 33.3333333, 1, 4, 3});
  DrawnText text;
  text.kind = DrawingKind::Grade;
  text.place = {1.0, 11.0};
  text.alongMm = -1.2;
  text.liftMm = 0.8;
  text.angle = -1.5;
  text.sizeMm = 2.5;
  text.anchor = DrawnText::Anchor::End;
  text.text = "1:1.5";
  text.form = 7;
  drawing.texts.push_back(text);
  const Json json = JsonOf(ReportOf(drawing))["drawing"];
  EXPECT_EQ(json["marks"], (Json{{10, 1, 3, 3, 33.333, 0.0, 0.0}}));
  EXPECT_EQ(json["texts"], (Json{{9, 7, -1, "end", -1.5, 2.5, -1.2, 0.8, "1:1.5", 10.0, -10.0}}));
}

TEST(SectionReportJson, LeavesOutWhatHasNoPlace) {
  SectionDrawing drawing = EmptyDrawing();
  drawing.lines.push_back({DrawingKind::Ground, {{0.0, 10.0}, {kNoNumber, 10.0}}, -1, -1});
  drawing.lines.push_back({DrawingKind::Ground, {{0.0, kEndless}}, -1, -1});
  drawing.marks.push_back({DrawingKind::Code, DrawnMark::Shape::Point, {-kEndless, 0.0}, 0.0, -1, -1, -1});
  DrawnText text;
  text.place = {0.0, kNoNumber};
  drawing.texts.push_back(text);
  SectionReport report = ReportOf(drawing);
  report.view.forms.push_back({"S", "", FormRole::DesignSurface, {PointAt(kNoNumber, 0.0), PointAt(1.0, 10.0)}, {}});
  report.view.grounds.push_back({"G", {{0.0, 9.0}, {kNoNumber, 9.0}, {2.0, 9.0}}});
  const Json json = JsonOf(report);
  EXPECT_TRUE(json["drawing"]["lines"].empty());
  EXPECT_TRUE(json["drawing"]["marks"].empty());
  EXPECT_TRUE(json["drawing"]["texts"].empty());
  EXPECT_TRUE(json["forms"][0]["points"][0].is_null()) << "the second point keeps its index";
  EXPECT_EQ(json["forms"][0]["points"][1][8], 1.0);
  EXPECT_EQ(json["grounds"][0]["points"].size(), 2u);
}

TEST(SectionReportJson, KeepsTheLastPlaceOfHugeCoordinates) {
  SectionDrawing drawing = EmptyDrawing();
  drawing.left = 999'900.0;
  drawing.right = 1'000'000.0;
  drawing.top = 99'999.9999;
  SectionReport report = ReportOf(drawing);
  report.view.forms.push_back({"S", "", FormRole::DesignSurface, {PointAt(999'999.9999, 99'999.9999)}, {}});
  const Json point = JsonOf(report)["forms"][0]["points"][0];
  EXPECT_EQ(point[8], 999'999.9999);
  EXPECT_EQ(point[9], 99'999.9999);
  EXPECT_EQ(point[10], 9'999'999.999);
  EXPECT_EQ(point[11], -999'899.999);
}

TEST(SectionReportJson, RoundsMetresToTheDecimalsOfADocument) {
  SectionReport report = ReportOf(EmptyDrawing());
  report.view.forms.push_back(
      {"S", "", FormRole::DesignSurface, {PointAt(-0.00004, 1.00005), PointAt(-2.12345, 0.0)}, {}});
  const std::string points = JsonOf(report)["forms"][0]["points"].dump();
  EXPECT_THAT(points, HasSubstr(",0.0,1.0001,")) << "half away from zero, and no -0.0: " << points;
  EXPECT_THAT(points, HasSubstr(",-2.1235,0.0,")) << points;
}

TEST(SectionReportJson, TellsOfAPointWhatTheViewKnows) {
  SectionReport report = ReportOf(EmptyDrawing());
  ViewPoint point;
  point.place = {-3.5, 9.9475};
  point.code = "L1";
  point.from = 0;
  point.part = SectionPart::Berm;
  point.side = "Left";
  point.input = "3.500 m, -1.501 %";
  point.grade = "-1.5%";
  point.exists = false;
  point.isCrossing = true;
  report.view.forms.push_back({"路面", "盛土工", FormRole::Layer, {PointAt(0.0, 10.0), point}, {{1, 0}}});
  const Json form = JsonOf(report)["forms"][0];
  EXPECT_EQ(form["name"], "路面");
  EXPECT_EQ(form["type"], "盛土工");
  EXPECT_EQ(form["points"][1],
            (Json{"L1", 0, "berm", "Left", "3.500 m, -1.501 %", "-1.5%", 0, 1, -3.5, 9.9475, -35.0, 0.525, {2}}));
}

TEST(SectionReportJson, TellsOfAPointTheLinesThatEndThere) {
  SectionReport report = ReportOf(EmptyDrawing());
  ViewForm form;
  form.role = FormRole::DesignSurface;
  // The sides alternate: whatever a point is placed from, its neighbours on the line are those of its side.
  for (const SectionPart part : {SectionPart::Start, SectionPart::Roadbed, SectionPart::Roadbed, SectionPart::Slope,
                                 SectionPart::Slope, SectionPart::Berm}) {
    form.points.push_back(PointAt(0.0, 10.0));
    form.points.back().part = part;
    form.points.back().from = 0;
  }
  form.lines = {{3, 1, 0, 2, 4}};
  report.view.forms = {form};
  report.view.grounds.push_back({"G", {{0.0, 9.0}}});
  const Json json = JsonOf(report);
  const auto kindsAt = [&](int point) { return json["forms"][0]["points"][point].back(); };
  const int surface = static_cast<int>(DrawingKind::DesignSurface);
  const int slope = static_cast<int>(DrawingKind::Slope);
  EXPECT_EQ(kindsAt(0), Json::array({surface}));
  EXPECT_EQ(kindsAt(1), Json::array({surface, slope}));
  EXPECT_EQ(kindsAt(2), Json::array({surface, slope}));
  EXPECT_EQ(kindsAt(3), Json::array({slope}));
  EXPECT_EQ(kindsAt(4), Json::array({slope}));
  EXPECT_EQ(kindsAt(5), Json::array({slope})) << "no line: that of what leads to it";
  EXPECT_EQ(json["grounds"][0]["kind"], static_cast<int>(DrawingKind::Ground));
}

TEST(SectionReportJson, TellsOfTargetsFindingsAndNotes) {
  SectionReport report = ReportOf(EmptyDrawing());
  ViewTarget target;
  target.itemText = "Width";
  target.formName = "路面";
  target.workType = "RE_FillWork";
  target.scope = "Road";
  target.regulation = "Body";
  target.points = {{0, 1, "路面 L1", 62.4}, {-1, -1, "路面 R9"}};
  target.designValue = 7.0;
  report.view.targets = {target, {}};
  report.view.notes = {{ViewNote::Kind::FormWithoutPoints, "S"}};
  report.view.centerHeight = 62.5;
  report.view.isControlSection = true;
  report.findings = {{Severity::Error, "code used twice", "set 1 > station 0.0000", "why", {0, 0, 1, 2}},
                     {Severity::Note, "kind", "path", "reason", {}}};
  const Json json = JsonOf(report);
  EXPECT_EQ(json["targets"][0], (Json{{"item", "Width"},
                                      {"form", "路面"},
                                      {"workType", "RE_FillWork"},
                                      {"scope", "Road"},
                                      {"regulation", "Body"},
                                      {"points", Json::array({{0, 1, "路面 L1", 62.4}, {-1, -1, "路面 R9", nullptr}})},
                                      {"value", 7.0}}));
  EXPECT_TRUE(json["targets"][1]["value"].is_null());
  EXPECT_EQ(json["findings"], Json::array({{0, "code used twice", "set 1 > station 0.0000", "why", -1, -1},
                                           {1, "kind", "path", "reason", -1, -1}}));
  EXPECT_EQ(json["notes"], (Json{{"en", {"form S has no points"}}, {"ja", {"構築形状「S」には構成点がない"}}}));
  EXPECT_EQ(json["centerHeight"], 62.5);
  EXPECT_EQ(json["isControlSection"], true);
}

TEST(SectionReportJson, PutsFindingsToThePointsShown) {
  SectionReport report = ReportOf(EmptyDrawing());
  ViewForm form;
  form.documentIndex = 1;  // the first form is left out, and the second point of this one
  form.points = {PointAt(0.0, 10.0), PointAt(1.0, 10.0)};
  form.points[0].documentIndex = 0;
  form.points[1].documentIndex = 2;
  report.view.forms = {form};
  const auto placeOf = [&](int formIndex, int pointIndex) {
    const Finding finding = {Severity::Error, "kind", "path", "reason", {0, 0, formIndex, pointIndex}};
    const Json json = Json::parse(ToJson(finding, report.view).dump());
    return std::pair(json[4].get<int>(), json[5].get<int>());
  };
  EXPECT_EQ(placeOf(1, 0), std::pair(0, 0));
  EXPECT_EQ(placeOf(1, 2), std::pair(0, 1));
  EXPECT_EQ(placeOf(1, 1), std::pair(0, -1)) << "that point is not shown";
  EXPECT_EQ(placeOf(0, 0), std::pair(-1, -1)) << "nor is that form";
  EXPECT_EQ(placeOf(1, -1), std::pair(0, -1));
}

TEST(SectionReportJson, TellsWhatTheDrawingLeavesOut) {
  SectionReport report = ReportOf(EmptyDrawing());
  report.drawing.widthsLeftOut = report.japanese.widthsLeftOut = 2;
  EXPECT_EQ(JsonOf(report)["notes"], (Json{{"en", {"2 widths are not drawn, for lack of room"}},
                                           {"ja", {"幅の寸法 2 件は、余白がないため省略"}}}));
}

TEST(SectionReportJson, TellsWhetherTheHeightIsOnlyAssumed) {
  SectionReport report = ReportOf(EmptyDrawing());
  EXPECT_EQ(JsonOf(report)["isHeightAssumed"], false);
  report.view.isHeightAssumed = true;
  EXPECT_EQ(JsonOf(report)["isHeightAssumed"], true);
}

TEST(SectionReportJson, PutsPointsWhereTheDrawingsOfBothLanguagesHaveThem) {
  SectionReport report = ReportOf(EmptyDrawing());
  report.view.forms.push_back({"S", "", FormRole::DesignSurface, {PointAt(1.0, 11.0)}, {}});
  const DrawnMark mark{DrawingKind::Code, DrawnMark::Shape::Point, {1.0, 11.0}};
  report.drawing.marks = report.japanese.marks = {mark};
  report.japanese.left -= 4.0;  // a sheet that is wider for its title
  report.japanese.top += 1.0;
  const Json json = JsonOf(report);
  EXPECT_EQ(json["forms"][0]["points"][0][10], json["drawing"]["marks"][0][5]);
  EXPECT_EQ(json["forms"][0]["points"][0][11], json["drawing"]["marks"][0][6]);
  EXPECT_FALSE(json["japanese"].contains("marks")) << "they lie where those of the other drawing are";
  EXPECT_EQ(json["japanese"]["box"], (Json{-90.0, -30.0, 140.0, 50.0}));
}

TEST(SectionReportJson, KeepsOfTheJapaneseDrawingOnlyWhatDiffers) {
  SectionReport report = ReportOf(EmptyDrawing());
  EXPECT_TRUE(JsonOf(report)["japanese"].empty());
  DrawnText text;
  text.text = "1:1.5";
  report.drawing.texts.push_back(text);
  report.japanese.texts.push_back(text);
  text.text = "Scale";
  report.drawing.texts.push_back(text);
  text.text = "縮尺";
  report.japanese.texts.push_back(text);
  report.japanese.texts.push_back(text);
  const Json json = JsonOf(report);
  EXPECT_TRUE(json["japanese"].empty());
  ASSERT_EQ(json["drawing"]["texts"].size(), 1u) << "what both of them have";
  EXPECT_EQ(json["drawing"]["texts"][0][8], "1:1.5");
  ASSERT_EQ(json["words"]["en"].size(), 1u);
  EXPECT_EQ(json["words"]["en"][0][8], "Scale");
  ASSERT_EQ(json["words"]["ja"].size(), 2u);
  EXPECT_EQ(json["words"]["ja"][1][8], "縮尺");
}

// --- styles ----------------------------------------------------------------------------------------------------------

TEST(DrawingStyleTable, HasEveryKindOnce) {
  std::set<DrawingKind> kinds;
  for (const DrawingStyle& style : DrawingStyles()) kinds.insert(style.kind);
  EXPECT_EQ(kinds.size(), DrawingStyles().size());
  EXPECT_EQ(kinds.size(), static_cast<std::size_t>(DrawingKind::Title) + 1);
}

TEST(MarkStyleTable, IsInTheOrderOfTheShapes) {
  for (std::size_t i = 0; i < MarkStyles().size(); ++i) EXPECT_EQ(static_cast<std::size_t>(MarkStyles()[i].shape), i);
  EXPECT_EQ(MarkStyles().size(), static_cast<std::size_t>(DrawnMark::Shape::Arrow) + 1);
  for (const MarkStyle& mark : MarkStyles()) EXPECT_NE(mark.radiusMm > 0.0, mark.lengthMm > 0.0) << mark.name;
}

// --- the page --------------------------------------------------------------------------------------------------------

ReportPage PageOf(const DesignDocument& document, const ReportOptions& options = {}) {
  return ReportPage(MakeReport(document, options).html);
}

/// Two sections, of which the second has a code twice.
DesignDocument FlawedDesign() {
  return DocumentOf(
      Edition::V41,
      {Section(0.0, {RoadForm("A")}),
       Section(20.0, {RoadForm("A"), Form("B", {Center(), Point("L1", VornLocation::Left, DataType::Percent, 3.0, 0.0),
                                                Point("L1", VornLocation::Left, DataType::Percent, 1.0, 0.0)})})});
}

TEST(DesignReportPage, HoldsEverySectionAndItsFindings) {
  const DesignReport report = MakeReport(FlawedDesign(), {});
  EXPECT_EQ(report.sections, 2);
  EXPECT_EQ(report.errors, 1);
  EXPECT_EQ(report.notes, 0);
  const ReportPage page(report.html);
  ASSERT_EQ(page.sections.size(), 2u);
  EXPECT_EQ(page.index["errors"], 1);
  EXPECT_EQ(page.index["sections"][0][4], 0);
  EXPECT_EQ(page.index["sections"][1][4], 1);
  EXPECT_EQ(page.sections[0]["findings"].size(), 0u);
  ASSERT_EQ(page.sections[1]["findings"].size(), 1u);
  EXPECT_EQ(page.sections[1]["findings"][0][1], "code used twice");
  EXPECT_EQ(page.sections[1]["findings"][0][4], 1) << "the second form";
  EXPECT_EQ(page.sections[1]["findings"][0][5], 2) << "the third point";
  EXPECT_EQ(page.index["documentFindings"], 0);
  EXPECT_TRUE(page.documentFindings.empty());
}

TEST(DesignReportPage, PutsTargetsOfTheSetToTheSectionWhereTheirPointsAre) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")}), Section(20.0, {RoadForm("A")})});
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(20.0, "A", {"L1", "absent"}));
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(99.0, "A", {"L1", "R1"}));
  const ReportPage page = PageOf(document);
  EXPECT_EQ(page.sections[0]["findings"].size(), 0u);
  ASSERT_EQ(page.sections[1]["findings"].size(), 1u);
  EXPECT_THAT(page.sections[1]["findings"][0][3].get<std::string>(), HasSubstr("absent"));
  // The other stands at no section; and a note is about all of them.
  EXPECT_EQ(page.documentFindings.size(), 2u);
}

TEST(DesignReportPage, ListsTheTargetsOfEverySetThatNoSectionShows) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")})});
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(0.0, "A", {"L1", "R1"}));
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(99.0, "A", {"L1", "R1"}));
  document.sets.Add(document.sets[0]);
  document.sets[1].GetFormCtrlTargetArray()[0] = TargetOn(0.0, "A", {});
  const DesignReport report = MakeReport(document, {});
  EXPECT_EQ(report.targetsWithoutSection, 3);
  const ReportPage page(report.html);
  EXPECT_EQ(page.index["targetsWithoutSection"], 3);
  ASSERT_EQ(page.targetsWithoutSection.size(), 3u);
  EXPECT_EQ(page.targetsWithoutSection[0]["set"], 0);
  EXPECT_EQ(page.targetsWithoutSection[0]["item"], "Width");
  EXPECT_EQ(page.targetsWithoutSection[0]["points"][0][2], "A L1");
  EXPECT_EQ(page.targetsWithoutSection[0]["points"][0][4], "99.0000");
  EXPECT_EQ(page.targetsWithoutSection[0]["points"][0][5], 0) << "not behind a change of shape";
  EXPECT_EQ(page.targetsWithoutSection[1]["set"], 1);
  EXPECT_TRUE(page.targetsWithoutSection[1]["points"].empty());
  EXPECT_EQ(page.sections[0]["targets"].size(), 1u);
}

TEST(DesignReportPage, KeepsDoubledStationsApart) {
  const ReportPage page =
      PageOf(DocumentOf(Edition::V41, {Section(20.0, {RoadForm("A")}), Section(20.0, {RoadForm("A")}),
                                       Section(20.0, {RoadForm("A")}, true)}));
  ASSERT_EQ(page.sections.size(), 3u);
  EXPECT_EQ(page.index["sections"][0][4], 0);
  EXPECT_EQ(page.index["sections"][1][4], 1) << "only the second is the one too many";
  EXPECT_EQ(page.index["sections"][2][4], 0);
  EXPECT_EQ(page.index["sections"][2][7], 1) << "behind the change of shape";
}

TEST(DesignReportPage, TellsWhatIsWrongWithADocumentWithoutSections) {
  DesignDocument document = DocumentOf(Edition::V41, {});
  document.sets.RemoveAll();
  const ReportPage page = PageOf(document);
  EXPECT_TRUE(page.sections.empty());
  EXPECT_TRUE(page.index["sections"].empty());
  ASSERT_EQ(page.documentFindings.size(), 1u);
  EXPECT_EQ(page.documentFindings[0][1], "tsf:XSections not enabled");
}

TEST(DesignReportPage, ShowsSectionsThatHaveNothingToDraw) {
  const ReportPage page = PageOf(DocumentOf(
      Edition::V41,
      {Section(0.0, {}), Section(NurReal(), {Form("E", {})}), Section(20.0, {Form("O", {Center()})}),
       Section(40.0,
               {Form("U", {Center(), Point("L1", VornLocation::Left, DataType::Percent, NurReal(), NurReal())})})}));
  EXPECT_EQ(page.sections.size(), 4u);
  for (const Json& section : page.sections) {
    EXPECT_GT(section["drawing"]["box"][2], 0.0) << section.dump(1);
    EXPECT_GT(section["drawing"]["box"][3], 0.0) << section.dump(1);
  }
}

TEST(DesignReportPage, ShowsSectionsOfAnyShape) {
  const auto left = [](NurReal dist, NurReal height) {
    return Point("L1", VornLocation::Left, DataType::WidthHeight, dist, height);
  };
  const ReportPage page = PageOf(DocumentOf(Edition::V41, {Section(0.0, {Form("A", {Center(), left(3.5, -0.1)})}),
                                                           Section(20.0, {Form("A", {Center(), left(999'999.0, 0.0)})}),
                                                           Section(40.0, {Form("A", {Center(), left(0.0, 0.0)})})}));
  ASSERT_EQ(page.sections.size(), 3u);
  EXPECT_EQ(page.sections[0]["forms"][0]["points"][1][8], -3.5);
  EXPECT_EQ(page.sections[1]["forms"][0]["points"][1][8], -999'999.0);
  for (const Json& section : page.sections) {
    EXPECT_GT(section["drawing"]["box"][2], 0.0);
    for (const Json& line : section["drawing"]["lines"]) {
      for (const Json& value : line) EXPECT_TRUE(value.is_number()) << line.dump();
    }
  }
}

TEST(DesignReportPage, PacksManySections) {
  SampleOptions options;
  options.sections = 37;
  DesignDocument document;
  SampleDesign design = MakeSampleDesign(options);
  document.structureType = design.structureType;
  document.sets = design.sets;
  int last = -1;
  const DesignReport report = MakeReport(document, {}, [&](int done, int total) {
    EXPECT_EQ(done, last + 1);
    EXPECT_EQ(total, 37);
    last = done;
  });
  EXPECT_EQ(last, 36);
  const ReportPage page(report.html);
  EXPECT_EQ(page.sections.size(), 37u);
  EXPECT_EQ(page.index["sections"].size(), 37u);
  EXPECT_EQ(page.index["sectionsInPack"], 16);
}

TEST(DesignReportPage, KeepsEachListOfCodesOnce) {
  const Json index =
      PageOf(DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")}), Section(20.0, {RoadForm("A"), RoadForm("B")}),
                                       Section(40.0, {Form("A", {Center()})})}))
          .index;
  EXPECT_EQ(index["codes"], (Json{{"CL", "L1", "R1"}, {"CL"}}));
  EXPECT_EQ(index["sections"][0][6], 0);
  EXPECT_EQ(index["sections"][1][6], 0);
  EXPECT_EQ(index["sections"][2][6], 1);
}

TEST(DesignReportPage, BeginsWithTheLanguageAskedFor) {
  ReportOptions options;
  EXPECT_TRUE(PageOf(FlawedDesign(), options).index["language"].is_null());
  options.language = Language::Japanese;
  EXPECT_EQ(PageOf(FlawedDesign(), options).index["language"], "ja");
  options.language = Language::English;
  EXPECT_EQ(PageOf(FlawedDesign(), options).index["language"], "en");
}

TEST(DesignReportPage, TakesHeightAndExaggeration) {
  ReportOptions options;
  options.centerHeight = 62.5;
  options.exaggeration = 3.0;
  const Json section = PageOf(FlawedDesign(), options).sections[0];
  EXPECT_EQ(section["centerHeight"], 62.5);
  EXPECT_EQ(section["drawing"]["exaggeration"], 3.0);
  EXPECT_EQ(section["forms"][0]["points"][0][9], 62.5);
}

TEST(DesignReportPage, RunsNothingButItsOwnScript) {
  const std::string html = MakeReport(FlawedDesign(), {}).html;
  const auto hash = [](std::string_view hex) { return "'sha256-" + Base64(BytesOfHex(hex)) + "'"; };
  EXPECT_EQ(kReportPage.scriptSha256.size(), 64u);
  EXPECT_THAT(html, HasSubstr("content=\"default-src 'none'; style-src " + hash(kReportPage.styleSha256) +
                              "; script-src " + hash(kReportPage.scriptSha256) + "; "));
  EXPECT_THAT(html, HasSubstr("<style>" + std::string(kReportPage.style) + "</style>"));
  EXPECT_THAT(html, HasSubstr("<script type=\"module\">" + std::string(kReportPage.script) + "</script>"));
  EXPECT_THAT(html, Not(HasSubstr("{{")));
}

TEST(DesignReportPage, LeavesHostileNamesNoWayOut) {
  const std::string hostile = "</script><script>alert(1)</script>{{packs}}'\"&amp;\x01";
  DesignDocument document = FlawedDesign();
  document.sets[0].GetXSectionArray()[0].SetName(hostile.c_str());
  document.sets[0].SetRefAlign(hostile.c_str());
  ReportOptions options;
  options.file = hostile;
  const std::string html = MakeReport(document, options).html;
  EXPECT_THAT(html, Not(HasSubstr("alert(1)</script>")));
  const ReportPage page(html);
  EXPECT_EQ(page.index["file"], hostile);
  EXPECT_EQ(page.index["sets"][0], hostile);
  EXPECT_EQ(page.index["sections"][0][2], hostile);
  EXPECT_EQ(page.sections.size(), 2u);
}

TEST(DesignReportPage, ShowsWhatIsNoTextReplaced) {
  ReportOptions options;
  options.file = "a\xFFz";
  EXPECT_EQ(PageOf(FlawedDesign(), options).index["file"], "a\xEF\xBF\xBDz");
}

TEST(DesignReportPage, ListsTheKindsWithTheirStyles) {
  const Json kinds = PageOf(FlawedDesign()).index["kinds"];
  ASSERT_EQ(kinds.size(), DrawingStyles().size());
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    EXPECT_EQ(kinds[i]["name"], DrawingStyles()[i].name);
    EXPECT_EQ(kinds[i]["kind"], static_cast<int>(DrawingStyles()[i].kind));
    EXPECT_EQ(kinds[i]["line"], DrawingStyles()[i].lineColor);
  }
}

}  // namespace
}  // namespace vorn_host
