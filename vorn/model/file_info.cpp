#include "vorn/model/file_info.h"

#include "vorn/framework/schema.h"

VornFileInfo::VornFileInfo() : Vorn_Base("tsf:FileInfo") {
  m_createDate.SetStatus(COleDateTime::null);
  m_changeDate.SetStatus(COleDateTime::null);
}

bool VornFileInfo::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  if (schema.IsVer2()) return true;
  const bool created = m_createDate.GetStatus() != COleDateTime::null;
  const bool changed = m_changeDate.GetStatus() != COleDateTime::null;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) &&
         (!created || AddAttr(cursor, "createDate", m_createDate)) &&
         (!changed || (AddAttr(cursor, "changeDate", m_changeDate) && AddAttr(cursor, "note", m_note.View()))) &&
         ReturnParent(cursor);
}

bool VornFileInfo::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) {
    if (IsMatchTagName(name, "createDate")) {
      m_createDate = TurnDate(value);
    } else if (IsMatchTagName(name, "changeDate")) {
      m_changeDate = TurnDate(value);
    } else if (IsMatchTagName(name, "note")) {
      m_note = value;
    }
  });
  return true;
}
