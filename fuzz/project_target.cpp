// An input is a project file. Its checksums are made right first: no search would ever guess them, and what is to be
// stood lies behind them.

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "fuzz/document_judge.h"
#include "fuzz/project_judge.h"
#include "fuzz/target.h"
#include "host/document/document_check.h"
#include "host/document/document_error.h"
#include "host/document/edition_conversion.h"
#include "host/project/project.h"
#include "host/project/project_file.h"
#include "host/sample/sample_document.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DocumentError;
using vorn_host::Edition;
using vorn_host::Project;
using vorn_host::SampleKind;

/// The name that stands for the project in messages.
constexpr const char* kName = "project";

std::string TextOf(const std::vector<std::uint8_t>& bytes) { return {bytes.begin(), bytes.end()}; }

/// Where a project file's head has the store version and the size of the record.
constexpr std::size_t kStoreVersionAt = 12;
constexpr std::size_t kStoreVersionSize = 5;
constexpr std::size_t kRecordSizeAt = kStoreVersionAt + kStoreVersionSize;

/// The file with right sizes and checksums; what is no project stays as it is.
std::string Mended(std::string_view content) {
  if (!vorn_host::ProjectFile::IsProject(content) || content.size() < vorn_host::ProjectFile::kHeadSize) {
    return std::string(content);
  }
  const std::string_view parts = content.substr(vorn_host::ProjectFile::kHeadSize);
  std::size_t recordSize = 0;
  for (std::size_t i = 4; i > 0; --i) {
    recordSize = recordSize << 8 | static_cast<unsigned char>(content[kRecordSizeAt + i - 1]);
  }
  const std::string_view record = parts.substr(0, recordSize);
  vorn_host::ProjectFileBuilder builder{std::string(content.substr(kStoreVersionAt, kStoreVersionSize))};
  builder.Record().Write(record.data(), static_cast<std::uint32_t>(record.size()));
  return TextOf(builder.Finish(parts.substr(record.size())));
}

std::optional<Project> TryRead(std::string_view content) {
  try {
    return Project::FromBytes(content, kName);
  } catch (const DocumentError&) {
    return std::nullopt;
  }
}

/// The design as a document. Records may hold what no document can, such as bytes that are no text: then it is refused.
void JudgeDesign(DesignDocument& design) {
  (void)CheckDocument(design);
  std::string written;
  try {
    DesignDocument::WriteReport report;
    written = design.ToBytes(kName, {}, report);
  } catch (const DocumentError&) {
    return;
  }
  if (!JudgeDocument(written, {})) Finding("design", "what was written cannot be read");
}

Seed SampleSeed(SampleKind kind, std::string_view name, std::string_view storeVersion, Edition edition) {
  vorn_host::SampleOptions options;
  options.sections = 1;
  options.kind = kind;
  DesignDocument design = vorn_host::ToDocument(vorn_host::MakeSampleDesign(options));
  ConvertEdition(design, edition);
  Project project;
  project.TakeDesign(std::move(design));
  std::vector<Project::Loss> losses;
  return {std::string(name) + "_" + std::string(storeVersion), project.ToBytes(kName, storeVersion, losses)};
}

}  // namespace

bool Judge(std::span<const std::uint8_t> input) {
  const std::string content(input.begin(), input.end());
  (void)TryRead(content);
  const std::string mended = Mended(content);
  std::optional<Project> project = TryRead(mended);
  if (!project) return false;
  // Handing the design out changes the project: another one tells what it is.
  DesignDocument design = Project::FromBytes(mended, kName).GiveDesign();
  const std::vector<std::string> held = HeldByProject(design);
  for (const std::string_view storeVersion : Project::kWritableStoreVersions) JudgeSaving(*project, storeVersion, held);
  design = project->GiveDesign();
  (void)project->HoldsRoadData();
  JudgeDesign(design);
  const std::vector<std::string> heldNow = HeldByProject(design);
  project->TakeDesign(std::move(design));
  JudgeSaving(*project, Project::kNewestStoreVersion, heldNow);
  return true;
}

std::vector<Seed> MakeSeeds() {
  return {
      SampleSeed(SampleKind::Road, "road", "05.00", Edition::V20),
      SampleSeed(SampleKind::River, "river", "05.50", Edition::V40),
      SampleSeed(SampleKind::Farm, "farm", "06.00", Edition::Maff10),
      SampleSeed(SampleKind::Road, "road", "06.00", Edition::V41),
  };
}

}  // namespace vorn_fuzz
