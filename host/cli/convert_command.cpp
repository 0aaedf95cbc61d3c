#include "host/cli/convert_command.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/stored_output.h"
#include "host/document/edition_conversion.h"
#include "host/project/design_file.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_cli {

namespace {

using vorn_host::ConversionReport;
using vorn_host::DesignDocument;
using vorn_host::DesignFile;
using vorn_host::Project;

struct ConvertOptions {
  DesignSource source;
  std::string out;
  std::optional<vorn_host::Edition> edition;
  vorn_host::TextEncoding encoding = vorn_host::TextEncoding::Utf8;
  std::string storeVersion;  ///< empty for that of the project read, where it can be written, else the newest
  vorn_host::DesignKind kind = vorn_host::DesignKind::Document;
};

/// What a conversion did; both the text and the JSON are made from it.
struct ConvertSummary {
  std::string in;
  std::string fromEdition;
  bool assumed = false;
  std::string toEdition;
  ConversionReport conversion;
  RewriteSummary written;
};

ConvertSummary Convert(const ConvertOptions& options) {
  constexpr int kSteps = 3;
  Progress progress = ProgressOf(options.source);
  DesignFile file = ReadDesign(options.source, progress, kSteps);
  DesignDocument& document = file.design;

  ConvertSummary summary;
  summary.in = options.source.file;
  summary.fromEdition = vorn_host::EditionName(document.edition);
  summary.assumed = document.assumed;

  progress.Show("converting", 1, kSteps);
  summary.conversion = vorn_host::ConvertEdition(document, options.edition.value_or(document.edition), summary.in);
  summary.toEdition = vorn_host::EditionName(document.edition);

  progress.Show("writing", 2, kSteps);
  summary.written = WriteDesign(std::move(file), options.out,
                                {{options.encoding, options.source.read.lossy}, options.storeVersion, options.kind});
  return summary;
}

std::string Millimetres(double metres) { return std::string(FixedDecimal(metres * 1000.0, 3).View()) + " mm"; }

void PrintText(const ConvertSummary& summary) {
  const ConversionReport& conversion = summary.conversion;
  TextReport report;
  std::string editions = summary.toEdition;
  if (summary.fromEdition != summary.toEdition) editions += " from " + summary.fromEdition;
  if (summary.assumed) editions += " (assumed)";
  summary.written.PrintHead(report, editions);
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
  summary.written.PrintDoubts(report);
  const bool toProject = !summary.written.stored.storeVersion.empty();
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
  summary.written.PrintTail(report, conversion.notes);
  Print(report);
}

Json ToJson(const std::vector<ConversionReport::Dropped>& dropped) {
  Json json = Json::array();
  for (const ConversionReport::Dropped& row : dropped) json.push_back({{"what", row.what}, {"count", row.count}});
  return json;
}

void PrintJson(const ConvertSummary& summary) {
  const ConversionReport& conversion = summary.conversion;
  Json json = {{"in", summary.in},
               {"out", summary.written.out},
               {"fromEdition", summary.fromEdition},
               {"editionAssumed", summary.assumed},
               {"toEdition", summary.toEdition}};
  summary.written.AddHead(json);
  json["convertedPoints"] = conversion.convertedPoints;
  json["largestDisplacementMm"] = conversion.largestDisplacement * 1000.0;
  json["largestDisplacementAt"] = conversion.largestDisplacementAt;
  json["movedTargets"] = conversion.movedTargets;
  json["dropped"] = ToJson(conversion.dropped);
  json["notWritten"] = ToJson(conversion.notWritten);
  json["lostTargets"] = conversion.lostTargets;
  json["notes"] = conversion.notes;
  summary.written.AddTail(json);
  Print(json);
}

}  // namespace

void AddConvertCommand(CLI::App& app) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = app.add_subcommand("convert", "Write a document or project (.vorn) as the other, or anew");
  command->add_option("IN", options->source.file, "the document or project")->required()->type_name("");
  command->add_option("OUT", options->out, "what to write, a project when it ends with .vorn; it may be IN")
      ->required()
      ->type_name("");
  AddEditionOption(*command, options->edition, "edition to write (the document's own unless told otherwise)");
  AddEncodingOption(*command, options->encoding);
  command->add_option("--store-version", options->storeVersion, "store version of a project to write")
      ->check(CLI::IsMember(
          std::vector<std::string>(Project::kWritableStoreVersions.begin(), Project::kWritableStoreVersions.end())));
  AddAssumeOption(*command, options->source.read.assume);
  AddLossyOption(*command, options->source, "replace characters outside code page 932 by 〓");
  AddJsonOption(*command, options->source.json);
  command->callback([options, command] {
    options->kind = KindToWrite(*command, options->out);
    const ConvertSummary summary = Convert(*options);
    options->source.json ? PrintJson(summary) : PrintText(summary);
  });
}

}  // namespace vorn_cli
