#include "host/document/document_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "host/document/edition_conversion.h"
#include "host/sample/sample_document.h"
#include "tests/host/documents.h"

namespace vorn_host {

void PrintTo(const Finding& finding, std::ostream* out) {
  *out << (finding.severity == Severity::Note ? "note: " : "error: ") << finding.kind << " | " << finding.path << " | "
       << finding.reason;
}

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;
using WorkType = VornFormCtrlTarget::WorkType;

auto IsError(const std::string& kind, const std::string& path, const std::string& reason) {
  return AllOf(Field("severity", &Finding::severity, Severity::Error), Field("kind", &Finding::kind, kind),
               Field("path", &Finding::path, path), Field("reason", &Finding::reason, reason));
}

auto IsNote(const std::string& kind, const std::string& path, const std::string& reason) {
  return AllOf(Field("severity", &Finding::severity, Severity::Note), Field("kind", &Finding::kind, kind),
               Field("path", &Finding::path, path), Field("reason", &Finding::reason, reason));
}

const char* const kMissing = "control target names what does not exist";

/// What is found in a document of the edition with one set of those sections.
std::vector<Finding> FindingsOf(Edition edition, std::initializer_list<VornXSection> sections) {
  return CheckDocument(DocumentOf(edition, sections));
}

/// The same for one form at station 20, of which nothing else is wrong.
std::vector<Finding> FindingsOf(Edition edition, const VornBuildForm& form) {
  return FindingsOf(edition, {Section(20.0, {form})});
}

/// What is found in a text.
std::vector<Finding> FindingsIn(Edition edition, const std::string& content) {
  return CheckDocument(ReadText(Xml(edition, content)));
}

// --- nothing -------------------------------------------------------------------------------------------------------

class CleanDocuments : public testing::TestWithParam<Edition> {};

INSTANTIATE_TEST_SUITE_P(Editions, CleanDocuments, testing::ValuesIn(kWritableEditions), EditionTestName);

TEST_P(CleanDocuments, HaveNoFindings) {
  EXPECT_THAT(FindingsOf(GetParam(), {Section(0.0, {RoadForm("A")}), Section(20.0, {RoadForm("A"), RoadForm("B")}),
                                      Section(20.0, {RoadForm("A")}, true)}),
              IsEmpty());
}

TEST_P(CleanDocuments, AreTheSamples) {
  for (const SampleKind kind : {SampleKind::Road, SampleKind::River, SampleKind::Farm}) {
    SampleOptions options;
    options.kind = kind;
    DesignDocument document = ToDocument(MakeSampleDesign(options));
    ConvertEdition(document, GetParam());
    EXPECT_THAT(CheckDocument(document), Each(Field(&Finding::severity, Severity::Note)));
  }
}

TEST(DocumentCheck, LeavesTheDocumentsEditionToTheDocument) {
  const EditionScope elsewhere(Edition::V20);
  EXPECT_THAT(FindingsOf(Edition::V41, {Section(0.0, {RoadForm("A")})}), IsEmpty());
  EXPECT_EQ(CurrentEdition(), Edition::V20);
}

TEST(DocumentCheck, AsksARoadGeometryDocumentForNothing) {
  DesignDocument document;
  document.edition = Edition::RoadGm;
  EXPECT_THAT(CheckDocument(document), IsEmpty());
}

// --- the document's head -------------------------------------------------------------------------------------------

TEST(DocumentCheck, FindsMissingFileInformation) {
  DesignDocument document = DocumentOf(Edition::V40, {Section(0.0, {RoadForm("A")})});
  document.fileInfos.RemoveAll();
  EXPECT_THAT(CheckDocument(document), ElementsAre(IsError("tsf:FileInfo not enabled", "document",
                                                           "there is no file information; one or more are needed")));
}

TEST(DocumentCheck, FindsFileInformationWithoutACreationDate) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")})});
  document.fileInfos.Add(VornFileInfo());
  VornFileInfo invalid;
  invalid.SetCreateDate(COleDateTime(2024, 13, 1, 0, 0, 0));
  document.fileInfos.Add(invalid);
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsError("tsf:FileInfo not enabled", "file information 2", "createDate is missing"),
                          IsError("tsf:FileInfo not enabled", "file information 3", "createDate is no date")));
}

TEST(DocumentCheck, NotesAMissingStructureType) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")})});
  document.hasStructureType = false;
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsNote("no tsf:StructureType", "document", "the work type of the document is not told")));
}

