#include "host/cli/convert_command.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/command_options.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
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
  std::string in;
  std::string out;
  std::optional<vorn_host::Edition> edition;
  std::optional<vorn_host::Edition> assume;
  vorn_host::TextEncoding encoding = vorn_host::TextEncoding::Utf8;
  std::string storeVersion;  ///< empty for the newest
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
  std::string encoding;          ///< empty when a project is written
  std::string fromStoreVersion;  ///< empty when a document is read
  std::string storeVersion;      ///< empty when a document is written
  std::vector<Project::Loss> notStored;
  bool roadDataLeft = false;  ///< a document takes nothing of the project but the design
  int sections = 0;
  std::size_t replacedInReading = 0;
  std::size_t replacedInWriting = 0;
  std::vector<vorn_host::UnreadValue> notUnderstood;
  ConversionReport conversion;
  std::vector<vorn_host::CarriedContent::Row> carried;
  std::vector<vorn_host::CarriedContent::Row> unplaced;
};

/// Whether a project holds anything that a document of its design leaves behind.
bool HoldsRoadData(const VornLinearXMLData& data) {
  const VornInfoConstrcut& info = data.GetInfoConstrcut();
  const VornCtrlPoints& points = info.GetCtrlPoints();
  const VornRoadCenterData& center = data.GetRoadCenter();
  return !info.GetCrsArray().IsEmpty() || !points.GetCtrlPos().IsEmpty() || !points.GetBenchMarks().IsEmpty() ||
         !info.GetRoadGm().GetRoadInfo().IsInit() || !center.GetCrsArray().IsEmpty() || !center.GetGmPnts().IsEmpty() ||
         !center.GetProject().GetName().IsEmpty() || !center.GetRoadGm().GetAlignments().IsEmpty() ||
         !data.GetLandXml().GetAlignments().IsEmpty() || !data.GetLandXml().GetCgPoints().IsEmpty();
}

ConvertSummary Convert(const ConvertOptions& options) {
  constexpr int kSteps = 3;
  Progress progress(Progress::IsLong(options.in));
  progress.Show("reading", 0, kSteps);
  DesignFile file = DesignFile::Read(options.in, {options.assume, options.lossy});
  DesignDocument& document = file.design;
  const bool toProject = vorn_host::IsProjectName(options.out);

  ConvertSummary summary;
  summary.in = options.in;
  summary.out = options.out;
  summary.fromEdition = vorn_host::EditionName(document.edition);
  summary.assumed = document.assumed;
  if (file.project) summary.fromStoreVersion = file.project->GetStoreVersion();
  if (toProject) {
    summary.storeVersion = options.storeVersion.empty() ? Project::kNewestStoreVersion : options.storeVersion;
  } else {
    summary.encoding = vorn_host::EncodingName(options.encoding);
    summary.roadDataLeft = file.project && HoldsRoadData(file.project->data);
  }
  summary.replacedInReading = document.replacedCharacters;
  summary.notUnderstood = document.unreadValues;
  for (const VornXSections& set : document.sets) summary.sections += set.GetXSectionArray().GetSize();

  progress.Show("converting", 1, kSteps);
  summary.conversion = vorn_host::ConvertEdition(document, options.edition.value_or(document.edition));
  summary.toEdition = vorn_host::EditionName(document.edition);
  summary.carried = document.carried.Rows();

  progress.Show("writing", 2, kSteps);
  DesignFile::WriteReport written =
      std::move(file).Write(options.out, {{options.encoding, options.lossy}, summary.storeVersion});
  summary.replacedInWriting = written.document.replacedCharacters;
  summary.unplaced = std::move(written.document.unplaced);
  summary.notStored = std::move(written.losses);
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
  if (!summary.storeVersion.empty()) report.Row("Store version", summary.storeVersion);
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
  if (!conversion.dropped.empty()) report.Line("Dropped, as edition " + summary.toEdition + " cannot hold it:");
  for (const ConversionReport::Dropped& dropped : conversion.dropped) report.CountRow(dropped.count, dropped.what);
  if (!summary.notStored.empty()) {
    report.Line("Dropped, as store version " + summary.storeVersion + " cannot hold it:");
  }
  for (const Project::Loss& loss : summary.notStored) report.CountRow(loss.count, loss.what);
  if (summary.roadDataLeft)
    report.Line("Note: a document holds the design alone; the project's road data are not in it");
  if (!conversion.notWritten.empty()) report.Line("Not written, in any edition:");
  for (const ConversionReport::Dropped& left : conversion.notWritten) report.CountRow(left.count, left.what);
  if (!conversion.lostTargets.empty()) report.Line("Lost control targets:");
  for (const std::string& target : conversion.lostTargets) report.Line(target, 4);
  if (!summary.unplaced.empty()) report.Line("Lost, with the element that held it: " + Describe(summary.unplaced));
  for (const std::string& note : conversion.notes) report.Line("Note: " + note);
  if (!summary.carried.empty()) report.Line("Carried over unchanged: " + Describe(summary.carried));
  Print(report);
}

Json TextOrNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

void PrintJson(const ConvertSummary& summary) {
  const ConversionReport& conversion = summary.conversion;
  Json json = {{"in", summary.in},
               {"out", summary.out},
               {"fromEdition", summary.fromEdition},
               {"editionAssumed", summary.assumed},
               {"toEdition", summary.toEdition},
               {"encoding", TextOrNull(summary.encoding)},
               {"fromStoreVersion", TextOrNull(summary.fromStoreVersion)},
               {"storeVersion", TextOrNull(summary.storeVersion)},
               {"notStored", Json::array()},
               {"roadDataLeft", summary.roadDataLeft},
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
  for (const Project::Loss& loss : summary.notStored) {
    json["notStored"].push_back({{"what", loss.what}, {"count", loss.count}});
  }
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
  command->callback([options, &exitCode] {
    if (!options->storeVersion.empty() && !vorn_host::IsProjectName(options->out)) {
      throw CLI::ValidationError("--store-version", "only a project (.vorn) has a store version");
    }
    const ConvertSummary summary = Convert(*options);
    options->json ? PrintJson(summary) : PrintText(summary);
    exitCode = kOk;
  });
}

}  // namespace vorn_cli
