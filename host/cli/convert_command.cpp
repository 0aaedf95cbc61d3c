#include "host/cli/convert_command.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/stored_output.h"
#include "host/document/edition_conversion.h"
#include "host/document/path_text.h"
#include "host/project/design_file.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_cli {

namespace {

using vorn_host::ConversionReport;
using vorn_host::DesignDocument;
using vorn_host::DesignFile;
using vorn_host::Project;

struct ConvertOptions {
  std::string in;
  std::string out;
  std::optional<vorn_host::Edition> edition;
  std::optional<vorn_host::Edition> assume;
  vorn_host::TextEncoding encoding = vorn_host::TextEncoding::Utf8;
  std::string storeVersion;  ///< empty for that of the project read, where it can be written, else the newest
  bool toProject = false;
  bool lossy = false;
  bool json = false;
};

/// What a conversion did; both the text and the JSON are made from it.
struct ConvertSummary {
  std::string in;
  std::string out;
  std::string fromEdition;
  bool assumed = false;
  std::string toEdition;
  std::string encoding;  ///< empty when a project is written
  StoredSummary stored;
  int sections = 0;
  std::size_t replacedInReading = 0;
  std::size_t replacedInWriting = 0;
  std::vector<vorn_host::UnreadValue> notUnderstood;
  ConversionReport conversion;
  std::vector<vorn_host::CarriedContent::Row> carried;
  std::vector<vorn_host::CarriedContent::Row> unplaced;
};

ConvertSummary Convert(const ConvertOptions& options) {
  constexpr int kSteps = 3;
  Progress progress(Progress::IsLong(vorn_host::Utf8Path(options.in)));
  progress.Show("reading", 0, kSteps);
  DesignFile file = DesignFile::Read(vorn_host::Utf8Path(options.in), {options.assume, options.lossy});
  DesignDocument& document = file.design;

  ConvertSummary summary;
  summary.in = options.in;
  summary.out = options.out;
  summary.fromEdition = vorn_host::EditionName(document.edition);
  summary.assumed = document.assumed;
  summary.replacedInReading = document.replacedCharacters;
  summary.notUnderstood = document.unreadValues;
  for (const VornXSections& set : document.sets) summary.sections += set.GetXSectionArray().GetSize();

  progress.Show("converting", 1, kSteps);
  summary.conversion = vorn_host::ConvertEdition(document, options.edition.value_or(document.edition), options.in);
  summary.toEdition = vorn_host::EditionName(document.edition);
  summary.carried = document.carried.Rows();

  progress.Show("writing", 2, kSteps);
  DesignDocument::WriteReport written =
      WriteDesign(std::move(file), options.out,
                  {{options.encoding, options.lossy}, options.storeVersion, options.toProject}, summary.stored);
  if (summary.stored.storeVersion.empty()) summary.encoding = vorn_host::EncodingName(options.encoding);
  summary.replacedInWriting = written.replacedCharacters;
  summary.unplaced = std::move(written.unplaced);
  return summary;
}

std::string Millimetres(double metres) { return std::string(FixedDecimal(metres * 1000.0, 3).View()) + " mm"; }

void PrintText(const ConvertSummary& summary) {
  const ConversionReport& conversion = summary.conversion;
  TextReport report;
  std::string editions = summary.toEdition;
  if (summary.fromEdition != summary.toEdition) editions += " from " + summary.fromEdition;
  if (summary.assumed) editions += " (assumed)";
  report.Row("Written", summary.out);
  report.Row("Edition", editions);
  if (!summary.encoding.empty()) report.Row("Encoding", summary.encoding);
  PrintStored(report, summary.stored);
  report.Row("Cross sections", std::to_string(summary.sections));
  if (conversion.convertedPoints > 0) {
    std::string moved = std::to_string(conversion.convertedPoints) + " expressed anew, largest displacement " +
                        Millimetres(conversion.largestDisplacement);
    if (!conversion.largestDisplacementAt.empty()) moved += " at " + conversion.largestDisplacementAt;
    report.Row("Points", moved);
  }
  if (conversion.movedTargets > 0) {
    const bool toForms = summary.toEdition == vorn_host::EditionName(vorn_host::Edition::V20);
    report.Row("Control targets",
               std::to_string(conversion.movedTargets) + " moved " + (toForms ? "into their forms" : "into the sets"));
  }
  PrintReplaced(report, summary.replacedInReading, summary.replacedInWriting);
  PrintNotUnderstood(report, summary.notUnderstood);
  const bool toProject = !summary.stored.storeVersion.empty();
  if (!conversion.dropped.empty()) {
    report.Line(toProject ? "Kept in the project, but not in documents of edition " + summary.toEdition + ":"
                          : "Dropped, as edition " + summary.toEdition + " cannot hold it:");
  }
  for (const ConversionReport::Dropped& dropped : conversion.dropped) report.CountRow(dropped.count, dropped.what);
  if (!conversion.notWritten.empty())
    report.Line(toProject ? "Not in documents, in any edition:" : "Not written, in any edition:");
  for (const ConversionReport::Dropped& left : conversion.notWritten) report.CountRow(left.count, left.what);
  if (!conversion.lostTargets.empty()) report.Line("Lost control targets:");
  for (const std::string& target : conversion.lostTargets) report.Line(target, 4);
  if (!summary.unplaced.empty()) report.Line("Lost, with the element that held it: " + Describe(summary.unplaced));
  for (const std::string& note : conversion.notes) report.Line("Note: " + note);
  if (!summary.carried.empty()) report.Line("Carried over unchanged: " + Describe(summary.carried));
  Print(report);
}

void PrintJson(const ConvertSummary& summary) {
  const ConversionReport& conversion = summary.conversion;
  Json json = {{"in", summary.in},
               {"out", summary.out},
               {"fromEdition", summary.fromEdition},
               {"editionAssumed", summary.assumed},
               {"toEdition", summary.toEdition},
               {"encoding", summary.encoding.empty() ? Json(nullptr) : Json(summary.encoding)},
               {"crossSections", summary.sections},
               {"replacedInReading", summary.replacedInReading},
               {"replacedInWriting", summary.replacedInWriting},
               {"notUnderstood", UnreadValuesToJson(summary.notUnderstood)},
               {"convertedPoints", conversion.convertedPoints},
               {"largestDisplacementMm", conversion.largestDisplacement * 1000.0},
               {"largestDisplacementAt", conversion.largestDisplacementAt},
               {"movedTargets", conversion.movedTargets},
               {"dropped", Json::array()},
               {"notWritten", Json::array()},
               {"lostTargets", conversion.lostTargets},
               {"notes", conversion.notes},
               {"carriedOver", RowsToJson(summary.carried)},
               {"unplaced", RowsToJson(summary.unplaced)}};
  AddStored(json, summary.stored);
  for (const ConversionReport::Dropped& left : conversion.notWritten) {
    json["notWritten"].push_back({{"what", left.what}, {"count", left.count}});
  }
  for (const ConversionReport::Dropped& dropped : conversion.dropped) {
    json["dropped"].push_back({{"what", dropped.what}, {"count", dropped.count}});
  }
  Print(json);
}

}  // namespace

