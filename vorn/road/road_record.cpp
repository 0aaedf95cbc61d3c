// The archive records of the road geometry and of the project.

#include "vorn/archive/archive_record.h"
#include "vorn/platform/sil_string.h"
#include "vorn/road/project_data.h"
#include "vorn/road/road_gm_data.h"

void VornRoadInfo::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_classificat);
  record.Field(m_designSpeed);
  record.Field(m_traffic);
}

void VornUpDate::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  for (COleDateTime& date : m_dates) record.Field(date);
}

namespace {

/// Storing a set that was never made leaves it so: a project of many alignments must not grow by being saved.
void SerializeSections(ArchiveRecord& record, OnDemand<VornXSections>& sections) {
  if (record.IsLoading() || sections.IsMade()) return record.Field(sections.Change());
  VornXSections none;
  record.Field(none);
}

}  // namespace

void VornAlignment::Serialize(CArchive& ar, const char* tag, VORN_DataKind kind) {
  const CString version(tag);
  ArchiveRecord record(ar, version);
  record.Field(m_name);
  record.Field(m_crsName);
  record.Field(m_auxText);
  record.Field(m_attr1);
  record.Field(m_attr2);
  record.Field(m_attr3);
  const bool read =
      kind == VORN_DataKind::RoadGeometry || (kind == VORN_DataKind::FormControl && record.IsFrom("02.50"));
  if (record.IsLoading() && !read) return;
  SerializeSections(record, m_xSections);
  record.Field(m_upDate);
}

void VornAlignmentsArray::Serialize(CArchive& ar, const char* tag, VORN_DataKind kind) {
  ArchiveRecord(ar).Field(m_current);
  VornRecordArray::Serialize(ar, tag, kind);
}

void VornRoadGmData::Serialize(CArchive& ar, const char* tag, VORN_DataKind kind) {
  const CString version(tag);
  if (SilString::ToDouble(version.View()) < 3.0) return SerializeOld(ar, version, kind);
  ArchiveRecord record(ar, version);
  record.ExtensionTable();
  record.Field(m_roadInfo);
  record.Field(m_option);
  record.Field(m_schemaVersion);
  record.Field(m_option2);
  record.Field(m_text);
  m_alignments.Serialize(ar, version, kind);
  record.Field(m_xSectType);
  record.Field(m_fileInfos);
  record.Field(m_structureType);
}

void VornRoadGmData::SerializeOld(CArchive& ar, const char* tag, VORN_DataKind kind) {
  const CString version(tag);
  ArchiveRecord record(ar, version);
  const bool isFrom3 = SilString::ToInteger(version.View()) >= 3;  // only for a host that calls this itself
  if (record.IsLoading()) {
    record.Field(m_roadInfo);
    if (isFrom3) record.Field(m_option);
    m_schemaVersion = VornSchema::Version20;
  }
  m_alignments.Serialize(ar, version, kind);
  if (isFrom3) record.ExtensionTable();
}

void VornCreatorInfoData::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_text);
}

void VornProjectData::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_date);
  record.Field(m_projPhase);
  record.Field(m_text);
  record.Field(m_creators);
}
