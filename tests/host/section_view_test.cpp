// What people look at of a cross section: every point at its place, the ground, and what the control targets measure.

#include "host/drawing/section_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "host/drawing/section_words.h"
#include "host/drawing/value_text.h"
#include "host/sample/sample_design.h"
#include "tests/host/editing.h"
#include "tests/host/tool.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using vorn_host::FormRole;
using vorn_host::SectionPart;
using vorn_host::SectionView;
using vorn_host::SectionViewer;
using vorn_host::ViewForm;
using vorn_host::ViewOf;
using vorn_host::ViewPoint;
using vorn_host::ViewTarget;

constexpr double kTiny = 1e-9;

SectionView ViewOfText(const std::string& text, const std::optional<double>& height = std::nullopt) {
  return ViewOf(ReadText(text), 0, 0, height);
}

Texts NotesOf(const SectionView& view) { return NoteTexts(view.notes, vorn_host::Language::English); }

const ViewPoint& PointAt(const ViewForm& form, const std::string& code) {
  for (const ViewPoint& point : form.points) {
    if (point.code == code) return point;
  }
  ADD_FAILURE() << "no point " << code;
  static const ViewPoint none;
  return none;
}

void ExpectPlace(const ViewPoint& point, double offset, double height) {
  EXPECT_NEAR(point.place.offset, offset, kTiny) << point.code;
  EXPECT_NEAR(point.place.height, height, kTiny) << point.code;
}

Texts LineCodes(const ViewForm& form, std::size_t line) {
  Texts codes;
  for (const int index : form.lines.at(line)) codes.push_back(form.points.at(static_cast<std::size_t>(index)).code);
  return codes;
}

/// A point with a component type and more attributes.
std::string PartXml(const std::string& code, char side, const std::string& component, const std::string& type,
                    const std::string& values, const std::string& attributes = {}) {
  return "<tsf:ComposedPnt code=\"" + code + "\" location=\"" + (side == 'L' ? "Left" : "Right") +
         "\" componentType=\"" + component + "\" dataType=\"" + type + "\" existence=\"true\"" + attributes + ">" +
         values + "</tsf:ComposedPnt>\n";
}

std::string SlopedForm(const std::string& name = "S") {
  return FormXml(name, kFillType,
                 CenterXml() + PartXml("L1", 'L', "Roadbed(Fill)", "Percent", "3.5000 -2.000") +
                     PartXml("L2", 'L', "Slope(Fill)", "Rate", "-4.0000 1.500") +
                     PartXml("R1", 'R', "Roadbed(Fill)", "Percent", "3.5000 -2.000") +
                     PartXml("R2", 'R', "Slope(Fill)", "Rate", "-4.0000 1.500"));
}

// --- positions -------------------------------------------------------------------------------------------------------

TEST(SectionViewPositions, PlacesThePointsAsTheirValuesTell) {
  const SectionView view = ViewOfText(OneSection(FillForm()));
  ASSERT_THAT(view.forms, SizeIs(1));
  const ViewForm& form = view.forms[0];
  ASSERT_THAT(form.points, SizeIs(5));
  ExpectPlace(form.points[0], 0.0, 0.0);
  ExpectPlace(PointAt(form, "L1"), -3.5, -0.07);
  ExpectPlace(PointAt(form, "L2"), -9.5, -4.07);
  ExpectPlace(PointAt(form, "R2"), 9.5, -4.07);
  EXPECT_EQ(form.points[0].from, -1);
  EXPECT_EQ(form.points[1].from, 0);
  EXPECT_EQ(form.points[2].from, 1);
  EXPECT_EQ(form.points[3].from, 0) << "the other side begins at the start point again";
  EXPECT_EQ(form.points[1].side, "Left");
  EXPECT_EQ(form.points[0].side, "Center");
  ASSERT_THAT(form.lines, SizeIs(1));
  EXPECT_THAT(LineCodes(form, 0), ElementsAre("L2", "L1", "CL", "R1", "R2"));
  EXPECT_THAT(view.notes, IsEmpty());
}

TEST(SectionViewPositions, ReadsTheValuesAsEditionTwoDoes) {
  VornBuildForm form = Form("S", {Point20("CL", VornLocation::Center, SlopeType::Percent, 1.0, 0.5),
                                  Point20("L1", VornLocation::Left, SlopeType::Percent, 4.0, -2.5),
                                  Point20("R1", VornLocation::Right, SlopeType::Rate, -2.0, 1.5)});
  const DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {form})});
  const SectionView view = ViewOf(document, 0, 0);
  ExpectPlace(view.forms[0].points[0], 1.0, 0.5);
  ExpectPlace(view.forms[0].points[1], -3.0, 0.4);
  ExpectPlace(view.forms[0].points[2], 4.0, -1.5);
  EXPECT_EQ(view.forms[0].points[0].input, "1.000 m, 0.500 m");
  EXPECT_EQ(view.forms[0].points[1].input, "4.000 m, -2.500 %");
  EXPECT_EQ(view.forms[0].points[2].input, "-2.000 m, 1:1.500");
}

TEST(SectionViewPositions, LeavesTheDocumentAsItIs) {
  const DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("96.0000")));
  (void)ViewOf(document, 0, 0, 100.0);
  EXPECT_FALSE(document.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetComposedPntArray()[1].GetGh().IsSet());
}

TEST(SectionViewPositions, LeavesOutAFormThatNothingPlaces) {
  const SectionView view = ViewOfText(OneSection(
      FormXml("loose", kFillType,
              PointXml("L1", 'L', "Percent", "3.5000 -2.000") + PointXml("L2", 'L', "Rate", "-4.0000 1.500")) +
      FillForm("S")));
  ASSERT_THAT(view.forms, SizeIs(1));
  EXPECT_EQ(view.forms[0].name, "S");
  EXPECT_EQ(view.forms[0].documentIndex, 1);
  EXPECT_THAT(NotesOf(view), ElementsAre(HasSubstr("form loose is left out")));
}

