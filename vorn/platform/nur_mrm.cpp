#include "vorn/platform/nur_mrm.h"

#include "vorn/platform/exceptions.h"
#include "vorn/platform/nur_real.h"

NurMrm::NurMrm(int mode, int unit, KelMrmFigure places) : m_places(places) {
  if (mode != kHalfAwayFromZero || unit != 0) throw CInvalidArgException();
}

double NurMrm::ZMrm(double value) const { return KelIsShoki(value) ? value : FixedDecimal::Round(value, m_places); }

FixedDecimal NurMrm::Format(double value) const {
  // Only with this many places can a value that is set round to the one that means unset.
  constexpr KelMrmFigure kPlacesOfUnset = 99;
  if (KelIsShoki(value)) return {};
  if (m_places >= kPlacesOfUnset && KelIsShoki(FixedDecimal::Round(value, m_places))) return {};
  return {value, m_places};
}

CString NurMrm::Text(double value) const { return Format(value).View(); }
