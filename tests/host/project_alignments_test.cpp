// Which alignment holds which set of a design, whatever an application does with the alignments of its project.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/project/project.h"
#include "tests/host/documents.h"
#include "tests/host/processor_time.h"
#include "tests/host/projects.h"

namespace vorn_host {
namespace {

using host_test::ErrorOf;
using host_test::ExpectInOrder;
using host_test::kProcessorTick;
using host_test::kProjectName;
using host_test::ProcessorSeconds;
using host_test::ProjectOf;
using host_test::ReadText;
using host_test::Reloaded;
using host_test::Stored;
using host_test::WriteText;
using host_test::Xml;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Texts = std::vector<std::string>;

VornAlignmentsArray& AlignmentsOf(Project& project) {
  return project.data.GetInfoConstrcut().GetRoadGm().GetAlignments();
}

Texts NamesOf(Project& project) {
  Texts names;
  for (const VornAlignment& alignment : AlignmentsOf(project)) names.emplace_back(alignment.GetName().View());
  return names;
}

Texts CrsNamesOf(Project& project) {
  Texts names;
  for (const VornAlignment& alignment : AlignmentsOf(project)) names.emplace_back(alignment.GetCrsName().View());
  return names;
}

Texts ReferencesOf(const DesignDocument& design) {
  Texts names;
  for (const VornXSections& set : design.sets) names.emplace_back(set.GetRefAlign().View());
  return names;
}

Texts ReferencesAfterSaving(Project& project) { return ReferencesOf(Reloaded(project).GiveDesign()); }

VornXSections SetOf(const char* reference) {
  VornXSections set;
  set.SetRefAlign(reference);
  set.GetXSectionArray().SetSize(1);
  return set;
}

DesignDocument DesignOf(const std::vector<const char*>& references) {
  DesignDocument design;
  for (const char* reference : references) design.sets.Add(SetOf(reference));
  return design;
}

VornAlignment AlignmentOf(const char* name) {
  VornAlignment alignment;
  alignment.SetName(name);
  alignment.GetXSections() = SetOf(name);
  return alignment;
}

// --- alignments changed by the application ---------------------------------------------------------------------------

/// Sets A, one that holds nothing, and C.
Project WithAnEmptySet() {
  DesignDocument design = DesignOf({"A", "", "C"});
  design.sets[1] = VornXSections();
  return ProjectOf(std::move(design));
}

TEST(ProjectAlignments, KeepAnEmptySetThroughEveryChangeAroundIt) {
  using Change = std::function<void(VornAlignmentsArray&)>;
  const auto after = [](const Change& change) {
    Project project = WithAnEmptySet();
    change(AlignmentsOf(project));
    return ReferencesAfterSaving(project);
  };
  EXPECT_THAT(after([](VornAlignmentsArray&) {}), ElementsAre("A", "", "C"));
  EXPECT_THAT(after([](auto& alignments) { alignments.RemoveAll(); }), IsEmpty());
  EXPECT_THAT(after([](auto& alignments) { alignments.RemoveAt(1, 2); }), ElementsAre("A"));
  EXPECT_THAT(after([](auto& alignments) { alignments.InsertAt(0, VornAlignment()); }), ElementsAre("A", "", "C"));
  EXPECT_THAT(after([](auto& alignments) { alignments.RemoveAt(0); }), ElementsAre("", "C"));
  EXPECT_THAT(after([](auto& alignments) { alignments.RemoveAt(1); }), ElementsAre("A", "C"));
  EXPECT_THAT(after([](auto& alignments) { alignments.Add(AlignmentOf("D")); }), ElementsAre("A", "", "C", "D"));
  EXPECT_THAT(after([](auto& alignments) { std::swap(alignments[0], alignments[1]); }), ElementsAre("", "A", "C"));
}

TEST(ProjectAlignments, KeepASetWhoseContentsAreTakenOut) {
  Project project = ProjectOf(DesignOf({"A", "B"}));
  AlignmentsOf(project)[0].GetXSections() = VornXSections();
  EXPECT_THAT(ReferencesAfterSaving(project), ElementsAre("", "B"));
}

TEST(ProjectAlignments, AreNoSetsWithoutADocumentUnlessTheyHaveADesign) {
  Project project;
  AlignmentsOf(project).Add(AlignmentOf("A"));
  AlignmentsOf(project).Add(AlignmentOf("B"));
  (void)Stored(project);
  AlignmentsOf(project)[0].GetXSections() = VornXSections();
  EXPECT_THAT(ReferencesAfterSaving(project), ElementsAre("B"));
  EXPECT_THAT(ReferencesOf(project.GiveDesign()), ElementsAre("B"));
}

/// Two sets with an attribute, a comment and sections in an order of their own, and a comment between them.
std::string TwoSets() {
  const std::string section = "<tsf:XSection cumulativeDist=";
  return Xml(Edition::V41, "<tsf:XSections refAlign=\"A\" note=\"of A\"><!-- in A -->" + section + "\"40.0000\"/>" +
                               section + "\"20.0000\"/></tsf:XSections><!-- behind A -->" +
                               "<tsf:XSections refAlign=\"B\" note=\"of B\">" + section +
                               "\"20.0000\"/></tsf:XSections><!-- behind B -->");
}

/// What a project of these sets writes as a document after a change of its alignments, straight and once saved.
std::string WrittenAfter(const std::function<void(Project&)>& change) {
  Project project = ProjectOf(ReadText(TwoSets()));
  change(project);
  Project loaded = Reloaded(project);
  DesignDocument design = project.GiveDesign();
  DesignDocument loadedDesign = loaded.GiveDesign();
  const std::string written = WriteText(design);
  EXPECT_EQ(WriteText(loadedDesign), written);
  return written;
}

TEST(ProjectAlignments, TakeWhatIsCarriedOverWithThemWhenOneIsInserted) {
  const std::string written =
      WrittenAfter([](Project& project) { AlignmentsOf(project).InsertAt(0, AlignmentOf("new")); });
  ExpectInOrder(written, {"refAlign=\"new\"", "refAlign=\"A\"", "note=\"of A\"", "<!-- in A -->", "<!-- behind A -->",
                          "refAlign=\"B\"", "note=\"of B\"", "<!-- behind B -->"});
  EXPECT_THAT(written, Not(HasSubstr("refAlign=\"new\" refVertical=\"\" projectPhase=\"\" note")));
}

TEST(ProjectAlignments, TakeWhatIsCarriedOverWithThemWhenOneIsRemoved) {
  const std::string written = WrittenAfter([](Project& project) { AlignmentsOf(project).RemoveAt(0); });
  EXPECT_THAT(written, AllOf(Not(HasSubstr("of A")), Not(HasSubstr("in A"))));
  ExpectInOrder(written, {"<!-- behind A -->", "refAlign=\"B\"", "note=\"of B\"", "<!-- behind B -->"});
}

TEST(ProjectAlignments, TakeWhatIsCarriedOverWithThemWhenTheyChangePlaces) {
  const std::string written =
      WrittenAfter([](Project& project) { std::swap(AlignmentsOf(project)[0], AlignmentsOf(project)[1]); });
  ExpectInOrder(written, {"refAlign=\"B\"", "note=\"of B\"", "<!-- behind B -->", "refAlign=\"A\"", "note=\"of A\"",
                          "<!-- in A -->", "<!-- behind A -->"});
}

TEST(ProjectAlignments, TakeTheOrderOfTheDocumentsSectionsWithThem) {
  Project project = ProjectOf(ReadText(TwoSets()));
  AlignmentsOf(project).InsertAt(0, AlignmentOf("new"));
  const DesignDocument design = Reloaded(project).GiveDesign();
  EXPECT_THAT(design.carried.SectionOrder(0), IsEmpty());
  EXPECT_THAT(design.carried.SectionOrder(1), ElementsAre(1, 0));
  EXPECT_THAT(design.carried.SectionOrder(2), ElementsAre(0));
}

TEST(ProjectAlignments, AreKnownAgainWhenTheyAreRenamed) {
  const std::string written = WrittenAfter([](Project& project) {
    VornAlignment& alignment = AlignmentsOf(project)[0];
    alignment.SetName("A2");
    alignment.GetXSections().SetRefAlign("A2");
  });
  ExpectInOrder(written, {"refAlign=\"A2\"", "note=\"of A\"", "refAlign=\"B\"", "note=\"of B\""});
}

TEST(ProjectAlignments, AreKnownAgainWhenTheDataAreReplacedByACopy) {
  const std::string written = WrittenAfter([](Project& project) {
    VornLinearXMLData copy = project.data;
    copy.GetInfoConstrcut().GetRoadGm().GetAlignments().RemoveAt(0);
    project.data = copy;
  });
  EXPECT_THAT(written, Not(HasSubstr("note=\"of A\"")));
  ExpectInOrder(written, {"refAlign=\"B\"", "note=\"of B\""});
}

TEST(ProjectAlignments, OfACopyAreKnownByTheReferenceWhenTheNameChanged) {
  const std::string written = WrittenAfter([](Project& project) {
    VornAlignment copy = AlignmentsOf(project)[1];
    copy.SetName("main line");
    AlignmentsOf(project)[1] = copy;
  });
  ExpectInOrder(written, {"refAlign=\"B\"", "note=\"of B\""});
}

TEST(ProjectAlignments, DoNotTakeOverWhatHungOnARemovedOne) {
  const std::string written = WrittenAfter([](Project& project) {
    AlignmentsOf(project).RemoveAt(0);
    AlignmentsOf(project).Add(AlignmentOf("new"));  // very likely in the memory of the one that went
  });
  EXPECT_THAT(written, Not(HasSubstr("note=\"of A\"")));
  ExpectInOrder(written, {"refAlign=\"B\"", "note=\"of B\"", "refAlign=\"new\""});
}

TEST(ProjectAlignments, MayBeMovedWhileTheDesignIsOut) {
  Project project = ProjectOf(ReadText(TwoSets()));
  AlignmentsOf(project)[0].SetCrsName("plane 1");
  AlignmentsOf(project)[1].SetCrsName("plane 2");
  DesignDocument design = project.GiveDesign();
  VornAlignment survey;
  survey.SetName("survey line");
  AlignmentsOf(project).InsertAt(0, survey);
  std::swap(AlignmentsOf(project)[1], AlignmentsOf(project)[2]);
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("survey line", "A", "B"));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("", "plane 1", "plane 2"));
}

