#include "host/project/project.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/project/project_file.h"
#include "tests/host/documents.h"
#include "tests/host/projects.h"
#include "tests/host/temporary_directory.h"
#include "vorn/platform/carchive.h"

namespace vorn_host {
namespace {

using host_test::ErrorOf;
using host_test::FileOf;
using host_test::kProjectName;
using host_test::ProjectOf;
using host_test::ProjectReadError;
using host_test::ReadText;
using host_test::RecordOf;
using host_test::Reloaded;
using host_test::RoadForm;
using host_test::Section;
using host_test::SmallDesign;
using host_test::Stored;
using host_test::TemporaryDirectory;
using host_test::Text;
using host_test::WriteText;
using host_test::Xml;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

// --- what comes back -------------------------------------------------------------------------------------------------

class SampleProject : public testing::TestWithParam<const char*> {
 protected:
  [[nodiscard]] static std::string SamplePath() { return std::string(VORN_SAMPLES) + "/" + GetParam(); }
};

TEST_P(SampleProject, ComesBackFromAProjectByteForByte) {
  DesignDocument document = DesignDocument::Read(SamplePath());
  const std::string expected = WriteText(document);

  Project project = ProjectOf(DesignDocument::Read(SamplePath()));
  Project loaded = Reloaded(project);
  DesignDocument design = loaded.GiveDesign();
  EXPECT_EQ(design.edition, document.edition);
  EXPECT_EQ(design.encodingName, document.encodingName);
  EXPECT_EQ(design.hasStructureType, document.hasStructureType);
  EXPECT_EQ(WriteText(design), expected);
}

TEST_P(SampleProject, ComesBackFromEveryStoreVersionThatCanBeWritten) {
  DesignDocument document = DesignDocument::Read(SamplePath());
  const std::string expected = WriteText(document);
  for (const std::string_view version : Project::kWritableStoreVersions) {
    Project project = ProjectOf(DesignDocument::Read(SamplePath()));
    std::vector<Project::Loss> losses;
    Project loaded = Project::FromBytes(Text(project.ToBytes("p", version, losses)), "p");
    EXPECT_EQ(loaded.GetStoreVersion(), version);
    EXPECT_THAT(losses, IsEmpty()) << losses.front().what;
    DesignDocument design = loaded.GiveDesign();
    EXPECT_EQ(WriteText(design), expected) << version;
  }
}

TEST_P(SampleProject, StaysTheSameHoweverOftenItIsSaved) {
  Project project = ProjectOf(DesignDocument::Read(SamplePath()));
  // Not EXPECT_EQ: nobody wants to see the bytes.
  const std::string first = Stored(project);
  EXPECT_TRUE(Stored(project) == first);
  Project loaded = Project::FromBytes(first, "p");
  EXPECT_TRUE(Stored(loaded) == first);
  loaded.TakeDesign(loaded.GiveDesign());
  EXPECT_TRUE(Stored(loaded) == first);
}

INSTANTIATE_TEST_SUITE_P(Project, SampleProject,
                         testing::Values("road-4.1.xml", "road-with-geometry-4.0.xml", "river-2.0.xml",
                                         "farm-maff-1.0.xml"));

TEST(Project, GivesBackWhatTheLibraryDoesNotModelFromItsPlace) {
  const std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE x [<!-- a -->]>\n<!-- before -->\n<?style one two?>\n" +
      host_test::With(host_test::RootOpen(Edition::V41), "<tsf:TSFormControlData",
                      "<tsf:TSFormControlData site=\"a &amp; b&#10;c\"") +
      "<!-- first --><rgm:RoadGm><rgm:Note kind=\"&lt;x&gt;\"> two  blanks <![CDATA[<raw>]]></rgm:Note></rgm:RoadGm>"
      "<tsf:FileInfo createDate=\"2026-01-02T03:04:05\"><!-- in the file information --></tsf:FileInfo>"
      "<tsf:XSections refAlign=\"A\" refVertical=\"V\" checked=\"yes\">stray text"
      "<tsf:XSection cumulativeDist=\"40.0000\"><!-- later --><tsf:BuildForm name=\"Plan\">"
      "<tsf:ComposedPnt code=\"CL\" existence=\"true\" location=\"C\">0.000 0.000</tsf:ComposedPnt>"
      "<tsf:ComposedPnt code=\"L1\" existence=\"true\" location=\"L\" mark=\"x\">1.000 0.000</tsf:ComposedPnt>"
      "</tsf:BuildForm></tsf:XSection>"
      "<tsf:XSection cumulativeDist=\"20.0000\" note=\"earlier\"/>"
      "</tsf:XSections>" +
      std::string(host_test::kRootClose) + "<!-- behind -->\n";
  DesignDocument document = ReadText(text);
  ASSERT_FALSE(document.carried.IsEmpty());
  const std::string expected = WriteText(document);
  Project project = ProjectOf(ReadText(text));
  Project loaded = Reloaded(project);
  DesignDocument design = loaded.GiveDesign();
  EXPECT_EQ(WriteText(design), expected);
  EXPECT_EQ(design.carried.Rows().size(), document.carried.Rows().size());
  EXPECT_THAT(expected, AllOf(HasSubstr("<!-- behind -->"), HasSubstr("two  blanks"), HasSubstr("mark=\"x\""),
                              HasSubstr("a &amp; b&#10;c"), HasSubstr("<![CDATA[<raw>]]>")));
  // The order of the document, which `vorn check` looks at.
  EXPECT_THAT(design.carried.SectionOrder(0), ElementsAre(1, 0));
}

TEST(Project, KeepsExistingGroundInUseWhenItsFirstFormHasPoints) {
  DesignDocument design = SmallDesign();
  VornXSection& section = design.sets[0].GetXSectionArray()[0];
  section.GetExistingBuildFormArray().SetSize(1);
  section.GetExistingBuildFormArray()[0].GetComposedPntArray().SetSize(2);
  section.SetExistingFlag(1);
  design.sets[0].GetXSectionArray().Add(Section(40.0, {RoadForm("Plan")}));
  design.sets[0].GetXSectionArray()[1].GetExistingBuildFormArray().SetSize(1);
  design.sets[0].GetXSectionArray().Add(Section(60.0, {RoadForm("Plan")}));
  Project project = ProjectOf(std::move(design));
  const DesignDocument loaded = Reloaded(project).GiveDesign();
  EXPECT_EQ(loaded.sets[0].GetXSectionArray()[0].GetExistingFlag(), 1);
  EXPECT_EQ(loaded.sets[0].GetXSectionArray()[1].GetExistingFlag(), 0);
  EXPECT_EQ(loaded.sets[0].GetXSectionArray()[2].GetExistingFlag(), 0);
}

TEST(Project, GivesBackEmptySetsAndWhatHangsOnThem) {
  const std::string text = Xml(
      Edition::V41,
      "<tsf:XSections projectPhase=\"x\" foo=\"bar\"><!-- keep --></tsf:XSections>"
      "<tsf:XSections refAlign=\"A\" refVertical=\"V\" note=\"n\"><tsf:XSection cumulativeDist=\"20.0000\" mark=\"m\"/>"
      "</tsf:XSections><tsf:XSections alignment=\"false\"/>");
  DesignDocument document = ReadText(text);
  const std::string expected = WriteText(document);
  Project project = ProjectOf(ReadText(text));
  Project loaded = Reloaded(project);
  DesignDocument design = loaded.GiveDesign();
  ASSERT_EQ(design.sets.GetSize(), 3);
  EXPECT_EQ(WriteText(design), expected);
  EXPECT_THAT(expected, AllOf(HasSubstr("foo=\"bar\""), HasSubstr("mark=\"m\"")));
}

TEST(Project, InventsNoPointsForTheControlTargetsOfForms) {
  for (const Edition edition : {Edition::V20, Edition::V41}) {
    for (const auto item : {VornFormCtrlTarget::ControlItem::Width, VornFormCtrlTarget::ControlItem::SlopeLength,
                            VornFormCtrlTarget::ControlItem::Height}) {
      DesignDocument design = SmallDesign();
      design.edition = edition;
      VornFormCtrlTarget target = host_test::Target();
      target.SetControlItem(item);
      target.SetCode("L1 R1");
      design.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetFormCtrlTargetArray().Add(target);
      Project project = ProjectOf(std::move(design));
      const DesignDocument loaded = Reloaded(project).GiveDesign();
      const auto& form = loaded.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0];
      ASSERT_EQ(form.GetFormCtrlTargetArray().GetSize(), 1);
      EXPECT_TRUE(form.GetFormCtrlTargetArray()[0].GetTargetPntArray().IsEmpty());
      EXPECT_EQ(form.GetFormCtrlTargetArray()[0].GetCodeName(), "L1 R1");
    }
  }
}

TEST(Project, KeepsThePointsThatAnApplicationGaveToControlTargets) {
  DesignDocument design = SmallDesign();
  design.edition = Edition::V20;
  for (const auto item : {VornFormCtrlTarget::ControlItem::Width, VornFormCtrlTarget::ControlItem::Thickness}) {
    VornFormCtrlTarget target = host_test::TargetOn(20.0, "Plan", {"L1", "R1"});
    target.SetControlItem(item);
    target.GetTargetPntArray()[0].SetBuildFormID(7);
    target.GetTargetPntArray()[1].SetSectionID(8);
    design.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetFormCtrlTargetArray().Add(target);
  }
  Project project = ProjectOf(std::move(design));
  const DesignDocument loaded = Reloaded(project).GiveDesign();
  const auto& targets = loaded.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetFormCtrlTargetArray();
  for (const VornFormCtrlTarget& target : targets) {
    ASSERT_EQ(target.GetTargetPntArray().GetSize(), 2);
    EXPECT_EQ(target.GetTargetPntArray()[0].GetCode(), "L1");
    EXPECT_EQ(target.GetTargetPntArray()[0].GetBuildFormID(), 7u);
    EXPECT_EQ(target.GetTargetPntArray()[1].GetSectionID(), 8u);
  }
}

// --- where a design goes ---------------------------------------------------------------------------------------------

TEST(Project, HasAnAlignmentForEachSetOfADocument) {
  DesignDocument design;
  for (const char* name : {"A-1", "B-2", "A-1"}) {
    VornXSections& set = design.sets[design.sets.Add(VornXSections())];
    set.SetRefAlign(name);
    set.GetXSectionArray().SetSize(1);
  }
  VornFileInfo info;
  info.SetNote("note");
  design.fileInfos.Add(info);
  design.structureType.SetType(CString("Road"));
  design.edition = Edition::V40;
  Project project = ProjectOf(std::move(design));
  const VornRoadGmData& roadGm = project.data.GetInfoConstrcut().GetRoadGm();
  ASSERT_EQ(roadGm.GetAlignments().GetSize(), 3);
  EXPECT_EQ(roadGm.GetAlignments()[0].GetName(), "A-1");
  EXPECT_EQ(roadGm.GetAlignments()[1].GetName(), "B-2");
  EXPECT_EQ(roadGm.GetAlignments()[2].GetName(), "A-1");
  EXPECT_EQ(roadGm.GetAlignments().GetCurrent(), 0);
  EXPECT_EQ(roadGm.GetAlignments()[1].GetXSections().GetXSectionArray().GetSize(), 1);
  EXPECT_EQ(roadGm.GetFileInfos()[0].GetNote(), "note");
  EXPECT_EQ(roadGm.GetStructureType().GetTypeStr(), "Road");
  EXPECT_EQ(roadGm.GetSchemaVersion(), VornSchema::Version40);
}

TEST(Project, KeepsItsRoadDataWhileTheDesignIsOut) {
  Project project = ProjectOf(SmallDesign());
  VornRoadGmData& roadGm = project.data.GetInfoConstrcut().GetRoadGm();
  roadGm.GetAlignments()[0].SetName("main line");
  roadGm.GetAlignments()[0].SetCrsName("plane 9");
  roadGm.GetRoadInfo().SetName("Route 1");
  VornCrsData crs;
  crs.SetName("plane 9");
  project.data.GetInfoConstrcut().GetCrsArray().Add(crs);

  Project loaded = Reloaded(project);
  DesignDocument design = loaded.GiveDesign();
  EXPECT_TRUE(
      loaded.data.GetInfoConstrcut().GetRoadGm().GetAlignments()[0].GetXSections().GetXSectionArray().IsEmpty());
  design.sets[0].GetXSectionArray()[0].SetName("No.1");
  design.sets.Add(VornXSections());
  design.sets[1].SetRefAlign("ramp");
  loaded.TakeDesign(std::move(design));
  const VornAlignmentsArray& alignments = loaded.data.GetInfoConstrcut().GetRoadGm().GetAlignments();
  ASSERT_EQ(alignments.GetSize(), 2);
  EXPECT_EQ(alignments[0].GetName(), "main line");
  EXPECT_EQ(alignments[0].GetCrsName(), "plane 9");
  EXPECT_EQ(alignments[0].GetXSections().GetXSectionArray()[0].GetName(), "No.1");
  EXPECT_EQ(alignments[1].GetName(), "ramp");
  EXPECT_EQ(loaded.data.GetInfoConstrcut().GetCrsArray()[0].GetName(), "plane 9");
  EXPECT_EQ(loaded.data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().GetName(), "Route 1");
}

TEST(Project, LosesAnAlignmentWithItsSetAndKeepsThoseWithoutOne) {
  DesignDocument design = SmallDesign();
  design.sets.Add(VornXSections());
  design.sets[1].SetRefAlign("B");
  Project project = ProjectOf(std::move(design));
  VornAlignment survey;
  survey.SetName("survey line");
  project.data.GetInfoConstrcut().GetRoadGm().GetAlignments().InsertAt(1, survey);
  DesignDocument given = project.GiveDesign();
  ASSERT_EQ(given.sets.GetSize(), 2);
  given.sets.RemoveAt(1);
  project.TakeDesign(std::move(given));
  const VornAlignmentsArray& alignments = project.data.GetInfoConstrcut().GetRoadGm().GetAlignments();
  ASSERT_EQ(alignments.GetSize(), 2);
  EXPECT_EQ(alignments[0].GetName(), "A-1");
  EXPECT_EQ(alignments[1].GetName(), "survey line");
}

TEST(Project, TakesTheDesignFromTheRoadCentreWhenOnlyThatHasOne) {
  VornLinearXMLData data;
  VornAlignment alignment;
  alignment.SetName("A-9");
  alignment.GetXSections().GetXSectionArray().SetSize(2);
  data.GetRoadCenter().GetRoadGm().GetAlignments().Add(alignment);
  data.GetRoadCenter().GetRoadGm().SetSchemaVersion(VornSchema::Version40);
  Project project = Project::FromBytes(FileOf("06.00", RecordOf(data, "06.00")), std::string(kProjectName));
  DesignDocument design = project.GiveDesign();
  ASSERT_EQ(design.sets.GetSize(), 1);
  EXPECT_EQ(design.sets[0].GetRefAlign(), "A-9");
  EXPECT_EQ(design.sets[0].GetXSectionArray().GetSize(), 2);
  project.TakeDesign(std::move(design));
  EXPECT_TRUE(project.data.GetInfoConstrcut().GetRoadGm().GetAlignments().IsEmpty());
  EXPECT_EQ(project.data.GetRoadCenter().GetRoadGm().GetAlignments()[0].GetXSections().GetXSectionArray().GetSize(), 2);
}

TEST(Project, OfAnotherHostTakesItsEditionFromTheSchemaVersion) {
  for (const auto& [version, edition] : {std::pair{VornSchema::Version20, Edition::V20},
                                         {VornSchema::Version40, Edition::V40},
                                         {VornSchema::Version41, Edition::V41}}) {
    VornLinearXMLData data;
    data.GetInfoConstrcut().GetRoadGm().SetSchemaVersion(version);
    data.GetInfoConstrcut().GetRoadGm().GetStructureType().SetType(CString("Road"));
    Project project = Project::FromBytes(FileOf("06.00", RecordOf(data, "06.00")), std::string(kProjectName));
    const DesignDocument design = project.GiveDesign();
    EXPECT_EQ(design.edition, edition);
    EXPECT_TRUE(design.hasStructureType);
  }
}

TEST(Project, OfAnApplicationTakesItsEditionFromTheSchemaVersion) {
  for (const auto& [version, edition] : {std::pair{VornSchema::Version20, Edition::V20},
                                         {VornSchema::Version40, Edition::V40},
                                         {VornSchema::Version41, Edition::V41}}) {
    Project project;
    project.data.GetInfoConstrcut().GetRoadGm().SetSchemaVersion(version);
    Project loaded = Reloaded(project);
    EXPECT_EQ(loaded.data.GetInfoConstrcut().GetRoadGm().GetSchemaVersion(), version);
    EXPECT_EQ(loaded.GiveDesign().edition, edition);
    EXPECT_EQ(project.GiveDesign().edition, edition);
  }
}

TEST(Project, OfAnApplicationMayBeChangedAsLongAsItCameFromNoDocument) {
  Project project;
  VornRoadGmData& roadGm = project.data.GetInfoConstrcut().GetRoadGm();
  (void)Stored(project);
  roadGm.SetSchemaVersion(VornSchema::Version20);
  roadGm.GetStructureType().SetJobName("job");
  const DesignDocument design = project.GiveDesign();
  EXPECT_EQ(design.edition, Edition::V20);
  EXPECT_TRUE(design.hasStructureType);
}

TEST(Project, OfAnApplicationFindsADesignThatIsPutWithTheRoadCentre) {
  Project project;
  VornRoadGmData& center = project.data.GetRoadCenter().GetRoadGm();
  center.SetSchemaVersion(VornSchema::Version40);
  VornAlignment alignment;
  alignment.SetName("A-9");
  alignment.GetXSections().GetXSectionArray().SetSize(2);
  center.GetAlignments().Add(alignment);
  DesignDocument design = project.GiveDesign();
  ASSERT_EQ(design.sets.GetSize(), 1);
  EXPECT_EQ(design.sets[0].GetRefAlign(), "A-9");
  EXPECT_EQ(design.edition, Edition::V40);
  project.TakeDesign(std::move(design));
  EXPECT_EQ(center.GetAlignments()[0].GetXSections().GetXSectionArray().GetSize(), 2);

  // One in the construction information is the design.
  Project both;
  both.data.GetRoadCenter().GetRoadGm().GetAlignments().Add(alignment);
  (void)both.GiveDesign();
  both = Project();
  both.data.GetRoadCenter().GetRoadGm().GetAlignments().Add(alignment);
  (void)Stored(both);
  alignment.GetXSections().SetRefAlign("A-1");
  both.data.GetInfoConstrcut().GetRoadGm().GetAlignments().Add(alignment);
  EXPECT_EQ(both.GiveDesign().sets[0].GetRefAlign(), "A-1");
}

TEST(Project, HasAStructureTypeForAnyOfItsTexts) {
  using Change = void (*)(VornStructureType&);
  const auto isGiven = [](Change change) {
    Project project;
    change(project.data.GetInfoConstrcut().GetRoadGm().GetStructureType());
    const bool given = Reloaded(project).GiveDesign().hasStructureType;
    EXPECT_EQ(project.GiveDesign().hasStructureType, given);
    return given;
  };
  EXPECT_FALSE(isGiven([](VornStructureType&) {}));
  EXPECT_FALSE(isGiven([](VornStructureType& type) { type.SetStationType(""); }));
  EXPECT_TRUE(isGiven([](VornStructureType& type) { type.SetType(CString("Road")); }));
  EXPECT_TRUE(isGiven([](VornStructureType& type) { type.SetJobName("job"); }));
  EXPECT_TRUE(isGiven([](VornStructureType& type) { type.SetCompany("company"); }));
  EXPECT_TRUE(isGiven([](VornStructureType& type) { type.SetStationType("BP"); }));
}

TEST(Project, OfADocumentHasTheStructureTypeThatItsApplicationAdds) {
  Project project = ProjectOf(SmallDesign());
  EXPECT_FALSE(Reloaded(project).GiveDesign().hasStructureType);
  project.data.GetInfoConstrcut().GetRoadGm().GetStructureType().SetCompany("company");
  DesignDocument design = Reloaded(project).GiveDesign();
  EXPECT_THAT(WriteText(design), HasSubstr("company=\"company\""));
  // One that its document was to be without stays out.
  design.hasStructureType = false;
  project.TakeDesign(std::move(design));
  EXPECT_FALSE(Reloaded(project).GiveDesign().hasStructureType);
}

TEST(Project, RemembersThatItsDesignLiesWithTheRoadCentre) {
  VornLinearXMLData data;
  data.GetRoadCenter().GetRoadGm().GetAlignments().SetSize(1);
  data.GetRoadCenter().GetRoadGm().GetAlignments()[0].GetXSections().GetXSectionArray().SetSize(2);
  Project project = Project::FromBytes(FileOf("06.00", RecordOf(data, "06.00")), std::string(kProjectName));
  project.TakeDesign(project.GiveDesign());
  Project again = Reloaded(project);
  EXPECT_EQ(again.GiveDesign().sets[0].GetXSectionArray().GetSize(), 2);
}

TEST(Project, TakesADesignInPlaceOfTheOneThatItHas) {
  DesignDocument design = SmallDesign();
  design.sets.Add(VornXSections());
  Project project = ProjectOf(std::move(design));
  project.TakeDesign(SmallDesign());  // nothing was handed out
  const VornAlignmentsArray& alignments = project.data.GetInfoConstrcut().GetRoadGm().GetAlignments();
  ASSERT_EQ(alignments.GetSize(), 1);
  EXPECT_EQ(alignments.GetCurrent(), 0);
}

TEST(Project, MovesTheCurrentAlignmentWithThoseThatGo) {
  DesignDocument design;
  design.sets.SetSize(3);
  Project project = ProjectOf(std::move(design));
  VornAlignmentsArray& alignments = project.data.GetInfoConstrcut().GetRoadGm().GetAlignments();
  alignments.SetCurrent(2);
  DesignDocument given = project.GiveDesign();
  given.sets.SetSize(2);
  project.TakeDesign(std::move(given));
  EXPECT_EQ(alignments.GetCurrent(), 1);
  project.TakeDesign(DesignDocument());
  EXPECT_TRUE(alignments.IsEmpty());
  EXPECT_EQ(alignments.GetCurrent(), -1);
}

TEST(Project, IsNotSavedWhileItsDesignIsOut) {
  const TemporaryDirectory directory;
  Project project = ProjectOf(SmallDesign());
  DesignDocument design = project.GiveDesign();
  EXPECT_THAT(ErrorOf([&] { project.Save(directory / "p.vorn"); }), HasSubstr("while its design is handed out"));
  EXPECT_THAT(directory.Names(), IsEmpty());
  project.TakeDesign(std::move(design));
  project.Save(directory / "p.vorn");
}

TEST(Project, RefusesSetsWithoutAlignmentsOfTheirOwn) {
  Project project = ProjectOf(SmallDesign());
  const std::string content = Stored(project);
  const std::string_view record = ProjectFile::Parse(content, "p").record;
  for (const char* sets : {"<set alignment=\"1\"/>", "<set alignment=\"-1\"/>", "<set/>",
                           "<set alignment=\"0\"/><set alignment=\"0\"/>", "<set alignment=\"0x\"/>",
                           "<set alignment=\" 0\"/>", "<set alignment=\"+0\"/>", "<set alignment=\"4294967296\"/>"}) {
    EXPECT_THAT(
        ProjectReadError(FileOf("06.00", record, "<document edition=\"4.1\">" + std::string(sets) + "</document>")),
        HasSubstr("no alignment of its own"))
        << sets;
  }
}

TEST(Project, TellsWhetherItHoldsMoreThanTheDesign) {
  using Change = void (*)(VornLinearXMLData&);
  const auto holds = [](Change change) {
    DesignDocument design = SmallDesign();
    design.fileInfos.SetSize(1);
    design.structureType.SetJobName("job");
    design.edition = Edition::V20;
    Project project = ProjectOf(std::move(design));
    change(project.data);
    (void)project.GiveDesign();
    return project.HoldsRoadData();
  };
  EXPECT_FALSE(holds([](VornLinearXMLData&) {}));
  EXPECT_TRUE(holds([](VornLinearXMLData& data) { data.GetInfoConstrcut().GetCrsArray().SetSize(1); }));
  EXPECT_TRUE(holds(
      [](VornLinearXMLData& data) { data.GetInfoConstrcut().GetRoadGm().GetAlignments()[0].SetCrsName("plane 9"); }));
  EXPECT_TRUE(holds([](VornLinearXMLData& data) { data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().SetName("R 1"); }));
  EXPECT_TRUE(holds([](VornLinearXMLData& data) { data.GetInfoConstrcut().GetRoadGm().SetOption(1); }));
  EXPECT_TRUE(holds([](VornLinearXMLData& data) { data.GetLandXml().GetProject().SetName("name"); }));
  EXPECT_TRUE(holds([](VornLinearXMLData& data) { data.GetRoadCenter().GetProject().SetName("name"); }));
  EXPECT_TRUE(holds([](VornLinearXMLData& data) { data.GetInfoConstrcut().GetFormCtrl().SetValue(3.0); }));
}

// --- store versions --------------------------------------------------------------------------------------------------

TEST(Project, LoadsEveryEarlierStoreVersion) {
  for (const char* version : {"03.00", "04.00", "05.00", "05.50", "06.00"}) {
    VornLinearXMLData data;
    data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().SetName("Route 1");
    data.GetInfoConstrcut().GetCrsArray().SetSize(2);
    data.GetLandXml().GetProject().SetName("LandXML");
    const Project project = Project::FromBytes(FileOf(version, RecordOf(data, version)), std::string(kProjectName));
    EXPECT_EQ(project.GetStoreVersion(), version);
    EXPECT_EQ(project.data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().GetName(), "Route 1") << version;
    EXPECT_EQ(project.data.GetInfoConstrcut().GetCrsArray().GetSize(), 2);
    EXPECT_EQ(project.data.GetLandXml().GetProject().GetName(), "LandXML");
  }
}

TEST(Project, RefusesToWriteVersionsThatNobodyCouldRead) {
  Project project = ProjectOf(SmallDesign());
  std::vector<Project::Loss> losses;
  for (const char* version : {"04.00", "06.01", "07.00", "", "5"}) {
    EXPECT_THAT(
        ErrorOf([&] { (void)project.ToBytes("p.vorn", version, losses); }),
        AllOf(HasSubstr("p.vorn: store version " + std::string(version) + " cannot be written"), HasSubstr("05.00")));
  }
}

TEST(Project, TellsWhatAnOlderStoreVersionCannotHold) {
  const auto makeProject = [] {
    DesignDocument design = SmallDesign();
    VornBuildForm& form = design.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0];
    form.SetOrgSurface(true);
    form.GetComposedPntArray()[1].SetXSectType(7, VornComposedPnt::PntType::Sub);
    form.GetComposedPntArray()[2].SetDekiPairID(9, VornComposedPnt::PntType::Sub);
    form.GetComposedPntArray()[2].ElmType(VornComposedPnt::ElementType::Shoulder);
    VornFormCtrlTarget target = host_test::TargetOn(20.0, "Plan", {"L1", "R1"});
    target.GetTargetPntArray()[0].SetXSectType(3);
    design.sets[0].GetFormCtrlTargetArray().Add(target);
    return ProjectOf(std::move(design));
  };
  const auto what = [](const char* text) { return Field(&Project::Loss::what, HasSubstr(text)); };
  std::vector<Project::Loss> losses;
  Project newest = makeProject();
  (void)newest.ToBytes("p", "06.00", losses);
  EXPECT_THAT(losses, IsEmpty());
  Project middle = makeProject();
  (void)middle.ToBytes("p", "05.50", losses);
  EXPECT_THAT(losses, ElementsAre(what("second role"), what("element type"), what("control target")));
  EXPECT_EQ(losses[0].count, 2);
  Project oldest = makeProject();
  (void)oldest.ToBytes("p", "05.00", losses);
  EXPECT_THAT(losses,
              ElementsAre(what("second role"), what("element type"), what("control target"), what("original surface")));
}

