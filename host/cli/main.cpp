#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/check_command.h"
#include "host/cli/console.h"
#include "host/cli/convert_command.h"
#include "host/cli/crs_command.h"
#include "host/cli/datums_command.h"
#include "host/cli/edit_command.h"
#include "host/cli/export_command.h"
#include "host/cli/forms_command.h"
#include "host/cli/info_command.h"
#include "host/cli/output.h"
#include "host/cli/plot_command.h"
#include "host/cli/report_command.h"
#include "host/cli/sample_command.h"
#include "host/cli/settings_command.h"
#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/settings/user_settings.h"

namespace {

int Run(const std::vector<std::string>& arguments) {
  auto settings = vorn_host::InstallUserSettings(vorn_host::kVornTool,
                                                 [](const std::string& problem) { vorn_cli::PrintError(problem); });
  int exitCode = vorn_cli::kOk;
  CLI::App app("Reads, checks and rewrites design documents of roads, rivers and farm works.", "vorn");
  app.set_version_flag("--version", "vorn " VORN_VERSION);
  app.require_subcommand(1);
  app.allow_windows_style_options(false);  // a path may begin with a slash on every system
  vorn_cli::AddInfoCommand(app);
  vorn_cli::AddCheckCommand(app, exitCode);
  vorn_cli::AddConvertCommand(app);
  vorn_cli::AddEditCommand(app);
  vorn_cli::AddExportCommand(app);
  vorn_cli::AddFormsCommand(app);
  vorn_cli::AddPlotCommand(app);
  vorn_cli::AddReportCommand(app);
  vorn_cli::AddSampleCommand(app);
  vorn_cli::AddDatumsCommand(app);
  vorn_cli::AddCrsCommand(app);
  vorn_cli::AddSettingsCommand(app, exitCode, std::move(settings));
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // it takes them from the back
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
      std::ostringstream help;
      app.exit(error, help);
      vorn_cli::PrintVerbatim(help.str());
      return vorn_cli::kOk;
    }
    vorn_cli::PrintError(std::string(error.what()) + " (--help shows how to use the command)");
    return vorn_cli::kFailed;
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  vorn_host::RemoveUnfinishedFilesOnSignals();
  const vorn_cli::Utf8Console console;
  try {
    return Run(vorn_cli::Arguments(argc, argv));
  } catch (const vorn_host::UnmappableText& error) {
    vorn_cli::PrintError(std::string(error.what()) + "; --lossy replaces it with 〓");
  } catch (const vorn_host::UnknownEdition& error) {
    vorn_cli::PrintError(std::string(error.what()) +
                         (error.CanBeAssumed() ? "\n an edition can be assumed: --assume 4.1" : ""));
  } catch (const std::bad_alloc&) {
    vorn_cli::PrintError("there is not enough memory for this document");
  } catch (const std::exception& error) {
    vorn_cli::PrintError(error.what());
  }
  return vorn_cli::kFailed;
}
