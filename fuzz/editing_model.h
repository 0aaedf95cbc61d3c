#pragma once

#include "fuzz/input_reader.h"
#include "host/document/design_document.h"

namespace vorn_fuzz {

/// A design as an input has it: a small sample of any kind and edition, in one set or two, with points, forms and
/// control targets changed, added and removed.
[[nodiscard]] vorn_host::DesignDocument MakeModel(InputReader& input);

/// A code, or the name of a form, that samples have, or that is special to an operation, or none of these.
[[nodiscard]] CString ChooseText(InputReader& input);
[[nodiscard]] VornLocation ChooseSide(InputReader& input);
/// A point with any values.
[[nodiscard]] VornComposedPnt MakePoint(InputReader& input);

/// A set, cross section or form of the design; none when there is none.
[[nodiscard]] VornXSections* ChooseSet(vorn_host::DesignDocument& design, InputReader& input);
[[nodiscard]] VornXSection* ChooseSection(vorn_host::DesignDocument& design, InputReader& input);
[[nodiscard]] VornXSection* ChooseSection(VornXSections& set, InputReader& input);
[[nodiscard]] VornBuildForm* ChooseForm(vorn_host::DesignDocument& design, InputReader& input);

}  // namespace vorn_fuzz