TEST(Project, KeepsWhatAnOlderStoreVersionCannotHold) {
  const TemporaryDirectory directory;
  DesignDocument design = SmallDesign();
  VornBuildForm& form = design.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0];
  form.SetOrgSurface(true);
  form.GetComposedPntArray()[1].SetXSectType(9, VornComposedPnt::PntType::Sub);
  form.GetComposedPntArray()[1].SetCode("S1", VornComposedPnt::PntType::Sub);
  form.GetComposedPntArray()[2].ElmType(VornComposedPnt::ElementType::Shoulder);
  Project project = ProjectOf(std::move(design));
  const std::string before = Stored(project);
  for (const char* version : {"05.00", "05.50"}) {
    EXPECT_THAT(ErrorOf([&] { project.Save(directory / "missing" / "p.vorn", version); }), HasSubstr("missing"));
    EXPECT_TRUE(Stored(project) == before) << "after a save that failed, " << version;
    project.Save(directory / "p.vorn", version);
    EXPECT_EQ(Project::Read(directory / "p.vorn").GetStoreVersion(), version);
    EXPECT_TRUE(Stored(project) == before) << "after a save, " << version;
  }
  const VornBuildForm& kept = std::as_const(project)
                                  .data.GetInfoConstrcut()
                                  .GetRoadGm()
                                  .GetAlignments()[0]
                                  .GetXSections()
                                  .GetXSectionArray()[0]
                                  .GetBuildFormArray()[0];
  EXPECT_EQ(kept.GetComposedPntArray()[1].GetXSectType(VornComposedPnt::PntType::Sub), 9u);
}

