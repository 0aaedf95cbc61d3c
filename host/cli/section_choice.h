#pragma once

#include <string>
#include <vector>

#include "host/drawing/section_view.h"

namespace vorn_cli {

/// Which cross section a user means. Numbers count from 1; 0 stands for not told.
struct SectionChoice {
  std::string station;  ///< in metres or as the document counts: "120", "No.6+0.0000"
  std::string name;
  int set = 0;
  int index = 0;  ///< in its set
};

/// A cross section by its indices in the document.
struct SectionPick {
  int set = 0;
  int section = 0;
};

/// The cross sections that a choice means: one, or those at one station of one set, before and behind a change of
/// shape. A document with a single cross section needs no choice. Throws `DocumentError` when there is none or when
/// several could be meant, and names them, or the nearest ones.
[[nodiscard]] std::vector<SectionPick> PickSections(const vorn_host::DesignDocument& document,
                                                    const vorn_host::SectionViewer& viewer, const SectionChoice& choice,
                                                    const std::string& file);

}  // namespace vorn_cli
