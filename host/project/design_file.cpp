#include "host/project/design_file.h"

#include <algorithm>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/document/path_text.h"
#include "host/project/project_file.h"
#include "vorn/platform/cstring.h"

namespace vorn_host {

namespace fs = std::filesystem;

namespace {

bool EndsWith(const fs::path& path, const char* ending) {
  const CString name(Utf8Text(path.filename()));
  return name.Right(CString(ending).GetLength()).CompareNoCase(ending) == 0;
}

bool HoldsProject(const fs::path& path) {
  constexpr std::size_t kHead = 8;
  return ProjectFile::IsProject(ReadBeginning(path, kHead));
}

/// Refuses a link to a document, by its name or by what it holds, that is named like a project.
void RequireNoDocument(const fs::path& link, const fs::path& target) {
  std::error_code error;
  if (HoldsProject(target) || !(EndsWith(target, ".xml") || fs::is_regular_file(target, error))) return;
  throw DocumentError(Utf8Text(link) + ": this link leads to " + Utf8Text(target) +
                      ", which is no project; a project in its place would take the document away");
}

/// Whether a name is that of a project or of the backup that stays beside one ("ring-road.vorn.bak").
bool IsNamedLikeProject(const fs::path& path) {
  return IsProjectName(path) || (EndsWith(path, ".bak") && IsProjectName(path.stem()));
}

std::string VersionToWrite(const std::optional<Project>& project) {
  const auto& known = Project::kWritableStoreVersions;
  const bool kept = project && std::find(known.begin(), known.end(), project->GetStoreVersion()) != known.end();
  return kept ? project->GetStoreVersion() : std::string(Project::kNewestStoreVersion);
}

}  // namespace

bool IsProjectName(const fs::path& path) { return EndsWith(path, ".vorn"); }

bool HoldsDesign(const fs::path& path) {
  constexpr std::size_t kBeforeRoot = 65536;  // comments and the like have room there, mostly
  const std::string beginning = ReadBeginning(path, kBeforeRoot);
  if (ProjectFile::IsProject(beginning) || DesignDocument::IsDocument(beginning)) return true;
  // A design may follow behind blanks alone, and at the end of an element of any name.
  const bool mayFollow = beginning.size() == kBeforeRoot && DesignDocument::IsMarkup(beginning + '<');
  return mayFollow && DesignDocument::IsDocument(ReadFile(path));
}

std::optional<std::string> ReasonToKeep(const fs::path& path, const std::string& what) {
  if (HoldsDesign(path)) return what + " would replace the design " + Utf8Text(path);
  if (!IsNamedLikeProject(path) && !IsNamedLikeProject(ThroughLinks(path))) return std::nullopt;
  return Utf8Text(path) + " is the name of a project, which " + what + " is not";
}

DesignKind KindToWrite(const fs::path& path) {
  const fs::path target = ThroughLinks(path);
  if (IsProjectName(target)) return DesignKind::Project;
  if (IsProjectName(path)) {
    RequireNoDocument(path, target);
    return DesignKind::Project;
  }
  if (!HoldsProject(path)) return DesignKind::Document;
  if (EndsWith(path, ".xml")) {
    throw DocumentError(Utf8Text(path) +
                        ": this file is a project, although it is named like a document; a document in "
                        "its place would lose the project's road data");
  }
  return DesignKind::Project;
}

DesignFile DesignFile::Read(const fs::path& path, const DesignDocument::ReadOptions& options) {
  std::string content = ReadFile(path, options.mostBytes);
  DesignFile file;
  if (IsProjectName(path) || ProjectFile::IsProject(content)) {
    file.project = Project::FromBytes(content, Utf8Text(path), {options.mostBytes, options.mostCarriedItems});
    file.design = file.project->GiveDesign();
  } else {
    file.design = DesignDocument::FromBytes(std::move(content), Utf8Text(path), options);
  }
  return file;
}

DesignFile::WriteReport DesignFile::Write(const fs::path& path, const WriteOptions& options) && {
  WriteReport report;
  if ((options.kind ? *options.kind : KindToWrite(path)) == DesignKind::Document) {
    report.document = design.Write(path, options.document);
    report.roadDataLeft = project && project->HoldsRoadData();
    return report;
  }
  report.storeVersion = options.storeVersion.empty() ? VersionToWrite(project) : options.storeVersion;
  std::error_code error;
  if (fs::is_regular_file(path, error)) report.formerFile = BackupOf(path);
  if (!project) project.emplace();
  project->TakeDesign(std::move(design));
  report.losses = project->Save(path, report.storeVersion);
  return report;
}

}  // namespace vorn_host
