#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/document/document_check.h"
#include "host/document/edition_conversion.h"
#include "host/drawing/section_view.h"
#include "host/editing/design_editor.h"
#include "tests/host/documents.h"
#include "tests/host/processor_time.h"

// Designs with more in one cross section than any road has, and a control target on each of it: what a file can ask of
// a machine grows with its size, not with the square of it.

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests

const CString kFill = u8"盛土工"_cp932;

/// A form of a design surface, so that it takes part in every step of editing.
VornBuildForm Surface(VornBuildForm form) {
  form.SetXSectType(kFill);
  return form;
}

/// "F", "F1", "F2", ...
std::string Numbered(const char* name, int index) { return index == 0 ? name : name + std::to_string(index); }

/// A section of so many forms.
DesignDocument ManyForms(int count) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {})});
  VornXSections& set = document.sets[0];
  for (int i = 0; i < count; ++i) {
    const std::string name = Numbered("F", i);
    set.GetXSectionArray()[0].GetBuildFormArray().Add(i == 0 ? Surface(RoadForm(name)) : RoadForm(name));
    set.GetFormCtrlTargetArray().Add(TargetOn(0.0, name, {"L1", "R1"}));
  }
  return document;
}

/// A section of so many forms of one name, each with a code of its own.
DesignDocument ManyNamesakes(int count) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {})});
  VornXSections& set = document.sets[0];
  for (int i = 0; i < count; ++i) {
    const std::string code = Numbered("R", i);
    const VornBuildForm form = Form("F", {Center(), Point(code, VornLocation::Right, DataType::Percent, 3.5, -2.0)});
    set.GetXSectionArray()[0].GetBuildFormArray().Add(i == 0 ? Surface(form) : form);
    set.GetFormCtrlTargetArray().Add(TargetOn(0.0, "F", {code.c_str(), "CL"}));
  }
  return document;
}

/// A section with one form of so many points.
DesignDocument ManyPoints(int count) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {Surface(Form("F", {Center()}))})});
  VornXSections& set = document.sets[0];
  Vorn_ComposedPntArray& points = set.GetXSectionArray()[0].GetBuildFormArray()[0].GetComposedPntArray();
  for (int i = 0; i < count; ++i) {
    const std::string code = Numbered("R", i);
    points.Add(Point(code, VornLocation::Right, DataType::Percent, 0.1, -2.0));
    set.GetFormCtrlTargetArray().Add(TargetOn(0.0, "F", {"CL", code.c_str()}));
  }
  return document;
}

/// The same in edition 2.0, where the form holds the targets.
DesignDocument ManyPoints20(int count) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {Surface(Form("F", {Center()}))})});
  VornBuildForm& form = document.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0];
  for (int i = 0; i < count; ++i) {
    const std::string code = Numbered("R", i);
    form.GetComposedPntArray().Add(Point20(code, VornLocation::Right, SlopeType::Percent, 0.1, -2.0));
    form.GetFormCtrlTargetArray().Add(Target20(("CL " + code).c_str()));
  }
  return document;
}

/// A control target with so many points, none of which is there.
DesignDocument ManyTargetPoints(int count) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {Surface(RoadForm("F"))})});
  VornFormCtrlTarget target = Target();
  for (int i = 0; i < count; ++i) {
    VornFormCtrlTargetPnt point;
    point.Set(0.0, "F", CString(Numbered("absent", i).c_str()), false);
    target.GetTargetPntArray().Add(std::move(point));
  }
  document.sets[0].GetFormCtrlTargetArray().Add(std::move(target));
  return document;
}

/// What is done to a design.
using Job = std::function<void(DesignDocument&)>;

Job Editing(const std::function<void(DesignEditor&)>& step) {
  return [step](DesignDocument& document) {
    DesignEditor editor(document);
    step(editor);
  };
}

const std::vector<std::pair<const char*, Job>>& Jobs() {
  static const std::vector<std::pair<const char*, Job>> jobs = {
      {"check", [](DesignDocument& document) { (void)CheckDocument(document); }},
      {"convert",
       [](DesignDocument& document) {
         const Edition former = document.edition;
         ConvertEdition(document, IsEdition20(former) ? Edition::V41 : Edition::V20);
         EXPECT_NE(document.edition, former);
       }},
      {"view", [](DesignDocument& document) { EXPECT_FALSE(ViewOf(document, 0, 0).targets.empty()); }},
      {"mirror", Editing([](DesignEditor& editor) { EXPECT_TRUE(editor.Mirror().HasChanged()); })},
      {"rename", Editing([](DesignEditor& editor) { EXPECT_TRUE(editor.RenameForm(kFill, "F", "G").HasChanged()); })},
      {"retype", Editing([](DesignEditor& editor) {
         const CString cut = u8"切土工"_cp932;
         EXPECT_TRUE(editor.Retype(cut, cut).HasChanged());
       })},
      {"regulate", Editing([](DesignEditor& editor) {
         editor.Recalc(10.0);
         editor.RegulateTargets();
       })},
      {"lost", Editing([](DesignEditor& editor) {
         editor.ClearCodes();
         (void)editor.LostTargets();
       })},
  };
  return jobs;
}

