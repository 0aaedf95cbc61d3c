#include "host/editing/set_targets.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/target_codes.h"

namespace vorn_host {

namespace {

using ControlItem = VornFormCtrlTarget::ControlItem;

/// The composed point that a target point stands on; null when there is none.
const VornComposedPnt* StandsOn(const VornFormCtrlTargetPnt& point, const VornXSections& set, SectionIndex& sections) {
  const Standing standing = sections.FindStanding(point);
  if (standing.point < 0) return nullptr;
  const VornXSection& section = set.GetXSectionArray()[standing.section];
  return &section.GetBuildFormArray()[standing.form].GetComposedPntArray()[standing.point];
}

/// The lines of what a target names and is not there.
class DanglingLines {
 public:
  DanglingLines(const VornFormCtrlTarget& target, std::vector<std::string>& lines) : m_target(target), m_lines(lines) {}

  void Add(const std::string& place, const CString& code) {
    if (m_text.empty()) m_text = TargetText(m_target);
    m_lines.push_back(place + ": " + m_text + " names " + (code.IsEmpty() ? std::string("no code") : NameText(code)));
  }

 private:
  const VornFormCtrlTarget& m_target;
  std::vector<std::string>& m_lines;
  std::string m_text;  ///< of the target, which may have many codes: it is made once
};

void AddDanglingOfSet(const VornXSections& set, const std::string& setPath, std::vector<std::string>& lines) {
  if (set.GetFormCtrlTargetArray().IsEmpty()) return;
  SectionIndex sections(set);
  const std::string inSet = setPath + " > ";
  for (const VornFormCtrlTarget& target : set.GetFormCtrlTargetArray()) {
    DanglingLines dangling(target, lines);
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      if (sections.FindStanding(point).point >= 0) continue;
      const std::string station = StationPath(point.GetCumulativeDist(), point.GetXSectChg());
      dangling.Add(FormPath(inSet + station, point.GetBuildFormName()), point.GetCode());
    }
  }
}

void AddDanglingOfForms(const VornXSection& section, const std::string& setPath, std::vector<std::string>& lines) {
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    PointIndex points(form.GetComposedPntArray());
    for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
      DanglingLines dangling(target, lines);
      for (const CString& code : CodesOf(target)) {
        if (code.IsEmpty() || points.Find(code) >= 0) continue;
        dangling.Add(FormPath(SectionPath(setPath, section), form.GetName()), code);
      }
    }
  }
}

/// Whether every code of a target is that of a point of its form.
/// @param points those of the form
bool NamesPoints(const VornFormCtrlTarget& target, PointIndex& points) {
  const CStringArray codes = CodesOf(target);
  return std::all_of(codes.begin(), codes.end(), [&](const CString& code) { return points.Find(code) >= 0; });
}

/// Gives a target point the place of the composed point under it.
void TakePlace(const VornComposedPnt& from, VornFormCtrlTargetPnt& point) {
  point.SetSide(from.GetLocation());
  point.SetOffset(from.GetCLDist().Value());
  point.SetElevation(from.GetGh().Value());
}

/// Regulates one target, whose points know their places when it stands.
void Regulate(VornFormCtrlTarget& target, bool stands, TargetFate& fate) {
  const VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
  const auto type = target.GetTargetPntType();
  const VornFormCtrlTargetPnt first = points.IsEmpty() ? VornFormCtrlTargetPnt() : points[0];
  fate.irregular = !stands || !target.Regulate();
  if (fate.irregular) return;
  const auto isSame = [](const VornFormCtrlTargetPnt& a, const VornFormCtrlTargetPnt& b) {
    return a.GetCode() == b.GetCode() && a.GetBuildFormName() == b.GetBuildFormName() &&
           a.GetCumulativeDist() == b.GetCumulativeDist() && a.GetXSectChg() == b.GetXSectChg();
  };
  fate.swapped = !points.IsEmpty() && !isSame(first, points[0]);
  fate.reordered = fate.swapped || type != target.GetTargetPntType();
}

/// What a target's points stand on, so that only targets at one place are compared with each other.
std::string PlaceKey(const VornFormCtrlTarget& target) {
  std::string key;
  for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
    key += StationPath(point.GetCumulativeDist(), point.GetXSectChg());
    key += '\n';
    key += point.GetBuildFormName().View();
    key += '\n';
  }
  return key;
}

/// Gives a target of edition 2.0, whose codes are the element's text, points that stand for them while the pair is put
/// in order. Whether all of them stand on points of its form.
bool LendPoints(VornFormCtrlTarget& target, VornBuildForm& form, const NurReal& station, PointIndex& index) {
  VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
  points.RemoveAll();
  if (target.GetControlItem() == ControlItem::Height) return NamesPoints(target, index);  // in whatever order
  target.RegulatePnt(station, &form);
  bool stands = true;
  for (VornFormCtrlTargetPnt& point : points) {
    const int under = index.Find(point.GetCode());
    if (under >= 0) TakePlace(form.GetComposedPntArray()[under], point);
    stands = stands && under >= 0;
  }
  return stands;
}

