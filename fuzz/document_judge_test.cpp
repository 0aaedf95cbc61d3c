// Sees to it that the judge of documents notices losses: from documents that were written it cuts one element, then one
// attribute, after the other, as a writer would that leaves them out.
//   vorn_document_judge_test FILE...

#include "fuzz/document_judge.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/document/document_error.h"
#include "host/document/edition_conversion.h"

namespace {

using vorn_host::DesignDocument;
using vorn_host::Edition;

/// A part of a text.
struct Cut {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// The element whose tag begins at a position, with all that is in it.
Cut ElementAt(std::string_view text, std::size_t at) {
  const std::string tag(text.substr(at, text.find_first_of(" />", at) - at));
  const std::size_t headEnd = text.find('>', at);
  if (text[headEnd - 1] == '/') return {at, headEnd + 1};
  const std::string close = "</" + tag.substr(1) + '>';
  return {at, text.find(close, headEnd) + close.size()};
}

bool IsNoticed(DesignDocument& document, std::string text, const Cut& cut) {
  text.erase(cut.begin, cut.end - cut.begin);
  try {
    return !vorn_fuzz::WhatIsLost(document, text).empty();
  } catch (const vorn_host::DocumentError&) {
    return true;
  }
}

/// What was cut, and what of it nobody noticed.
struct Tally {
  int cuts = 0;
  int unnoticed = 0;

  void Try(DesignDocument& document, const std::string& text, const Cut& cut) {
    ++cuts;
    if (IsNoticed(document, text, cut)) return;
    ++unnoticed;
    std::printf("not noticed: %s\n", text.substr(cut.begin, cut.end - cut.begin).c_str());
  }
};

/// Empty attributes are read as they are when they are not there.
void CutAttributes(DesignDocument& document, const std::string& text, const Cut& head, Tally& tally) {
  std::size_t at = text.find(' ', head.begin);
  while (at < head.end) {
    const std::size_t open = text.find('"', at);
    if (open >= head.end) return;
    const std::size_t close = text.find('"', open + 1);
    if (close > open + 1) tally.Try(document, text, {at, close + 1});
    at = close + 1;
  }
}

/// Everything below the root.
void CutEach(DesignDocument& document, Tally& tally) {
  DesignDocument::WriteReport report;
  const std::string text = document.ToBytes("document", {}, report);
  if (IsNoticed(document, text, {})) throw std::runtime_error("what was not cut is missed");
  const std::size_t root = text.find("<tsf:");
  for (std::size_t at = text.find('<', root + 1); at != std::string::npos; at = text.find('<', at + 1)) {
    if (text[at + 1] == '/' || text[at + 1] == '!' || text[at + 1] == '?') continue;
    tally.Try(document, text, ElementAt(text, at));
    CutAttributes(document, text, {at, text.find('>', at)}, tally);
  }
}

}  // namespace

int main(int argc, char** argv) try {
  Tally tally;
  for (int i = 1; i < argc; ++i) {
    for (const Edition edition : vorn_host::kWritableEditions) {
      DesignDocument document = DesignDocument::Read(argv[i]);
      ConvertEdition(document, edition, argv[i]);
      CutEach(document, tally);
    }
  }
  std::printf("%d cuts, %d of them not noticed\n", tally.cuts, tally.unnoticed);
  return tally.cuts > 0 && tally.unnoticed == 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