TEST(SectionViewPositions, LeavesOutWhatLiesOutOfReach) {
  const SectionView view = ViewOfText(OneSection(FormXml(
      "S", kFillType,
      CenterXml() + PointXml("L1", 'L', "WidthHeight", "1e300 0.0000") +
          PointXml("L2", 'L', "WidthHeight", "1.0000 0.0000") + PointXml("R1", 'R', "WidthHeight", "2.0000 -0.1000"))));
  const ViewForm& form = view.forms.at(0);
  ASSERT_THAT(form.points, SizeIs(2));
  EXPECT_EQ(form.points[1].code, "R1");
  EXPECT_EQ(form.points[1].from, 0);
  EXPECT_EQ(form.points[1].documentIndex, 3);
  EXPECT_THAT(NotesOf(view), ElementsAre("form S: 2 points are left out, for lack of a value or out of reach"));
  EXPECT_THAT(LineCodes(form, 0), ElementsAre("CL", "R1"));
}

TEST(SectionViewPositions, LeavesOutWhatLacksAValueAndWhatHangsOnIt) {
  const VornBuildForm form =
      Form("S", {Center(), Point("L1", VornLocation::Left, DataType::WidthHeight, 1.0, NurReal()),
                 Point("L2", VornLocation::Left, DataType::WidthHeight, 1.0, 0.0),
                 Point("R1", VornLocation::Right, DataType::WidthHeight, 1.0, 0.0)});
  const SectionView view = ViewOf(DocumentOf(Edition::V41, {Section(0.0, {form})}), 0, 0);
  EXPECT_THAT(view.forms.at(0).points, SizeIs(2));
  EXPECT_THAT(view.notes, SizeIs(1));
}

TEST(SectionViewPositions, TakesPositionsOfAProjectAsTheyAre) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("96.0000")));
  NurReal dist;
  NurReal height;
  {
    const EditionScope scope(Edition::V41);
    SectionOf(document).GetBuildFormArray().RegulateComposedPnt(100.07, dist, height);
  }
  FormOf(document).GetComposedPntArray()[1].SetCLDist(-3.25);
  const SectionView view = ViewOf(document, 0, 0, 50.0);
  ASSERT_TRUE(view.centerHeight);
  EXPECT_NEAR(*view.centerHeight, 100.07, kTiny) << "the positions tell the height";
  ExpectPlace(PointAt(view.forms[0], "L1"), -3.25, 100.0);
  ExpectPlace(PointAt(view.forms[0], "L2"), -9.5, 96.0);
}

TEST(SectionViewPositions, CountsPositionsFromTheCentreLineWhileNobodyToldItsHeight) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("96.0000")));
  const DesignEditor editor(document);  // places the points at height 0
  ASSERT_TRUE(FormOf(document).GetComposedPntArray()[1].GetGh().IsSet());
  const SectionView view = ViewOf(document, 0, 0, 100.07);
  ExpectPlace(PointAt(view.forms[0], "L2"), -9.5, 96.0);
  EXPECT_EQ(view.centerHeight, 100.07);
}

TEST(SectionViewPositions, GivesASectionWithoutFormsNone) {
  const SectionView view = ViewOfText(OneSection(""));
  EXPECT_THAT(view.forms, IsEmpty());
  EXPECT_THAT(view.targets, IsEmpty());
  const SectionView empty = ViewOfText(OneSection(FormXml("S", kFillType, "")));
  EXPECT_THAT(empty.forms, IsEmpty());
  EXPECT_THAT(NotesOf(empty), ElementsAre("form S has no points"));
}

TEST(SectionViewPositions, HasNoLineForASinglePoint) {
  const SectionView view = ViewOfText(OneSection(FormXml("S", kFillType, CenterXml())));
  EXPECT_THAT(view.forms.at(0).points, SizeIs(1));
  EXPECT_THAT(view.forms.at(0).lines, IsEmpty());
}

// --- lines -----------------------------------------------------------------------------------------------------------

TEST(SectionViewLines, RunFromLeftToRightWithOneSideOnly) {
  const std::string left =
      PointXml("L1", 'L', "WidthHeight", "1.0000 0.0000") + PointXml("L2", 'L', "WidthHeight", "1.0000 0.0000");
  const SectionView view = ViewOfText(OneSection(FormXml("S", kFillType, CenterXml() + left)));
  ASSERT_THAT(view.forms.at(0).lines, SizeIs(1));
  EXPECT_THAT(LineCodes(view.forms[0], 0), ElementsAre("L2", "L1", "CL"));
}

TEST(SectionViewLines, EndAtACrossingAndAtPointsThatAreNotBuilt) {
  const std::string points =
      CenterXml() + PartXml("L1", 'L', "Slope(Fill)", "WidthHeight", "2.0000 -1.0000", " seriesPnt=\"false\"") +
      With(PartXml("L2", 'L', "Slope(Fill)", "WidthHeight", "2.0000 -1.0000"), "existence=\"true\"",
           "existence=\"false\"") +
      PartXml("L3", 'L', "Slope(Fill)", "WidthHeight", "2.0000 -1.0000") +
      PartXml("L4", 'L', "Slope(Fill)", "WidthHeight", "2.0000 -1.0000") +
      PointXml("R1", 'R', "WidthHeight", "2.0000 -1.0000");
  const SectionView view = ViewOfText(OneSection(FormXml("S", kFillType, points)));
  const ViewForm& form = view.forms.at(0);
  ASSERT_THAT(form.lines, SizeIs(2));
  EXPECT_THAT(LineCodes(form, 0), ElementsAre("L4", "L3"));
  EXPECT_THAT(LineCodes(form, 1), ElementsAre("L1", "CL", "R1"));
  EXPECT_TRUE(PointAt(form, "L1").isCrossing);
  EXPECT_FALSE(PointAt(form, "L2").exists);
  EXPECT_FALSE(PointAt(form, "L3").isCrossing);
}