void ExpectTimeInProportion(DesignDocument (*design)(int)) {
  constexpr int kFew = 1000;
  constexpr int kTimes = 16;
  for (const auto& [name, job] : Jobs()) {
    const auto seconds = [&, &work = job](int count) {
      DesignDocument document = design(count);
      return ProcessorSeconds([&] { work(document); });
    };
    const double few = std::max(std::min({seconds(kFew), seconds(kFew), seconds(kFew)}), kProcessorTick);
    const double many = std::min(seconds(kFew * kTimes), seconds(kFew * kTimes));
    EXPECT_LT(many, few * kTimes * 4 + 0.1)
        << name << ": in proportion to the square, it would be " << kTimes * kTimes << " times " << few << " s";
  }
}

TEST(CrowdedSection, TakesTimeInProportionToItsForms) { ExpectTimeInProportion(ManyForms); }

TEST(CrowdedSection, TakesTimeInProportionToItsFormsOfOneName) { ExpectTimeInProportion(ManyNamesakes); }

TEST(CrowdedSection, TakesTimeInProportionToThePointsOfAForm) { ExpectTimeInProportion(ManyPoints); }

TEST(CrowdedSection, TakesTimeInProportionToThePointsOfAFormOfEdition20) { ExpectTimeInProportion(ManyPoints20); }

TEST(CrowdedSection, TakesTimeInProportionToThePointsOfAControlTarget) { ExpectTimeInProportion(ManyTargetPoints); }

// What is told of a design is not many times as large as the design.

std::size_t BytesOf(const std::vector<Finding>& findings) {
  std::size_t bytes = 0;
  for (const Finding& finding : findings) bytes += finding.path.size() + finding.reason.size();
  return bytes;
}

TEST(CrowdedSection, IsCheckedInFindingsThatDoNotHoldAllCodesOfATargetEach) {
  constexpr int kPoints = 2000;
  const std::vector<Finding> findings = CheckDocument(ManyTargetPoints(kPoints));
  EXPECT_GE(findings.size(), std::size_t{kPoints});
  EXPECT_LT(BytesOf(findings), findings.size() * 1000);
}

TEST(CrowdedSection, IsCheckedInFindingsThatTellOnlyTheBeginningsOfLongNames) {
  DesignDocument document = ManyPoints(2000);
  const CString name(std::string(100'000, 'x').c_str());
  VornXSection& section = document.sets[0].GetXSectionArray()[0];
  section.GetBuildFormArray()[0].SetName(name, false);
  section.SetName(name);
  document.sets[0].SetRefAlign(name);
  for (VornComposedPnt& point : section.GetBuildFormArray()[0].GetComposedPntArray()) {
    point.SetExistence(VORN_Existence::Unset);
  }
  for (VornFormCtrlTarget& target : document.sets[0].GetFormCtrlTargetArray()) {
    for (VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) point.SetBuildFormName(name);
  }
  const std::vector<Finding> findings = CheckDocument(document);
  EXPECT_GE(findings.size(), 2000u);
  EXPECT_LT(BytesOf(findings), findings.size() * 2000);
  DesignEditor editor(document);
  editor.ClearCodes();
  const std::vector<std::string> lost = editor.LostTargets();
  EXPECT_EQ(lost.size(), 4000u) << "both points of each target";
  for (const std::string& line : lost) ASSERT_LT(line.size(), 2000u);
  const SectionView view = ViewOf(document, 0, 0);
  ASSERT_EQ(view.targets.size(), 2000u);
  for (const ViewTarget& target : view.targets) ASSERT_LT(target.points.back().name.size(), 1000u);
}

TEST(CrowdedSection, IsCheckedInAHundredFindingsForTheCodesThatATargetOfEdition20Misses) {
  DesignDocument document = ManyPoints20(2);
  std::string codes = "CL";
  for (int i = 0; i < 350; ++i) codes += " absent" + std::to_string(i);
  Vorn_FormCtrlTargetArray& targets =
      document.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetFormCtrlTargetArray();
  targets[0].SetCode(codes.c_str());
  std::vector<std::string> reasons;
  for (const Finding& finding : CheckDocument(document)) {
    if (finding.kind == "control target names what does not exist") reasons.push_back(finding.reason);
  }
  ASSERT_EQ(reasons.size(), 101u);
  EXPECT_EQ(reasons.front(), "form F has no code absent0");
  EXPECT_EQ(reasons[99], "form F has no code absent99");
  EXPECT_EQ(reasons.back(), "form F has none of 250 more codes");
}

}  // namespace
}  // namespace vorn_host
