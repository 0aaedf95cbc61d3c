#include "host/editing/design_editor.h"
#include "python/src/binding.h"
#include "python/src/report.h"

/// Editing a document step by step.
namespace vorn_python {

namespace {

using vorn_host::DesignDocument;
using vorn_host::EditReport;

/// An editor with the document that it works on.
class Editor {
 public:
  explicit Editor(Ref<DesignDocument> document) : m_document(std::move(document)) {
    RunEdit(*m_document, Rebuilds::Nothing,
            [&](DesignDocument& value) { m_editor = std::make_unique<vorn_host::DesignEditor>(value); });
    m_shape = m_document->Shape();
  }

  [[nodiscard]] const Ref<DesignDocument>& Document() const { return m_document; }

  /// Runs a step while other Python threads go on.
  /// @param step makes a report from the editor
  template <typename Step>
  EditReport Run(Step&& step) {
    const LibraryTurn turn;
    RequireOwnShape();
    try {
      EditReport report = RunEdit(*m_document, Rebuilds::Collections, [&](DesignDocument&) { return step(*m_editor); });
      m_shape = m_document->Shape();
      return report;
    } catch (...) {
      m_failed = true;
      throw;
    }
  }
  [[nodiscard]] std::vector<std::string> LostTargets() {
    const LibraryTurn turn;
    RequireOwnShape();
    return RunJob(*m_document, [&](DesignDocument&) { return m_editor->LostTargets(); });
  }

 private:
  /// The editor knows each section by its place.
  void RequireOwnShape() {
    (void)m_document->Read();
    if (m_failed) throw ExpiredError("a step failed and may have left the design half edited: read it again");
    if (m_document->Shape() == m_shape) return;
    throw ExpiredError("elements were added or removed since the editor was made: make a new one");
  }

  Ref<DesignDocument> m_document;
  std::unique_ptr<vorn_host::DesignEditor> m_editor;
  int m_shape = 0;
  bool m_failed = false;
};

void AddEditReport(py::module_& module) {
  AddReport<EditReport, &EditReport::step, &EditReport::changes, &EditReport::remarks, &EditReport::counts,
            &EditReport::notes>(module, "EditReport", "What one editing step changed.")
      .def_readonly("changes", &EditReport::changes,
                    "Cross sections that changed, each with its place and what changed.")
      .def_readonly("remarks", &EditReport::remarks,
                    "Cross sections that did not change as the step would have it, and why.")
      .def_property_readonly(
          "counts",
          [](const EditReport& report) {
            py::dict counts;
            for (const EditReport::Count& count : report.counts) counts[py::str(count.what)] = count.count;
            return counts;
          },
          "Totals of what changed, by name.")
      .def_readonly("notes", &EditReport::notes, "What one has to know besides.")
      .def_property_readonly("has_changed", &EditReport::HasChanged, "Whether anything changed.")
      .def("__repr__", [](const EditReport& report) {
        std::string totals;
        for (const auto& [what, count] : report.counts) totals += ", " + std::to_string(count) + " " + what;
        return "<vorn.EditReport " + std::to_string(report.changes.size()) + " sections changed" + totals + ">";
      });
}

CStringArray Names(const std::vector<CString>& names) {
  CStringArray array;
  for (const CString& name : names) array.Add(name);
  return array;
}

}  // namespace

void AddEditing(py::module_& module) {
  using Host = vorn_host::DesignEditor;
  AddEditReport(module);
  py::class_<Editor> cls(
      module, "DesignEditor",
      "Edits the cross sections of a document, a step at a time: input values follow the positions, control targets\n"
      "follow their forms, and what is carried over follows its elements.\n\n"
      "After a step, forms, points and control targets are to be taken from their sections again. When a step raises\n"
      "`EditError`, the design may be half edited and must not be written.");
  cls.def(py::init<Ref<DesignDocument>>(), py::arg("document").none(false),
          "Numbers the forms that have no serial, and places the points of sections that are not placed yet, relative\n"
          "to the centre line.")
      .def_property_readonly("document", &Editor::Document, "The document that is edited.")
      .def(
          "recalc",
          [](Editor& editor, NurReal height) { return editor.Run([&](Host& e) { return e.Recalc(height); }); },
          py::arg("center_height") = py::none(),
          "Places all points from the height of the centre line in metres; None takes each section's own.")
      .def(
          "recalc_crossings", [](Editor& editor) { return editor.Run([](Host& e) { return e.RecalcCrossings(); }); },
          "Recomputes the crossings with the existing ground. The points have to be placed first.")
      .def(
          "mirror", [](Editor& editor) { return editor.Run([](Host& e) { return e.Mirror(); }); },
          "Exchanges left and right.")
      .def(
          "shift",
          [](Editor& editor, double offset, double height) {
            const double dist = ToFinite(offset);
            const double up = ToFinite(height);
            return editor.Run([&](Host& e) { return e.Shift(dist, up); });
          },
          py::arg("offset"), py::arg("height") = 0.0,
          "Shifts the sections, in metres: sideways, negative to the left, which moves the points; and upward, which "
          "is\n"
          "noted and moves none.")
      .def(
          "retype",
          [](Editor& editor, const CString& left, const CString& right) {
            return editor.Run([&](Host& e) { return e.Retype(left, right); });
          },
          py::arg("left"), py::arg("right"), "Gives the sections one work type, or two for left and right.")
      .def(
          "sort_forms",
          [](Editor& editor, const std::vector<CString>& names) {
            return editor.Run([&](Host& e) { return e.SortForms(Names(names)); });
          },
          py::arg("names"), "Puts the forms of these names first, in this order.")
      .def(
          "remove_form",
          [](Editor& editor, const CString& name) { return editor.Run([&](Host& e) { return e.RemoveForm(name); }); },
          py::arg("name"), "Removes the forms of that name, with the control targets on them.")
      .def(
          "rename_form",
          [](Editor& editor, const CString& type, const CString& oldName, const CString& newName) {
            return editor.Run([&](Host& e) { return e.RenameForm(type, oldName, newName); });
          },
          py::arg("xsect_type"), py::arg("old_name"), py::arg("new_name"),
          "Renames the forms of a cross-section type and a name, in the control targets too.")
      .def(
          "clear_codes", [](Editor& editor) { return editor.Run([](Host& e) { return e.ClearCodes(); }); },
          "Empties the codes of all points.")
      .def(
          "regulate_targets", [](Editor& editor) { return editor.Run([](Host& e) { return e.RegulateTargets(); }); },
          "Puts the control targets into their canonical form, and removes repeated ones.")
      .def("lost_targets", &Editor::LostTargets,
           "Where control targets name a form or a code that does not exist, and did before the first step.")
      .def("__repr__", [](const Editor& editor) {
        return "<vorn.DesignEditor of " + py::repr(py::cast(editor.Document())).cast<std::string>() + ">";
      });
}

}  // namespace vorn_python