TEST(SectionViewLines, EndAtAStartPointThatTheFormDoesNotGoOnThrough) {
  const SectionView view = ViewOfText(OneSection(FormXml("S", kFillType,
                                                         PointXml("CL", 'C', "WidthHeight", "0.0000 0.0000", false) +
                                                             PointXml("L1", 'L', "WidthHeight", "2.0000 0.0000") +
                                                             PointXml("R1", 'R', "WidthHeight", "2.0000 0.0000"))));
  ASSERT_THAT(view.forms.at(0).lines, SizeIs(2));
  EXPECT_THAT(LineCodes(view.forms[0], 0), ElementsAre("L1", "CL"));
  EXPECT_THAT(LineCodes(view.forms[0], 1), ElementsAre("CL", "R1"));
  EXPECT_FALSE(view.forms[0].points[0].isCrossing) << "a start point is no crossing";
}

TEST(SectionViewLines, ShowACrossingAtAStartPoint) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  VornComposedPnt& start = FormOf(document).GetComposedPntArray()[0];
  start.SetPointType(VornComposedPnt::kCrossPoint);
  EXPECT_TRUE(ViewOf(document, 0, 0).forms.at(0).points.at(0).isCrossing);
}

// --- texts -----------------------------------------------------------------------------------------------------------

TEST(SectionViewTexts, TellTheGradesOfSlopesAsRatiosAndOthersInPercent) {
  const std::string points = CenterXml() + PartXml("L1", 'L', "Roadbed(Fill)", "Percent", "3.5000 -1.501") +
                             PartXml("L2", 'L', "Slope(Fill)", "Rate", "-4.0390 1.500") +
                             PartXml("L3", 'L', "Berm(Fill)", "WidthHeight", "1.5000 -0.0750") +
                             PartXml("L4", 'L', "Slope(Fill)", "WidthHeight", "3.6000 -2.0000") +
                             PartXml("L5", 'L', "Slope(Fill)", "Percent", "1.0000 -50.000") +
                             PartXml("L6", 'L', "Slope(Fill)", "WidthHeight", "1.0000 0.0000") +
                             PartXml("L7", 'L', "Slope(Fill)", "WidthHeight", "0.0000 -1.0000") +
                             PartXml("R1", 'R', "Roadbed(Fill)", "WidthHeight", "4.0000 0.0000") +
                             PartXml("R2", 'R', "Other", "WidthHeight", "0.0000 -0.3000") +
                             PartXml("R3", 'R', "Other", "WidthHeight", "0.3000 -0.3000") +
                             PartXml("R4", 'R', "Other", "WidthHeight", "1.0000 -0.0200") +
                             PartXml("R5", 'R', "Other", "Rate", "1.0000 2.000");
  const SectionView view = ViewOfText(OneSection(FormXml("S", kFillType, points)));
  const ViewForm& form = view.forms.at(0);
  EXPECT_EQ(form.points[0].grade, "");
  EXPECT_EQ(form.points[0].part, SectionPart::Start);
  EXPECT_EQ(PointAt(form, "L1").grade, "-1.501%");
  EXPECT_EQ(PointAt(form, "L1").part, SectionPart::Roadbed);
  EXPECT_EQ(PointAt(form, "L1").input, "3.500 m, -1.501 %");
  EXPECT_EQ(PointAt(form, "L2").grade, "1:1.5");
  EXPECT_EQ(PointAt(form, "L2").part, SectionPart::Slope);
  EXPECT_EQ(PointAt(form, "L2").input, "-4.039 m, 1:1.500");
  EXPECT_EQ(PointAt(form, "L3").grade, "-5.0%");
  EXPECT_EQ(PointAt(form, "L3").part, SectionPart::Berm);
  EXPECT_EQ(PointAt(form, "L3").input, "1.500 m, -0.075 m");
  EXPECT_EQ(PointAt(form, "L4").grade, "1:1.8");
  EXPECT_EQ(PointAt(form, "L5").grade, "1:2.0");
  EXPECT_EQ(PointAt(form, "L6").grade, "0.0%");
  EXPECT_EQ(PointAt(form, "L7").grade, "1:0.0");
  EXPECT_EQ(PointAt(form, "R1").grade, "0.0%");
  EXPECT_EQ(PointAt(form, "R2").grade, "") << "an upright wall";
  EXPECT_EQ(PointAt(form, "R2").part, SectionPart::Other);
  EXPECT_EQ(PointAt(form, "R3").grade, "1:1.0");
  EXPECT_EQ(PointAt(form, "R4").grade, "-2.0%");
  EXPECT_EQ(PointAt(form, "R5").grade, "1:2.0");
}

TEST(SectionViewTexts, TellTheSegmentWhereTheSidesAlternate) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PartXml("L1", 'L', "Roadbed(Fill)", "Percent", "3.5000 -2.000") +
                                       PartXml("R1", 'R', "Roadbed(Fill)", "Percent", "3.5000 -2.000") +
                                       PartXml("L2", 'L', "Slope(Fill)", "Rate", "-4.0000 1.500") +
                                       PartXml("R2", 'R', "Slope(Fill)", "Rate", "-4.0000 1.500"));
  const SectionView view = ViewOfText(OneSection(form));
  const ViewForm& shown = view.forms.at(0);
  EXPECT_THAT(LineCodes(shown, 0), ElementsAre("L2", "L1", "CL", "R1", "R2"));
  ExpectPlace(PointAt(shown, "L2"), -6.0, -4.0);
  EXPECT_EQ(PointAt(shown, "L2").from, 0) << "each run of points of a side is placed from the start point";
  const auto indexOf = [&](const char* code) { return static_cast<int>(&PointAt(shown, code) - shown.points.data()); };
  EXPECT_EQ(vorn_host::OuterOf(indexOf("L2"), indexOf("L1")), indexOf("L2"));
  EXPECT_EQ(vorn_host::SegmentGrade(shown, indexOf("L1"), indexOf("CL")), "-2.0%");
  EXPECT_EQ(vorn_host::SegmentGrade(shown, indexOf("L2"), indexOf("L1")), "1:0.636") << "2.5 m to 3.93 m";
}

