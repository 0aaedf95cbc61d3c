#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vorn_host {

/// Where a settings text puts more than `kMostNames` names within each other, in a dotted name, in a header or by
/// tables in braces; none where it does not. Such a text would exhaust the stack of whoever walks through its tables,
/// the TOML parser first of all, so it has to be known beforehand. Up to its first mistake a text is understood as the
/// parser does; behind that it does not matter.
[[nodiscard]] std::optional<std::size_t> FindTooManyNames(std::string_view text);

}  // namespace vorn_host
