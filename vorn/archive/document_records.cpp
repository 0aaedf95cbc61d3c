// The archive records of what stands beside the cross-section sets in a document.

#include "vorn/archive/archive_record.h"
#include "vorn/model/file_info.h"
#include "vorn/types/structure_type.h"

void VornStructureType::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.Field(m_type);
  record.Field(m_jobName);
  record.Field(m_company);
  record.Field(m_stationType);
  record.ExtensionTable();  // the last field here, not the first
}

void VornFileInfo::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.Field(m_createDate);
  record.Field(m_changeDate);
  record.Field(m_note);
  record.ExtensionTable();  // the last field here, not the first
}

void VornFileInfo::Serialize(CArchive& ar, const char* storeVersion) {
  const CString tag(storeVersion);
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_createDate);
  record.Field(m_changeDate);
  record.Field(m_note);
}