TEST(SectionViewTexts, HaveTheInputValuesAsNumbersToo) {
  const SectionView view = ViewOfText(OneSection(SlopedForm()));
  using Reading = vorn_host::ViewInput::Reading;
  EXPECT_EQ(PointAt(view.forms.at(0), "L1").values, (vorn_host::ViewInput{Reading::Percent, 3.5, -2.0}));
  EXPECT_EQ(PointAt(view.forms[0], "L2").values, (vorn_host::ViewInput{Reading::Rate, -4.0, 1.5}));
  EXPECT_EQ(PointAt(view.forms[0], "CL").values, (vorn_host::ViewInput{Reading::WidthHeight, 0.0, 0.0}));
}

TEST(SectionViewTexts, TellWhichInputValueAPlacedPointLacks) {
  DesignDocument document = ReadText(OneSection(SlopedForm()));
  const DesignEditor editor(document);  // places the points
  Vorn_ComposedPntArray& points = FormOf(document).GetComposedPntArray();
  points[1].SetX(NurReal());
  points[2].SetY(NurReal());
  points[3].SetX(NurReal());
  points[3].SetY(NurReal());
  const ViewForm form = ViewOf(document, 0, 0).forms.at(0);
  EXPECT_EQ(form.points.at(1).input, "–, -2.000 %");
  EXPECT_EQ(form.points.at(2).input, "-4.000 m, –");
  EXPECT_EQ(form.points.at(2).grade, "1:1.5") << "as its place tells";
  EXPECT_EQ(form.points.at(3).input, "");
  EXPECT_EQ(form.points.at(3).grade, "-2.0%");
}

TEST(SectionViewTexts, KeepEveryDecimalOfTheDocument) {
  const SectionView view = ViewOfText(
      OneSection(FormXml("S", kFillType, CenterXml() + PointXml("L1", 'L', "WidthHeight", "3.5005 -0.0006"))));
  EXPECT_EQ(view.forms.at(0).points.at(1).input, "3.5005 m, -0.0006 m");
}

TEST(SectionViewTexts, ValuesHaveTheDecimalsThatTheyNeed) {
  using vorn_host::ValueText;
  EXPECT_EQ(ValueText(1.5, 1, 3), "1.5");
  EXPECT_EQ(ValueText(2.0, 1, 3), "2.0");
  EXPECT_EQ(ValueText(1.2345, 1, 3), "1.235");
  EXPECT_EQ(ValueText(-0.00001, 1, 3), "0.0");
  EXPECT_EQ(ValueText(100.0, 0, 3), "100");
  EXPECT_EQ(ValueText(100.0, 0, 0), "100");
  EXPECT_EQ(ValueText(0.3, 0, 1), "0.3");
  EXPECT_EQ(ValueText(std::numeric_limits<double>::quiet_NaN(), 1, 3), "");
}

TEST(SectionViewTexts, CountStationsByTheNumbersThatTheNamesTell) {
  const auto stationsOf = [](const std::string& type, const std::string& name0, const std::string& name1,
                             const std::string& station) {
    const std::string form = FillForm();
    const std::string text =
        DesignXml(With(SectionXml("0.0000", form), "<tsf:XSection ", "<tsf:XSection name=\"" + name0 + "\" ") +
                  With(SectionXml("60.0000", form), "<tsf:XSection ", "<tsf:XSection name=\"" + name1 + "\" ") +
                  SectionXml(station, form));
    const DesignDocument document = ReadText(
        WithBefore(text, "  <tsf:XSections", "<tsf:StructureType type=\"道路土工\" stationType=\"" + type + "\"/>"));
    return ViewOf(document, 0, 2).stationText;
  };
  EXPECT_EQ(stationsOf("NO", "No.0", "No.3", "72.5000"), "No.3+12.5000");
  EXPECT_EQ(stationsOf("NO", "No.0", "No.3", "79.99999"), "No.4+0.0000");
  EXPECT_EQ(stationsOf("NO", "No.0", "No.3+5", "72.5000"), "72.5000") << "nothing tells how far numbers are apart";
  EXPECT_EQ(stationsOf("NO", "No.1", "No.3", "72.5000"), "72.5000") << "the names disagree";
  EXPECT_EQ(stationsOf("NO", "No.-3", "No.", "72.5000"), "72.5000");
  EXPECT_EQ(stationsOf("SP", "No.0", "No.3", "72.5000"), "72.5000");
  EXPECT_EQ(stationsOf("STA", "STA.0", "STA.3", "72.5000"), "STA.3+12.5000");
}

TEST(SectionViewTexts, TellWhatTheSectionIs) {
  const std::string text = DesignXml(SectionXml("20.0000", FillForm()) +
                                     With(SectionXml("20.0000", FillForm()), "<tsf:XSection ",
                                          "<tsf:XSection name=\"&lt;b&gt;\" controlSect=\"true\" xSectChg=\"true\" "));
  const DesignDocument document = ReadText(text);
  const SectionView before = ViewOf(document, 0, 0);
  const SectionView behind = ViewOf(document, 0, 1);
  EXPECT_EQ(before.alignment, "A");
  EXPECT_EQ(before.station, 20.0);
  EXPECT_EQ(before.stationText, "20.0000");
  EXPECT_FALSE(before.isControlSection);
  EXPECT_FALSE(before.isBehindChange);
  EXPECT_EQ(behind.section, 1);
  EXPECT_EQ(behind.name, "<b>");
  EXPECT_TRUE(behind.isControlSection);
  EXPECT_TRUE(behind.isBehindChange);
}

