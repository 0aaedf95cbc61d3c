#pragma once

#include <pybind11/pybind11.h>

#include <array>
#include <vector>

#include "host/document/document_check.h"
#include "host/document/edition.h"
#include "host/document/text_encoding.h"
#include "host/drawing/language.h"
#include "host/drawing/section_csv.h"
#include "host/sample/sample_design.h"
#include "vorn/control/form_ctrl_target.h"
#include "vorn/model/build_form.h"
#include "vorn/road/bench_mark.h"
#include "vorn/road/crs_data.h"
#include "vorn/road/ctrl_point.h"
#include "vorn/road/form_ctrl.h"
#include "vorn/road/project_data.h"
#include "vorn/road/road_info.h"
#include "vorn/types/structure_type.h"

namespace vorn_python {

/// A member of a Python enumeration. Its value is the text, where there is one, otherwise the number.
template <typename Enum>
struct EnumMember {
  const char* name;
  Enum value;
  const char* text = nullptr;
};

/// For each enumeration of the library: its name in Python, its members, and the value that is `None`, if there is one.
template <typename Enum>
struct EnumTraits;

template <typename Enum>
concept BoundEnum = requires {
  EnumTraits<Enum>::kMembers;
};

/// The Python members in the order of the traits; filled when the module is loaded, and kept for good.
template <BoundEnum Enum>
[[nodiscard]] std::vector<pybind11::handle>& EnumMembers() {
  static std::vector<pybind11::handle> members;
  return members;
}

void AddEnumerations(pybind11::module_& module);

template <>
struct EnumTraits<VornLocation> {
  using Enum = VornLocation;
  static constexpr char kName[] = "Side";
  static constexpr const char* kDoc = "Side of the centre line, looking along it. Offsets are negative on the left.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"CENTER", Enum::Center},
      EnumMember<Enum>{"LEFT", Enum::Left},
      EnumMember<Enum>{"RIGHT", Enum::Right},
  };
};

template <>
struct EnumTraits<VORN_Existence> {
  using Enum = VORN_Existence;
  static constexpr char kName[] = "Existence";
  static constexpr const char* kDoc = "Whether a point exists. EMPTY is an attribute without a text.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"EMPTY", Enum::Empty},
      EnumMember<Enum>{"FALSE", Enum::False},
      EnumMember<Enum>{"TRUE", Enum::True},
  };
};

template <>
struct EnumTraits<VornComposedPnt::ComponentType> {
  using Enum = VornComposedPnt::ComponentType;
  static constexpr char kName[] = "ComponentType";
  static constexpr const char* kDoc = "Kind of surface that leads to a point.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"ROADBED_FILL", Enum::RoadbedFill},
      EnumMember<Enum>{"ROADBED_CUT", Enum::RoadbedCut},
      EnumMember<Enum>{"SLOPE_FILL", Enum::SlopeFill},
      EnumMember<Enum>{"SLOPE_CUT", Enum::SlopeCut},
      EnumMember<Enum>{"BERM_FILL", Enum::BermFill},
      EnumMember<Enum>{"BERM_CUT", Enum::BermCut},
      EnumMember<Enum>{"OTHER", Enum::Other},
      EnumMember<Enum>{"ROADBED", Enum::Roadbed},
      EnumMember<Enum>{"SLOPE", Enum::Slope},
      EnumMember<Enum>{"BERM", Enum::Berm},
  };
};

template <>
struct EnumTraits<VornComposedPnt::SlopeType> {
  using Enum = VornComposedPnt::SlopeType;
  static constexpr char kName[] = "SlopeType";
  static constexpr const char* kDoc = "How y is read in edition 2.0: as a grade in percent or as a slope ratio.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"PERCENT", Enum::Percent},
      EnumMember<Enum>{"RATE", Enum::Rate},
  };
};

template <>
struct EnumTraits<VornComposedPnt::DataType> {
  using Enum = VornComposedPnt::DataType;
  static constexpr char kName[] = "DataType";
  static constexpr const char* kDoc = "How x and y are read from edition 4.0 on.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"WIDTH_HEIGHT", Enum::WidthHeight},
      EnumMember<Enum>{"PERCENT", Enum::Percent},
      EnumMember<Enum>{"RATE", Enum::Rate},
  };
};

