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
#include "fuzz/project_judge.h"
#include "fuzz/target.h"
#include "host/document/document_check.h"
#include "host/document/document_error.h"
#include "host/project/project.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DocumentError;
using vorn_host::Project;

constexpr int kMostSteps = 12;

using Serials = std::set<std::uint32_t>;

/// Every item has a serial of its own, or none, and the next one is above them all.
/// @param shared serials that several may bear
template <typename Array>
void JudgeSerials(const Array& items, const Serials& shared, const char* what) {
  Serials seen;
  for (const auto& item : items) {
    const std::uint32_t serial = item.GetSerialID();
    if (serial == kVornNoID) continue;
    if (!seen.insert(serial).second && !shared.contains(serial)) Finding(what, "two have one serial");
  }
  if (!seen.empty() && items.GetNextSerialID() <= *seen.rbegin()) Finding(what, "the next serial is given already");
}

void RequireNumber(const NurReal& value, const char* what) {
  if (!std::isfinite(value.Value())) Finding("position", std::string(what) + " is no number");
}

void JudgePoints(const Vorn_ComposedPntArray& points) {
  constexpr std::uint32_t kCentre = 0;
  JudgeSerials(points, {kCentre}, "points of a form");
  for (const VornComposedPnt& point : points) {
    RequireNumber(point.GetCLDist(), "a distance from the centre line");
    RequireNumber(point.GetGh(), "a height");
    RequireNumber(point.GetX(), "an input value");
    RequireNumber(point.GetY(), "an input value");
  }
}

/// Sections stand by their stations, those behind a change of shape after those before it.
void JudgeOrder(const Vorn_XSectionArray& sections) {
  for (int i = 1; i < sections.GetSize(); ++i) {
    const NurReal& former = sections[i - 1].GetCumulativeDist();
    const NurReal& station = sections[i].GetCumulativeDist();
    if (!former.IsSet()) continue;
    if (!station.IsSet() || station.Value() < former.Value())
      Finding("sections", "they do not stand by their stations");
  }
}

/// @param splitForms serials of forms that were split, whose halves bear one
void JudgeModel(const DesignDocument& design, const Serials& splitForms) {
  for (const VornXSections& set : design.sets) {
    JudgeSerials(set.GetFormCtrlTargetArray(), {}, "control targets");
    JudgeOrder(set.GetXSectionArray());
    for (const VornXSection& section : set.GetXSectionArray()) {
      const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
      JudgeSerials(forms, splitForms, "forms of a section");
      for (const VornBuildForm& form : forms) {
        JudgeSerials(form.GetFormCtrlTargetArray(), {}, "control targets of a form");
        JudgePoints(form.GetComposedPntArray());
      }
    }
  }
}

/// The serials of the first two forms of a section where they bear one: only the first form is ever split.
void AddSplitForms(const DesignDocument& design, Serials& splitForms) {
  for (const VornXSections& set : design.sets) {
    for (const VornXSection& section : set.GetXSectionArray()) {
      const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
      if (forms.GetSize() < 2 || forms[0].GetSerialID() != forms[1].GetSerialID()) continue;
      splitForms.insert(forms[0].GetSerialID());
    }
  }
}

void JudgeStoring(DesignDocument design) {
  const std::vector<std::string> held = HeldByProject(design);
  Project project;
  project.TakeDesign(std::move(design));
  JudgeSaving(project, Project::kNewestStoreVersion, held);
}

}  // namespace

bool Judge(std::span<const std::uint8_t> bytes) {
  InputReader input(bytes);
  DesignDocument design = MakeModel(input);
  Serials splitForms;
  JudgeModel(design, splitForms);
  for (int i = 0; i < kMostSteps && !input.IsEmpty(); ++i) {
    const int step = input.Choose(StepCount());
    const bool isDone = TakeStep(step, design, input);
    if (MaySplitForms(step)) AddSplitForms(design, splitForms);
    JudgeModel(design, splitForms);
    if (!isDone) return false;  // a design that may be half edited is never written
  }
  (void)CheckDocument(design);
  const std::string written = JudgeWriting(design);
  if (!JudgeDocument(written, {})) Finding("design", "what was written cannot be read");
  JudgeStoring(std::move(design));
  return true;
}

namespace {

using Bytes = std::vector<std::uint8_t>;

/// A small design without changes: positions first, then the step.
Bytes PlainInput(std::uint8_t step, std::uint8_t edition) {
  // Kind, sections, terrain, edition, number of changes.
  return {static_cast<std::uint8_t>(step % 3), 2, 1, edition, 0, 0, 0, step, 1, 9, 5, 3, 10, 3, 2};
}

/// Two sets, a point more in one and a point less in the other, positions, the step with other arguments, and the next
/// step.
Bytes VariedInput(std::uint8_t step) {
  constexpr std::uint8_t kInsertPoint = 1;
  constexpr std::uint8_t kRemovePoint = 3;
  const auto vary = [step](int factor, int count) { return static_cast<std::uint8_t>(step * factor % count); };
  const std::uint8_t side = vary(1, 3);
  const std::uint8_t dataType = vary(5, 4);
  Bytes input = {vary(7, 3), static_cast<std::uint8_t>(129 + vary(5, 2)), vary(11, 251), vary(3, 4), 2};
  // Each change: its kind; set, section and form; set and section, which it does not use; what it does, and where.
  input.insert(input.end(), {0, 0, 1, 0, 0, 0, kInsertPoint, 3});
  // The point: side, two values of two bytes, types, existence, kind, code, and that it has no position yet.
  input.insert(input.end(), {side, 5, vary(9, 251), 1, vary(13, 251), dataType, 1, 3, 0, vary(3, 14), 1});
  input.insert(input.end(), {0, 1, 0, vary(1, 2), 1, 0, kRemovePoint, vary(1, 5)});
  input.insert(input.end(), {0, 0, step});
  for (int i = 1; i <= 8; ++i) input.push_back(static_cast<std::uint8_t>((step + 3) * (2 * i + 5) % 256));
  input.insert(input.end(), {static_cast<std::uint8_t>((step + 1) % StepCount()), 1, 6, 2, 7, 1, 3});
  return input;
}

}  // namespace

std::vector<Seed> MakeSeeds() {
  std::vector<Seed> seeds;
  for (int i = 0; i < StepCount(); ++i) {
    const auto step = static_cast<std::uint8_t>(i);
    const std::string name = "step_" + std::to_string(i) + "_";
    for (std::uint8_t edition = 0; edition < 4; ++edition) {
      seeds.push_back({name + std::to_string(edition), PlainInput(step, edition)});
    }
    seeds.push_back({name + "varied", VariedInput(step)});
  }
  return seeds;
}

}  // namespace vorn_fuzz
