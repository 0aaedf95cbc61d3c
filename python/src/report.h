#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cstddef>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "host/document/carried_content.h"
#include "host/document/document_check.h"
#include "host/document/edition_conversion.h"
#include "host/editing/edit_report.h"
#include "host/project/project.h"
#include "python/src/row.h"

/// What a piece of work tells of itself: plain values, which can be read, compared, and sent to another process.
namespace vorn_python {

namespace py = pybind11;

/// The values of a report as a tuple.
template <auto... kMembers, typename Report>
[[nodiscard]] py::tuple ValuesOf(const Report& report) {
  return py::make_tuple(report.*kMembers...);
}

/// Adds a report, which consists of these members.
template <typename Report, auto... kMembers>
[[nodiscard]] py::class_<Report> AddReport(py::module_& module, const char* name, const char* doc) {
  py::class_<Report> cls(module, name, doc);
  cls.def("__eq__",
          [](const Report& a, const py::object& b) {
            return py::isinstance<Report>(b) &&
                   ValuesOf<kMembers...>(a).equal(ValuesOf<kMembers...>(b.cast<const Report&>()));
          })
      .def(py::pickle([](const Report& report) { return ValuesOf<kMembers...>(report); },
                      [](const py::tuple& values) {
                        if (values.size() != sizeof...(kMembers)) throw py::value_error("pickled by another version");
                        Report report;
                        std::size_t i = 0;
                        ((report.*kMembers = values[i++].cast<std::remove_cvref_t<decltype(report.*kMembers)>>()), ...);
                        return report;
                      }))
      .def("__copy__", [](const Report& report) { return Report(report); })
      .def("__deepcopy__", [](const Report& report, const py::dict&) { return Report(report); });
  cls.attr("__hash__") = py::none();
  return cls;
}

}  // namespace vorn_python

namespace pybind11::detail {

template <>
struct type_caster<vorn_host::CarriedContent::Row>
    : vorn_python::RowCaster<vorn_host::CarriedContent::Row, &vorn_host::CarriedContent::Row::name,
                             &vorn_host::CarriedContent::Row::count> {};

template <>
struct type_caster<vorn_host::ConversionReport::Dropped>
    : vorn_python::RowCaster<vorn_host::ConversionReport::Dropped, &vorn_host::ConversionReport::Dropped::what,
                             &vorn_host::ConversionReport::Dropped::count> {};

template <>
struct type_caster<vorn_host::Project::Loss>
    : vorn_python::RowCaster<vorn_host::Project::Loss, &vorn_host::Project::Loss::what,
                             &vorn_host::Project::Loss::count> {};

template <>
struct type_caster<vorn_host::EditReport::Change>
    : vorn_python::RowCaster<vorn_host::EditReport::Change, &vorn_host::EditReport::Change::path,
                             &vorn_host::EditReport::Change::what> {};

template <>
struct type_caster<vorn_host::EditReport::Count>
    : vorn_python::RowCaster<vorn_host::EditReport::Count, &vorn_host::EditReport::Count::what,
                             &vorn_host::EditReport::Count::count> {};

/// Set, section, form and point by index, -1 for none, as a finding is pickled.
template <>
struct type_caster<vorn_host::FindingPlace> {
  using Place = vorn_host::FindingPlace;
  using Indices = std::tuple<int, int, int, int>;
  PYBIND11_TYPE_CASTER(Place, make_caster<Indices>::name);

  bool load(handle source, bool convert) {
    make_caster<Indices> indices;
    if (!indices.load(source, convert)) return false;
    std::tie(value.set, value.section, value.form, value.point) = cast_op<Indices>(std::move(indices));
    return true;
  }
  static handle cast(const Place& place, return_value_policy policy, handle parent) {
    return make_caster<Indices>::cast(Indices(place.set, place.section, place.form, place.point), policy, parent);
  }
};

}  // namespace pybind11::detail
