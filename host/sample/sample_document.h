#pragma once

#include "host/document/design_document.h"
#include "host/sample/sample_design.h"

namespace vorn_host {

/// A sample as a document in terms of the later editions; towards 2.0 it has to be converted.
[[nodiscard]] DesignDocument ToDocument(SampleDesign design);

}  // namespace vorn_host