TEST(Project, KeepsTheCodesOfItsPointsInOlderStoreVersions) {
  Project first = ProjectOf(SmallDesign());
  Project loaded = Reloaded(first);  // a loaded point does not know which code was set last
  Project older = Reloaded(loaded, "05.00");
  const DesignDocument design = older.GiveDesign();
  const Vorn_ComposedPntArray& points =
      design.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetComposedPntArray();
  EXPECT_EQ(points[1].GetCode(), "L1");
  EXPECT_EQ(points[2].GetCode(), "R1");
}

TEST(Project, OfANewerProgramIsRefusedWithBothVersions) {
  const std::string record = RecordOf(VornLinearXMLData(), "06.00");
  EXPECT_THAT(ProjectReadError(FileOf("06.50", record)),
              AllOf(HasSubstr("ring.vorn: the project was written by a newer program"), HasSubstr("06.50"),
                    HasSubstr("up to 06.00")));
  EXPECT_THAT(ProjectReadError(FileOf("06.00", RecordOf(VornLinearXMLData(), "06.10"))),
              AllOf(HasSubstr("construction information"), HasSubstr("06.10"), HasSubstr("up to 06.00")));

  // The road-centre data's version stands behind the construction information's record.
  VornLinearXMLData data;
  data.GetInfoConstrcut().SetStoreVersion("06.00");
  data.GetRoadCenter().SetStoreVersion("06.20");
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  data.Serialize(ar, "06.00");
  ar.Close();
  EXPECT_THAT(ProjectReadError(FileOf("06.00", Text(file.Bytes()))),
              AllOf(HasSubstr("road-centre"), HasSubstr("06.20"), HasSubstr("up to 06.00")));

  std::string newerLandXml = record;
  const std::size_t at = newerLandXml.rfind("01.11");
  ASSERT_NE(at, std::string::npos);
  newerLandXml.replace(at, 5, "01.12");
  EXPECT_THAT(ProjectReadError(FileOf("06.00", newerLandXml)),
              AllOf(HasSubstr("LandXML"), HasSubstr("01.12"), HasSubstr("up to 01.11")));
}

