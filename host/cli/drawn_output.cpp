#include "host/cli/drawn_output.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>

namespace vorn_cli {

void RefuseToReplaceDesign(const std::string& design, const std::string& out, const std::string& what) {
  std::error_code absent;
  if (!std::filesystem::equivalent(design, out, absent)) return;
  throw CLI::ValidationError("--output", what + " would replace the design " + design);
}

}  // namespace vorn_cli
