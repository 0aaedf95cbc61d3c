// Sees to it that the judges of documents and of projects notice losses: from documents that were written it cuts one
// element, one attribute, one text, one comment after the other, as a writer would that leaves them out, those among
// them that are carried over.
//   vorn_document_judge_test FILE...

#include "fuzz/document_judge.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/project_judge.h"
#include "host/document/document_error.h"
#include "host/document/edition_conversion.h"

namespace {

using vorn_host::DesignDocument;
using vorn_host::Edition;
using vorn_host::Project;

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

/// What was cut, what of it the reader refuses, so that no judge is asked, and what a judge did not notice.
struct Tally {
  int cuts = 0;
  int refused = 0;
  int unnoticed = 0;

  /// Tries a text without a part of it.
  /// @param lack tells what a text lacks, or throws `DocumentError`
  template <typename Lack>
  void Try(std::string text, const Cut& cut, Lack&& lack) {
    const std::string part = text.substr(cut.begin, cut.end - cut.begin);
    text.erase(cut.begin, cut.end - cut.begin);
    ++cuts;
    try {
      if (!lack(text).empty()) return;
    } catch (const vorn_host::DocumentError&) {
      ++refused;
      return;
    }
    ++unnoticed;
    std::printf("not noticed: %s\n", part.c_str());
  }
};

/// Empty attributes are read as they are when they are not there.
void AddAttributes(const std::string& text, const Cut& head, std::vector<Cut>& cuts) {
  std::size_t at = text.find(' ', head.begin);
  while (at < head.end) {
    const std::size_t open = text.find('"', at);
    if (open >= head.end) return;
    const std::size_t close = text.find('"', open + 1);
    if (close > open + 1) cuts.push_back({at, close + 1});
    at = close + 1;
  }
}

/// End of the comment, instruction, document type or character-data section that begins at a position; 0 for an
/// element.
std::size_t EndOfOpaque(std::string_view text, std::size_t at) {
  constexpr std::string_view kOpaque[][2] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!DOCTYPE", ">"}};
  for (const auto& [open, close] : kOpaque) {
    if (text.substr(at).starts_with(open)) return text.find(close, at) + close.size();
  }
  return 0;
}

/// The text that begins at a position and reaches up to the next tag.
void AddText(const std::string& text, std::size_t at, std::vector<Cut>& cuts) {
  const Cut cut = {at, std::min(text.find('<', at), text.size())};
  const bool isLayout = text.find_first_not_of(" \n", at) >= cut.end;
  if (!isLayout) cuts.push_back(cut);
}

/// All parts of a document but its declaration and the root itself.
struct Parts {
  std::vector<Cut> rootAttributes;
  std::vector<Cut> others;
};
Parts PartsOf(const std::string& text) {
  Parts parts;
  bool rootIsOpen = false;
  std::size_t end = text.find("?>") + 2;
  for (std::size_t at = text.find('<', end); at != std::string::npos; at = text.find('<', end)) {
    end = EndOfOpaque(text, at);
    if (end > 0) {
      parts.others.push_back({at, end});
    } else {
      end = text.find('>', at) + 1;
      const bool isHead = text[at + 1] != '/';
      if (isHead && rootIsOpen) parts.others.push_back(ElementAt(text, at));
      if (isHead) AddAttributes(text, {at, end - 1}, rootIsOpen ? parts.others : parts.rootAttributes);
      rootIsOpen = true;
    }
    AddText(text, end, parts.others);
  }
  return parts;
}

/// What a project lacks that was made of a document's text, saved and read again.
std::string WhatProjectLacks(const std::string& text, const std::vector<std::string>& held) {
  Project project;
  project.TakeDesign(DesignDocument::FromBytes(text, "document", {}));
  std::vector<Project::Loss> losses;
  const std::vector<std::uint8_t> saved = project.ToBytes("project", Project::kNewestStoreVersion, losses);
  Project again = Project::FromBytes({reinterpret_cast<const char*>(saved.data()), saved.size()}, "project");
  return vorn_fuzz::WhatIsLost(again, held);
}

void CutEach(DesignDocument& document, Tally& tally) {
  DesignDocument::WriteReport report;
  const std::string text = document.ToBytes("document", {}, report);
  const std::vector<std::string> held = vorn_fuzz::HeldByProject(document);
  const auto documentLacks = [&](const std::string& lacking) { return vorn_fuzz::WhatIsLost(document, lacking); };
  const auto projectLacks = [&](const std::string& lacking) { return WhatProjectLacks(lacking, held); };
  if (!documentLacks(text).empty() || !projectLacks(text).empty()) {
    throw std::runtime_error("what was not cut is missed");
  }
  const Parts parts = PartsOf(text);
  for (const Cut& cut : parts.rootAttributes) tally.Try(text, cut, documentLacks);
  for (const Cut& cut : parts.others) {
    tally.Try(text, cut, documentLacks);
    tally.Try(text, cut, projectLacks);
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
  std::printf("%d cuts, %d of them refused, %d not noticed\n", tally.cuts, tally.refused, tally.unnoticed);
  const bool tellsMuch = tally.cuts > 10 * tally.refused;
  return tellsMuch && tally.unnoticed == 0 ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 1;
}