TEST(Project, OfANewerContainerIsRefusedWithBothVersions) {
  Project project;
  std::string content = Stored(project);
  content[8] = 2;
  EXPECT_THAT(ProjectReadError(content), AllOf(HasSubstr("version 2"), HasSubstr("version 1"), HasSubstr("newer")));
}

// --- damage ----------------------------------------------------------------------------------------------------------

TEST(Project, IsRefusedWhereverItIsCut) {
  Project project = ProjectOf(SmallDesign());
  const std::string content = Stored(project);
  for (std::size_t size = 0; size < content.size(); ++size) {
    ASSERT_THAT(ProjectReadError(content.substr(0, size)), HasSubstr("ring.vorn: ")) << size;
  }
  EXPECT_THAT(ProjectReadError(content + "x"), HasSubstr("1 bytes too many"));
}

TEST(Project, IsRefusedWhicheverByteIsChanged) {
  Project project = ProjectOf(SmallDesign());
  const std::string content = Stored(project);
  for (std::size_t at = 0; at < content.size(); ++at) {
    std::string damaged = content;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
    ASSERT_THAT(ProjectReadError(damaged), HasSubstr("ring.vorn: ")) << at;
  }
}

TEST(Project, TellsWhichPartIsDamaged) {
  Project project = ProjectOf(SmallDesign());
  const std::string content = Stored(project);
  const auto damagedAt = [&](std::size_t at) {
    std::string damaged = content;
    damaged[at] = static_cast<char>(damaged[at] + 1);
    return ProjectReadError(damaged);
  };
  EXPECT_THAT(damagedAt(0), HasSubstr("not a project file"));
  EXPECT_THAT(damagedAt(14), HasSubstr("head of the project file is damaged"));
  EXPECT_THAT(damagedAt(ProjectFile::kHeadSize + 3), HasSubstr("road data of the project file is damaged"));
  EXPECT_THAT(damagedAt(content.size() - 2), HasSubstr("document part of the project file is damaged"));
  EXPECT_THAT(ProjectReadError("<?xml version=\"1.0\"?>"), HasSubstr("not a project file"));
  EXPECT_THAT(ProjectReadError(content.substr(0, 20)), HasSubstr("ends within its head"));
  EXPECT_THAT(ProjectReadError(content.substr(0, content.size() - 1)), HasSubstr("1 bytes are missing"));
}