TEST(ProjectAlignments, RemovedWhileTheDesignIsOutAreMadeAnew) {
  Project project = ProjectOf(DesignOf({"A", "B"}));
  DesignDocument design = project.GiveDesign();
  AlignmentsOf(project).RemoveAt(0);
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("A", "B"));
  EXPECT_THAT(ReferencesAfterSaving(project), ElementsAre("A", "B"));
}

TEST(ProjectAlignments, AreWrittenOnlyAsTheyCanBeReadAgain) {
  // Edition 2.0 models the text of control targets: a document of it cannot carry that over.
  DesignDocument design =
      ReadText(Xml(Edition::V41, "<tsf:XSections><tsf:FormCtrlTarget>text</tsf:FormCtrlTarget></tsf:XSections>"));
  design.edition = Edition::V20;
  Project project = ProjectOf(std::move(design));
  EXPECT_THAT(ErrorOf([&] { (void)Stored(project); }),
              AllOf(HasSubstr(std::string(kProjectName) + ": "), HasSubstr("belongs to the design")));
}

// --- designs taken back ----------------------------------------------------------------------------------------------

/// Alignments A, B and C in three planes.
Project WithThreePlanes() {
  Project project = ProjectOf(DesignOf({"A", "B", "C"}));
  for (int i = 0; i < 3; ++i) AlignmentsOf(project)[i].SetCrsName(CString("plane " + std::to_string(i + 1)));
  return project;
}

