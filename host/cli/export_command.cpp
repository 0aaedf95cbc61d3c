#include "host/cli/export_command.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/drawn_output.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/atomic_file.h"
#include "host/document/path_text.h"
#include "host/drawing/design_export.h"
#include "host/drawing/value_text.h"

namespace vorn_cli {

namespace {

using vorn_host::CsvContent;
using vorn_host::DesignDocument;
using vorn_host::DesignExport;
using vorn_host::TextSink;

enum class Format { Dxf, Csv, GeoJson };

struct ExportOptions {
  DesignSource source;
  std::string out;  ///< empty for the standard output
  std::optional<Format> format;
  CsvContent content = CsvContent::Points;
  bool byteOrderMark = false;
  std::optional<double> centerHeight;
  vorn_host::DrawingOptions drawing;
};

/// What was exported; both the text and the JSON are made from it.
struct ExportSummary {
  Format format = Format::Dxf;
  int sections = 0;
  int entries = 0;     ///< rows of a table, features of a collection
  double scale = 0.0;  ///< 1:scale of a drawing
  int notes = 0;
  std::vector<std::string> firstNotes;  ///< each with its section
};

const std::map<std::string, Format>& Formats() {
  static const std::map<std::string, Format> formats = {
      {"dxf", Format::Dxf}, {"csv", Format::Csv}, {"geojson", Format::GeoJson}};
  return formats;
}

std::string NameOf(Format format) {
  for (const auto& [name, known] : Formats()) {
    if (known == format) return name;
  }
  return {};
}

const std::map<std::string, CsvContent>& Contents() {
  static const std::map<std::string, CsvContent> contents = {
      {"points", CsvContent::Points}, {"ground", CsvContent::Ground}, {"targets", CsvContent::Targets}};
  return contents;
}

/// The format that a file name ends with.
std::optional<Format> FormatOfName(const std::string& name) {
  std::string ending = vorn_host::Utf8Text(vorn_host::Utf8Path(name).extension());
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (ending == ".json") return Format::GeoJson;
  const auto found = Formats().find(ending.empty() ? ending : ending.substr(1));
  return found == Formats().end() ? std::nullopt : std::optional(found->second);
}

Format FormatOf(const ExportOptions& options) {
  const std::optional<Format> format = options.format ? options.format : FormatOfName(options.out);
  if (format) return *format;
  throw CLI::ValidationError("--format", options.out.empty()
                                             ? "has to be told where the standard output is written"
                                             : "has to be told, as the name of " + options.out + " tells none");
}

void RefuseMisplacedOptions(const CLI::App& command, const ExportOptions& options, Format format) {
  const auto only = [&](Format one, const char* name, const char* reason) {
    if (format != one && command.count(name) > 0) throw CLI::ValidationError(name, reason);
  };
  only(Format::Csv, "--what", "only a table (csv) shows one thing at a time");
  only(Format::Csv, "--bom", "only a table (csv) begins with a byte-order mark");
  only(Format::Dxf, "--scale", "only a drawing (dxf) has a scale");
  only(Format::Dxf, "--language", "only a drawing (dxf) has words of its own");
  if (options.source.json && options.out.empty()) {
    throw CLI::ValidationError("--json", "tells what was written into a file; -o names one");
  }
}

void TakeNote(const std::string& where, const std::string& note, ExportSummary& summary) {
  constexpr std::size_t kShown = 20;
  ++summary.notes;
  if (summary.firstNotes.size() < kShown) summary.firstNotes.push_back(where + ": " + note);
}

/// Runs `produce` on the file to write, or on the standard output.
void WriteOut(const std::string& out, const std::function<void(const TextSink&)>& produce) {
  out.empty() ? PrintPieces(produce) : vorn_host::WriteFileAtomically(vorn_host::Utf8Path(out), produce);
}

void WriteSections(const DesignExport& sections, const ExportOptions& options, const TextSink& write,
                   ExportSummary& summary) {
  switch (summary.format) {
    case Format::Dxf:
      summary.scale = sections.WriteDxf(write, options.drawing);
      break;
    case Format::Csv:
      summary.entries = sections.WriteCsv(write, options.content, options.byteOrderMark);
      break;
    case Format::GeoJson:
      summary.entries = sections.WriteGeoJson(write);
      break;
  }
}

ExportSummary Export(const ExportOptions& options, Format format) {
  Progress progress = ProgressOf(options.source);
  const DesignDocument document = ReadDesign(options.source, progress, 1).design;
  ExportSummary summary;
  summary.format = format;
  const auto note = [&](const std::string& where, const std::string& text) { TakeNote(where, text, summary); };
  const auto show = [&](std::string_view doing, int done, int total) { progress.Show(doing, done, total); };
  const DesignExport sections(document, options.centerHeight, note, show);
  summary.sections = sections.SectionCount();
  WriteOut(options.out, [&](const TextSink& write) { WriteSections(sections, options, write, summary); });
  return summary;
}

void PrintText(const ExportOptions& options, const ExportSummary& summary) {
  TextReport report;
  report.Row("Written", options.out);
  report.Row("Format", NameOf(summary.format));
  report.Row("Cross sections", std::to_string(summary.sections));
  if (summary.format == Format::Dxf) report.Row("Scale of texts", vorn_host::ScaleText(summary.scale));
  if (summary.format == Format::Csv) report.Row("Rows", std::to_string(summary.entries));
  if (summary.format == Format::GeoJson) report.Row("Features", std::to_string(summary.entries));
  if (summary.notes > 0) report.Line("Notes:");
  for (const std::string& note : summary.firstNotes) report.Line(note, 4);
  const int more = summary.notes - static_cast<int>(summary.firstNotes.size());
  if (more > 0) report.Line("and " + std::to_string(more) + " more", 4);
  Print(report);
}

void PrintJson(const ExportOptions& options, const ExportSummary& summary) {
  const auto ifFormat = [&](Format format, Json value) { return summary.format == format ? std::move(value) : Json(); };
  Print(Json{{"written", options.out},
             {"format", NameOf(summary.format)},
             {"crossSections", summary.sections},
             {"scale", ifFormat(Format::Dxf, summary.scale)},
             {"rows", ifFormat(Format::Csv, summary.entries)},
             {"features", ifFormat(Format::GeoJson, summary.entries)},
             {"notes", summary.notes},
             {"firstNotes", summary.firstNotes}});
}

/// The standard output holds the export itself; who reads it has to know that there is more to know.
void TellOfNotes(const ExportSummary& summary) {
  if (summary.notes == 0) return;
  PrintError(Counted(summary.notes, "note") + " on what is shown and what is not; an export into a file (-o) lists " +
             (summary.notes == 1 ? "it" : "them"));
}

void Report(const ExportOptions& options, const ExportSummary& summary) {
  if (options.out.empty()) return TellOfNotes(summary);
  options.source.json ? PrintJson(options, summary) : PrintText(options, summary);
}

void AddDrawingOptions(CLI::App& command, const std::shared_ptr<ExportOptions>& options) {
  AddScaleOption(command, options->drawing.scale,
                 "dxf: texts and marks are as large as on paper at 1:N (the largest usual scale that fits)");
  AddLanguageOption(command, options->drawing.language, "dxf: words of the drawing itself, en (default) or ja");
}

void AddTableOptions(CLI::App& command, const std::shared_ptr<ExportOptions>& options) {
  command
      .add_option_function<std::string>(
          "--what", [options](const std::string& text) { options->content = Contents().at(text); },
          "csv: points, ground or targets (points unless told otherwise)")
      ->check(CLI::IsMember(&Contents()))
      ->type_name("WHAT");
  command.add_flag("--bom", options->byteOrderMark, "csv: begin with a byte-order mark, for spreadsheets");
}

}  // namespace

void AddExportCommand(CLI::App& app) {
  const auto options = std::make_shared<ExportOptions>();
  CLI::App* command = app.add_subcommand("export", "Write the cross sections for CAD (dxf) and for scripts");
  AddFileArgument(*command, options->source);
  AddOutputOption(*command, options->out, "the file to write (the standard output unless told otherwise)");
  command
      ->add_option_function<std::string>(
          "--format", [options](const std::string& text) { options->format = Formats().at(text); },
          "dxf, csv or geojson (what the name of OUT ends with unless told otherwise)")
      ->check(CLI::IsMember(&Formats()))
      ->type_name("FORMAT");
  AddHeightOption(*command, options->centerHeight);
  AddDrawingOptions(*command, options);
  AddTableOptions(*command, options);
  AddReadOptions(*command, options->source);
  command->callback([options, command] {
    const Format format = FormatOf(*options);
    RefuseMisplacedOptions(*command, *options, format);
    RefuseToReplaceDesign(options->source.file, options->out, "the export");
    Report(*options, Export(*options, format));
  });
}

}  // namespace vorn_cli
