// From the input values of a build form's points to their positions, and from codes to positions.

#include "vorn/framework/schema.h"
#include "vorn/model/build_form.h"
#include "vorn/types/structure_type.h"

void VornBuildForm::RegulateComposedPnt(const NurReal& centerHeight, NurReal& dist, NurReal& height) {
  if (!VornSchema::Instance().IsValid() || m_composedPntArray.IsEmpty()) return;
  VornComposedPnt& start = m_composedPntArray[0];
  start.RegulateCenter(centerHeight);
  if (VornIsPlan(m_xSectType)) {
    dist = start.GetX();
    height = start.GetY();
  }
  const VornComposedPnt* previous = &start;
  for (int i = 1; i < m_composedPntArray.GetSize(); ++i) {
    VornComposedPnt& point = m_composedPntArray[i];
    if (m_composedPntArray[i - 1].GetLocation() != point.GetLocation()) previous = &start;
    point.Regulate(*previous);
    previous = &point;
  }
}

bool VornBuildForm::GetPntFromCode(const CString& code, TamWorld2& pos) const {
  for (const VornComposedPnt& point : m_composedPntArray) {
    if (point.GetCode().CompareNoCase(code.View()) != 0) continue;
    pos = {point.GetGh().Value(), point.GetCLDist().Value()};
    return true;
  }
  return false;
}
