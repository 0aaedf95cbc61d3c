#include "host/cli/check_command.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/document/document_check.h"

namespace vorn_cli {

namespace {

using vorn_host::DesignDocument;
using vorn_host::Finding;
using vorn_host::Severity;

struct CheckOptions {
  DesignSource source;
  bool verbose = false;
};

/// What a check found; both the text and the JSON are made from it.
struct CheckSummary {
  /// Like findings, counted.
  struct Row {
    Severity severity;
    std::string kind;
    std::string reason;  ///< empty for errors, which are counted by kind alone
    std::string path;    ///< of the first of them
    int count = 0;
  };

  std::string file;
  std::string edition;
  bool assumed = false;
  std::vector<Finding> findings;
  std::vector<Row> rows;  ///< by first appearance
  int errors = 0;
  int notes = 0;
};

CheckSummary Summarise(const CheckOptions& options) {
  Progress progress = ProgressOf(options.source);
  const DesignDocument document = ReadDesign(options.source, progress, 2).design;
  progress.Show("checking", 1, 2);

  CheckSummary summary;
  summary.file = options.source.file;
  summary.edition = vorn_host::EditionName(document.edition);
  summary.assumed = document.assumed;
  summary.findings = vorn_host::CheckDocument(document);
  for (const Finding& finding : summary.findings) {
    const bool isError = finding.severity == Severity::Error;
    ++(isError ? summary.errors : summary.notes);
    const std::string reason = isError ? std::string() : finding.reason;
    auto row = std::find_if(summary.rows.begin(), summary.rows.end(), [&](const CheckSummary::Row& known) {
      return known.severity == finding.severity && known.kind == finding.kind && known.reason == reason;
    });
    if (row == summary.rows.end())
      row = summary.rows.insert(row, {finding.severity, finding.kind, reason, finding.path});
    ++row->count;
  }
  return summary;
}

void PrintFindings(TextReport& report, const CheckSummary& summary, Severity severity, std::string_view label) {
  for (const Finding& finding : summary.findings) {
    if (finding.severity != severity) continue;
    report.Line(std::string(label) + finding.path + ": " + finding.reason + " [" + finding.kind + "]");
  }
}

void PrintRows(TextReport& report, const CheckSummary& summary, Severity severity, std::string_view title) {
  const auto isWanted = [&](const CheckSummary::Row& row) { return row.severity == severity; };
  if (std::none_of(summary.rows.begin(), summary.rows.end(), isWanted)) return;
  report.Line(title);
  for (const CheckSummary::Row& row : summary.rows) {
    if (!isWanted(row)) continue;
    std::string what = row.kind;
    if (!row.reason.empty()) what += " (" + row.path + (row.count > 1 ? " and others" : "") + "): " + row.reason;
    report.CountRow(row.count, what);
  }
}

void PrintText(const CheckSummary& summary, bool verbose) {
  TextReport report;
  PrintFindings(report, summary, Severity::Error, "error: ");
  if (verbose) PrintFindings(report, summary, Severity::Note, "note: ");
  PrintRows(report, summary, Severity::Error, "Errors:");
  if (verbose) PrintRows(report, summary, Severity::Note, "Notes:");
  if (!verbose && summary.notes > 0) report.Line(Counted(summary.notes, "note") + " (--verbose lists them)");
  const std::string edition = " (edition " + summary.edition + (summary.assumed ? ", assumed" : "") + ")";
  if (summary.errors == 0) {
    report.Line("ok: " + summary.file + edition);
  } else {
    report.Line("not valid: " + summary.file + edition + ", " + Counted(summary.errors, "error"));
  }
  Print(report);
}

const char* SeverityName(Severity severity) { return severity == Severity::Error ? "error" : "note"; }

void PrintJson(const CheckSummary& summary) {
  Json json = {{"file", summary.file},         {"edition", summary.edition}, {"editionAssumed", summary.assumed},
               {"valid", summary.errors == 0}, {"errors", summary.errors},   {"notes", summary.notes},
               {"counts", Json::array()},      {"findings", Json::array()}};
  for (const CheckSummary::Row& row : summary.rows) {
    Json count = {{"severity", SeverityName(row.severity)}, {"kind", row.kind}};
    if (!row.reason.empty()) count["reason"] = row.reason;
    count["count"] = row.count;
    json["counts"].push_back(std::move(count));
  }
  for (const Finding& finding : summary.findings) {
    json["findings"].push_back({{"severity", SeverityName(finding.severity)},
                                {"kind", finding.kind},
                                {"path", finding.path},
                                {"reason", finding.reason}});
  }
  Print(json);
}

}  // namespace

void AddCheckCommand(CLI::App& app, int& exitCode) {
  const auto options = std::make_shared<CheckOptions>();
  CLI::App* command = app.add_subcommand("check", "Tell everything that is wrong in a document or project");
  AddFileArgument(*command, options->source);
  AddAssumeOption(*command, options->source.read.assume);
  command->add_flag("--verbose", options->verbose, "list every note, not only how many there are");
  AddLossyOption(*command, options->source);
  AddJsonOption(*command, options->source.json);
  command->callback([options, &exitCode] {
    const CheckSummary summary = Summarise(*options);
    options->source.json ? PrintJson(summary) : PrintText(summary, options->verbose);
    exitCode = summary.errors == 0 ? kOk : kInvalid;
  });
}

}  // namespace vorn_cli
