#include "host/cli/report_command.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

#include "host/cli/command_options.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/atomic_file.h"
#include "host/project/design_file.h"
#include "host/report/design_report.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignReport;
using vorn_host::ReportLanguage;

/// Farther from the datum than any road, and still exact to the last place of a document.
constexpr double kLargestHeight = 99999.9999;
constexpr double kMostExaggeration = 100.0;

struct ReportCommandOptions {
  std::string file;
  std::string out;
  DesignDocument::ReadOptions read;
  vorn_host::ReportOptions report;
  bool json = false;
};

const std::map<std::string, ReportLanguage>& Languages() {
  static const std::map<std::string, ReportLanguage> languages = {{"en", ReportLanguage::English},
                                                                  {"ja", ReportLanguage::Japanese}};
  return languages;
}

/// The value, unless it is outside or no number at all.
double Within(const std::string& option, double value, double least, double most) {
  if (value >= least && value <= most) return value;
  throw CLI::ValidationError(option, "it is not between " + StationText(least) + " and " + StationText(most));
}

/// The page never takes the place of the design that it shows.
void RefuseToReplaceDesign(const ReportCommandOptions& options) {
  std::error_code absent;
  if (std::filesystem::equivalent(options.file, options.out, absent)) {
    throw CLI::ValidationError("--output", "the report would replace the design " + options.file);
  }
}

DesignReport WriteReport(const ReportCommandOptions& options) {
  RefuseToReplaceDesign(options);
  Progress progress(Progress::IsLong(options.file));
  progress.Show("reading", 0, 1);
  const DesignDocument document = vorn_host::DesignFile::Read(options.file, options.read).design;
  DesignReport report = vorn_host::MakeReport(
      document, options.report, [&](int done, int total) { progress.Show("drawing cross sections", done, total); });
  vorn_host::WriteFileAtomically(options.out, report.html);
  return report;
}

void PrintText(const ReportCommandOptions& options, const DesignReport& report) {
  TextReport text;
  text.Row("Written", options.out);
  text.Row("Cross sections", std::to_string(report.sections));
  text.Row("Findings", Counted(report.errors, "error") + ", " + Counted(report.notes, "note"));
  Print(text);
}

void PrintJson(const ReportCommandOptions& options, const DesignReport& report) {
  Print(Json{{"written", options.out},
             {"crossSections", report.sections},
             {"errors", report.errors},
             {"notes", report.notes}});
}

}  // namespace

void AddReportCommand(CLI::App& app, int& exitCode) {
  const auto options = std::make_shared<ReportCommandOptions>();
  CLI::App* command = app.add_subcommand(
      "report", "Write a page for the browser: every cross section with its drawing and what is wrong in it");
  command->add_option("FILE", options->file, "the document or project (.vorn)")->required()->type_name("");
  command->add_option("-o,--output", options->out, "the page to write")->required()->type_name("PAGE");
  command
      ->add_option_function<double>(
          "--height",
          [options](double height) {
            options->report.centerHeight = Within("--height", height, -kLargestHeight, kLargestHeight);
          },
          "height of the centre line in metres, where the design does not tell it")
      ->type_name("H");
  command
      ->add_option_function<double>(
          "--exaggerate",
          [options](double times) {
            options->report.exaggeration = Within("--exaggerate", times, 1.0, kMostExaggeration);
          },
          "draw heights this many times larger than widths")
      ->type_name("N");
  command
      ->add_option_function<std::string>(
          "--language", [options](const std::string& text) { options->report.language = Languages().at(text); },
          "language that the page begins with (the reader's own unless told otherwise)")
      ->check(CLI::IsMember(&Languages()))
      ->type_name("LANGUAGE");
  AddAssumeOption(*command, options->read.assume);
  command->add_flag("--lossy", options->read.lossy, "read characters outside code page 932 as 〓");
  command->add_flag("--json", options->json, "JSON for programs");
  command->callback([options, &exitCode] {
    options->report.file = std::filesystem::path(options->file).filename().string();
    const DesignReport report = WriteReport(*options);
    options->json ? PrintJson(*options, report) : PrintText(*options, report);
    exitCode = kOk;
  });
}

}  // namespace vorn_cli