TEST(DocumentCheck, FindsAStructureTypeThatIsNone) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")})});
  document.structureType.SetType(CString(u8"道路"_cp932));
  const std::string badType = U8(u8"type \"道路\" is none of the nine work types");
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsError("tsf:StructureType not enabled", "structure type", badType)));
  document.structureType.SetStationType("no");
  const std::string badStation = U8(u8"stationType \"no\" is none of NO, SP, STA and 距離標");
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsError("tsf:StructureType not enabled", "structure type", badType + "; " + badStation)));
  document.structureType.SetType(VornStructureType::Type::MaffPipeline);
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsError("tsf:StructureType not enabled", "structure type", badStation)));
}

TEST(DocumentCheck, AsksEdition20NeitherForFileInformationNorForAStructureType) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("A")})});
  document.fileInfos.RemoveAll();
  document.hasStructureType = false;
  EXPECT_THAT(CheckDocument(document), IsEmpty());
}

// --- sets and sections ---------------------------------------------------------------------------------------------

TEST(DocumentCheck, FindsADocumentWithoutASet) {
  DesignDocument document = DocumentOf(Edition::V41, {});
  document.sets.RemoveAll();
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsError("tsf:XSections not enabled", "document", "there is no cross-section set")));
}

TEST(DocumentCheck, FindsASetWithoutItsParts) {
  DesignDocument document = DocumentOf(Edition::V41, {});
  document.sets[0].SetRefVertical("");
  document.sets.Add(VornXSections());
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsError("tsf:XSections not enabled", "set 1 (CL-1)",
                                  "refVertical is missing; there is no cross section; one or more are needed"),
                          IsError("tsf:XSections not enabled", "set 2",
                                  "refAlign is missing; refVertical is missing; there is no cross section; one or more "
                                  "are needed")));
}

TEST(DocumentCheck, FindsASectionWithoutStationOrForms) {
  VornXSection named = Section(120.0, {});
  named.SetName(u8"No.6"_cp932);
  EXPECT_THAT(
      FindingsOf(Edition::V41, {Section(NurReal(), {RoadForm("A")}), Section(0.0, {RoadForm("A")}), named}),
      ElementsAre(IsError("tsf:XSection not enabled", "set 1 (CL-1) > station unset", "cumulativeDist is missing"),
                  IsError("tsf:XSection not enabled", "set 1 (CL-1) > station 120.0000 (No.6)",
                          "there is no build form; one or more are needed")));
}

TEST(DocumentCheck, FindsStationsOutOfTheDocumentsOrder) {
  const auto section = [](const char* station) {
    return std::string("<tsf:XSection cumulativeDist='") + station + "'><tsf:BuildForm name='A'>" +
           "<tsf:ComposedPnt code='A' existence='true'>0 0</tsf:ComposedPnt>" +
           "<tsf:ComposedPnt code='B' existence='true'>1 0</tsf:ComposedPnt></tsf:BuildForm></tsf:XSection>";
  };
  EXPECT_THAT(FindingsIn(Edition::V20, "<tsf:XSections refAlign='R' refVertical='V'>" + section("0") + section("40") +
                                           section("20") + section("60") + section("10") + "</tsf:XSections>"),
              ElementsAre(IsError("station out of order", "set 1 (R) > station 20.0000",
                                  "it stands behind station 40.0000 in the document"),
                          IsError("station out of order", "set 1 (R) > station 10.0000",
                                  "it stands behind station 60.0000 in the document")));
  EXPECT_THAT(FindingsIn(Edition::V20, "<tsf:XSections refAlign='R' refVertical='V'>" + section("0") + section("20") +
                                           "</tsf:XSections>"),
              IsEmpty());
}

TEST(DocumentCheck, FindsDoubledStations) {
  const VornBuildForm form = RoadForm("A");
  EXPECT_THAT(
      FindingsOf(Edition::V41, {Section(20.0, {form}), Section(20.0000004, {form}), Section(20.0, {form}, true),
                                Section(20.00001, {form}), Section(40.0, {form}, true), Section(40.0, {form}, true)}),
      ElementsAre(IsError("station doubled", "set 1 (CL-1) > station 20.0000",
                          "another cross section has the same station and change-of-shape flag"),
                  IsError("station doubled", "set 1 (CL-1) > station 40.0000 behind the change of shape",
                          "another cross section has the same station and change-of-shape flag")));
}

