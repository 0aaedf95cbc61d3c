// The archive records of coordinate reference systems and survey points. None of them looks at the store version.

#include "vorn/archive/archive_record.h"
#include "vorn/road/crs_data.h"
#include "vorn/road/ctrl_points.h"

void VornCrsData::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_geoDatum);
  record.Field(m_verticalDatum);
  record.Field(m_verticalHeight);
  record.Field(m_horizonCoordinate);
  record.Field(m_auxCode);
  record.Field(m_auxText);
}

template <typename ClassType, const auto& kClassTexts>
void VornSurveyPoint<ClassType, kClassTexts>::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_number);
  record.Field(m_class);
  record.Field(m_name);
}
template void VornSurveyPoint<VornCtrlClass, kVornCtrlClassTexts>::Serialize(CArchive&, const char*);
template void VornSurveyPoint<VornBMClass, kVornBMClassTexts>::Serialize(CArchive&, const char*);

void VornGmPnt::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_number);
  record.Field(m_name);
}

void VornGmPnts::Serialize(CArchive& ar, const char*) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_name2);
  record.Field(m_points);
}

void VornCtrlPoints::Serialize(CArchive& ar, const char*, bool withGmPnts) {
  ArchiveRecord record(ar);
  record.Field(m_name);
  record.Field(m_ctrlPos);
  record.Field(m_benchMarks);
  if (withGmPnts) record.Field(m_gmPnts);
}