// --- roles -----------------------------------------------------------------------------------------------------------

std::vector<FormRole> RolesOf(const std::string& forms) {
  std::vector<FormRole> roles;
  for (const ViewForm& form : ViewOfText(OneSection(forms)).forms) roles.push_back(form.role);
  return roles;
}

TEST(SectionViewRoles, TellTheSurfaceFromTheLayers) {
  const auto form = [](const char* name, const char* type) { return FormXml(name, type, FillPoints()); };
  EXPECT_THAT(
      RolesOf(form("A", "盛土工") + form("表層", "表層工") + form("基層", "基層工") + form("B", "切土工") +
              form("C", "構造物")),
      ElementsAre(FormRole::DesignSurface, FormRole::Layer, FormRole::Layer, FormRole::DesignSurface, FormRole::Other));
  EXPECT_THAT(RolesOf(form("基層", "") + form("A", "") + form("B", "")),
              ElementsAre(FormRole::Layer, FormRole::DesignSurface, FormRole::Other))
      << "without a plan surface, the first form that is no pavement is the design";
  EXPECT_THAT(RolesOf(form("基層", "基層工") + form("表層", "表層工")),
              ElementsAre(FormRole::Layer, FormRole::DesignSurface));
  EXPECT_THAT(RolesOf(form("基層", "") + form("基層2", "")), ElementsAre(FormRole::DesignSurface, FormRole::Layer));
}

// --- heights and ground ----------------------------------------------------------------------------------------------

TEST(SectionViewHeight, IsThatOfTheDocumentFirst) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("96.0000")));
  SectionOf(document).SetHeight(62.5);
  const SectionView view = ViewOf(document, 0, 0, 100.0);
  EXPECT_EQ(view.centerHeight, 62.5);
  ExpectPlace(view.forms[0].points[0], 0.0, 62.5);
}

TEST(SectionViewHeight, IsTheOneThatThePointsStandAt) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  Place(document, 62.5);
  SectionOf(document).SetHeight(12.0);
  const SectionView view = ViewOf(document, 0, 0);
  EXPECT_EQ(view.centerHeight, 62.5);
  ExpectPlace(view.forms.at(0).points.at(0), 0.0, 62.5);
  EXPECT_THAT(NotesOf(view), ElementsAre(HasSubstr("than that of the section itself, 12.000 m")));
  SectionOf(document).SetHeight(62.5);
  EXPECT_THAT(ViewOf(document, 0, 0).notes, IsEmpty());
}

TEST(SectionViewHeight, IsTheOneGivenOtherwise) {
  const SectionView view = ViewOfText(OneSection(FillForm() + FlatGround("96.0000")), 100.0);
  EXPECT_EQ(view.centerHeight, 100.0);
  EXPECT_FALSE(view.isHeightAssumed);
  ExpectPlace(PointAt(view.forms[0], "L2"), -9.5, 95.93);
  ASSERT_THAT(view.grounds, SizeIs(1));
  EXPECT_EQ(view.grounds[0].name, "ground");
  EXPECT_THAT(view.notes, IsEmpty());
}

TEST(SectionViewHeight, IsFoundWhereBothSlopesEndOnTheGround) {
  // On the left the ground lies 1 m higher than on the right, and the slope ends there.
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PartXml("L1", 'L', "Slope(Fill)", "Rate", "-3.0000 1.500") +
                                       PartXml("R1", 'R', "Slope(Fill)", "Rate", "-4.0000 1.500"));
  const std::string ground = GroundXml({"-50.0000 97.0000", "0.0000 97.0000", "2.0000 96.0000", "50.0000 96.0000"});
  const SectionView view = ViewOfText(OneSection(form + ground));
  EXPECT_EQ(view.centerHeight, 100.0);
  EXPECT_TRUE(view.isHeightAssumed);
  EXPECT_THAT(NotesOf(view), ElementsAre(HasSubstr("the height of the centre line, 100.000 m, is taken from")));
  EXPECT_TRUE(PointAt(view.forms[0], "L1").isCrossing);
  EXPECT_TRUE(PointAt(view.forms[0], "R1").isCrossing);
  ExpectPlace(PointAt(view.forms[0], "R1"), 6.0, 96.0);
}

TEST(SectionViewHeight, IsNotGuessed) {
  const auto heightOf = [](const std::string& content) { return ViewOfText(OneSection(content)).centerHeight; };
  const std::string tilted = GroundXml({"-50.0000 97.0000", "50.0000 96.0000"});
  EXPECT_EQ(heightOf(SlopedForm() + tilted), std::nullopt) << "the sides disagree";
  EXPECT_EQ(heightOf(FormXml("S", kFillType, CenterXml() + PartXml("L1", 'L', "Slope(Fill)", "Rate", "-3 1.5")) +
                     FlatGround("96.0000")),
            std::nullopt)
      << "one side only";
  EXPECT_EQ(heightOf(FillForm() + FlatGround("96.0000")), std::nullopt) << "roadbeds need not end on the ground";
  EXPECT_EQ(heightOf(SlopedForm() + GroundXml({"-5.0000 96.0000", "5.0000 96.0000"})), std::nullopt)
      << "the ground is too short";
  EXPECT_EQ(heightOf(LayerForm("基層")), std::nullopt);
  EXPECT_EQ(heightOf(SlopedForm() + FlatGround("96.0000")), std::nullopt)
      << "on level ground two equal sides agree at any height";
}

TEST(SectionViewHeight, IsFoundOnLevelGroundAtMarkedCrossings) {
  const std::string form =
      FormXml("S", kFillType,
              CenterXml() + PartXml("XL", 'L', "Slope(Fill)", "Rate", "-4.0000 1.500", " seriesPnt=\"false\"") +
                  PartXml("XR", 'R', "Slope(Fill)", "Rate", "-4.0000 1.500", " seriesPnt=\"false\""));
  EXPECT_EQ(ViewOfText(OneSection(form + FlatGround("96.0000"))).centerHeight, 100.0);
}

