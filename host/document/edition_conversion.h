#pragma once

#include <string>
#include <vector>

#include "host/document/design_document.h"

namespace vorn_host {

/// What a conversion between editions did.
struct ConversionReport {
  /// Something that the target edition cannot hold and that is therefore dropped, with how often.
  struct Dropped {
    std::string what;  ///< as the user is told it
    int count = 0;     ///< how often
  };
  std::vector<Dropped> dropped;  ///< what the target edition cannot hold
  /// What the model holds and the target edition does not write, with how often.
  std::vector<Dropped> notWritten;
  /// Control targets that could not be carried, each with its place and the reason.
  std::vector<std::string> lostTargets;
  /// Further remarks for the user, whole sentences.
  std::vector<std::string> notes;

  /// Points whose input values were re-expressed, and the largest distance (metres) that any of them moved by it.
  int convertedPoints = 0;
  double largestDisplacement = 0.0;  ///< metres
  /// Place of the point that moved most, empty when none did.
  std::string largestDisplacementAt;
  /// Points that moved by more than a millimetre.
  int farPoints = 0;
  /// Control targets that went from the forms to the set or back.
  int movedTargets = 0;
};

/// Converts a document to another edition and keeps its meaning: every point other than a centre point keeps its
/// position, and control targets keep the form, the station and the codes that they name. For the document's own
/// edition nothing changes, and the report tells what is not written in it. Throws `DocumentError` for a pure
/// road-geometry document; name stands for the file then.
ConversionReport ConvertEdition(DesignDocument& document, Edition target, const std::string& name = "the document");

}  // namespace vorn_host
