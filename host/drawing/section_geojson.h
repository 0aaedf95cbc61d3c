#pragma once

#include <string>

#include "host/document/atomic_file.h"
#include "host/drawing/section_view.h"

namespace vorn_host {

/// Writes cross sections as a GeoJSON feature collection in the plane of each section: coordinates are [offset, height]
/// in metres, as the member "metadata" tells, and no places on the earth.
///
/// The property "kind" tells features apart: a "section" is the point where the centre line meets the zero of heights
/// or, where its elevation is known, the design; a "form" is a line of a build form, or a single point that no line
/// reaches; "ground" is a line of existing ground; a "target" is the points that a control target names. Sets,
/// sections, forms and points count from 1, as in messages.
class SectionGeoJsonWriter {
 public:
  /// Writes the beginning of the collection.
  explicit SectionGeoJsonWriter(TextSink sink);

  /// Writes the features of a section.
  void Add(const SectionView& view);
  /// Ends the collection.
  void Finish();
  /// How many features were written.
  [[nodiscard]] int FeatureCount() const { return m_features; }

 private:
  void Feature(const std::string& json);

  TextSink m_sink;
  int m_features = 0;
};

}  // namespace vorn_host
