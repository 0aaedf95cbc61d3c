#include "host/cli/design_source.h"

#include "host/cli/command_options.h"
#include "host/document/path_text.h"

namespace vorn_cli {

void AddFileArgument(CLI::App& command, DesignSource& source) {
  command.add_option("FILE", source.file, "the document or project (.vorn)")->required()->type_name("");
}

CLI::Option* AddReadOptions(CLI::App& command, DesignSource& source) {
  AddAssumeOption(command, source.read.assume);
  AddLossyOption(command, source);
  return AddJsonOption(command, source.json);
}

void AddLossyOption(CLI::App& command, DesignSource& source, const char* description) {
  command.add_flag("--lossy", source.read.lossy, description);
}

CLI::Option* AddJsonOption(CLI::App& command, bool& json) {
  return command.add_flag("--json", json, "JSON for programs");
}

Progress ProgressOf(const DesignSource& source) { return Progress(Progress::IsLong(vorn_host::Utf8Path(source.file))); }

vorn_host::DesignFile ReadDesign(const DesignSource& source, Progress& progress, int steps) {
  progress.Show("reading", 0, steps);
  return vorn_host::DesignFile::Read(vorn_host::Utf8Path(source.file), source.read);
}

}  // namespace vorn_cli
