#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/project/project.h"

// What is asked of every project, wherever its design came from: what was saved is read again as what it was.

namespace vorn_fuzz {

/// What a project file has to hold of a design: flags that no store version has a place for are those of a new object.
/// The design stays as it is.
[[nodiscard]] std::vector<std::string> HeldByProject(vorn_host::DesignDocument& design);

/// What a project that was read lacks of what it has to hold; empty when that is all there. Its design is out then.
[[nodiscard]] std::string WhatIsLost(vorn_host::Project& project, const std::vector<std::string>& held);

/// Saves a project and reads it again: it holds the design, lacks nothing more, and saving it again gives the same
/// bytes.
/// @param held `HeldByProject` of the design that is in the project
void JudgeSaving(vorn_host::Project& project, std::string_view storeVersion, const std::vector<std::string>& held);

}  // namespace vorn_fuzz