TEST(Project, TellsWhereARecordCannotBeRead) {
  const std::string record = RecordOf(VornLinearXMLData(), "06.00");
  EXPECT_THAT(ProjectReadError(FileOf("06.00", record.substr(0, record.size() - 5))),
              AllOf(HasSubstr("the road data cannot be read in store version 06.00: at byte"), HasSubstr("too early")));
  EXPECT_THAT(ProjectReadError(FileOf("06.00", record + "123")), HasSubstr("by 3 bytes"));
  EXPECT_THAT(ProjectReadError(FileOf("6.000", record)), HasSubstr("no store version"));
}

/// A document part that somebody made up, below a record that is in order.
std::string WithDocumentPart(std::string_view part) {
  Project project = ProjectOf(SmallDesign());
  const std::string content = Stored(project);
  return FileOf("06.00", ProjectFile::Parse(content, "p").record, part);
}

TEST(Project, RefusesADocumentPartThatMakesNoSense) {
  const auto carried = [](std::string_view items) {
    return WithDocumentPart("<document edition=\"4.1\">" + std::string(items) + "</document>");
  };
  EXPECT_THAT(ProjectReadError(WithDocumentPart("<document")), HasSubstr("document part of the project is damaged"));
  EXPECT_THAT(ProjectReadError(WithDocumentPart("<other/>")), HasSubstr("there is no document"));
  EXPECT_THAT(ProjectReadError(WithDocumentPart("<document edition=\"9.9\"/>")), HasSubstr("edition \"9.9\""));
  EXPECT_THAT(ProjectReadError(carried("<item name=\"x\"/>")), HasSubstr("an item is empty"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"tsf:XSections\"><a/></item>")), HasSubstr("is no place"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"tsf:XSections/x\"><a/></item>")), HasSubstr("\"x\" is no place"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"tsf:XSections/-2\"><a/></item>")), HasSubstr("is no place"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"tsf:XSections/2147483647\"><a/></item>")), HasSubstr("is no place"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"nobody/0\"><a/></item>")), HasSubstr("no element nobody"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"tsf:BuildForm/0\"><a/></item>")),
              HasSubstr("no tsf:BuildForm where"));
  EXPECT_THAT(ProjectReadError(carried("<item in=\"tsf:XSections/0\" behind=\"tsf:BuildForm/0\"><a/></item>")),
              HasSubstr("no tsf:BuildForm where"));
  EXPECT_THAT(ProjectReadError(carried("<root order=\"x\"/>")), HasSubstr("no element x"));
  EXPECT_THAT(ProjectReadError(carried("<sections order=\"0 one\"/>")), HasSubstr("\"one\" is no place"));
}