TEST(DocumentCheck, DoesNotTakeAnUnsetStationForStationZero) {
  const VornBuildForm form = RoadForm("A");
  EXPECT_THAT(FindingsOf(Edition::V41, {Section(NurReal(), {form}), Section(NurReal(), {form}), Section(0.0, {form})}),
              Each(Field(&Finding::kind, "tsf:XSection not enabled")));
}

// --- forms and points ----------------------------------------------------------------------------------------------

TEST(DocumentCheck, FindsAFormWithoutNameOrPoints) {
  EXPECT_THAT(FindingsOf(Edition::V41, Form("", {})),
              ElementsAre(IsError("tsf:BuildForm not enabled", "set 1 (CL-1) > station 20.0000 > form without a name",
                                  "name is missing; there are fewer than two points")));
  EXPECT_THAT(FindingsOf(Edition::V20, Form(u8"路面"_cp932, {Center()})),
              ElementsAre(IsError("tsf:BuildForm not enabled", U8(u8"set 1 (CL-1) > station 20.0000 > form 路面"),
                                  "there are fewer than two points")));
}

TEST(DocumentCheck, FindsAPointWithoutCodeOrExistence) {
  VornComposedPnt noCode = Point("", VornLocation::Left, DataType::Percent, 1.0, 1.0);
  VornComposedPnt noExistence = Point("L2", VornLocation::Left, DataType::Percent, 1.0, 1.0);
  noExistence.SetExistence(VORN_Existence::Unset);
  VornComposedPnt neither = noCode;
  neither.SetExistence(VORN_Existence::Unset);
  const std::string form = "set 1 (CL-1) > station 20.0000 > form A > ";
  const std::string existence = "existence is missing or neither \"true\" nor \"false\"";
  for (const Edition edition : kWritableEditions) {
    EXPECT_THAT(
        FindingsOf(edition, Form("A", {Center(), noCode, noExistence, neither})),
        ElementsAre(IsError("tsf:ComposedPnt not enabled", form + "point no. 2", "code is missing"),
                    IsError("tsf:ComposedPnt not enabled", form + "point L2", existence),
                    IsError("tsf:ComposedPnt not enabled", form + "point no. 4", "code is missing; " + existence)));
  }
}

TEST(DocumentCheck, FindsACodeUsedTwiceOncePerCode) {
  const VornComposedPnt l1 = Point("L1", VornLocation::Left, DataType::Percent, 1.0, 1.0);
  const VornComposedPnt r1 = Point("R1", VornLocation::Right, DataType::Percent, 1.0, 1.0);
  const std::string form = "set 1 (CL-1) > station 20.0000 > form A > ";
  EXPECT_THAT(FindingsOf(Edition::V41, Form("A", {Center(), l1, r1, l1, l1, r1})),
              ElementsAre(IsError("code used twice", form + "point L1", "another point of the form has the code L1"),
                          IsError("code used twice", form + "point R1", "another point of the form has the code R1")));
  EXPECT_THAT(FindingsOf(Edition::V41, {Section(0.0, {RoadForm("A"), RoadForm("B")})}), IsEmpty())
      << "other forms may use the code too";
}

TEST(DocumentCheck, FindsExistingGroundThatIsNotComplete) {
  VornExistingComposedPnt whole;
  whole.SetName("G1");
  whole.SetCLDist(1.0);
  whole.SetGh(2.0);
  VornExistingComposedPnt noHeight = whole;
  noHeight.SetGh(NurReal());
  VornExistingBuildForm ground;
  ground.SetName("G");
  ground.GetComposedPntArray().Add(whole);
  ground.GetComposedPntArray().Add(noHeight);
  ground.GetComposedPntArray().Add(VornExistingComposedPnt());
  VornXSection section = Section(20.0, {RoadForm("A")});
  section.GetExistingBuildFormArray().Add(ground);
  section.GetExistingBuildFormArray().Add(VornExistingBuildForm());
  const std::string path = "set 1 (CL-1) > station 20.0000 > existing ground ";
  EXPECT_THAT(
      FindingsOf(Edition::V41, {section}),
      ElementsAre(IsError("tsf:ExistingComposedPnt not enabled", path + "G > point G1", "the height is missing"),
                  IsError("tsf:ExistingComposedPnt not enabled", path + "G > point no. 3",
                          "the distance from the centre line is missing; the height is missing"),
                  IsError("tsf:ExistingBuildForm not enabled", path + "without a name",
                          "name is missing; there are fewer than two points")));
  EXPECT_THAT(FindingsOf(Edition::V20, {section}), IsEmpty()) << "edition 2.0 has no existing ground";
}

