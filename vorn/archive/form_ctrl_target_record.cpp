// The archive records of control targets, of their points and of their collection.

#include "vorn/archive/archive_record.h"
#include "vorn/control/form_ctrl_target.h"

void VornFormCtrlTarget::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_code);
  record.Field(m_workType);
  record.Field(m_controlItem);
  record.Field(m_targetScope);
  record.Field(m_targetRegio);
  record.Field(m_targetPntType);
  record.Field(m_lr);
  record.ReadSince("05.00", m_serialID);
  record.OnlyFrom("04.00", m_targetPntArray);
}

void VornFormCtrlTargetPnt::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_cumulativeDist);
  record.Field(m_xSectChg);
  record.Field(m_buildFormName);
  record.Field(m_code);
  record.Reserved(std::uint16_t{0});
  record.Reserved(std::uint32_t{0});
  record.ReadSince("05.00", m_serialID);
  record.ReadSince("05.00", m_buildFormID);
  record.ReadSince("05.00", m_sectionID);
  record.ReadSince("05.00", m_crossPointType);
  if (record.IsLoading() && !record.IsFrom("06.00")) {  // these are cleared, unlike other fields of later versions
    m_xSectType = 0;
    m_sectNameID = 0;
  }
  record.OnlyFrom("06.00", m_xSectType);
  record.OnlyFrom("06.00", m_sectNameID);
}

void Vorn_FormCtrlTargetArray::Serialize(CArchive& ar, const CString& tag) {
  SerializeNextSerialID(ar, tag, m_serials);
  Vorn_Array::Serialize(ar, tag);
}
