// The archive records of the LandXML export data.

#include <algorithm>

#include "vorn/archive/archive_record.h"
#include "vorn/road/land_xml_data.h"
#include "vorn/road/store_version.h"

void VornLandXMLProject::Serialize(CArchive& ar, const char*, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_desc);
}

void VornLandXMLCgPoint::Serialize(CArchive& ar, const char*, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_number);
}

void VornLandXMLCgPointsArray::Serialize(CArchive& ar, const char* tag, const char* version) {
  VornRecordArray::Serialize(ar, tag, version);
  ArchiveRecord record(ar);
  record.Field(m_option1);
  record.Field(m_option2);
}

void VornLandXMLAlignment::Serialize(CArchive& ar, const char*, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_text);
  record.Field(m_flag);
  record.Field(m_code1);
  record.Field(m_code2);
  record.Field(m_code3);
}

void VornLandXMLData::Serialize(CArchive& ar, const char* tag) {
  SerializeStoreVersion(ar, m_storeVersion, kNewestStoreVersion);
  SerializeOptions(ar);
  m_project.Serialize(ar, tag, m_storeVersion);
  m_cgPoints.Serialize(ar, tag, m_storeVersion);
  m_alignments.Serialize(ar, tag, m_storeVersion);
  if (m_storeVersion == "01.10") {
    const bool any = std::any_of(m_alignments.begin(), m_alignments.end(),
                                 [](const VornLandXMLAlignment& alignment) { return alignment.GetFlag() != 0; });
    m_flagAny = any ? 1 : 0;
  }
}

void VornLandXMLData::SerializeOptions(CArchive& ar) {
  ArchiveRecord record(ar, m_storeVersion);
  record.OnlyFrom("01.11", m_flagAny);
  record.OnlyFrom("01.11", m_option1);
  record.OnlyFrom("01.11", m_option3);
  record.OnlyFrom("01.11", m_value);
  // A list only ever appends what it loads.
  if (record.IsLoading() && record.IsFrom("01.11")) m_texts.RemoveAll();
  record.OnlyFrom("01.11", m_texts);
}
