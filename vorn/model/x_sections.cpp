#include "vorn/model/x_sections.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "vorn/framework/schema.h"
#include "vorn/framework/tolerance.h"

namespace {

/// What a cross section is ordered by.
struct SortRecord {
  int index;
  NurReal station;
  bool xSectChg;
};

/// Stations this close, in metres, are ordered by the change-of-shape flag. Much finer than the tolerance of the
/// look-ups: two sections that a look-up takes for one may well be meant in their order.
constexpr double kSameOrderedStation = 1e-9;

/// Never reports equality: sections alike in everything keep their order.
bool ComesBefore(const SortRecord& a, const SortRecord& b) {
  if (a.station.IsSet() != b.station.IsSet()) return !a.station.IsSet();
  const double difference = a.station.IsSet() ? a.station.Value() - b.station.Value() : 0.0;
  if (std::abs(difference) >= kSameOrderedStation) return difference < 0.0;
  if (a.xSectChg != b.xSectChg) return !a.xSectChg;
  return a.index < b.index;
}

}  // namespace

VornXSections::VornXSections() : Vorn_Base("tsf:XSections") {}

bool VornXSections::IsEnable() const {
  return !m_refAlign.IsEmpty() && !m_refVertical.IsEmpty() && m_xSectionArray.IsEnable();
}

bool VornXSections::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  const bool later = schema.GetVersion() >= VornSchema::Version40;
  const auto writeTargets = [&] {
    ConvFormCtrlTarget();
    return m_formCtrlTargetArray.toXML(cursor);
  };
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) && AddAttr(cursor, "refAlign", m_refAlign.View()) &&
         AddAttr(cursor, "refVertical", m_refVertical.View()) &&
         (!later || ((m_alignment || AddAttr(cursor, "alignment", "false")) &&
                     AddAttr(cursor, "projectPhase", m_projectPhase.View()))) &&
         m_xSectionArray.toXML(cursor) && (!later || writeTargets()) && ReturnParent(cursor);
}

bool VornXSections::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) { ReadAttribute(name, value); });

  const CString sectionTag = m_xSectionArray.tagName();
  const CString targetTag = m_formCtrlTargetArray.tagName();
  const bool read = ForEachChild(cursor, [&] {
    if (IsOnTag(cursor, sectionTag.View())) return m_xSectionArray.fromXML(cursor);
    if (IsOnTag(cursor, targetTag.View())) return m_formCtrlTargetArray.AddRunFromXML(cursor);
    return true;
  });
  if (!read) return false;
  ReformSelf();
  return true;
}

void VornXSections::ReadAttribute(std::string_view name, std::string_view value) {
  if (IsMatchTagName(name, "refAlign")) {
    m_refAlign = value;
  } else if (IsMatchTagName(name, "refVertical")) {
    m_refVertical = value;
  } else if (IsMatchTagName(name, "projectPhase")) {
    m_projectPhase = value;
  } else if (IsMatchTagName(name, "alignment")) {
    m_alignment = value != "false";
  }
}

void VornXSections::ReformSelf() {
  const int count = m_xSectionArray.GetSize();
  if (count < 2) return;
  std::vector<SortRecord> records;
  records.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    records.push_back({i, m_xSectionArray[i].GetCumulativeDist(), m_xSectionArray[i].GetXSectChg()});
  }
  if (std::is_sorted(records.begin(), records.end(), ComesBefore)) return;
  // A tolerance is no strict order over a long chain of neighbours; a stable sort stays well-behaved on one.
  std::stable_sort(records.begin(), records.end(), ComesBefore);

  Vorn_XSectionArray ordered;
  ordered.Reserve(count);
  for (const SortRecord& record : records) ordered.Add(std::move(m_xSectionArray[record.index]));
  m_xSectionArray = std::move(ordered);
}

void VornXSections::ConvFormCtrlTarget() {
  std::vector<VornFormCtrlTarget> gathered;  // all before the first comes in: gathered again, it would be there twice
  for (const VornXSection& section : m_xSectionArray) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) {
      const Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
      gathered.insert(gathered.end(), targets.begin(), targets.end());
    }
  }
  m_formCtrlTargetArray.Reserve(m_formCtrlTargetArray.GetSize() + static_cast<int>(gathered.size()));
  for (VornFormCtrlTarget& target : gathered) m_formCtrlTargetArray.Add(std::move(target));
}

void VornXSections::CreateFormCtrlTargetPnt(VornFormCtrlTarget& target, NurReal distance) {
  VornFormCtrlTargetPnt point;
  point.SetCumulativeDist(distance);
  point.SetCode(target.GetCode());
  target.GetTargetPntArray().Add(std::move(point));
}

int VornXSections::Find(const NurReal& station, bool xSectChg) const {
  return m_xSectionArray.FindFirst([&](const VornXSection& section) {
    return IsSameStation(section.GetCumulativeDist().Value(), station.Value()) && section.GetXSectChg() == xSectChg;
  });
}

VornBuildForm* VornXSections::GetBuildForm(const NurReal& station, const CString& formName, bool xSectChg,
                                           const CString* pointName) {
  const int index = Find(station, xSectChg);
  return index < 0 ? nullptr : m_xSectionArray[index].GetBuildForm(formName, pointName);
}

void VornXSections::ChangeRefAlign(const CString& oldName, const CString& newName) {
  if (m_refAlign == oldName) m_refAlign = newName;
}

void Vorn_XSectionsArray::ChangeRefAlign(const CString& oldName, const CString& newName) {
  const CString renamed = oldName;  // oldName may be the name that one of the sets holds
  for (VornXSections& set : *this) set.ChangeRefAlign(renamed, newName);
}
