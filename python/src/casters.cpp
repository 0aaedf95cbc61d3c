#include "python/src/casters.h"

#include <cmath>
#include <string>

namespace vorn_python {

CString ToModelText(py::handle text) {
  Py_ssize_t length = 0;
  const char* const utf8 = PyUnicode_AsUTF8AndSize(text.ptr(), &length);
  if (utf8 == nullptr) throw py::error_already_set();
  std::string bytes;
  const auto conversion = code_page_932::AppendFromUtf8({utf8, static_cast<std::size_t>(length)}, bytes);
  if (!conversion) {
    throw TextError("code page 932, in which the model keeps texts, cannot hold " +
                    vorn_host::DescribeCharacter(conversion.codePoint));
  }
  return CString(bytes);
}

COleDateTime ToModelDate(py::handle date) {
  if (!date.attr("tzinfo").is_none()) {
    throw py::value_error("the model keeps dates without a time zone: convert the date and leave its zone out");
  }
  const auto part = [&](const char* name) { return date.attr(name).cast<int>(); };
  COleDateTime value;
  if (value.SetDateTime(part("year"), part("month"), part("day"), part("hour"), part("minute"), part("second")) != 0) {
    throw py::value_error("the model keeps dates of the years 100 to 9999");
  }
  return value;
}

py::object ToPythonDate(const COleDateTime& date) {
  if (date.GetStatus() != COleDateTime::valid) return py::none();
  return py::module_::import("datetime")
      .attr("datetime")(date.GetYear(), date.GetMonth(), date.GetDay(), date.GetHour(), date.GetMinute(),
                        date.GetSecond());
}

double ToFinite(double value) {
  if (!std::isfinite(value)) throw py::value_error("a value of a design is a finite number, or None when it is unset");
  return value;
}

}  // namespace vorn_python
