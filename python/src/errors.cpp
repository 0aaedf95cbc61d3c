#include "host/editing/edit_report.h"
#include "python/src/binding.h"
#include "vorn/platform/exceptions.h"

namespace vorn_python {

namespace {

void Raise(const char* type, const std::string& message) {
  const py::object raised = py::module_::import("vorn.errors").attr(type);
  PyErr_SetString(raised.ptr(), message.c_str());
}

/// Raises an error that tells its place in attributes, which are read from its message.
void RaisePlaced(const char* type, const std::string& message, const py::object& file) {
  const py::object raised = py::module_::import("vorn.errors").attr(type);
  const py::object error = raised.attr("_of")(message, file);
  PyErr_SetObject(raised.ptr(), error.ptr());
}

void Translate(std::exception_ptr thrown) {
  try {
    if (thrown) std::rethrow_exception(thrown);
  } catch (const vorn_host::EditError& error) {
    RaisePlaced("EditError", error.what(), py::none());
  } catch (const FileError& error) {
    RaisePlaced("DocumentError", error.what(), py::str(error.File()));
  } catch (const vorn_host::DocumentError& error) {
    RaisePlaced("DocumentError", error.what(), py::none());
  } catch (const ExpiredError& error) {
    Raise("ExpiredError", error.what());
  } catch (const BusyError& error) {
    Raise("BusyError", error.what());
  } catch (const TextError& error) {
    Raise("TextError", error.what());
  } catch (const CInvalidArgException&) {
    Raise("InvalidArgumentError", "an argument is outside its range");
  }
}

}  // namespace

void AddErrors(py::module_&) { py::register_exception_translator(&Translate); }

}  // namespace vorn_python
