#include "host/editing/design_editor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/document_check.h"
#include "host/document/edition_conversion.h"
#include "host/sample/sample_document.h"
#include "tests/host/editing.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const CString kFill = u8"盛土工"_cp932;
const CString kCut = u8"切土工"_cp932;

const CString kFillSurface = u8"盛土面"_cp932;

CStringArray Names(std::initializer_list<const char*> names) {
  CStringArray list;
  for (const char* name : names) list.Add(CString(name));
  return list;
}

DesignDocument Sample(const std::string& name) { return DesignDocument::Read(std::string(VORN_SAMPLES) + "/" + name); }

const std::vector<std::string> kSamples = {"road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml",
                                           "farm-maff-1.0.xml"};

/// The text of a document once a step was done on it.
template <typename Step>
std::string Edited(const std::string& text, Step&& step) {
  DesignDocument document = ReadText(text);
  DesignEditor editor(document);
  step(editor);
  return WriteText(document);
}

/// As above, with the crossings recomputed from a height of the centre line.
std::string WithCrossings(const std::string& text, double height) {
  return Edited(text, [=](DesignEditor& editor) {
    editor.Recalc(height);
    editor.RecalcCrossings();
  });
}

// --- positions -----------------------------------------------------------------------------------------------------

TEST(EditorRecalc, PlacesThePointsFromTheHeightOfTheCentreLine) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  const EditReport report = DesignEditor(document).Recalc(10.0);
  ExpectAt(FormOf(document), "CL", 0.0, 10.0);
  ExpectAt(FormOf(document), "L1", -3.5, 9.93);
  ExpectAt(FormOf(document), "L2", -9.5, 5.93);
  ExpectAt(FormOf(document), "R2", 9.5, 5.93);
  EXPECT_THAT(CountsOf(report), ElementsAre("5 points placed"));
  EXPECT_THAT(WhatOf(report.changes), ElementsAre("5 points placed from height 10.0000"));
}

TEST(EditorRecalc, TakesTheHeightOfEachSectionWhenNoneIsGiven) {
  DesignDocument document = ReadText(DesignXml(SectionXml("0.0000", FillForm()) + SectionXml("20.0000", FillForm())));
  SectionOf(document, 0).SetHeight(10.0);
  SectionOf(document, 1).SetHeight(12.0);
  DesignEditor(document).Recalc(NurReal());
  ExpectAt(FormOf(document, 0, 0), "CL", 0.0, 10.0);
  ExpectAt(FormOf(document, 0, 1), "CL", 0.0, 12.0);
}

TEST(EditorRecalc, NamesTheSectionThatHasNoHeight) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  EXPECT_THAT(ErrorOf([&] { DesignEditor(document).Recalc(NurReal()); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("height")));
}

TEST(EditorRecalc, ChangesNothingTheSecondTime) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  DesignEditor editor(document);
  EXPECT_TRUE(editor.Recalc(0.0).HasChanged()) << "elevations were not known before";
  EXPECT_FALSE(editor.Recalc(0.0).HasChanged());
  EXPECT_TRUE(editor.Recalc(1.0).HasChanged());
}

TEST(EditorRecalc, LeavesTheDocumentAsItIs) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    const std::string before = WriteText(document);
    DesignEditor(document).Recalc(62.5);
    EXPECT_TRUE(WriteText(document) == before) << sample;
    ExpectPositionsAreWritten(document, 62.5);
  }
}

// --- crossings -----------------------------------------------------------------------------------------------------

struct Segment {
  const char* name;
  const char* type;
  const char* values;  ///< of a segment from (0, 10) that passes through the ground at 8
};

void PrintTo(const Segment& segment, std::ostream* out) { *out << segment.name; }

/// A crossing in a segment of each reading.
class EditorCrossing : public testing::TestWithParam<Segment> {};

constexpr Segment kSegments[] = {
    {"WidthHeight", "WidthHeight", "7.0000 -3.0000"},
    {"Percent", "Percent", "10.0000 -33.333"},
    {"Rate", "Rate", "-3.0000 1.700"},
    {"FlatPercent", "Percent", "77.0000 -7.000"},
    {"SteepRate", "Rate", "-3.0000 0.300"},
    {"Wall", "WidthHeight", "0.0000 -3.0000"},
    {"SteepPercent", "Percent", "0.1000 -3000.000"},
};

INSTANTIATE_TEST_SUITE_P(InA, EditorCrossing, testing::ValuesIn(kSegments),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(EditorCrossing, LiesOnTheGroundAndOnTheDesign) {
  for (const char side : {'L', 'R'}) {
    const std::string form =
        FormXml("S", kFillType, CenterXml() + PointXml("T", side, GetParam().type, GetParam().values));
    DesignDocument document = ReadText(OneSection(form + GroundXml({"-90.0000 8.1230", "90.0000 8.0120"})));
    DesignEditor editor(document);
    editor.Recalc(10.0);
    const TamWorld2 toe = PositionOf(FormOf(document), "T");
    const EditReport report = editor.RecalcCrossings();
    EXPECT_THAT(CountsOf(report), ElementsAre("1 crossings found"));
    ASSERT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", side == 'L' ? "XL" : "XR", "T"));
    const VornComposedPnt& crossing = FormOf(document).GetComposedPntArray()[1];
    EXPECT_FALSE(crossing.GetSeriesPnt());
    const TamWorld2 at = crossing.Pos();
    EXPECT_NEAR(at.y, 8.1230 - (at.x + 90.0) / 180.0 * 0.1110, 1e-6);
    EXPECT_NEAR((at.x * (toe.y - 10.0)), (at.y - 10.0) * toe.x, 1e-6);
    EXPECT_EQ(FormOf(document).GetComposedPntArray()[2].GetExistence(), VORN_Existence::False);
    ExpectPositionsAreWritten(document, 10.0);
  }
}

TEST_P(EditorCrossing, IsTheSameWhenItIsRecomputedFromTheDocument) {
  for (const char side : {'L', 'R'}) {
    const std::string form =
        FormXml("S", kFillType, CenterXml() + PointXml("T", side, GetParam().type, GetParam().values));
    const std::string once = WithCrossings(OneSection(form + GroundXml({"-90.0000 8.1230", "90.0000 8.0120"})), 10.0);
    EXPECT_EQ(WithCrossings(once, 10.0), once);
  }
}

TEST(EditorCrossings, AreFoundOnBothSides) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  const EditReport report = editor.RecalcCrossings();
  EXPECT_THAT(CountsOf(report), ElementsAre("2 crossings found"));
  EXPECT_THAT(WhatOf(report.changes), ElementsAre("left XL at -6.3950, right XR at 6.3950"));
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "L1", "XL", "L2", "R1", "XR", "R2"));
  ExpectAt(FormOf(document), "XL", -6.395, 8.0);
  ExpectAt(FormOf(document), "L2", -9.5, 5.93);
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorCrossings, KeepPercentsAndRatiosOfTheSegmentThatTheyCut) {
  const std::string written = WithCrossings(OneSection(FillForm() + FlatGround("8.0000")), 10.0);
  ExpectInOrder(written, {"code=\"L2\"", "dataType=\"Rate\"", " 1.500</tsf:ComposedPnt>"});
}

