#include "fuzz/document_judge.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/target.h"
#include "host/document/document_check.h"
#include "host/document/document_error.h"
#include "host/document/edition_conversion.h"

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

/// Whether a point is written otherwise than it is read: a missing second value is read as zero, so is one that is no
/// number. A point without a data type is written with all the decimals that it may have, and as a width and a height,
/// whose decimals are fewer; in edition 2.0 a centre point is written with the decimals of its slope type, but without
/// that.
bool PointSettles(const VornComposedPnt& point, bool edition20) {
  if (!point.GetY().IsSet() || !std::isfinite(point.GetY().Value())) return true;
  return edition20 ? point.IsCenter() && point.IsSlope() : point.GetDataType() == VornComposedPnt::DataType::Unset;
}

/// Whether a ground point's only value is its height: it is read as a distance.
bool GroundPointSettles(const VornExistingComposedPnt& point) {
  return !point.GetCLDist().IsSet() && point.GetGh().IsSet();
}

bool SectionSettles(const VornXSection& section, bool edition20) {
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    for (const VornComposedPnt& point : form.GetComposedPntArray()) {
      if (PointSettles(point, edition20)) return true;
    }
  }
  for (const VornExistingBuildForm& ground : section.GetExistingBuildFormArray()) {
    const VornExistingComposedPntArray& points = ground.GetComposedPntArray();
    if (std::any_of(points.begin(), points.end(), GroundPointSettles)) return true;
  }
  return false;
}

/// Whether a date is none. It is written as an empty text, which is read as the first of all days.
bool HasNoDate(const DesignDocument& document) {
  for (const VornFileInfo& info : document.fileInfos) {
    if (info.GetCreateDate().GetStatus() != COleDateTime::valid) return true;
    if (info.GetChangeDate().GetStatus() != COleDateTime::valid) return true;
  }
  return false;
}

/// Whether the document is read otherwise than it was written, once.
bool Settles(const DesignDocument& document) {
  if (HasNoDate(document)) return true;
  for (const VornXSections& set : document.sets) {
    for (const VornXSection& section : set.GetXSectionArray()) {
      if (SectionSettles(section, IsEdition20(document.edition))) return true;
    }
  }
  return false;
}

std::string JudgeWriting(DesignDocument& document, TextEncoding encoding) {
  const std::string place = Place(document.edition, encoding);
  try {
    std::string written = Written(document, encoding);
    if (Written(document, encoding) != written) Finding(place, "writing twice gives different bytes");
    DesignDocument again = DesignDocument::FromBytes(written, kName, {});
    if (again.edition != document.edition) Finding(place, "what was written is of another edition");
    const std::string rewritten = Written(again, encoding);
    if (rewritten != written && !Settles(document))
      Finding(place, "what was written, read and written again is not the same");
    DesignDocument settled = DesignDocument::FromBytes(rewritten, kName, {});
    if (Written(settled, encoding) != rewritten) Finding(place, "what was rewritten does not stay the same");
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
