#include "host/document/edition_conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "host/sample/sample_document.h"
#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::StartsWith;

using ControlItem = VornFormCtrlTarget::ControlItem;
using WorkType = VornFormCtrlTarget::WorkType;

const CString kFill = u8"盛土工"_cp932;
const CString kCut = u8"切土工"_cp932;

using Rows = std::vector<std::pair<std::string, int>>;

Rows RowsOf(const std::vector<ConversionReport::Dropped>& dropped) {
  Rows rows;
  for (const ConversionReport::Dropped& row : dropped) rows.emplace_back(row.what, row.count);
  return rows;
}

Rows DroppedBy(const ConversionReport& report) { return RowsOf(report.dropped); }
Rows NotWrittenBy(const ConversionReport& report) { return RowsOf(report.notWritten); }

VornXSections& SetOf(DesignDocument& document) { return document.sets[0]; }
VornXSection& SectionOf(DesignDocument& document, int index) { return SetOf(document).GetXSectionArray()[index]; }
VornBuildForm& FormOf(DesignDocument& document, int section, int form = 0) {
  return SectionOf(document, section).GetBuildFormArray()[form];
}

/// "20 A L1,20 A R1" of a target: station, form and code of its points.
std::string PointsOf(const VornFormCtrlTarget& target) {
  std::string text;
  for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
    if (!text.empty()) text += ",";
    text += std::to_string(static_cast<int>(point.GetCumulativeDist().Value())) + (point.GetXSectChg() ? "* " : " ") +
            Shown(point.GetBuildFormName()) + " " + Shown(point.GetCode());
  }
  return text;
}

std::vector<std::string> SetTargets(DesignDocument& document) {
  std::vector<std::string> targets;
  for (const VornFormCtrlTarget& target : SetOf(document).GetFormCtrlTargetArray()) targets.push_back(PointsOf(target));
  return targets;
}

std::vector<std::string> FormTargets(const VornBuildForm& form) {
  std::vector<std::string> codes;
  for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) codes.push_back(Shown(target.GetCodeName()));
  return codes;
}

/// A document of 4.1 with the forms A and B at 0, 20 and, behind a change of shape, 20 again.
DesignDocument Road41() {
  return DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A"), RoadForm("B")}), Section(20.0, {RoadForm("A")}),
                                   Section(20.0, {RoadForm("A"), RoadForm("B")}, true)});
}

/// The document as it is read from its own bytes.
DesignDocument ThroughBytes(DesignDocument document) { return ReadText(WriteText(document)); }

// --- the edition itself --------------------------------------------------------------------------------------------

TEST(ConvertEdition, SelectsTheEditionOfTheDocument) {
  for (const Edition source : kWritableEditions) {
    for (const Edition target : kWritableEditions) {
      DesignDocument document = DocumentOf(source, {Section(0.0, {RoadForm("A")})});
      ConvertEdition(document, target);
      EXPECT_EQ(document.edition, target);
      EXPECT_EQ(ReadText(WriteText(document)).edition, target);
    }
  }
}

TEST(ConvertEdition, ChangesNothingWithinTheLaterEditions) {
  for (const Edition target : {Edition::V40, Edition::Maff10}) {
    DesignDocument document = Road41();
    SetOf(document).GetFormCtrlTargetArray().Add(TargetOn(20.0, "A", {"L1", "R1"}));
    const std::string before = WriteText(document);
    const ConversionReport report = ConvertEdition(document, target);
    EXPECT_EQ(report.convertedPoints, 0);
    EXPECT_EQ(report.movedTargets, 0);
    EXPECT_THAT(DroppedBy(report), IsEmpty());
    ConvertEdition(document, Edition::V41);
    EXPECT_EQ(WriteText(document), before) << "4.1 to 4.0 and back loses nothing";
  }
}

