#pragma once

#include <cstdint>

#include "vorn/platform/kel_array.h"

/// A measurement record of a composed point; the library keeps it whole and does not look into it.
struct VornMeasureInfo {
  std::int32_t first = 0;
  std::int32_t second = 0;

  /// The record of the project archive (vorn/archive/).
  void Serialize(CArchive& ar, const CString& tag);

  friend bool operator==(const VornMeasureInfo& a, const VornMeasureInfo& b) {
    return a.first == b.first && a.second == b.second;
  }
};

/// The measurement records of one role of a composed point.
class VornMeasureInfos : public KelArray<VornMeasureInfo> {
 public:
  /// The record of the project archive (vorn/archive/).
  void Serialize(CArchive& ar, const CString& tag);
};
