#include "vorn/framework/define_manager.h"

#include "vorn/platform/code_page_932.h"

VornDefineManager& VornDefineManager::GetInstance() {
  static VornDefineManager instance;
  return instance;
}

CString VornDefineManager::GetInfoConstRegKeyRoot() const {
  return m_totalStation ? u8"情報化施工_TS"_cp932 : u8"情報化施工"_cp932;
}

CString VornDefineManager::GetLandXmlRegKeyRoot() const {
  return m_totalStation ? u8"LandXML書込み_TS"_cp932 : u8"LandXML書込み"_cp932;
}

bool VornGetBaseRegKey(WexKey* key) {
  return WexGetApplicationSubKey(key, VornDefineManager::GetInstance().GetInfoConstRegKeyRoot(), nullptr);
}

bool VornGetLandXmlBaseRegKey(WexKey* key) {
  return WexGetApplicationSubKey(key, VornDefineManager::GetInstance().GetLandXmlRegKeyRoot(), nullptr);
}
