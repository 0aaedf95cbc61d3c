#include <string>
#include <tuple>
#include <vector>

#include "python/src/binding.h"
#include "vorn/road/linear_xml_data.h"
#include "vorn/road/vertical_datum.h"

/// The road and survey data of a project.
namespace vorn_python {

namespace {

template <typename Type>
std::string NameOf(const Type& value) {
  return Quoted(value.GetName());
}

template <typename Type>
std::string NumberAndName(const Type& value) {
  return std::to_string(value.GetNumber()) + " " + Quoted(value.GetName());
}

// --- survey --------------------------------------------------------------------------------------------------------

void AddCoordinateSystem(py::module_& module) {
  using Crs = VornCrsData;
  auto cls =
      AddClass<Crs>(module, "CoordinateSystem", "A coordinate reference system. Alignments refer to it by its name.");
  cls.def(py::init([] { return Alone(Crs()); }));
  Property(cls, "name", &Crs::GetName, &Crs::SetName, "Name of the system.");
  Property(cls, "geodetic_datum", &Crs::GetGeoDatum, &Crs::SetGeoDatum, "Horizontal geodetic datum.");
  Property(cls, "vertical_datum", &Crs::VerticalDatum, &Crs::SetVerticalDatum, "Designation of the vertical datum.");
  Property(cls, "vertical_height", &Crs::GetVerticalHeight, &Crs::SetVerticalHeight,
           "Length in metres that goes with the vertical datum.");
  Property(cls, "coordinates", &Crs::GetHorizonCoordinate, &Crs::SetHorizonCoordinate,
           "Plane rectangular system, or latitude and longitude.");
  Property(cls, "aux_code", &Crs::GetAuxCode, &Crs::SetAuxCode, "A code kept for applications.");
  Property(cls, "aux_text", &Crs::GetAuxText, &Crs::SetAuxText, "A text kept for applications.");
  ReadOnly(
      cls, "datum_code", [](const Crs& crs) { return crs.HorizontalDatum(); },
      "Code of the horizontal datum, such as JGD2011.");
  ReadOnly(
      cls, "system_code", [](const Crs& crs) { return crs.CoordinateSystem(); },
      "Code of the plane rectangular system, such as 9(X,Y).");
  Repr(cls, [](const Crs& crs) { return Quoted(crs.GetName()); });
}

void AddSurveyPoints(py::module_& module) {
  using Point = VornCtrlPoint;
  auto point = AddClass<Point>(module, "ControlPoint", "A horizontal control point.");
  point.def(py::init([] { return Alone(Point()); }));
  Property(point, "number", &Point::GetNumber, &Point::SetNumber, "Identifier within the collection.");
  Property(point, "name", &Point::GetName, &Point::SetName, "Name of the point.");
  Property(point, "point_class", &Point::GetCtrlClass, &Point::SetCtrlClass, "Class of the point.");

  Repr(point, &NumberAndName<Point>);

  using Mark = VornBenchMark;
  auto mark = AddClass<Mark>(module, "BenchMark", "A levelling bench mark.");
  mark.def(py::init([] { return Alone(Mark()); }));
  Property(mark, "number", &Mark::GetNumber, &Mark::SetNumber, "Identifier within the collection.");
  Property(mark, "name", &Mark::GetName, &Mark::SetName, "Name of the bench mark.");
  Property(mark, "point_class", &Mark::GetBMClass, &Mark::SetBMClass, "Class of the bench mark.");

  Repr(mark, &NumberAndName<Mark>);

  using Ground = VornGmPnt;
  auto ground = AddClass<Ground>(module, "SurveyPoint", "A ground point, by its number and its name.");
  ground.def(py::init([] { return Alone(Ground()); }));
  Property(ground, "number", &Ground::GetNumber, &Ground::SetNumber, "Identifier within the group.");
  Property(ground, "name", &Ground::GetName, &Ground::SetName, "Name of the point.");
  Repr(ground, &NumberAndName<Ground>);
  BindSequence<VornGmPntArray>(module, "SurveyPoints", "The points of a survey group.");

  using Group = VornGmPnts;
  auto group = AddClass<Group>(module, "SurveyGroup", "A group of ground points, with two names.");
  group.def(py::init([] { return Alone(Group()); }));
  Property(group, "name", &Group::GetName, &Group::SetName, "Name of the group.");
  Property(group, "name2", &Group::GetName2, &Group::SetName2, "Second name of the group.");
  Collection(
      group, "points", [](Group & value) -> auto& { return value.GetPoints(); }, "The points.");
  Repr(group, [](const Group& value) {
    return Quoted(value.GetName()) + ", " + std::to_string(value.GetPoints().GetSize()) + " points";
  });
}

void AddControlPoints(py::module_& module) {
  using Points = VornCtrlPoints;
  auto cls = AddClass<Points>(module, "ControlPoints", "The survey control points of a site.");
  Property(cls, "name", &Points::GetName, &Points::SetName, "Name of the site's points.");
  Collection(
      cls, "horizontal_points", [](Points & points) -> auto& { return points.GetCtrlPos(); },
      "Horizontal control points.");
  Collection(
      cls, "bench_marks", [](Points & points) -> auto& { return points.GetBenchMarks(); }, "Levelling bench marks.");
  Collection(
      cls, "groups", [](Points & points) -> auto& { return points.GetGmPnts(); }, "Groups of ground points.");
  Repr(cls, &NameOf<Points>);
}

// --- road geometry -------------------------------------------------------------------------------------------------

void AddRoadInfo(py::module_& module) {
  using Road = VornRoadInfo;
  auto cls = AddClass<Road>(module, "RoadInfo", "What a road is: its class, its design speed, its traffic class.");
  Property(cls, "name", &Road::GetName, &Road::SetName, "Name of the road.");
  Property(cls, "road_class", &Road::GetClassificat, &Road::SetClassificat, "Class of the road.");
  Property(cls, "river_class", &Road::GetClassRiver, &Road::SetClassRiver,
           "Class of the river, which takes the place of the road class in river works; not part of projects.");
  Attribute(
      cls, "design_speed", [](const Road& road) { return road.GetSpeed(); },
      [](Road& road, Road::DesignSpeed speed) { road.SetDesignSpeed(speed); }, "Design speed.");
  Attribute(
      cls, "speed_kmh", [](const Road& road) { return road.Speed() < 0 ? std::nullopt : std::optional(road.Speed()); },
      [](Road& road, std::optional<std::int32_t> kmh) {
        if (!kmh) return road.SetDesignSpeed(Road::DesignSpeed::Unset);
        if (!road.SetSpeed(*kmh)) throw py::value_error(std::to_string(*kmh) + " km/h is none of the design speeds");
      },
      "Design speed in km/h; None when it is unset.");
  Property(cls, "traffic_class", &Road::GetTraffic, &Road::SetTraffic, "Traffic class.");
  ReadOnly(
      cls, "road_class_text", [](const Road& road) { return road.GetClassificatRoad(); },
      "Text of the road class, such as 第3種第2級.");
  Repr(cls, &NameOf<Road>);
}

constexpr auto kAlignments = [](VornRoadGmData & road) -> auto& { return road.GetAlignments(); };

void AddAlignment(py::module_& module) {
  using Alignment = VornAlignment;
  auto cls = AddClass<Alignment>(module, "Alignment", "A road alignment with its cross sections.");
  cls.def(py::init([](const CString& name) {
            Alignment alignment;
            alignment.SetName(name);
            return Alone(std::move(alignment));
          }),
          py::arg("name") = CString(), "An alignment that stands alone, until it is added to a road geometry.");
  Property(cls, "name", &Alignment::GetName, &Alignment::SetName, "Name of the alignment.");
  Property(cls, "crs_name", &Alignment::GetCrsName, &Alignment::SetCrsName, "Name of its coordinate system.");
  Property(cls, "aux_text", &Alignment::GetAuxText, &Alignment::SetAuxText, "A text kept for applications.");
  Member(
      cls, "section_set", [](Alignment & alignment) -> auto& { return alignment.GetXSections(); },
      "The set of cross sections. While the project's design is given out, it is there and not here.");
  Attribute(
      cls, "dates", [](const Alignment& alignment) { return alignment.GetUpDate().GetDates(); },
      [](Alignment& alignment, const VornUpDate::Dates& dates) { alignment.GetUpDate().GetDates() = dates; },
      "Three dates kept for applications.");
  Repr(cls, [](const Alignment& alignment) {
    return Quoted(alignment.GetName()) + ", " + std::to_string(alignment.GetXSections().GetXSectionArray().GetSize()) +
           " sections";
  });
}

void AddRoadGeometry(py::module_& module) {
  using Road = VornRoadGmData;
  auto cls = AddClass<Road>(module, "RoadGeometry", "The road, its alignments and the kind of work.");
  Member(
      cls, "road", [](Road & road) -> auto& { return road.GetRoadInfo(); }, "What the road is.");
  Collection(cls, "alignments", kAlignments, "The alignments.");
  ElementAttribute(
      cls, "current_alignment",
      [](Element<Road>& e) {
        const VornAlignmentsArray& alignments = e.Read().GetAlignments();
        const int index = alignments.GetCurrent();
        return ItemOrNone(e, kAlignments, alignments.IsRange(index) ? index : -1);
      },
      [](Element<Road>& e, const std::optional<Ref<VornAlignment>>& alignment) {
        const int index = alignment ? CollectionOf(e, kAlignments)->IndexOf(py::cast(*alignment)) : -1;
        e.Change().GetAlignments().SetCurrent(index);
      },
      "The current alignment, one of `alignments`; None for none.");
  Collection(
      cls, "file_infos", [](Road & road) -> auto& { return road.GetFileInfos(); },
      "When the design was created and changed.");
  Member(
      cls, "structure_type", [](Road & road) -> auto& { return road.GetStructureType(); }, "The kind of work.");
  Property(cls, "text", &Road::GetText, &Road::SetText, "A text kept for applications.");
  Repr(cls, [](const Road& road) {
    return Quoted(road.GetRoadInfo().GetName()) + ", " + std::to_string(road.GetAlignments().GetSize()) + " alignments";
  });
}

// --- the parts of a project ----------------------------------------------------------------------------------------

template <std::size_t kIndex>
void AddControlName(Class<VornFormCtrl>& cls, const char* name, const char* doc) {
  Attribute(
      cls, name, [](const VornFormCtrl& control) { return CString(control.GetNames()[kIndex]); },
      [](VornFormCtrl& control, const CString& text) { control.GetNames()[kIndex] = text; }, doc);
}

template <std::size_t kIndex>
void AddMark(Class<VornFormCtrl>& cls, const char* name, const char* doc) {
  Attribute(
      cls, name, [](const VornFormCtrl& control) { return control.GetMarks()[kIndex]; },
      [](VornFormCtrl& control, VornFormCtrl::CtrlMarkType mark) { control.GetMarks()[kIndex] = mark; }, doc);
}

void AddControlItemNames(py::module_& module) {
  using Control = VornFormCtrl;
  auto cls = AddClass<Control>(module, "ControlItemNames",
                               "How the as-built control items are called and their points marked.");
  AddControlName<Control::RoadCenter>(cls, "road_center", "Name for the centre of the road.");
  AddControlName<Control::RoadLeft>(cls, "road_left", "Name for the left of the road.");
  AddControlName<Control::RoadRight>(cls, "road_right", "Name for the right of the road.");
  AddControlName<Control::SlopeLeft>(cls, "slope_left", "Name for slopes on the left.");
  AddControlName<Control::SlopeRight>(cls, "slope_right", "Name for slopes on the right.");
  AddControlName<Control::RoadSurface>(cls, "road_surface", "Name for the road surface.");
  AddControlName<Control::BermLeft>(cls, "berm_left", "Name for berms on the left.");
  AddControlName<Control::BermRight>(cls, "berm_right", "Name for berms on the right.");
  AddControlName<Control::OtherLeft>(cls, "other_left", "Name for other items on the left.");
  AddControlName<Control::OtherRight>(cls, "other_right", "Name for other items on the right.");
  AddMark<Control::SlopeMarks>(cls, "slope_marks", "Labels that mark the points of slopes.");
  AddMark<Control::BermMarks>(cls, "berm_marks", "Labels that mark the points of berms.");
  AddMark<Control::RoadMarks>(cls, "road_marks", "Labels that mark the points of the road.");
  AddMark<Control::OtherMarks>(cls, "other_marks", "Labels that mark other points.");
  Repr(cls, [](const Control&) { return std::string(); });
}

void AddConstruction(py::module_& module) {
  using Info = VornInfoConstrcut;
  auto cls = AddClass<Info>(module, "ConstructionInfo",
                            "Coordinate systems, survey control points, road geometry, and the names of the as-built\n"
                            "control items.");
  Collection(
      cls, "coordinate_systems", [](Info & info) -> auto& { return info.GetCrsArray(); },
      "The coordinate reference systems.");
  Member(
      cls, "control_points", [](Info & info) -> auto& { return info.GetCtrlPoints(); }, "The survey control points.");
  Member(
      cls, "road_geometry", [](Info & info) -> auto& { return info.GetRoadGm(); }, "The road geometry.");
  Member(
      cls, "control_names", [](Info & info) -> auto& { return info.GetFormCtrl(); },
      "How the as-built control items are called.");
  Repr(cls, [](const Info& info) { return "of " + Quoted(info.GetRoadGm().GetRoadInfo().GetName()); });
}

void AddProjectInfo(py::module_& module) {
  using Creator = VornCreatorInfoData;
  auto creator = AddClass<Creator>(module, "Creator", "Who made the data.");
  creator.def(py::init([] { return Alone(Creator()); }));
  Property(creator, "name", &Creator::GetName, &Creator::SetName, "Name of the creator.");
  Property(creator, "text", &Creator::GetText, &Creator::SetText, "A free text.");
  Repr(creator, &NameOf<Creator>);
  BindSequence<VornCreatorInfoArray>(module, "Creators", "Who made the data of a project.");

  using Info = VornProjectData;
  auto cls = AddClass<Info>(module, "ProjectInfo", "Name, date and phase of a project, and who made its data.");
  Property(cls, "name", &Info::GetName, &Info::SetName, "Name of the project.");
  Property(cls, "date", &Info::GetDate, &Info::SetDate, "Date of the project, to the second.");
  Property(cls, "phase", &Info::GetProjPhase, &Info::SetProjPhase, "Phase of the project.");
  Property(cls, "text", &Info::GetText, &Info::SetText, "A free text.");
  Collection(
      cls, "creators", [](Info & info) -> auto& { return info.GetCreators(); }, "Who made the data.");
  Repr(cls, &NameOf<Info>);
}

void AddRoadCenter(py::module_& module) {
  using Center = VornRoadCenterData;
  auto cls = AddClass<Center>(module, "RoadCenter",
                              "The project itself, coordinate systems, groups of ground points, and road geometry.");
  Member(
      cls, "project", [](Center & center) -> auto& { return center.GetProject(); }, "The project itself.");
  Collection(
      cls, "coordinate_systems", [](Center & center) -> auto& { return center.GetCrsArray(); },
      "The coordinate reference systems.");
  Collection(
      cls, "groups", [](Center & center) -> auto& { return center.GetGmPnts(); }, "Groups of ground points.");
  Member(
      cls, "road_geometry", [](Center & center) -> auto& { return center.GetRoadGm(); }, "The road geometry.");
  Repr(cls, [](const Center& center) { return "of " + Quoted(center.GetProject().GetName()); });
}

void AddRoadData(py::module_& module) {
  using Data = VornLinearXMLData;
  auto cls = AddClass<Data>(module, "RoadData", "All road and survey data of a project.");
  Member(
      cls, "construction", [](Data & data) -> auto& { return data.GetInfoConstrcut(); },
      "The construction information.");
  Member(
      cls, "road_center", [](Data & data) -> auto& { return data.GetRoadCenter(); }, "The road-centre data.");
  Member(
      cls, "land_xml", [](Data & data) -> auto& { return data.GetLandXml(); }, "What the export to LandXML is set to.");
  Repr(cls, [](const Data& data) { return "of " + Quoted(data.GetRoadCenter().GetProject().GetName()); });
}

}  // namespace

void AddRoad(py::module_& module) {
  AddCoordinateSystem(module);
  BindSequence<VornCrsArray>(module, "CoordinateSystems", "The coordinate reference systems of a project.");
  AddSurveyPoints(module);
  BindSequence<VornCtrlPosArray>(module, "HorizontalPoints", "The horizontal control points of a site.");
  BindSequence<VornBenchMkArray>(module, "BenchMarks", "The bench marks of a site.");
  BindSequence<VornGmPntsArray>(module, "SurveyGroups", "The groups of ground points of a site.");
  AddControlPoints(module);
  AddRoadInfo(module);
  AddAlignment(module);
  BindSequence<VornAlignmentsArray>(module, "Alignments", "The alignments of a road geometry.");
  AddRoadGeometry(module);
  AddControlItemNames(module);
  AddConstruction(module);
  AddProjectInfo(module);
  AddRoadCenter(module);
  AddLandXml(module);
  AddRoadData(module);
  module.def(
      "vertical_datums",
      [] {
        std::vector<std::tuple<std::string, std::string, double>> datums;
        for (const VornVerticalDatum& datum : kVornVerticalDatums) {
          datums.emplace_back(vorn_host::ToUtf8(datum.name), vorn_host::ToUtf8(datum.designation), datum.height);
        }
        return datums;
      },
      "The vertical datums of Japan: the body of water, the designation (`CoordinateSystem.vertical_datum`), and the\n"
      "height of the zero above that of Tokyo Bay in metres. Two have the designation A.P.");
}

}  // namespace vorn_python