TEST(EditorCrossings, AreFoundWhereTheFormBeginsBesideTheCentreLine) {
  const std::string form =
      FormXml("S", kFillType,
              CenterXml("2.5000 -0.2500") + PointXml("L1", 'L', "Percent", "3.5000 -2.000") +
                  PointXml("L2", 'L', "Rate", "-4.0000 1.500") + PointXml("R1", 'R', "Percent", "0.5000 0.000") +
                  PointXml("R2", 'R', "Rate", "-4.0000 1.500"));
  DesignDocument document = ReadText(OneSection(form + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  ExpectAt(FormOf(document), "XL", 2.5 - 3.5 - 1.5 * 1.68, 8.0);
  ExpectAt(FormOf(document), "XR", 2.5 + 0.5 + 1.5 * 1.75, 8.0);
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorCrossings, LeaveEveryPointInItsPlaceWhenTheSidesAreInterleaved) {
  const std::string form = FormXml(
      "S", kFillType,
      CenterXml() + PointXml("L1", 'L', "Rate", "-3.0000 1.500") + PointXml("R1", 'R', "Percent", "3.5000 -2.000") +
          PointXml("L2", 'L', "WidthHeight", "9.0000 -4.0000") + PointXml("R2", 'R', "WidthHeight", "9.5000 -4.0000"));
  DesignDocument document = ReadText(OneSection(form + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  ExpectAt(FormOf(document), "XL", -3.0, 8.0);
  ExpectAt(FormOf(document), "L2", -9.0, 6.0);
  ExpectAt(FormOf(document), "R2", 9.5, 6.0);
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorCrossings, LieOnTheFirstOfSeveralForms) {
  DesignDocument document = ReadText(OneSection(FillForm("S") + LayerForm("P") + FillForm("T") + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  EXPECT_THAT(CodesOf(FormOf(document, 0)), Contains("XL"));
  EXPECT_THAT(CodesOf(FormOf(document, 1)), ElementsAre("CL", "L1", "R1"));
  EXPECT_THAT(CodesOf(FormOf(document, 2)), Not(Contains("XL")));
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorCrossings, ChangeNothingTheSecondTime) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  EXPECT_FALSE(editor.RecalcCrossings().HasChanged());
}

TEST(EditorCrossings, AreTheSameOnGroundNearlyParallelToTheDesign) {
  // What a point moves by rounding, its crossing moves many times over.
  for (const char* type : {"WidthHeight", "Percent"}) {
    for (int i = 1; i < 40; ++i) {
      const std::string values = "33.3" + std::to_string(100 + 7 * i) + " -1." + std::to_string(100 + 13 * i);
      const std::string form =
          FormXml("S", kFillType,
                  CenterXml() + PointXml("L1", 'L', "Percent", "3.5000 -2.000") + PointXml("L2", 'L', type, values));
      // From just above the one end of the design to just below the other.
      const std::string text = OneSection(
          form + GroundXml({std::string("-37.0000 ") + (i % 2 == 0 ? "9.0000" : "9.8000"), "3.0000 9.4321"}));
      const double height = i % 3 == 0 ? 10.0 : 9.7;
      const std::string once = WithCrossings(text, height);
      EXPECT_TRUE(WithCrossings(once, height) == once) << once << WithCrossings(once, height);
    }
  }
}

TEST(EditorCrossings, StayWhereTheDesignOnlyJustReachesTheGround) {
  for (int i = -30; i <= 30; ++i) {
    const double height = 10.0 + i * 1e-5;
    const std::string once = WithCrossings(OneSection(FillForm() + FlatGround("5.9300")), height);
    EXPECT_EQ(WithCrossings(once, height), once) << height;
  }
}

TEST(EditorCrossings, MoveOutToAFartherOneOfTheSameSegment) {
  const auto groundAt = [](std::string_view outer) {
    return GroundXml({"-50.0000 " + std::string(outer), "-8.0000 " + std::string(outer), "-7.0000 8.0000",
                      "-6.0000 8.0000", "50.0000 8.0000"});
  };
  // First the slope meets the ground at 8 m height; then a ridge outside reaches above the slope once more.
  std::string text = WithCrossings(OneSection(FillForm() + groundAt("8.0000")), 10.0);
  const TamWorld2 first = [&] {
    DesignDocument document = ReadText(text);
    Place(document, 10.0);
    return PositionOf(FormOf(document), "XL");
  }();
  EXPECT_NEAR(first.x, -6.395, 2e-4);
  text = With(text, "<tsf:ExistingComposedPnt name=\"G3\">-7.0000 8.0000",
              "<tsf:ExistingComposedPnt name=\"G3\">-7.0000 7.0000");
  DesignDocument document = ReadText(WithCrossings(text, 10.0));
  Place(document, 10.0);
  EXPECT_LT(PositionOf(FormOf(document), "XL").x, -7.0);
}

TEST(EditorCrossings, AreMissedBetweenTheStartAndTheFirstPointBehindTheOtherSide) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PointXml("L1", 'L', "WidthHeight", "4.0000 0.0000") +
                                       PointXml("R1", 'R', "WidthHeight", "4.0000 -4.0000"));
  DesignDocument document = ReadText(OneSection(form + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  EXPECT_THAT(WhatOf(editor.RecalcCrossings().remarks),
              ElementsAre("the left does not meet the ground",
                          "the right meets the ground where no crossing point can be inserted"));
}

TEST(EditorCrossings, OfEverySampleAreTheSameWhenTheyAreRecomputed) {
  for (const std::string& sample : kSamples) {
    if (sample == "river-2.0.xml") continue;  // that edition holds no existing ground
    DesignDocument document = Sample(sample);
    const std::string text = WriteText(document);
    for (const double height : {72.0, 64.3, 78.25}) {
      const std::string once = WithCrossings(text, height);
      EXPECT_TRUE(WithCrossings(once, height) == once) << sample << " " << height;
    }
  }
}

TEST(EditorCrossings, OfEverySampleAreWritten) {
  for (const std::string& sample : kSamples) {
    for (const double height : {72.0, 64.3, 78.25}) {
      DesignDocument document = Sample(sample);
      DesignEditor editor(document);
      editor.Recalc(height);
      editor.RecalcCrossings();
      ExpectPositionsAreWritten(document, height);
    }
  }
}

TEST(EditorCrossings, AreMovedWhenTheGroundMoves) {
  const std::string once = WithCrossings(OneSection(FillForm() + FlatGround("8.0000")), 10.0);
  DesignDocument document = ReadText(once);
  for (VornExistingComposedPnt& point : SectionOf(document).GetExistingBuildFormArray()[0].GetComposedPntArray()) {
    point.SetGh(7.0);
  }
  DesignEditor editor(document);
  editor.Recalc(10.0);
  EXPECT_TRUE(editor.RecalcCrossings().HasChanged());
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "L1", "XL", "L2", "R1", "XR", "R2"));
  ExpectAt(FormOf(document), "XL", -3.5 - 1.5 * 2.93, 7.0, 2e-4);
  ExpectAt(FormOf(document), "L2", -9.5, 5.93, 2e-4);
}

TEST(EditorCrossings, AreTakenBackWhereTheGroundIsOutOfReach) {
  const std::string once = WithCrossings(OneSection(FillForm() + FlatGround("8.0000")), 10.0);
  DesignDocument document = ReadText(once);
  DesignEditor editor(document);
  editor.Recalc(30.0);
  const EditReport report = editor.RecalcCrossings();
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "L1", "L2", "R1", "R2"));
  EXPECT_THAT(WhatOf(report.remarks),
              ElementsAre("the left does not meet the ground", "the right does not meet the ground"));
  EXPECT_THAT(WhatOf(report.changes), ElementsAre("left without a crossing, right without a crossing"));
  EXPECT_EQ(WriteText(document).find("existence=\"false\""), std::string::npos);
}

TEST(EditorCrossings, GiveTheDesignBackWhenTheyAreTakenBack) {
  int crossings = 0;
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    if (vorn_host::IsEdition20(document.edition)) continue;
    for (VornXSections& set : document.sets) set.GetFormCtrlTargetArray().RemoveAll();
    const auto withGroundAt = [](const std::string& text, double height) {
      DesignDocument moved = ReadText(text);
      for (VornXSections& set : moved.sets) {
        for (VornXSection& section : set.GetXSectionArray()) {
          for (VornExistingComposedPnt& point : section.GetExistingBuildFormArray()[0].GetComposedPntArray()) {
            point.SetGh(height);
          }
        }
      }
      return WithCrossings(WriteText(moved), 10.0);
    };
    const std::string outOfReach = withGroundAt(WriteText(document), -900.0);
    std::string text = withGroundAt(outOfReach, 8.123);
    crossings += text.find("\"XL\"") != std::string::npos ? 1 : 0;
    for (const double height : {8.77, 7.456, 9.333, 8.123}) text = withGroundAt(text, height);
    EXPECT_TRUE(withGroundAt(text, -900.0) == outOfReach) << sample;
  }
  EXPECT_GE(crossings, 1);
}

