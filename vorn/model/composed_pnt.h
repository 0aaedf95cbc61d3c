#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "vorn/framework/base.h"
#include "vorn/framework/identifier.h"
#include "vorn/model/measure_info.h"
#include "vorn/model/uint_array.h"
#include "vorn/platform/on_demand.h"
#include "vorn/platform/tam_world2.h"
#include "vorn/types/location.h"

class VornCrossPointInfo;

/// Whether a composed point exists (attribute "existence"). `Empty` is an attribute given without a text.
enum class VORN_Existence : std::int32_t { Unset = -1, Empty = 0, False = 1, True = 2 };

/// One vertex of a build form's polyline, element "tsf:ComposedPnt".
///
/// Two input values, relative to the previous point, give its position: X and Y are a width and a height difference,
/// a width and a grade in percent, or a height difference and a slope ratio. Edition 2.0 tells which by `SlopeType`,
/// later editions by `DataType`. The position computed from them is `CLDist` and `Gh`.
///
/// A point on the boundary of two work types belongs to both: it keeps two detail records, main and sub.
class VornComposedPnt : public Vorn_Base {
 public:
  /// Which detail record; `Both` in the setters that accept it.
  enum class PntType : std::int32_t { Both = -1, Main = 0, Sub = 1 };

  /// Kind of surface (attribute "componentType").
  enum class ComponentType : std::int32_t {
    Unset = -1,
    RoadbedFill = 0,
    RoadbedCut = 1,
    SlopeFill = 2,
    SlopeCut = 3,
    BermFill = 4,
    BermCut = 5,
    Other = 6,
    Roadbed = 7,
    Slope = 8,
    Berm = 9,
  };
  /// How Y is read in edition 2.0 (attribute "slopeType").
  enum class SlopeType : std::int32_t { Unset = -1, Percent = 0, Rate = 1 };
  /// How X and Y are read in later editions (attribute "dataType").
  enum class DataType : std::int32_t { Unset = -1, WidthHeight = 0, Percent = 1, Rate = 2 };
  /// Finer kind of road element.
  enum class ElementType : std::int32_t {
    Unset = -1,
    Carriageway = 0,
    Median = 1,
    Shoulder = 2,
    StoppingLane = 3,
    Sidewalk = 4,
    PlantingStrip = 5,
    FrontageRoad = 6,
    TrackBed = 7,
    Separator = 8,
    MarginalStrip = 9,
    Subgrade = 10,
    RoadBody = 11,
    Excavation = 12,
    SlopeFill = 13,
    SlopeCut = 14,
    BermFill = 15,
    BermCut = 16,
    RetainingWall = 17,
    SideDitch = 18,
    Pavement = 19,
    Other = 20,
    LeveeCrown = 21,
    EarthworkSurfaceFill = 22,
  };

  /// How the two input values are read.
  enum class Reading {
    WidthHeight,  ///< X: width in metres, Y: height difference in metres
    Percent,      ///< X: width in metres, Y: grade in percent
    Rate,         ///< X: height difference in metres, Y: slope ratio, the width for each metre of height
  };

  /// What a point is in one of its two roles.
  struct Detail {
    Detail() = default;
    Detail(const Detail&) = default;
    Detail(Detail&&) noexcept = default;
    /// Without the memory for a copy of all of it, the object stays as it was.
    Detail& operator=(const Detail& other) { return *this = Detail(other); }
    Detail& operator=(Detail&&) noexcept = default;

    CString Code;                          ///< design code, the survey name (attribute "code")
    CString XSectName;                     ///< cross-section name
    VornMeasureInfos Measure;              ///< measurement records
    std::uint32_t XSectType = 0;           ///< cross-section (work) type identifier
    std::uint32_t XSectNameID = 0;         ///< identifier of the cross-section name
    std::uint32_t DekiPairID = kVornNoID;  ///< identifier of the as-built pair
    std::int32_t AutoLinePrev = 0;         ///< connect to the previous point by itself
    std::int32_t AutoLineNext = 0;         ///< connect to the next point by itself
    std::uint32_t FormID = kVornNoID;      ///< identifier of the build form that owns the point in this role

