// An input makes a small design and takes steps on it. Whatever they were, the design is sound afterwards: identifiers
// are not given twice, positions are numbers, and it can be checked, written, read and stored.

#include <cmath>
#include <cstdint>
#include <set>
#include <string>
#include <utility>

#include "fuzz/document_judge.h"
#include "fuzz/editing_model.h"
#include "fuzz/editing_steps.h"
#include "fuzz/target.h"
#include "host/document/document_check.h"
#include "host/document/document_error.h"
#include "host/project/project.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DocumentError;
using vorn_host::Project;

constexpr std::uint32_t kUnassigned = 0xFFFFFFFF;
constexpr int kMostSteps = 12;

/// Whether the items have serials of their own. Several may have none, and several centre points have 0.
template <typename Array>
bool HasOwnSerials(const Array& items, bool zeroIsShared) {
  std::set<std::uint32_t> seen;
  for (const auto& item : items) {
    const std::uint32_t serial = item.GetSerialID();
    if (serial == kUnassigned || (zeroIsShared && serial == 0)) continue;
    if (!seen.insert(serial).second) return false;
  }
  return true;
}

void RequireNumber(const NurReal& value, const char* what) {
  if (!std::isfinite(value.Value())) Finding("position", std::string(what) + " is no number");
}

void JudgePoints(const Vorn_ComposedPntArray& points) {
  if (!HasOwnSerials(points, true)) Finding("points", "two of a form have one serial");
  for (const VornComposedPnt& point : points) {
    RequireNumber(point.GetCLDist(), "a distance from the centre line");
    RequireNumber(point.GetGh(), "a height");
    RequireNumber(point.GetX(), "an input value");
    RequireNumber(point.GetY(), "an input value");
  }
}

/// @param sharedSerials whether forms were split, whose halves bear one serial
void JudgeModel(const DesignDocument& design, bool sharedSerials) {
  for (const VornXSections& set : design.sets) {
    if (!HasOwnSerials(set.GetFormCtrlTargetArray(), false)) Finding("control targets", "two have one serial");
    for (const VornXSection& section : set.GetXSectionArray()) {
      const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
      if (!sharedSerials && !HasOwnSerials(forms, false)) Finding("forms", "two of a section have one serial");
      for (const VornBuildForm& form : forms) JudgePoints(form.GetComposedPntArray());
    }
  }
}

void JudgeStoring(DesignDocument design) {
  Project project;
  project.TakeDesign(std::move(design));
  std::vector<Project::Loss> losses;
  const std::vector<std::uint8_t> stored = project.ToBytes("project", Project::kNewestStoreVersion, losses);
  Project again = Project::FromBytes({reinterpret_cast<const char*>(stored.data()), stored.size()}, "project");
  if (again.ToBytes("project", Project::kNewestStoreVersion, losses) != stored) {
    Finding("project", "what was saved, read and saved again is not the same");
  }
}

}  // namespace

bool Judge(std::span<const std::uint8_t> bytes) {
  InputReader input(bytes);
  DesignDocument design = MakeModel(input);
  JudgeModel(design, false);
  bool sharedSerials = false;
  for (int i = 0; i < kMostSteps && !input.IsEmpty(); ++i) {
    const int step = input.Choose(StepCount());
    if (!TakeStep(step, design, input)) return false;
    sharedSerials = sharedSerials || SharesSerials(step);
    JudgeModel(design, sharedSerials);
  }
  (void)CheckDocument(design);
  const std::string written = JudgeWriting(design);
  if (!JudgeDocument(written, {})) Finding("design", "what was written cannot be read");
  JudgeStoring(std::move(design));
  return true;
}

std::vector<Seed> MakeSeeds() {
  std::vector<Seed> seeds;
  for (int step = 0; step < StepCount(); ++step) {
    for (std::uint8_t edition = 0; edition < 4; ++edition) {
      // Kind, sections, terrain, edition, no changes; positions first, then the step.
      const auto kind = static_cast<std::uint8_t>(step % 3);
      seeds.push_back({"step_" + std::to_string(step) + "_" + std::to_string(edition),
                       {kind, 2, 1, edition, 0, 0, 0, static_cast<std::uint8_t>(step), 1, 9, 5, 3, 10, 3, 2}});
    }
  }
  return seeds;
}

}  // namespace vorn_fuzz
