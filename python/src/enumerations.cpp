#include "python/src/enumerations.h"

namespace vorn_python {

namespace py = pybind11;

namespace {

template <BoundEnum Enum>
void Add(py::module_& module) {
  using Traits = EnumTraits<Enum>;
  py::list members;
  for (const EnumMember<Enum>& member : Traits::kMembers) {
    py::object value = member.text != nullptr ? py::object(py::str(member.text))
                                              : py::object(py::int_(static_cast<int>(member.value)));
    members.append(py::make_tuple(member.name, std::move(value)));
  }
  const py::object type = py::module_::import("enum").attr("Enum")(Traits::kName, members, py::arg("module") = "vorn");
  type.attr("__doc__") = Traits::kDoc;
  module.attr(Traits::kName) = type;
  EnumMembers<Enum>().clear();
  for (const py::handle member : type) EnumMembers<Enum>().push_back(member.inc_ref());
}

}  // namespace

void AddEnumerations(py::module_& module) {
  Add<VornLocation>(module);
  Add<VORN_Existence>(module);
  Add<VornComposedPnt::ComponentType>(module);
  Add<VornComposedPnt::SlopeType>(module);
  Add<VornComposedPnt::DataType>(module);
  Add<VornComposedPnt::ElementType>(module);
  Add<TargetPntCategory>(module);
  Add<VornFormCtrlTarget::WorkType>(module);
  Add<VornFormCtrlTarget::ControlItem>(module);
  Add<VornFormCtrlTarget::TargetPntType>(module);
  Add<VornStructureType::Type>(module);
  Add<VornRoadInfo::Classificat>(module);
  Add<VornRoadInfo::ClassRiver>(module);
  Add<VornRoadInfo::DesignSpeed>(module);
  Add<VornCrsData::GeoDatum>(module);
  Add<VornCrsData::HorizonCoordinate>(module);
  Add<VornCtrlClass>(module);
  Add<VornBMClass>(module);
  Add<VornProjectData::ProjPhase>(module);
  Add<VornFormCtrl::CtrlMarkType>(module);
  Add<vorn_host::Edition>(module);
  Add<vorn_host::TextEncoding>(module);
  Add<vorn_host::Severity>(module);
  Add<vorn_host::SampleKind>(module);
  Add<vorn_host::CsvContent>(module);
  Add<vorn_host::Language>(module);
}

}  // namespace vorn_python