void AddConvertCommand(CLI::App& app, int& exitCode) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = app.add_subcommand("convert", "Write a document or project (.vorn) as the other, or anew");
  command->add_option("IN", options->in, "the document or project")->required()->type_name("");
  command->add_option("OUT", options->out, "what to write, a project when it ends with .vorn; it may be IN")
      ->required()
      ->type_name("");
  AddEditionOption(*command, options->edition, "edition to write (the document's own unless told otherwise)");
  AddEncodingOption(*command, options->encoding);
  command->add_option("--store-version", options->storeVersion, "store version of a project to write")
      ->check(CLI::IsMember(
          std::vector<std::string>(Project::kWritableStoreVersions.begin(), Project::kWritableStoreVersions.end())));
  AddAssumeOption(*command, options->assume);
  command->add_flag("--lossy", options->lossy, "replace characters outside code page 932 by 〓");
  command->add_flag("--json", options->json, "JSON for programs");
  command->callback([options, command, &exitCode] {
    options->toProject = vorn_host::IsWrittenAsProject(vorn_host::Utf8Path(options->out));
    if (!options->storeVersion.empty() && !options->toProject) {
      throw CLI::ValidationError("--store-version", "only a project (.vorn) has a store version");
    }
    if (options->toProject && command->count("--encoding") > 0) {
      throw CLI::ValidationError("--encoding", "only a document has an encoding");
    }
    const ConvertSummary summary = Convert(*options);
    options->json ? PrintJson(summary) : PrintText(summary);
    exitCode = kOk;
  });
}

}  // namespace vorn_cli
