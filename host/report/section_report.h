#pragma once

#include <nlohmann/json_fwd.hpp>
#include <vector>

#include "host/document/document_check.h"
#include "host/drawing/section_drawing.h"
#include "host/drawing/section_view.h"

namespace vorn_host {

/// What the report tells of one cross section.
struct SectionReport {
  SectionView view;               ///< what the section holds
  SectionDrawing drawing;         ///< with English words
  SectionDrawing japanese;        ///< the same with Japanese words
  std::vector<Finding> findings;  ///< what is wrong with it
};

/// The section as the page reads it. Places on the drawing are in millimetres on paper from where its centre line is
/// (at its height where that is known, else at 0), y downwards; offsets and heights are in metres. Rows of equal things
/// are arrays, as thousands of sections have to fit into one page; their columns are named where they are written. A
/// line, mark, text or point whose place is no number is left out. Texts are kept once where both languages have them;
/// the words of each language stand beside the drawing.
[[nodiscard]] nlohmann::ordered_json ToJson(const SectionReport& report);

/// Its points as rows: form, point, name, and the value of its own where there is one.
[[nodiscard]] nlohmann::ordered_json ToJson(const ViewTarget& target);

/// [0 for an error or 1 for a note, kind, path, reason, form, point]
/// @param view counts forms and points, as the page does; -1 for those that it does not show
[[nodiscard]] nlohmann::ordered_json ToJson(const Finding& finding, const SectionView& view = {});

}  // namespace vorn_host
