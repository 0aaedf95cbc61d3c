#pragma once

#include <cstdint>

#include "vorn/framework/identifier.h"
#include "vorn/model/uint_array.h"
#include "vorn/platform/nur_real.h"

/// Where a build form crosses another one on one side, and what the crossing point is connected to.
class VornCrossPointInfo {
 public:
  VornCrossPointInfo() = default;
  VornCrossPointInfo(const VornCrossPointInfo&) = default;
  VornCrossPointInfo(VornCrossPointInfo&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornCrossPointInfo& operator=(const VornCrossPointInfo& other) { return *this = VornCrossPointInfo(other); }
  VornCrossPointInfo& operator=(VornCrossPointInfo&&) noexcept = default;
  virtual ~VornCrossPointInfo() = default;

  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Distance of the crossing from the centre line in metres; unset when there is no crossing.
  [[nodiscard]] const NurReal& GetDist() const { return m_dist; }
  void SetDist(const NurReal& dist) { m_dist = dist; }
  /// Connection identifier of the crossing point.
  [[nodiscard]] std::uint32_t GetID() const { return m_id; }
  void SetID(std::uint32_t id) { m_id = id; }
  /// Identifier of the as-built pair; `kVornNoID` for none.
  [[nodiscard]] std::uint32_t GetDekiPairID() const { return m_dekiPairID; }
  void SetDekiPairID(std::uint32_t id) { m_dekiPairID = id; }
  /// Identifiers of the three-dimensional pairs.
  [[nodiscard]] const VornUIntArray& ThDPairIDs() const { return m_thDPairIDs; }
  [[nodiscard]] VornUIntArray& ThDPairIDs() { return m_thDPairIDs; }
  /// Non-zero: the crossing connects to the previous point by itself.
  [[nodiscard]] std::int32_t IsConnectionAutoLinePrev() const { return m_autoLinePrev; }
  void SetConnectionAutoLinePrev(std::int32_t on) { m_autoLinePrev = on; }
  /// Non-zero: the crossing connects to the next point by itself.
  [[nodiscard]] std::int32_t IsConnectionAutoLineNext() const { return m_autoLineNext; }
  void SetConnectionAutoLineNext(std::int32_t on) { m_autoLineNext = on; }

  /// Forgets all connections. The automatic lines become 0, not the 1 of a new crossing: intended, so a cleared
  /// crossing is not joined to its neighbours by itself.
  void ClearConnectInfo() {
    m_dekiPairID = kVornNoID;
    m_thDPairIDs.RemoveAll();
    m_autoLinePrev = 0;
    m_autoLineNext = 0;
  }

 private:
  NurReal m_dist;
  std::uint32_t m_id = 0;
  std::uint32_t m_dekiPairID = kVornNoID;
  VornUIntArray m_thDPairIDs;
  std::int32_t m_autoLinePrev = 1;
  std::int32_t m_autoLineNext = 1;
};