TEST(Project, RefusesInADocumentPartWhatANewerProgramMayHaveAdded) {
  const std::string whole =
      "<document edition=\"4.1\" encoding=\"UTF-8\" structureType=\"false\"><root tag=\"\" order=\"\">"
      "<attribute name=\"a\" value=\"b\"/></root><sections order=\"0\"/></document>";
  const auto errorOf = [](const std::string& part) { return ProjectReadError(WithDocumentPart(part)); };
  const auto with = [&](const char* what, const char* by) { return errorOf(host_test::With(whole, what, by)); };
  EXPECT_EQ(errorOf(whole), "");
  EXPECT_THAT(errorOf(whole + "<document edition=\"4.1\"/>"), HasSubstr("something stands beside the document"));
  EXPECT_THAT(errorOf(whole + "<more/>"), HasSubstr("something stands beside the document"));
  EXPECT_THAT(errorOf("<more/>" + whole), HasSubstr("something stands beside the document"));
  EXPECT_THAT(errorOf(whole + "text"), HasSubstr("something stands beside the document"));
  EXPECT_THAT(errorOf(whole + "<!-- remark -->"), HasSubstr("something stands beside the document"));
  EXPECT_THAT(errorOf("<?xml version=\"1.0\"?>" + whole), HasSubstr("something stands beside the document"));
  EXPECT_THAT(errorOf("<!DOCTYPE document>" + whole), HasSubstr("something stands beside the document"));
  EXPECT_THAT(with("<sections", "<more/><sections"), HasSubstr("document holds an unknown element \"more\""));
  EXPECT_THAT(with("<sections", "text<sections"), HasSubstr("document holds something beside elements"));
  EXPECT_THAT(with("<sections", "<!-- remark --><sections"), HasSubstr("document holds something beside elements"));
  EXPECT_THAT(with(" encoding", " more=\"1\" encoding"), HasSubstr("document has an unknown attribute \"more\""));
  EXPECT_THAT(with("<attribute ", "<item/><attribute "), HasSubstr("root holds an unknown element \"item\""));
  EXPECT_THAT(with(" value", " more=\"\" value"), HasSubstr("attribute has an unknown attribute \"more\""));
  EXPECT_THAT(with("order=\"0\"/>", "order=\"0\">1</sections>"), HasSubstr("sections holds something beside"));
  EXPECT_THAT(with("<sections", "<item more=\"\" name=\"c\"><!--c--></item><sections"),
              HasSubstr("item has an unknown attribute \"more\""));
  EXPECT_THAT(with("\"false\"", "\"no\""), HasSubstr("structureType is \"no\" instead of true or false"));
  EXPECT_THAT(with(" encoding", " roadCenter=\"1\" encoding"), HasSubstr("roadCenter is \"1\""));
}

