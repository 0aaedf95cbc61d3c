#include "vorn/model/build_form.h"

#include <utility>

#include "vorn/framework/schema.h"
#include "vorn/platform/code_page_932.h"

namespace {

using TargetPntType = VornFormCtrlTarget::TargetPntType;

}  // namespace

VornBuildForm::VornBuildForm() : Vorn_Base("tsf:BuildForm") {}

bool VornBuildForm::IsEnable() const {
  return !m_name.IsEmpty() && m_composedPntArray.IsEnable() && m_formCtrlTargetArray.IsEnable();
}

bool VornBuildForm::IsRoadWL_R() const {
  for (const VornFormCtrlTarget& target : m_formCtrlTargetArray) {
    if (target.GetTargetPntType() != TargetPntType::LeftRight) continue;
    const VornLocation side1 = GetLRFromCode(target.GetCode1());
    const VornLocation side2 = GetLRFromCode(target.GetCode2());
    if (side1 == VornLocation::Unset || side2 == VornLocation::Unset) return false;
    if (side1 != side2) return true;
  }
  return false;
}

VornLocation VornBuildForm::GetLRFromCode(const CString& code) const {
  for (int i = 1; i < m_composedPntArray.GetSize(); ++i) {
    const VornComposedPnt& point = m_composedPntArray[i];
    if (point.GetCode().CompareNoCase(code.View()) == 0) return point.GetLocation();
  }
  return VornLocation::Unset;
}

void VornBuildForm::GetNoriCodeArray(VornLocation side, CStringArray& codes) const {
  if (side == VornLocation::Unset) return;
  CStringArray found;
  for (const VornFormCtrlTarget& target : m_formCtrlTargetArray) {
    const bool sloped = target.GetTargetPntType() >= TargetPntType::ShoulderToe &&
                        target.GetTargetPntType() <= TargetPntType::InnerOuter;
    const CString code = target.GetCode1();
    TamWorld2 heightAndDist;
    if (sloped && GetPntFromCode(code, heightAndDist) && VornIsPoint_LR(side, heightAndDist.y) != 0) found.Add(code);
  }
  codes.Append(found);
}

// --- naming and typing ---------------------------------------------------------------------------------------------

void VornBuildForm::SetName(const CString& name, bool regulate) {
  CString renamed = name;
  if (regulate) RegulateFormCtrl(m_name, renamed);
  m_name = std::move(renamed);
}

void VornBuildForm::SetName(const CString& name, std::uint32_t nameID, VornComposedPnt::PntType pntType) {
  for (VornComposedPnt& point : m_composedPntArray) {
    point.SetXSectName(name, nameID, pntType);
  }
  SetName(name, true);
}

void VornBuildForm::SetNameID(std::uint32_t nameID, VornComposedPnt::PntType pntType) {
  for (VornComposedPnt& point : m_composedPntArray) point.SetXSectNameID(nameID, pntType);
}

void VornBuildForm::SetXSectType(const CString& text, std::uint32_t id) {
  m_xSectType = text;
  m_xSectTypeID = id;
}

CString VornBuildForm::XSectTypeFromName(const CString& name) {
  if (name.Find(u8"盛"_cp932) >= 0) return u8"盛土工"_cp932;
  if (name.Find(u8"切"_cp932) >= 0 || name.Find(u8"削"_cp932) >= 0) return u8"切土工"_cp932;
  return CString();
}

void VornBuildForm::SetXSectTypeID(std::uint32_t id) {
  using PntType = VornComposedPnt::PntType;
  for (VornComposedPnt& point : m_composedPntArray) {
    const bool oneType = point.GetXSectType(PntType::Main) == point.GetXSectType(PntType::Sub);
    point.SetXSectType(id, oneType ? PntType::Both : PntType::Main);
  }
  m_xSectTypeID = id;
}

void VornBuildForm::RegulateFormCtrl(const CString& oldName, const CString& newName) {
  m_formCtrlTargetArray.ChangeBuildName(oldName, m_serialID, newName);
}

void VornBuildForm::ConvertFormCtrl(const NurReal& dist) {
  for (VornFormCtrlTarget& target : m_formCtrlTargetArray) target.RegulatePnt(dist, this);
}

void VornBuildForm::ClearConnectInfo(bool clearCode) {
  for (VornComposedPnt& point : m_composedPntArray) point.ClearConnectInfo(clearCode);
  m_crossLeft.ClearConnectInfo();
  m_crossRight.ClearConnectInfo();
}

// --- XML -----------------------------------------------------------------------------------------------------------

bool VornBuildForm::toXML(PimIterator* cursor) {
  if (m_omitFlag != 0) return true;
  const VornSchema& schema = VornSchema::Instance();
  const bool ver2 = schema.IsVer2();
  if (ver2) m_export = 1;  // edition 2.0 knows no unexported forms, and writing it makes that last: intended
  if (m_export == 0 || m_composedPntArray.GetSize() < 2) return true;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) && AddAttr(cursor, "name", m_name.View()) &&
         (ver2 || AddAttr(cursor, "xSectType", m_xSectType.View())) && m_composedPntArray.toXML(cursor) &&
         (!ver2 || m_formCtrlTargetArray.toXML(cursor)) && ReturnParent(cursor);
}

bool VornBuildForm::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) { ReadAttribute(name, value); });

  const CString pointTag = m_composedPntArray.tagName();
  const CString targetTag = m_formCtrlTargetArray.tagName();
  return ForEachChild(cursor, [&] {
    if (IsOnTag(cursor, pointTag.View())) return m_composedPntArray.AddFromXML(cursor);
    if (IsOnTag(cursor, targetTag.View())) return m_formCtrlTargetArray.AddFromXML(cursor);
    return true;
  });
}

void VornBuildForm::ReadAttribute(std::string_view name, std::string_view value) {
  if (IsMatchTagName(name, "name")) {
    m_name = value;
    if (!VornSchema::Instance().IsVer2()) return;
    CString earthwork = XSectTypeFromName(m_name);
    if (!earthwork.IsEmpty()) m_xSectType = std::move(earthwork);
  } else if (IsMatchTagName(name, "xSectType")) {
    m_xSectType = value;
  }
}
