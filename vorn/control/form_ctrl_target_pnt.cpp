#include "vorn/control/form_ctrl_target_pnt.h"

#include <utility>

#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"

VornFormCtrlTargetPnt::VornFormCtrlTargetPnt() : Vorn_Base("tsf:FormCtrlTargetPnt") {}

bool VornFormCtrlTargetPnt::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  if (schema.IsVer2()) return true;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) &&
         AddAttr(cursor, "cumulativeDist", m_cumulativeDist.Value(),
                 VornNumericalPrecision::GetInstance().GetDecimalPlaceDist()) &&
         (!m_xSectChg || AddAttr(cursor, "xSectChg", "true")) &&
         AddAttr(cursor, "buildFormName", m_buildFormName.View()) && AddAttr(cursor, "code", m_code.View()) &&
         ReturnParent(cursor);
}

bool VornFormCtrlTargetPnt::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) {
    if (IsMatchTagName(name, "cumulativeDist")) {
      m_cumulativeDist = TurnReal(value);
    } else if (IsMatchTagName(name, "xSectChg")) {
      m_xSectChg = value == "true";
    } else if (IsMatchTagName(name, "buildFormName")) {
      m_buildFormName = value;
    } else if (IsMatchTagName(name, "code")) {
      m_code = value;
    }
  });
  return true;
}

bool VornFormCtrlTargetPnt::IsEnable() const {
  return m_cumulativeDist.IsSet() && !m_buildFormName.IsEmpty() && !m_code.IsEmpty();
}

void VornFormCtrlTargetPnt::Set(const NurReal& cumulativeDist, const CString& buildFormName, const CString& code,
                                bool xSectChg) {
  // Both texts first: a point that had the form of one and the code of another would stand somewhere else.
  CString newName = buildFormName;
  CString newCode = code;
  m_cumulativeDist = cumulativeDist;
  m_buildFormName = std::move(newName);
  m_code = std::move(newCode);
  m_xSectChg = xSectChg;
}