TEST(ConvertEdition, RefusesARoadGeometryDocument) {
  DesignDocument geometry;
  geometry.edition = Edition::RoadGm;
  EXPECT_THAT(ErrorOf([&] { ConvertEdition(geometry, Edition::V41); }), HasSubstr("RoadGmxml"));
  DesignDocument document = Road41();
  EXPECT_THAT(ErrorOf([&] { ConvertEdition(document, Edition::RoadGm); }), HasSubstr("RoadGmxml"));
  EXPECT_EQ(document.edition, Edition::V41);
  EXPECT_THAT(ErrorOf([&] { ConvertEdition(geometry, Edition::V41, "g.xml"); }), testing::StartsWith("g.xml: "));
  EXPECT_EQ(ErrorOf([&] { ConvertEdition(geometry, Edition::RoadGm); }), "");
}

// --- points --------------------------------------------------------------------------------------------------------

TEST(ConvertEdition, ReportsConvertedPointsAndTheLargestDisplacementWithItsPlace) {
  DesignDocument document = Road41();
  FormOf(document, 1) = Form("A", {Center(), Point("R1", VornLocation::Right, DataType::WidthHeight, 47.0, 0.0101)});
  FormOf(document, 2, 1) = Form("B", {Center(), Point("R1", VornLocation::Right, DataType::WidthHeight, 10.0, 0.1)});
  const ConversionReport report = ConvertEdition(document, Edition::V20);
  EXPECT_EQ(report.convertedPoints, 2);
  EXPECT_NEAR(report.largestDisplacement, 47.0 * 0.021 / 100.0 - 0.0101, 1e-3);
  EXPECT_GT(report.largestDisplacement, 0.0);
  EXPECT_EQ(report.largestDisplacementAt, "set 1 (CL-1) > station 20.0000 > form A > point R1");
}

TEST(ConvertEdition, NamesNoPlaceWhenNoPointMoves) {
  DesignDocument document = Road41();
  const ConversionReport report = ConvertEdition(document, Edition::V20);
  EXPECT_EQ(report.convertedPoints, 0);
  EXPECT_NEAR(report.largestDisplacement, 0.0, 1e-12);
}

TEST(ConvertEdition, WritesTheSlopeTypeIn20AndTheDataTypeLater) {
  DesignDocument document = Road41();
  ConvertEdition(document, Edition::V20);
  EXPECT_THAT(WriteText(document), AllOf(HasSubstr("slopeType=\"Percent\""), Not(HasSubstr("dataType"))));
  ConvertEdition(document, Edition::V41);
  EXPECT_THAT(WriteText(document), AllOf(HasSubstr("dataType=\"Percent\""), Not(HasSubstr("slopeType"))));
}

// --- control targets from the forms to the set ---------------------------------------------------------------------

TEST(TargetsFrom20, GetStationFormFlagAndCodesAsTargetPoints) {
  DesignDocument document =
      DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A"), RoadForm("B")}), Section(20.0, {RoadForm("A")}, true)});
  FormOf(document, 0, 1).GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  FormOf(document, 1).GetFormCtrlTargetArray().Add(Target20("R1"));
  FormOf(document, 0).GetFormCtrlTargetArray().Add(Target20("L1  CL R1"));
  const ConversionReport report = ConvertEdition(document, Edition::V41);
  EXPECT_THAT(SetTargets(document), ElementsAre("0 A L1,0 A CL,0 A R1", "0 B L1,0 B R1", "20* A R1"));
  EXPECT_EQ(report.movedTargets, 3);
  EXPECT_THAT(report.lostTargets, IsEmpty());
  for (int section = 0; section < 2; ++section) {
    EXPECT_TRUE(FormOf(document, section).GetFormCtrlTargetArray().IsEmpty()) << "not in two places";
  }
}

TEST(TargetsFrom20, KeepTheirMembersAndAreNumberedAnew) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A"), RoadForm("B")})});
  for (int form = 0; form < 2; ++form) {
    VornFormCtrlTarget target = Target20("L1 R1");
    target.SetControlItem(form == 0 ? ControlItem::Height : ControlItem::SlopeLength);
    target.SetTargetScope("scope");
    target.SetTargetRegio("region");
    FormOf(document, 0, form).GetFormCtrlTargetArray().Add(target);
  }
  ConvertEdition(document, Edition::V40);
  const Vorn_FormCtrlTargetArray& targets = SetOf(document).GetFormCtrlTargetArray();
  ASSERT_EQ(targets.GetSize(), 2);
  EXPECT_EQ(targets[0].GetControlItem(), ControlItem::Height);
  EXPECT_EQ(targets[1].GetControlItem(), ControlItem::SlopeLength);
  EXPECT_EQ(targets[1].GetTargetScope(), "scope");
  EXPECT_EQ(targets[1].GetTargetRegio(), "region");
  EXPECT_EQ(targets[0].GetSerialID(), 0u);
  EXPECT_EQ(targets[1].GetSerialID(), 1u);
}