TEST(EditorCrossings, AreTakenForWhatTheyAreWithoutTheirCodes) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  editor.ClearCodes();
  editor.RecalcCrossings();
  EXPECT_EQ(FormOf(document).GetComposedPntArray().GetSize(), 7);
}

TEST(EditorCrossings, RemarkTargetsBeyondThem) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm() + FlatGround("8.0000")) +
                         TargetXml("SlopeLength", "20.0000", "Shoulder Toe", {{"S", "L1"}, {"S", "L2"}})));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  const EditReport report = editor.RecalcCrossings();
  EXPECT_THAT(WhatOf(report.remarks), ElementsAre(HasSubstr("beyond the crossings")));
  EXPECT_THAT(report.remarks[0].path, HasSubstr("station 20.0000"));
}

TEST(EditorCrossings, StayWhereThereIsNoGround) {
  const std::string form = FormXml("S", kFillType, CenterXml() + PointXml("XL", 'L', "Rate", "-4.0000 1.500", false));
  DesignDocument document = ReadText(OneSection(form));
  const std::string before = WriteText(document);
  DesignEditor editor(document);
  const EditReport report = editor.RecalcCrossings();
  EXPECT_FALSE(report.HasChanged());
  EXPECT_THAT(WhatOf(report.remarks), ElementsAre("there is no existing ground"));
  EXPECT_EQ(WriteText(document), before);
}

TEST(EditorCrossings, KeepDesignPointsWithTheWholeOfTheirCodes) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PointXml("L1", 'L', "Percent", "3.5000 -2.000") +
                                       PointXml("KE-L-2", 'L', "Rate", "-1.0000 1.500", false) +
                                       PointXml("L3", 'L', "Rate", "-3.0000 1.500"));
  DesignDocument document = ReadText(OneSection(form + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "L1", "KE-L-2", "XL", "L3"));
  EXPECT_TRUE(FormOf(document).GetComposedPntArray()[2].GetSeriesPnt()) << "the line goes on through it now";
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorCrossings, MarkADesignPointThatLiesOnTheGround) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PointXml("A-1", 'L', "WidthHeight", "4.0000 -2.0000") +
                                       PointXml("A-2", 'L', "WidthHeight", "1.0000 -1.0000"));
  const std::string once = WithCrossings(OneSection(form + FlatGround("8.0000")), 10.0);
  EXPECT_THAT(once, AllOf(HasSubstr("code=\"A-1\" location=\"Left\" componentType=\"Roadbed\" seriesPnt=\"false\""),
                          Not(HasSubstr("XL")), HasSubstr("existence=\"false\">1.0000 -1.0000")));
  EXPECT_EQ(WithCrossings(once, 10.0), once);
}

TEST(EditorCrossings, KeepTheCodeOfTheStartPointBesideAnotherCentrePoint) {
  const std::string centre =
      "        <tsf:ComposedPnt code=\"M-1\" location=\"Center\" seriesPnt=\"false\" dataType=\"WidthHeight\" "
      "existence=\"true\">0.0000 0.0000</tsf:ComposedPnt>\n";
  const std::string form = FormXml("S", kFillType,
                                   CenterXml() + PointXml("L1", 'L', "Rate", "-3.0000 1.500") + centre +
                                       PointXml("R1", 'R', "Rate", "-3.0000 1.500"));
  DesignDocument document = ReadText(OneSection(form + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.RecalcCrossings();
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "XL", "L1", "M-1", "XR", "R1"));
}

TEST(EditorCrossings, NeedElevations) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + SectionXml("40.0000", FillForm() + FlatGround("8.0000"))));
  DesignEditor editor(document);
  EXPECT_THAT(ErrorOf([&] { editor.RecalcCrossings(); }),
              AllOf(HasSubstr("station 40.0000"), HasSubstr("elevations"), HasSubstr("recalculate")));
}

TEST(EditorCrossings, NeedAPlanSurfaceThatBeginsAtTheCentre) {
  const std::string form = FormXml(
      "S", kFillType, PointXml("L0", 'L', "Percent", "1.0000 0.000") + PointXml("L1", 'L', "Rate", "-4.0000 1.500"));
  DesignDocument document = ReadText(OneSection(form + FlatGround("8.0000")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  EXPECT_THAT(ErrorOf([&] { editor.RecalcCrossings(); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("form S"), HasSubstr("centre point")));
}

TEST(EditorCrossings, TakeALayerThatBeginsAnywhere) {
  const std::string wall = FormXml(
      "W", "擁壁工",
      PointXml("W0", 'L', "WidthHeight", "1.0000 0.0000") + PointXml("W1", 'L', "WidthHeight", "0.5000 2.0000"));
  const std::string text = OneSection(FillForm() + wall + FlatGround("8.0000"));
  const std::string written = WithCrossings(text, 10.0);
  EXPECT_THAT(written, AllOf(HasSubstr("XL"), HasSubstr(wall)));
}

// --- mirror and shift ----------------------------------------------------------------------------------------------

TEST(EditorMirror, ExchangesLeftAndRight) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml("0.5000 0.0000") + PointXml("L1", 'L', "Percent", "3.5000 -2.000") +
                                       PointXml("R1", 'R', "Rate", "-4.0000 1.500"));
  DesignDocument document = ReadText(OneSection(form + GroundXml({"-20.0000 8.0000", "30.0000 9.0000"})));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.Mirror();
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "R1", "L1"));
  ExpectAt(FormOf(document), "L1", 3.0, 9.93);
  ExpectAt(FormOf(document), "R1", -6.5, 6.0);
  const auto& ground = SectionOf(document).GetExistingBuildFormArray()[0].GetComposedPntArray();
  EXPECT_EQ(ground[0].GetCLDist().Value(), -30.0);
  EXPECT_EQ(ground[0].GetGh().Value(), 9.0);
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorMirror, TwiceGivesTheSameDocument) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    const std::string before = WriteText(document);
    DesignEditor editor(document);
    editor.Mirror();
    const std::string mirrored = WriteText(document);
    EXPECT_FALSE(mirrored == before) << sample;
    EXPECT_TRUE(Edited(mirrored, [](DesignEditor& again) { again.Mirror(); }) == before) << sample;
    editor.Mirror();
    EXPECT_TRUE(WriteText(document) == before) << sample;
  }
}

TEST(EditorMirror, NeedsFormsThatBeginAtTheCentre) {
  const std::string form = FormXml(
      "W", "",
      PointXml("W0", 'L', "WidthHeight", "1.0000 0.0000") + PointXml("W1", 'L', "WidthHeight", "0.5000 2.0000"));
  DesignDocument document = ReadText(OneSection(FillForm() + form));
  EXPECT_THAT(ErrorOf([&] { DesignEditor(document).Mirror(); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("form W")));
}

TEST(EditorMirror, TellsNoTargetAsLostThatNamedNothingBefore) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + WidthXml("20.0000", "S", "XL", "R1")));
  DesignEditor editor(document);
  editor.Mirror();
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(EditorMirror, KeepsATargetOnTwoSidesWhereOneCrossingIsNotThere) {
  const std::string form = FormXml("S", kFillType, FillPoints() + PointXml("XL", 'L', "Percent", "6.0000 -2.000"));
  DesignDocument document = ReadText(DesignXml(SectionXml("20.0000", form) + WidthXml("20.0000", "S", "XL", "XR")));
  DesignEditor editor(document);
  editor.Mirror();
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S XR, 20 S XL")) << "it would measure from a point to itself";
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
  editor.Mirror();
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S XL, 20 S XR"));
}

