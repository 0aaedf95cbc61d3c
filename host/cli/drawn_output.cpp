#include "host/cli/drawn_output.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

#include "host/document/atomic_file.h"
#include "host/document/path_text.h"
#include "host/project/design_file.h"

namespace vorn_cli {

namespace {

namespace fs = std::filesystem;

/// Whether a name is that of a project or of the backup that stays beside one ("ring-road.vorn.bak").
bool IsNamedLikeProject(const fs::path& path) {
  return vorn_host::IsProjectName(path) || (path.extension() == ".bak" && vorn_host::IsProjectName(path.stem()));
}

}  // namespace

void RefuseToReplaceDesign(const std::string& design, const std::string& out, const std::string& what) {
  if (out.empty()) return;
  const fs::path path = vorn_host::Utf8Path(out);
  std::error_code absent;
  if (fs::equivalent(vorn_host::Utf8Path(design), path, absent) || vorn_host::HoldsDesign(path)) {
    throw CLI::ValidationError("--output", what + " would replace the design " + out);
  }
  if (IsNamedLikeProject(path) || IsNamedLikeProject(vorn_host::ThroughLinks(path))) {
    throw CLI::ValidationError("--output", out + " is the name of a project, which " + what + " is not");
  }
}

}  // namespace vorn_cli