TEST(SectionViewHeight, IsFoundAtMarkedCrossingsBeforeTheEndsOfSlopes) {
  const std::string crossing = " seriesPnt=\"false\"";
  const std::string form =
      FormXml("S", kFillType,
              CenterXml() + PartXml("XL", 'L', "Roadbed(Fill)", "WidthHeight", "4.0000 -1.0000", crossing) +
                  PartXml("L1", 'L', "Slope(Fill)", "Rate", "-3.0000 1.500") +
                  PartXml("XR", 'R', "Roadbed(Fill)", "WidthHeight", "4.0000 -1.0020", crossing));
  const SectionView view = ViewOfText(OneSection(form + FlatGround("96.0000")));
  EXPECT_EQ(view.centerHeight, 97.001);
}

TEST(SectionViewGround, IsLeftOutWhileTheHeightIsNotKnown) {
  const SectionView view = ViewOfText(OneSection(FillForm() + FlatGround("96.0000")));
  EXPECT_FALSE(view.centerHeight);
  EXPECT_THAT(view.grounds, IsEmpty());
  EXPECT_THAT(NotesOf(view), ElementsAre(HasSubstr("the existing ground is left out")));
  EXPECT_FALSE(PointAt(view.forms[0], "L2").isCrossing);
}

TEST(SectionViewGround, RunsFromLeftToRightAndMayBeSeveral) {
  const std::string second = With(GroundXml({"10.0000 3.0000", "-10.0000 2.0000"}), "name=\"ground\"", "name=\"rock\"");
  const SectionView view = ViewOfText(OneSection(FillForm() + FlatGround("96.0000") + second), 100.0);
  ASSERT_THAT(view.grounds, SizeIs(2));
  EXPECT_EQ(view.grounds[1].name, "rock");
  EXPECT_EQ(view.grounds[1].line.front().offset, -10.0);
  EXPECT_EQ(view.grounds[1].line.front().height, 2.0);
}

TEST(SectionViewGround, TellsWhatItLeavesOut) {
  const SectionView view = ViewOfText(
      OneSection(FillForm() + GroundXml({"-10.0000 3.0000", "5.0000", "10.0000 1e200", "20.0000 3.0000"})), 10.0);
  EXPECT_THAT(view.grounds.at(0).line, SizeIs(2));
  EXPECT_THAT(NotesOf(view), ElementsAre("existing ground ground: 2 points are left out, for lack of a value or out of "
                                         "reach"));
  const SectionView single = ViewOfText(OneSection(FillForm() + GroundXml({"-10.0000 3.0000"})), 10.0);
  EXPECT_THAT(single.grounds, IsEmpty());
  EXPECT_THAT(NotesOf(single), ElementsAre("existing ground ground is left out: it has fewer than two points"));
}

// --- control targets -------------------------------------------------------------------------------------------------

TEST(SectionViewTargets, MeasureWidthHeightAndLength) {
  const std::string targets = WidthXml("20.0000", "S", "L1", "R1") +
                              TargetXml("Height", "20.0000", "TargetPnt", {{"S", "R1"}}) +
                              TargetXml("SlopeLength", "20.0000", "Shoulder Toe", {{"S", "L1"}, {"S", "L2"}}) +
                              TargetXml("Thickness", "20.0000", "TargetPnt", {{"S", "L1"}, {"S", "R1"}});
  const SectionView view = ViewOfText(DesignXml(SectionXml("20.0000", FillForm()) + targets), 100.0);
  ASSERT_THAT(view.targets, SizeIs(4));
  const ViewTarget& width = view.targets[0];
  EXPECT_EQ(width.item, ViewTarget::Item::Width);
  EXPECT_EQ(width.itemText, "Width");
  EXPECT_EQ(width.formName, "S");
  EXPECT_EQ(width.scope, "S");
  EXPECT_EQ(width.regulation, "R");
  ASSERT_THAT(width.points, SizeIs(2));
  EXPECT_EQ(width.points[0].name, "S L1");
  EXPECT_EQ(width.points[0].form, 0);
  EXPECT_EQ(width.points[0].point, 1);
  EXPECT_EQ(width.points[1].point, 3);
  EXPECT_NEAR(width.designValue.value(), 7.0, kTiny);
  EXPECT_EQ(width.points[0].designValue, std::nullopt) << "both points have it together";
  EXPECT_NEAR(view.targets[1].designValue.value(), 99.93, kTiny);
  EXPECT_EQ(view.targets[2].item, ViewTarget::Item::SlopeLength);
  EXPECT_NEAR(view.targets[2].designValue.value(), std::hypot(6.0, 4.0), kTiny);
  EXPECT_EQ(view.targets[3].item, ViewTarget::Item::Thickness);
  EXPECT_EQ(view.targets[3].itemText, "Thickness");
  EXPECT_EQ(view.targets[3].designValue, std::nullopt);
}

TEST(SectionViewTargets, AreCalledWhatTheDocumentCallsThem) {
  const std::vector<std::pair<std::string, std::string>> names = {{"SlopeLength", "slope length"},
                                                                  {"Width", "width"},
                                                                  {"Height", "height"},
                                                                  {"Thickness", "thickness"},
                                                                  {"Depth", "depth"},
                                                                  {"XSectArea", "section area"},
                                                                  {"Length", "length"},
                                                                  {"Area", "area"}};
  std::string targets;
  for (const auto& [item, name] : names)
    targets += TargetXml(item, "20.0000", "Left Right", {{"S", "L1"}, {"S", "R1"}});
  const SectionView view = ViewOfText(DesignXml(SectionXml("20.0000", FillForm()) + targets));
  ASSERT_THAT(view.targets, SizeIs(names.size()));
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(view.targets[i].itemText, names[i].first);
    EXPECT_EQ(WordOf(view.targets[i].item), names[i].second);
  }
}

