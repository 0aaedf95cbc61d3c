#include "fuzz/document_settling.h"

#include <cmath>

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;

/// A date that is none is written as an empty text, which is read as the first of all days. One that was never given is
/// not written at all.
void Settle(COleDateTime& date) {
  if (date.GetStatus() == COleDateTime::invalid) date = COleDateTime();
}

/// The values have the decimals that the point is written with.
void RoundValues(VornComposedPnt& point) { point.GetTextVal(point.GetTextData().View()); }

/// A second value that is missing, or no number, is read as zero. A point without a data type is written with all the
/// decimals that it may have, and as a width and a height, whose decimals are fewer; in edition 2.0 a centre point is
/// written with the decimals of its slope type, but without that.
void Settle(VornComposedPnt& point, bool edition20) {
  if (!point.GetY().IsSet() || !std::isfinite(point.GetY().Value())) point.SetY(0.0);
  if (edition20 && point.IsCenter() && point.IsSlope()) {
    RoundValues(point);
    point.SetSlopeType(VornComposedPnt::SlopeType::Unset);
  } else if (!edition20 && point.GetDataType() == VornComposedPnt::DataType::Unset) {
    RoundValues(point);
    point.SetDataType(VornComposedPnt::DataType::WidthHeight);
  }
}

/// A ground point without a distance is written as its height alone, which is read as a distance.
void Settle(VornExistingComposedPnt& point) {
  if (point.GetCLDist().IsSet() || !point.GetGh().IsSet()) return;
  point.SetCLDist(point.GetGh());
  point.SetGh(NurReal());
}

void Settle(VornXSection& section, bool edition20) {
  for (VornBuildForm& form : section.GetBuildFormArray()) {
    for (VornComposedPnt& point : form.GetComposedPntArray()) Settle(point, edition20);
  }
  for (VornExistingBuildForm& ground : section.GetExistingBuildFormArray()) {
    for (VornExistingComposedPnt& point : ground.GetComposedPntArray()) Settle(point);
  }
}

}  // namespace

void Settle(DesignDocument& document) {
  const vorn_host::EditionScope scope(document.edition);
  for (VornFileInfo& info : document.fileInfos) {
    Settle(info.GetCreateDate());
    Settle(info.GetChangeDate());
  }
  for (VornXSections& set : document.sets) {
    for (VornXSection& section : set.GetXSectionArray()) Settle(section, IsEdition20(document.edition));
  }
}

}  // namespace vorn_fuzz
