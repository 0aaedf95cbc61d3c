#include "host/document/edition_conversion.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/document_error.h"
#include "host/document/point_conversion.h"
#include "host/document/section_index.h"
#include "host/document/target_codes.h"
#include "host/document/written_forms.h"
#include "vorn/framework/tolerance.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {

namespace {

using WorkType = VornFormCtrlTarget::WorkType;

// --- what the target edition cannot hold ----------------------------------------------------------------------------

void AddRow(std::vector<ConversionReport::Dropped>& rows, const std::string& what, int count) {
  if (count > 0) rows.push_back({what, count});
}

void AddDropped(ConversionReport& report, const std::string& what, int count) { AddRow(report.dropped, what, count); }

template <typename Array, typename Predicate>
int Count(const Array& items, Predicate&& predicate) {
  return static_cast<int>(std::count_if(items.begin(), items.end(), predicate));
}

template <typename Count>
int SumOverSections(const Vorn_XSectionsArray& sets, Count&& count) {
  int sum = 0;
  for (const VornXSections& set : sets) {
    for (const VornXSection& section : set.GetXSectionArray()) sum += count(section);
  }
  return sum;
}

/// What edition 2.0 has no place for.
void CountDroppedBy20(const DesignDocument& document, ConversionReport& report) {
  const Vorn_XSectionsArray& sets = document.sets;
  AddDropped(report, "file information", document.fileInfos.GetSize());
  AddDropped(report, "structure type", document.hasStructureType ? 1 : 0);
  AddDropped(report, "existing ground form", SumOverSections(sets, [](const VornXSection& section) {
               return section.GetExistingBuildFormArray().GetSize();
             }));
  AddDropped(report, "cross-section name",
             SumOverSections(sets, [](const VornXSection& section) { return section.GetName().IsEmpty() ? 0 : 1; }));
  AddDropped(report, "direction angle", SumOverSections(sets, [](const VornXSection& section) {
               return section.GetDirectionAngle().IsEmpty() ? 0 : 1;
             }));
  AddDropped(
      report, "target point identifier of a cross section",
      SumOverSections(sets, [](const VornXSection& section) { return section.GetTargetPntID().IsEmpty() ? 0 : 1; }));
  AddDropped(report, "cross-section type that the form's name does not tell",
             SumOverSections(sets, [](const VornXSection& section) {
               return Count(section.GetBuildFormArray(), [](const VornBuildForm& form) {
                 return !(form.GetXSectType() == VornBuildForm::XSectTypeFromName(form.GetName()));
               });
             }));
  AddDropped(report, "alignment=\"false\" of a set",
             Count(sets, [](const VornXSections& set) { return !set.GetAlignment(); }));
  int setTargets = 0;
  for (const VornXSections& set : sets) setTargets += set.GetFormCtrlTargetArray().GetSize();
  AddDropped(report, "control target outside a build form", setTargets);
  AddDropped(report, "project phase",
             Count(sets, [](const VornXSections& set) { return !set.GetProjectPhase().IsEmpty(); }));
}

/// What the later editions have no place for.
void CountDroppedByLater(const DesignDocument& document, ConversionReport& report) {
  AddDropped(report, "note of a file information without a change date",
             Count(document.fileInfos, [](const VornFileInfo& info) {
               return info.GetChangeDate().GetStatus() == COleDateTime::null && !info.GetNote().IsEmpty();
             }));
  int workTypes = 0;
  for (const VornXSections& set : document.sets) {
    workTypes += Count(set.GetFormCtrlTargetArray(),
                       [](const VornFormCtrlTarget& target) { return target.GetWorkType() != WorkType::Unset; });
  }
  AddDropped(report, "work type of a control target", workTypes);
}

/// The forms of the model that are not written in the document's edition.
void CountNotWritten(const DesignDocument& document, ConversionReport& report) {
  const bool edition20 = IsEdition20(document.edition);
  const auto countForms = [&](std::string_view why) {
    return SumOverSections(document.sets, [&](const VornXSection& section) {
      return Count(section.GetBuildFormArray(),
                   [&](const VornBuildForm& form) { return WhyNotWritten(form, edition20) == why; });
    });
  };
  AddRow(report.notWritten, "build form with fewer than two points", countForms(kTooFewPoints));
  AddRow(report.notWritten, "build form that is not exported", countForms(kNotExported));
  if (edition20) return;  // existing ground is counted as a whole there
  AddRow(report.notWritten, "existing ground form with fewer than two points",
         SumOverSections(document.sets, [](const VornXSection& section) {
           return Count(section.GetExistingBuildFormArray(),
                        [](const VornExistingBuildForm& form) { return !IsWritten(form); });
         }));
}

// --- points ---------------------------------------------------------------------------------------------------------

void ConvertSectionPointsTo20(VornXSection& section, const std::string& setPath, ConversionReport& report) {
  for (VornBuildForm& form : section.GetBuildFormArray()) {
    const PointDisplacement displacement = ConvertPointsTo20(form);
    report.convertedPoints += displacement.convertedPoints;
    report.farPoints += displacement.farPoints;
    if (displacement.largest <= report.largestDisplacement) continue;
    report.largestDisplacement = displacement.largest;
    const VornComposedPnt& point = form.GetComposedPntArray()[displacement.largestAt];
    report.largestDisplacementAt =
        PointPath(FormPath(SectionPath(setPath, section), form.GetName()), point.GetCode(), displacement.largestAt);
  }
}

// --- control targets: from the forms to the set ---------------------------------------------------------------------

/// Gives a target of edition 2.0 the points that its code text names. Made while 2.0 is the selected edition.
void MakeTargetPoints(VornFormCtrlTarget& target, const VornXSection& section, const VornBuildForm& form) {
  // Points that an application gave say more than the codes.
  for (VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
    if (point.GetBuildFormName().IsEmpty()) point.SetBuildFormName(form.GetName());
  }
  if (!target.GetTargetPntArray().IsEmpty()) return;
  for (const CString& code : CodesOf(target)) {
    if (code.IsEmpty()) continue;
    VornFormCtrlTargetPnt point;
    point.Set(section.GetCumulativeDist(), form.GetName(), code, section.GetXSectChg());
    target.GetTargetPntArray().Add(std::move(point));
  }
}

void MoveTargetsToSet(VornXSections& set, const std::string& setPath, ConversionReport& report) {
  for (VornXSection& section : set.GetXSectionArray()) {
    for (VornBuildForm& form : section.GetBuildFormArray()) {
      Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
      for (int i = 0; i < targets.GetSize(); ++i) {
        VornFormCtrlTarget& target = targets[i];
        MakeTargetPoints(target, section, form);
        if (target.GetTargetPntArray().IsEmpty()) {
          report.lostTargets.push_back(TargetPath(FormPath(SectionPath(setPath, section), form.GetName()), target, i) +
                                       ": it names no code, so that its form and station cannot be told any more");
        }
        target.SetSerialID(kVornNoID);  // numbered anew among the set's
        set.GetFormCtrlTargetArray().Add(std::move(target));
        ++report.movedTargets;
      }
      targets.RemoveAll();
    }
  }
}

// --- control targets: from the set to the forms ---------------------------------------------------------------------

/// Whether all points of a target stand in one form of one section, which is all that edition 2.0 can tell.
bool NamesOneForm(const VornFormCtrlTargetPntArray& points) {
  const VornFormCtrlTargetPnt& first = points[0];
  return std::all_of(points.begin(), points.end(), [&](const VornFormCtrlTargetPnt& point) {
    return IsSameStation(point.GetCumulativeDist().Value(), first.GetCumulativeDist().Value()) &&
           point.GetXSectChg() == first.GetXSectChg() && point.GetBuildFormName() == first.GetBuildFormName();
  });
}

bool HasPlainCodes(const VornFormCtrlTargetPntArray& points) {
  return std::all_of(points.begin(), points.end(), [](const VornFormCtrlTargetPnt& point) {
    return !point.GetCode().IsEmpty() && point.GetCode().View().find(' ') == std::string_view::npos;
  });
}

/// The kind of work of a form: edition 2.0 wants it at every target, later editions do not carry it.
WorkType WorkTypeOf(const VornXSection& section, const VornBuildForm& form) {
  const CString fill = u8"盛土工"_cp932;
  for (const CString& text : {form.GetXSectType(), form.GetName(), section.GetBuildFormArray()[0].GetXSectType(),
                              section.GetBuildFormArray()[0].GetName()}) {
    const CString earthwork = VornBuildForm::XSectTypeFromName(text);
    if (!earthwork.IsEmpty()) return earthwork == fill ? WorkType::FillWork : WorkType::CutWork;
  }
  return WorkType::Unset;
}

/// The section and the form that a target belongs to in edition 2.0, or the reason why there is none.
struct Destination {
  VornXSection* section = nullptr;
  VornBuildForm* form = nullptr;
  std::string reason;
};

Destination FindDestination(const VornFormCtrlTarget& target, VornXSections& set, SectionIndex& sections) {
  const VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
  if (points.IsEmpty()) return {nullptr, nullptr, "it has no target points"};
  if (!NamesOneForm(points)) return {nullptr, nullptr, "its points stand in several sections or forms"};
  if (!HasPlainCodes(points)) return {nullptr, nullptr, "one of its codes is empty or holds a blank"};
  const Standing standing = sections.FindStanding(points[0]);
  if (standing.form < 0) return {nullptr, nullptr, WhyWithoutForm(points[0], standing)};
  VornXSection& section = set.GetXSectionArray()[standing.section];
  VornBuildForm& form = section.GetBuildFormArray()[standing.form];
  if (const std::string_view why = WhyNotWritten(form, true); !why.empty()) {
    const std::string name = NameText(points[0].GetBuildFormName());
    return {nullptr, nullptr, "its form " + name + " " + std::string(why) + " and is not written"};
  }
  return {&section, &form, {}};
}

/// Counts for the notes on work types.
struct WorkTypeCounts {
  int derived = 0;
  int unknown = 0;
};

void PutIntoForm(VornFormCtrlTarget&& target, const Destination& destination, WorkTypeCounts& counts) {
  target.SetCode(target.GetCode());  // the points' codes, joined by blanks
  target.GetTargetPntArray().RemoveAll();
  target.SetSerialID(kVornNoID);
  if (target.GetWorkType() == WorkType::Unset) {
    target.SetWorkType(WorkTypeOf(*destination.section, *destination.form));
    ++(target.GetWorkType() == WorkType::Unset ? counts.unknown : counts.derived);
  }
  destination.form->GetFormCtrlTargetArray().Add(std::move(target));
}

void MoveTargetsToForms(VornXSections& set, const std::string& setPath, WorkTypeCounts& counts,
                        ConversionReport& report) {
  // Documents of later editions may hold targets in their forms too; those go the same way.
  Vorn_FormCtrlTargetArray all = std::move(set.GetFormCtrlTargetArray());
  set.SetFormCtrlTargetArray(Vorn_FormCtrlTargetArray());
  for (VornXSection& section : set.GetXSectionArray()) {
    for (VornBuildForm& form : section.GetBuildFormArray()) {
      for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) all.Add(std::move(target));
      form.GetFormCtrlTargetArray().RemoveAll();
    }
  }
  SectionIndex sections(set);
  for (int i = 0; i < all.GetSize(); ++i) {
    const Destination destination = FindDestination(all[i], set, sections);
    if (destination.form == nullptr) {
      report.lostTargets.push_back(TargetPath(setPath, all[i], i) + ": " + destination.reason);
      continue;
    }
    PutIntoForm(std::move(all[i]), destination, counts);
    ++report.movedTargets;
  }
}