TEST(Project, LeavesOutWhatIsCarriedWhereNothingIs) {
  // Places far outside the design are no reason to refuse it: their items are told as lost when it is written.
  const std::string content = WithDocumentPart(
      "<document edition=\"4.1\"><sections order=\"7 2000000 -1\"/>"
      "<item name=\"a\" in=\"tsf:XSections/0 tsf:XSection/2000000 tsf:BuildForm/9\" behind=\"tsf:ComposedPnt/7\"><a/>"
      "</item><item name=\"b\" in=\"tsf:XSections/0 tsf:XSection/0 tsf:BuildForm/2000000\"><b/></item>"
      "<item name=\"c\" in=\"tsf:XSections/-1 tsf:XSection/-1 tsf:ExistingBuildForm/-1\" attribute=\"c\" value=\"\"/>"
      "</document>");
  Project project = Project::FromBytes(content, std::string(kProjectName));
  DesignDocument design = project.GiveDesign();
  DesignDocument::WriteReport report;
  EXPECT_THAT(design.ToBytes("out.xml", {}, report), HasSubstr("tsf:XSection "));
  EXPECT_EQ(report.unplaced.size(), 3u);
}

static_assert(Project::ReadOptions().mostCarriedItems == CarriedContent::kMostItems, "the limit of documents");

