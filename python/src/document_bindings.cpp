#include "host/document/design_document.h"
#include "host/document/document_check.h"
#include "host/document/edition_conversion.h"
#include "host/document/path_text.h"
#include "host/project/design_file.h"
#include "host/sample/sample_document.h"
#include "python/src/binding.h"
#include "python/src/report.h"

/// Documents: reading, writing, checking and converting them, and sample designs.
namespace vorn_python {

namespace {

using vorn_host::DesignDocument;
using vorn_host::Edition;

void AddReports(py::module_& module) {
  using vorn_host::Finding;
  using vorn_host::UnreadValue;
  AddReport<UnreadValue, &UnreadValue::line, &UnreadValue::where, &UnreadValue::text, &UnreadValue::reason>(
      module, "UnreadValue", "A value of a document that was not understood; it is not written again.")
      .def_readonly("line", &UnreadValue::line, "Line of the document, from 1.")
      .def_readonly("where", &UnreadValue::where, "Element and attribute.")
      .def_readonly("text", &UnreadValue::text, "The value as the document has it.")
      .def_readonly("reason", &UnreadValue::reason, "Why it was not understood.")
      .def("__repr__", [](const UnreadValue& value) {
        return "<vorn.UnreadValue " + vorn_host::PlaceOf(value) + ": " + vorn_host::Describe(value) + ">";
      });

  const auto index = [](int vorn_host::FindingPlace::*member) {
    return [member](const Finding& finding) {
      const int value = finding.place.*member;
      return value < 0 ? std::nullopt : std::optional(value);
    };
  };
  AddReport<Finding, &Finding::severity, &Finding::kind, &Finding::path, &Finding::reason, &Finding::place>(
      module, "Finding", "One thing found wrong in a document.")
      .def_readonly("severity", &Finding::severity, "How bad it is.")
      .def_readonly("kind", &Finding::kind, "What kind of thing; the same text for like findings.")
      .def_readonly("place", &Finding::path, "Where: set, station, form, point or control target.")
      .def_readonly("reason", &Finding::reason, "Why, in words.")
      .def_property_readonly("set_index", index(&vorn_host::FindingPlace::set), "Index of the set; None for none.")
      .def_property_readonly("section_index", index(&vorn_host::FindingPlace::section),
                             "Index of the section in its set; None for none.")
      .def_property_readonly("form_index", index(&vorn_host::FindingPlace::form),
                             "Index of the form in its section; None for none.")
      .def_property_readonly("point_index", index(&vorn_host::FindingPlace::point),
                             "Index of the point in its form; None for none.")
      .def("__repr__", [](const Finding& finding) {
        return "<vorn.Finding " + finding.path + ": " + finding.kind + ": " + finding.reason + ">";
      });

  using Written = DesignDocument::WriteReport;
  AddReport<Written, &Written::replacedCharacters, &Written::unplaced>(module, "WriteReport",
                                                                       "What writing a document did.")
      .def_readonly("replaced_characters", &Written::replacedCharacters, "How many characters became 〓.")
      .def_readonly("unplaced", &Written::unplaced,
                    "What was carried over and had no place any more, by name and number.")
      .def("__repr__", [](const Written& report) {
        return "<vorn.WriteReport " + std::to_string(report.replacedCharacters) + " replaced characters, " +
               std::to_string(report.unplaced.size()) + " unplaced>";
      });

  using Converted = vorn_host::ConversionReport;
  AddReport<Converted, &Converted::dropped, &Converted::notWritten, &Converted::lostTargets, &Converted::notes,
            &Converted::convertedPoints, &Converted::largestDisplacement, &Converted::largestDisplacementAt,
            &Converted::farPoints, &Converted::movedTargets>(module, "ConversionReport",
                                                             "What a conversion between editions did.")
      .def_readonly("dropped", &Converted::dropped, "What the edition cannot hold, by name and number.")
      .def_readonly("not_written", &Converted::notWritten, "What is not written in any edition, by name and number.")
      .def_readonly("lost_targets", &Converted::lostTargets, "Control targets that could not be carried, and why.")
      .def_readonly("notes", &Converted::notes, "Further remarks.")
      .def_readonly("converted_points", &Converted::convertedPoints, "Points whose input values were re-expressed.")
      .def_readonly("largest_displacement", &Converted::largestDisplacement,
                    "The largest distance in metres that a point moved.")
      .def_readonly("largest_displacement_at", &Converted::largestDisplacementAt, "Place of that point.")
      .def_readonly("far_points", &Converted::farPoints, "Points that moved by more than a millimetre.")
      .def_readonly("moved_targets", &Converted::movedTargets,
                    "Control targets that went from the forms to the set or back.")
      .def("__repr__", [](const Converted& report) {
        return "<vorn.ConversionReport " + std::to_string(report.dropped.size()) + " kinds dropped, " +
               std::to_string(report.lostTargets.size()) + " targets lost, " + std::to_string(report.convertedPoints) +
               " points converted>";
      });
}

/// A new document in an edition that can be written.
DesignDocument NewDocument(Edition edition) {
  if (edition == Edition::RoadGm) throw py::value_error("documents cannot be written in this edition");
  DesignDocument document;
  document.edition = edition;
  return document;
}

void AddReading(Class<DesignDocument>& cls) {
  cls.def_static(
         "read",
         [](const std::filesystem::path& path, std::optional<Edition> assume, bool lossy, std::uint64_t mostBytes,
            std::size_t mostCarriedItems) {
           const DesignDocument::ReadOptions options{assume, lossy, mostBytes, mostCarriedItems};
           return Alone(OnFile(vorn_host::Utf8Text(path),
                               [&] { return WithoutPython([&] { return DesignDocument::Read(path, options); }); }));
         },
         py::arg("path"), py::kw_only(), py::arg("assume") = py::none(), py::arg("lossy") = false,
         py::arg("most_bytes") = vorn_host::kLargestFile,
         py::arg("most_carried_items") = vorn_host::CarriedContent::kMostItems,
         "Reads a document. Other threads go on meanwhile.\n\n"
         ":param assume: edition of a document that is not recognised; without one it is refused\n"
         ":param lossy: replace characters that code page 932 cannot hold by 〓 instead of refusing the document\n"
         ":param most_bytes: a larger one is refused; reading takes memory in proportion\n"
         ":param most_carried_items: a document with more that is not of a design is refused\n"
         ":raises DocumentError: it cannot be read")
      .def_static(
          "from_bytes",
          [](const py::bytes& data, const std::string& name, std::optional<Edition> assume, bool lossy,
             std::uint64_t mostBytes, std::size_t mostCarriedItems) {
            const DesignDocument::ReadOptions options{assume, lossy, mostBytes, mostCarriedItems};
            auto bytes = static_cast<std::string>(data);
            return Alone(OnFile(name, [&] {
              return WithoutPython([&] { return DesignDocument::FromBytes(std::move(bytes), name, options); });
            }));
          },
          py::arg("data"), py::arg("name") = "document.xml", py::kw_only(), py::arg("assume") = py::none(),
          py::arg("lossy") = false, py::arg("most_bytes") = vorn_host::kLargestFile,
          py::arg("most_carried_items") = vorn_host::CarriedContent::kMostItems,
          "Reads the bytes of a document as `read` does; the name stands for the file in messages.");
}

void AddWriting(Class<DesignDocument>& cls) {
  cls.def(
         "write",
         [](Element<DesignDocument>& e, const std::filesystem::path& path, vorn_host::TextEncoding encoding,
            bool lossy) {
           return OnFile(vorn_host::Utf8Text(path), [&] {
             if (vorn_host::KindToWrite(path) == vorn_host::DesignKind::Project) {
               throw vorn_host::DocumentError(vorn_host::Utf8Text(path) +
                                              ": this is a project, or named like one; a document in its place would "
                                              "lose its road data, and DesignFile writes it as a project");
             }
             return RunJob(e, [&](DesignDocument& document) { return document.Write(path, {encoding, lossy}); });
           });
         },
         py::arg("path"), py::kw_only(), py::arg("encoding") = vorn_host::TextEncoding::Utf8, py::arg("lossy") = false,
         "Writes the document in its edition, whole or not at all, and never over a project. Other threads go on "
         "meanwhile.\n\n"
         ":raises DocumentError: it cannot be written; an existing file stays as it is")
      .def(
          "to_bytes",
          [](Element<DesignDocument>& e, const std::string& name, vorn_host::TextEncoding encoding, bool lossy) {
            const std::string text = OnFile(name, [&] {
              return RunJob(e, [&](DesignDocument& document) {
                DesignDocument::WriteReport report;
                return document.ToBytes(name, {encoding, lossy}, report);
              });
            });
            return py::bytes(text);
          },
          py::arg("name") = "document.xml", py::kw_only(), py::arg("encoding") = vorn_host::TextEncoding::Utf8,
          py::arg("lossy") = false, "The bytes that `write` writes; the name stands for the file in messages.")
      .def(
          "check",
          [](Element<DesignDocument>& e) {
            return RunJob(e, [](DesignDocument& document) { return vorn_host::CheckDocument(document); });
          },
          "Checks the document in its own edition, and gives what is wrong in the order of the document.")
      .def(
          "convert",
          [](Element<DesignDocument>& e, Edition edition) {
            return OnFile("the document", [&] {
              return RunEdit(e, Rebuilds::Collections,
                             [&](DesignDocument& document) { return vorn_host::ConvertEdition(document, edition); });
            });
          },
          py::arg("edition"),
          "Converts the document to another edition; every point but a centre point keeps its position. Forms, points\n"
          "and control targets are to be taken from the document again.\n\n"
          ":raises DocumentError: it is a pure road-geometry document");
}

void AddValues(Class<DesignDocument>& cls) {
  ReadOnly(
      cls, "edition", [](const DesignDocument& document) { return document.edition; },
      "The edition that the document is written in; `convert` changes it.");
  ReadOnly(
      cls, "is_edition_assumed", [](const DesignDocument& document) { return document.assumed; },
      "Whether the edition was not recognised but assumed.");
  ReadOnly(
      cls, "encoding_name", [](const DesignDocument& document) { return document.encodingName; },
      "What the document that was read calls its encoding.");
  ReadOnly(
      cls, "replaced_characters", [](const DesignDocument& document) { return document.replacedCharacters; },
      "How many characters were replaced while reading.");
  ReadOnly(
      cls, "unread_values", [](const DesignDocument& document) { return document.unreadValues; },
      "What was not understood in reading, and will not be written.");
  ReadOnly(
      cls, "carried", [](const DesignDocument& document) { return document.carried.Rows(); },
      "What is carried over unchanged since the model does not hold it, by name and number.");
  Collection(
      cls, "file_infos", [](DesignDocument & document) -> auto& { return document.fileInfos; },
      "When the document was created and changed.");
  Collection(
      cls, "sets", [](DesignDocument & document) -> auto& { return document.sets; }, "The cross-section sets.");

  const Step step = StepTo<DesignDocument>([](DesignDocument & document) -> auto& { return document.structureType; });
  ElementAttribute(
      cls, "structure_type",
      [step](Element<DesignDocument>& e) {
        const bool isThere = e.Read().hasStructureType;
        return isThere ? std::optional(e.Below<Element<VornStructureType>>(step)) : std::nullopt;
      },
      [](Element<DesignDocument>& e, const std::optional<Ref<VornStructureType>>& structure) {
        DesignDocument& document = e.Change();
        document.structureType = structure ? VornStructureType((*structure)->Read()) : VornStructureType();
        document.hasStructureType = structure.has_value();
      },
      "The kind of work, None when the document has none. One that is set is copied.");
}

}  // namespace

void AddDocuments(py::module_& module) {
  AddReports(module);
  auto cls =
      AddClass<DesignDocument>(module, "DesignDocument",
                               "A design document: the model of it, and what the model does not hold, so that it\n"
                               "can be written again without a loss.");
  cls.def(py::init([](Edition edition) { return Alone(NewDocument(edition)); }), py::arg("edition") = Edition::V41,
          "A new document.");
  AddReading(cls);
  AddWriting(cls);
  AddValues(cls);
  AddExports(cls);
  Repr(cls, [](const DesignDocument& document) {
    return "edition " + std::string(vorn_host::EditionName(document.edition)) + ", " +
           std::to_string(document.sets.GetSize()) + " sets";
  });
  RefuseCopies(cls);

  module.def(
      "sample",
      [](vorn_host::SampleKind kind, int sections, std::uint64_t seed) {
        if (sections < 1) throw py::value_error("a sample has at least one cross section");
        return Alone(WithoutPython([&] {
          const vorn_host::EditionScope scope(Edition::V41);
          return vorn_host::ToDocument(vorn_host::MakeSampleDesign({sections, kind, seed}));
        }));
      },
      py::arg("kind") = vorn_host::SampleKind::Road, py::arg("sections") = 20, py::arg("seed") = 1,
      "Makes a realistic synthetic design of edition 4.1; `convert` gives it another one.\n"
      "The same arguments give the same design.");
}

}  // namespace vorn_python
