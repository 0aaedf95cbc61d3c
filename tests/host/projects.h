#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/project/project.h"
#include "host/project/project_file.h"
#include "tests/host/documents.h"
#include "vorn/platform/carchive.h"

// Projects for tests, and the parts that project files are made of.

namespace host_test {

/// What messages call a project that is in no file.
inline constexpr std::string_view kProjectName = "ring.vorn";

inline std::string Text(const std::vector<std::uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

inline std::string Stored(vorn_host::Project& project,
                          std::string_view storeVersion = vorn_host::Project::kNewestStoreVersion) {
  std::vector<vorn_host::Project::Loss> losses;
  return Text(project.ToBytes(std::string(kProjectName), storeVersion, losses));
}

inline vorn_host::Project Reloaded(vorn_host::Project& project,
                                   std::string_view storeVersion = vorn_host::Project::kNewestStoreVersion) {
  return vorn_host::Project::FromBytes(Stored(project, storeVersion), std::string(kProjectName));
}

inline vorn_host::Project ProjectOf(vorn_host::DesignDocument design) {
  vorn_host::Project project;
  project.TakeDesign(std::move(design));
  return project;
}

inline std::string ProjectReadError(const std::string& content) {
  return ErrorOf([&] { (void)vorn_host::Project::FromBytes(content, std::string(kProjectName)); });
}

/// A project file around a record and a document part, with right checksums.
inline std::string FileOf(const std::string& storeVersion, std::string_view record, std::string_view document = {}) {
  vorn_host::ProjectFileBuilder builder(storeVersion);
  builder.Record().Write(record.data(), static_cast<std::uint32_t>(record.size()));
  return Text(builder.Finish(document));
}

/// The record of road data as a library of that store version writes it.
inline std::string RecordOf(VornLinearXMLData data, const char* storeVersion) {
  data.GetInfoConstrcut().SetStoreVersion(storeVersion);
  data.GetRoadCenter().SetStoreVersion(storeVersion);
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  data.Serialize(ar, storeVersion);
  ar.Close();
  return Text(file.Bytes());
}

inline vorn_host::DesignDocument SmallDesign() {
  vorn_host::DesignDocument design;
  VornXSections& set = design.sets[design.sets.Add(VornXSections())];
  set.SetRefAlign("A-1");
  set.SetRefVertical("V-1");
  set.GetXSectionArray().Add(Section(20.0, {RoadForm("Plan")}));
  return design;
}

}  // namespace host_test
