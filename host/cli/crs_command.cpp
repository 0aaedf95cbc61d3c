#include "host/cli/crs_command.h"

#include <memory>
#include <string>
#include <vector>

#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/document/text_encoding.h"
#include "vorn/road/crs_data.h"

namespace vorn_cli {

namespace {

using GeoDatum = VornCrsData::GeoDatum;
using HorizonCoordinate = VornCrsData::HorizonCoordinate;

/// A value of an enumeration, as project data hold it, people read it and documents write it.
struct CodedValue {
  int value = 0;
  std::string text;
  std::string code;  ///< empty when it has none
};

template <typename Enum, typename GetText, typename GetCode>
std::vector<CodedValue> CodedValues(Enum first, Enum last, GetText getText, GetCode getCode) {
  std::vector<CodedValue> values;
  for (int value = static_cast<int>(first); value <= static_cast<int>(last); ++value) {
    const auto member = static_cast<Enum>(value);
    values.push_back({value, vorn_host::ToUtf8(getText(member)), vorn_host::ToUtf8(getCode(member))});
  }
  return values;
}

std::vector<CodedValue> CoordinateSystems() {
  return CodedValues(HorizonCoordinate::Plane1, HorizonCoordinate::Geodetic, VornCrsData::HorizonCoordStr,
                     [](HorizonCoordinate coordinate) { return VornCrsData().CoordinateSystem(coordinate); });
}

std::vector<CodedValue> GeodeticDatums() {
  return CodedValues(GeoDatum::Jgd2000, GeoDatum::Jgd2011, VornCrsData::GetGeoDatumStr,
                     [](GeoDatum datum) { return VornCrsData().HorizontalDatum(datum); });
}

/// The texts stand last: terminals do not agree on how wide a Roman numeral is.
void AddTable(TextReport& report, const char* title, const std::vector<CodedValue>& values) {
  std::vector<std::vector<std::string>> rows;
  for (const CodedValue& value : values) {
    const std::string number = std::to_string(value.value);
    rows.push_back({(number.size() < 2 ? " " : "") + number, value.code.empty() ? "no code" : value.code, value.text});
  }
  report.Line(title);
  report.Table(rows, 4);
}

void PrintText() {
  TextReport report;
  AddTable(report, "Coordinate systems:", CoordinateSystems());
  AddTable(report, "Geodetic datums:", GeodeticDatums());
  Print(report);
}

Json ToJson(const std::vector<CodedValue>& values) {
  Json json = Json::array();
  for (const CodedValue& value : values) {
    json.push_back({{"value", value.value}, {"text", value.text}, {"code", OrNull(value.code)}});
  }
  return json;
}

void PrintJson() {
  Print(Json{{"coordinateSystems", ToJson(CoordinateSystems())}, {"geodeticDatums", ToJson(GeodeticDatums())}});
}

}  // namespace

void AddCrsCommand(CLI::App& app) {
  const auto json = std::make_shared<bool>(false);
  CLI::App* command = app.add_subcommand("crs", "Show the coordinate systems and geodetic datums with their codes");
  AddJsonOption(*command, *json);
  command->callback([json] { *json ? PrintJson() : PrintText(); });
}

}  // namespace vorn_cli
