#include "vorn/road/road_gm_data.h"

#include <algorithm>

#include "vorn/framework/define_manager.h"
#include "vorn/platform/wex_key.h"

void VornRoadGmData::LoadRegistry() {
  const WexKeyGroup together(nullptr);
  WexKey root;
  if (!VornGetBaseRegKey(&root)) return;
  WexKey key;
  key.Open(&root, kSettingsKey);  // a key that is not there stays closed, and gives the defaults
  const auto classificat = static_cast<Classificat>(kClassificatSetting.Load(key));
  const auto speed = static_cast<DesignSpeed>(kSpeedSetting.Load(key));
  const std::int32_t traffic = kTrafficSetting.Load(key);
  m_roadInfo.SetClassificat(classificat);
  m_roadInfo.SetDesignSpeed(speed);
  m_roadInfo.SetTraffic(traffic);
}

void VornRoadGmData::StoreRegistry() const {
  const WexKeyGroup together(nullptr);
  WexKey root;
  WexKey key;
  if (!VornGetBaseRegKey(&root) || !key.Create(&root, kSettingsKey)) return;
  kClassificatSetting.Store(key, static_cast<std::int32_t>(m_roadInfo.GetClassificat()));
  kSpeedSetting.Store(key, static_cast<std::int32_t>(m_roadInfo.GetSpeed()));
  kTrafficSetting.Store(key, m_roadInfo.GetTraffic());
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
