#include "host/document/document_check.h"

#include <cmath>
#include <optional>
#include <set>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/element_knowledge.h"
#include "host/document/section_index.h"
#include "host/document/target_codes.h"
#include "vorn/framework/tolerance.h"

namespace vorn_host {

namespace {

using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;
using WorkType = VornFormCtrlTarget::WorkType;

/// Reasons, put together to one text.
class Reasons {
 public:
  void AddIf(bool wrong, std::string_view reason) {
    if (!wrong) return;
    if (!m_text.empty()) m_text += "; ";
    m_text += reason;
  }

  [[nodiscard]] bool IsEmpty() const { return m_text.empty(); }
  [[nodiscard]] const std::string& Text() const { return m_text; }

 private:
  std::string m_text;
};

template <typename Enum>
bool IsOutside(Enum value, Enum first, Enum last) {
  return value < first || value > last;
}

/// The kind of a finding about an element that does not count as valid.
std::string NotEnabled(std::string_view tag) { return std::string(tag) + " not enabled"; }

class Checker {
 public:
  explicit Checker(const DesignDocument& document) : m_document(document), m_edition20(IsEdition20(document.edition)) {}

  std::vector<Finding> Check() {
    AddUnreadValues();
    if (m_document.edition != Edition::RoadGm) {
      CheckFileInfos();
      CheckStructureType();
      if (m_document.sets.IsEmpty()) AddNotEnabled(kXSectionsTag, "document", "there is no cross-section set");
    }
    for (int i = 0; i < m_document.sets.GetSize(); ++i) CheckSet(m_document.sets[i], i);
    NoteTargetsOfLaterEditions();
    return std::move(m_findings);
  }

 private:
  void Add(Severity severity, std::string kind, std::string path, std::string reason) {
    m_findings.push_back({severity, std::move(kind), std::move(path), std::move(reason), m_place});
  }
  void AddNotEnabled(std::string_view tag, std::string path, std::string reason) {
    Add(Severity::Error, NotEnabled(tag), std::move(path), std::move(reason));
  }

  /// First of all: what follows is found in the model, which does not hold these values.
  void AddUnreadValues() {
    for (const UnreadValue& value : m_document.unreadValues) {
      Add(Severity::Error, "value not understood", PlaceOf(value), Describe(value));
    }
  }

  // --- the document's head ---------------------------------------------------------------------------------------

  void CheckFileInfos() {
    if (m_edition20) return;
    if (m_document.fileInfos.IsEmpty()) {
      AddNotEnabled(kFileInfoTag, "document", "there is no file information; one or more are needed");
    }
    for (int i = 0; i < m_document.fileInfos.GetSize(); ++i) {
      const VornFileInfo& info = m_document.fileInfos[i];
      if (info.IsEnable()) continue;
      const bool missing = info.GetCreateDate().GetStatus() == COleDateTime::null;
      AddNotEnabled(kFileInfoTag, "file information " + std::to_string(i + 1),
                    missing ? "createDate is missing" : "createDate is no date");
    }
  }

  void CheckStructureType() {
    if (m_edition20) return;
    if (!m_document.hasStructureType) {
      Add(Severity::Note, "no " + std::string(kStructureTypeTag), "document",
          "the work type of the document is not told");
      return;
    }
    const VornStructureType& type = m_document.structureType;
    if (type.IsEnable()) return;
    VornStructureType withStationType = type;
    withStationType.SetStationType("NO");
    const bool badType = !withStationType.IsEnable();
    VornStructureType withType = type;
    withType.SetType(VornStructureType::Type::RoadEarthwork);
    const bool badStationType = !withType.IsEnable();
    Reasons reasons;
    reasons.AddIf(badType, "type \"" + NameText(type.GetTypeStr()) + "\" is none of the nine work types");
    reasons.AddIf(badStationType,
                  "stationType \"" + NameText(type.GetStationType()) + "\" is none of NO, SP, STA and 距離標");
    AddNotEnabled(kStructureTypeTag, "structure type", reasons.Text());
  }

  // --- sets and sections -----------------------------------------------------------------------------------------