TEST(TargetsFrom20, AreWrittenOnce) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A")})});
  FormOf(document, 0).GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  ConvertEdition(document, Edition::V41);
  EXPECT_THAT(SetTargets(document), ElementsAre("0 A L1,0 A R1"));
  DesignDocument back = ThroughBytes(std::move(document));
  EXPECT_THAT(SetTargets(back), ElementsAre("0 A L1,0 A R1"));
}

TEST(TargetsFrom20, WithoutACodeAreNamedInTheReport) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(20.0, {RoadForm("A")})});
  FormOf(document, 0).GetFormCtrlTargetArray().Add(Target20(""));
  const ConversionReport report = ConvertEdition(document, Edition::V41);
  EXPECT_THAT(report.lostTargets,
              ElementsAre(AllOf(StartsWith("set 1 (CL-1) > station 20.0000 > form A > control target 1 (Width): "),
                                HasSubstr("names no code"))));
}

// --- control targets from the set to the forms ---------------------------------------------------------------------

TEST(TargetsTo20, GoToTheFormThatTheirPointsName) {
  DesignDocument document = Road41();
  Vorn_FormCtrlTargetArray& targets = SetOf(document).GetFormCtrlTargetArray();
  targets.Add(TargetOn(20.0, "A", {"L1", "R1"}, true));
  targets.Add(TargetOn(0.0, "B", {"CL"}));
  targets.Add(TargetOn(20.0, "A", {"R1", "CL", "L1"}));
  targets.Add(TargetOn(20.0, "A", {"L1"}, true));
  const ConversionReport report = ConvertEdition(document, Edition::V20);
  EXPECT_THAT(FormTargets(FormOf(document, 0)), IsEmpty());
  EXPECT_THAT(FormTargets(FormOf(document, 0, 1)), ElementsAre("CL"));
  EXPECT_THAT(FormTargets(FormOf(document, 1)), ElementsAre("R1 CL L1"));
  EXPECT_THAT(FormTargets(FormOf(document, 2)), ElementsAre("L1 R1", "L1"));
  EXPECT_EQ(report.movedTargets, 4);
  EXPECT_THAT(report.lostTargets, IsEmpty());
  EXPECT_TRUE(SetOf(document).GetFormCtrlTargetArray().IsEmpty());
}

TEST(TargetsTo20, GoToTheFormOfThatNameThatHasTheirFirstCode) {
  const auto withCode = [](const char* code) {
    return Form("A", {Center(), Point(code, VornLocation::Right, DataType::Percent, 3.5, -2.0)});
  };
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {withCode("R1"), withCode("R2")})});
  for (const char* code : {"R1", "R2", "R3"}) {
    SetOf(document).GetFormCtrlTargetArray().Add(TargetOn(0.0, "A", {code, "CL"}));
  }
  ConvertEdition(document, Edition::V20);
  EXPECT_THAT(FormTargets(FormOf(document, 0)), ElementsAre("R1 CL", "R3 CL")) << "no form has R3";
  EXPECT_THAT(FormTargets(FormOf(document, 0, 1)), ElementsAre("R2 CL"));
}

TEST(TargetsTo20, LoseTheirPointsAndAreNumberedInTheirForm) {
  DesignDocument document = Road41();
  for (int i = 0; i < 3; ++i) {
    SetOf(document).GetFormCtrlTargetArray().Add(TargetOn(i == 0 ? 0.0 : 20.0, "A", {"L1"}));
  }
  ConvertEdition(document, Edition::V20);
  const Vorn_FormCtrlTargetArray& targets = FormOf(document, 1).GetFormCtrlTargetArray();
  ASSERT_EQ(targets.GetSize(), 2);
  EXPECT_EQ(targets[0].GetSerialID(), 0u);
  EXPECT_EQ(targets[1].GetSerialID(), 1u);
  EXPECT_TRUE(targets[0].GetTargetPntArray().IsEmpty());
}

