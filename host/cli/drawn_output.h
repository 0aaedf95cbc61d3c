#pragma once

#include <string>

namespace vorn_cli {

/// Refuses an output file that holds a design, the one drawn or any other, or that is named like a project or the
/// backup of one: a drawing in its place would be the end of it.
/// @param design the one drawn
/// @param out empty for the standard output
/// @param what is to be written, "the drawing"
void RefuseToReplaceDesign(const std::string& design, const std::string& out, const std::string& what);

}  // namespace vorn_cli
