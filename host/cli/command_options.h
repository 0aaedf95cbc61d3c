#pragma once

#include <CLI/CLI.hpp>
#include <optional>

#include "host/document/edition.h"
#include "host/document/text_encoding.h"

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

/// A number between two limits, both included; what is no number is not.
[[nodiscard]] CLI::Validator InRange(double low, double high);

}  // namespace vorn_cli
