#include "host/editing/set_targets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/host/editing.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using TargetPntType = VornFormCtrlTarget::TargetPntType;
using ControlItem = VornFormCtrlTarget::ControlItem;

/// Two sections with a form S each, and these targets.
DesignDocument TwoSections(const std::string& targets) {
  DesignDocument document = ReadText(DesignXml(SectionXml("0.0000", FillForm() + LayerForm("P")) +
                                               SectionXml("20.0000", FillForm() + LayerForm("P")) + targets));
  Place(document, 10.0);
  return document;
}

std::vector<TargetFate> Regulated(DesignDocument& document) {
  const EditionScope scope(document.edition);
  VornXSections& set = document.sets[0];
  SectionIndex sections(set);
  return RegulateTargetsOf(set.GetFormCtrlTargetArray(), set, sections);
}

TargetPntType TypeOf(const DesignDocument& document, int target = 0) {
  return document.sets[0].GetFormCtrlTargetArray()[target].GetTargetPntType();
}

// --- visiting and removing -----------------------------------------------------------------------------------------

TEST(SetTargets, VisitsThePointsThatStandOnACrossSection) {
  DesignDocument document = TwoSections(WidthXml("20.0000", "S", "L1", "R1") + WidthXml("99.0000", "S", "L1", "R1"));
  std::vector<int> sections;
  VornXSections& set = document.sets[0];
  ForEachTargetPoint(set, SectionIndex(set), [&](VornFormCtrlTargetPnt&, int at) { sections.push_back(at); });
  EXPECT_THAT(sections, ElementsAre(1, 1));
}

TEST(SetTargets, RemovesTheTargetsOnAFormOfTheSectionsMarked) {
  DesignDocument document = TwoSections(WidthXml("0.0000", "S", "L1", "R1") + WidthXml("20.0000", "S", "L1", "R1") +
                                        WidthXml("20.0000", "P", "L1", "R1"));
  const std::vector<TargetFate> fates =
      RemoveTargetsOn(document.sets[0], "S", [](int section) { return section == 1; });
  EXPECT_THAT(TargetsOf(document), ElementsAre("0 S L1, 0 S R1", "20 P L1, 20 P R1"));
  ASSERT_EQ(fates.size(), 3u);
  EXPECT_FALSE(fates[0].removed);
  EXPECT_TRUE(fates[1].removed);
  EXPECT_FALSE(fates[2].removed);
}

TEST(SetTargets, RemovesATargetWithOneOfItsPointsOnTheForm) {
  DesignDocument document = TwoSections(TargetXml("Thickness", "20.0000", "Lower Upper", {{"P", "L1"}, {"S", "L1"}}));
  (void)RemoveTargetsOn(document.sets[0], "P", [](int) { return true; });
  EXPECT_THAT(TargetsOf(document), IsEmpty());
}

// --- what names nothing --------------------------------------------------------------------------------------------

TEST(SetTargets, NamesTheTargetsOfNoSectionFormOrCode) {
  const DesignDocument document =
      TwoSections(WidthXml("0.0000", "S", "L1", "R9") + WidthXml("0.0000", "X", "L1", "R1") +
                  TargetXml("Height", "99.0000", "TargetPnt", {{"S", "CL"}}) + WidthXml("0.0000", "S", "L1", "R1"));
  const std::vector<std::string> lines = DanglingTargets(document);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "set 1 (A) > station 0.0000 > form S: control target (Width L1 R9) names R9");
  EXPECT_THAT(lines[1], AllOf(HasSubstr("form X"), HasSubstr("names L1")));
  EXPECT_THAT(lines[3], AllOf(HasSubstr("station 99.0000"), HasSubstr("Height"), HasSubstr("names CL")));
}

TEST(SetTargets, NamesATargetOfNothingWithoutParentheses) {
  const DesignDocument document = TwoSections(TargetXml("", "99.0000", "", {{"S", ""}}));
  EXPECT_THAT(DanglingTargets(document),
              ElementsAre("set 1 (A) > station 99.0000 > form S: control target names no code"));
}

TEST(SetTargets, NamesTheTargetsOfAFormThatHasNoSuchCode) {
  const DesignDocument document = [] {
    DesignDocument in20 = DocumentOf(Edition::V20, {Section(0.0, {RoadForm("S")})});
    FormOf(in20).GetFormCtrlTargetArray().Add(Target20("L1 R1"));
    FormOf(in20).GetFormCtrlTargetArray().Add(Target20("L1 R9"));
    return in20;
  }();
  const EditionScope scope(Edition::V20);
  EXPECT_THAT(DanglingTargets(document), ElementsAre(AllOf(HasSubstr("form S"), HasSubstr("names R9"))));
}

// --- regulation ----------------------------------------------------------------------------------------------------

TEST(SetTargets, RegulationPutsThePairInOrder) {
  DesignDocument document = TwoSections(WidthXml("20.0000", "S", "R1", "L1"));
  const std::vector<TargetFate> fates = Regulated(document);
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S L1, 20 S R1"));
  EXPECT_TRUE(fates[0].swapped);
  EXPECT_TRUE(fates[0].reordered);
  EXPECT_EQ(fates[0].section, 1);
}

TEST(SetTargets, RegulationCorrectsTheTypeOfThePair) {
  DesignDocument document = TwoSections(WidthXml("20.0000", "S", "L1", "L2"));
  const std::vector<TargetFate> fates = Regulated(document);
  EXPECT_EQ(TypeOf(document), TargetPntType::InnerOuter);
  EXPECT_FALSE(fates[0].swapped);
  EXPECT_TRUE(fates[0].reordered);
}