TEST(EditorMirror, NamesCrossingPointsForTheirSide) {
  const std::string crossed =
      WithCrossings(DesignXml(SectionXml("20.0000", FillForm() + FlatGround("8.0000")) +
                              TargetXml("SlopeLength", "20.0000", "Shoulder Toe", {{"S", "L1"}, {"S", "XL"}})),
                    10.0);
  DesignDocument document = ReadText(crossed);
  DesignEditor editor(document);
  editor.Mirror();
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("CL", "R1", "XL", "R2", "L1", "XR", "L2"));
  EXPECT_THAT(TargetsOf(document), ElementsAre(HasSubstr("XR")));
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(EditorMirror, PutsEveryPointOfTheSamplesOppositeItsPlace) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    DesignEditor editor(document);
    editor.Recalc(70.0);
    editor.Mirror();
    ExpectPositionsAreWritten(document, 70.0);
  }
}

TEST(EditorMirror, KeepsTheShapeWhenTheSidesAreInterleaved) {
  const std::string form =
      FormXml("S", kFillType,
              CenterXml("1.0000 0.0000") + PointXml("L1", 'L', "Percent", "3.5000 -2.000") +
                  PointXml("R1", 'R', "Percent", "3.5000 -2.000") + PointXml("L2", 'L', "Rate", "-4.0000 3.000") +
                  PointXml("R2", 'R', "Rate", "-4.0000 3.000"));
  DesignDocument document = ReadText(OneSection(form));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.Mirror();
  ExpectAt(FormOf(document), "L2", 11.0, 6.0);
  ExpectAt(FormOf(document), "R2", -13.0, 6.0);
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorMirror, MovesACentrePointInsideTheForm) {
  for (const char* type : {"WidthHeight", "Percent", "Rate"}) {
    const std::string form = FormXml("S", kFillType,
                                     CenterXml("1.0000 0.0000") + PointXml("M", 'C', type, "2.0000 -1.500") +
                                         PointXml("R1", 'R', "Percent", "3.5000 -2.000"));
    DesignDocument document = ReadText(OneSection(form));
    DesignEditor editor(document);
    editor.Recalc(10.0);
    const TamWorld2 before = PositionOf(FormOf(document), "M");
    editor.Mirror();
    ExpectAt(FormOf(document), "M", -before.x, before.y);
    ExpectPositionsAreWritten(document, 10.0);
  }
}

TEST(EditorMirror, MirrorsBeforeTheElevationsAreKnown) {
  const std::string text = OneSection(FillForm());
  const std::string unplaced = Edited(text, [](DesignEditor& editor) { editor.Mirror(); });
  const std::string placed = Edited(text, [](DesignEditor& editor) {
    editor.Recalc(10.0);
    editor.Mirror();
  });
  EXPECT_EQ(unplaced, placed);
}

TEST(EditorShift, MovesThePointsSideways) {
  DesignDocument document = ReadText(OneSection(FillForm() + LayerForm("P")));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  const EditReport report = editor.Shift(-0.75, 0.0);
  ExpectAt(FormOf(document, 0), "L2", -10.25, 5.93);
  ExpectAt(FormOf(document, 1), "R1", 2.25, 9.89);
  EXPECT_THAT(CountsOf(report), ElementsAre("8 points shifted"));
  EXPECT_THAT(report.notes, IsEmpty());
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorShift, OfAHeightMovesNoSlopedPointEither) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    EXPECT_THAT(DesignEditor(document).Shift(0.0, 1.0).counts, IsEmpty()) << sample;
  }
}

TEST(EditorShift, OfTheLastDecimalIsWritten) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  DesignEditor(document).Shift(0.0001, 0.0);
  EXPECT_THAT(WriteText(document), HasSubstr(">0.0001 0.0000<"));
}

TEST(EditorShift, AddsUp) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.Shift(1.0, 0.0);
  editor.Shift(0.5, 0.0);
  ExpectAt(FormOf(document), "L2", -8.0, 5.93);
  editor.Mirror();
  ExpectAt(FormOf(document), "L2", 8.0, 5.93);
  editor.Shift(0.25, 0.0);
  ExpectAt(FormOf(document), "L2", 8.25, 5.93);
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorShift, MovesAFormOfOnePoint) {
  DesignDocument document = ReadText(OneSection(FormXml("S", kFillType, CenterXml())));
  DesignEditor editor(document);
  const EditReport report = editor.Shift(1.0, 0.0);
  EXPECT_THAT(CountsOf(report), ElementsAre("1 points shifted"));
  EXPECT_EQ(FormOf(document).GetComposedPntArray()[0].GetX(), 1.0);
}

TEST(EditorShift, LeavesASectionWithoutForms) {
  DesignDocument document = ReadText(OneSection(FlatGround("8.0000")));
  EXPECT_FALSE(DesignEditor(document).Shift(1.0, 2.0).HasChanged());
}

TEST(EditorShift, TellsThatCrossingsHaveToBeRecomputed) {
  DesignDocument document = ReadText(OneSection(FillForm() + FlatGround("8.0000")));
  EXPECT_THAT(DesignEditor(document).Shift(1.0, 0.0).notes, ElementsAre(HasSubstr("recomputed")));
}

TEST(EditorShift, NotesAHeightAndMovesNothingForIt) {
  const std::string text = OneSection(FillForm());
  DesignDocument document = ReadText(text);
  DesignEditor editor(document);
  const EditReport report = editor.Shift(0.0, 2.0);
  EXPECT_THAT(report.notes, ElementsAre(HasSubstr("moves no point")));
  EXPECT_THAT(report.counts, IsEmpty());
  EXPECT_EQ(WriteText(document), Rewritten(text));
}

TEST(EditorShift, ThereAndBackGivesTheSameDocument) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    const std::string before = WriteText(document);
    const std::string there = Edited(before, [](DesignEditor& editor) { editor.Shift(0.3333, 0.0); });
    EXPECT_FALSE(there == before) << sample;
    EXPECT_TRUE(Edited(there, [](DesignEditor& editor) { editor.Shift(-0.3333, 0.0); }) == before) << sample;
  }
}

TEST(EditorShift, OfTheSamplesIsWritten) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    DesignEditor editor(document);
    editor.Recalc(70.0);
    editor.Shift(0.1234, 0.0);
    ExpectPositionsAreWritten(document, 70.0);
  }
}

TEST(EditorShift, OfNothingChangesNothing) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  EXPECT_FALSE(DesignEditor(document).Shift(0.0, 0.0).HasChanged());
}