    friend bool operator==(const Detail&, const Detail&) = default;
  };

  /// Bit of `GetPointType`: a point of the design that a crossing was put on, and which stays when the crossing goes.
  static constexpr std::uint16_t kKePoint = 0x1;
  /// Bit of `GetPointType`: a crossing with the existing ground.
  static constexpr std::uint16_t kCrossPoint = 0x2;

  VornComposedPnt();
  VornComposedPnt(const VornComposedPnt&) = default;
  VornComposedPnt(VornComposedPnt&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornComposedPnt& operator=(const VornComposedPnt& other) { return *this = VornComposedPnt(other); }
  VornComposedPnt& operator=(VornComposedPnt&&) noexcept = default;

  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The main code is not empty and an existence was given.
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  // --- position and input values -------------------------------------------------------------------------------

  /// First input value: width, or height difference of a ratio point (metres).
  [[nodiscard]] const NurReal& GetX() const { return m_x; }
  [[nodiscard]] NurReal& GetX() { return m_x; }
  void SetX(const NurReal& x) { m_x = x; }
  /// Second input value: height difference (metres), grade (percent) or slope ratio (horizontal per unit of height).
  [[nodiscard]] const NurReal& GetY() const { return m_y; }
  [[nodiscard]] NurReal& GetY() { return m_y; }
  void SetY(const NurReal& y) { m_y = y; }
  /// Computed horizontal distance from the centre line in metres, negative on the left.
  [[nodiscard]] const NurReal& GetCLDist() const { return m_clDist; }
  [[nodiscard]] NurReal& GetCLDist() { return m_clDist; }
  void SetCLDist(const NurReal& dist) { m_clDist = dist; }
  /// Computed height in metres.
  [[nodiscard]] const NurReal& GetGh() const { return m_gh; }
  [[nodiscard]] NurReal& GetGh() { return m_gh; }
  void SetGh(const NurReal& height) { m_gh = height; }
  /// Derived slope ratio X / Y.
  [[nodiscard]] const NurReal& GetRatio() const { return m_ratio; }
  [[nodiscard]] NurReal& GetRatio() { return m_ratio; }
  void SetRatio(const NurReal& ratio) { m_ratio = ratio; }
  /// Derived grade Y / X x 100.
  [[nodiscard]] const NurReal& GetPercent() const { return m_percent; }
  [[nodiscard]] NurReal& GetPercent() { return m_percent; }
  void SetPercent(const NurReal& percent) { m_percent = percent; }

  // --- classification --------------------------------------------------------------------------------------------

  /// Whether the polyline goes on through the point (attribute "seriesPnt", written only when false).
  [[nodiscard]] const bool& GetSeriesPnt() const { return m_seriesPnt; }
  [[nodiscard]] bool& GetSeriesPnt() { return m_seriesPnt; }
  void SetSeriesPnt(const bool& series) { m_seriesPnt = series; }
  /// Whether the point exists (attribute "existence").
  [[nodiscard]] const VORN_Existence& GetExistence() const { return m_existence; }
  [[nodiscard]] VORN_Existence& GetExistence() { return m_existence; }
  void SetExistence(const VORN_Existence& existence) { m_existence = existence; }
  /// A set of bits kept for callers.
  [[nodiscard]] const std::uint32_t& GetCtrlFlags() const { return m_ctrlFlags; }
  [[nodiscard]] std::uint32_t& GetCtrlFlags() { return m_ctrlFlags; }
  void SetCtrlFlags(const std::uint32_t& flags) { m_ctrlFlags = flags; }
  /// Side of the centre line (attribute "location").
  [[nodiscard]] const VornLocation& GetLocation() const { return m_location; }
  [[nodiscard]] VornLocation& GetLocation() { return m_location; }
  void SetLocation(const VornLocation& location) { m_location = location; }
  /// Kind of surface that leads to the point (attribute "componentType").
  [[nodiscard]] const ComponentType& GetComponentType() const { return m_componentType; }
  /// Keeps the former type as `GetOldCmpType`.
  void SetComponentType(ComponentType type) {
    m_oldCmpType = m_componentType;
    m_componentType = type;
  }
  /// The component type before the last `SetComponentType`.
  [[nodiscard]] const ComponentType& GetOldCmpType() const { return m_oldCmpType; }
  /// How Y is read in edition 2.0.
  [[nodiscard]] const SlopeType& GetSlopeType() const { return m_slopeType; }
  [[nodiscard]] SlopeType& GetSlopeType() { return m_slopeType; }
  void SetSlopeType(const SlopeType& type) { m_slopeType = type; }
  /// How X and Y are read in later editions.
  [[nodiscard]] const DataType& GetDataType() const { return m_dataType; }
  [[nodiscard]] DataType& GetDataType() { return m_dataType; }
  void SetDataType(const DataType& type) { m_dataType = type; }
  /// How the edition reads X and Y: edition 2.0 by the slope type, where all that is not "Rate" is a grade, later ones
  /// by the data type, where an unset one is a width and a height.
  [[nodiscard]] Reading GetReading() const;
  /// Finer kind of road element.
  [[nodiscard]] const ElementType& ElmType() const { return m_elementType; }
  void ElmType(ElementType type) { m_elementType = type; }
  /// A set of `kKePoint` and `kCrossPoint`.
  [[nodiscard]] const std::uint16_t& GetPointType() const { return m_pointType; }
  [[nodiscard]] std::uint16_t& GetPointType() { return m_pointType; }
  void SetPointType(const std::uint16_t& type) { m_pointType = type; }

  /// The slope type is "Rate".
  [[nodiscard]] bool IsSlope() const { return m_slopeType == SlopeType::Rate; }
  /// Whether the point lies on the centre line, by its side.
  [[nodiscard]] bool IsCenter() const { return m_location == VornLocation::Center; }
  /// Whether the point is on the left, by its side.
  [[nodiscard]] bool IsLeft() const { return m_location == VornLocation::Left; }
  /// Whether the point is on the right, by its side.
  [[nodiscard]] bool IsRight() const { return m_location == VornLocation::Right; }
  /// Whether the point is a KE point.
  [[nodiscard]] bool IsKePoint() const { return (m_pointType & kKePoint) != 0; }
  /// Whether the point is a crossing with the existing ground.
  [[nodiscard]] bool IsCrossPoint() const { return (m_pointType & kCrossPoint) != 0; }

  /// Derives the component type from the element type, or (fromElement false) the element type from the component
  /// type; isFill decides for the component types that do not tell fill from cut. Never touches `GetOldCmpType`.
  void RegulateComponent(bool fromElement, bool isFill);

  // --- identifiers -----------------------------------------------------------------------------------------------

  /// Identifier of the drawing entity.
  [[nodiscard]] const std::uint32_t& GetDrawID() const { return m_drawID; }
  [[nodiscard]] std::uint32_t& GetDrawID() { return m_drawID; }
  void SetDrawID(const std::uint32_t& id) { m_drawID = id; }
  /// Drawing identifiers paired with this point.
  [[nodiscard]] const VornUIntArray& DrawPairIDs() const { return m_drawPairIDs; }
  [[nodiscard]] VornUIntArray& DrawPairIDs() { return m_drawPairIDs; }
  /// Index of the control target that uses this point.
  [[nodiscard]] const std::int32_t& GetTargetIndex() const { return m_targetIndex; }
  [[nodiscard]] std::int32_t& GetTargetIndex() { return m_targetIndex; }
  void SetTargetIndex(const std::int32_t& index) { m_targetIndex = index; }
  /// Running identifier within the form: 0 for a centre point, `kVornNoID` when unassigned.
  [[nodiscard]] const std::uint32_t& GetSerialID() const { return m_serialID; }
  [[nodiscard]] std::uint32_t& GetSerialID() { return m_serialID; }
  void SetSerialID(const std::uint32_t& id) { m_serialID = id; }
  /// Serial of the point that this one was copied from.
  [[nodiscard]] const std::uint32_t& GetOrgID() const { return m_orgID; }
  [[nodiscard]] std::uint32_t& GetOrgID() { return m_orgID; }
  void SetOrgID(const std::uint32_t& id) { m_orgID = id; }
  /// Serial of the parent form's point that this one hangs on.
  [[nodiscard]] const std::uint32_t& GetParentID() const { return m_parentID; }
  [[nodiscard]] std::uint32_t& GetParentID() { return m_parentID; }
  void SetParentID(const std::uint32_t& id) { m_parentID = id; }

  // --- detail records --------------------------------------------------------------------------------------------
  // Getters take `Main` or `Sub`; any other value reads the main record. Setters also take `Both`.
  //
  // The sub record is made when it is first given a value, or asked for through a point that is not const. A reference
  // into it is good until the point is assigned; one that a const point gave before the record was made stays that of a
  // new record.

  /// The design code, by which control targets know the point (attribute "code").
  [[nodiscard]] const CString& GetCode(PntType t = PntType::Main) const { return DetailOf(t).Code; }
  /// Also stores the code as the last code, whatever the role.
  void SetCode(const CString& code, PntType t = PntType::Main);
  /// The code of the last `SetCode`.
  [[nodiscard]] const CString& GetLastCode() const { return m_lastCode; }
  /// Identifier of the cross-section (work) type.
  [[nodiscard]] std::uint32_t GetXSectType(PntType t = PntType::Main) const { return DetailOf(t).XSectType; }
  void SetXSectType(std::uint32_t type, PntType t = PntType::Main);
  /// Name of the cross section.
  [[nodiscard]] const CString& GetXSectName(PntType t = PntType::Main) const { return DetailOf(t).XSectName; }
  void SetXSectName(const CString& name, PntType t = PntType::Main);
  /// Name and identifier together.
  void SetXSectName(const CString& name, std::uint32_t id, PntType t);
  /// Identifier of the cross section's name.
  [[nodiscard]] std::uint32_t GetXSectNameID(PntType t = PntType::Main) const { return DetailOf(t).XSectNameID; }
  void SetXSectNameID(std::uint32_t id, PntType t = PntType::Main);
  /// Identifier of the as-built pair; `kVornNoID` for none.
  [[nodiscard]] std::uint32_t GetDekiPairID(PntType t = PntType::Main) const { return DetailOf(t).DekiPairID; }
  void SetDekiPairID(std::uint32_t id, PntType t = PntType::Main);
  /// The measurement records.
  [[nodiscard]] const VornMeasureInfos& Measure(PntType t = PntType::Main) const { return DetailOf(t).Measure; }
  [[nodiscard]] VornMeasureInfos& Measure(PntType t = PntType::Main) { return DetailOf(t).Measure; }
  /// Identifier of the build form that owns the point in that role.
  [[nodiscard]] const std::uint32_t& FormID(PntType t = PntType::Main) const { return DetailOf(t).FormID; }
  [[nodiscard]] std::uint32_t& FormID(PntType t = PntType::Main) { return DetailOf(t).FormID; }
  /// Non-zero: connects to the previous point by itself.
  [[nodiscard]] std::int32_t IsConnectionAutoLinePrev(PntType t = PntType::Main) const {
    return DetailOf(t).AutoLinePrev;
  }
  void SetConnectionAutoLinePrev(std::int32_t on, PntType t = PntType::Main);
  /// Non-zero: connects to the next point by itself.
  [[nodiscard]] std::int32_t IsConnectionAutoLineNext(PntType t = PntType::Main) const {
    return DetailOf(t).AutoLineNext;
  }
  void SetConnectionAutoLineNext(std::int32_t on, PntType t = PntType::Main);
  /// Sets the automatic lines of both records.
  void SetConnectionAutoLine(std::int32_t prev, std::int32_t next);

  /// The first role whose cross-section type and name both equal (exactly); `Both` (-1) when neither does.
  [[nodiscard]] PntType FindPntType(std::uint32_t xsectType, const CString& xsectName) const;
  /// Resets a record to its defaults, except that it keeps its measurement records: intended.
  void InitDetail(PntType t);
  static void InitDetail(Detail& detail);
  /// Copies both records, measurements and form identifiers included.
  void CopyDetail(const VornComposedPnt& other);
  /// Makes the sub record a copy of the main one.
  void FromMainToSub() { m_sub.Change() = Detail(m_main); }
  /// Whether the sub record is in use: it has a type or a name of its own.
  [[nodiscard]] bool IsUsedSub() const;
  /// Whether the point separates two cross-section kinds; equal types are told apart by the name's identifier, or
  /// (byID false) by the name.
  [[nodiscard]] bool IsSeptSectPoint(bool byID) const;

  // --- connections -----------------------------------------------------------------------------------------------

  /// Connection identifier (cross point identifier).
  [[nodiscard]] const std::uint32_t& GetID() const { return m_id; }
  [[nodiscard]] std::uint32_t& GetID() { return m_id; }
  void SetID(const std::uint32_t& id) { m_id = id; }
  /// Identifiers of the three-dimensional pairs that this point connects to.
  [[nodiscard]] const VornUIntArray& ThDPairIDs() const { return m_thDPairIDs; }
  [[nodiscard]] VornUIntArray& ThDPairIDs() { return m_thDPairIDs; }
  /// Non-zero: the point is to be connected by itself.
  [[nodiscard]] std::int32_t IsAutoConnect() const { return m_autoConnect; }
  void SetAutoConnect(std::int32_t on) { m_autoConnect = on; }
  /// Non-zero: the point is connected.
  [[nodiscard]] std::int32_t IsConnected() const { return m_connected; }
  void SetConnected(std::int32_t on) { m_connected = on; }
  /// Whether the point belongs to an as-built pair or to a three-dimensional one.
  [[nodiscard]] bool IsConnect() const { return m_main.DekiPairID != kVornNoID || !m_thDPairIDs.IsEmpty(); }
  /// Forgets the pairs, and with clearCode the codes too.
  void ClearConnectInfo(bool clearCode);
  /// Takes over the connection of a crossing.
  void CopyConnectInfo(const VornCrossPointInfo& info);
  /// The identifiers that the point connects to, each once, ascending. Only an as-built pair above 0 (as a signed
  /// number) counts.
  void ConnectIDs(VornUIntArray& ids) const;
  /// Copies a point whole and then drops everything that ties the copy to other points.
  void AttrCopy(const VornComposedPnt& other);

  // --- texts of the enumerations ---------------------------------------------------------------------------------
  // Texts are those of the XML attributes; an unknown value gives an empty text, "WidthHeight" for a data type.

  /// Text of a side.
  [[nodiscard]] static CString GetLocationStr(VornLocation location);
  /// Text of an existence.
  [[nodiscard]] static CString GetExistenceString(VORN_Existence existence);
  /// Text of a component type.
  [[nodiscard]] static CString GetComponentTypeStr(ComponentType type);
  /// Text of a slope type.
  [[nodiscard]] static CString GetSlopeTypeStr(SlopeType type);
  /// Text of a data type.
  [[nodiscard]] static CString GetDataTypeStr(DataType type);
  /// Japanese display name of a component type.
  [[nodiscard]] static CString ComponentTypeName(ComponentType type);
  /// Japanese display name of an element type.
  [[nodiscard]] static CString ElmTypeName(ElementType type);
  [[nodiscard]] CString ElmTypeName() const { return ElmTypeName(m_elementType); }

  // Parsers, exact. The first four reset the member first and leave it unset when nothing matches; the data type and
  // the element type keep what they had. Documents rely on the difference.

  /// Takes the side of a text.
  bool SetLocationStr(std::string_view text);
  /// Takes the existence of a text.
  bool SetExistenceString(std::string_view text);
  /// Loses the old component type as well: it becomes unset.
  bool SetComponentTypeStr(std::string_view text);
  /// Takes the slope type of a text.
  bool SetSlopeTypeStr(std::string_view text);
  /// Takes the data type of a text.
  bool SetDataTypeStr(std::string_view text);
  /// Takes the last element type of that display name.
  void ElmType(std::string_view text);

  // --- geometry (composed_pnt_geometry.cpp) ------------------------------------------------------------------------

  /// (distance from the centre line, height).
  [[nodiscard]] TamWorld2 Pos() const { return {m_clDist.Value(), m_gh.Value()}; }
  /// (height, distance from the centre line), the order of crossings and of searches by position.
  [[nodiscard]] TamWorld2 HeightAndDist() const { return {m_gh.Value(), m_clDist.Value()}; }
  /// Moves the position by the other point's input values.
  void Shift(const VornComposedPnt& other) { ApplyOffset(other.m_x.Value(), other.m_y.Value()); }
  /// Moves the position sideways and upward (metres).
  void ApplyOffset(double dx, double dy);
  /// Computes the position from the previous point of the form, as the edition reads X and Y.
  void Regulate(const VornComposedPnt& prev);
  /// Ratio form: X is the height difference, |X Y| the run; a positive ratio runs outward on either side.
  void RegulateSlope(const VornComposedPnt& prev);
  /// Percent form, whatever the edition.
  void RegulateRoad(const VornComposedPnt& prev);
  /// Width-height form, whatever the edition.
  void RegulateWD(const VornComposedPnt& prev);
  /// Places a centre point at its own X and Y above the height offset; other points stay.
  void RegulateCenter(const NurReal& offset);
  /// Derives ratio and percent from X and Y when both are set. Without force, values that are set stay.
  /// @param signByLR negate on the left
  void CalcSlopeVal(bool force, bool signByLR);

  /// The element's text: X, a blank, Y, each with the decimal places of the edition and its type.
  [[nodiscard]] CString GetTextData() const;
  /// Takes X and Y from the element's text; what is missing stays as it was.
  void GetTextVal(std::string_view text);

 private:
  [[nodiscard]] const Detail& DetailOf(PntType t) const {
    if (t == PntType::Sub) return m_sub.Get();
    return m_main;
  }
  [[nodiscard]] Detail& DetailOf(PntType t) { return t == PntType::Sub ? m_sub.Change() : m_main; }
  /// Calls change(detail) for the records that are there.
  template <typename Change>
  void ForEachDetail(Change&& change);
  template <typename Member>
  void SetDetail(Member Detail::*member, Member value, PntType t);
  void ReadAttribute(std::string_view name, std::string_view value);
  /// The extension table of the record, which holds the element type.
  void TransferElementType(CArchive& ar);
  /// The record of store versions before "06.00", which know one detail record only.
  void Serialize550Before(CArchive& ar, const CString& tag);
  /// The last code becomes the main one, and the sub detail a copy of the main one without its measurements.
  void SpreadOneDetail();
  [[nodiscard]] std::array<KelMrmFigure, 2> TextPlaces() const;

  VornUIntArray m_drawPairIDs;
  VornUIntArray m_thDPairIDs;
  NurReal m_clDist;
  NurReal m_gh;
  NurReal m_x = 0.0;
  NurReal m_y = 0.0;
  NurReal m_ratio;
  NurReal m_percent;
  Detail m_main;
  OnDemand<Detail> m_sub;  ///< few points have a second role
  CString m_lastCode;
  VORN_Existence m_existence = VORN_Existence::Unset;
  std::uint32_t m_ctrlFlags = 0;
  VornLocation m_location = VornLocation::Unset;
  ComponentType m_componentType = ComponentType::Unset;
  ComponentType m_oldCmpType = ComponentType::Unset;
  SlopeType m_slopeType = SlopeType::Unset;
  DataType m_dataType = DataType::Unset;
  ElementType m_elementType = ElementType::Unset;
  std::int32_t m_targetIndex = 0;
  std::uint32_t m_drawID = kVornNoID;
  std::uint32_t m_serialID = kVornNoID;
  std::uint32_t m_orgID = kVornNoID;
  std::uint32_t m_parentID = kVornNoID;
  std::uint32_t m_id = 0;
  std::int32_t m_autoConnect = 0;
  std::int32_t m_connected = 0;
  std::uint16_t m_pointType = 0;
  bool m_seriesPnt = true;
};
