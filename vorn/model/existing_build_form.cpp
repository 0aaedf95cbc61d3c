#include "vorn/model/existing_build_form.h"

#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"

VornExistingComposedPnt::VornExistingComposedPnt() : Vorn_Base("tsf:ExistingComposedPnt") {}

CString VornExistingComposedPnt::GetTextData() const {
  const NurMrm distance(NurMrm::kHalfAwayFromZero, 0, VornNumericalPrecision::GetInstance().GetDecimalPlaceDist());
  CString text;
  if (m_clDist.IsSet()) {
    text += distance.Format(m_clDist.Value()).View();
    text += ' ';
  }
  if (m_gh.IsSet()) text += distance.Format(m_gh.Value()).View();
  return text;
}

void VornExistingComposedPnt::GetTextValue(std::string_view text) {
  int place = 0;
  ForEachDivided(text, [&](std::string_view item) {
    if (place == 0) m_clDist = TurnReal(item);
    if (place == 1) m_gh = TurnReal(item);
    ++place;
  });
}

bool VornExistingComposedPnt::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  if (schema.GetVersion() < VornSchema::Version40) return true;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) && AddAttr(cursor, "name", m_name.View()) &&
         SetValue(cursor, GetTextData().View()) && ReturnParent(cursor);
}

bool VornExistingComposedPnt::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) {
    if (IsMatchTagName(name, "name")) m_name = value;
  });
  cursor->VisitText([this](std::string_view text) { GetTextValue(text); });
  return true;
}

VornExistingBuildForm::VornExistingBuildForm() : Vorn_Base("tsf:ExistingBuildForm") {}

bool VornExistingBuildForm::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  if (schema.GetVersion() < VornSchema::Version40 || m_composedPntArray.GetSize() < 2) return true;
  return MakeChild(cursor, m_tagName.View(), schema.Tsf()) && AddAttr(cursor, "name", m_name.View()) &&
         m_composedPntArray.toXML(cursor) && ReturnParent(cursor);
}

bool VornExistingBuildForm::fromXML(PimIterator* cursor) {
  if (!IsOnOwnTag(cursor)) return false;
  cursor->VisitAttributes([this](std::string_view name, std::string_view value) {
    if (IsMatchTagName(name, "name")) m_name = value;
  });
  const CString pointTag = m_composedPntArray.tagName();
  return ForEachChild(cursor, [&] { return !IsOnTag(cursor, pointTag.View()) || m_composedPntArray.fromXML(cursor); });
}