TEST(SectionViewTargets, HaveNoSingleHeightForSeveralPoints) {
  const std::string target = TargetXml("Height", "20.0000", "TargetPnt", {{"S", "CL"}, {"S", "R1"}});
  const SectionView view = ViewOfText(DesignXml(SectionXml("20.0000", FillForm()) + target), 100.0);
  ASSERT_THAT(view.targets.at(0).points, SizeIs(2));
  EXPECT_EQ(view.targets[0].designValue, std::nullopt);
  EXPECT_NEAR(view.targets[0].points[0].designValue.value(), 100.0, kTiny) << "but one for each of them";
  EXPECT_NEAR(view.targets[0].points[1].designValue.value(), 99.93, kTiny);
}

TEST(SectionViewTargets, HaveNoHeightForAPointThatIsNotThere) {
  const std::string target = TargetXml("Height", "20.0000", "TargetPnt", {{"S", "CL"}, {"S", "R9"}});
  const SectionView view = ViewOfText(DesignXml(SectionXml("20.0000", FillForm()) + target), 100.0);
  EXPECT_NEAR(view.targets.at(0).points.at(0).designValue.value(), 100.0, kTiny);
  EXPECT_EQ(view.targets[0].points.at(1).designValue, std::nullopt);
}

TEST(SectionViewTargets, MeasureThicknessAndDepthBetweenPointsAtOneOffset) {
  const auto valueOf = [](const char* item, const char* ofLayer) {
    const std::string target = TargetXml(item, "20.0000", "Lower Upper", {{"基層", ofLayer}, {"S", "CL"}});
    return ViewOfText(DesignXml(SectionXml("20.0000", FillForm() + LayerForm("基層")) + target), 100.0)
        .targets.at(0)
        .designValue;
  };
  EXPECT_NEAR(valueOf("Thickness", "CL").value(), 0.05, kTiny);
  EXPECT_NEAR(valueOf("Depth", "CL").value(), 0.05, kTiny);
  EXPECT_EQ(valueOf("Thickness", "L1"), std::nullopt) << "3 m beside it";
  EXPECT_EQ(valueOf("XSectArea", "CL"), std::nullopt);
}

TEST(SectionViewTargets, MeasureLengthsAlongTheForm) {
  const std::string target = TargetXml("SlopeLength", "20.0000", "Shoulder Toe", {{"S", "L2"}, {"S", "CL"}});
  const SectionView view = ViewOfText(DesignXml(SectionXml("20.0000", FillForm()) + target));
  EXPECT_NEAR(view.targets.at(0).designValue.value(), std::hypot(3.5, 0.07) + std::hypot(6.0, 4.0), kTiny);
}

TEST(SectionViewTargets, AreNotLostWithoutASection) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(20.0, {RoadForm("S")})});
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(20.0, "S", {"L1", "R1"}));
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(30.0, "S", {"L1", "R1"}));
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(30.0, "S", {}));
  const SectionViewer viewer(document);
  EXPECT_THAT(viewer.Of(0, 0).targets, SizeIs(1));
  const SectionView without = viewer.WithoutSection(0);
  EXPECT_EQ(without.section, -1);
  EXPECT_THAT(NotesOf(without), ElementsAre("2 control targets stand at no cross section"));
  ASSERT_THAT(without.targets, SizeIs(2)) << "one at a station without a section, and one without points";
  EXPECT_EQ(without.targets[0].points.at(0).name, "S L1");
  EXPECT_EQ(without.targets[0].points.at(0).elsewhere, (ViewTarget::Elsewhere{30.0, "30.0000", false}));
  EXPECT_EQ(without.targets[0].points.at(0).point, -1);
  EXPECT_EQ(without.targets[0].designValue, std::nullopt);
}

TEST(SectionViewTargets, DoNotStandInASectionWithoutAStation) {
  DesignDocument document =
      DocumentOf(Edition::V41, {Section(NurReal(), {RoadForm("S")}), Section(0.0, {RoadForm("S")})});
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(0.0, "S", {"L1", "R1"}));
  const SectionViewer viewer(document);
  EXPECT_THAT(viewer.Of(0, 0).targets, IsEmpty());
  EXPECT_THAT(viewer.Of(0, 1).targets, SizeIs(1));
}

TEST(SectionViewTargets, OfAFormStandThereWhereNoSectionIsAtTheirStations) {
  VornBuildForm form = RoadForm("S");
  form.GetFormCtrlTargetArray().Add(TargetOn(30.0, "S", {"L1", "R1"}));
  const DesignDocument document = DocumentOf(Edition::V41, {Section(20.0, {form})});
  EXPECT_THAT(SectionViewer(document).Of(0, 0).targets, SizeIs(1));
  EXPECT_THAT(SectionViewer(document).WithoutSection(0).targets, IsEmpty());
}

TEST(SectionViewTargets, ReadTheCodesOfEditionTwo) {
  VornBuildForm form = RoadForm("S");
  form.GetFormCtrlTargetArray().Add(Target20("L1  R1"));
  form.GetFormCtrlTargetArray().Add(Target20("L1 R9"));
  const VornBuildForm other = RoadForm("T");
  const SectionView view = ViewOf(DocumentOf(Edition::V20, {Section(0.0, {other, form})}), 0, 0);
  ASSERT_THAT(view.targets, SizeIs(2));
  EXPECT_EQ(view.targets[0].formName, "S");
  EXPECT_EQ(view.targets[0].workType, "RE_FillWork");
  ASSERT_THAT(view.targets[0].points, SizeIs(2));
  EXPECT_EQ(view.targets[0].points[1].form, 1);
  EXPECT_EQ(view.targets[0].points[1].name, "S R1");
  EXPECT_NEAR(view.targets[0].designValue.value(), 7.0, kTiny);
  EXPECT_EQ(view.targets[1].points[1].point, -1);
  EXPECT_EQ(view.targets[1].points[1].form, -1);
  EXPECT_EQ(view.targets[1].designValue, std::nullopt);
}

