#include "vorn/framework/numerical_precision.h"

#include "vorn/framework/schema.h"

VornNumericalPrecision& VornNumericalPrecision::GetInstance() {
  static VornNumericalPrecision instance;
  return instance;
}

void VornNumericalPrecision::SetDecimalPlace() {
  const bool ver2 = VornSchema::Instance().IsVer2();
  const auto places = [ver2](KelMrmFigure later, KelMrmFigure edition20) { return ver2 ? edition20 : later; };
  m_xy = places(6, 6);
  m_pos = places(4, 6);
  m_dist = 4;
  m_z = places(4, 3);
  m_rad = places(4, 3);
  m_clothoidPrm = places(4, 3);
  m_clothoidRad = places(4, 3);
  m_slant = places(3, m_slant);  // edition 2.0 leaves it as it was: intended, it is no oversight
  m_slope = places(3, 3);
  m_angle = places(5, 4);
  m_diffTP = 4;
  m_percent = places(3, 3);
  m_rate = 1;
}