TEST(TargetsTo20, ThatStandInAFormAlreadyGoTheSameWay) {
  DesignDocument document = Road41();
  FormOf(document, 0).GetFormCtrlTargetArray().Add(TargetOn(20.0, "A", {"R1"}));
  const ConversionReport report = ConvertEdition(document, Edition::V20);
  EXPECT_THAT(FormTargets(FormOf(document, 0)), IsEmpty());
  EXPECT_THAT(FormTargets(FormOf(document, 1)), ElementsAre("R1"));
  EXPECT_EQ(report.movedTargets, 1);
}

TEST(TargetsTo20, ThatCannotBeCarriedAreNamedWithTheReason) {
  DesignDocument document = Road41();
  FormOf(document, 0, 1) = Form("B", {Center()});
  VornFormCtrlTarget twoForms = TargetOn(20.0, "A", {"L1"}, true);
  twoForms.GetTargetPntArray().Add(TargetOn(20.0, "B", {"L1"}, true).GetTargetPntArray()[0]);
  VornFormCtrlTarget twoStations = TargetOn(0.0, "A", {"L1"});
  twoStations.GetTargetPntArray().Add(TargetOn(20.0, "A", {"L1"}).GetTargetPntArray()[0]);
  VornFormCtrlTarget twoSides = TargetOn(20.0, "A", {"L1"});
  twoSides.GetTargetPntArray().Add(TargetOn(20.0, "A", {"L1"}, true).GetTargetPntArray()[0]);
  for (const VornFormCtrlTarget& target :
       {Target(), twoForms, twoStations, twoSides, TargetOn(20.0, "A", {"L1", ""}), TargetOn(20.0, "A", {"L 1"}),
        TargetOn(60.0, "A", {"L1"}), TargetOn(0.0, "A", {"L1"}, true), TargetOn(20.0, "B", {"L1"}),
        TargetOn(0.0, "B", {"CL"})}) {
    SetOf(document).GetFormCtrlTargetArray().Add(target);
  }
  const ConversionReport report = ConvertEdition(document, Edition::V20);
  EXPECT_THAT(
      report.lostTargets,
      ElementsAre("set 1 (CL-1) > control target 1 (Width): it has no target points",
                  "set 1 (CL-1) > control target 2 (Width L1 L1): its points stand in several sections or forms",
                  EndsWith("its points stand in several sections or forms"),
                  EndsWith("its points stand in several sections or forms"),
                  EndsWith("one of its codes is empty or holds a blank"),
                  EndsWith("one of its codes is empty or holds a blank"),
                  EndsWith("there is no cross section at station 60.0000"),
                  EndsWith("there is no cross section at station 0.0000 behind the change of shape"),
                  EndsWith("there is no form B at station 20.0000"),
                  EndsWith("its form B has fewer than two points and is not written")));
  EXPECT_EQ(report.movedTargets, 0);
}

TEST(TargetsTo20, ThatStandOnAFormThatIsLeftOutAreLost) {
  DesignDocument document = Road41();
  FormOf(document, 0, 0).SetOmitFlag(1);
  FormOf(document, 0, 1).SetExport(0);
  for (const char* form : {"A", "B"}) SetOf(document).GetFormCtrlTargetArray().Add(TargetOn(0.0, form, {"L1"}));
  const ConversionReport report = ConvertEdition(document, Edition::V20);
  EXPECT_THAT(report.lostTargets, ElementsAre(EndsWith("its form A is not exported and is not written")));
  EXPECT_EQ(report.movedTargets, 1);
  EXPECT_THAT(NotWrittenBy(report), ElementsAre(Pair("build form that is not exported", 1)));
  DesignDocument read = ThroughBytes(std::move(document));
  EXPECT_THAT(FormTargets(FormOf(read, 0)), ElementsAre("L1")) << "edition 2.0 writes what is not exported";
}

