#include "python/src/binding.h"
#include "vorn/road/linear_xml_data.h"

/// What a project's export to LandXML is set to. The export itself is the application's.
namespace vorn_python {

namespace {

void AddPoint(py::module_& module) {
  using Point = VornLandXMLCgPoint;
  auto cls = AddClass<Point>(module, "LandXmlPoint", "A ground point that is selected for the LandXML export.");
  cls.def(py::init([](std::uint16_t number) {
            Point point;
            point.SetNumber(number);
            return Alone(std::move(point));
          }),
          py::arg("number") = 0, "A point that stands alone, until it is added to the settings' `points`.");
  Property(cls, "number", &Point::GetNumber, &Point::SetNumber, "Number of the ground point (`SurveyPoint.number`).");
  Repr(cls, [](const Point& point) { return std::to_string(point.GetNumber()); });
  BindSequence<VornLandXMLCgPointsArray>(module, "LandXmlPoints", "The ground points of a LandXML export.");
}

/// A code, `None` while it is not set.
template <typename Get, typename Set>
void AddCode(Class<VornLandXMLAlignment>& cls, const char* name, Get get, Set set) {
  using Alignment = VornLandXMLAlignment;
  Attribute(
      cls, name,
      [get](const Alignment& alignment) {
        const std::uint16_t code = (alignment.*get)();
        return code == Alignment::kNoCode ? std::nullopt : std::optional(code);
      },
      [set](Alignment& alignment, std::optional<std::uint16_t> code) {
        (alignment.*set)(code.value_or(Alignment::kNoCode));
      },
      "A code kept for applications; None when it is not set.");
}

void AddAlignment(py::module_& module) {
  using Alignment = VornLandXMLAlignment;
  auto cls = AddClass<Alignment>(module, "LandXmlAlignment", "An alignment's entry in the LandXML export.");
  cls.def(py::init([](const CString& name) {
            Alignment alignment;
            alignment.SetName(name);
            return Alone(std::move(alignment));
          }),
          py::arg("name") = CString(), "An entry that stands alone, until it is added to the settings' `alignments`.");
  Property(cls, "name", &Alignment::GetName, &Alignment::SetName, "Name of the alignment.");
  Property(cls, "text", &Alignment::GetText, &Alignment::SetText, "A text kept for applications.");
  Property(cls, "flag", &Alignment::GetFlag, &Alignment::SetFlag,
           "Not 0 when the alignment is selected; what else it says is the application's.");
  AddCode(cls, "code1", &Alignment::GetCode1, &Alignment::SetCode1);
  AddCode(cls, "code2", &Alignment::GetCode2, &Alignment::SetCode2);
  AddCode(cls, "code3", &Alignment::GetCode3, &Alignment::SetCode3);
  Repr(cls, [](const Alignment& alignment) { return Quoted(alignment.GetName()); });
  BindSequence<VornLandXMLAlignmentsArray>(module, "LandXmlAlignments", "The alignments of a LandXML export.");
}

void AddProjectTexts(Class<VornLandXMLData>& cls) {
  using Data = VornLandXMLData;
  Attribute(
      cls, "project_name", [](const Data& data) { return data.GetProject().GetName(); },
      [](Data& data, const CString& name) { data.GetProject().SetName(name); }, "Name of the project.");
  Attribute(
      cls, "project_description", [](const Data& data) { return data.GetProject().GetDesc(); },
      [](Data& data, const CString& text) { data.GetProject().SetDesc(text); }, "Description of the project.");
}

void AddOptions(Class<VornLandXMLData>& cls) {
  using Data = VornLandXMLData;
  Attribute(
      cls, "point_option1", [](const Data& data) { return data.GetCgPoints().GetOption1(); },
      [](Data& data, std::int32_t option) { data.GetCgPoints().SetOption1(option); },
      "An option of the ground points, kept for applications.");
  Attribute(
      cls, "point_option2", [](const Data& data) { return data.GetCgPoints().GetOption2(); },
      [](Data& data, std::int32_t option) { data.GetCgPoints().SetOption2(option); },
      "An option of the ground points, kept for applications.");
  Property(cls, "any_flag", &Data::GetFlagAny, &Data::SetFlagAny,
           "1 in new data; of older projects, 1 when any alignment was selected, otherwise 0.");
  Property(cls, "option1", &Data::GetOption1, &Data::SetOption1, "An option kept for applications.");
  Property(cls, "option2", &Data::GetOption2, &Data::SetOption2,
           "An option kept for applications while the project is open; projects do not hold it.");
  Property(cls, "option3", &Data::GetOption3, &Data::SetOption3, "An option kept for applications.");
  Attribute(
      cls, "value", [](const Data& data) { return data.GetValue(); },
      [](Data& data, double value) { data.SetValue(ToFinite(value)); }, "A number kept for applications.");
  Attribute(
      cls, "texts",
      [](const Data& data) { return std::vector<CString>(data.GetTexts().begin(), data.GetTexts().end()); },
      [](Data& data, const std::vector<CString>& texts) {
        data.GetTexts().RemoveAll();
        for (const CString& text : texts) data.GetTexts().AddTail(text);
      },
      "Texts kept for applications, as a list of its own.");
}

}  // namespace

void AddLandXml(py::module_& module) {
  using Data = VornLandXMLData;
  AddPoint(module);
  AddAlignment(module);
  auto cls = AddClass<Data>(module, "LandXmlSettings",
                            "What a project's export to LandXML is set to. The export itself is the application's.");
  AddProjectTexts(cls);
  Collection(
      cls, "points", [](Data & data) -> auto& { return data.GetCgPoints(); }, "The selected ground points.");
  Collection(
      cls, "alignments", [](Data & data) -> auto& { return data.GetAlignments(); }, "The alignments.");
  AddOptions(cls);
  Repr(cls, [](const Data& data) {
    return Quoted(data.GetProject().GetName()) + ", " + std::to_string(data.GetAlignments().GetSize()) + " alignments";
  });
}

}  // namespace vorn_python
