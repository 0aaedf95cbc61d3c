#pragma once

#include "vorn/framework/array.h"
#include "vorn/model/build_form.h"

/// The build forms of one cross section.
class Vorn_BuildFormArray : public Vorn_Array<VornBuildForm> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::OneOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:BuildForm"; }
};