  void CheckSet(const VornXSections& set, int index) {
    m_place = {index};
    const std::string path = SetPath(set, index);
    Reasons reasons;
    reasons.AddIf(set.GetRefAlign().IsEmpty(), "refAlign is missing");
    reasons.AddIf(set.GetRefVertical().IsEmpty(), "refVertical is missing");
    reasons.AddIf(set.GetXSectionArray().IsEmpty(), "there is no cross section; one or more are needed");
    if (!reasons.IsEmpty()) AddNotEnabled(kXSectionsTag, path, reasons.Text());

    CheckStationOrder(set, index, path);
    SectionIndex sections(set);
    for (int i = 0; i < set.GetXSectionArray().GetSize(); ++i) {
      const VornXSection& section = set.GetXSectionArray()[i];
      const std::string sectionPath = SectionPath(path, section);
      m_place = {index, i};
      CheckDoubledStation(set.GetXSectionArray(), i, sectionPath);
      CheckSection(section, sectionPath, sections);
    }
    m_place = {index};
    CheckTargets(set.GetFormCtrlTargetArray(), path, nullptr, sections);
    m_place = {};
  }

  /// Reading orders the sections, so their order in the document is looked up.
  void CheckStationOrder(const VornXSections& set, int index, const std::string& path) {
    const NurReal* former = nullptr;
    for (const int place : m_document.carried.SectionOrder(index)) {
      if (!set.GetXSectionArray().IsRange(place)) continue;
      const VornXSection& section = set.GetXSectionArray()[place];
      const NurReal& station = section.GetCumulativeDist();
      if (!station.IsSet()) continue;
      if (former != nullptr && station.Value() < former->Value() - kSameStation) {
        m_place = {index, place};
        Add(Severity::Error, "station out of order", SectionPath(path, section),
            "it stands behind station " + StationText(*former) + " in the document");
      }
      former = &station;
    }
    m_place = {index};
  }

  void CheckDoubledStation(const Vorn_XSectionArray& sections, int index, const std::string& path) {
    const VornXSection& section = sections[index];
    if (!section.GetCumulativeDist().IsSet()) return;
    for (int i = index - 1; i >= 0; --i) {
      const VornXSection& former = sections[i];
      if (!former.GetCumulativeDist().IsSet()) return;
      if (std::abs(former.GetCumulativeDist().Value() - section.GetCumulativeDist().Value()) >= kSameStation) return;
      if (former.GetXSectChg() != section.GetXSectChg()) continue;
      Add(Severity::Error, "station doubled", path,
          "another cross section has the same station and change-of-shape flag");
      return;
    }
  }

  void CheckSection(const VornXSection& section, const std::string& path, SectionIndex& sections) {
    Reasons reasons;
    reasons.AddIf(!section.GetCumulativeDist().IsSet(), "cumulativeDist is missing");
    reasons.AddIf(section.GetBuildFormArray().IsEmpty(), "there is no build form; one or more are needed");
    if (!reasons.IsEmpty()) AddNotEnabled(kXSectionTag, path, reasons.Text());

    for (const VornBuildForm& form : section.GetBuildFormArray()) {
      const std::string formPath = FormPath(path, form.GetName());
      ++m_place.form;
      CheckForm(form, formPath);
      CheckTargets(form.GetFormCtrlTargetArray(), formPath, &form, sections);
    }
    m_place.form = -1;
    if (!m_edition20) {
      for (const VornExistingBuildForm& form : section.GetExistingBuildFormArray()) CheckExistingForm(form, path);
    }
  }

  // --- forms and points --------------------------------------------------------------------------------------------

  void CheckForm(const VornBuildForm& form, const std::string& path) {
    const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    Reasons reasons;
    reasons.AddIf(form.GetName().IsEmpty(), "name is missing");
    reasons.AddIf(!points.IsCountAllowed(points.GetSize()), "there are fewer than two points");
    if (!reasons.IsEmpty()) AddNotEnabled(kBuildFormTag, path, reasons.Text());

    std::set<std::string_view> codes;
    std::set<std::string_view> reported;
    for (int i = 0; i < points.GetSize(); ++i) {
      const VornComposedPnt& point = points[i];
      m_place.point = i;
      if (!point.IsEnable()) CheckPoint(point, PointPath(path, point.GetCode(), i));
      const std::string_view code = point.GetCode().View();
      if (!code.empty() && !codes.insert(code).second && reported.insert(code).second) {
        Add(Severity::Error, "code used twice", PointPath(path, point.GetCode(), i),
            "another point of the form has the code " + NameText(point.GetCode()));
      }
    }
    m_place.point = -1;
  }

