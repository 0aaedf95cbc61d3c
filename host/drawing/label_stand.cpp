#include "host/drawing/label_stand.h"

#include <algorithm>

namespace vorn_host {

namespace {

using Anchor = DrawnText::Anchor;

std::vector<LabelStand> RowsOfStands() {
  std::vector<LabelStand> stands;
  for (const double lift : {4.5, -6.9, 7.5, -9.9, 10.5, -12.9, 13.5, -15.9, 16.5, -18.9}) {
    stands.push_back({0.0, lift, Anchor::Middle});
    for (const double right : {1.5, 3.5, 6.0, 9.0, 12.0}) {
      stands.push_back({right, lift, Anchor::Start});
      stands.push_back({-right, lift, Anchor::End});
    }
  }
  std::stable_sort(stands.begin(), stands.end(),
                   [](const LabelStand& a, const LabelStand& b) { return ReachOf(a) < ReachOf(b); });
  return stands;
}

}  // namespace

PaperPlace LeaderEnd(const LabelStand& stand) {
  constexpr double kGap = 0.4;  // from the leader to the text
  constexpr double kAscent = 0.8 * kLabelSizeMm;
  return {stand.right, stand.lift > 0.0 ? stand.lift - kGap : stand.lift + kAscent + kGap};
}

double ReachOf(const LabelStand& stand) { return Distance({}, LeaderEnd(stand)); }

const std::vector<LabelStand>& FarStands() {
  static const std::vector<LabelStand> stands = RowsOfStands();
  return stands;
}

double LabelLeader::Length() const { return Distance(from, to); }

PaperPlace LabelLeader::At(double along) const {
  const double length = Length();
  const double share = length > 0.0 ? along / length : 0.0;
  return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

double LabelLeader::DistanceTo(const PaperPlace& place) const {
  const double length = Length();
  if (length == 0.0) return Distance(place, from);
  const double along = ((to.x - from.x) * (place.x - from.x) + (to.y - from.y) * (place.y - from.y)) / length;
  const PaperPlace nearest = At(std::clamp(along, 0.0, length));
  return Distance(place, nearest);
}

}  // namespace vorn_host
