#pragma once

#include <string>

#include "host/drawing/section_view.h"

namespace vorn_host {

/// What a section is called where people are told of it: "No.6+0.0000 (No.6)", "no station (No.6)".
[[nodiscard]] inline std::string TitleOf(const SectionView& view) {
  std::string title = view.stationText.empty() ? "no station" : view.stationText;
  if (view.isBehindChange) title += " behind the change of shape";
  return view.name.empty() ? title : title + " (" + view.name + ")";
}

}  // namespace vorn_host
