#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/platform/cstring.h"
#include "vorn/road/record.h"

/// A coordinate reference system: the geodetic datum, the vertical datum and the plane or geodetic coordinates that
/// survey values refer to. Alignments refer to it by its name.
class VornCrsData : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 23;

  VornCrsData() = default;
  VornCrsData(const VornCrsData&) = default;
  VornCrsData(VornCrsData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornCrsData& operator=(const VornCrsData& other) { return *this = VornCrsData(other); }
  VornCrsData& operator=(VornCrsData&&) noexcept = default;

  /// Horizontal geodetic datum.
  enum class GeoDatum : std::int32_t {
    Unset = -1,
    Jgd2000 = 0,  ///< Japanese Geodetic Datum 2000
    Tokyo = 1,    ///< the former Japanese datum
    World = 2,    ///< a world geodetic system; has no datum code
    Jgd2011 = 3,  ///< Japanese Geodetic Datum 2011
  };

  /// Horizontal coordinates: the nineteen Japanese plane rectangular systems, or latitude and longitude.
  enum class HorizonCoordinate : std::int32_t {
    Unset = -1,
    Plane1 = 0,
    Plane2 = 1,
    Plane3 = 2,
    Plane4 = 3,
    Plane5 = 4,
    Plane6 = 5,
    Plane7 = 6,
    Plane8 = 7,
    Plane9 = 8,
    Plane10 = 9,
    Plane11 = 10,
    Plane12 = 11,
    Plane13 = 12,
    Plane14 = 13,
    Plane15 = 14,
    Plane16 = 15,
    Plane17 = 16,
    Plane18 = 17,
    Plane19 = 18,
    Geodetic = 19,
  };

  /// The record of the project archive, the same for every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Name of the system, by which alignments refer to it.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// The horizontal geodetic datum.
  [[nodiscard]] GeoDatum GetGeoDatum() const { return m_geoDatum; }
  void SetGeoDatum(GeoDatum datum) { m_geoDatum = datum; }
  /// Designation of the vertical datum, such as those of `kVornVerticalDatums`.
  [[nodiscard]] const CString& VerticalDatum() const { return m_verticalDatum; }
  void SetVerticalDatum(const CString& designation) { m_verticalDatum = designation; }
  /// A length in metres that goes with the vertical datum.
  [[nodiscard]] double GetVerticalHeight() const { return m_verticalHeight; }
  void SetVerticalHeight(double height) { m_verticalHeight = height; }
  /// The horizontal coordinates.
  [[nodiscard]] HorizonCoordinate GetHorizonCoordinate() const { return m_horizonCoordinate; }
  void SetHorizonCoordinate(HorizonCoordinate coordinate) { m_horizonCoordinate = coordinate; }
  /// A code and a text that the library keeps and does not look into.
  [[nodiscard]] std::int32_t GetAuxCode() const { return m_auxCode; }
  void SetAuxCode(std::int32_t code) { m_auxCode = code; }
  /// The text that goes with the code.
  [[nodiscard]] const CString& GetAuxText() const { return m_auxText; }
  void SetAuxText(const CString& text) { m_auxText = text; }

  /// Japanese display texts; an unknown value gives an empty text.
  [[nodiscard]] static CString GetGeoDatumStr(GeoDatum datum);
  /// Japanese display text of horizontal coordinates; an unknown value gives an empty text.
  [[nodiscard]] static CString HorizonCoordStr(HorizonCoordinate coordinate);

  /// Code of a horizontal datum, such as "JGD2011". Empty for the world geodetic system and for an unknown value.
  [[nodiscard]] CString HorizontalDatum(GeoDatum datum) const;
  [[nodiscard]] CString HorizontalDatum() const { return HorizontalDatum(m_geoDatum); }
  /// Takes the datum of a code (exactly); the empty code is that of the world geodetic system. False, and nothing
  /// changed, for any other text.
  bool HorizontalDatum(std::string_view code);

  /// Code of a plane rectangular system, "1(X,Y)" to "19(X,Y)". Empty for geodetic coordinates and an unknown value.
  [[nodiscard]] CString CoordinateSystem(HorizonCoordinate coordinate) const;
  [[nodiscard]] CString CoordinateSystem() const { return CoordinateSystem(m_horizonCoordinate); }
  /// Takes the plane rectangular system of a code (exactly). False, and nothing changed, for any other text: geodetic
  /// coordinates have no code to be set by.
  bool CoordinateSystem(std::string_view code);

  /// Whether all members are equal, texts exactly and vertical heights within the tiny length.
  [[nodiscard]] bool Compare(const VornCrsData& other) const;

 private:
  CString m_name;
  GeoDatum m_geoDatum = GeoDatum::Unset;
  CString m_verticalDatum;
  double m_verticalHeight = 0.0;
  HorizonCoordinate m_horizonCoordinate = HorizonCoordinate::Unset;
  std::int32_t m_auxCode = -1;
  CString m_auxText;
};

/// The coordinate reference systems of a project.
class VornCrsArray : public VornRecordArray<VornCrsData> {};