  void CheckPoint(const VornComposedPnt& point, std::string path) {
    Reasons reasons;
    reasons.AddIf(point.GetCode().IsEmpty(), "code is missing");
    reasons.AddIf(IsOutside(point.GetExistence(), VORN_Existence::Empty, VORN_Existence::True),
                  "existence is missing or neither \"true\" nor \"false\"");
    AddNotEnabled(kComposedPntTag, std::move(path), reasons.Text());
  }

  void CheckExistingForm(const VornExistingBuildForm& form, const std::string& sectionPath) {
    if (form.IsEnable()) return;
    const std::string name = form.GetName().IsEmpty() ? "without a name" : NameText(form.GetName());
    const std::string path = sectionPath + " > existing ground " + name;
    const VornExistingComposedPntArray& points = form.GetComposedPntArray();
    Reasons reasons;
    reasons.AddIf(form.GetName().IsEmpty(), "name is missing");
    reasons.AddIf(!points.IsCountAllowed(points.GetSize()), "there are fewer than two points");
    if (!reasons.IsEmpty()) AddNotEnabled(kExistingBuildFormTag, path, reasons.Text());
    for (int i = 0; i < points.GetSize(); ++i) {
      Reasons pointReasons;
      pointReasons.AddIf(!points[i].GetCLDist().IsSet(), "the distance from the centre line is missing");
      pointReasons.AddIf(!points[i].GetGh().IsSet(), "the height is missing");
      if (pointReasons.IsEmpty()) continue;
      AddNotEnabled(kExistingComposedPntTag, PointPath(path, points[i].GetName(), i), pointReasons.Text());
    }
  }

  // --- control targets ---------------------------------------------------------------------------------------------

  /// @param owner the form that holds the targets; null for those of the set
  void CheckTargets(const Vorn_FormCtrlTargetArray& targets, const std::string& ownerPath, const VornBuildForm* owner,
                    SectionIndex& sections) {
    std::optional<PointIndex> codes;
    if (owner != nullptr) codes.emplace(owner->GetComposedPntArray());
    for (int i = 0; i < targets.GetSize(); ++i) {
      const VornFormCtrlTarget& target = targets[i];
      std::string madePath;
      const auto path = [&]() -> const std::string& {
        if (madePath.empty()) madePath = TargetPath(ownerPath, target, i);
        return madePath;
      };
      if (owner == nullptr) m_place.section = SectionOf(target, sections);
      const Reasons reasons = WhyNotEnabled(target);
      if (!reasons.IsEmpty()) AddNotEnabled(kFormCtrlTargetTag, path(), reasons.Text());
      NoteDeliberateLimits(target, path);
      if (m_edition20) {
        CheckCodesOf20(target, owner, codes, path);
      } else {
        std::string told;
        for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
          CheckTargetPnt(point, sections, path, told);
        }
      }
      ++m_targetCount;
    }
  }

  /// Index of the section at which the points of a target are; -1 where there is none.
  [[nodiscard]] static int SectionOf(const VornFormCtrlTarget& target, const SectionIndex& sections) {
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      if (!point.GetCumulativeDist().IsSet()) continue;
      const int index = sections.Find(point.GetCumulativeDist(), point.GetXSectChg());
      if (index >= 0) return index;
    }
    return -1;
  }

  /// What makes a target invalid, apart from what later editions do not carry and from the limits that are meant.
  [[nodiscard]] Reasons WhyNotEnabled(const VornFormCtrlTarget& target) const {
    const VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
    const bool onePointHeight = points.GetSize() == 1 && target.GetControlItem() == ControlItem::Height;
    Reasons reasons;
    reasons.AddIf(m_edition20 && target.GetCodeName().IsEmpty(), "the codes (the element's text) are missing");
    reasons.AddIf(m_edition20 && IsOutside(target.GetWorkType(), WorkType::CutWork, WorkType::FillWork),
                  "workType is missing or neither RE_CutWork nor RE_FillWork");
    reasons.AddIf(IsOutside(target.GetControlItem(), ControlItem::SlopeLength, ControlItem::Area),
                  "controlItem is missing or unknown");
    reasons.AddIf(target.GetTargetScope().IsEmpty(), "targetScope is missing");
    reasons.AddIf(target.GetTargetRegio().IsEmpty(), "targetRegio is missing");
    reasons.AddIf(IsOutside(target.GetTargetPntType(), TargetPntType::ShoulderToe, TargetPntType::TargetPnt) &&
                      !IsRegulatedType(target),
                  "targetPntType is missing, unknown or not one of the first five");
    reasons.AddIf(!m_edition20 && points.IsEmpty(), "there are no target points");
    reasons.AddIf(!points.IsEmpty() && !points.IsCountAllowed(points.GetSize()) && !onePointHeight,
                  "there are fewer than two target points");
    return reasons;
  }

