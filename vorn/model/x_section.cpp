#include "vorn/model/x_section.h"

#include <algorithm>
#include <cmath>

#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"
#include "vorn/framework/tolerance.h"

namespace {

/// A section without a station counts as one at station 0: its raw value is compared.
bool IsAtStation(const VornXSection& section, double station) {
  return IsSameStation(section.GetCumulativeDist().Value(), station);
}

}  // namespace

VornXSection::VornXSection() : Vorn_Base("tsf:XSection") {}

bool VornXSection::IsEnable() const { return m_cumulativeDist.IsSet() && m_buildFormArray.IsEnable(); }

// --- XML -----------------------------------------------------------------------------------------------------------

bool VornXSection::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  const bool later = schema.GetVersion() >= VornSchema::Version40;
  const auto addUnlessEmpty = [&](const char* name, const CString& value) {
    return value.IsEmpty() || AddAttr(cursor, name, value.View());
  };
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) && (!later || addUnlessEmpty("name", m_name)) &&
         AddAttr(cursor, "cumulativeDist", m_cumulativeDist.Value(),
                 VornNumericalPrecision::GetInstance().GetDecimalPlaceDist()) &&
         (!m_xSectChg || AddAttr(cursor, "xSectChg", "true")) &&
         (!m_controlSect || AddAttr(cursor, "controlSect", "true")) &&
         (!later ||
          (addUnlessEmpty("directionAngle", m_directionAngle) && addUnlessEmpty("targetPntID", m_targetPntID))) &&
         m_buildFormArray.toXML(cursor) && (!later || m_existingFlag == 0 || m_existingBuildFormArray.toXML(cursor)) &&
         ReturnParent(cursor);
}

bool VornXSection::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) { ReadAttribute(name, value); });

  const CString formTag = m_buildFormArray.tagName();
  const CString existingTag = m_existingBuildFormArray.tagName();
  return ForEachChild(cursor, [&] {
    if (IsOnTag(cursor, formTag.View())) return m_buildFormArray.fromXML(cursor);
    if (!IsOnTag(cursor, existingTag.View())) return true;
    if (!m_existingBuildFormArray.fromXML(cursor)) return false;
    if (!m_existingBuildFormArray.IsEmpty()) {
      m_existingFlag = m_existingBuildFormArray[0].GetComposedPntArray().IsEmpty() ? 0 : 1;
    }
    return true;
  });
}

void VornXSection::ReadAttribute(std::string_view name, std::string_view value) {
  if (IsMatchTagName(name, "cumulativeDist")) {
    m_cumulativeDist = TurnReal(value);
  } else if (IsMatchTagName(name, "xSectChg")) {
    m_xSectChg = value == "true";
  } else if (IsMatchTagName(name, "controlSect")) {
    m_controlSect = value == "true";
  } else if (IsMatchTagName(name, "directionAngle")) {
    m_directionAngle = value;
  } else if (IsMatchTagName(name, "targetPntID")) {
    m_targetPntID = value;
  } else if (IsMatchTagName(name, "name")) {
    m_name = value;
  }
}

// --- look-ups ------------------------------------------------------------------------------------------------------

int VornXSection::Find(const CString& formName, const CString* pointName) const {
  for (int i = 0; i < m_buildFormArray.GetSize(); ++i) {
    const VornBuildForm& form = m_buildFormArray[i];
    if (form.GetName() != formName) continue;
    if (pointName == nullptr || form.GetComposedPntArray().Find(*pointName) >= 0) return i;
  }
  return -1;
}

VornBuildForm* VornXSection::GetBuildForm(const CString& formName, const CString* pointName) {
  using PntType = VornComposedPnt::PntType;
  const int index = Find(formName, pointName);
  if (index >= 0) return &m_buildFormArray[index];
  if (pointName != nullptr || m_buildFormArray.IsEmpty()) return nullptr;
  VornBuildForm& first = m_buildFormArray[0];
  const auto& points = first.GetComposedPntArray();
  const bool named = std::any_of(points.begin(), points.end(), [&](const VornComposedPnt& point) {
    return point.GetXSectName(PntType::Main) == formName || point.GetXSectName(PntType::Sub) == formName;
  });
  return named ? &first : nullptr;
}

CString VornXSection::FindNameFromID(std::uint32_t serialID) const {
  if (m_buildFormArray.IsEmpty()) return CString();
  const Vorn_ComposedPntArray& points = m_buildFormArray[0].GetComposedPntArray();
  const int index = points.Find(serialID);
  return index < 0 ? CString() : points[index].GetCode();
}

bool VornXSection::IsUsedBuildName(const CString& xsectType, const CString& formName) const {
  return std::any_of(m_buildFormArray.begin(), m_buildFormArray.end(), [&](const VornBuildForm& form) {
    return form.GetXSectType() == xsectType && form.GetName() == formName;
  });
}

void VornXSection::RenameBuildForm(const CString& xsectType, const CString& oldName, const CString& newName) {
  const CString renamed = oldName;  // oldName may be the name of one of the forms itself
  for (VornBuildForm& form : m_buildFormArray) {
    if (form.GetXSectType() == xsectType && form.GetName() == renamed) form.SetName(newName, true);
  }
}

// --- Vorn_XSectionArray --------------------------------------------------------------------------------------------

int Vorn_XSectionArray::Find(const double& station) const {
  return FindFirst([&](const VornXSection& section) { return IsAtStation(section, station); });
}

bool Vorn_XSectionArray::Insert(const VornXSection& section) {
  const double station = section.GetCumulativeDist().Value();
  const auto behind = std::find_if(begin(), end(), [&](const VornXSection& other) {
    return other.GetCumulativeDist().Value() >= station && !IsAtStation(other, station);
  });
  InsertAt(static_cast<int>(behind - begin()), section);
  return true;
}

bool Vorn_XSectionArray::QueryNearSection(const double& station, VornXSection*& before, VornXSection*& after) {
  for (VornXSection& section : *this) {
    if (IsAtStation(section, station)) {
      before = nullptr;
      after = nullptr;
      return false;
    }
    if (section.GetCumulativeDist().Value() >= station) {
      after = &section;
      return before != nullptr;
    }
    before = &section;
  }
  return false;
}

bool Vorn_XSectionArray::IsUsedBuildName(const CString& xsectType, const CString& formName) const {
  return std::any_of(begin(), end(),
                     [&](const VornXSection& section) { return section.IsUsedBuildName(xsectType, formName); });
}
