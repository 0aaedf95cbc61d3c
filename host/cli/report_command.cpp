#include "host/cli/report_command.h"

#include <filesystem>
#include <memory>
#include <string>

#include "host/cli/command_options.h"
#include "host/cli/drawn_output.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/atomic_file.h"
#include "host/document/path_text.h"
#include "host/project/design_file.h"
#include "host/report/design_report.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignReport;

struct ReportCommandOptions {
  std::string file;
  std::string out;
  DesignDocument::ReadOptions read;
  vorn_host::ReportOptions report;
  bool json = false;
};

DesignReport WriteReport(const ReportCommandOptions& options) {
  RefuseToReplaceDesign(options.file, options.out, "the report");
  Progress progress(Progress::IsLong(vorn_host::Utf8Path(options.file)));
  progress.Show("reading", 0, 1);
  const DesignDocument document = vorn_host::DesignFile::Read(vorn_host::Utf8Path(options.file), options.read).design;
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

void AddReportCommand(CLI::App& app, int& exitCode) {
  const auto options = std::make_shared<ReportCommandOptions>();
  CLI::App* command = app.add_subcommand(
      "report", "Write a page for the browser: every cross section with its drawing and what is wrong in it");
  command->add_option("FILE", options->file, "the document or project (.vorn)")->required()->type_name("");
  AddOutputOption(*command, options->out, "the page to write")->required()->type_name("PAGE");
  AddHeightOption(*command, options->report.centerHeight);
  AddExaggerationOption(*command, options->report.exaggeration);
  AddLanguageOption(*command, options->report.language,
                    "language that the page begins with: en or ja (the reader's own unless told otherwise)");
  AddAssumeOption(*command, options->read.assume);
  command->add_flag("--lossy", options->read.lossy, "read characters outside code page 932 as 〓");
  command->add_flag("--json", options->json, "JSON for programs");
  command->callback([options, &exitCode] {
    options->report.file = vorn_host::Utf8Text(vorn_host::Utf8Path(options->file).filename());
    const DesignReport report = WriteReport(*options);
    options->json ? PrintJson(*options, report) : PrintText(*options, report);
    exitCode = kOk;
  });
}

}  // namespace vorn_cli