template <>
struct EnumTraits<VornComposedPnt::ElementType> {
  using Enum = VornComposedPnt::ElementType;
  static constexpr char kName[] = "ElementType";
  static constexpr const char* kDoc = "Finer kind of road element.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"CARRIAGEWAY", Enum::Carriageway},
      EnumMember<Enum>{"MEDIAN", Enum::Median},
      EnumMember<Enum>{"SHOULDER", Enum::Shoulder},
      EnumMember<Enum>{"STOPPING_LANE", Enum::StoppingLane},
      EnumMember<Enum>{"SIDEWALK", Enum::Sidewalk},
      EnumMember<Enum>{"PLANTING_STRIP", Enum::PlantingStrip},
      EnumMember<Enum>{"FRONTAGE_ROAD", Enum::FrontageRoad},
      EnumMember<Enum>{"TRACK_BED", Enum::TrackBed},
      EnumMember<Enum>{"SEPARATOR", Enum::Separator},
      EnumMember<Enum>{"MARGINAL_STRIP", Enum::MarginalStrip},
      EnumMember<Enum>{"SUBGRADE", Enum::Subgrade},
      EnumMember<Enum>{"ROAD_BODY", Enum::RoadBody},
      EnumMember<Enum>{"EXCAVATION", Enum::Excavation},
      EnumMember<Enum>{"SLOPE_FILL", Enum::SlopeFill},
      EnumMember<Enum>{"SLOPE_CUT", Enum::SlopeCut},
      EnumMember<Enum>{"BERM_FILL", Enum::BermFill},
      EnumMember<Enum>{"BERM_CUT", Enum::BermCut},
      EnumMember<Enum>{"RETAINING_WALL", Enum::RetainingWall},
      EnumMember<Enum>{"SIDE_DITCH", Enum::SideDitch},
      EnumMember<Enum>{"PAVEMENT", Enum::Pavement},
      EnumMember<Enum>{"OTHER", Enum::Other},
      EnumMember<Enum>{"LEVEE_CROWN", Enum::LeveeCrown},
      EnumMember<Enum>{"EARTHWORK_SURFACE_FILL", Enum::EarthworkSurfaceFill},
  };
};

template <>
struct EnumTraits<TargetPntCategory> {
  using Enum = TargetPntCategory;
  static constexpr char kName[] = "FormCategory";
  static constexpr const char* kDoc = "What a build form is for.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"NONE", Enum::None},
      EnumMember<Enum>{"STRUCTURE", Enum::Structure},
  };
};

template <>
struct EnumTraits<VornFormCtrlTarget::WorkType> {
  using Enum = VornFormCtrlTarget::WorkType;
  static constexpr char kName[] = "WorkType";
  static constexpr const char* kDoc = "Work that a control target is for.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"CUT_WORK", Enum::CutWork},
      EnumMember<Enum>{"FILL_WORK", Enum::FillWork},
  };
};

template <>
struct EnumTraits<VornFormCtrlTarget::ControlItem> {
  using Enum = VornFormCtrlTarget::ControlItem;
  static constexpr char kName[] = "ControlItem";
  static constexpr const char* kDoc = "What a control target measures.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"SLOPE_LENGTH", Enum::SlopeLength},
      EnumMember<Enum>{"WIDTH", Enum::Width},
      EnumMember<Enum>{"HEIGHT", Enum::Height},
      EnumMember<Enum>{"THICKNESS", Enum::Thickness},
      EnumMember<Enum>{"DEPTH", Enum::Depth},
      EnumMember<Enum>{"XSECT_AREA", Enum::XSectArea},
      EnumMember<Enum>{"LENGTH", Enum::Length},
      EnumMember<Enum>{"AREA", Enum::Area},
  };
};

