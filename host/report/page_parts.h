#pragma once

#include <string_view>

namespace vorn_host {

/// The report's own page as it is in `page/`, built into the program.
struct PageParts {
  std::string_view html;    ///< with a comment wherever something is filled in
  std::string_view style;   ///< of the one style element
  std::string_view script;  ///< of the one script element, a module
  /// SHA-256 of style and script in hexadecimal digits: the browser runs these two and nothing else.
  std::string_view styleSha256;
  std::string_view scriptSha256;  ///< of the script
};

/// The page that this program has.
extern const PageParts kReportPage;

}  // namespace vorn_host
