// The archive records of cross sections and of the existing ground in them.

#include <utility>

#include "vorn/archive/archive_record.h"
#include "vorn/model/pres_point.h"
#include "vorn/model/x_section.h"

namespace {

/// The existing ground of old data: bare positions.
VornExistingBuildForm GroundFrom(const Vorn_Array<VornPresPoint>& positions) {
  VornExistingBuildForm ground;
  ground.GetComposedPntArray().Reserve(positions.GetSize());
  for (const VornPresPoint& position : positions) {
    VornExistingComposedPnt point;
    point.SetCLDist(position.GetFirst());
    point.SetGh(position.GetSecond());
    ground.GetComposedPntArray().Add(std::move(point));
  }
  return ground;
}

}  // namespace

void VornXSection::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  if (!record.IsAfter("03.00")) return SerializeOld(ar, tag);
  record.ExtensionTable();
  record.Field(m_cumulativeDist);
  record.Field(m_xSectChg);
  record.Field(m_controlSect);
  record.Field(m_name);
  record.Field(m_shiftGH);
  record.Field(m_shiftDist);
  record.Field(m_directionAngle);
  record.Field(m_targetPntID);
  record.Field(m_sectionID);
  record.OnlyFrom("05.00", m_height);
  record.Field(m_buildFormArray);
  // In both directions: control targets get the points that they lack, and are stored with them from then on.
  m_buildFormArray.ConvertFormCtrl(m_cumulativeDist);
  record.Field(m_existingBuildFormArray);
}

void VornXSection::SerializeOld(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  if (record.IsLoading()) {
    record.Field(m_cumulativeDist);
    record.Field(m_xSectChg);
    record.Field(m_controlSect);
    record.Field(m_name);
    record.Field(m_shiftGH);
    record.Field(m_shiftDist);
  }
  record.Field(m_buildFormArray);
  Vorn_Array<VornPresPoint> positions;
  record.Field(positions);
  if (!positions.IsEmpty()) m_existingBuildFormArray.Add(GroundFrom(positions));
}

void VornExistingBuildForm::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.Field(m_name);
  record.Field(m_composedPntArray);
  record.ExtensionTable();
}

void VornExistingComposedPnt::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.Field(m_clDist);
  record.Field(m_gh);
  record.Field(m_name);
  record.ExtensionTable();
}

void VornPresPoint::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(m_first);
  record.Field(m_second);
}