template <>
struct EnumTraits<VornFormCtrlTarget::TargetPntType> {
  using Enum = VornFormCtrlTarget::TargetPntType;
  static constexpr char kName[] = "TargetPointType";
  static constexpr const char* kDoc = "Which pair of points bounds a measurement.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"SHOULDER_TOE", Enum::ShoulderToe}, EnumMember<Enum>{"TOE_SHOULDER", Enum::ToeShoulder},
      EnumMember<Enum>{"INNER_OUTER", Enum::InnerOuter},   EnumMember<Enum>{"LEFT_RIGHT", Enum::LeftRight},
      EnumMember<Enum>{"TARGET_POINT", Enum::TargetPnt},   EnumMember<Enum>{"UPPER_LOWER", Enum::UpperLower},
      EnumMember<Enum>{"LOWER_UPPER", Enum::LowerUpper},
  };
};

template <>
struct EnumTraits<VornStructureType::Type> {
  using Enum = VornStructureType::Type;
  static constexpr char kName[] = "Work";
  static constexpr const char* kDoc = "Kind of construction work that a document describes.";
  static constexpr Enum kUnset = Enum::Unknown;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"ROAD_EARTHWORK", Enum::RoadEarthwork},
      EnumMember<Enum>{"RIVER_COAST_EROSION_CONTROL", Enum::RiverCoastErosionControl},
      EnumMember<Enum>{"ROAD_PAVEMENT", Enum::RoadPavement},
      EnumMember<Enum>{"RIVER_PAVEMENT", Enum::RiverPavement},
      EnumMember<Enum>{"ROAD_BURIED_STRUCTURE", Enum::RoadBuriedStructure},
      EnumMember<Enum>{"OTHER", Enum::Other},
      EnumMember<Enum>{"MAFF_COMMON_EARTHWORK", Enum::MaffCommonEarthwork},
      EnumMember<Enum>{"MAFF_PIPELINE", Enum::MaffPipeline},
      EnumMember<Enum>{"MAFF_FARM_FIELD", Enum::MaffFarmField},
  };
};

template <>
struct EnumTraits<VornRoadInfo::Classificat> {
  using Enum = VornRoadInfo::Classificat;
  static constexpr char kName[] = "RoadClass";
  static constexpr const char* kDoc = "Class of a road under the road structure ordinance: type and class.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"TYPE1_CLASS1", Enum::Type1Class1}, EnumMember<Enum>{"TYPE1_CLASS2", Enum::Type1Class2},
      EnumMember<Enum>{"TYPE1_CLASS3", Enum::Type1Class3}, EnumMember<Enum>{"TYPE1_CLASS4", Enum::Type1Class4},
      EnumMember<Enum>{"TYPE2_CLASS1", Enum::Type2Class1}, EnumMember<Enum>{"TYPE2_CLASS2", Enum::Type2Class2},
      EnumMember<Enum>{"TYPE3_CLASS1", Enum::Type3Class1}, EnumMember<Enum>{"TYPE3_CLASS2", Enum::Type3Class2},
      EnumMember<Enum>{"TYPE3_CLASS3", Enum::Type3Class3}, EnumMember<Enum>{"TYPE3_CLASS4", Enum::Type3Class4},
      EnumMember<Enum>{"TYPE3_CLASS5", Enum::Type3Class5}, EnumMember<Enum>{"TYPE4_CLASS1", Enum::Type4Class1},
      EnumMember<Enum>{"TYPE4_CLASS2", Enum::Type4Class2}, EnumMember<Enum>{"TYPE4_CLASS3", Enum::Type4Class3},
      EnumMember<Enum>{"TYPE4_CLASS4", Enum::Type4Class4},
  };
};

template <>
struct EnumTraits<VornRoadInfo::ClassRiver> {
  using Enum = VornRoadInfo::ClassRiver;
  static constexpr char kName[] = "RiverClass";
  static constexpr const char* kDoc = "Class of a river.";
  static constexpr Enum kUnset = Enum::None;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"CLASS1", Enum::Class1},
      EnumMember<Enum>{"CLASS2", Enum::Class2},
  };
};

template <>
struct EnumTraits<VornRoadInfo::DesignSpeed> {
  using Enum = VornRoadInfo::DesignSpeed;
  static constexpr char kName[] = "DesignSpeed";
  static constexpr const char* kDoc = "Design speed in km/h.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"KMH120", Enum::Kmh120}, EnumMember<Enum>{"KMH100", Enum::Kmh100},
      EnumMember<Enum>{"KMH80", Enum::Kmh80},   EnumMember<Enum>{"KMH60", Enum::Kmh60},
      EnumMember<Enum>{"KMH50", Enum::Kmh50},   EnumMember<Enum>{"KMH40", Enum::Kmh40},
      EnumMember<Enum>{"KMH30", Enum::Kmh30},   EnumMember<Enum>{"KMH20", Enum::Kmh20},
  };
};