TEST(EditorShift, NeedsFormsThatBeginAtTheCentre) {
  const std::string form = FormXml(
      "W", "",
      PointXml("W0", 'L', "WidthHeight", "1.0000 0.0000") + PointXml("W1", 'L', "WidthHeight", "0.5000 2.0000"));
  DesignDocument document = ReadText(OneSection(FillForm() + form));
  EXPECT_THAT(ErrorOf([&] { DesignEditor(document).Shift(1.0, 0.0); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("form W")));
}

// --- work types ----------------------------------------------------------------------------------------------------

TEST(EditorRetype, SplitsAFormForDifferentTypes) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  const EditReport report = editor.Retype(kCut, kFill);
  EXPECT_THAT(FormNames(document), ElementsAre("切土工", "盛土工"));
  EXPECT_THAT(CodesOf(FormOf(document, 0)), ElementsAre("CL", "L1", "L2"));
  EXPECT_THAT(CodesOf(FormOf(document, 1)), ElementsAre("CL", "R1", "R2"));
  EXPECT_THAT(WhatOf(report.changes), ElementsAre("split into 切土工 and 盛土工"));
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(EditorRetype, SplitThenJoinedGivesTheSameDocument) {
  const std::string text = OneSection(FillForm(kFillType));
  const std::string split = Edited(text, [](DesignEditor& editor) { editor.Retype(kCut, kFill); });
  EXPECT_EQ(Edited(split, [](DesignEditor& editor) { editor.Retype(kFill, kFill); }), Rewritten(text));
}

TEST(EditorRetype, KeepsTheShapeOfInterleavedSides) {
  const std::string form = FormXml("S", kFillType,
                                   CenterXml("1.0000 0.0000") + PointXml("L1", 'L', "Percent", "3.5000 -2.000") +
                                       PointXml("R1", 'R', "Percent", "3.5000 -2.000") +
                                       PointXml("L2", 'L', "WidthHeight", "9.0000 -4.0000") +
                                       PointXml("R2", 'R', "WidthHeight", "9.0000 -4.0000"));
  DesignDocument document = ReadText(OneSection(form));
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.Retype(kCut, kFill);
  ExpectAt(FormOf(document, 0), "L2", -8.0, 6.0);
  ExpectAt(FormOf(document, 1), "R2", 10.0, 6.0);
  ExpectPositionsAreWritten(document, 10.0);
  editor.Retype(kFill, kFill);
  ExpectAt(FormOf(document), "L2", -8.0, 6.0);
  ExpectAt(FormOf(document), "R2", 10.0, 6.0);
  ExpectPositionsAreWritten(document, 10.0);
}

std::string Half(std::string_view name, std::string_view type, std::string_view start, char side, char letter) {
  return FormXml(name, type, CenterXml(start) + PointXml(std::string(1, letter) + "1", side, "Rate", "-4.0000 1.500"));
}

/// Nothing of the section changes, and a remark tells why.
void ExpectNotJoined(const std::string& forms, const std::string& reason) {
  const std::string text = OneSection(forms);
  DesignDocument document = ReadText(text);
  const EditReport report = DesignEditor(document).Retype(kFill, kFill);
  EXPECT_FALSE(report.HasChanged());
  EXPECT_THAT(WhatOf(report.remarks), ElementsAre(HasSubstr(reason)));
  EXPECT_EQ(WriteText(document), Rewritten(text));
}

TEST(EditorRetype, KeepsHalvesThatBeginAtDifferentPlacesApart) {
  ExpectNotJoined(Half("A", "切土工", "0.0000 0.0000", 'L', 'L') + Half("B", "盛土工", "2.0000 -1.0000", 'R', 'R'),
                  "one centre point");
  const std::string loose =
      FormXml("B", "盛土工",
              PointXml("R0", 'R', "WidthHeight", "0.0000 0.0000") + PointXml("R1", 'R', "Rate", "-4.0000 1.500"));
  ExpectNotJoined(Half("A", "切土工", "0.0000 0.0000", 'L', 'L') + loose, "one centre point");
}

TEST(EditorRetype, KeepsHalvesWithPointsOfOneCodeApart) {
  ExpectNotJoined(Half("A", "切土工", "0.0000 0.0000", 'L', 'P') + Half("B", "盛土工", "0.0000 0.0000", 'R', 'P'),
                  "points of one code");
}

TEST(EditorRetype, TellsWhenTheRightHalfStandsFirst) {
  ExpectNotJoined(Half("A", "切土工", "0.0000 0.0000", 'R', 'R') + Half("B", "盛土工", "0.0000 0.0000", 'L', 'L'),
                  "sort them first");
}

TEST(EditorRetype, LeadsTargetsOfHalvesWithOneName) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", Half("A", "盛土工", "0.0000 0.0000", 'L', 'L') +
                                                   Half("A", "盛土工", "0.0000 0.0000", 'R', 'R')) +
                         WidthXml("20.0000", "A", "L1", "R1")));
  DesignEditor editor(document);
  editor.Retype(kCut, kFill);
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(EditorRetype, LeadsTargetsToTheHalfThatHoldsTheirCode) {
  DesignDocument document = ReadText(
      DesignXml(SectionXml("20.0000", FillForm()) + WidthXml("20.0000", "S", "L1", "R1") +
                WidthXml("20.0000", "S", "R1", "R2") + TargetXml("Height", "20.0000", "TargetPnt", {{"S", "CL"}})));
  DesignEditor editor(document);
  editor.Retype(kCut, kFill);
  EXPECT_THAT(TargetsOf(document),
              ElementsAre("20 切土工 L1, 20 盛土工 R1", "20 盛土工 R1, 20 盛土工 R2", "20 切土工 CL"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
  editor.Retype(kFill, kFill);
  EXPECT_THAT(TargetsOf(document),
              ElementsAre("20 盛土工 L1, 20 盛土工 R1", "20 盛土工 R1, 20 盛土工 R2", "20 盛土工 CL"));
}

TEST(EditorRetype, LeavesTheTargetsOfAFormBehindTheOneThatIsSplit) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm() + LayerForm("P")) + WidthXml("20.0000", "P", "CL", "R1")));
  DesignEditor editor(document);
  editor.Retype(kCut, kFill);
  EXPECT_THAT(FormNames(document), ElementsAre("切土工", "盛土工", "P"));
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 P CL, 20 P R1"));
}

TEST(EditorRetype, LeadsTargetsToTheJoinedFormAndNotToTheOneBehind) {
  const auto half = [](std::string_view name, char side) {
    const std::string code(1, side);
    return FormXml(name, kFillType, CenterXml() + PointXml(code + "1", side, "Rate", "-4.0000 1.500"));
  };
  DesignDocument document = ReadText(DesignXml(SectionXml("20.0000", half("A", 'L') + half("B", 'R') + LayerForm("P")) +
                                               TargetXml("Width", "20.0000", "Left Right", {{"A", "L1"}, {"B", "R1"}}) +
                                               WidthXml("20.0000", "P", "L1", "R1")));
  DesignEditor editor(document);
  editor.Retype(kFill, kFill);
  EXPECT_THAT(FormNames(document), ElementsAre("盛土工", "P"));
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 盛土工 L1, 20 盛土工 R1", "20 P L1, 20 P R1"));
}

TEST(EditorRetype, LeavesATargetThatNamedNothing) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm("A") + LayerForm("P")) + WidthXml("20.0000", "P", "L2", "R2")));
  DesignEditor editor(document);
  editor.Retype(kFill, kFill);
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 P L2, 20 P R2"));
}

TEST(EditorRetype, LeavesTargetsOfOtherSections) {
  DesignDocument document = ReadText(DesignXml(
      SectionXml("0.0000", LayerForm("S")) + SectionXml("20.0000", FillForm()) + WidthXml("0.0000", "S", "L1", "R1")));
  DesignEditor editor(document);
  const EditReport report = editor.Retype(kCut, kFill);
  EXPECT_THAT(TargetsOf(document), ElementsAre("0 S L1, 0 S R1"));
  EXPECT_THAT(WhatOf(report.remarks), ElementsAre("there are neither one nor two plan surfaces"));
}

TEST(EditorRetype, LeavesSectionsWhoseFirstFormsAreNotThePlanSurfaces) {
  const std::string layerFirst = LayerForm("P") + FillForm();
  const std::string twoWholes = FillForm() + FillForm("T");
  const std::string between = FillForm() + LayerForm("P") + FillForm("T");
  for (const std::string& forms : {layerFirst, twoWholes, between, LayerForm("P")}) {
    const std::string text = OneSection(forms);
    DesignDocument document = ReadText(text);
    const EditReport report = DesignEditor(document).Retype(kCut, kCut);
    EXPECT_FALSE(report.HasChanged());
    EXPECT_EQ(report.remarks.size(), 1U);
    EXPECT_EQ(WriteText(document), Rewritten(text));
  }
}

TEST(EditorRetype, RefusesANameThatAnotherFormHas) {
  DesignDocument document = ReadText(OneSection(FillForm() + LayerForm("盛土工")));
  EXPECT_THAT(ErrorOf([&] { DesignEditor(document).Retype(kCut, kFill); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("盛土工")));
}

TEST(EditorRetype, TellsATypeThatIsNoPlanSurface) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  EXPECT_THAT(DesignEditor(document).Retype(CString("X"), CString("X")).notes, ElementsAre(HasSubstr("X is not")));
}

TEST(EditorRetype, KeepsEverySampleValid) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    const std::size_t before = vorn_host::CheckDocument(document).size();
    DesignEditor(document).Retype(kCut, kFill);
    EXPECT_EQ(vorn_host::CheckDocument(document).size(), before) << sample;
  }
}

