#include "vorn/road/road_gm_data.h"

#include <algorithm>

#include "vorn/framework/define_manager.h"
#include "vorn/platform/wex_key.h"

namespace {

// Names in the settings.
constexpr const char* kRoadInfoKey = "RoadInfo";
constexpr const char* kClassificatValue = "classificat";
constexpr const char* kSpeedValue = "speed";
constexpr const char* kTrafficValue = "traffic";

}  // namespace

void VornRoadGmData::LoadRegistry() {
  WexKey root;
  if (!VornGetBaseRegKey(&root)) return;
  WexKey key;
  key.Open(&root, kRoadInfoKey);  // a key that is not there stays closed, and gives the defaults
  m_roadInfo.SetClassificat(static_cast<Classificat>(key.GetInt(kClassificatValue, 0)));
  m_roadInfo.SetDesignSpeed(static_cast<DesignSpeed>(key.GetInt(kSpeedValue, 0)));
  m_roadInfo.SetTraffic(key.GetInt(kTrafficValue, 1));
}

void VornRoadGmData::StoreRegistry() const {
  WexKey root;
  WexKey key;
  if (!VornGetBaseRegKey(&root) || !key.Create(&root, kRoadInfoKey)) return;
  key.SetInt(kClassificatValue, static_cast<std::int32_t>(m_roadInfo.GetClassificat()));
  key.SetInt(kSpeedValue, static_cast<std::int32_t>(m_roadInfo.GetSpeed()));
  key.SetInt(kTrafficValue, m_roadInfo.GetTraffic());
}

std::int32_t VornRoadGmData::GetDesignSpeedVal(DesignSpeed speed) { return std::max(VornRoadInfo::GetSpeed(speed), 0); }

bool VornRoadGmData::IsSameType(VornSchema::Version version, const VornStructureType& structureType) const {
  if (m_schemaVersion != version) return false;
  return structureType.GetTypeStr().IsEmpty() || structureType.GetType() == m_structureType.GetType();
}

bool VornRoadGmData::CompareRoadInfo(const VornRoadGmData& other) const {
  const VornRoadInfo& a = m_roadInfo;
  const VornRoadInfo& b = other.m_roadInfo;
  return a.GetName() == b.GetName() && a.GetClassificat() == b.GetClassificat() && a.GetSpeed() == b.GetSpeed() &&
         a.GetTraffic() == b.GetTraffic();
}
