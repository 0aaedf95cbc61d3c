#pragma once

#include <string_view>

#include "host/drawing/section_view.h"

namespace vorn_host {

/// What exchange files call the kinds of a view.

/// "start", "roadbed", "slope", "berm", "other".
[[nodiscard]] constexpr std::string_view WordOf(SectionPart part) {
  switch (part) {
    case SectionPart::Start:
      return "start";
    case SectionPart::Roadbed:
      return "roadbed";
    case SectionPart::Slope:
      return "slope";
    case SectionPart::Berm:
      return "berm";
    case SectionPart::Other:
      break;
  }
  return "other";
}

/// What the two input values are: a width and a height, a width and a grade in percent, or a height and the width for
/// each metre of it.
[[nodiscard]] constexpr std::string_view WordOf(ViewInput::Reading reading) {
  switch (reading) {
    case ViewInput::Reading::Percent:
      return "width and percent";
    case ViewInput::Reading::Rate:
      return "height and rate";
    case ViewInput::Reading::WidthHeight:
      break;
  }
  return "width and height";
}

/// Where the height of the centre line comes from: the design or who asks for the view tells it, or it is taken from
/// where the design ends on the ground. Empty where it is not known.
[[nodiscard]] inline std::string_view HeightSourceOf(const SectionView& view) {
  if (!view.centerHeight) return {};
  return view.isHeightAssumed ? "ground" : "told";
}

/// "design surface", "layer", "other".
[[nodiscard]] constexpr std::string_view WordOf(FormRole role) {
  switch (role) {
    case FormRole::DesignSurface:
      return "design surface";
    case FormRole::Layer:
      return "layer";
    case FormRole::Other:
      break;
  }
  return "other";
}

/// "slope length", "width" and so on; "other" for an item that is none of these.
[[nodiscard]] constexpr std::string_view WordOf(ViewTarget::Item item) {
  switch (item) {
    case ViewTarget::Item::SlopeLength:
      return "slope length";
    case ViewTarget::Item::Width:
      return "width";
    case ViewTarget::Item::Height:
      return "height";
    case ViewTarget::Item::Thickness:
      return "thickness";
    case ViewTarget::Item::Depth:
      return "depth";
    case ViewTarget::Item::SectionArea:
      return "section area";
    case ViewTarget::Item::Length:
      return "length";
    case ViewTarget::Item::Area:
      return "area";
    case ViewTarget::Item::Other:
      break;
  }
  return "other";
}

}  // namespace vorn_host