TEST(TargetsTo20, GetTheWorkTypeOfTheirForm) {
  const auto workTypeOf = [](const char* setUp) {
    DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A"), RoadForm("B")})});
    const std::string_view what = setUp;
    if (what == "type") FormOf(document, 0, 1).SetXSectType(kFill);
    if (what == "name") FormOf(document, 0, 1).SetName(u8"掘削面"_cp932, false);
    if (what == "first form's type") FormOf(document, 0).SetXSectType(kCut);
    if (what == "first form's name") FormOf(document, 0).SetName(u8"路体盛土"_cp932, false);
    if (what == "type before name") {
      FormOf(document, 0, 1).SetXSectType(kCut);
      FormOf(document, 0, 1).SetName(u8"盛土"_cp932, false);
    }
    VornFormCtrlTarget target = TargetOn(0.0, FormOf(document, 0, 1).GetName().View(), {"L1"});
    if (what == "own") target.SetWorkType(WorkType::CutWork);
    SetOf(document).GetFormCtrlTargetArray().Add(target);
    const ConversionReport report = ConvertEdition(document, Edition::V20);
    return std::pair(FormOf(document, 0, 1).GetFormCtrlTargetArray()[0].GetWorkType(),
                     report.notes.empty() ? std::string() : report.notes[0]);
  };
  const auto derived = HasSubstr("The work type (cut or fill) of 1 control targets was taken");
  EXPECT_THAT(workTypeOf("type"), Pair(WorkType::FillWork, derived));
  EXPECT_THAT(workTypeOf("name"), Pair(WorkType::CutWork, derived));
  EXPECT_THAT(workTypeOf("type before name"), Pair(WorkType::CutWork, derived));
  EXPECT_THAT(workTypeOf("first form's type"), Pair(WorkType::CutWork, derived));
  EXPECT_THAT(workTypeOf("first form's name"), Pair(WorkType::FillWork, derived));
  EXPECT_THAT(workTypeOf("own"), Pair(WorkType::CutWork, ""));
  EXPECT_THAT(workTypeOf("nothing"), Pair(WorkType::Unset, HasSubstr("1 control targets have no work type")));
}

// --- there and back ------------------------------------------------------------------------------------------------