// --- control targets -----------------------------------------------------------------------------------------------

/// A document with one section and the target in its set.
std::vector<Finding> FindingsOfTarget(const VornFormCtrlTarget& target) {
  DesignDocument document =
      DocumentOf(Edition::V41, {Section(20.0, {RoadForm("A"), RoadForm("B")}), Section(20.0, {RoadForm("C")}, true)});
  document.sets[0].GetFormCtrlTargetArray().Add(target);
  return CheckDocument(document);
}

/// The remark that stands below every document of a later edition with targets.
auto IsGeneralNote(int count) {
  return IsNote("tsf:FormCtrlTarget not enabled", "all " + std::to_string(count) + " control targets",
                "their work type and code text are not part of edition 4.1, without which they never count as enabled");
}

const char* const kTargetPath = "set 1 (CL-1) > control target 1 (Width L1 R1)";

TEST(TargetCheck, FindsNothingWrongInACompleteTarget) {
  EXPECT_THAT(FindingsOfTarget(TargetOn(20.0, "A", {"L1", "R1"})), ElementsAre(IsGeneralNote(1)));
  EXPECT_THAT(FindingsOfTarget(TargetOn(20.0, "C", {"L1", "R1"}, true)), ElementsAre(IsGeneralNote(1)));
}

TEST(TargetCheck, FindsMembersThatAreMissingOrUnknown) {
  VornFormCtrlTarget target;
  EXPECT_THAT(FindingsOfTarget(target),
              ElementsAre(IsError("tsf:FormCtrlTarget not enabled", "set 1 (CL-1) > control target 1",
                                  "controlItem is missing or unknown; targetScope is missing; targetRegio is missing; "
                                  "targetPntType is missing, unknown or not one of the first five; there are no target "
                                  "points"),
                          IsGeneralNote(1)));
}

TEST(TargetCheck, FindsASinglePointUnlessItIsThatOfAHeight) {
  VornFormCtrlTarget target = TargetOn(20.0, "A", {"L1"});
  EXPECT_THAT(FindingsOfTarget(target),
              ElementsAre(IsError("tsf:FormCtrlTarget not enabled", "set 1 (CL-1) > control target 1 (Width L1)",
                                  "there are fewer than two target points"),
                          IsGeneralNote(1)));
  target.SetControlItem(ControlItem::Height);
  EXPECT_THAT(FindingsOfTarget(target),
              ElementsAre(IsNote("tsf:FormCtrlTarget not enabled", "set 1 (CL-1) > control target 1 (Height L1)",
                                 "a height has one target point, but two or more count as valid"),
                          IsGeneralNote(1)));
}

TEST(TargetCheck, NotesThePointTypesThatRegulationSetsButNeverCountAsValid) {
  VornFormCtrlTarget thickness = TargetOn(20.0, "A", {"L1", "R1"});
  thickness.SetControlItem(ControlItem::Thickness);
  thickness.SetTargetPntType(TargetPntType::LowerUpper);
  VornFormCtrlTarget depth = TargetOn(20.0, "A", {"L1", "R1"});
  depth.SetControlItem(ControlItem::Depth);
  depth.SetTargetPntType(TargetPntType::UpperLower);
  const char* const reason = "targetPntType is as regulation sets it, but never counts as valid";
  EXPECT_THAT(
      FindingsOfTarget(thickness),
      ElementsAre(IsNote("tsf:FormCtrlTarget not enabled", "set 1 (CL-1) > control target 1 (Thickness L1 R1)", reason),
                  IsGeneralNote(1)));
  EXPECT_THAT(FindingsOfTarget(depth), ElementsAre(IsNote("tsf:FormCtrlTarget not enabled",
                                                          "set 1 (CL-1) > control target 1 (Depth L1 R1)", reason),
                                                   IsGeneralNote(1)));
  depth.SetTargetPntType(TargetPntType::LowerUpper);
  EXPECT_THAT(FindingsOfTarget(depth),
              ElementsAre(IsError("tsf:FormCtrlTarget not enabled", "set 1 (CL-1) > control target 1 (Depth L1 R1)",
                                  "targetPntType is missing, unknown or not one of the first five"),
                          IsGeneralNote(1)));
}

