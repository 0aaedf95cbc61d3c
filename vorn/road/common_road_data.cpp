// What the construction information and the road-centre data have in common, and how one takes it from the other.

#include <utility>

#include "vorn/road/info_constrcut.h"
#include "vorn/road/road_center_data.h"

namespace {

template <typename Target, typename Source>
void TakeCommonData(Target& target, const Source& source) {
  const VornRoadInfo& from = source.GetRoadGm().GetRoadInfo();
  VornRoadInfo& to = target.GetRoadGm().GetRoadInfo();
  VornCrsArray systems = source.GetCrsArray();
  VornAlignmentsArray alignments = source.GetRoadGm().GetAlignments();
  to.SetName(from.GetName());  // the last that needs memory
  target.GetCrsArray() = std::move(systems);
  target.GetRoadGm().GetAlignments() = std::move(alignments);
  to.SetClassificat(from.GetClassificat());
  to.SetDesignSpeed(from.GetSpeed());
  to.SetTraffic(from.GetTraffic());
}

}  // namespace

void VornInfoConstrcut::SetCommonData(const VornRoadCenterData& source) { TakeCommonData(*this, source); }
void VornRoadCenterData::SetCommonData(const VornInfoConstrcut& source) { TakeCommonData(*this, source); }
