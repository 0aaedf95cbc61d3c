#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"
#include "vorn/road/record.h"

/// A ground point, by its number and its name.
class VornGmPnt : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 3;

  VornGmPnt() = default;
  VornGmPnt(const VornGmPnt&) = default;
  VornGmPnt(VornGmPnt&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornGmPnt& operator=(const VornGmPnt& other) { return *this = VornGmPnt(other); }
  VornGmPnt& operator=(VornGmPnt&&) noexcept = default;

  /// The record of the project archive, the same for every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Identifier of the point within its array.
  [[nodiscard]] std::uint16_t GetNumber() const { return m_number; }
  void SetNumber(std::uint16_t number) { m_number = number; }
  /// Name of the point.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }

  /// Whether number and name are equal.
  [[nodiscard]] bool Compare(const VornGmPnt& other) const {
    return m_number == other.m_number && m_name == other.m_name;
  }

 private:
  std::uint16_t m_number = 0;
  CString m_name;
};

/// The ground points of a group.
class VornGmPntArray : public VornNumberedArray<VornGmPnt> {};

/// A group of ground points, with two names.
class VornGmPnts : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 6;

  VornGmPnts() = default;
  VornGmPnts(const VornGmPnts&) = default;
  VornGmPnts(VornGmPnts&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornGmPnts& operator=(const VornGmPnts& other) { return *this = VornGmPnts(other); }
  VornGmPnts& operator=(VornGmPnts&&) noexcept = default;

  /// The record of the project archive, the same for every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// First name of the group.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Second name of the group.
  [[nodiscard]] const CString& GetName2() const { return m_name2; }
  void SetName2(const CString& name) { m_name2 = name; }
  /// The points of the group.
  [[nodiscard]] const VornGmPntArray& GetPoints() const { return m_points; }
  [[nodiscard]] VornGmPntArray& GetPoints() { return m_points; }
  void SetPoints(const VornGmPntArray& points) { m_points = points; }

  /// Whether both names are equal, and the points one by one in their order.
  [[nodiscard]] bool Compare(const VornGmPnts& other) const {
    return m_name == other.m_name && m_name2 == other.m_name2 && m_points.Compare(other.m_points);
  }

 private:
  CString m_name;
  CString m_name2;
  VornGmPntArray m_points;
};

/// The groups of ground points.
class VornGmPntsArray : public VornRecordArray<VornGmPnts> {};
