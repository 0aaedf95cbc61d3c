#pragma once

#include <string>

#include "host/document/design_document.h"

// What is asked of every document, whoever wrote it: it is read, or refused in a sentence; it can be checked, converted
// to every edition and written in both encodings; and what was written is read again as what it was.

namespace vorn_fuzz {

/// Judges the bytes of a document, and gives whether it can be read.
bool JudgeDocument(const std::string& bytes, const vorn_host::DesignDocument::ReadOptions& options);

/// Writes a document in its own edition and both encodings, and reads what was written.
/// @returns what was written in UTF-8
std::string JudgeWriting(vorn_host::DesignDocument& document);

/// What a text in UTF-8 lacks of the document that it was written from; empty when that is all there. Throws
/// `DocumentError` when the text cannot be read.
[[nodiscard]] std::string WhatIsLost(vorn_host::DesignDocument& document, const std::string& written);

}  // namespace vorn_fuzz