TEST(SetTargets, RegulationLeavesATargetInOrder) {
  DesignDocument document = TwoSections(WidthXml("20.0000", "S", "L1", "R1"));
  const std::vector<TargetFate> fates = Regulated(document);
  EXPECT_FALSE(fates[0].reordered || fates[0].removed || fates[0].irregular);
}

TEST(SetTargets, RegulationRemovesARepeatedTarget) {
  DesignDocument document = TwoSections(WidthXml("20.0000", "S", "L1", "R1") + WidthXml("20.0000", "S", "R1", "L1"));
  const std::vector<TargetFate> fates = Regulated(document);
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S L1, 20 S R1"));
  EXPECT_FALSE(fates[0].removed);
  EXPECT_TRUE(fates[1].removed);
}

TEST(SetTargets, RegulationKeepsTheSameTargetAtAnotherStationOrOnAnotherForm) {
  DesignDocument document = TwoSections(WidthXml("0.0000", "S", "L1", "R1") + WidthXml("20.0000", "S", "L1", "R1") +
                                        WidthXml("20.0000", "P", "L1", "R1"));
  (void)Regulated(document);
  EXPECT_EQ(TargetsOf(document).size(), 3u);
}

TEST(SetTargets, RegulationKeepsAnotherItemOnTheSamePoints) {
  DesignDocument document =
      TwoSections(WidthXml("20.0000", "S", "L1", "L2", "Inner Outer") +
                  TargetXml("SlopeLength", "20.0000", "Shoulder Toe", {{"S", "L1"}, {"S", "L2"}}));
  (void)Regulated(document);
  EXPECT_EQ(TargetsOf(document).size(), 2u);
}

TEST(SetTargets, RegulationLeavesATargetWhosePointDoesNotExist) {
  DesignDocument document = TwoSections(WidthXml("20.0000", "S", "R1", "L9"));
  const std::vector<TargetFate> fates = Regulated(document);
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 S R1, 20 S L9"));
  EXPECT_TRUE(fates[0].irregular);
  EXPECT_EQ(fates[0].section, 1);
}

TEST(SetTargets, RegulationPutsThePairOfAThicknessInOrder) {
  DesignDocument document = TwoSections(TargetXml("Thickness", "20.0000", "Upper Lower", {{"S", "L1"}, {"P", "L1"}}));
  (void)Regulated(document);
  EXPECT_THAT(TargetsOf(document), ElementsAre("20 P L1, 20 S L1"));
  EXPECT_EQ(TypeOf(document), TargetPntType::LowerUpper);
}

// --- regulation in forms -------------------------------------------------------------------------------------------

class FormTargets : public testing::Test {
 protected:
  /// A placed form with points "CL", "L1", "R1" and targets on these codes.
  static VornBuildForm FormWith(const std::vector<const char*>& codes) {
    VornBuildForm form = RoadForm("S");
    for (VornComposedPnt& point : form.GetComposedPntArray()) point.SetSlopeType(SlopeType::Percent);
    NurReal dist;
    NurReal height;
    form.RegulateComposedPnt(NurReal(10.0), dist, height);
    for (const char* code : codes) form.GetFormCtrlTargetArray().Add(Target20(code));
    return form;
  }
  static std::vector<std::string> CodesIn(const VornBuildForm& form) {
    std::vector<std::string> codes;
    for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) codes.push_back(Shown(target.GetCode()));
    return codes;
  }

 private:
  EditionScope m_scope{Edition::V20};
};

TEST_F(FormTargets, RegulationPutsTheCodesInOrder) {
  VornBuildForm form = FormWith({"R1 L1"});
  EXPECT_TRUE(RegulateTargetsOf20(form, 20.0)[0].swapped);
  EXPECT_THAT(CodesIn(form), ElementsAre("L1 R1"));
  EXPECT_TRUE(form.GetFormCtrlTargetArray()[0].GetTargetPntArray().IsEmpty());
}

TEST_F(FormTargets, RegulationRemovesARepeatedTarget) {
  VornBuildForm form = FormWith({"L1 R1", "R1 L1", "CL R1"});
  const std::vector<TargetFate> fates = RegulateTargetsOf20(form, 20.0);
  EXPECT_THAT(CodesIn(form), ElementsAre("L1 R1", "CL R1"));
  EXPECT_TRUE(fates[1].removed);
}

TEST_F(FormTargets, RegulationLeavesACodeThatDoesNotExist) {
  VornBuildForm form = FormWith({"R1 L9"});
  EXPECT_TRUE(RegulateTargetsOf20(form, 20.0)[0].irregular);
  EXPECT_THAT(CodesIn(form), ElementsAre("R1 L9"));
}

TEST_F(FormTargets, AHeightAtSeveralPointsNeedsNoOrder) {
  VornBuildForm form = FormWith({"CL R1"});
  form.GetFormCtrlTargetArray()[0].SetControlItem(ControlItem::Height);
  form.GetFormCtrlTargetArray()[0].SetTargetPntType(TargetPntType::TargetPnt);
  const TargetFate fate = RegulateTargetsOf20(form, 20.0)[0];
  EXPECT_FALSE(fate.irregular);
  EXPECT_FALSE(fate.reordered);
  EXPECT_THAT(CodesIn(form), ElementsAre("CL R1"));
}

TEST_F(FormTargets, AHeightAtAPointThatDoesNotExistIsIrregular) {
  VornBuildForm form = FormWith({"CL R9"});
  form.GetFormCtrlTargetArray()[0].SetControlItem(ControlItem::Height);
  EXPECT_TRUE(RegulateTargetsOf20(form, 20.0)[0].irregular);
}

}  // namespace
}  // namespace vorn_host