TEST(ProjectTakingADesign, KeepsEachAlignmentWithItsSetWhenTheFirstIsGone) {
  Project project = WithThreePlanes();
  DesignDocument design = project.GiveDesign();
  design.sets.RemoveAt(0);
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("B", "C"));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 2", "plane 3"));
  EXPECT_THAT(ReferencesAfterSaving(project), ElementsAre("B", "C"));
}

TEST(ProjectTakingADesign, PutsTheAlignmentsIntoTheOrderOfTheSets) {
  Project project = WithThreePlanes();
  VornAlignment survey;
  survey.SetName("survey line");
  AlignmentsOf(project).InsertAt(1, survey);
  AlignmentsOf(project).SetCurrent(0);
  DesignDocument design = project.GiveDesign();
  std::swap(design.sets[0], design.sets[2]);
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("C", "survey line", "B", "A"));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 3", "", "plane 2", "plane 1"));
  EXPECT_EQ(AlignmentsOf(project).GetCurrent(), 3) << "A is the current one still";
  EXPECT_THAT(ReferencesAfterSaving(project), ElementsAre("C", "B", "A"));
}

TEST(ProjectTakingADesign, MakesANewAlignmentForASetInBetween) {
  Project project = WithThreePlanes();
  DesignDocument design = project.GiveDesign();
  design.sets.InsertAt(1, SetOf("ramp"));
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("A", "ramp", "B", "C"));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 1", "", "plane 2", "plane 3"));
}