/// All control targets, each as one line of its members and points.
std::vector<std::string> Targets(const DesignDocument& document) {
  const EditionScope scope(document.edition);
  std::vector<std::string> lines;
  for (const VornXSections& set : document.sets) {
    for (const VornFormCtrlTarget& target : set.GetFormCtrlTargetArray()) {
      lines.push_back(Shown(target.GetControlItemString()) + "|" + Shown(target.GetTargetScope()) + "|" +
                      Shown(target.GetTargetRegio()) + "|" + Shown(target.GetTargetPntTypeString()) + "|" +
                      PointsOf(target));
    }
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

/// A design of edition 4.1 goes to 2.0 and back, each time through the bytes of a document.
void ExpectWayTo20AndBack(DesignDocument document) {
  const DesignDocument start = ReadText(WriteText(document));
  ASSERT_FALSE(Targets(start).empty());

  const ConversionReport there = ConvertEdition(document, Edition::V20);
  EXPECT_THAT(there.lostTargets, IsEmpty());
  EXPECT_LE(there.largestDisplacement, 1e-3);
  EXPECT_EQ(there.movedTargets, static_cast<int>(Targets(start).size()));
  document = ThroughBytes(std::move(document));
  EXPECT_TRUE(SetOf(document).GetFormCtrlTargetArray().IsEmpty());

  const ConversionReport back = ConvertEdition(document, Edition::V41);
  EXPECT_THAT(back.lostTargets, IsEmpty());
  document = ThroughBytes(std::move(document));
  EXPECT_EQ(Targets(document), Targets(start));

  const EditionScope scope(Edition::V41);
  ASSERT_EQ(SetOf(document).GetXSectionArray().GetSize(), start.sets[0].GetXSectionArray().GetSize());
  for (int i = 0; i < start.sets[0].GetXSectionArray().GetSize(); ++i) {
    Vorn_BuildFormArray former = start.sets[0].GetXSectionArray()[i].GetBuildFormArray();
    Vorn_BuildFormArray& forms = SectionOf(document, i).GetBuildFormArray();
    ASSERT_EQ(forms.GetSize(), former.GetSize());
    for (int j = 0; j < forms.GetSize(); ++j) {
      NurReal ignored;
      former[j].RegulateComposedPnt(100.0, ignored, ignored);
      forms[j].RegulateComposedPnt(100.0, ignored, ignored);
      for (int k = 0; k < forms[j].GetComposedPntArray().GetSize(); ++k) {
        const TamWorld2 a = former[j].GetComposedPntArray()[k].Pos();
        const TamWorld2 b = forms[j].GetComposedPntArray()[k].Pos();
        ASSERT_LE(std::hypot(a.x - b.x, a.y - b.y), 1e-3) << i << " " << j << " " << k;
      }
    }
  }
}

DesignDocument Generated(SampleKind kind, std::uint64_t seed) {
  SampleOptions options;
  options.sections = 25;
  options.kind = kind;
  options.seed = seed;
  DesignDocument document = ToDocument(MakeSampleDesign(options));
  return ThroughBytes(std::move(document));
}

/// Kind and seed.
class GeneratedDesign : public testing::TestWithParam<std::tuple<SampleKind, std::uint64_t>> {
 protected:
  static DesignDocument Document() { return Generated(std::get<0>(GetParam()), std::get<1>(GetParam())); }
};

INSTANTIATE_TEST_SUITE_P(KindsAndSeeds, GeneratedDesign,
                         testing::Combine(testing::Values(SampleKind::Road, SampleKind::River, SampleKind::Farm),
                                          testing::Values<std::uint64_t>(1, 7, 4711)));

TEST_P(GeneratedDesign, Over20KeepsEveryTargetAndMovesNoPoint) { ExpectWayTo20AndBack(Document()); }

TEST_P(GeneratedDesign, ComesBackFromTheOtherLaterEditionsByteForByte) {
  DesignDocument document = Document();
  const std::string start = WriteText(document);
  for (const Edition edition : {Edition::V40, Edition::Maff10}) {
    ConvertEdition(document, edition);
    document = ThroughBytes(std::move(document));
    ConvertEdition(document, Edition::V41);
    document = ThroughBytes(std::move(document));
    EXPECT_EQ(WriteText(document), start) << EditionName(edition);
  }
}

TEST(SampleDocuments, KeepEveryTargetAndMoveNoPointOver20) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(VORN_SAMPLES)) {
    if (entry.path().extension() != ".xml") continue;
    SCOPED_TRACE(entry.path().string());
    DesignDocument document = DesignDocument::Read(entry.path());
    ConvertEdition(document, Edition::V41);
    ExpectWayTo20AndBack(ThroughBytes(std::move(document)));
    ++count;
  }
  EXPECT_GE(count, 4);
}

// --- what an edition cannot hold -----------------------------------------------------------------------------------

TEST(DroppedBy20, IsNamedAndCounted) {
  DesignDocument document = Road41();
  VornXSection& section = SectionOf(document, 0);
  section.SetName("No.0");
  SectionOf(document, 1).SetName("No.1");
  section.SetDirectionAngle("12.5");
  section.SetTargetPntID("T1");
  FormOf(document, 0).SetXSectType(kFill);
  FormOf(document, 1).SetName(u8"盛土"_cp932, false);
  FormOf(document, 1).SetXSectType(kFill);
  VornExistingBuildForm ground;
  for (int i = 0; i < 3; ++i) section.GetExistingBuildFormArray().Add(ground);
  SetOf(document).SetAlignment(false);
  SetOf(document).SetProjectPhase("2");
  EXPECT_THAT(DroppedBy(ConvertEdition(document, Edition::V20)),
              ElementsAre(Pair("file information", 1), Pair("structure type", 1), Pair("existing ground form", 3),
                          Pair("cross-section name", 2), Pair("direction angle", 1),
                          Pair("target point identifier of a cross section", 1),
                          Pair("cross-section type that the form's name does not tell", 1),
                          Pair("alignment=\"false\" of a set", 1), Pair("project phase", 1)));
}