TEST(EditorRetype, RenamesAFormOfOneType) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + WidthXml("20.0000", "S", "L1", "R1")));
  DesignEditor editor(document);
  EXPECT_THAT(WhatOf(editor.Retype(kCut, kCut).changes), ElementsAre("typed 切土工"));
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 切土工 L1, 20 切土工 R1"));
  EXPECT_FALSE(editor.Retype(kCut, kCut).HasChanged());
}

// --- order, removing and renaming ----------------------------------------------------------------------------------

TEST(EditorSort, PutsTheNamedFormsFirstAndTheOthersBehind) {
  DesignDocument document = ReadText(OneSection(FillForm("S") + LayerForm("P") + LayerForm("Q")));
  DesignEditor editor(document);
  const EditReport report = editor.SortForms(Names({"q", "absent", "S", "Q"}));
  EXPECT_THAT(FormNames(document), ElementsAre("Q", "S", "P"));
  EXPECT_THAT(WhatOf(report.changes), ElementsAre("order Q, S, P"));
}

TEST(EditorSort, KeepsFormsOfOneNameTogether) {
  DesignDocument document = ReadText(OneSection(LayerForm("P") + FillForm("S") + FillForm("P")));
  DesignEditor(document).SortForms(Names({"P"}));
  EXPECT_THAT(FormNames(document), ElementsAre("P", "P", "S"));
  EXPECT_THAT(CodesOf(FormOf(document, 1)), Contains("L2"));
}

TEST(EditorSort, LeavesTheNextFormASerialOfItsOwn) {
  DesignDocument document = ReadText(OneSection(FillForm("S") + LayerForm("P")));
  DesignEditor(document).SortForms(Names({"P"}));
  Vorn_BuildFormArray& forms = document.sets[0].GetXSectionArray()[0].GetBuildFormArray();
  const int added = forms.Add(VornBuildForm());
  EXPECT_THAT((std::array{forms[0].GetSerialID(), forms[1].GetSerialID()}), Not(Contains(forms[added].GetSerialID())));
}

TEST(EditorSort, AndBackGivesTheSameDocument) {
  const std::string text = OneSection(FillForm("S") + LayerForm("P") + LayerForm("Q"));
  const std::string sorted = Edited(text, [](DesignEditor& editor) { editor.SortForms(Names({"Q", "P"})); });
  EXPECT_NE(sorted, Rewritten(text));
  EXPECT_EQ(Edited(sorted, [](DesignEditor& editor) { editor.SortForms(Names({"S", "P"})); }), Rewritten(text));
}

TEST(EditorSort, InTheOrderThatTheFormsHaveChangesNothing) {
  DesignDocument document = ReadText(OneSection(FillForm("S") + LayerForm("P")));
  EXPECT_FALSE(DesignEditor(document).SortForms(Names({"S", "P"})).HasChanged());
}

TEST(EditorRemoveForm, TakesItsTargetsAlongInItsSectionOnly) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("0.0000", FillForm() + LayerForm("P")) + SectionXml("20.0000", FillForm()) +
                         WidthXml("0.0000", "P", "L1", "R1") + WidthXml("0.0000", "S", "L1", "R1") +
                         WidthXml("20.0000", "P", "L1", "R1")));
  DesignEditor editor(document);
  const EditReport report = editor.RemoveForm("P");
  EXPECT_THAT(FormNames(document), ElementsAre("S"));
  EXPECT_THAT(TargetsOf(document), ElementsAre("0 S L1, 0 S R1", "20 P L1, 20 P R1"));
  EXPECT_THAT(CountsOf(report), ElementsAre("1 forms removed", "1 control targets removed with their form"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty()) << "what named nothing before is not lost now";
}

TEST(EditorRemoveForm, TellsTheNewDesignSurface) {
  DesignDocument document = ReadText(OneSection(FillForm("S") + LayerForm("P")));
  EXPECT_THAT(WhatOf(DesignEditor(document).RemoveForm("S").changes),
              ElementsAre("S removed; P is the design surface now"));
}

TEST(EditorRemoveForm, RefusesTheOnlyOneOfASection) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("0.0000", FillForm() + LayerForm("P")) + SectionXml("20.0000", FillForm())));
  EXPECT_THAT(ErrorOf([&] { DesignEditor(document).RemoveForm("S"); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("the form S")));
}

TEST(EditorRemoveForm, ThatIsNotThereChangesNothing) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  EXPECT_FALSE(DesignEditor(document).RemoveForm("absent").HasChanged());
}

TEST(EditorRenameForm, RenamesTheTargetsOfItsSectionsOnly) {
  DesignDocument document = ReadText(
      DesignXml(SectionXml("0.0000", FillForm()) + SectionXml("20.0000", FormXml("S", "切土工", FillPoints())) +
                WidthXml("0.0000", "S", "L1", "R1") + WidthXml("20.0000", "S", "L1", "R1")));
  DesignEditor editor(document);
  const EditReport report = editor.RenameForm(kFill, "S", "T");
  EXPECT_THAT(FormNames(document, 0), ElementsAre("T"));
  EXPECT_THAT(FormNames(document, 1), ElementsAre("S"));
  EXPECT_THAT(TargetsOf(document), ElementsAre("0 T L1, 0 T R1", "20 S L1, 20 S R1"));
  EXPECT_THAT(CountsOf(report), ElementsAre("2 points of control targets renamed"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(EditorRenameForm, LeavesTheTargetsWithAFormThatKeepsTheName) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm() + LayerForm("S")) + WidthXml("20.0000", "S", "L1", "R1")));
  DesignEditor(document).RenameForm(kFill, "S", "T");
  EXPECT_THAT(FormNames(document), ElementsAre("T", "S"));
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S L1, 20 S R1"));
}

TEST(EditorRenameForm, LeavesATargetThatNamedNothing) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + WidthXml("20.0000", "S", "L99", "R1")));
  DesignEditor editor(document);
  editor.RenameForm(kFill, "S", "T");
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(EditorRenameForm, RefusesANameThatIsTaken) {
  DesignDocument document = ReadText(OneSection(FillForm() + LayerForm("P")));
  EXPECT_THAT(ErrorOf([&] { DesignEditor(document).RenameForm(kFill, "S", "P"); }),
              AllOf(HasSubstr("station 20.0000"), HasSubstr("a form P already")));
}

TEST(EditorRenameForm, ToItsOwnNameChangesNothing) {
  DesignDocument document = ReadText(OneSection(FillForm()));
  EXPECT_FALSE(DesignEditor(document).RenameForm(kFill, "S", "S").HasChanged());
}

TEST(EditorRenameForm, ThereAndBackGivesTheSameDocument) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    const std::string before = WriteText(document);
    const VornBuildForm form = FormOf(document);
    DesignEditor editor(document);
    EXPECT_TRUE(editor.RenameForm(form.GetXSectType(), form.GetName(), "X").HasChanged()) << sample;
    EXPECT_FALSE(WriteText(document) == before) << sample;
    editor.RenameForm(form.GetXSectType(), "X", form.GetName());
    EXPECT_TRUE(WriteText(document) == before) << sample;
  }
}

// --- codes and control targets -------------------------------------------------------------------------------------

TEST(EditorClearCodes, EmptiesThemAndTellsTheTargetsThatAreLost) {
  DesignDocument document = ReadText(DesignXml(SectionXml("20.0000", FillForm()) +
                                               TargetXml("Height", "20.0000", "TargetPnt", {{"S", "CL"}}) +
                                               TargetXml("Height", "20.0000", "TargetPnt", {{"S", "L9"}})));
  DesignEditor editor(document);
  EXPECT_THAT(CountsOf(editor.ClearCodes()), ElementsAre("5 codes emptied"));
  EXPECT_THAT(CodesOf(FormOf(document)), ElementsAre("", "", "", "", ""));
  EXPECT_THAT(editor.LostTargets(), ElementsAre(AllOf(HasSubstr("form S"), HasSubstr("names CL"))));
  EXPECT_FALSE(editor.ClearCodes().HasChanged());
}

