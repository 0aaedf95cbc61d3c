#include "vorn/framework/base.h"

#include <utility>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

VORN_DataKind Vorn_Base::m_staticDataKind = VORN_DataKind::FormControl;

namespace {

/// Cuts off and returns what stands before the first separator; false, and the text as it was, without one. The
/// second byte of a double-byte character is no separator.
bool TakeUntil(char separator, std::string_view& text, std::string_view& item) {
  std::size_t at = text.find(separator);
  while (at != std::string_view::npos && !code_page_932::IsCharacterStart(text, at)) at = text.find(separator, at + 1);
  if (at == std::string_view::npos) return false;
  item = text.substr(0, at);
  text.remove_prefix(at + 1);
  return true;
}

}  // namespace

bool Vorn_Base::MakeChild(PimIterator* cursor, std::string_view tag, const char* namespaceUri) {
  const CString name(DelRgm(tag));
  return cursor->InsertChild(name, IsRoadGeometry() ? nullptr : namespaceUri);
}

bool Vorn_Base::AddAttr(PimIterator* cursor, const char* name, std::string_view value) {
  return cursor->SetTextAttribute(name, value);
}

bool Vorn_Base::AddAttr(PimIterator* cursor, const char* name, double value, KelMrmFigure places) {
  return AddAttr(cursor, name, NurMrm(places).Format(value).View());
}

bool Vorn_Base::AddAttr(PimIterator* cursor, const char* name, NurLong value, bool negativeZero) {
  if (negativeZero && value == NurLong(0) && IsRoadGeometry()) return AddAttr(cursor, name, std::string_view("-0"));
  if (!value.IsSet()) return AddAttr(cursor, name, std::string_view());
  return AddAttr(cursor, name, SilString::StrSignedInteger(value.Value()).View());
}

bool Vorn_Base::AddAttr(PimIterator* cursor, const char* name, const COleDateTime& value) {
  const bool valid = value.GetStatus() == COleDateTime::valid;
  return AddAttr(cursor, name, valid ? value.Format("%Y-%m-%dT%H:%M:%S").View() : std::string_view());
}

bool Vorn_Base::SetValue(PimIterator* cursor, const COleDateTime& value) {
  const bool valid = value.GetStatus() == COleDateTime::valid;
  return cursor->SetText(valid ? value.Format("%Y-%m-%d").View() : std::string_view());
}

bool Vorn_Base::QueryValue(const PimIterator* cursor, CString& text) {
  if (cursor->GetText(text)) return true;
  text.Empty();
  return false;
}

bool Vorn_Base::QueryValue(const PimIterator* cursor, COleDateTime& value) {
  return cursor->VisitText([&](std::string_view text) { value = TurnDate(text); });
}

bool Vorn_Base::QueryNamedAttrs(const PimIterator* cursor, CArray<PimAttribute>& attributes) {
  if (cursor->GetAttributes(attributes)) return true;
  attributes.RemoveAll();
  return false;
}

bool Vorn_Base::QueryNamedAttr(const PimIterator* cursor, const char* name, CString& value) {
  CArray<PimAttribute> attributes;
  QueryNamedAttrs(cursor, attributes);
  for (const PimAttribute& attribute : attributes) {
    if (attribute.GetName() != name) continue;
    value = attribute.GetValue();
    return true;
  }
  return false;
}

bool Vorn_Base::QueryAttr(const PimIterator* cursor, const char* name, CString& value) {
  if (QueryNamedAttr(cursor, name, value)) return true;
  value.Empty();
  return false;
}

bool Vorn_Base::QueryAttr(const PimIterator* cursor, const char* name, double& value) {
  CString text;
  const bool found = QueryNamedAttr(cursor, name, text);
  value = found ? TurnReal(text.View()) : kNurUnsetReal;
  return found;
}

bool Vorn_Base::QueryAttr(const PimIterator* cursor, const char* name, NurLong& value) {
  CString text;
  const bool found = QueryNamedAttr(cursor, name, text);
  value = found ? TurnInt(text.View()) : kNurUnsetLong;
  return found;
}

bool Vorn_Base::QueryAttr(const PimIterator* cursor, const char* name, COleDateTime& value) {
  CString text;
  if (!QueryNamedAttr(cursor, name, text)) return false;
  value = TurnDate(text.View());
  return true;
}

double Vorn_Base::TurnReal(std::string_view text) { return text.empty() ? kNurUnsetReal : SilString::ToDouble(text); }

std::int32_t Vorn_Base::TurnInt(std::string_view text) {
  return text.empty() ? kNurUnsetLong : SilString::ToInteger(text);
}

COleDateTime Vorn_Base::TurnDate(std::string_view text) {
  COleDateTime date;  // 30 December 1899 00:00:00, valid
  std::string_view year, month, day, hour, minute;
  const bool complete = TakeUntil('-', text, year) && TakeUntil('-', text, month) && TakeUntil('T', text, day) &&
                        TakeUntil(':', text, hour) && TakeUntil(':', text, minute) && text.size() >= 2;
  if (complete) {
    // What follows the two digits of the seconds (a fraction, a zone) ends the conversion and is not kept.
    date.SetDateTime(TurnInt(year), TurnInt(month), TurnInt(day), TurnInt(hour), TurnInt(minute), TurnInt(text));
  }
  return date;
}

void Vorn_Base::ReadTwoReals(std::string_view text, NurReal& first, NurReal& second) {
  int place = 0;
  ForEachDivided(text, [&](std::string_view item) {
    if (place == 0) first = TurnReal(item);
    if (place == 1) second = TurnReal(item);
    ++place;
  });
}

void Vorn_Base::DivideString(std::string_view text, CStringArray& items) {
  CStringArray divided;
  ForEachDivided(text, [&](std::string_view item) { divided.Add(CString(item)); });
  items = std::move(divided);
}

bool Vorn_Base::IsOnTag(const PimIterator* cursor, std::string_view tag) {
  bool match = false;
  cursor->VisitTagName([&](std::string_view name) { match = IsMatchTagName(name, tag); });
  return match;
}

bool Vorn_Base::IsOnOwnTag(const PimIterator* cursor) const { return IsOnTag(cursor, m_tagName.View()); }