// --- the whole ------------------------------------------------------------------------------------------------------

void ConvertTo20(DesignDocument& document, ConversionReport& report) {
  WorkTypeCounts counts;
  for (int i = 0; i < document.sets.GetSize(); ++i) {
    VornXSections& set = document.sets[i];
    const std::string path = SetPath(set, i);
    for (VornXSection& section : set.GetXSectionArray()) ConvertSectionPointsTo20(section, path, report);
    MoveTargetsToForms(set, path, counts, report);
  }
  if (report.farPoints > 0) {
    report.notes.push_back("Warning: " + std::to_string(report.farPoints) +
                           " points moved by more than 1 mm, as the decimals of edition 2.0 allow no nearer place.");
  }
  if (counts.derived > 0) {
    report.notes.push_back("The work type (cut or fill) of " + std::to_string(counts.derived) +
                           " control targets was taken from the type or the name of their form.");
  }
  if (counts.unknown > 0) {
    report.notes.push_back(std::to_string(counts.unknown) +
                           " control targets have no work type, which edition 2.0 asks for.");
  }
}

void ConvertFrom20(DesignDocument& document, Edition target, ConversionReport& report) {
  for (int i = 0; i < document.sets.GetSize(); ++i) {
    VornXSections& set = document.sets[i];
    for (VornXSection& section : set.GetXSectionArray()) {
      for (VornBuildForm& form : section.GetBuildFormArray()) ConvertPointsFrom20(form);
    }
    MoveTargetsToSet(set, SetPath(set, i), report);
  }
  if (document.fileInfos.IsEmpty()) {
    VornFileInfo info;
    info.SetCreateDate(COleDateTime::GetCurrentTime());
    document.fileInfos.Add(std::move(info));
    report.notes.push_back("File information with the present time was added: edition " +
                           std::string(EditionName(target)) + " asks for it and edition 2.0 has none.");
  }
  if (!document.hasStructureType) {
    report.notes.emplace_back(
        "The document has no structure type (work type, job, company), which edition 2.0 does not hold.");
  }
}

