#include "host/cli/report_command.h"

#include <memory>
#include <string>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/drawn_output.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/atomic_file.h"
#include "host/document/path_text.h"
#include "host/report/design_report.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignReport;

struct ReportCommandOptions {
  DesignSource source;
  std::string out;
  vorn_host::ReportOptions report;
};

DesignReport WriteReport(const ReportCommandOptions& options) {
  RefuseToReplaceDesign(options.source.file, options.out, "the report");
  Progress progress = ProgressOf(options.source);
  const DesignDocument document = ReadDesign(options.source, progress, 1).design;
  DesignReport report = vorn_host::MakeReport(
      document, options.report, [&](int done, int total) { progress.Show("drawing cross sections", done, total); });
  vorn_host::WriteFileAtomically(vorn_host::Utf8Path(options.out), report.html);
  return report;
}

void PrintText(const ReportCommandOptions& options, const DesignReport& report) {
  TextReport text;
  text.Row("Written", options.out);
  text.Row("Cross sections", std::to_string(report.sections));
  text.Row("Findings", Counted(report.errors, "error") + ", " + Counted(report.notes, "note"));
  if (report.targetsWithoutSection > 0) {
    text.Row("Control targets", std::to_string(report.targetsWithoutSection) + " at no cross section");
  }
  Print(text);
}

void PrintJson(const ReportCommandOptions& options, const DesignReport& report) {
  Print(Json{{"written", options.out},
             {"crossSections", report.sections},
             {"errors", report.errors},
             {"notes", report.notes},
             {"targetsWithoutSection", report.targetsWithoutSection}});
}

}  // namespace

void AddReportCommand(CLI::App& app) {
  const auto options = std::make_shared<ReportCommandOptions>();
  CLI::App* command = app.add_subcommand(
      "report", "Write a page for the browser: every cross section with its drawing and what is wrong in it");
  AddFileArgument(*command, options->source);
  AddOutputOption(*command, options->out, "the page to write")->required()->type_name("PAGE");
  AddHeightOption(*command, options->report.centerHeight);
  AddExaggerationOption(*command, options->report.exaggeration);
  AddLanguageOption(*command, options->report.language,
                    "language that the page begins with: en or ja (the reader's own unless told otherwise)");
  AddReadOptions(*command, options->source);
  command->callback([options] {
    options->report.file = vorn_host::Utf8Text(vorn_host::Utf8Path(options->source.file).filename());
    const DesignReport report = WriteReport(*options);
    options->source.json ? PrintJson(*options, report) : PrintText(*options, report);
  });
}

}  // namespace vorn_cli
