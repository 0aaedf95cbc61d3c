#pragma once

#include "vorn/platform/cstring.h"
#include "vorn/platform/wex_key.h"

/// Process-wide settings of the library: whether it serves the total-station edition of the host application, which
/// keeps its settings apart from the ordinary edition's.
class VornDefineManager {
 public:
  /// The settings of the process.
  static VornDefineManager& GetInstance();
  virtual ~VornDefineManager() = default;
  VornDefineManager(const VornDefineManager&) = default;
  VornDefineManager& operator=(const VornDefineManager&) = default;

  /// Whether settings are those of the total-station edition from now on.
  void SetTSFlag(bool totalStation) { m_totalStation = totalStation; }

  /// Name of the settings key of the construction-information dialogs.
  [[nodiscard]] CString GetInfoConstRegKeyRoot() const;
  /// Name of the settings key of the LandXML output.
  [[nodiscard]] CString GetLandXmlRegKeyRoot() const;

 private:
  VornDefineManager() = default;

  bool m_totalStation = false;
};

/// Opens the application's construction-information settings into the given key, and makes them where there are none;
/// false when that fails.
bool VornGetBaseRegKey(WexKey* key);
/// Opens the application's LandXML output settings into the given key, and makes them where there are none; false when
/// that fails.
bool VornGetLandXmlBaseRegKey(WexKey* key);
