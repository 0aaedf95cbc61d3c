#include <gtest/gtest.h>

#include <algorithm>
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
// the processor grows with its size, not with the square of it.

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests

/// A section of so many forms.
DesignDocument ManyForms(int count) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {})});
  VornXSections& set = document.sets[0];
  for (int i = 0; i < count; ++i) {
    const std::string name = "F" + std::to_string(i);
    set.GetXSectionArray()[0].GetBuildFormArray().Add(RoadForm(name));
    set.GetFormCtrlTargetArray().Add(TargetOn(0.0, name, {"L1", "R1"}));
  }
  return document;
}

/// A section with one form of so many points.
DesignDocument ManyPoints(int count) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {Form("F", {Center()})})});
  VornXSections& set = document.sets[0];
  Vorn_ComposedPntArray& points = set.GetXSectionArray()[0].GetBuildFormArray()[0].GetComposedPntArray();
  for (int i = 0; i < count; ++i) {
    const std::string code = "R" + std::to_string(i);
    points.Add(Point(code, VornLocation::Right, DataType::Percent, 0.1, -2.0));
    set.GetFormCtrlTargetArray().Add(TargetOn(0.0, "F", {"CL", code.c_str()}));
  }
  return document;
}

/// The same in edition 2.0, where the form holds the targets.
DesignDocument ManyPoints20(int count) {
  DesignDocument document = DocumentOf(Edition::V20, {Section(0.0, {Form("F", {Center()})})});
  VornBuildForm& form = document.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0];
  for (int i = 0; i < count; ++i) {
    const std::string code = "R" + std::to_string(i);
    form.GetComposedPntArray().Add(Point20(code, VornLocation::Right, SlopeType::Percent, 0.1, -2.0));
    form.GetFormCtrlTargetArray().Add(Target20(("CL " + code).c_str()));
  }
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

void ExpectTimeInProportion(DesignDocument (*design)(int), const std::vector<std::pair<const char*, Job>>& jobs) {
  constexpr int kFew = 1000;
  constexpr int kTimes = 16;
  const auto secondsFor = [&](const Job& job, int count) {
    DesignDocument document = design(count);
    return ProcessorSeconds([&] { job(document); });
  };
  for (const auto& [name, job] : jobs) {
    const double few = std::min({secondsFor(job, kFew), secondsFor(job, kFew), secondsFor(job, kFew)});
    EXPECT_LT(secondsFor(job, kFew * kTimes), few * kTimes * 3 + 0.02)
        << name << ": in proportion to the square, it would be " << kTimes * kTimes << " times " << few << " s";
  }
}

std::vector<std::pair<const char*, Job>> Jobs() {
  const CString fill = u8"盛土工"_cp932;
  return {
      {"check", [](DesignDocument& document) { (void)CheckDocument(document); }},
      {"convert", [](DesignDocument& document) { (void)ConvertEdition(document, Edition::V20); }},
      {"view", [](DesignDocument& document) { EXPECT_FALSE(ViewOf(document, 0, 0).targets.empty()); }},
      {"mirror", Editing([](DesignEditor& editor) { editor.Mirror(); })},
      {"rename", Editing([fill](DesignEditor& editor) { editor.RenameForm(fill, "F", "G"); })},
      {"retype", Editing([fill](DesignEditor& editor) { editor.Retype(fill, fill); })},
      {"regulate", Editing([](DesignEditor& editor) {
         editor.Recalc(10.0);
         editor.RegulateTargets();
       })},
      {"lost", Editing([](DesignEditor& editor) {
         editor.ClearCodes();
         (void)editor.LostTargets();
       })},
  };
}

TEST(CrowdedSection, WithManyFormsTakesTimeInProportionToThem) { ExpectTimeInProportion(ManyForms, Jobs()); }

TEST(CrowdedSection, WithManyPointsTakesTimeInProportionToThem) { ExpectTimeInProportion(ManyPoints, Jobs()); }

TEST(CrowdedSection, WithManyPointsOfEdition20TakesTimeInProportionToThem) {
  ExpectTimeInProportion(ManyPoints20, Jobs());
}

}  // namespace
}  // namespace vorn_host
