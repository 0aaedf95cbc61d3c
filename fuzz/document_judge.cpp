#include "fuzz/document_judge.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/document_holdings.h"
#include "fuzz/document_settling.h"
#include "fuzz/target.h"
#include "host/document/document_check.h"
#include "host/document/document_error.h"
#include "host/document/edition_conversion.h"
#include "host/document/root_namespaces.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DocumentError;
using vorn_host::Edition;
using vorn_host::TextEncoding;

/// The name that stands for the document in messages.
constexpr const char* kName = "document";

std::string Place(Edition edition, TextEncoding encoding) {
  return "edition " + std::string(EditionName(edition)) + ", " + std::string(EncodingName(encoding));
}

/// Shift_JIS cannot hold every character that is carried over: these are replaced.
std::string Written(DesignDocument& document, TextEncoding encoding) {
  DesignDocument::WriteReport report;
  return document.ToBytes(kName, {encoding, encoding == TextEncoding::ShiftJis}, report);
}

/// What a design becomes when it is written and read.
struct SettledDesign {
  DocumentHoldings holdings;
  std::string text;  ///< what it is written as from then on
};

/// The design itself stays as it is.
SettledDesign Settled(DesignDocument& document, TextEncoding encoding) {
  const VornFileInfoArray fileInfos = document.fileInfos;
  const Vorn_XSectionsArray sets = document.sets;
  Settle(document);
  SettledDesign settled;
  settled.text = Written(document, encoding);
  settled.holdings = HoldingsOf(document, encoding);
  document.fileInfos = fileInfos;
  document.sets = sets;
  return settled;
}

/// How many carried items the writer tells to have had no place.
int ToldWithoutPlace(DesignDocument& document, TextEncoding encoding) {
  DesignDocument::WriteReport report;
  (void)document.ToBytes(kName, {encoding, encoding == TextEncoding::ShiftJis}, report);
  return std::accumulate(report.unplaced.begin(), report.unplaced.end(), 0,
                         [](int count, const vorn_host::CarriedContent::Row& row) { return count + row.count; });
}

/// An attribute of the root that tells the edition, and that a document lacks or has otherwise; empty when there is
/// none. A pure road-geometry document tells its edition by its root alone.
std::string LostRootAttribute(const DesignDocument& document, const DesignDocument& again) {
  if (document.edition == Edition::RoadGm) return {};
  const vorn_host::EditionScope scope(document.edition);
  const vorn_host::XmlAttributes& held = again.carried.RootAttributes();
  for (const auto& attribute : vorn_host::AttributesOfHost(document.carried.RootAttributes())) {
    if (std::find(held.begin(), held.end(), attribute) == held.end()) return attribute.first + " of the root";
  }
  return {};
}

std::string WhatIsLost(DesignDocument& document, const SettledDesign& settled, const DesignDocument& again,
                       TextEncoding encoding) {
  if (again.edition != document.edition) return "the edition";
  const std::string attribute = LostRootAttribute(document, again);
  if (!attribute.empty()) return attribute;
  std::string difference = FirstDifference(settled.holdings.items, HoldingsOf(again, encoding).items);
  if (!difference.empty()) return difference;
  const int told = ToldWithoutPlace(document, encoding);
  const int lost = settled.holdings.carriedWithoutPlace;
  return told == lost ? std::string() : std::to_string(lost) + " carried items, but tells of " + std::to_string(told);
}

std::string JudgeWriting(DesignDocument& document, TextEncoding encoding) {
  const std::string place = Place(document.edition, encoding);
  try {
    std::string written = Written(document, encoding);
    if (Written(document, encoding) != written) Finding(place, "writing twice gives different bytes");
    DesignDocument again = DesignDocument::FromBytes(written, kName, {});
    const SettledDesign settled = Settled(document, encoding);
    const std::string lost = WhatIsLost(document, settled, again, encoding);
    if (!lost.empty()) Finding(place, "writing loses: " + lost);
    const std::string rewritten = Written(again, encoding);
    if (rewritten != settled.text) Finding(place, "what was written, read and written again is not the same");
    DesignDocument last = DesignDocument::FromBytes(rewritten, kName, {});
    if (Written(last, encoding) != rewritten) Finding(place, "what was rewritten does not stay the same");
    return written;
  } catch (const DocumentError& error) {
    Finding(place, error.what());
  }
}

std::optional<DesignDocument> TryRead(const std::string& bytes, const DesignDocument::ReadOptions& options) {
  try {
    return DesignDocument::FromBytes(bytes, kName, options);
  } catch (const DocumentError&) {
    return std::nullopt;
  }
}

/// The editions that a document can be written in: a pure road-geometry document stays one.
std::vector<Edition> TargetsOf(Edition edition) {
  if (edition == Edition::RoadGm) return {edition};
  return {vorn_host::kWritableEditions.begin(), vorn_host::kWritableEditions.end()};
}

}  // namespace

std::string WhatIsLost(DesignDocument& document, const std::string& written) {
  const TextEncoding encoding = TextEncoding::Utf8;
  return WhatIsLost(document, Settled(document, encoding), DesignDocument::FromBytes(written, kName, {}), encoding);
}

std::string JudgeWriting(DesignDocument& document) {
  (void)JudgeWriting(document, TextEncoding::ShiftJis);
  return JudgeWriting(document, TextEncoding::Utf8);
}

bool JudgeDocument(const std::string& bytes, const DesignDocument::ReadOptions& options) {
  std::optional<DesignDocument> document = TryRead(bytes, options);
  if (!document) return false;
  (void)CheckDocument(*document);
  for (const Edition edition : TargetsOf(document->edition)) {
    // Conversion and writing change the document.
    DesignDocument converted = DesignDocument::FromBytes(bytes, kName, options);
    if (edition != Edition::RoadGm) ConvertEdition(converted, edition, kName);
    (void)JudgeWriting(converted);
    (void)CheckDocument(converted);
  }
  return true;
}

}  // namespace vorn_fuzz