template <>
struct EnumTraits<VornCrsData::GeoDatum> {
  using Enum = VornCrsData::GeoDatum;
  static constexpr char kName[] = "GeodeticDatum";
  static constexpr const char* kDoc = "Horizontal geodetic datum.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"JGD2000", Enum::Jgd2000},
      EnumMember<Enum>{"TOKYO", Enum::Tokyo},
      EnumMember<Enum>{"WORLD", Enum::World},
      EnumMember<Enum>{"JGD2011", Enum::Jgd2011},
  };
};

template <>
struct EnumTraits<VornCrsData::HorizonCoordinate> {
  using Enum = VornCrsData::HorizonCoordinate;
  static constexpr char kName[] = "HorizontalCoordinates";
  static constexpr const char* kDoc = "Plane rectangular system of Japan, or latitude and longitude.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"PLANE1", Enum::Plane1},   EnumMember<Enum>{"PLANE2", Enum::Plane2},
      EnumMember<Enum>{"PLANE3", Enum::Plane3},   EnumMember<Enum>{"PLANE4", Enum::Plane4},
      EnumMember<Enum>{"PLANE5", Enum::Plane5},   EnumMember<Enum>{"PLANE6", Enum::Plane6},
      EnumMember<Enum>{"PLANE7", Enum::Plane7},   EnumMember<Enum>{"PLANE8", Enum::Plane8},
      EnumMember<Enum>{"PLANE9", Enum::Plane9},   EnumMember<Enum>{"PLANE10", Enum::Plane10},
      EnumMember<Enum>{"PLANE11", Enum::Plane11}, EnumMember<Enum>{"PLANE12", Enum::Plane12},
      EnumMember<Enum>{"PLANE13", Enum::Plane13}, EnumMember<Enum>{"PLANE14", Enum::Plane14},
      EnumMember<Enum>{"PLANE15", Enum::Plane15}, EnumMember<Enum>{"PLANE16", Enum::Plane16},
      EnumMember<Enum>{"PLANE17", Enum::Plane17}, EnumMember<Enum>{"PLANE18", Enum::Plane18},
      EnumMember<Enum>{"PLANE19", Enum::Plane19}, EnumMember<Enum>{"GEODETIC", Enum::Geodetic},
  };
};

template <>
struct EnumTraits<VornCtrlClass> {
  using Enum = VornCtrlClass;
  static constexpr char kName[] = "ControlPointClass";
  static constexpr const char* kDoc = "Class of a horizontal control point.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"GNSS_STATION", Enum::GnssStation},
      EnumMember<Enum>{"FIRST_ORDER", Enum::FirstOrder},
      EnumMember<Enum>{"SECOND_ORDER", Enum::SecondOrder},
      EnumMember<Enum>{"THIRD_ORDER", Enum::ThirdOrder},
      EnumMember<Enum>{"FOURTH_ORDER", Enum::FourthOrder},
      EnumMember<Enum>{"GRADE1", Enum::Grade1},
      EnumMember<Enum>{"GRADE2", Enum::Grade2},
      EnumMember<Enum>{"GRADE3", Enum::Grade3},
      EnumMember<Enum>{"GRADE4", Enum::Grade4},
  };
};

template <>
struct EnumTraits<VornBMClass> {
  using Enum = VornBMClass;
  static constexpr char kName[] = "BenchMarkClass";
  static constexpr const char* kDoc = "Class of a levelling bench mark.";
  static constexpr Enum kUnset = Enum::Unset;
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"FIRST_ORDER", Enum::FirstOrder}, EnumMember<Enum>{"SECOND_ORDER", Enum::SecondOrder},
      EnumMember<Enum>{"THIRD_ORDER", Enum::ThirdOrder}, EnumMember<Enum>{"GRADE1", Enum::Grade1},
      EnumMember<Enum>{"GRADE2", Enum::Grade2},          EnumMember<Enum>{"GRADE3", Enum::Grade3},
      EnumMember<Enum>{"GRADE4", Enum::Grade4},          EnumMember<Enum>{"SIMPLE", Enum::Simple},
  };
};