TEST(EditorRegulate, CountsWhatItDoesInEachSection) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("0.0000", FillForm()) + SectionXml("20.0000", FillForm()) +
                         WidthXml("0.0000", "S", "R1", "L1") + WidthXml("20.0000", "S", "L1", "R1") +
                         WidthXml("20.0000", "S", "L1", "R1") + WidthXml("99.0000", "S", "L1", "R1")));
  DesignEditor editor(document);
  const EditReport report = editor.RegulateTargets();
  EXPECT_THAT(WhatOf(report.changes), ElementsAre("1 control targets put in order", "1 repeated ones removed"));
  EXPECT_THAT(CountsOf(report), ElementsAre("1 control targets put in order", "1 repeated control targets removed"));
  EXPECT_THAT(report.notes, ElementsAre(HasSubstr("1 control targets stand in no cross section")));
  EXPECT_THAT(TargetsOf(document), ElementsAre("0 S L1, 0 S R1", "20 S L1, 20 S R1", "99 S L1, 99 S R1"));
}

TEST(EditorRegulate, RemarksTargetsThatCannotBePutInOrder) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + WidthXml("20.0000", "S", "L9", "R1")));
  const EditReport report = DesignEditor(document).RegulateTargets();
  EXPECT_FALSE(report.HasChanged());
  ASSERT_EQ(report.remarks.size(), 1u);
  EXPECT_THAT(report.remarks[0].path, HasSubstr("station 20.0000"));
}

TEST(EditorRegulate, ChangesNothingTheSecondTime) {
  for (const std::string& sample : kSamples) {
    DesignDocument document = Sample(sample);
    const std::string once = Edited(WriteText(document), [](DesignEditor& editor) { editor.RegulateTargets(); });
    DesignDocument again = ReadText(once);
    EXPECT_FALSE(DesignEditor(again).RegulateTargets().HasChanged()) << sample;
    EXPECT_TRUE(WriteText(again) == once) << sample;
  }
}

TEST(EditorRegulate, PutsMirroredTargetsInOrder) {
  DesignDocument document =
      ReadText(DesignXml(SectionXml("20.0000", FillForm()) + WidthXml("20.0000", "S", "L1", "R1")));
  DesignEditor editor(document);
  editor.Mirror();
  EXPECT_TRUE(editor.RegulateTargets().HasChanged());
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S R1, 20 S L1"));
}

// --- edition 2.0 ---------------------------------------------------------------------------------------------------

/// One section with a fill form that has control targets on both sides.
DesignDocument In20(std::string_view name) {
  const auto point = [](const char* code, VornLocation side, SlopeType type, double x, double y) {
    return Point20(code, side, type, x, y);
  };
  DesignDocument document = DocumentOf(
      Edition::V20, {Section(20.0, {Form(name, {point("CL", VornLocation::Center, SlopeType::Unset, 0.0, 0.0),
                                                point("L1", VornLocation::Left, SlopeType::Percent, 3.5, -2.0),
                                                point("L2", VornLocation::Left, SlopeType::Rate, -4.0, 1.5),
                                                point("R1", VornLocation::Right, SlopeType::Percent, 3.5, -2.0),
                                                point("R2", VornLocation::Right, SlopeType::Rate, -4.0, 1.5)})})});
  Vorn_FormCtrlTargetArray& targets = FormOf(document).GetFormCtrlTargetArray();
  for (const char* codes : {"L1 L2", "R1 R2"}) {
    VornFormCtrlTarget target = Target20(codes);
    target.SetControlItem(VornFormCtrlTarget::ControlItem::SlopeLength);
    target.SetTargetPntType(VornFormCtrlTarget::TargetPntType::ShoulderToe);
    targets.Add(target);
  }
  return ReadText(WriteText(document));
}

std::vector<std::string> FormTargetsOf(DesignDocument& document, int form) {
  std::vector<std::string> codes;
  for (const VornFormCtrlTarget& target : FormOf(document, form).GetFormCtrlTargetArray()) {
    codes.push_back(Shown(target.GetCodeName()));
  }
  return codes;
}

TEST(Editor20, CountsTheTargetsThatGoWithTheirForm) {
  DesignDocument document = In20(kFillSurface.View());
  FormOf(document).SetName("S", false);
  SectionOf(document).GetBuildFormArray().Add(Form("T", {}));
  EXPECT_THAT(CountsOf(DesignEditor(document).RemoveForm("S")),
              ElementsAre("1 forms removed", "2 control targets removed with their form"));
}

