#include "host/cli/datums_command.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/document/text_encoding.h"
#include "vorn/road/vertical_datum.h"

namespace vorn_cli {

namespace {

using vorn_host::ToUtf8;

/// The shortest text that reads back as the height, placed so that decimal points stand below one another.
std::string HeightText(double height) {
  constexpr std::size_t kBeforePoint = 3;
  const std::string text = Json(height).dump();
  return std::string(kBeforePoint - std::min(kBeforePoint, text.find('.')), ' ') + text;
}

void PrintText() {
  std::vector<std::vector<std::string>> rows;
  rows.reserve(kVornVerticalDatums.size());
  for (const VornVerticalDatum& datum : kVornVerticalDatums) {
    rows.push_back({ToUtf8(datum.name), ToUtf8(datum.designation), HeightText(datum.height)});
  }
  TextReport report;
  report.Line("Vertical datums, with the height of the zero above that of Tokyo Bay in metres:");
  report.Table(rows, 4);
  Print(report);
}

void PrintJson() {
  Json datums = Json::array();
  for (const VornVerticalDatum& datum : kVornVerticalDatums) {
    datums.push_back(
        {{"name", ToUtf8(datum.name)}, {"designation", ToUtf8(datum.designation)}, {"height", datum.height}});
  }
  Print(Json{{"verticalDatums", std::move(datums)}});
}

}  // namespace

void AddDatumsCommand(CLI::App& app) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("datums", "Show the vertical datums with the heights of their zeros");
  AddJsonOption(*command, *json);
  command->callback([json] { *json ? PrintJson() : PrintText(); });
}

}  // namespace vorn_cli
