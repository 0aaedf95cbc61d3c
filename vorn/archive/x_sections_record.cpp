// The archive record of cross-section sets.

#include "vorn/archive/archive_record.h"
#include "vorn/model/x_sections.h"

void VornXSections::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  if (!record.IsAfter("03.00")) return SerializeOld(ar, tag);
  record.ExtensionTable();
  record.Field(m_refAlign);
  record.Field(m_refVertical);
  record.Field(m_projectPhase);
  record.Field(m_alignment);
  record.Field(m_xSectionArray);
  record.Field(m_formCtrlTargetArray);
}

void VornXSections::SerializeOld(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_refAlign);
  record.Field(m_refVertical);
  record.Field(m_xSectionArray);
}
