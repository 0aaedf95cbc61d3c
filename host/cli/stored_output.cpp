#include "host/cli/stored_output.h"

#include <utility>

#include "host/document/path_text.h"

namespace vorn_cli {

using vorn_host::DesignFile;
using vorn_host::DesignKind;

namespace {

int CountSections(const vorn_host::DesignDocument& design) {
  int sections = 0;
  for (const VornXSections& set : design.sets) sections += set.GetXSectionArray().GetSize();
  return sections;
}

}  // namespace

void RewriteSummary::PrintHead(TextReport& report, const std::string& edition) const {
  report.Row("Written", out);
  report.Row("Edition", edition);
  if (!encoding.empty()) report.Row("Encoding", encoding);
  PrintStored(report, stored);
  report.Row("Cross sections", std::to_string(sections));
}

void RewriteSummary::PrintDoubts(TextReport& report) const {
  PrintReplaced(report, replacedInReading, replacedInWriting);
  PrintNotUnderstood(report, notUnderstood);
}

void RewriteSummary::PrintTail(TextReport& report, const std::vector<std::string>& notes) const {
  if (!unplaced.empty()) report.Line("Lost, with the element that held it: " + Describe(unplaced));
  for (const std::string& note : notes) report.Line("Note: " + note);
  if (!carried.empty()) report.Line("Carried over unchanged: " + Describe(carried));
}

void RewriteSummary::AddHead(Json& json) const {
  json["encoding"] = OrNull(encoding);
  json["crossSections"] = sections;
  json["replacedInReading"] = replacedInReading;
  json["replacedInWriting"] = replacedInWriting;
  json["notUnderstood"] = UnreadValuesToJson(notUnderstood);
}

void RewriteSummary::AddTail(Json& json) const {
  json["carriedOver"] = RowsToJson(carried);
  json["unplaced"] = RowsToJson(unplaced);
  AddStored(json, stored);
}

DesignKind KindToWrite(const CLI::App& command, const std::string& out) {
  const DesignKind kind = vorn_host::KindToWrite(vorn_host::Utf8Path(out));
  const auto refuse = [&](const char* name, const char* reason) {
    const CLI::Option* option = command.get_option_no_throw(name);
    if (option != nullptr && option->count() > 0) throw CLI::ValidationError(name, reason);
  };
  if (kind == DesignKind::Document) refuse("--store-version", "only a project (.vorn) has a store version");
  if (kind == DesignKind::Project) refuse("--encoding", "only a document has an encoding");
  return kind;
}

RewriteSummary WriteDesign(DesignFile file, const std::string& out, const DesignFile::WriteOptions& options) {
  RewriteSummary summary;
  summary.out = out;
  summary.sections = CountSections(file.design);
  summary.replacedInReading = file.design.replacedCharacters;
  summary.notUnderstood = file.design.unreadValues;
  summary.carried = file.design.carried.Rows();
  if (file.project) summary.stored.fromStoreVersion = file.project->GetStoreVersion();
  DesignFile::WriteReport written = std::move(file).Write(vorn_host::Utf8Path(out), options);
  if (written.storeVersion.empty()) summary.encoding = vorn_host::EncodingName(options.document.encoding);
  summary.stored.storeVersion = std::move(written.storeVersion);
  summary.stored.notStored = std::move(written.losses);
  summary.stored.formerFile = vorn_host::Utf8Text(written.formerFile);
  summary.stored.roadDataLeft = written.roadDataLeft;
  summary.replacedInWriting = written.document.replacedCharacters;
  summary.unplaced = std::move(written.document.unplaced);
  return summary;
}

void PrintStored(TextReport& report, const StoredSummary& summary) {
  if (!summary.storeVersion.empty()) {
    const bool changed = !summary.fromStoreVersion.empty() && summary.fromStoreVersion != summary.storeVersion;
    report.Row("Store version", summary.storeVersion + (changed ? " from " + summary.fromStoreVersion : ""));
  }
  if (!summary.formerFile.empty()) report.Row("Former file", "kept as " + summary.formerFile);
  if (!summary.notStored.empty()) {
    report.Line("Dropped, as store version " + summary.storeVersion + " cannot hold it:");
  }
  for (const vorn_host::Project::Loss& loss : summary.notStored) report.CountRow(loss.count, loss.what);
  if (summary.roadDataLeft) {
    report.Line("Note: a document holds the design alone; the project's road data are not in it");
  }
}

void AddStored(Json& json, const StoredSummary& summary) {
  json["fromStoreVersion"] = OrNull(summary.fromStoreVersion);
  json["storeVersion"] = OrNull(summary.storeVersion);
  json["formerFile"] = OrNull(summary.formerFile);
  json["notStored"] = Json::array();
  for (const vorn_host::Project::Loss& loss : summary.notStored) {
    json["notStored"].push_back({{"what", loss.what}, {"count", loss.count}});
  }
  json["roadDataLeft"] = summary.roadDataLeft;
}

}  // namespace vorn_cli