TEST(DroppedBy20, AreTargetsOutsideAForm) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A")})});
  document.fileInfos.RemoveAll();
  document.hasStructureType = false;
  SetOf(document).GetFormCtrlTargetArray().Add(Target20("L1"));
  EXPECT_THAT(DroppedBy(ConvertEdition(document, Edition::V20)),
              ElementsAre(Pair("control target outside a build form", 1)))
      << "also when the edition stays";
}

TEST(DroppedByLaterEditions, AreWorkTypesAndNotesWithoutAChangeDate) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A")})});
  document.fileInfos[0].SetNote("note");
  FormOf(document, 0).GetFormCtrlTargetArray().Add(Target20("L1"));
  EXPECT_THAT(DroppedBy(ConvertEdition(document, Edition::V41)),
              ElementsAre(Pair("note of a file information without a change date", 1),
                          Pair("work type of a control target", 1)));
}

TEST(DroppedByEveryEdition, AreFormsWithFewerThanTwoPoints) {
  for (const Edition target : kWritableEditions) {
    DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A"), Form("B", {Center()})})});
    EXPECT_THAT(NotWrittenBy(ConvertEdition(document, target)),
                Contains(Pair("build form with fewer than two points", 1)));
  }
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")})});
  SectionOf(document, 0).GetExistingBuildFormArray().Add(VornExistingBuildForm());
  EXPECT_THAT(NotWrittenBy(ConvertEdition(document, Edition::V41)),
              ElementsAre(Pair("existing ground form with fewer than two points", 1)));
}

TEST(DroppedByNoEdition, IsWhatADocumentOfTheEditionHolds) {
  for (const Edition edition : {Edition::V40, Edition::V41, Edition::Maff10}) {
    DesignDocument document = Road41();
    document.edition = edition;
    EXPECT_THAT(DroppedBy(ConvertEdition(document, edition)), IsEmpty());
  }
}

TEST(ConversionNotes, TellWhatEdition20CouldNotBring) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A")})});
  document.fileInfos.RemoveAll();
  document.hasStructureType = false;
  const ConversionReport report = ConvertEdition(document, Edition::V40);
  EXPECT_THAT(report.notes, ElementsAre(HasSubstr("File information with the present time was added: edition 4.0"),
                                        HasSubstr("no structure type")));
  ASSERT_EQ(document.fileInfos.GetSize(), 1);
  EXPECT_TRUE(document.fileInfos[0].IsEnable());
}

TEST(ConversionNotes, SayThatCarriedContentWasNotConverted) {
  const auto notesOf = [](const char* carried) {
    DesignDocument document = ReadText(Xml(Edition::V41, carried));
    return ConvertEdition(document, Edition::V40).notes;
  };
  EXPECT_THAT(notesOf("<rgm:RoadGm/>"),
              ElementsAre(AllOf(HasSubstr("was not converted to edition 4.0"), HasSubstr("\"rgm\" namespace"))));
  EXPECT_THAT(notesOf("<vendor/>"),
              ElementsAre(AllOf(HasSubstr("was not converted to edition 4.0"), Not(HasSubstr("rgm")))));
  EXPECT_THAT(notesOf(""), IsEmpty());
}

TEST(ConversionNotes, AreNoneWhenTheEditionStays) {
  DesignDocument document = ReadText(Xml(Edition::V41, "<rgm:RoadGm/>"));
  EXPECT_THAT(ConvertEdition(document, Edition::V41).notes, IsEmpty());
}

TEST(ConversionReport, NamesTheUnknownContentOfTargetsThatMove) {
  DesignDocument document =
      ReadText(Xml(Edition::V41,
                   "<tsf:XSections><tsf:FormCtrlTarget vendor='1'/><tsf:FormCtrlTarget vendor='2'/>"
                   "</tsf:XSections>"));
  EXPECT_THAT(DroppedBy(ConvertEdition(document, Edition::V20)),
              Contains(Pair("unknown content of control targets: attribute vendor of tsf:FormCtrlTarget", 2)));
}

}  // namespace
}  // namespace vorn_host
