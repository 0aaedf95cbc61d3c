#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "python/src/binding.h"
#include "python/src/point_arrays.h"
#include "python/src/row.h"
#include "vorn/framework/tolerance.h"
#include "vorn/model/file_info.h"
#include "vorn/model/x_sections.h"
#include "vorn/platform/sil_string.h"

/// Cross-section sets, cross sections, build forms, composed points and the existing ground.
namespace vorn_python {

namespace {

using PntType = VornComposedPnt::PntType;

std::string Metres(const NurReal& value) {
  return value.IsSet() ? std::string(vorn_host::ToUtf8(SilString::StrDouble(value.Value(), 4).View()))
                       : std::string("unset");
}

std::string DateText(const COleDateTime& date) {
  const py::object value = ToPythonDate(date);
  return value.is_none() ? "unset" : py::str(value).cast<std::string>();
}

// --- points --------------------------------------------------------------------------------------------------------

/// The elements of an array of the library as a list.
template <typename Array>
auto ListOf(const Array& array) {
  return std::vector<std::remove_cvref_t<decltype(array[0])>>(array.begin(), array.end());
}

template <typename Array, typename Item>
void Fill(Array& array, const std::vector<Item>& items) {
  array.RemoveAll();
  for (const Item& item : items) array.Add(item);
}

/// Names and describes the attributes of one of a point's two roles.
struct RoleNames {
  PntType role = PntType::Main;
  const char* prefix = "";  ///< of names
  const char* suffix = "";  ///< of descriptions

