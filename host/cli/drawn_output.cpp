#include "host/cli/drawn_output.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

#include "host/document/path_text.h"
#include "host/project/design_file.h"

namespace vorn_cli {

void RefuseToReplaceDesign(const std::string& design, const std::string& out, const std::string& what) {
  if (out.empty()) return;
  const std::filesystem::path path = vorn_host::Utf8Path(out);
  std::error_code absent;
  if (std::filesystem::equivalent(vorn_host::Utf8Path(design), path, absent)) {
    throw CLI::ValidationError("--output", what + " would replace the design " + out);
  }
  if (const auto reason = vorn_host::ReasonToKeep(path, what)) throw CLI::ValidationError("--output", *reason);
}

}  // namespace vorn_cli