TEST(TargetCheck, FindsTargetPointsThatAreNotComplete) {
  VornFormCtrlTarget target = TargetOn(20.0, "A", {"L1"});
  target.GetTargetPntArray().Add(VornFormCtrlTargetPnt());
  EXPECT_THAT(FindingsOfTarget(target),
              ElementsAre(IsError("tsf:FormCtrlTargetPnt not enabled", "set 1 (CL-1) > control target 1 (Width L1)",
                                  "cumulativeDist is missing; buildFormName is missing; code is missing"),
                          IsGeneralNote(1)));
}

TEST(TargetCheck, FindsWhatATargetNamesAndDoesNotExist) {
  EXPECT_THAT(FindingsOfTarget(TargetOn(40.0, "A", {"L1", "R1"})),
              Contains(IsError(kMissing, kTargetPath, "there is no cross section at station 40.0000")).Times(1))
      << "what all points miss is told once";
  EXPECT_THAT(FindingsOfTarget(TargetOn(40.0, "A", {"L1", "R1"}, true)),
              Contains(IsError(kMissing, kTargetPath,
                               "there is no cross section at station 40.0000 behind the change of shape")));
  EXPECT_THAT(
      FindingsOfTarget(TargetOn(20.0, "A", {"L1", "R1"}, true)),
      Contains(IsError(kMissing, kTargetPath, "there is no form A at station 20.0000 behind the change of shape")));
  EXPECT_THAT(FindingsOfTarget(TargetOn(20.0, "B", {"L1", "L9"})),
              ElementsAre(IsError(kMissing, "set 1 (CL-1) > control target 1 (Width L1 L9)",
                                  "form B at station 20.0000 has no code L9"),
                          IsGeneralNote(1)));
}

TEST(TargetCheck, LooksIntoTheFormsOfLaterEditionsToo) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(20.0, {RoadForm("A")})});
  document.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetFormCtrlTargetArray().Add(
      TargetOn(20.0, "B", {"L1", "R1"}));
  EXPECT_THAT(CheckDocument(document),
              Contains(IsError(kMissing, "set 1 (CL-1) > station 20.0000 > form A > control target 1 (Width L1 R1)",
                               "there is no form B at station 20.0000")));
}

TEST(TargetCheckIn20, FindsNothingWrongInACompleteTarget) {
  VornBuildForm form = RoadForm("A");
  form.GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  EXPECT_THAT(FindingsOf(Edition::V20, form), IsEmpty());
}

TEST(TargetCheckIn20, FindsMembersThatAreMissing) {
  VornBuildForm form = RoadForm("A");
  form.GetFormCtrlTargetArray().Add(VornFormCtrlTarget());
  EXPECT_THAT(FindingsOf(Edition::V20, form),
              ElementsAre(IsError("tsf:FormCtrlTarget not enabled",
                                  "set 1 (CL-1) > station 20.0000 > form A > control target 1",
                                  "the codes (the element's text) are missing; workType is missing or neither "
                                  "RE_CutWork nor RE_FillWork; controlItem is missing or unknown; targetScope is "
                                  "missing; targetRegio is missing; targetPntType is missing, unknown or not one of "
                                  "the first five")));
}

TEST(TargetCheckIn20, FindsCodesThatTheFormDoesNotHave) {
  VornBuildForm form = RoadForm("A");
  form.GetFormCtrlTargetArray().Add(Target20("L1  L9 R9"));
  const std::string path = "set 1 (CL-1) > station 20.0000 > form A > control target 1 (Width L1  L9 R9)";
  EXPECT_THAT(FindingsOf(Edition::V20, form), ElementsAre(IsError(kMissing, path, "form A has no code L9"),
                                                          IsError(kMissing, path, "form A has no code R9")));
}

TEST(TargetCheckIn20, FindsATargetOutsideAForm) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(20.0, {RoadForm("A")})});
  document.sets[0].GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  EXPECT_THAT(CheckDocument(document), ElementsAre(IsError("control target outside a build form", kTargetPath,
                                                           "edition 2.0 keeps control targets in their form")));
}

// --- places ---------------------------------------------------------------------------------------------------------

auto IsAt(const std::string& kind, const FindingPlace& place) {
  return AllOf(Field("kind", &Finding::kind, kind), Field("place", &Finding::place, place));
}

