#include "vorn/framework/numerical_precision.h"

#include "vorn/framework/schema.h"

VornNumericalPrecision& VornNumericalPrecision::GetInstance() {
  static VornNumericalPrecision instance;
  return instance;
}

void VornNumericalPrecision::SetDecimalPlace() {
  // Edition 2.0 leaves the places for slant as they were: intended, it is no oversight.
  m_places = VornSchema::Instance().IsVer2() ? Edition20(m_places.slant) : kLaterEditions;
}
