#include <cmath>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/document/path_text.h"
#include "host/drawing/design_export.h"
#include "host/drawing/drawing_limits.h"
#include "host/drawing/section_title.h"
#include "host/drawing/svg_writer.h"
#include "host/drawing/value_text.h"
#include "host/project/design_file.h"
#include "host/report/design_report.h"
#include "python/src/binding.h"

/// What cross sections look like: drawings, tables, GeoJSON, and the page for the browser.
namespace vorn_python {

namespace {

namespace fs = std::filesystem;

using vorn_host::CsvContent;
using vorn_host::DesignDocument;
using vorn_host::DesignExport;
using vorn_host::DrawingOptions;
using vorn_host::Language;
using vorn_host::TextSink;

/// Where, and what could not be shown there.
using Notes = std::vector<std::pair<std::string, std::string>>;
using Height = std::optional<double>;

constexpr const char* kHeightDoc =
    ":param center_height: height of the centre line in metres, where the design does not tell it";

// --- what a user may tell --------------------------------------------------------------------------------------------

void RequireInRange(const char* name, double value, double least, double most) {
  if (value >= least && value <= most) return;
  throw py::value_error(std::string(name) + " is a number from " + vorn_host::ValueText(least, 0, 4) + " to " +
                        vorn_host::ValueText(most, 0, 4));
}

Height Checked(const Height& height) {
  if (height) RequireInRange("center_height", *height, -vorn_host::kLargestHeight, vorn_host::kLargestHeight);
  return height;
}

DrawingOptions DrawingOf(const std::optional<double>& scale, double exaggeration, Language language) {
  if (scale) RequireInRange("scale", *scale, vorn_host::kLargestScale, vorn_host::kSmallestScale);
  RequireInRange("exaggeration", exaggeration, vorn_host::kLeastExaggeration, vorn_host::kMostExaggeration);
  return {.exaggeration = exaggeration, .scale = scale.value_or(0.0), .language = language};
}

// --- one section -----------------------------------------------------------------------------------------------------

/// A cross section by its indices in the document that it stands in.
struct SectionPlace {
  Element<DesignDocument>* document = nullptr;
  int set = 0;
  int section = 0;
};

/// None for a section that stands alone or in a project.
std::optional<SectionPlace> PlaceOf(Element<VornXSection>& section) {
  (void)section.Read();
  auto* const document = dynamic_cast<Element<DesignDocument>*>(&section.Root());
  if (document == nullptr) return std::nullopt;
  const Node& set = *section.Parent()->Parent();  // the section stands in a collection, and that in its set
  return SectionPlace{document, set.Index(), section.Index()};
}

std::string Svg(const SectionPlace& place, const Height& height, const DrawingOptions& options) {
  return RunJob(*place.document, [&](DesignDocument& document) {
    const vorn_host::SectionView view = vorn_host::ViewOf(document, place.set, place.section, height);
    return vorn_host::WriteSvg(Draw(view, options), "Cross section " + TitleOf(view));
  });
}

// --- all sections ----------------------------------------------------------------------------------------------------

/// Writes an export piece by piece.
using Produce = std::function<void(const DesignExport&, const TextSink&)>;

/// Writes a file, whole or not at all, but never in place of a design.
/// @param what is written, "the table"
template <typename Write>
auto OnOutput(const fs::path& path, const char* what, Write&& write) {
  const std::string name = vorn_host::Utf8Text(path);
  return OnFile(name, [&] {
    if (const auto reason = vorn_host::ReasonToKeep(path, what)) throw vorn_host::DocumentError(name + ": " + *reason);
    return write();
  });
}

Notes WriteExport(Element<DesignDocument>& design, const fs::path& path, const char* what, const Height& height,
                  const Produce& produce) {
  Notes notes;
  const auto note = [&](const std::string& where, const std::string& text) { notes.emplace_back(where, text); };
  OnOutput(path, what, [&] {
    RunJob(design, [&](DesignDocument& document) {
      const DesignExport sections(document, Checked(height), note);
      vorn_host::WriteFileAtomically(path, [&](const TextSink& sink) { produce(sections, sink); });
    });
  });
  return notes;
}

std::string ExportText(Element<DesignDocument>& design, const Height& height, const Produce& produce) {
  std::string text;
  RunJob(design, [&](DesignDocument& document) {
    const DesignExport sections(document, Checked(height), [](const std::string&, const std::string&) {});
    produce(sections, [&](std::string_view piece) { text += piece; });
  });
  return text;
}

Produce Csv(CsvContent content, bool byteOrderMark) {
  return [=](const DesignExport& sections, const TextSink& sink) { sections.WriteCsv(sink, content, byteOrderMark); };
}

Produce GeoJson() {
  return [](const DesignExport& sections, const TextSink& sink) { sections.WriteGeoJson(sink); };
}

Produce Dxf(const DrawingOptions& drawing) {
  return [=](const DesignExport& sections, const TextSink& sink) { sections.WriteDxf(sink, drawing); };
}

constexpr const char* kNotesDoc =
    ":returns: places and what could not be shown there\n"
    ":raises DocumentError: the file cannot be written, or is or is named like a design";

std::string Doc(const char* text, std::initializer_list<const char*> fields) {
  std::string doc = std::string(text) + "\n";
  for (const char* field : fields) doc += std::string("\n") + field;
  return doc;
}

void AddTables(Class<DesignDocument>& cls) {
  constexpr const char* kContent = ":param content: what the rows are";
  cls.def(
         "to_csv",
         [](Element<DesignDocument>& e, CsvContent content, const Height& height) {
           return ExportText(e, height, Csv(content, false));
         },
         py::arg("content") = CsvContent::Points, py::kw_only(), py::arg("center_height") = py::none(),
         Doc("A table of all cross sections as comma-separated values, in metres; what is not known is empty. Sets,\n"
             "sections, forms and points count from 1.",
             {kContent, kHeightDoc})
             .c_str())
      .def(
          "write_csv",
          [](Element<DesignDocument>& e, const fs::path& path, CsvContent content, bool byteOrderMark,
             const Height& height) { return WriteExport(e, path, "the table", height, Csv(content, byteOrderMark)); },
          py::arg("path"), py::arg("content") = CsvContent::Points, py::kw_only(), py::arg("byte_order_mark") = false,
          py::arg("center_height") = py::none(),
          Doc("Writes what `to_csv` gives, in UTF-8.",
              {kContent, ":param byte_order_mark: begin with one, by which spreadsheets know UTF-8", kHeightDoc,
               kNotesDoc})
              .c_str())
      .def(
          "to_geojson",
          [](Element<DesignDocument>& e, const Height& height) { return ExportText(e, height, GeoJson()); },
          py::kw_only(), py::arg("center_height") = py::none(),
          Doc("All cross sections as GeoJSON, with a feature for each section, line and control target. Coordinates\n"
              "are offset and height in the plane of the section, and no places on the earth.",
              {kHeightDoc})
              .c_str())
      .def(
          "write_geojson",
          [](Element<DesignDocument>& e, const fs::path& path, const Height& height) {
            return WriteExport(e, path, "the table", height, GeoJson());
          },
          py::arg("path"), py::kw_only(), py::arg("center_height") = py::none(),
          Doc("Writes what `to_geojson` gives.", {kHeightDoc, kNotesDoc}).c_str());
}

void AddCadDrawing(Class<DesignDocument>& cls) {
  constexpr const char* kScale =
      ":param scale: texts and marks are as large as on paper at 1:scale; None takes the "
      "largest usual one that fits";
  constexpr const char* kLanguage = ":param language: of the drawing's own words";
  cls.def(
         "to_dxf",
         [](Element<DesignDocument>& e, const Height& height, const std::optional<double>& scale, Language language) {
           return py::bytes(ExportText(e, height, Dxf(DrawingOf(scale, 1.0, language))));
         },
         py::kw_only(), py::arg("center_height") = py::none(), py::arg("scale") = py::none(),
         py::arg("language") = Language::English,
         Doc("A CAD drawing (DXF R12) of all cross sections side by side, in metres at true scale.",
             {kHeightDoc, kScale, kLanguage})
             .c_str())
      .def(
          "write_dxf",
          [](Element<DesignDocument>& e, const fs::path& path, const Height& height, const std::optional<double>& scale,
             Language language) {
            return WriteExport(e, path, "the drawing", height, Dxf(DrawingOf(scale, 1.0, language)));
          },
          py::arg("path"), py::kw_only(), py::arg("center_height") = py::none(), py::arg("scale") = py::none(),
          py::arg("language") = Language::English,
          Doc("Writes what `to_dxf` gives.", {kHeightDoc, kScale, kLanguage, kNotesDoc}).c_str());
}

// --- the page for the browser ----------------------------------------------------------------------------------------

std::string Page(Element<DesignDocument>& design, std::string name, const Height& height, double exaggeration,
                 const std::optional<Language>& language) {
  const double checked = DrawingOf(std::nullopt, exaggeration, Language::English).exaggeration;
  const vorn_host::ReportOptions options{std::move(name), Checked(height), checked, language};
  return RunJob(design, [&](DesignDocument& document) { return vorn_host::MakeReport(document, options).html; });
}

void AddPage(Class<DesignDocument>& cls) {
  constexpr const char* kName = ":param name: of the design, as the page shows it";
  constexpr const char* kExaggeration = ":param exaggeration: how many times heights are drawn larger than widths";
  constexpr const char* kLanguage = ":param language: that the page begins with; None takes the reader's own";
  cls.def("to_html", &Page, py::arg("name") = "", py::kw_only(), py::arg("center_height") = py::none(),
          py::arg("exaggeration") = 1.0, py::arg("language") = py::none(),
          Doc("A page for the browser: every cross section with its drawing, its control targets and what is wrong in\n"
              "it. The page needs nothing but itself.",
              {kName, kHeightDoc, kExaggeration, kLanguage})
              .c_str())
      .def(
          "write_report",
          [](Element<DesignDocument>& e, const fs::path& path, const std::string& name, const Height& height,
             double exaggeration, const std::optional<Language>& language) {
            OnOutput(path, "the report", [&] {
              const std::string html = Page(e, name, height, exaggeration, language);
              WithoutPython([&] { vorn_host::WriteFileAtomically(path, html); });
            });
          },
          py::arg("path"), py::arg("name") = "", py::kw_only(), py::arg("center_height") = py::none(),
          py::arg("exaggeration") = 1.0, py::arg("language") = py::none(),
          Doc("Writes the page that `to_html` gives.",
              {kName, kHeightDoc, kExaggeration, kLanguage,
               ":raises DocumentError: the file cannot be written, or is or is named like a design"})
              .c_str());
}

}  // namespace

void AddSectionDrawing(Class<VornXSection>& cls) {
  cls.def(
         "to_svg",
         [](Element<VornXSection>& e, const Height& height, const std::optional<double>& scale, double exaggeration,
            Language language) {
           const std::optional<SectionPlace> place = PlaceOf(e);
           if (!place) throw py::value_error("a section is drawn with its document, and this one stands in none");
           return Svg(*place, Checked(height), DrawingOf(scale, exaggeration, language));
         },
         py::kw_only(), py::arg("center_height") = py::none(), py::arg("scale") = py::none(),
         py::arg("exaggeration") = 1.0, py::arg("language") = Language::English,
         Doc("The section as an SVG drawing in millimetres, to scale. Notebooks show it by themselves.",
             {kHeightDoc, ":param scale: draw at 1:scale; None takes the largest usual one that fits an A3 sheet",
              ":param exaggeration: how many times heights are drawn larger than widths",
              ":param language: of the drawing's own words", ":raises ValueError: the section stands in no document"})
             .c_str())
      .def("_repr_svg_", [](Element<VornXSection>& e) {
        const std::optional<SectionPlace> place = PlaceOf(e);
        return place ? std::optional(Svg(*place, std::nullopt, {})) : std::nullopt;
      });
}

void AddExports(Class<DesignDocument>& cls) {
  AddTables(cls);
  AddCadDrawing(cls);
  AddPage(cls);
}

}  // namespace vorn_python