TEST(FindingPlaces, TellWhatIsWrongByIndex) {
  VornBuildForm twice = RoadForm("B");
  twice.GetComposedPntArray()[2].SetCode(CString("L1"));
  VornBuildForm nameless = RoadForm("");
  DesignDocument document = DocumentOf(
      Edition::V41, {Section(0.0, {RoadForm("A")}), Section(20.0, {RoadForm("A"), twice}), Section(20.0, {nameless})});
  document.hasStructureType = false;
  document.sets[0].SetRefAlign("");
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsAt("no tsf:StructureType", {}), IsAt("tsf:XSections not enabled", {0}),
                          IsAt("code used twice", {0, 1, 1, 2}), IsAt("station doubled", {0, 2}),
                          IsAt("tsf:BuildForm not enabled", {0, 2, 0})));
}

TEST(FindingPlaces, FollowTheOrderOfTheDocument) {
  const std::string section = "<tsf:XSection cumulativeDist=\"20.0000\"></tsf:XSection>";
  const std::string former = "<tsf:XSection cumulativeDist=\"40.0000\"></tsf:XSection>";
  EXPECT_THAT(FindingsIn(Edition::V41,
                         "<tsf:XSections refAlign=\"A\" refVertical=\"V\">" + former + section + "</tsf:XSections>"),
              Contains(IsAt("station out of order", {0, 0})))
      << "sections are sorted when they are read";
}

TEST(FindingPlaces, OfATargetOfTheSetIsTheSectionOfItsPoints) {
  DesignDocument document =
      DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")}), Section(20.0, {RoadForm("A")}, true)});
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(20.0, "A", {"L1", "absent"}, true));
  document.sets[0].GetFormCtrlTargetArray().Add(TargetOn(40.0, "A", {"L1", "R1"}));
  EXPECT_THAT(CheckDocument(document),
              ElementsAre(IsAt(kMissing, {0, 1}), IsAt(kMissing, {0}), IsAt("tsf:FormCtrlTarget not enabled", {})));
}

TEST(FindingPlaces, OfATargetOfAFormIsTheForm) {
  VornBuildForm form = RoadForm("B");
  form.GetFormCtrlTargetArray().Add(Target20("L1 absent"));
  EXPECT_THAT(FindingsOf(Edition::V20, {Section(0.0, {RoadForm("A"), form})}), ElementsAre(IsAt(kMissing, {0, 0, 1})));
}

// --- against the library's own rule --------------------------------------------------------------------------------

TEST(DocumentCheck, FindsAReasonForEveryElementThatIsNotEnabled) {
  // Each damage makes the library's own answer negative, and the check names it.
  const std::string whole =
      "<tsf:XSections refAlign='R' refVertical='V'><tsf:XSection cumulativeDist='0'><tsf:BuildForm name='A'>"
      "<tsf:ComposedPnt code='P1' existence='true'>0 0</tsf:ComposedPnt>"
      "<tsf:ComposedPnt code='P2' existence='false'>1 2</tsf:ComposedPnt>"
      "<tsf:FormCtrlTarget workType='RE_CutWork' controlItem='Width' targetScope='S' targetRegio='G' "
      "targetPntType='Inner Outer'>P1 P2</tsf:FormCtrlTarget>"
      "</tsf:BuildForm></tsf:XSection></tsf:XSections>";
  const auto isEnabled = [](const std::string& content) {
    const DesignDocument document = ReadText(Xml(Edition::V20, content));
    const EditionScope scope(Edition::V20);
    return document.sets.IsEnable();
  };
  EXPECT_TRUE(isEnabled(whole));
  EXPECT_THAT(FindingsIn(Edition::V20, whole), IsEmpty());
  for (const std::string damage :
       {" refAlign='R'", " refVertical='V'", " cumulativeDist='0'", " name='A'", " code='P1'", " existence='true'",
        " existence='false'", " workType='RE_CutWork'", " controlItem='Width'", " targetScope='S'", " targetRegio='G'",
        " targetPntType='Inner Outer'", ">P1 P2"}) {
    std::string text = whole;
    text.replace(text.find(damage), damage.size(), damage[0] == '>' ? ">" : "");
    EXPECT_FALSE(isEnabled(text)) << damage;
    EXPECT_THAT(FindingsIn(Edition::V20, text), Contains(Field(&Finding::kind, HasSubstr(" not enabled")))) << damage;
    EXPECT_THAT(FindingsIn(Edition::V20, text), Each(Field(&Finding::reason, Not(IsEmpty())))) << damage;
  }
}

}  // namespace
}  // namespace vorn_host