TEST(ProjectTakingADesign, FollowsAReferenceThatWasChanged) {
  Project project = WithThreePlanes();
  AlignmentsOf(project)[1].SetName("main line");
  DesignDocument design = project.GiveDesign();
  design.sets[0].SetRefAlign("A2");
  design.sets[1].SetRefAlign("B2");
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("A2", "main line", "C")) << "a name of its own stays";
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 1", "plane 2", "plane 3"));
}

TEST(ProjectTakingADesign, FollowsAReferenceThatWasGivenForTheWantOfOne) {
  Project project;
  VornAlignment alignment = AlignmentOf("A");
  alignment.GetXSections().SetRefAlign("");
  AlignmentsOf(project).Add(alignment);
  DesignDocument design = project.GiveDesign();
  EXPECT_THAT(ReferencesOf(design), ElementsAre("A"));
  design.sets[0].SetRefAlign("A2");
  project.TakeDesign(std::move(design));
  EXPECT_THAT(NamesOf(project), ElementsAre("A2"));
}

TEST(ProjectTakingADesign, OfAnotherDocumentKeepsTheAlignmentsThatItNames) {
  Project project = WithThreePlanes();
  project.TakeDesign(DesignOf({"C", "X", "A"}));
  EXPECT_THAT(NamesOf(project), ElementsAre("C", "X", "A"));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 3", "plane 2", "plane 1")) << "X is in the place of B";
  project.TakeDesign(DesignOf({"Z"}));
  EXPECT_THAT(NamesOf(project), ElementsAre("Z")) << "named as the set refers to it";
}

TEST(ProjectTakingADesign, FindsAnAlignmentByItsNameToo) {
  Project project = WithThreePlanes();
  AlignmentsOf(project)[2].SetName("main line");
  project.TakeDesign(DesignOf({"main line", "A"}));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 3", "plane 1"));
}

TEST(ProjectTakingADesign, TellsSetsOnOneAlignmentApartByTheirProfiles) {
  DesignDocument design = DesignOf({"A", "A"});
  design.sets[0].SetRefVertical("V1");
  design.sets[1].SetRefVertical("V2");
  Project project = ProjectOf(std::move(design));
  AlignmentsOf(project)[0].SetCrsName("plane 1");
  AlignmentsOf(project)[1].SetCrsName("plane 2");
  DesignDocument given = project.GiveDesign();
  given.sets.RemoveAt(0);
  project.TakeDesign(std::move(given));
  EXPECT_THAT(CrsNamesOf(project), ElementsAre("plane 2"));
}

// --- great numbers ---------------------------------------------------------------------------------------------------

TEST(ProjectAlignments, OfManyEmptySetsTakeTimeInProportion) {
  constexpr int kFew = 20'000;
  constexpr int kTimes = 8;
  const auto secondsFor = [](int count) {
    DesignDocument design;
    design.sets.SetSize(count);
    Project project = ProjectOf(std::move(design));
    const std::string content = Stored(project);
    return ProcessorSeconds([&] {
      Project loaded = Project::FromBytes(content, std::string(kProjectName));
      EXPECT_EQ(loaded.GiveDesign().sets.GetSize(), count);
    });
  };
  const double few = std::max(std::min({secondsFor(kFew), secondsFor(kFew), secondsFor(kFew)}), kProcessorTick);
  EXPECT_LT(secondsFor(kFew * kTimes), few * kTimes * 3)
      << "in proportion to the square, it would be " << kTimes << "-fold";
}

}  // namespace
}  // namespace vorn_host
