#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "bench/competitors/document_tally.h"
#include "host/document/design_document.h"

/// A large design, as a model and as the bytes of its document.
struct DocumentSample {
  vorn_host::DesignDocument document;
  std::string text;
  DocumentTally tally;  ///< of the text, as the library reads it

  /// The sample whose document has about so many megabytes; it is made when first asked for, and kept.
  [[nodiscard]] static DocumentSample& Of(std::int64_t megabytes);
};

[[nodiscard]] vorn_host::DesignDocument ReadText(std::string text);
[[nodiscard]] std::string WriteText(vorn_host::DesignDocument& document);
[[nodiscard]] DocumentTally TallyOf(const vorn_host::DesignDocument& document);

/// The folder of the benchmarks' files, on the disk that holds the build.
[[nodiscard]] std::filesystem::path ScratchFolder();
/// Where a sample's document lies as a file; it is written when first asked for.
[[nodiscard]] std::filesystem::path SampleFile(std::int64_t megabytes);
/// Removes all files of the folder.
void RemoveScratchFiles();
