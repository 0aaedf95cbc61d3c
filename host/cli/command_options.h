#pragma once

#include <CLI/CLI.hpp>
#include <optional>

#include "host/document/edition.h"
#include "host/document/text_encoding.h"
#include "host/drawing/language.h"

namespace vorn_cli {

/// Options that several commands share. Each stores into a variable that has to live as long as the command line.

/// `--edition`: the edition to write.
void AddEditionOption(CLI::App& command, std::optional<vorn_host::Edition>& edition, const char* description);
/// `--assume`: the edition of a document that is not recognised.
void AddAssumeOption(CLI::App& command, std::optional<vorn_host::Edition>& assume);
/// `--encoding`: the encoding to write.
void AddEncodingOption(CLI::App& command, vorn_host::TextEncoding& encoding);
/// `--encoding` where the document's own is kept unless told otherwise.
void AddEncodingOption(CLI::App& command, std::optional<vorn_host::TextEncoding>& encoding);

/// `--output`: the file to write. An empty name is refused: a script with a variable that is not set would otherwise
/// write to the standard output.
CLI::Option* AddOutputOption(CLI::App& command, std::string& out, const char* description);
/// `--height`: height of the centre line in metres, where the design does not tell it.
void AddHeightOption(CLI::App& command, std::optional<double>& height);
/// `--scale`: 1:scale on paper.
void AddScaleOption(CLI::App& command, double& scale, const char* description);
/// `--exaggerate`: how many times heights are drawn larger than widths.
void AddExaggerationOption(CLI::App& command, double& exaggeration);
/// `--language` of the words that are not the design's own.
void AddLanguageOption(CLI::App& command, vorn_host::Language& language, const char* description);
/// `--language` where it may stay open.
void AddLanguageOption(CLI::App& command, std::optional<vorn_host::Language>& language, const char* description);

/// A number between two limits, both included; what is no number is not.
[[nodiscard]] CLI::Validator InRange(double low, double high);

}  // namespace vorn_cli