TEST(SectionViewTargets, StandInTheirOwnSectionOnly) {
  const std::string twoStations = With(TargetXml("Width", "20.0000", "Left Right", {{"S", "L1"}, {"S", "R1"}}),
                                       "cumulativeDist=\"20.0000\" buildFormName=\"S\" code=\"R1\"",
                                       "cumulativeDist=\"40.0000\" buildFormName=\"S\" code=\"R1\"");
  const DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + SectionXml("40.0000", FillForm()) +
                         SectionXml("60.0000", FillForm()) + WidthXml("40.0000", "S", "L1", "R1") + twoStations));
  const SectionViewer viewer(document);
  const SectionView first = viewer.Of(0, 0);
  ASSERT_THAT(first.targets, SizeIs(1));
  EXPECT_EQ(first.targets[0].points[0].point, 1);
  EXPECT_EQ(first.targets[0].points[1].point, -1) << "that one stands at another station";
  EXPECT_EQ(first.targets[0].points[1].name, "S R1");
  EXPECT_EQ(first.targets[0].points[1].elsewhere, (ViewTarget::Elsewhere{40.0, "40.0000", false}));
  EXPECT_EQ(first.targets[0].points[0].elsewhere, std::nullopt);
  EXPECT_EQ(first.targets[0].designValue, std::nullopt);
  EXPECT_THAT(viewer.Of(0, 1).targets, SizeIs(2));
  EXPECT_THAT(viewer.Of(0, 2).targets, IsEmpty());
}

TEST(SectionViewTargets, StandBeforeOrBehindAChangeOfShape) {
  DesignDocument document =
      DocumentOf(Edition::V41, {Section(20.0, {RoadForm("S")}), Section(20.0, {RoadForm("S")}, true)});
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(20.0, "S", {"L1", "R1"}, true));
  const SectionViewer viewer(document);
  EXPECT_THAT(viewer.Of(0, 0).targets, IsEmpty());
  EXPECT_THAT(viewer.Of(0, 1).targets, SizeIs(1));
}

TEST(SectionViewTargets, OfAFormLeftOutNameNoPoint) {
  const std::string loose =
      FormXml("loose", kFillType,
              PointXml("L1", 'L', "Percent", "3.5000 -2.000") + PointXml("R1", 'R', "Percent", "3.5000 -2.000"));
  const SectionView view =
      ViewOfText(DesignXml(SectionXml("20.0000", loose + FillForm("S")) + WidthXml("20.0000", "loose", "L1", "R1") +
                           WidthXml("20.0000", "S", "L1", "R1")));
  ASSERT_THAT(view.targets, SizeIs(2));
  EXPECT_EQ(view.targets[0].points[0].form, -1);
  EXPECT_EQ(view.targets[0].points[0].point, -1);
  EXPECT_EQ(view.targets[1].points[0].form, 0) << "the index in the view";
}

// --- samples ---------------------------------------------------------------------------------------------------------

class SampleViews : public ToolTest, public testing::WithParamInterface<const char*> {};

TEST_P(SampleViews, ShowEverySectionWithItsPoints) {
  const DesignDocument document = DesignDocument::Read(Sample(GetParam()));
  const SectionViewer viewer(document);
  for (int set = 0; set < document.sets.GetSize(); ++set) {
    const Vorn_XSectionArray& sections = document.sets[set].GetXSectionArray();
    for (int i = 0; i < sections.GetSize(); ++i) {
      const SectionView view = viewer.Of(set, i);
      ASSERT_THAT(view.forms, SizeIs(sections[i].GetBuildFormArray().GetSize()));
      for (int form = 0; form < sections[i].GetBuildFormArray().GetSize(); ++form) {
        EXPECT_THAT(view.forms[static_cast<std::size_t>(form)].points,
                    SizeIs(sections[i].GetBuildFormArray()[form].GetComposedPntArray().GetSize()));
        EXPECT_THAT(view.forms[static_cast<std::size_t>(form)].lines, SizeIs(1));
      }
      const bool hasGround = !sections[i].GetExistingBuildFormArray().IsEmpty();
      EXPECT_EQ(view.centerHeight.has_value(), hasGround) << GetParam() << " " << view.stationText;
      EXPECT_EQ(view, ViewOf(document, set, i)) << "one by one as all together";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllSamples, SampleViews,
                         testing::Values("road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml",
                                         "farm-maff-1.0.xml"),
                         [](const auto& sample) { return "Sample" + std::to_string(sample.index); });

TEST(MadeSampleViews, FindTheHeightThatTheDesignWasMadeWith) {
  using vorn_host::SampleKind;
  // Where a side ends without a slope, nothing tells that it ends on the ground, nor does level ground tell a height.
  const std::pair<SampleKind, int> told[] = {{SampleKind::Road, 59}, {SampleKind::River, 60}, {SampleKind::Farm, 44}};
  for (const auto& [kind, count] : told) {
    DesignDocument made;
    made.sets = vorn_host::MakeSampleDesign({60, kind, 5}).sets;
    const DesignDocument read = ReadText(WriteText(made));
    const SectionViewer viewer(read);
    int found = 0;
    for (int i = 0; i < 60; ++i) {
      const SectionView view = viewer.Of(0, i);
      if (!view.centerHeight) continue;
      ++found;
      EXPECT_NEAR(*view.centerHeight, SectionOf(made, i).GetHeight().Value(), 0.003) << i;
    }
    EXPECT_EQ(found, count);
  }
}

}  // namespace
