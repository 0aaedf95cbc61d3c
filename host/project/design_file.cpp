#include "host/project/design_file.h"

#include <utility>

#include "host/document/atomic_file.h"
#include "host/project/project_file.h"
#include "vorn/platform/cstring.h"

namespace vorn_host {

bool IsProjectName(const std::filesystem::path& path) {
  return CString(path.extension().string()).CompareNoCase(".vorn") == 0;
}

DesignFile DesignFile::Read(const std::filesystem::path& path, const DesignDocument::ReadOptions& options) {
  std::string content = ReadFile(path);
  DesignFile file;
  if (IsProjectName(path) || ProjectFile::IsProject(content)) {
    file.project = Project::FromBytes(content, path.string());
    file.design = file.project->GiveDesign();
  } else {
    file.design = DesignDocument::FromBytes(std::move(content), path.string(), options);
  }
  return file;
}

DesignFile::WriteReport DesignFile::Write(const std::filesystem::path& path, const WriteOptions& options) && {
  WriteReport report;
  if (!IsProjectName(path)) {
    report.document = design.Write(path, options.document);
    return report;
  }
  if (!project) project.emplace();
  project->TakeDesign(std::move(design));
  report.losses = project->Save(path, options.storeVersion);
  return report;
}

}  // namespace vorn_host
