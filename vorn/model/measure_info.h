#pragma once

#include <cstdint>

#include "vorn/platform/kel_array.h"

/// A measurement record of a composed point; the library keeps it whole and does not look into it.
struct VornMeasureInfo {
  std::int32_t first = 0;   ///< first number of the record
  std::int32_t second = 0;  ///< second number of the record

  /// The record of the project archive (vorn/archive/).
  void Serialize(CArchive& ar, const CString& tag);

  /// Whether both numbers are equal.
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
