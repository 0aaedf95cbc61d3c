#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/types/structure_type.h"

/// What a road is: its class under the road structure ordinance (or that of a river), its design speed, its traffic
/// class. Unknown values of the enumerations are kept as they stand.
class VornRoadInfo {
 public:
  /// Road class: kind and grade.
  enum class Classificat : std::int32_t {
    Unset = -1,
    Type1Class1 = 0,
    Type1Class2 = 1,
    Type1Class3 = 2,
    Type1Class4 = 3,
    Type2Class1 = 4,
    Type2Class2 = 5,
    Type3Class1 = 6,
    Type3Class2 = 7,
    Type3Class3 = 8,
    Type3Class4 = 9,
    Type3Class5 = 10,
    Type4Class1 = 11,
    Type4Class2 = 12,
    Type4Class3 = 13,
    Type4Class4 = 14,
  };
  /// River class, which takes the place of the road class in river works.
  enum class ClassRiver : std::int32_t {
    Class1 = 0,
    Class2 = 1,
    None = 2,  ///< has no text: what an empty text sets
  };
  /// Design speed, by the speeds that the ordinance knows.
  enum class DesignSpeed : std::int32_t {
    Unset = -1,
    Kmh120 = 0,
    Kmh100 = 1,
    Kmh80 = 2,
    Kmh60 = 3,
    Kmh50 = 4,
    Kmh40 = 5,
    Kmh30 = 6,
    Kmh20 = 7,
  };

  VornRoadInfo() = default;
  VornRoadInfo(const VornRoadInfo&) = default;
  VornRoadInfo(VornRoadInfo&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornRoadInfo& operator=(const VornRoadInfo& other) { return *this = VornRoadInfo(other); }
  VornRoadInfo& operator=(VornRoadInfo&&) noexcept = default;

  /// Name, road class, design speed and traffic class, as the record of the road data has them; the other members are
  /// not archived. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Name of the road.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Road class.
  [[nodiscard]] Classificat GetClassificat() const { return m_classificat; }
  void SetClassificat(Classificat classificat) { m_classificat = classificat; }
  /// River class.
  [[nodiscard]] ClassRiver GetClassRiver() const { return m_classRiver; }
  void SetClassRiver(ClassRiver classRiver) { m_classRiver = classRiver; }
  /// Traffic class.
  [[nodiscard]] std::int32_t GetTraffic() const { return m_traffic; }
  void SetTraffic(std::int32_t traffic) { m_traffic = traffic; }
  /// Two texts that the library keeps and does not look into.
  [[nodiscard]] const CString& GetText1() const { return m_text1; }
  void SetText1(const CString& text) { m_text1 = text; }
  [[nodiscard]] const CString& GetText2() const { return m_text2; }
  void SetText2(const CString& text) { m_text2 = text; }
  /// The side that the host tells by a code, which the library keeps and does not look into.
  [[nodiscard]] std::int32_t Side() const { return m_side; }
  void Side(std::int32_t side) { m_side = side; }
  /// Whether the road has a single lane.
  [[nodiscard]] bool SingleLane() const { return m_singleLane; }
  void SingleLane(bool singleLane) { m_singleLane = singleLane; }

  // --- classes -----------------------------------------------------------------------------------------------------
  // Texts are such as "第3種第2級" for a road and "1級" for a river; an unknown value gives an empty text.

  /// Text of a road class, or of the own one.
  [[nodiscard]] static CString GetClassificatRoad(Classificat classificat);
  [[nodiscard]] CString GetClassificatRoad() const { return GetClassificatRoad(m_classificat); }
  /// Text of a river class, or of the own one.
  [[nodiscard]] static CString GetClassificatRiver(ClassRiver classRiver);
  [[nodiscard]] CString GetClassificatRiver() const { return GetClassificatRiver(m_classRiver); }
  /// Takes the road class of a text (exactly). False, and nothing changed, for any other text.
  bool SetClassificatRoad(std::string_view text);
  /// Takes the river class of a text (exactly); an empty text gives the class `None`. False, and nothing changed, for
  /// any other text.
  bool SetClassificatRiver(std::string_view text);
  /// Text of the class that counts for a type of work: the river class for river works, pavement included, otherwise
  /// the road class.
  [[nodiscard]] CString Class(VornStructureType::Type type) const;

  // --- design speed ------------------------------------------------------------------------------------------------

  /// The own design speed.
  [[nodiscard]] DesignSpeed GetSpeed() const { return m_designSpeed; }
  /// Sets the own design speed.
  void SetDesignSpeed(DesignSpeed speed) { m_designSpeed = speed; }
  /// A design speed in km/h; -1 for an unknown value.
  [[nodiscard]] static std::int32_t GetSpeed(DesignSpeed speed);
  /// The own design speed in km/h; -1 when it is unset or unknown.
  [[nodiscard]] std::int32_t Speed() const { return GetSpeed(m_designSpeed); }
  /// Takes a speed in km/h. False, and nothing changed, when it is none of the design speeds.
  bool SetSpeed(std::int32_t kmh);

  // --- design conditions -------------------------------------------------------------------------------------------

  /// Takes all members but name and texts from another road.
  void SetDesignInfo(const VornRoadInfo& src);
  /// Gives all members but name and texts to another road.
  void GetDesignInfo(VornRoadInfo& dst) const { dst.SetDesignInfo(*this); }
  /// Whether name, road class, design speed and traffic class are as in a new object; the others do not count.
  [[nodiscard]] bool IsInit() const;

 private:
  CString m_name;
  Classificat m_classificat = Classificat::Unset;
  ClassRiver m_classRiver = ClassRiver::Class1;
  DesignSpeed m_designSpeed = DesignSpeed::Unset;
  std::int32_t m_traffic = 1;
  CString m_text1;
  CString m_text2;
  std::int32_t m_side = 0;
  bool m_singleLane = false;
};