TEST(Project, WithMoreToCarryOverThanTheHostAllowsIsRefused) {
  // Of the root's attributes those that every document has do not count.
  std::string attributes;
  for (int i = 0; i < 18; ++i) attributes += "<attribute name=\"a" + std::to_string(i) + "\" value=\"\"/>";
  const std::string content = WithDocumentPart("<document edition=\"4.1\"><root tag=\"tsf:TSFormControlData\">" +
                                               attributes + "</root><item name=\"a\"><a><b/></a></item>" +
                                               "<item name=\"comment\"><!-- c --></item></document>");
  const std::string name(kProjectName);
  EXPECT_NO_THROW((void)Project::FromBytes(content, name));
  EXPECT_NO_THROW((void)Project::FromBytes(content, name, {.mostCarriedItems = 2}));
  EXPECT_EQ(ErrorOf([&] { (void)Project::FromBytes(content, name, {.mostCarriedItems = 1}); }),
            "ring.vorn: this holds more than 1 attributes, comments and elements that are not of a design, the most "
            "that are carried over");
  const std::string attributesOnly =
      WithDocumentPart("<document edition=\"4.1\"><root tag=\"a\">" + attributes + "</root></document>");
  EXPECT_NO_THROW((void)Project::FromBytes(attributesOnly, name, {.mostCarriedItems = 2}));
  EXPECT_THAT(ErrorOf([&] { (void)Project::FromBytes(attributesOnly, name, {.mostCarriedItems = 1}); }),
              HasSubstr("more than 1 attributes"));
}

TEST(Project, LargerThanTheHostAllowsIsRefused) {
  Project project = ProjectOf(SmallDesign());
  const std::string content = Stored(project);
  const std::string name(kProjectName);
  EXPECT_NO_THROW((void)Project::FromBytes(content, name, {.mostBytes = content.size()}));
  EXPECT_THAT(ErrorOf([&] { (void)Project::FromBytes(content, name, {.mostBytes = content.size() - 1}); }),
              HasSubstr("ring.vorn: this is larger than"));
  const TemporaryDirectory directory;
  directory.Write("ring.vorn", content);
  EXPECT_NO_THROW((void)Project::Read(directory / "ring.vorn", {.mostBytes = content.size()}));
  EXPECT_THAT(ErrorOf([&] { (void)Project::Read(directory / "ring.vorn", {.mostBytes = content.size() - 1}); }),
              HasSubstr("this is larger than"));
}

// --- saving ----------------------------------------------------------------------------------------------------------

TEST(Project, KeepsTheFormerFileBesideTheNewOne) {
  const TemporaryDirectory directory;
  const auto path = directory / "ring.vorn";
  Project project = ProjectOf(SmallDesign());
  project.Save(path);
  EXPECT_THAT(directory.Names(), ElementsAre("ring.vorn"));
  const std::string first = ReadFile(path);

  project.data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().SetName("Route 2");
  project.Save(path);
  EXPECT_THAT(directory.Names(), ElementsAre("ring.vorn", "ring.vorn.bak"));
  EXPECT_EQ(ReadFile(BackupOf(path)), first);
  const std::string second = ReadFile(path);
  EXPECT_NE(second, first);

  project.data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().SetName("Route 3");
  project.Save(path);
  EXPECT_EQ(ReadFile(BackupOf(path)), second);
  EXPECT_THAT(directory.Names(), ElementsAre("ring.vorn", "ring.vorn.bak"));
  EXPECT_EQ(Project::Read(path).data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().GetName(), "Route 3");
}

TEST(Project, IsSavedAfterASaveThatWasCutOffBetweenBackupAndFile) {
  const TemporaryDirectory directory;
  const auto path = directory / "ring.vorn";
  Project project = ProjectOf(SmallDesign());
  project.Save(path);
  const std::string first = ReadFile(path);
  std::filesystem::create_hard_link(path, BackupOf(path));  // where such a save left off
  project.data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().SetName("Route 2");
  project.Save(path);
  EXPECT_EQ(ReadFile(BackupOf(path)), first);
  EXPECT_NE(ReadFile(path), first);
  EXPECT_THAT(directory.Names(), ElementsAre("ring.vorn", "ring.vorn.bak"));
}

TEST(Project, ThatCannotBeWrittenLeavesFileAndBackupAlone) {
  const TemporaryDirectory directory;
  const auto path = directory / "ring.vorn";
  Project project = ProjectOf(SmallDesign());
  project.Save(path);
  project.data.GetInfoConstrcut().GetRoadGm().GetRoadInfo().SetName("Route 2");
  project.Save(path);
  const std::string file = ReadFile(path);
  const std::string backup = ReadFile(BackupOf(path));
  EXPECT_THAT(ErrorOf([&] { project.Save(path, "04.00"); }), HasSubstr("cannot be written"));
  EXPECT_EQ(ReadFile(path), file);
  EXPECT_EQ(ReadFile(BackupOf(path)), backup);
}

}  // namespace
}  // namespace vorn_host
