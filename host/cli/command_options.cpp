#include "host/cli/command_options.h"

#include <functional>
#include <string>
#include <vector>

#include "vorn/platform/fixed_decimal.h"

namespace vorn_cli {

namespace {

void AddEdition(CLI::App& command, const char* name, std::optional<vorn_host::Edition>& edition,
                const char* description) {
  std::vector<std::string> names;
  for (const vorn_host::Edition known : vorn_host::kWritableEditions) names.emplace_back(vorn_host::EditionName(known));
  command
      .add_option_function<std::string>(
          name, [&edition](const std::string& text) { edition = vorn_host::ParseEdition(text); }, description)
      ->check(CLI::IsMember(names))
      ->type_name("EDITION");
}

void AddEncoding(CLI::App& command, const std::function<void(vorn_host::TextEncoding)>& choose,
                 const char* description) {
  const std::vector<std::string> names = {"utf-8", "shift_jis"};
  command
      .add_option_function<std::string>(
          "--encoding",
          [choose](const std::string& text) {
            if (const auto encoding = vorn_host::ParseEncoding(text)) choose(*encoding);
          },
          description)
      ->check(CLI::IsMember(names, CLI::ignore_case))
      ->type_name("ENCODING");
}

}  // namespace

void AddEditionOption(CLI::App& command, std::optional<vorn_host::Edition>& edition, const char* description) {
  AddEdition(command, "--edition", edition, description);
}

void AddAssumeOption(CLI::App& command, std::optional<vorn_host::Edition>& assume) {
  AddEdition(command, "--assume", assume, "read a document whose edition is not recognised as one of this edition");
}

void AddEncodingOption(CLI::App& command, vorn_host::TextEncoding& encoding) {
  AddEncoding(
      command, [&encoding](vorn_host::TextEncoding chosen) { encoding = chosen; },
      "encoding of the written document (utf-8 unless told otherwise)");
}

void AddEncodingOption(CLI::App& command, std::optional<vorn_host::TextEncoding>& encoding) {
  AddEncoding(
      command, [&encoding](vorn_host::TextEncoding chosen) { encoding = chosen; },
      "encoding of the written document (its own unless told otherwise)");
}

CLI::Validator InRange(double low, double high) {
  const std::string range =
      std::string(FixedDecimal(low, 4).View()) + " to " + std::string(FixedDecimal(high, 4).View());
  return {[=](const std::string& text) {
            double value = 0.0;
            // Written so that NaN, which compares with nothing, is refused.
            const bool isInside = CLI::detail::lexical_cast(text, value) && value >= low && value <= high;
            return isInside ? std::string() : text + " is no number from " + range;
          },
          ""};
}

}  // namespace vorn_cli