  [[nodiscard]] std::string Name(const char* name) const { return std::string(prefix) + name; }
  [[nodiscard]] std::string Doc(const char* text) const { return std::string(text) + suffix + "."; }
};

void AddRoleTexts(Class<VornComposedPnt>& cls, const RoleNames& names) {
  using Point = VornComposedPnt;
  const PntType role = names.role;
  Attribute(
      cls, names.Name("code").c_str(), [role](const Point& point) { return CString(point.GetCode(role)); },
      [role](Point& point, const CString& text) { point.SetCode(text, role); },
      names.Doc("Design code, the survey name").c_str());
  Attribute(
      cls, names.Name("xsect_name").c_str(), [role](const Point& point) { return CString(point.GetXSectName(role)); },
      [role](Point& point, const CString& text) { point.SetXSectName(text, role); },
      names.Doc("Cross-section name").c_str());
}

void AddRoleIdentifiers(Class<VornComposedPnt>& cls, const RoleNames& names) {
  using Point = VornComposedPnt;
  const PntType role = names.role;
  Attribute(
      cls, names.Name("xsect_type_id").c_str(), [role](const Point& point) { return point.GetXSectType(role); },
      [role](Point& point, std::uint32_t id) { point.SetXSectType(id, role); },
      names.Doc("Identifier of the cross-section (work) type, 0 for none").c_str());
  Attribute(
      cls, names.Name("xsect_name_id").c_str(), [role](const Point& point) { return point.GetXSectNameID(role); },
      [role](Point& point, std::uint32_t id) { point.SetXSectNameID(id, role); },
      names.Doc("Identifier of the cross-section name, 0 for none").c_str());
  Attribute(
      cls, names.Name("pair_id").c_str(),
      [role](const Point& point) { return AssignedOrNone(point.GetDekiPairID(role)); },
      [role](Point& point, std::optional<std::uint32_t> id) { point.SetDekiPairID(id.value_or(kVornNoID), role); },
      names.Doc("Identifier of the as-built pair, None for none").c_str());
  Attribute(
      cls, names.Name("form_id").c_str(), [role](const Point& point) { return AssignedOrNone(point.FormID(role)); },
      [role](Point& point, std::optional<std::uint32_t> id) { point.FormID(role) = id.value_or(kVornNoID); },
      names.Doc("Identifier of the build form that owns the point, None for none").c_str());
}

void AddRoleConnections(Class<VornComposedPnt>& cls, const RoleNames& names) {
  using Point = VornComposedPnt;
  const PntType role = names.role;
  Attribute(
      cls, names.Name("connects_to_previous").c_str(),
      [role](const Point& point) { return point.IsConnectionAutoLinePrev(role) != 0; },
      [role](Point& point, bool on) { point.SetConnectionAutoLinePrev(on ? 1 : 0, role); },
      names.Doc("Whether it connects to the previous point by itself").c_str());
  Attribute(
      cls, names.Name("connects_to_next").c_str(),
      [role](const Point& point) { return point.IsConnectionAutoLineNext(role) != 0; },
      [role](Point& point, bool on) { point.SetConnectionAutoLineNext(on ? 1 : 0, role); },
      names.Doc("Whether it connects to the next point by itself").c_str());
  Attribute(
      cls, names.Name("measurements").c_str(), [role](const Point& point) { return ListOf(point.Measure(role)); },
      [role](Point& point, const std::vector<VornMeasureInfo>& records) { Fill(point.Measure(role), records); },
      names.Doc("Measurement records, of two numbers each, as a list of its own").c_str());
}

void AddRole(Class<VornComposedPnt>& cls, const RoleNames& names) {
  AddRoleTexts(cls, names);
  AddRoleIdentifiers(cls, names);
  AddRoleConnections(cls, names);
}

void AddConnections(Class<VornComposedPnt>& cls) {
  using Point = VornComposedPnt;
  Property(cls, "connection_id", &Point::GetID, &Point::SetID, "Connection identifier, that of a crossing point.");
  Attribute(
      cls, "target_index", [](const Point& point) { return point.GetTargetIndex(); },
      [](Point& point, std::int32_t index) { point.SetTargetIndex(index); },
      "Index of the control target that uses the point, as the application counts.");
  Attribute(
      cls, "draw_pair_ids", [](const Point& point) { return ListOf(point.DrawPairIDs()); },
      [](Point& point, const std::vector<std::uint32_t>& ids) { Fill(point.DrawPairIDs(), ids); },
      "Identifiers of drawing entities paired with the point, as a list of its own.");
  Attribute(
      cls, "spatial_pair_ids", [](const Point& point) { return ListOf(point.ThDPairIDs()); },
      [](Point& point, const std::vector<std::uint32_t>& ids) { Fill(point.ThDPairIDs(), ids); },
      "Identifiers of the three-dimensional pairs that the point connects to, as a list of its own.");
  Attribute(
      cls, "connects_by_itself", [](const Point& point) { return point.IsAutoConnect() != 0; },
      [](Point& point, bool on) { point.SetAutoConnect(on ? 1 : 0); },
      "Whether the point is to be connected by itself.");
  Attribute(
      cls, "is_connected", [](const Point& point) { return point.IsConnected() != 0; },
      [](Point& point, bool on) { point.SetConnected(on ? 1 : 0); }, "Whether the point is connected.");
}

void AddPoint(py::module_& module) {
  using Point = VornComposedPnt;
  auto cls = AddClass<Point>(
      module, "ComposedPoint",
      "One vertex of a build form's polyline.\n\n"
      "Two input values, relative to the previous point, give its position: x and y are a width and a height\n"
      "difference (metres), a width and a grade in percent, or a height difference and a slope ratio. `slope_type`\n"
      "tells which in edition 2.0, `data_type` in later ones. `offset` and `height` are the position computed from\n"
      "them.");
  cls.def(py::init([](const CString& code, VornLocation side, NurReal x, NurReal y, Point::DataType dataType,
                      VORN_Existence existence) {
            Point point;
            if (!code.IsEmpty()) point.SetCode(code);
            point.SetLocation(side);
            point.SetX(x);
            point.SetY(y);
            point.SetDataType(dataType);
            point.SetExistence(existence);
            return Alone(std::move(point));
          }),
          py::arg("code") = CString(), py::arg("side") = py::none(), py::arg("x") = 0.0, py::arg("y") = 0.0,
          py::arg("data_type") = py::none(), py::arg("existence") = VORN_Existence::True,
          "A point that stands alone, until it is added to a form's `points`.");
  Property(cls, "x", &Point::GetX, &Point::SetX,
           "First input value: width, or height difference of a ratio point, in metres.");
  Property(cls, "y", &Point::GetY, &Point::SetY,
           "Second input value: height difference (metres), grade (percent) or slope ratio (horizontal per height).");
  Property(cls, "offset", &Point::GetCLDist, &Point::SetCLDist,
           "Computed horizontal distance from the centre line in metres, negative on the left.");
  Property(cls, "height", &Point::GetGh, &Point::SetGh, "Computed height in metres.");
  Property(cls, "ratio", &Point::GetRatio, &Point::SetRatio, "Derived slope ratio x / y.");
  Property(cls, "percent", &Point::GetPercent, &Point::SetPercent, "Derived grade y / x in percent.");
  Property(cls, "side", &Point::GetLocation, &Point::SetLocation, "Side of the centre line.");
  Property(cls, "existence", &Point::GetExistence, &Point::SetExistence, "Whether the point exists.");
  Property(cls, "component_type", &Point::GetComponentType, &Point::SetComponentType,
           "Kind of surface. Setting it keeps the former one in `former_component_type`.");
  ReadOnly(
      cls, "former_component_type", [](const Point& point) { return point.GetOldCmpType(); },
      "The component type before it was last set.");
  Property(cls, "slope_type", &Point::GetSlopeType, &Point::SetSlopeType, "How y is read in edition 2.0.");
  Property(cls, "data_type", &Point::GetDataType, &Point::SetDataType, "How x and y are read from edition 4.0 on.");
  Attribute(
      cls, "element_type", [](const Point& point) { return point.ElmType(); },
      [](Point& point, Point::ElementType type) { point.ElmType(type); }, "Finer kind of road element.");
  Property(cls, "goes_on", &Point::GetSeriesPnt, &Point::SetSeriesPnt,
           "Whether the polyline goes on through the point; False at a crossing with the existing ground.");
  ReadOnly(
      cls, "is_ke_point", [](const Point& point) { return point.IsKePoint(); }, "Whether it is a KE point.");
  ReadOnly(
      cls, "is_cross_point", [](const Point& point) { return point.IsCrossPoint(); },
      "Whether it is a crossing point.");
  AddRole(cls, {PntType::Main});
  AddRole(cls, {PntType::Sub, "sub_", ", in the second of two work types"});
  Property(cls, "control_flags", &Point::GetCtrlFlags, &Point::SetCtrlFlags, "A set of bits kept for applications.");
  Property(cls, "draw_id", &Point::GetDrawID, &Point::SetDrawID, "Identifier of the drawing entity.");
  Identifier(cls, "serial_id", &Point::GetSerialID, &Point::SetSerialID,
             "Running identifier within the form: 0 for a centre point, None when unassigned.");
  Identifier(cls, "origin_id", &Point::GetOrgID, &Point::SetOrgID, "Serial of the point that this was copied from.");
  Identifier(cls, "parent_id", &Point::GetParentID, &Point::SetParentID,
             "Serial of the parent form's point that this one hangs on.");
  AddConnections(cls);
  cls.def_property_readonly(
      "is_valid", [](Element<Point>& e) { return InEdition(e, [](Point& point) { return point.IsEnable(); }); },
      "Whether the point has a code and tells its existence.");
  Repr(cls, [](const Point& point) {
    return Quoted(point.GetCode()) + " offset " + Metres(point.GetCLDist()) + " height " + Metres(point.GetGh());
  });
}

// --- build forms ---------------------------------------------------------------------------------------------------

constexpr auto kPoints = [](VornBuildForm & form) -> auto& { return form.GetComposedPntArray(); };

template <typename Type, typename Points, typename Value>
void AddColumn(Class<Type>& cls, const char* name, Points points, Value value, const char* doc) {
  cls.def_property_readonly(
      name, [points, value](Element<Type>& form) { return PointArray(CollectionOf(form, points), value); }, doc);
}

void AddCrossing(py::module_& module) {
  using Info = VornCrossPointInfo;
  auto cls = AddClass<Info>(module, "Crossing", "Where a build form crosses another one on one side.");
  Property(cls, "offset", &Info::GetDist, &Info::SetDist,
           "Distance of the crossing from the centre line in metres; None when there is no crossing.");
  Property(cls, "id", &Info::GetID, &Info::SetID, "Connection identifier of the crossing point.");
  Repr(cls, [](const Info& info) { return "offset " + Metres(info.GetDist()); });
}

void AddForm(py::module_& module) {
  using Form = VornBuildForm;
  using Point = VornComposedPnt;
  auto cls = AddClass<Form>(module, "BuildForm",
                            "One form of a cross section: a named polyline of composed points, such as the road\n"
                            "surface with its slopes and berms, a pavement layer or a structure.");
  cls.def(py::init([](const CString& name, const CString& xsectType) {
            Form form;
            form.SetName(name, false);
            form.SetXSectType(xsectType);
            return Alone(std::move(form));
          }),
          py::arg("name") = CString(), py::arg("xsect_type") = CString(),
          "A form that stands alone, until it is added to a section's `forms`.");
  Attribute(
      cls, "name", [](const Form& form) { return CString(form.GetName()); },
      [](Form& form, const CString& name) { form.SetName(name, true); },
      "Name of the form. Setting it renames the form in its own control targets too.");
  Attribute(
      cls, "xsect_type", [](const Form& form) { return CString(form.GetXSectType()); },
      [](Form& form, const CString& type) { form.SetXSectType(type); }, "Text of the cross-section (work) type.");
  Identifier(cls, "serial_id", &Form::GetSerialID, &Form::SetSerialID,
             "Running identifier within the section: 0 for the design surface, None when unassigned.");
  Identifier(cls, "parent_id", &Form::GetParentID, &Form::SetParentID,
             "Serial of the form that this one is derived from; None for none.");
  Property(cls, "is_org_surface", &Form::IsOrgSurface, &Form::SetOrgSurface,
           "Whether this form takes over when the design surface is removed.");
  Property(cls, "category", &Form::GetCategory, &Form::SetCategory, "What the form is for.");
  Property(cls, "pave_set_index", &Form::GetPaveSetIdx, &Form::SetPaveSetIdx, "Index of the pavement set.");
  Flag(cls, "is_omitted", &Form::GetOmitFlag, &Form::SetOmitFlag,
       "Whether the form is left out of documents of every edition.");
  Flag(cls, "is_exported", &Form::GetExport, &Form::SetExport,
       "Whether the form is written to documents. Edition 2.0 writes every form, and writing it sets this for good.");
  Member(
      cls, "cross_left", [](Form & form) -> auto& { return form.GetCrossLeft(); }, "Crossing on the left.");
  Member(
      cls, "cross_right", [](Form & form) -> auto& { return form.GetCrossRight(); }, "Crossing on the right.");
  Collection(cls, "points", kPoints,
             "The points: first the start of the form (on a road surface the centre point), then those of both sides,\n"
             "each side from the centre outward.");
  Collection(
      cls, "targets", [](Form & form) -> auto& { return form.GetFormCtrlTargetArray(); },
      "Control targets in the form; editions from 4.0 on keep them in the set.");
  AddColumn(
      cls, "offsets", kPoints, [](const Point& point) -> const NurReal& { return point.GetCLDist(); },
      "Offsets of the points in metres, negative on the left, as a read-only array; NaN where unset.");
  AddColumn(
      cls, "heights", kPoints, [](const Point& point) -> const NurReal& { return point.GetGh(); },
      "Heights of the points in metres, as a read-only array; NaN where unset.");
  AddColumn(
      cls, "x", kPoints, [](const Point& point) -> const NurReal& { return point.GetX(); },
      "First input values of the points (`ComposedPoint.x`), as a read-only array; NaN where unset.");
  AddColumn(
      cls, "y", kPoints, [](const Point& point) -> const NurReal& { return point.GetY(); },
      "Second input values of the points (`ComposedPoint.y`), as a read-only array; NaN where unset.");
  ReadOnly(
      cls, "is_surface", [](const Form& form) { return form.IsSurface(); }, "Whether it is the design surface.");
  cls.def_property_readonly(
      "is_valid", [](Element<Form>& e) { return InEdition(e, [](Form& form) { return form.IsEnable(); }); },
      "Whether the form has a name and valid points and control targets.");
  cls.def(
      "find_point",
      [](Element<Form>& e, const CString& code) {
        return ItemOrNone(e, kPoints, e.Read().GetComposedPntArray().Find(code));
      },
      py::arg("code"), "The first point of that code (exactly); None when there is none.");
  cls.def(
      "recalc",
      [](Element<Form>& e, NurReal height) {
        EditInEdition(e, Rebuilds::Nothing, [&](Form& form) {
          NurReal planDist, planHeight;
          form.RegulateComposedPnt(height, planDist, planHeight);
        });
      },
      py::arg("center_height"),
      "Recomputes the positions of all points from their input values, as the design's edition reads them.\n\n"
      ":param center_height: height of the centre line in metres; None counts as 0");
  Repr(cls, [](const Form& form) {
    return Quoted(form.GetName()) + ", " + std::to_string(form.GetComposedPntArray().GetSize()) + " points";
  });
}

// --- existing ground -----------------------------------------------------------------------------------------------

void AddGroundPoint(py::module_& module) {
  using Point = VornExistingComposedPnt;
  auto point = AddClass<Point>(module, "GroundPoint", "One point of the existing ground.");
  point.def(py::init([](NurReal offset, NurReal height, const CString& name) {
              Point created;
              created.SetCLDist(offset);
              created.SetGh(height);
              created.SetName(name);
              return Alone(std::move(created));
            }),
            py::arg("offset") = py::none(), py::arg("height") = py::none(), py::arg("name") = CString(),
            "A point that stands alone, until it is added to a ground form's `points`.");
  Property(point, "offset", &Point::GetCLDist, &Point::SetCLDist,
           "Horizontal distance from the centre line in metres, negative on the left.");
  Property(point, "height", &Point::GetGh, &Point::SetGh, "Ground height in metres.");
  Property(point, "name", &Point::GetName, &Point::SetName, "Name of the point.");
  ReadOnly(
      point, "is_valid", [](const Point& value) { return value.IsEnable(); },
      "Whether offset and height are both set.");
  Repr(point,
       [](const Point& value) { return "offset " + Metres(value.GetCLDist()) + " height " + Metres(value.GetGh()); });
}

void AddGroundForm(py::module_& module) {
  using Point = VornExistingComposedPnt;
  using Form = VornExistingBuildForm;
  constexpr auto points = [](Form & form) -> auto& { return form.GetComposedPntArray(); };
  auto form = AddClass<Form>(module, "GroundForm", "The terrain before construction in one cross section.");
  form.def(py::init([](const CString& name) {
             Form created;
             created.SetName(name);
             return Alone(std::move(created));
           }),
           py::arg("name") = CString(), "A ground form that stands alone, until it is added to a section.");
  Property(form, "name", &Form::GetName, &Form::SetName, "Name of the ground form.");
  Collection(form, "points", points, "The points of the ground, from left to right.");
  AddColumn(
      form, "offsets", points, [](const Point& value) -> const NurReal& { return value.GetCLDist(); },
      "Offsets of the points in metres, negative on the left, as a read-only array; NaN where unset.");
  AddColumn(
      form, "heights", points, [](const Point& value) -> const NurReal& { return value.GetGh(); },
      "Heights of the points in metres, as a read-only array; NaN where unset.");
  ReadOnly(
      form, "is_valid", [](const Form& value) { return value.IsEnable(); },
      "Whether the form has a name and at least two valid points.");
  Repr(form, [](const Form& value) {
    return Quoted(value.GetName()) + ", " + std::to_string(value.GetComposedPntArray().GetSize()) + " points";
  });
}

// --- cross sections ------------------------------------------------------------------------------------------------

constexpr auto kForms = [](VornXSection & section) -> auto& { return section.GetBuildFormArray(); };

void AddSectionValues(Class<VornXSection>& cls) {
  using Section = VornXSection;
  Property(cls, "station", &Section::GetCumulativeDist, &Section::SetCumulativeDist,
           "Station: distance along the centre line in metres.");
  Property(cls, "name", &Section::GetName, &Section::SetName, "Name of the section, such as No.6.");
  Property(cls, "height", &Section::GetHeight, &Section::SetHeight,
           "Height of the centre line in metres. Documents do not hold it.");
  Property(cls, "is_control_section", &Section::GetControlSect, &Section::SetControlSect,
           "Whether this is an as-built control section.");
  Property(cls, "is_behind_change", &Section::GetXSectChg, &Section::SetXSectChg,
           "Whether this is the section behind a change of shape.");
  Property(cls, "shift_height", &Section::GetShiftGH, &Section::SetShiftGH, "Shift of the section upward in metres.");
  Property(cls, "shift_offset", &Section::GetShiftDist, &Section::SetShiftDist,
           "Shift of the section sideways in metres, negative to the left.");
  Property(cls, "direction_angle", &Section::GetDirectionAngle, &Section::SetDirectionAngle,
           "Direction angle as the document writes it.");
  Property(cls, "target_point_id", &Section::GetTargetPntID, &Section::SetTargetPntID,
           "Identifier of the target point.");
  Identifier(cls, "section_id", &Section::GetSectionID, &Section::SetSectionID,
             "Identifier in projects; None when unassigned.");
  Flag(cls, "writes_ground", &Section::GetExistingFlag, &Section::SetExistingFlag,
       "Whether the existing ground is in use and written to documents. Reading sets it.");
  Collection(cls, "forms", kForms, "The build forms: the design surface and those derived from it.");
  Collection(
      cls, "ground_forms", [](Section & section) -> auto& { return section.GetExistingBuildFormArray(); },
      "The forms of the existing ground.");
}

void AddSection(py::module_& module) {
  using Section = VornXSection;
  auto cls = AddClass<Section>(module, "CrossSection", "One design cross section at one station of the centre line.");
  cls.def(py::init([](NurReal station, const CString& name) {
            Section section;
            section.SetCumulativeDist(station);
            section.SetName(name);
            return Alone(std::move(section));
          }),
          py::arg("station") = py::none(), py::arg("name") = CString(),
          "A section that stands alone, until it is added to a set's `sections`.");
  AddSectionValues(cls);
  cls.def_property_readonly(
      "is_valid", [](Element<Section>& e) { return InEdition(e, [](Section& section) { return section.IsEnable(); }); },
      "Whether the station is set, and there is at least one form, each valid.");
  ReadOnly(
      cls, "has_ground", [](const Section& section) { return section.IsValidPres(); },
      "Whether the existing ground is in use and has points.");
  cls.def(
      "find_form",
      [](Element<Section>& e, const CString& name, const std::optional<CString>& code) {
        return ItemOrNone(e, kForms, e.Read().Find(name, code ? &*code : nullptr));
      },
      py::arg("name"), py::arg("code") = py::none(),
      "The first form of that name (exactly) that, when a code is given, has a point of that code; otherwise None.");
  cls.def(
      "recalc",
      [](Element<Section>& e, NurReal height) {
        EditInEdition(e, Rebuilds::Nothing, [&](Section& section) {
          NurReal planDist, planHeight;
          section.GetBuildFormArray().RegulateComposedPnt(height, planDist, planHeight);
        });
      },
      py::arg("center_height"),
      "Recomputes the positions of all points from their input values, as the design's edition reads them.\n\n"
      ":param center_height: height of the centre line in metres; None counts as 0");
  cls.def(
      "recalc_crossings",
      [](Element<Section>& e) {
        EditInEdition(e, Rebuilds::Collections, [](Section& section) { section.CalcCrossPoint(); });
      },
      "Recomputes the crossing points with the existing ground on both sides. The points have to be placed first.\n"
      "Forms and points are to be taken from the section again.");
  cls.def(
      "mirror",
      [](Element<Section>& e) { EditInEdition(e, Rebuilds::Collections, [](Section& section) { section.SwapLR(); }); },
      "Exchanges left and right. Forms and points are to be taken from the section again.\n"
      "`DesignEditor.mirror` keeps control targets and input values in step.");
  AddSectionDrawing(cls);
  Repr(cls, [](const Section& section) {
    return "station " + Metres(section.GetCumulativeDist()) + " " + Quoted(section.GetName()) + ", " +
           std::to_string(section.GetBuildFormArray().GetSize()) + " forms";
  });
}

// --- sets ----------------------------------------------------------------------------------------------------------

constexpr auto kSections = [](VornXSections & set) -> auto& { return set.GetXSectionArray(); };

/// Where a section belongs in the order of stations: behind those at the same station.
int PlaceInOrder(const Vorn_XSectionArray& sections, double station) {
  const auto isBehind = [&](const VornXSection& other) {
    return other.GetCumulativeDist().Value() - station >= kSameStation;
  };
  return static_cast<int>(std::find_if(sections.begin(), sections.end(), isBehind) - sections.begin());
}

void AddSet(py::module_& module) {
  using Set = VornXSections;
  auto cls = AddClass<Set>(module, "CrossSectionSet",
                           "The design cross sections of one road alignment and one vertical alignment, ordered by\n"
                           "station, with the set's own control targets.");
  cls.def(py::init([](const CString& alignment, const CString& vertical) {
            Set set;
            set.SetRefAlign(alignment);
            set.SetRefVertical(vertical);
            return Alone(std::move(set));
          }),
          py::arg("ref_align") = CString(), py::arg("ref_vertical") = CString(),
          "A set that stands alone, until it is added to a document's `sets`.");
  Property(cls, "ref_align", &Set::GetRefAlign, &Set::SetRefAlign, "Name of the road alignment.");
  Property(cls, "ref_vertical", &Set::GetRefVertical, &Set::SetRefVertical, "Name of the vertical alignment.");
  Property(cls, "project_phase", &Set::GetProjectPhase, &Set::SetProjectPhase, "Phase of the project.");
  Property(cls, "is_along_alignment", &Set::GetAlignment, &Set::SetAlignment,
           "Whether the sections stand along the alignment.");
  Collection(cls, "sections", kSections, "The cross sections, ordered by station.");
  Collection(
      cls, "targets", [](Set & set) -> auto& { return set.GetFormCtrlTargetArray(); },
      "The set's control targets; edition 2.0 keeps them in the forms.");
  cls.def_property_readonly(
      "is_valid", [](Element<Set>& e) { return InEdition(e, [](Set& set) { return set.IsEnable(); }); },
      "Whether both alignments are named, and there is at least one section, each valid.");
  cls.def(
      "find_section",
      [](Element<Set>& e, double station, bool isBehindChange) {
        return ItemOrNone(e, kSections, e.Read().Find(NurReal(ToFinite(station)), isBehindChange));
      },
      py::arg("station"), py::arg("is_behind_change") = false,
      "The section less than 1e-6 m from a station (metres); of the two at a change of shape the one before it, or "
      "the\n"
      "one behind it. None when there is none.");
  cls.def(
      "add_section",
      [](Element<Set>& e, Element<VornXSection>& section) {
        const NurReal station = section.Read().GetCumulativeDist();
        if (!station.IsSet()) throw py::value_error("the section has no station");
        CollectionOf(e, kSections)->Insert(PlaceInOrder(e.Read().GetXSectionArray(), station.Value()), section);
      },
      py::arg("section"), "Adds a section in the order of stations, behind one at the same station.");
  Repr(cls, [](const Set& set) {
    return Quoted(set.GetRefAlign()) + ", " + std::to_string(set.GetXSectionArray().GetSize()) + " sections";
  });
}

void AddFileInfo(py::module_& module) {
  using Info = VornFileInfo;
  auto cls = AddClass<Info>(module, "FileInfo", "When a document was created and last changed, with a free note.");
  cls.def(py::init([](const COleDateTime& created, const COleDateTime& changed, const CString& note) {
            Info info;
            info.SetCreateDate(created);
            info.SetChangeDate(changed);
            info.SetNote(note);
            return Alone(std::move(info));
          }),
          py::arg("create_date") = py::none(), py::arg("change_date") = py::none(), py::arg("note") = CString(),
          "File information that stands alone, until it is added to a document's `file_infos`.");
  Property(cls, "create_date", &Info::GetCreateDate, &Info::SetCreateDate,
           "When the document was created, to the second.");
  Property(cls, "change_date", &Info::GetChangeDate, &Info::SetChangeDate,
           "When the document was last changed, to the second.");
  Property(cls, "note", &Info::GetNote, &Info::SetNote, "A free note; it is not written without a change date.");
  Repr(cls, [](const Info& info) {
    return "created " + DateText(info.GetCreateDate()) + ", changed " + DateText(info.GetChangeDate());
  });
}

void AddStructureType(py::module_& module) {
  using Structure = VornStructureType;
  auto cls = AddClass<Structure>(module, "StructureType", "The kind of construction work that a document describes.");
  cls.def(py::init([](Structure::Type work) {
            Structure structure;
            structure.SetType(work);
            return Alone(std::move(structure));
          }),
          py::arg("work") = py::none(), "A structure type that stands alone.");
  Attribute(
      cls, "work", [](const Structure& structure) { return structure.GetType(); },
      [](Structure& structure, Structure::Type work) {
        work == Structure::Type::Unknown ? structure.SetType(CString()) : structure.SetType(work);
      },
      "Kind of work; None when the name is none of those known.");
  Attribute(
      cls, "work_name", [](const Structure& structure) { return CString(structure.GetTypeStr()); },
      [](Structure& structure, const CString& name) { structure.SetType(name); }, "Name of the kind of work.");
  Property(cls, "job_name", &Structure::GetJobName, &Structure::SetJobName, "Name of the job.");
  Property(cls, "company", &Structure::GetCompany, &Structure::SetCompany, "Name of the company.");
  Property(cls, "station_type", &Structure::GetStationType, &Structure::SetStationType,
           "Kind of station numbering: NO, SP, STA or 距離標.");
  ReadOnly(
      cls, "is_valid", [](const Structure& structure) { return structure.IsEnable(); },
      "Whether kind of work and station numbering are known.");
  Repr(cls, [](const Structure& structure) { return Quoted(structure.GetTypeStr()); });
}

}  // namespace

void AddModel(py::module_& module) {
  AddPoint(module);
  BindSequence<Vorn_ComposedPntArray>(module, "ComposedPoints", "The points of a build form.");
  AddCrossing(module);
  AddForm(module);
  BindSequence<Vorn_BuildFormArray>(module, "BuildForms", "The build forms of a cross section.");
  AddGroundPoint(module);
  BindSequence<VornExistingComposedPntArray>(module, "GroundPoints", "The points of a ground form.");
  AddGroundForm(module);
  BindSequence<VornExistingBuildFormArray>(module, "GroundForms", "The ground forms of a cross section.");
  AddSection(module);
  BindSequence<Vorn_XSectionArray>(module, "CrossSections", "The cross sections of a set, ordered by station.");
  AddSet(module);
  BindSequence<Vorn_XSectionsArray>(module, "CrossSectionSets", "The cross-section sets of a document.");
  AddFileInfo(module);
  BindSequence<VornFileInfoArray>(module, "FileInfos", "The file information of a document.");
  AddStructureType(module);
}

}  // namespace vorn_python
