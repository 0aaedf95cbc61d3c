#include "host/cli/drawn_output.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

#include "host/document/path_text.h"

namespace vorn_cli {

void RefuseToReplaceDesign(const std::string& design, const std::string& out, const std::string& what) {
  std::error_code absent;
  if (!std::filesystem::equivalent(vorn_host::Utf8Path(design), vorn_host::Utf8Path(out), absent)) return;
  throw CLI::ValidationError("--output", what + " would replace the design " + design);
}

}  // namespace vorn_cli
