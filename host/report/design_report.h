#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/document/design_document.h"
#include "host/drawing/language.h"

namespace vorn_host {

/// How a report is made.
struct ReportOptions {
  std::string file;  ///< name of the design, as the page shows it
  /// Height of the centre line above the datum in metres, where the design does not tell it.
  std::optional<double> centerHeight;
  double exaggeration = 1.0;         ///< how many times heights are drawn larger than widths
  std::optional<Language> language;  ///< the page begins with; else the reader's own
};

/// A design for the browser: one page with every cross section, its drawing, its control targets and what is wrong
/// with it. The page needs nothing but itself, and runs nothing but the script that it comes with.
struct DesignReport {
  std::string html;               ///< the page
  int sections = 0;               ///< how many it shows
  int errors = 0;                 ///< how many were found
  int notes = 0;                  ///< how many were found
  int targetsWithoutSection = 0;  ///< control targets that no cross section shows
};

/// Makes the page of a design: every cross section is looked at, drawn and checked. Whatever is wrong with the design
/// stands on the page; nothing is thrown for it.
/// @param progress told how many of the cross sections are done
[[nodiscard]] DesignReport MakeReport(const DesignDocument& document, const ReportOptions& options,
                                      const std::function<void(int done, int total)>& progress = {});

}  // namespace vorn_host
