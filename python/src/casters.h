#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <cstddef>
#include <stdexcept>
#include <string>

#include "host/document/text_encoding.h"
#include "python/src/enumerations.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/nur_real.h"
#include "vorn/platform/ole_date_time.h"

namespace vorn_python {

namespace py = pybind11;

/// A text that code page 932, in which the model keeps all texts, cannot hold.
class TextError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Converts a Python text for the model.
[[nodiscard]] CString ToModelText(py::handle text);
/// Converts a date and time without a time zone; what is smaller than a second is cut off.
[[nodiscard]] COleDateTime ToModelDate(py::handle date);
/// A naive `datetime`; `None` for anything but a valid date.
[[nodiscard]] py::object ToPythonDate(const COleDateTime& date);
/// A finite number, or throws `ValueError`: a design that holds anything else cannot be built.
[[nodiscard]] double ToFinite(double value);

}  // namespace vorn_python

namespace pybind11::detail {

template <>
struct type_caster<CString> {
  PYBIND11_TYPE_CASTER(CString, const_name("str"));

  bool load(handle source, bool) {
    if (!PyUnicode_Check(source.ptr())) return false;
    value = vorn_python::ToModelText(source);
    return true;
  }
  static handle cast(const CString& text, return_value_policy, handle) {
    return pybind11::str(vorn_host::ToUtf8(text.View())).release();
  }
};

template <>
struct type_caster<NurReal> {
  PYBIND11_TYPE_CASTER(NurReal, const_name("Optional[float]"));

  bool load(handle source, bool) {
    if (source.is_none()) {
      value.Unset();
      return true;
    }
    if (PyBool_Check(source.ptr()) || PyUnicode_Check(source.ptr())) return false;
    const double number = PyFloat_AsDouble(source.ptr());
    if (PyErr_Occurred() != nullptr) {
      PyErr_Clear();
      return false;
    }
    value = vorn_python::ToFinite(number);
    return true;
  }
  static handle cast(NurReal number, return_value_policy, handle) {
    if (!number.IsSet()) return none().release();
    return PyFloat_FromDouble(number.Value());
  }
};

template <>
struct type_caster<COleDateTime> {
  PYBIND11_TYPE_CASTER(COleDateTime, const_name("Optional[datetime.datetime]"));

  bool load(handle source, bool) {
    if (source.is_none()) {
      value.SetStatus(COleDateTime::null);
      return true;
    }
    if (!isinstance(source, module_::import("datetime").attr("datetime"))) return false;
    value = vorn_python::ToModelDate(source);
    return true;
  }
  static handle cast(const COleDateTime& date, return_value_policy, handle) {
    return vorn_python::ToPythonDate(date).release();
  }
};

/// The type of an enumeration's values in signatures.
template <vorn_python::BoundEnum Enum>
[[nodiscard]] constexpr auto EnumSignature() {
  constexpr auto kName = const_name(vorn_python::EnumTraits<Enum>::kName);
  if constexpr (requires { vorn_python::EnumTraits<Enum>::kUnset; }) {
    return const_name("Optional[") + kName + const_name("]");
  } else {
    return kName;
  }
}

/// A member of the Python enumeration. A value that the enumeration does not know, as projects may hold, is an `int`.
template <vorn_python::BoundEnum Enum>
struct type_caster<Enum> {
  PYBIND11_TYPE_CASTER(Enum, EnumSignature<Enum>());
  using Traits = vorn_python::EnumTraits<Enum>;

  bool load(handle source, bool) {
    if (source.is_none()) {
      if constexpr (requires { Traits::kUnset; }) {
        value = Traits::kUnset;
        return true;
      }
      return false;
    }
    for (std::size_t i = 0; i < Traits::kMembers.size(); ++i) {
      if (!source.is(vorn_python::EnumMembers<Enum>()[i])) continue;
      value = Traits::kMembers[i].value;
      return true;
    }
    return false;
  }
  static handle cast(Enum member, return_value_policy, handle) {
    if constexpr (requires { Traits::kUnset; }) {
      if (member == Traits::kUnset) return none().release();
    }
    for (std::size_t i = 0; i < Traits::kMembers.size(); ++i) {
      if (Traits::kMembers[i].value == member) return vorn_python::EnumMembers<Enum>()[i].inc_ref();
    }
    return PyLong_FromLong(static_cast<long>(member));
  }
};

}  // namespace pybind11::detail
