#pragma once

#include <array>
#include <span>
#include <string_view>

namespace vorn_host {

/// What the library reads of one kind of element. Everything else in it is carried over.
struct KnownElement {
  std::string_view tag;
  std::span<const std::string_view> attributes;
  std::span<const std::string_view> children;
  bool hasText;
};

/// The knowledge of an element; null for one that the library does not model.
[[nodiscard]] const KnownElement* FindKnownElement(std::string_view tag);
/// The elements directly below the root that the library models, in the order in which a new document has them.
inline constexpr std::array<std::string_view, 3> kRootChildren = {"tsf:FileInfo", "tsf:StructureType", "tsf:XSections"};

}  // namespace vorn_host
