#pragma once

#include <string>

namespace vorn_cli {

/// Refuses an output file that is the design itself: a drawing in its place would be the end of it.
/// @param what is to be written, "the drawing"
void RefuseToReplaceDesign(const std::string& design, const std::string& out, const std::string& what);

}  // namespace vorn_cli
