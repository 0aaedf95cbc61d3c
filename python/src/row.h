#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <type_traits>
#include <utility>

#include "vorn/model/measure_info.h"

namespace vorn_python {

namespace py = pybind11;

/// A row of two columns, which is a tuple in Python.
template <typename Row, auto kFirst, auto kSecond>
class RowCaster {
  using Pair = std::pair<std::remove_cvref_t<decltype(std::declval<Row&>().*kFirst)>,
                         std::remove_cvref_t<decltype(std::declval<Row&>().*kSecond)>>;
  using PairCaster = py::detail::make_caster<Pair>;

 public:
  PYBIND11_TYPE_CASTER(Row, PairCaster::name);

  bool load(py::handle source, bool convert) {
    PairCaster pair;
    if (!pair.load(source, convert)) return false;
    auto [first, second] = py::detail::cast_op<Pair>(std::move(pair));
    value.*kFirst = std::move(first);
    value.*kSecond = std::move(second);
    return true;
  }
  static py::handle cast(const Row& row, py::return_value_policy policy, py::handle parent) {
    return PairCaster::cast(Pair(row.*kFirst, row.*kSecond), policy, parent);
  }
};

}  // namespace vorn_python

namespace pybind11::detail {

template <>
struct type_caster<VornMeasureInfo>
    : vorn_python::RowCaster<VornMeasureInfo, &VornMeasureInfo::first, &VornMeasureInfo::second> {};

}  // namespace pybind11::detail
