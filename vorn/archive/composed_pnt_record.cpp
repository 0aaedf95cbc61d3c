// The archive records of composed points, of their measurements and of their collection.

#include "vorn/archive/archive_record.h"
#include "vorn/model/composed_pnt_array.h"

namespace {

/// Key of the element type in the extension table of a point.
constexpr std::int32_t kElementTypeKey = 1;

/// Automatic lines are deliberately not kept in project files: their places are written as zeros, and what an older
/// program left there is read into the flag and into `autoConnect`.
void AutoLine(ArchiveRecord& record, std::int32_t& flag, std::int32_t& autoConnect) {
  if (record.IsStoring()) return record.Reserved(std::int32_t{0});
  record.Field(flag);
  autoConnect |= flag;
}

void TransferDetail(ArchiveRecord& record, VornComposedPnt::Detail& detail, bool hasAutoLines,
                    std::int32_t& autoConnect) {
  record.Field(detail.Code);
  record.Field(detail.XSectType);
  record.Field(detail.XSectNameID);
  record.Field(detail.XSectName);
  record.Field(detail.DekiPairID);
  if (hasAutoLines) {
    AutoLine(record, detail.AutoLinePrev, autoConnect);
    AutoLine(record, detail.AutoLineNext, autoConnect);
  }
  record.Field(detail.Measure);
  record.ExtensionTable();
}

}  // namespace

void VornComposedPnt::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  if (!record.IsFrom("06.00")) {
    Serialize550Before(ar, tag);
    return SpreadOneDetail();  // also when it is written: intended, what has no place there is given up
  }
  const bool hasAutoLines = !record.IsAfter("06.00");

  TransferElementType(ar);
  record.Field(m_dataType);
  record.Field(m_clDist);
  record.Field(m_gh);
  record.Field(m_x);
  record.Field(m_y);
  record.Field(m_seriesPnt);
  record.Field(m_existence);
  record.Field(m_ctrlFlags);
  record.Reserved(std::uint32_t{0xFFFFFFFF});
  record.Field(m_pointType);
  record.Field(m_location);
  record.Field(m_componentType);
  record.Field(m_slopeType);
  record.Field(m_serialID);
  record.Field(m_parentID);
  record.Field(m_id);
  record.Field(m_thDPairIDs);
  if (hasAutoLines) {
    AutoLine(record, m_main.AutoLinePrev, m_autoConnect);
    AutoLine(record, m_main.AutoLineNext, m_autoConnect);
  }
  record.Field(m_ratio);
  record.Field(m_percent);
  TransferDetail(record, m_main, hasAutoLines, m_autoConnect);
  if (m_sub.IsMade()) {
    TransferDetail(record, m_sub.Change(), hasAutoLines, m_autoConnect);
  } else {
    Detail sub;
    TransferDetail(record, sub, hasAutoLines, m_autoConnect);
    if (record.IsLoading() && !(sub == m_sub.Get())) m_sub.Change() = std::move(sub);
  }
  if (record.IsLoading()) m_oldCmpType = m_componentType;
}

void VornComposedPnt::TransferElementType(CArchive& ar) {
  if (ar.IsStoring()) return DovDataTable::StoreInteger(ar, kElementTypeKey, static_cast<std::int32_t>(m_elementType));
  std::int32_t type = 0;
  if (DovDataTable::LoadInteger(ar, kElementTypeKey, type)) m_elementType = static_cast<ElementType>(type);
}

void VornComposedPnt::Serialize550Before(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.OnlyFrom("04.00", m_dataType);
  record.Field(m_clDist);
  record.Field(m_gh);
  record.Field(m_x);
  record.Field(m_y);
  record.Field(m_lastCode);
  record.Field(m_seriesPnt);
  record.Field(m_existence);
  record.Field(m_ctrlFlags);
  record.Reserved(std::uint32_t{0xFFFFFFFF});
  record.Field(m_pointType);
  record.Field(m_location);
  record.Field(m_componentType);
  record.Field(m_slopeType);
  if (!record.IsFrom("05.00")) return;
  record.Field(m_serialID);
  record.Field(m_parentID);
  record.Field(m_id);
  record.Field(m_main.DekiPairID);
  record.Field(m_thDPairIDs);
  record.Field(m_main.XSectType);
  record.Field(m_main.XSectName);
  record.Field(m_main.XSectNameID);
  AutoLine(record, m_main.AutoLinePrev, m_autoConnect);
  AutoLine(record, m_main.AutoLineNext, m_autoConnect);
  record.Field(m_ratio);
  record.Field(m_percent);
  record.Field(m_main.Measure);
}

void VornComposedPnt::SpreadOneDetail() {
  CString code = m_lastCode;
  Detail sub = m_main;
  sub.Code = code;
  sub.Measure.RemoveAll();
  m_sub.Change() = std::move(sub);
  m_main.Code = std::move(code);
}

void Vorn_ComposedPntArray::Serialize(CArchive& ar, const CString& tag) {
  SerializeNextSerialID(ar, tag, m_serials);
  Vorn_Array::Serialize(ar, tag);
}

void VornMeasureInfo::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  record.ExtensionTable();
  record.Field(first);
  record.Field(second);
}

void VornMeasureInfos::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord(ar, tag).ExtensionTable();
  SerializeCounted(ar, *this, [&](VornMeasureInfo& info) { info.Serialize(ar, tag); });
}
