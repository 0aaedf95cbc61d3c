#include "host/document/input_values.h"

#include <algorithm>
#include <cmath>

#include "vorn/platform/nur_mrm.h"

namespace vorn_host {

int OriginOf(const Vorn_ComposedPntArray& points, int index) {
  if (index == 0) return -1;
  return points[index - 1].GetLocation() == points[index].GetLocation() ? index - 1 : 0;
}

TamWorld2 Place(const InputValues& values, VornLocation side, const TamWorld2& from) {
  VornComposedPnt previous;
  previous.SetCLDist(from.x);
  previous.SetGh(from.y);
  VornComposedPnt point;
  point.SetLocation(side);
  point.SetX(values.x);
  point.SetY(values.y);
  switch (values.reading) {
    case Reading::WidthHeight:
      point.RegulateWD(previous);
      break;
    case Reading::Percent:
      point.RegulateRoad(previous);
      break;
    case Reading::Rate:
      point.RegulateSlope(previous);
      break;
  }
  return point.Pos();
}

double OutwardWidth(VornLocation side, const TamWorld2& from, const TamWorld2& to) {
  return side == VornLocation::Left ? from.x - to.x : to.x - from.x;
}

double Distance(const TamWorld2& a, const TamWorld2& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double Rounded(double value, KelMrmFigure places) { return KelIsShoki(value) ? 0.0 : NurMrm(places).ZMrm(value); }

bool IsPlaced(const VornBuildForm& form) {
  const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  return std::all_of(points.begin(), points.end(), [&](const VornComposedPnt& point) {
    const bool isLooseStart = &point == points.GetData() && !point.IsCenter();
    return isLooseStart || (point.GetCLDist().IsSet() && point.GetGh().IsSet());
  });
}

}  // namespace vorn_host
