// From a composed point's input values to its position in the cross section.

#include <cmath>

#include "vorn/framework/schema.h"
#include "vorn/model/composed_pnt.h"

namespace {

/// A denominator no larger than this gives a slope value of 0.
constexpr double kSmallestSlopeDivisor = 0.0001;

}  // namespace

void VornComposedPnt::ApplyOffset(double dx, double dy) {
  m_clDist = m_clDist.Value() + dx;
  m_gh = m_gh.Value() + dy;
}

VornComposedPnt::Reading VornComposedPnt::GetReading() const {
  if (VornSchema::Instance().IsVer2()) return IsSlope() ? Reading::Rate : Reading::Percent;
  if (m_dataType == DataType::Rate) return Reading::Rate;
  return m_dataType == DataType::Percent ? Reading::Percent : Reading::WidthHeight;
}

void VornComposedPnt::Regulate(const VornComposedPnt& prev) {
  switch (GetReading()) {
    case Reading::Rate:
      return RegulateSlope(prev);
    case Reading::Percent:
      return RegulateRoad(prev);
    case Reading::WidthHeight:
      return RegulateWD(prev);
  }
}

void VornComposedPnt::RegulateWD(const VornComposedPnt& prev) {
  const double outward = IsLeft() ? -1.0 : 1.0;
  m_clDist = prev.m_clDist.Value() + outward * m_x.Value();
  m_gh = prev.m_gh.Value() + m_y.Value();
}

void VornComposedPnt::RegulateRoad(const VornComposedPnt& prev) {
  const double outward = IsLeft() ? -1.0 : 1.0;
  m_clDist = prev.m_clDist.Value() + outward * m_x.Value();
  m_gh = prev.m_gh.Value() + std::abs(m_x.Value()) * m_y.Value() / 100.0;
}

void VornComposedPnt::RegulateSlope(const VornComposedPnt& prev) {
  const double run = std::abs(m_y.Value() * m_x.Value());
  const bool towardsLeft = IsLeft() ? m_y.Value() > 0.0 : m_y.Value() < 0.0;
  m_clDist = prev.m_clDist.Value() + (towardsLeft ? -run : run);
  m_gh = prev.m_gh.Value() + m_x.Value();
}

void VornComposedPnt::RegulateCenter(const NurReal& offset) {
  if (!IsCenter()) return;
  m_clDist = m_x;
  m_gh = m_y.Value() + offset.Value();
}

void VornComposedPnt::CalcSlopeVal(bool force, bool signByLR) {
  if (!m_x.IsSet() || !m_y.IsSet()) return;
  const double sign = signByLR && IsLeft() ? -1.0 : 1.0;
  const auto quotient = [](double dividend, double divisor) {
    return std::abs(divisor) <= kSmallestSlopeDivisor ? 0.0 : dividend / divisor;
  };
  if (force || !m_ratio.IsSet()) m_ratio = sign * quotient(m_x.Value(), m_y.Value());
  if (force || !m_percent.IsSet()) m_percent = sign * quotient(m_y.Value(), m_x.Value()) * 100.0;
}
