#pragma once

#include <string>
#include <vector>

#include "host/document/design_document.h"

namespace vorn_host {

/// How bad a finding is: an error makes the document invalid; a note tells what the library's own rule refuses although
/// every document of the edition looks so.
enum class Severity { Error, Note };

/// What a finding is about, by index: set of the document, section of the set, form of the section, point of the form.
/// -1 where it is about more than one of them, or none. A control target that a set holds is about the section at which
/// its points are.
struct FindingPlace {
  int set = -1;      ///< of the document
  int section = -1;  ///< of the set
  int form = -1;     ///< of the section
  int point = -1;    ///< of the form

  friend bool operator==(const FindingPlace&, const FindingPlace&) = default;
};

/// One thing found wrong in a document.
struct Finding {
  Severity severity = Severity::Error;  ///< how bad it is
  /// What kind of thing, the same text for like findings: "tsf:ComposedPnt not enabled", "station doubled".
  std::string kind;
  /// Where: set, station, form, point code, control target ("set 1 > station 120.0000 > form 路面 > point L1").
  std::string path;
  /// Why, in words ("existence is missing").
  std::string reason;
  FindingPlace place;  ///< the same place by index
};

/// Checks a document in its own edition: every value that was not understood in reading, every element that is not
/// enabled, stations out of order or doubled, control targets that name a form or a code that does not exist, and codes
/// used twice in one form. In the order of the document.
[[nodiscard]] std::vector<Finding> CheckDocument(const DesignDocument& document);

}  // namespace vorn_host
