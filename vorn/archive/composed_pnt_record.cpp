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

}  // namespace

void VornComposedPnt::Serialize(CArchive& ar, const CString& tag) {
  ArchiveRecord record(ar, tag);
  if (!record.IsFrom("06.00")) {
    Serialize550Before(ar, tag);
    return SpreadOneDetail();
  }
  const bool hasAutoLines = !record.IsAfter("06.00");

  if (record.IsStoring()) {
    DovDataTable::StoreInteger(ar, kElementTypeKey, static_cast<std::int32_t>(m_elementType));
  } else if (std::int32_t value = 0; DovDataTable::LoadInteger(ar, kElementTypeKey, value)) {
    m_elementType = static_cast<ElementType>(value);
  }
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
  const auto transfer = [&](Detail& detail) {
    record.Field(detail.Code);
    record.Field(detail.XSectType);
    record.Field(detail.XSectNameID);
    record.Field(detail.XSectName);
    record.Field(detail.DekiPairID);
    if (hasAutoLines) {
      AutoLine(record, detail.AutoLinePrev, m_autoConnect);
      AutoLine(record, detail.AutoLineNext, m_autoConnect);
    }
    record.Field(detail.Measure);
    record.ExtensionTable();
  };
  transfer(m_main);
  if (m_sub.IsMade()) {
    transfer(m_sub.Change());
  } else {
    Detail sub;
    transfer(sub);
    if (record.IsLoading() && !(sub == m_sub.Get())) m_sub.Change() = std::move(sub);
  }
  if (record.IsLoading()) m_oldCmpType = m_componentType;
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
  Detail& main = m_main;
  record.Field(m_serialID);
  record.Field(m_parentID);
  record.Field(m_id);
  record.Field(main.DekiPairID);
  record.Field(m_thDPairIDs);
  record.Field(main.XSectType);
  record.Field(main.XSectName);
  record.Field(main.XSectNameID);
  AutoLine(record, main.AutoLinePrev, m_autoConnect);
  AutoLine(record, main.AutoLineNext, m_autoConnect);
  record.Field(m_ratio);
  record.Field(m_percent);
  record.Field(main.Measure);
}

void VornComposedPnt::SpreadOneDetail() {
  // Writing an old version does this to the point as well: intended, what has no place there is given up.
  CString code = m_lastCode;
  Detail sub = m_main;
  sub.Code = code;
  sub.Measure.RemoveAll();
  m_sub.Change() = std::move(sub);
  m_main.Code = std::move(code);
}

void Vorn_ComposedPntArray::Serialize(CArchive& ar, const CString& tag) {
  SerializeNextSerialID(ar, tag, m_nextSerialID);
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
