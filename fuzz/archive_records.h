#pragma once

#include <utility>

#include "fuzz/archive_target.h"
#include "vorn/model/file_info.h"
#include "vorn/model/x_sections.h"
#include "vorn/platform/carchive.h"
#include "vorn/platform/dov_data_table.h"
#include "vorn/road/linear_xml_data.h"
#include "vorn/types/bld_name_map.h"
#include "vorn/types/hoso_type.h"
#include "vorn/types/structure_type.h"

namespace vorn_fuzz {

/// File information in the form that hosts can ask for on its own: no record holds it, and it has a `Serialize` of its
/// own.
struct HostFileInfo {
  VornFileInfo info;
};

/// Stores or loads a record in a store version.
template <typename Record>
void Transfer(CArchive& ar, Record& record, const CString& version) {
  if constexpr (requires { record.Serialize(ar, version); }) {
    record.Serialize(ar, version);
  } else if constexpr (requires { record.Serialize(ar); }) {
    record.Serialize(ar);
  } else if (ar.IsLoading()) {
    ar >> record;
  } else {
    ar << record;
  }
}
inline void Transfer(CArchive& ar, HostFileInfo& record, const CString& version) {
  record.info.Serialize(ar, version.GetString());
}
/// All road data carry their store versions; the version is that of the library, the newest that it reads.
inline void Transfer(CArchive& ar, VornLinearXMLData& record, const CString& version) {
  record.GetInfoConstrcut().SetStoreVersion(version);
  record.GetRoadCenter().SetStoreVersion(version);
  record.Serialize(ar, version);
}

/// Calls `visit` with an empty record of a kind.
template <typename Visit>
void VisitRecord(RecordKind kind, Visit visit) {
  switch (kind) {
    case RecordKind::Sets:
      return visit(Vorn_XSectionsArray());
    case RecordKind::Registry:
      return visit(VornBldNameMap());
    case RecordKind::StructureType:
      return visit(VornStructureType());
    case RecordKind::FileInfos:
      return visit(VornFileInfoArray());
    case RecordKind::HostFileInfo:
      return visit(HostFileInfo());
    case RecordKind::PavementSettings:
      return visit(VornTsHosoType());
    case RecordKind::ExtensionTable:
      return visit(DovDataTable());
    case RecordKind::Texts:
      return visit(CStringArray());
    case RecordKind::Date:
      return visit(COleDateTime());
    case RecordKind::Section:
      return visit(VornXSection());
    case RecordKind::Form:
      return visit(VornBuildForm());
    case RecordKind::Point:
      return visit(VornComposedPnt());
    case RecordKind::Targets:
      return visit(Vorn_FormCtrlTargetArray());
    case RecordKind::Ground:
      return visit(VornExistingBuildFormArray());
    case RecordKind::Road:
      return visit(VornLinearXMLData());
    case RecordKind::LandXml:
      return visit(VornLandXMLData());
  }
}

}  // namespace vorn_fuzz
