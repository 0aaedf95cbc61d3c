#include "host/document/path_text.h"
#include "host/project/design_file.h"
#include "host/project/project.h"
#include "python/src/binding.h"
#include "python/src/report.h"

/// Projects: a design with all its road data.
namespace vorn_python {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignFile;
using vorn_host::Project;

void AddReading(Class<Project>& cls) {
  cls.def_static(
         "read",
         [](const std::filesystem::path& path, std::uint64_t mostBytes, std::size_t mostCarriedItems) {
           return Alone(OnFile(vorn_host::Utf8Text(path), [&] {
             return WithoutPython([&] { return Project::Read(path, {mostBytes, mostCarriedItems}); });
           }));
         },
         py::arg("path"), py::kw_only(), py::arg("most_bytes") = vorn_host::kLargestFile,
         py::arg("most_carried_items") = vorn_host::CarriedContent::kMostItems,
         "Reads a project of any store version. Other threads go on meanwhile.\n\n"
         ":param most_bytes: a larger one is refused; reading takes memory in proportion\n"
         ":param most_carried_items: a project with more that is not of a design is refused\n"
         ":raises DocumentError: it cannot be read, is damaged, or was written by a newer program")
      .def_static(
          "from_bytes",
          [](const py::bytes& data, const std::string& name, std::uint64_t mostBytes, std::size_t mostCarriedItems) {
            const auto bytes = static_cast<std::string>(data);
            return Alone(OnFile(name, [&] {
              return WithoutPython([&] { return Project::FromBytes(bytes, name, {mostBytes, mostCarriedItems}); });
            }));
          },
          py::arg("data"), py::arg("name") = "project.vorn", py::kw_only(),
          py::arg("most_bytes") = vorn_host::kLargestFile,
          py::arg("most_carried_items") = vorn_host::CarriedContent::kMostItems,
          "Reads the bytes of a project as `read` does; the name stands for the file in messages.");
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

// --- files of either kind --------------------------------------------------------------------------------------------

/// A design with the project that it came from, if it came from one.
class File {
 public:
  File(Ref<DesignDocument> design, std::optional<Ref<Project>> project)
      : m_design(std::move(design)), m_project(std::move(project)) {}

  static File Read(const std::filesystem::path& path, std::optional<vorn_host::Edition> assume, bool lossy,
                   std::uint64_t mostBytes, std::size_t mostCarriedItems) {
    DesignFile file = OnFile(vorn_host::Utf8Text(path), [&] {
      return WithoutPython([&] { return DesignFile::Read(path, {assume, lossy, mostBytes, mostCarriedItems}); });
    });
    return {Alone(std::move(file.design)),
            file.project ? std::optional(Alone(*std::move(file.project))) : std::nullopt};
  }

  [[nodiscard]] const Ref<DesignDocument>& Design() const { return m_design; }
  [[nodiscard]] const std::optional<Ref<Project>>& GetProject() const { return m_project; }

  DesignFile::WriteReport Write(const std::filesystem::path& path, const DesignFile::WriteOptions& options) {
    return OnFile(vorn_host::Utf8Text(path), [&] {
      const LibraryTurn turn;
      DesignFile::WriteOptions settled = options;
      settled.kind = vorn_host::KindToWrite(path);
      const Rebuilds rebuilds =
          settled.kind == vorn_host::DesignKind::Project ? Rebuilds::Collections : Rebuilds::Nothing;
      DesignDocument& design = PrepareEdit(*m_design, rebuilds);
      Project* const project = m_project ? &PrepareEdit(**m_project, rebuilds) : nullptr;
      const BusyMark busyDesign(*m_design);
      const std::optional<BusyMark> busyProject = project ? std::optional<BusyMark>(**m_project) : std::nullopt;
      const py::gil_scoped_release release;
      return WriteFrom(design, project, path, settled);
    });
  }

 private:
  /// Writes design and project from where they are, and puts them back, however writing ends.
  static DesignFile::WriteReport WriteFrom(DesignDocument& design, Project* project, const std::filesystem::path& path,
                                           const DesignFile::WriteOptions& options) {
    DesignFile file;
    file.design = std::move(design);
    if (project) file.project = std::move(*project);
    const auto putBack = [&] {
      design = options.kind == vorn_host::DesignKind::Project ? file.project->GiveDesign() : std::move(file.design);
      if (project) *project = *std::move(file.project);
    };
    try {
      DesignFile::WriteReport report = std::move(file).Write(path, options);
      putBack();
      return report;
    } catch (const vorn_host::DocumentError&) {
      putBack();
      throw;
    }
  }

  Ref<DesignDocument> m_design;
  std::optional<Ref<Project>> m_project;
};

void AddFileReport(py::module_& module) {
  using Report = DesignFile::WriteReport;
  AddReport<Report, &Report::document, &Report::storeVersion, &Report::losses, &Report::formerFile,
            &Report::roadDataLeft>(module, "FileReport", "What writing a file of either kind did.")
      .def_readonly("document", &Report::document, "What writing a document did.")
      .def_property_readonly(
          "store_version",
          [](const Report& report) {
            return report.storeVersion.empty() ? std::nullopt : std::optional(report.storeVersion);
          },
          "Store version of the project that was written; None for a document.")
      .def_readonly("losses", &Report::losses, "What the store version cannot hold, by name and number.")
      .def_property_readonly(
          "former_file",
          [](const Report& report) {
            return report.formerFile.empty() ? std::nullopt : std::optional(vorn_host::Utf8Text(report.formerFile));
          },
          "Where the file that a project replaced is kept now; None when there was none.")
      .def_readonly("has_left_road_data", &Report::roadDataLeft,
                    "Whether a document was written of a project that holds more than the design.")
      .def("__repr__", [](const Report& report) {
        return report.storeVersion.empty() ? std::string("<vorn.FileReport of a document>")
                                           : "<vorn.FileReport of a project in store version " + report.storeVersion +
                                                 ", " + std::to_string(report.losses.size()) + " losses>";
      });
}

void AddFile(py::module_& module) {
  py::class_<File> cls(module, "DesignFile",
                       "A design with the project that it came from, whichever of the two kinds of file it is in.");
  cls.def(py::init<Ref<DesignDocument>, std::optional<Ref<Project>>>(), py::arg("design").none(false),
          py::arg("project") = py::none(), "A design to be written, with the project that gave it, if one did.")
      .def_static("read", &File::Read, py::arg("path"), py::kw_only(), py::arg("assume") = py::none(),
                  py::arg("lossy") = false, py::arg("most_bytes") = vorn_host::kLargestFile,
                  py::arg("most_carried_items") = vorn_host::CarriedContent::kMostItems,
                  "Reads a project when the file is named or begins like one, otherwise a document. Other threads go\n"
                  "on meanwhile.\n\n"
                  ":param assume: edition of a document that is not recognised; without one it is refused\n"
                  ":param lossy: replace characters that code page 932 cannot hold by 〓 instead of refusing them\n"
                  ":param most_bytes: a larger file is refused\n"
                  ":param most_carried_items: a file with more that is not of a design is refused\n"
                  ":raises DocumentError: it cannot be read")
      .def_property_readonly("design", &File::Design, "The design.")
      .def_property_readonly("project", &File::GetProject,
                             "The project that the design came from, which has given it out; None for a document.")
      .def(
          "write",
          [](File& file, const std::filesystem::path& path, vorn_host::TextEncoding encoding, bool lossy,
             const std::optional<std::string>& storeVersion) {
            return file.Write(path, {{encoding, lossy}, storeVersion.value_or(""), {}});
          },
          py::arg("path"), py::kw_only(), py::arg("encoding") = vorn_host::TextEncoding::Utf8, py::arg("lossy") = false,
          py::arg("store_version") = py::none(),
          "Writes a project when the file is named like one, or is one, otherwise a document, whole or not at all.\n"
          "After a project, forms, points and control targets are to be taken from the design again, and what is in\n"
          "the project's collections from the project. Other threads go on meanwhile.\n\n"
          ":param encoding: of a document\n"
          ":param lossy: a document has 〓 for characters that its encoding cannot hold\n"
          ":param store_version: of a project; None for that of the project read, or the newest\n"
          ":raises DocumentError: it cannot be written, or another kind of design would be lost")
      .def("__repr__", [](const File& file) {
        const auto text = [](const auto& element) { return py::repr(py::cast(element)).template cast<std::string>(); };
        return "<vorn.DesignFile with " + text(file.Design()) +
               (file.GetProject() ? " of " + text(*file.GetProject()) : "") + ">";
      });
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

  AddFileReport(module);
  AddFile(module);
  module.def(
      "holds_design", [](const std::filesystem::path& path) { return vorn_host::HoldsDesign(path); }, py::arg("path"),
      "Whether there is a file that holds a design: one that begins as a project or a document does.");
  module.def(
      "is_project_name", [](const std::filesystem::path& path) { return vorn_host::IsProjectName(path); },
      py::arg("path"), "Whether a file name is that of a project: it ends with .vorn, in letters of either case.");
}

}  // namespace vorn_python
