// The archive records of the construction information, the road-centre data, and all road data together.

#include "vorn/archive/archive_record.h"
#include "vorn/road/linear_xml_data.h"
#include "vorn/road/store_version.h"

void VornFormCtrl::Serialize(CArchive& ar, const char* tag) {
  const CString version(tag);
  ArchiveRecord record(ar, version);
  record.Reserved(CString());
  record.Reserved(CString());
  for (std::size_t i = 0; i < OtherLeft; ++i) record.Field(m_names[i]);
  record.ReadSince("02.50", m_names[OtherLeft]);
  record.ReadSince("02.50", m_names[OtherRight]);
  record.Field(m_marks[SlopeMarks]);
  record.Field(m_marks[BermMarks]);
  record.ReadSince("02.50", m_marks[RoadMarks]);
  record.ReadSince("02.50", m_marks[OtherMarks]);
  record.Field(m_value);
  if (record.IsLoading() && !record.IsFrom("02.50")) Init();
}

void VornInfoConstrcut::Serialize(CArchive& ar) {
  SerializeStoreVersion(ar, m_storeVersion, m_libVersion);
  Serialize(ar, m_storeVersion);
}

void VornInfoConstrcut::Serialize(CArchive& ar, const char* tag) {
  const CString version(tag);
  ArchiveRecord record(ar, version);
  record.Field(m_crsArray);
  m_ctrlPoints.Serialize(ar, version, false);
  m_roadGm.Serialize(ar, version, VORN_DataKind::FormControl);
  record.Field(m_formCtrl);
}

void VornRoadCenterData::Serialize(CArchive& ar, const char*) {
  SerializeStoreVersion(ar, m_storeVersion, m_libVersion);
  ArchiveRecord record(ar, m_storeVersion);
  record.Field(m_project);
  record.Field(m_crsArray);
  record.Field(m_gmPnts);
  m_roadGm.Serialize(ar, m_storeVersion, VORN_DataKind::RoadGeometry);
}

void VornLinearXMLData::Serialize(CArchive& ar, const char* tag) {
  m_infoConstrcut.Serialize(ar);
  m_roadCenter.Serialize(ar, tag);
  m_landXml.Serialize(ar, tag);
}