TEST(Editor20, TellsNoTargetAsLostThatNamedNothingBefore) {
  DesignDocument document = In20(kFillSurface.View());
  FormOf(document).GetFormCtrlTargetArray().Add(Target20("XL R1"));
  DesignEditor editor(document);
  editor.Mirror();
  EXPECT_THAT(FormTargetsOf(document, 0), testing::Contains("XR R1")) << "the right crossing is the left one now";
  EXPECT_THAT(editor.LostTargets(), IsEmpty()) << "mirrored";
  const VornBuildForm& form = FormOf(document);
  editor.RenameForm(form.GetXSectType(), form.GetName(), "T");
  EXPECT_THAT(FormNames(document), ElementsAre("T"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty()) << "renamed";
  FormOf(document).GetComposedPntArray()[1].SetCode("L9");
  EXPECT_THAT(editor.LostTargets(), ElementsAre(HasSubstr("R1 R2) names R1"), HasSubstr("XR R1) names R1")))
      << "what did name something is lost";
}

TEST(Editor20, NamesCrossingPointsInTargetsForTheirSide) {
  DesignDocument document = In20(kFillSurface.View());
  VornComposedPnt& toe = FormOf(document).GetComposedPntArray()[2];
  toe.SetCode("XL");
  FormOf(document).GetFormCtrlTargetArray()[0].SetCode("L1 XL");
  DesignEditor(document).Mirror();
  EXPECT_THAT(FormTargetsOf(document, 0), ElementsAre("L1 XR", "R1 R2"));
}

TEST(Editor20, SplitsAFormWithItsTargets) {
  DesignDocument document = In20(kFillSurface.View());
  DesignEditor editor(document);
  editor.Recalc(10.0);
  editor.Retype(kCut, kFill);
  EXPECT_THAT(FormNames(document), ElementsAre("切土工", "盛土工"));
  EXPECT_THAT(FormTargetsOf(document, 0), ElementsAre("L1 L2"));
  EXPECT_THAT(FormTargetsOf(document, 1), ElementsAre("R1 R2"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
  ExpectPositionsAreWritten(document, 10.0);
}

TEST(Editor20, JoinsFormsWithTheirTargets) {
  DesignDocument document = In20(kFillSurface.View());
  DesignEditor editor(document);
  editor.Retype(kCut, kFill);
  editor.Retype(kFill, kFill);
  EXPECT_THAT(FormTargetsOf(document, 0), ElementsAre("L1 L2", "R1 R2"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(Editor20, ATargetAcrossBothHalvesIsRemovedAndCounted) {
  DesignDocument document = In20(kFillSurface.View());
  FormOf(document).GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  DesignEditor editor(document);
  EXPECT_THAT(CountsOf(editor.Retype(kCut, kFill)), ElementsAre("1 control targets across both halves removed"));
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(Editor20, CountsARemovedTargetBesideOneThatIsKeptInBothHalves) {
  DesignDocument document = In20(kFillSurface.View());
  FormOf(document).GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  FormOf(document).GetFormCtrlTargetArray().Add(Target20("L2 R2"));
  EXPECT_THAT(CountsOf(DesignEditor(document).Retype(kCut, kFill)),
              ElementsAre("1 control targets across both halves removed"));
}

TEST(Editor20, AHeightAtTheCentreIsInBothHalvesAndOnceInTheJoinedForm) {
  DesignDocument document = In20(kFillSurface.View());
  for (const char* codes : {"CL", "R1"}) {
    VornFormCtrlTarget height = Target20(codes);
    height.SetControlItem(VornFormCtrlTarget::ControlItem::Height);
    FormOf(document).GetFormCtrlTargetArray().Add(height);
  }
  DesignEditor editor(document);
  editor.Retype(kCut, kFill);
  EXPECT_THAT(FormTargetsOf(document, 0), ElementsAre("L1 L2", "CL"));
  EXPECT_THAT(FormTargetsOf(document, 1), ElementsAre("R1 R2", "CL", "R1"));
  EXPECT_THAT(CountsOf(editor.Retype(kFill, kFill)), ElementsAre("1 repeated control targets at the centre removed"));
  EXPECT_THAT(FormTargetsOf(document, 0), ElementsAre("L1 L2", "CL", "R1 R2", "R1"));
}

TEST(Editor20, RegulatesTheTargetsOfTheForms) {
  DesignDocument document = In20("S");
  FormOf(document).GetFormCtrlTargetArray().Add(Target20("R1 L1"));
  FormOf(document).GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  DesignEditor editor(document);
  const EditReport report = editor.RegulateTargets();
  EXPECT_THAT(CountsOf(report), ElementsAre("1 control targets put in order", "1 repeated control targets removed"));
  EXPECT_THAT(FormTargetsOf(document, 0), ElementsAre("L1 L2", "R1 R2", "L1 R1"));
}

TEST(Editor20, TellsTheTargetsThatAreLost) {
  DesignDocument document = In20("S");
  DesignEditor editor(document);
  editor.ClearCodes();
  EXPECT_EQ(editor.LostTargets().size(), 4u);
}

// --- several sets, and many sections -------------------------------------------------------------------------------

TEST(Editor, KeepsTheTargetsOfOneSetApartFromAnother) {
  const std::string set =
      SetXml(SectionXml("20.0000", FillForm() + LayerForm("P")) + WidthXml("20.0000", "S", "L1", "R1"));
  const std::string other = SetXml(SectionXml("20.0000", FormXml("S", "切土工", FillPoints()) + LayerForm("Q")) +
                                   WidthXml("20.0000", "S", "L1", "R1"));
  DesignDocument document = ReadText(Xml(Edition::V41, set + other));
  DesignEditor editor(document);
  editor.RenameForm(kFill, "S", "T");
  EXPECT_THAT(TargetsOf(document, 0), ElementsAre("20 T L1, 20 T R1"));
  EXPECT_THAT(TargetsOf(document, 1), ElementsAre("20 S L1, 20 S R1"));
}

TEST(Editor, TellsTheSectionsOfAChangeOfShapeApart) {
  const std::string behind =
      With(SectionXml("20.0000", FormXml("S", "切土工", FillPoints())), "\"20.0000\"", "\"20.0000\" xSectChg=\"true\"");
  const std::string target = WidthXml("20.0000", "S", "L1", "R1");
  DesignDocument document = ReadText(DesignXml(SectionXml("20.0000", FillForm()) + behind + target));
  DesignEditor editor(document);
  editor.RenameForm(kCut, "S", "T");
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S L1, 20 S R1"));
}

DesignDocument Road(int sections) {
  SampleOptions options;
  options.sections = sections;
  DesignDocument document = ToDocument(MakeSampleDesign(options));
  document.edition = Edition::V41;
  return document;
}

class EditorOfEdition : public testing::TestWithParam<Edition> {};

INSTANTIATE_TEST_SUITE_P(All, EditorOfEdition, testing::ValuesIn(kWritableEditions), EditionTestName);

TEST_P(EditorOfEdition, EditsARoadWithoutMovingAPoint) {
  DesignDocument document = Road(6);
  ConvertEdition(document, GetParam());
  const std::string text = WriteText(document);
  document = ReadText(text);
  DesignEditor editor(document);
  editor.Recalc(75.0);
  editor.RecalcCrossings();
  editor.Mirror();
  editor.Shift(0.25, 0.0);
  editor.SortForms(Names({"absent"}));
  editor.RegulateTargets();
  ExpectPositionsAreWritten(document, 75.0);
  EXPECT_THAT(editor.LostTargets(), IsEmpty());
}

TEST(Editor, RetypesTargetsOfEdition20ToTheSideOfTheFirstPointThatHasTheirCodeInWhateverCase) {
  using host_test::Point20;
  using SlopeType = VornComposedPnt::SlopeType;
  VornBuildForm form = host_test::Form("F", {host_test::Center()});
  form.SetXSectType(kFill);
  const auto add = [&](const char* code, VornLocation side) {
    form.GetComposedPntArray().Add(Point20(code, side, SlopeType::Percent, 1.0, -2.0));
  };
  add("a1", VornLocation::Left);
  add("A1", VornLocation::Right);
  add("R1", VornLocation::Right);
  add("cl", VornLocation::Left);
  for (const char* codes : {"A1", "r1", "CL", "a1 R1", "absent"}) {
    form.GetFormCtrlTargetArray().Add(host_test::Target20(codes));
  }
  DesignDocument document = host_test::DocumentOf(Edition::V20, {host_test::Section(0.0, {form})});
  DesignEditor(document).Retype(kCut, kCut);
  std::vector<VornLocation> sides;
  for (const VornFormCtrlTarget& target : FormOf(document).GetFormCtrlTargetArray()) sides.push_back(target.GetLR());
  EXPECT_THAT(sides, ElementsAre(VornLocation::Left, VornLocation::Right, VornLocation::Left, VornLocation::Unset,
                                 VornLocation::Unset));
}

/// The text of a road with something carried over in every form and every control target: that has to follow, too.
std::string CarryingRoad(int sections) {
  DesignDocument road = Road(sections);
  std::string text = WriteText(road);
  for (const std::string_view end : {"</tsf:BuildForm>", "</tsf:FormCtrlTarget>"}) {
    for (std::size_t at = text.find(end); at != std::string::npos; at = text.find(end, at + 12)) {
      text.insert(at, "<!--c-->");
    }
  }
  return text;
}

double SecondsFor(const std::string& text, const std::function<void(DesignEditor&)>& step) {
  DesignDocument document = ReadText(text);
  DesignEditor editor(document);
  editor.Recalc(75.0);
  const auto start = std::chrono::steady_clock::now();
  step(editor);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Editor, TakesTimeInProportionToTheSections) {
  const std::string small = CarryingRoad(500);
  const std::string large = CarryingRoad(2000);
  DesignDocument sample = Road(1);
  const CString surface = FormOf(sample).GetName();
  const std::vector<std::pair<const char*, std::function<void(DesignEditor&)>>> steps = {
      {"recalc", [](DesignEditor& editor) { editor.Recalc(70.0); }},
      {"crossings", [](DesignEditor& editor) { editor.RecalcCrossings(); }},
      {"mirror", [](DesignEditor& editor) { editor.Mirror(); }},
      {"shift", [](DesignEditor& editor) { editor.Shift(1.0, 0.0); }},
      {"retype", [](DesignEditor& editor) { editor.Retype(kCut, kFill); }},
      {"sort", [](DesignEditor& editor) { editor.SortForms(Names({"absent"})); }},
      {"remove", [&](DesignEditor& editor) { editor.RemoveForm(surface); }},
      {"rename", [&](DesignEditor& editor) { editor.RenameForm(kFill, surface, "T"); }},
      {"codes", [](DesignEditor& editor) { editor.ClearCodes(); }},
      {"regulate", [](DesignEditor& editor) { editor.RegulateTargets(); }},
      {"lost",
       [](DesignEditor& editor) {
         editor.ClearCodes();
         (void)editor.LostTargets();
       }},
  };
  for (const auto& [name, step] : steps) {
    const double few = SecondsFor(small, step);
    const double many = SecondsFor(large, step);
    EXPECT_LT(many, 10.0 * few + 0.05) << name << ": four times the sections; " << few << " s and " << many << " s";
  }
}

}  // namespace
}  // namespace vorn_host