template <>
struct EnumTraits<VornProjectData::ProjPhase> {
  using Enum = VornProjectData::ProjPhase;
  static constexpr char kName[] = "ProjectPhase";
  static constexpr const char* kDoc = "Phase of a project.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"OUTLINE", Enum::Outline},
      EnumMember<Enum>{"PRELIMINARY", Enum::Preliminary},
      EnumMember<Enum>{"DETAILED", Enum::Detailed},
      EnumMember<Enum>{"CONSTRUCTION", Enum::Construction},
  };
};

template <>
struct EnumTraits<VornFormCtrl::CtrlMarkType> {
  using Enum = VornFormCtrl::CtrlMarkType;
  static constexpr char kName[] = "MarkType";
  static constexpr const char* kDoc = "Series of labels that mark points.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"DIGITS", Enum::Digits},
      EnumMember<Enum>{"CAPITALS", Enum::Capitals},
      EnumMember<Enum>{"SMALL_LETTERS", Enum::SmallLetters},
  };
};

template <>
struct EnumTraits<vorn_host::Edition> {
  using Enum = vorn_host::Edition;
  static constexpr char kName[] = "Edition";
  static constexpr const char* kDoc = "Edition of the exchange documents; ROAD_GEOMETRY cannot be written.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"V2_0", Enum::V20, "2.0"},
      EnumMember<Enum>{"V4_0", Enum::V40, "4.0"},
      EnumMember<Enum>{"V4_1", Enum::V41, "4.1"},
      EnumMember<Enum>{"MAFF_1_0", Enum::Maff10, "maff-1.0"},
      EnumMember<Enum>{"ROAD_GEOMETRY", Enum::RoadGm, "RoadGm"},
  };
};

template <>
struct EnumTraits<vorn_host::TextEncoding> {
  using Enum = vorn_host::TextEncoding;
  static constexpr char kName[] = "Encoding";
  static constexpr const char* kDoc = "Encoding of a document to write.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"UTF_8", Enum::Utf8, "UTF-8"},
      EnumMember<Enum>{"SHIFT_JIS", Enum::ShiftJis, "Shift_JIS"},
  };
};

template <>
struct EnumTraits<vorn_host::Severity> {
  using Enum = vorn_host::Severity;
  static constexpr char kName[] = "Severity";
  static constexpr const char* kDoc = "An ERROR makes a document invalid, a NOTE does not.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"ERROR", Enum::Error, "error"},
      EnumMember<Enum>{"NOTE", Enum::Note, "note"},
  };
};

template <>
struct EnumTraits<vorn_host::SampleKind> {
  using Enum = vorn_host::SampleKind;
  static constexpr char kName[] = "SampleKind";
  static constexpr const char* kDoc = "Kind of work that a sample design describes.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"ROAD", Enum::Road, "road"},
      EnumMember<Enum>{"RIVER", Enum::River, "river"},
      EnumMember<Enum>{"FARM", Enum::Farm, "farm"},
  };
};

template <>
struct EnumTraits<vorn_host::CsvContent> {
  using Enum = vorn_host::CsvContent;
  static constexpr char kName[] = "TableContent";
  static constexpr const char* kDoc =
      "What the rows of a table are: points of the build forms, of the existing ground, or of control targets.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"POINTS", Enum::Points, "points"},
      EnumMember<Enum>{"GROUND", Enum::Ground, "ground"},
      EnumMember<Enum>{"TARGETS", Enum::Targets, "targets"},
  };
};

template <>
struct EnumTraits<vorn_host::Language> {
  using Enum = vorn_host::Language;
  static constexpr char kName[] = "Language";
  static constexpr const char* kDoc = "Language of a drawing's own words; texts of the design are never translated.";
  static constexpr std::array kMembers = {
      EnumMember<Enum>{"ENGLISH", Enum::English, "en"},
      EnumMember<Enum>{"JAPANESE", Enum::Japanese, "ja"},
  };
};

}  // namespace vorn_python