/// Marks the targets that repeat an earlier one, as the collection's own regulation tells.
void MarkRepeated(const Vorn_FormCtrlTargetArray& targets, const std::vector<int>& group,
                  std::vector<TargetFate>& fates) {
  if (group.size() < 2) return;
  Vorn_FormCtrlTargetArray copies;
  for (const int index : group) {
    VornFormCtrlTarget copy = targets[index];
    copy.SetSerialID(static_cast<std::uint32_t>(index));
    copies.Add(std::move(copy));
  }
  copies.Regulate();
  // What is left keeps its order, so the two lists can be walked side by side.
  int left = 0;
  for (const int index : group) {
    const bool stays = left < copies.GetSize() && copies[left].GetSerialID() == static_cast<std::uint32_t>(index);
    if (stays) ++left;
    fates[static_cast<std::size_t>(index)].removed = !stays;
  }
}

void RemoveMarked(Vorn_FormCtrlTargetArray& targets, const std::vector<TargetFate>& fates) {
  std::size_t next = 0;
  targets.RemoveIf([&](const VornFormCtrlTarget&) { return fates[next++].removed; });
}

}  // namespace

std::vector<TargetFate> RemoveTargetsOn(VornXSections& set, const CString& formName,
                                        const std::function<bool(int)>& isMeant) {
  Vorn_FormCtrlTargetArray& targets = set.GetFormCtrlTargetArray();
  std::vector<TargetFate> fates;
  const SectionIndex index(set);
  targets.RemoveIf([&](const VornFormCtrlTarget& target) {
    const auto& points = target.GetTargetPntArray();
    const bool stands = std::any_of(points.begin(), points.end(), [&](const VornFormCtrlTargetPnt& point) {
      if (point.GetBuildFormName() != formName) return false;
      const int section = index.Find(point.GetCumulativeDist(), point.GetXSectChg());
      return section >= 0 && isMeant(section);
    });
    fates.push_back({.removed = stands});
    return stands;
  });
  return fates;
}

std::vector<std::string> DanglingTargets(const DesignDocument& document) {
  std::vector<std::string> lines;
  for (int i = 0; i < document.sets.GetSize(); ++i) {
    const VornXSections& set = document.sets[i];
    const std::string path = SetPath(set, i);
    AddDanglingOfSet(set, path, lines);
    if (!IsEdition20(document.edition)) continue;
    for (const VornXSection& section : set.GetXSectionArray()) AddDanglingOfForms(section, path, lines);
  }
  return lines;
}

std::vector<int> CountTargetsOnMissingPoints(const VornXSections& set) {
  std::vector<int> counts(static_cast<std::size_t>(set.GetXSectionArray().GetSize()), 0);
  if (set.GetFormCtrlTargetArray().IsEmpty()) return counts;
  SectionIndex sections(set);
  for (const VornFormCtrlTarget& target : set.GetFormCtrlTargetArray()) {
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      const VornComposedPnt* under = StandsOn(point, set, sections);
      if (under == nullptr || under->GetExistence() != VORN_Existence::False) continue;
      ++counts[static_cast<std::size_t>(sections.Find(point.GetCumulativeDist(), point.GetXSectChg()))];
      break;
    }
  }
  return counts;
}

std::vector<TargetFate> RegulateTargetsOf(Vorn_FormCtrlTargetArray& targets, const VornXSections& set,
                                          SectionIndex& sections) {
  std::vector<TargetFate> fates;
  std::map<std::string, std::vector<int>> groups;
  for (int i = 0; i < targets.GetSize(); ++i) {
    VornFormCtrlTarget& target = targets[i];
    TargetFate& fate = fates.emplace_back();
    bool stands = true;
    for (VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      const VornComposedPnt* under = StandsOn(point, set, sections);
      if (under != nullptr) TakePlace(*under, point);
      stands = stands && under != nullptr;
      if (fate.section < 0) fate.section = sections.Find(point.GetCumulativeDist(), point.GetXSectChg());
    }
    Regulate(target, stands, fate);
    groups[PlaceKey(target)].push_back(i);
  }
  for (const auto& [place, group] : groups) MarkRepeated(targets, group, fates);
  RemoveMarked(targets, fates);
  return fates;
}

std::vector<TargetFate> RegulateTargetsOf20(VornBuildForm& form, const NurReal& station) {
  Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
  std::vector<TargetFate> fates;
  std::vector<int> all;
  PointIndex index(form.GetComposedPntArray());
  for (int i = 0; i < targets.GetSize(); ++i) {
    VornFormCtrlTarget& target = targets[i];
    TargetFate& fate = fates.emplace_back();
    all.push_back(i);
    VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
    Regulate(target, LendPoints(target, form, station, index), fate);
    if (fate.swapped) target.SetCode(points[0].GetCode() + " " + points[1].GetCode());
    points.RemoveAll();
  }
  MarkRepeated(targets, all, fates);
  RemoveMarked(targets, fates);
  return fates;
}

}  // namespace vorn_host