/// The declarations of the root follow by themselves; carried elements may have some of their own.
void ChangeCarriedNamespaces(DesignDocument& document, Edition target) {
  const std::string tsf = VornSchema::Instance().Tsf().GetString();
  const std::string rgm = VornSchema::Instance().Rgm().GetString();
  const EditionScope scope(target);
  document.carried.ChangeNamespace(tsf, VornSchema::Instance().Tsf().GetString());
  document.carried.ChangeNamespace(rgm, VornSchema::Instance().Rgm().GetString());
}

/// Control targets that move between their forms and the set leave what hangs on them.
void DropBelowControlTargets(DesignDocument& document, ConversionReport& report) {
  for (const CarriedContent::Row& row : document.carried.DropBelowControlTargets()) {
    AddDropped(report, "unknown content of control targets: " + row.name, row.count);
  }
}

void NoteCarriedContent(const DesignDocument& document, Edition target, ConversionReport& report) {
  if (document.carried.IsEmpty()) return;
  report.notes.push_back(
      "What is carried over unchanged was not converted to edition " + std::string(EditionName(target)) +
      (document.carried.HasRoadGeometry() ? "; the \"rgm\" namespace declaration follows the edition." : "."));
}

}  // namespace

ConversionReport ConvertEdition(DesignDocument& document, Edition target, const std::string& name) {
  ConversionReport report;
  const Edition source = document.edition;
  if (source != target) {
    if (source == Edition::RoadGm || target == Edition::RoadGm) {
      throw DocumentError(
          name + ": a road-geometry document (root RoadGmxml) holds no design cross sections and cannot be converted");
    }
    const EditionScope scope(source);
    const bool from20 = IsEdition20(source);
    const bool to20 = IsEdition20(target);
    if (to20) ConvertTo20(document, report);
    if (from20) ConvertFrom20(document, target, report);
    ChangeCarriedNamespaces(document, target);
    if (from20 || to20) DropBelowControlTargets(document, report);
    NoteCarriedContent(document, target, report);
  }
  document.edition = target;
  if (target == Edition::RoadGm) return report;
  if (IsEdition20(target)) {
    CountDroppedBy20(document, report);
  } else {
    CountDroppedByLater(document, report);
  }
  CountNotWritten(document, report);
  return report;
}

}  // namespace vorn_host
