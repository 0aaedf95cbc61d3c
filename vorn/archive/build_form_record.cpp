// The archive records of build forms, of their crossings and of their collection.

#include "vorn/archive/archive_record.h"
#include "vorn/model/build_form_array.h"
#include "vorn/platform/code_page_932.h"

namespace {

/// Data older than "04.00" tell the work by a code in place of the type's text.
void ReadOldWorkCode(ArchiveRecord& record, CString& xSectType) {
  std::int32_t code = 0;
  record.Field(code);
  if (xSectType.IsEmpty()) xSectType = code == 0 ? u8"盛土工"_cp932 : u8"切土工"_cp932;
}

}  // namespace

void VornBuildForm::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_name);
  record.OnlyFrom("04.00", m_xSectType);
  if (record.IsLoading() && !record.IsFrom("04.00")) ReadOldWorkCode(record, m_xSectType);  // not written: intended
  record.Field(m_exportForm);
  record.OnlyFrom("05.00", m_serialID);
  record.OnlyFrom("05.00", m_xSectTypeID);
  record.OnlyFrom("05.00", m_parentID);
  record.OnlyFrom("05.00", m_paveSetIdx);
  record.OnlyFrom("05.00", m_category);
  record.OnlyFrom("05.00", m_crossLeft);
  record.OnlyFrom("05.00", m_crossRight);
  record.OnlyFrom("05.50", m_orgSurface);
  record.Field(m_composedPntArray);
  record.Field(m_formCtrlTargetArray);
}

void VornCrossPointInfo::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_dist);
  record.Field(m_id);
  record.Field(m_dekiPairID);
  record.Field(m_thDPairIDs);
  record.Field(m_autoLinePrev);
  record.Field(m_autoLineNext);
}

void Vorn_BuildFormArray::Serialize(CArchive& ar, const CString& tag) {
  SerializeNextSerialID(ar, tag, m_serials);
  Vorn_Array::Serialize(ar, tag);
}
