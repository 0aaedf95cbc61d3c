#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/dov_data_table.h"

/// Base of the type settings, which travel through an archive as a table of values: a setting that an archive does not
/// know yet, or no longer, does not move the others.
class VornHosoType {
 public:
  VornHosoType() = default;
  VornHosoType(const VornHosoType&) = default;
  VornHosoType& operator=(const VornHosoType&) = default;
  virtual ~VornHosoType() = default;

  /// The record is one table of values, the same for every store version.
  virtual void Serialize(CArchive& ar, const CString& tag);

 protected:
  /// Puts the settings into a table.
  virtual void GetDataTable(DovDataTable& table) = 0;
  /// Takes the settings from a table; one that it does not hold stays.
  virtual void SetDataTable(DovDataTable& table) = 0;
};

/// Type of cross section. There is nothing to set yet: its table is written empty, and what a table holds is ignored.
class VornXSectType : public VornHosoType {
 protected:
  void GetDataTable(DovDataTable&) override {}
  void SetDataTable(DovDataTable&) override {}
};

/// Pavement settings: numbers that the host gives to a pavement, a scale, and fourteen kinds. 0 stands for not set.
class VornTsHosoType : public VornHosoType {
 public:
  /// How many kinds there are.
  static constexpr int kKindCount = 14;

  /// As the base; what a loaded table does not hold becomes 0. A table that cannot be read leaves the settings.
  void Serialize(CArchive& ar, const CString& tag) override;

  /// The number of the pavement.
  [[nodiscard]] std::uint32_t GetPaveID() const { return m_paveID; }
  void SetPaveID(std::uint32_t id) { m_paveID = id; }
  /// The number of the scale.
  [[nodiscard]] std::uint32_t GetScaleID() const { return m_scaleID; }
  void SetScaleID(std::uint32_t id) { m_scaleID = id; }
  /// A kind, index 0 to 13. No index is checked in a release build.
  [[nodiscard]] std::uint32_t GetKindID(int index) const { return m_kindIDs[Checked(index)]; }
  void SetKindID(int index, std::uint32_t id) { m_kindIDs[Checked(index)] = id; }

  /// Sets everything to 0.
  void Initiate();
  /// Whether the pavement, the scale and the kind of that index are all set.
  [[nodiscard]] bool IsValid(int index) const { return m_paveID != 0 && m_scaleID != 0 && GetKindID(index) != 0; }

  /// The pavement layer category of a work name, 1 to 7: that of the first entry in the list of pavement works whose
  /// name occurs anywhere in the text, byte by byte; -1 when none does.
  [[nodiscard]] static std::int32_t XSectTypeToMsdoPaveIdx(const CString& text);

 protected:
  void GetDataTable(DovDataTable& table) override;
  void SetDataTable(DovDataTable& table) override;

 private:
  static std::size_t Checked(int index) {
    assert(index >= 0 && index < kKindCount);
    return static_cast<std::size_t>(index);
  }

  /// Calls `visit` with the key and the value of every setting.
  template <typename Visit>
  void VisitSettings(Visit visit);

  std::uint32_t m_paveID = 0;
  std::uint32_t m_scaleID = 0;
  std::array<std::uint32_t, kKindCount> m_kindIDs{};
  std::array<std::uint32_t, 6> m_furtherIDs{};  ///< carried along; nothing here reads them
};