  /// "Lower Upper" of a thickness and "Upper Lower" of a depth, as regulation itself sets them.
  [[nodiscard]] static bool IsRegulatedType(const VornFormCtrlTarget& target) {
    return (target.GetControlItem() == ControlItem::Thickness &&
            target.GetTargetPntType() == TargetPntType::LowerUpper) ||
           (target.GetControlItem() == ControlItem::Depth && target.GetTargetPntType() == TargetPntType::UpperLower);
  }

  template <typename Path>
  void NoteDeliberateLimits(const VornFormCtrlTarget& target, const Path& path) {
    const auto note = [&](const char* reason) { Add(Severity::Note, NotEnabled(kFormCtrlTargetTag), path(), reason); };
    if (IsRegulatedType(target)) note("targetPntType is as regulation sets it, but never counts as valid");
    if (target.GetTargetPntArray().GetSize() == 1 && target.GetControlItem() == ControlItem::Height) {
      note("a height has one target point, but two or more count as valid");
    }
  }

  void NoteTargetsOfLaterEditions() {
    if (m_edition20 || m_targetCount == 0) return;
    Add(Severity::Note, NotEnabled(kFormCtrlTargetTag), "all " + std::to_string(m_targetCount) + " control targets",
        "their work type and code text are not part of edition " + std::string(EditionName(m_document.edition)) +
            ", without which they never count as enabled");
  }

  template <typename Path>
  void CheckTargetPnt(const VornFormCtrlTargetPnt& point, SectionIndex& sections, const Path& path, std::string& told) {
    Reasons reasons;
    reasons.AddIf(!point.GetCumulativeDist().IsSet(), "cumulativeDist is missing");
    reasons.AddIf(point.GetBuildFormName().IsEmpty(), "buildFormName is missing");
    reasons.AddIf(point.GetCode().IsEmpty(), "code is missing");
    if (!reasons.IsEmpty()) {
      AddNotEnabled(kFormCtrlTargetPntTag, path(), reasons.Text());
      return;
    }
    // The points of a target mostly miss the same thing: it is told once.
    const auto missing = [&](const std::string& what) {
      if (what == told) return;
      Add(Severity::Error, "control target names what does not exist", path(), what);
      told = what;
    };
    const Standing standing = sections.FindStanding(point);
    if (standing.point >= 0) return;
    if (standing.form < 0) return missing(WhyWithoutForm(point, standing));
    missing("form " + NameText(point.GetBuildFormName()) + " at " +
            StationPath(point.GetCumulativeDist(), point.GetXSectChg()) + " has no code " + NameText(point.GetCode()));
  }

  template <typename Path>
  void CheckCodesOf20(const VornFormCtrlTarget& target, const VornBuildForm* owner, std::optional<PointIndex>& codes,
                      const Path& path) {
    if (!codes) {
      Add(Severity::Error, "control target outside a build form", path(),
          "edition 2.0 keeps control targets in their form");
      return;
    }
    constexpr int kMostTold = 100;
    const auto tell = [&](const std::string& what) {
      Add(Severity::Error, "control target names what does not exist", path(),
          "form " + NameText(owner->GetName()) + what);
    };
    int missing = 0;
    for (const CString& code : CodesOf(target)) {
      if (code.IsEmpty() || codes->Find(code) >= 0) continue;
      if (++missing <= kMostTold) tell(" has no code " + NameText(code));
    }
    if (missing > kMostTold) tell(" has none of " + std::to_string(missing - kMostTold) + " more codes");
  }

  const DesignDocument& m_document;
  bool m_edition20;
  int m_targetCount = 0;
  FindingPlace m_place;  ///< of what is being checked
  std::vector<Finding> m_findings;
};

}  // namespace

std::vector<Finding> CheckDocument(const DesignDocument& document) {
  const EditionScope scope(document.edition);
  return Checker(document).Check();
}

}  // namespace vorn_host
