#include "host/cli/command_options.h"

#include <functional>
#include <string>
#include <vector>

#include "host/drawing/drawing_limits.h"
#include "host/drawing/value_text.h"

namespace vorn_cli {

namespace {

void AddEdition(CLI::App& command, const char* name, std::optional<vorn_host::Edition>& edition,
                const char* description) {
  std::vector<std::string> names;
  names.reserve(vorn_host::kWritableEditions.size());
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

/// @param language an optional one or not
template <typename Language>
void AddLanguage(CLI::App& command, Language& language, const char* description) {
  command
      .add_option_function<std::string>(
          "--language",
          [&language](const std::string& text) {
            language = text == "ja" ? vorn_host::Language::Japanese : vorn_host::Language::English;
          },
          description)
      ->check(CLI::IsMember({"en", "ja"}))
      ->type_name("LANGUAGE");
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

CLI::Option* AddOutputOption(CLI::App& command, std::string& out, const char* description) {
  const auto isName = [](const std::string& text) { return text.empty() ? "the name of the file is empty" : ""; };
  return command.add_option("-o,--output", out, description)->check(isName)->type_name("OUT");
}

void AddHeightOption(CLI::App& command, std::optional<double>& height) {
  command.add_option("--height", height, "height of the centre line in metres, where the design does not tell it")
      ->check(InRange(-vorn_host::kLargestHeight, vorn_host::kLargestHeight))
      ->type_name("H");
}

void AddScaleOption(CLI::App& command, double& scale, const char* description) {
  command.add_option("--scale", scale, description)
      ->check(InRange(vorn_host::kLargestScale, vorn_host::kSmallestScale))
      ->type_name("N");
}

void AddExaggerationOption(CLI::App& command, double& exaggeration) {
  command.add_option("--exaggerate", exaggeration, "draw heights so many times larger than widths")
      ->check(InRange(vorn_host::kLeastExaggeration, vorn_host::kMostExaggeration))
      ->type_name("N");
}

void AddLanguageOption(CLI::App& command, vorn_host::Language& language, const char* description) {
  AddLanguage(command, language, description);
}

void AddLanguageOption(CLI::App& command, std::optional<vorn_host::Language>& language, const char* description) {
  AddLanguage(command, language, description);
}

CLI::Validator InRange(double low, double high) {
  const std::string range = vorn_host::ValueText(low, 0, 4) + " to " + vorn_host::ValueText(high, 0, 4);
  return {[=](const std::string& text) {
            double value = 0.0;
            // Written so that NaN, which compares with nothing, is refused.
            const bool isInside = CLI::detail::lexical_cast(text, value) && value >= low && value <= high;
            return isInside ? std::string() : text + " is no number from " + range;
          },
          ""};
}

}  // namespace vorn_cli
