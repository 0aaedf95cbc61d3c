#include "fuzz/project_judge.h"

#include <cstdint>

#include "fuzz/document_holdings.h"
#include "fuzz/target.h"
#include "host/document/document_error.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::Project;

/// The name that stands for the project in messages.
constexpr const char* kName = "project";

/// Documents are of UTF-8 unless someone asks for another encoding, and so are their holdings.
std::vector<std::string> HoldingsIn(const DesignDocument& design) {
  return HoldingsOf(design, vorn_host::TextEncoding::Utf8).items;
}

/// Whether a form or a target is exported, and whether ground is in use, is in no record. Ground is in use where its
/// first form has points.
void SettleFlags(DesignDocument& design) {
  const VornBuildForm newForm;
  const VornFormCtrlTarget newTarget;
  const auto settleTargets = [&](Vorn_FormCtrlTargetArray& targets) {
    for (VornFormCtrlTarget& target : targets) target.SetExport(newTarget.GetExport());
  };
  for (VornXSections& set : design.sets) {
    settleTargets(set.GetFormCtrlTargetArray());
    for (VornXSection& section : set.GetXSectionArray()) {
      for (VornBuildForm& form : section.GetBuildFormArray()) {
        form.SetOmitFlag(newForm.GetOmitFlag());
        form.SetExportForm(newForm.GetExportForm());
        settleTargets(form.GetFormCtrlTargetArray());
      }
      const VornExistingBuildFormArray& grounds = section.GetExistingBuildFormArray();
      section.SetExistingFlag(!grounds.IsEmpty() && !grounds[0].GetComposedPntArray().IsEmpty() ? 1 : 0);
    }
  }
}

}  // namespace

std::vector<std::string> HeldByProject(DesignDocument& design) {
  const Vorn_XSectionsArray sets = design.sets;
  SettleFlags(design);
  std::vector<std::string> held = HoldingsIn(design);
  design.sets = sets;
  return held;
}

std::string WhatIsLost(Project& project, const std::vector<std::string>& held) {
  return FirstDifference(held, HoldingsIn(project.GiveDesign()));
}

void JudgeSaving(Project& project, std::string_view storeVersion, const std::vector<std::string>& held) {
  const std::string where = "store version " + std::string(storeVersion);
  try {
    std::vector<Project::Loss> losses;
    const std::vector<std::uint8_t> saved = project.ToBytes(kName, storeVersion, losses);
    if (project.ToBytes(kName, storeVersion, losses) != saved) Finding(where, "saving twice differs");
    Project again = Project::FromBytes({reinterpret_cast<const char*>(saved.data()), saved.size()}, kName);
    if (again.ToBytes(kName, storeVersion, losses) != saved) {
      Finding(where, "what was saved, read and saved again is not the same");
    }
    if (!losses.empty()) Finding(where, "what the version cannot hold is still there: " + losses[0].what);
    const std::string lost = WhatIsLost(again, held);
    if (!lost.empty()) Finding(where, "saving loses: " + lost);
  } catch (const vorn_host::DocumentError& error) {
    Finding(where, error.what());
  }
}

}  // namespace vorn_fuzz
