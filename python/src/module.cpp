#include "python/src/binding.h"
#include "python/src/enumerations.h"

PYBIND11_MODULE(_vorn, module) {
  module.doc() = "The compiled part of the package vorn.";
  // Classes say in messages where they are found, which is the package.
  const pybind11::object name = module.attr("__name__");
  module.attr("__name__") = "vorn";
  module.attr("__version__") = VORN_VERSION;
  vorn_python::AddErrors(module);
  vorn_python::AddEnumerations(module);
  vorn_python::AddControl(module);
  vorn_python::AddModel(module);
  vorn_python::AddRoad(module);
  vorn_python::AddDocuments(module);
  vorn_python::AddEditing(module);
  vorn_python::AddProjects(module);
  vorn_python::AddSettings(module);
  module.attr("__name__") = name;
}
