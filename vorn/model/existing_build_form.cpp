#include "vorn/model/existing_build_form.h"

#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"

VornExistingComposedPnt::VornExistingComposedPnt() : Vorn_Base("tsf:ExistingComposedPnt") {}

CString VornExistingComposedPnt::GetTextData() const {
  const NurMrm distance(VornNumericalPrecision::GetInstance().GetDecimalPlaceDist());
  CString text;
  if (m_clDist.IsSet()) {
    text += distance.Format(m_clDist.Value()).View();
    text += ' ';
  }
  if (m_gh.IsSet()) text += distance.Format(m_gh.Value()).View();
  return text;
}

void VornExistingComposedPnt::GetTextValue(std::string_view text) { ReadTwoReals(text, m_clDist, m_gh); }

bool VornExistingComposedPnt::toXML(PimIterator* cursor) {
  const VornSchema& schema = VornSchema::Instance();
  if (schema.IsVer2()) return true;
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
  if (schema.IsVer2() || m_composedPntArray.GetSize() < 2) return true;
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
