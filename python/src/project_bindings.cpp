#include "host/document/path_text.h"
#include "host/project/design_file.h"
#include "host/project/project.h"
#include "python/src/binding.h"
#include "python/src/report.h"

/// Projects: a design with all its road data.
namespace vorn_python {

namespace {

using vorn_host::DesignDocument;
using vorn_host::Project;

void AddReading(Class<Project>& cls) {
  cls.def_static(
         "read",
         [](const std::filesystem::path& path) {
           return Alone(
               OnFile(vorn_host::Utf8Text(path), [&] { return WithoutPython([&] { return Project::Read(path); }); }));
         },
         py::arg("path"),
         "Reads a project of any store version. Other threads go on meanwhile.\n\n"
         ":raises DocumentError: it cannot be read, is damaged, or was written by a newer program")
      .def_static(
          "from_bytes",
          [](const py::bytes& data, const std::string& name) {
            const auto bytes = static_cast<std::string>(data);
            return Alone(OnFile(name, [&] { return WithoutPython([&] { return Project::FromBytes(bytes, name); }); }));
          },
          py::arg("data"), py::arg("name") = "project.vorn",
          "Reads the bytes of a project; the name stands for the file in messages.");
}

void AddSaving(Class<Project>& cls) {
  const std::string newest(Project::kNewestStoreVersion);
  cls.def(
         "save",
         [](Element<Project>& e, const std::filesystem::path& path, const std::string& storeVersion) {
           return OnFile(vorn_host::Utf8Text(path), [&] {
             return RunEdit(e, Rebuilds::Nothing, [&](Project& project) { return project.Save(path, storeVersion); });
           });
         },
         py::arg("path"), py::arg("store_version") = newest,
         "Saves the project, whole or not at all; the former file stays beside it with .bak behind its name. Other\n"
         "threads go on meanwhile.\n\n"
         ":param store_version: 05.00, 05.50 or 06.00\n"
         ":returns: what the store version cannot hold, by name and number; the project itself keeps it\n"
         ":raises DocumentError: it cannot be saved, or its design is given out")
      .def(
          "to_bytes",
          [](Element<Project>& e, const std::string& name, const std::string& storeVersion) {
            const std::vector<std::uint8_t> content = OnFile(name, [&] {
              return RunEdit(e, Rebuilds::Nothing, [&](Project& project) {
                std::vector<Project::Loss> losses;
                return project.ToBytes(name, storeVersion, losses);
              });
            });
            return py::bytes(reinterpret_cast<const char*>(content.data()), content.size());
          },
          py::arg("name") = "project.vorn", py::arg("store_version") = newest,
          "The bytes that `save` writes; the name stands for the file in messages.");
}

void AddDesign(Class<Project>& cls) {
  cls.def(
         "give_design",
         [](Element<Project>& e) {
           return Alone(RunEdit(e, Rebuilds::Collections, [](Project& project) { return project.GiveDesign(); }));
         },
         "Hands out the design. The road data are without it until `take_design` takes it back, and what was taken\n"
         "from their collections has to be taken again.")
      .def(
          "take_design",
          [](Element<Project>& e, Element<DesignDocument>& design) {
            const LibraryTurn turn;
            (void)e.Read();
            PrepareEdit(design, Rebuilds::Collections);
            DesignDocument document = design.HandOver();
            RunEdit(e, Rebuilds::Collections, [&](Project& project) { project.TakeDesign(std::move(document)); });
          },
          py::arg("design"),
          "Makes a design the project's own in place of the one that it has. The document is used up: whatever was\n"
          "taken from it raises `ExpiredError` from then on.");
}

}  // namespace

void AddProjects(py::module_& module) {
  auto cls = AddClass<Project>(module, "Project", "A design with all its road data, as a project file keeps it.");
  cls.def(py::init([] { return Alone(WithoutPython([] { return Project(); })); }), "A new project without road data.");
  AddReading(cls);
  AddSaving(cls);
  AddDesign(cls);
  ReadOnly(
      cls, "store_version", [](const Project& project) { return project.GetStoreVersion(); },
      "Store version that the project was read in; the newest for a new one.");
  ReadOnly(
      cls, "holds_road_data", [](const Project& project) { return project.HoldsRoadData(); },
      "Whether the project holds anything besides the design. To be asked while the design is given out.");
  Member(
      cls, "data", [](Project & project) -> auto& { return project.data; }, "All road and survey data.");
  Repr(cls, [](const Project& project) { return "in store version " + project.GetStoreVersion(); });
  RefuseCopies(cls);

  module.def(
      "is_project_name", [](const std::filesystem::path& path) { return vorn_host::IsProjectName(path); },
      py::arg("path"), "Whether a file name is that of a project: it ends with .vorn, in letters of either case.");
}

}  // namespace vorn_python
