#include "host/cli/stored_output.h"

#include <utility>

#include "host/document/path_text.h"

namespace vorn_cli {

vorn_host::DesignDocument::WriteReport WriteDesign(vorn_host::DesignFile file, const std::string& path,
                                                   const vorn_host::DesignFile::WriteOptions& options,
                                                   StoredSummary& summary) {
  if (file.project) summary.fromStoreVersion = file.project->GetStoreVersion();
  vorn_host::DesignFile::WriteReport written = std::move(file).Write(vorn_host::Utf8Path(path), options);
  summary.storeVersion = std::move(written.storeVersion);
  summary.notStored = std::move(written.losses);
  summary.formerFile = vorn_host::Utf8Text(written.formerFile);
  summary.roadDataLeft = written.roadDataLeft;
  return std::move(written.document);
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
  const auto orNull = [](const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); };
  json["fromStoreVersion"] = orNull(summary.fromStoreVersion);
  json["storeVersion"] = orNull(summary.storeVersion);
  json["formerFile"] = orNull(summary.formerFile);
  json["notStored"] = Json::array();
  for (const vorn_host::Project::Loss& loss : summary.notStored) {
    json["notStored"].push_back({{"what", loss.what}, {"count", loss.count}});
  }
  json["roadDataLeft"] = summary.roadDataLeft;
}

}  // namespace vorn_cli
