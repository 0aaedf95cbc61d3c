#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace vorn_host {

// The tags of the elements that the library models, qualified.

/// Of file information.
inline constexpr std::string_view kFileInfoTag = "tsf:FileInfo";
/// Of a structure type.
inline constexpr std::string_view kStructureTypeTag = "tsf:StructureType";
/// Of a set of cross sections.
inline constexpr std::string_view kXSectionsTag = "tsf:XSections";
/// Of a cross section.
inline constexpr std::string_view kXSectionTag = "tsf:XSection";
/// Of a build form.
inline constexpr std::string_view kBuildFormTag = "tsf:BuildForm";
/// Of a composed point.
inline constexpr std::string_view kComposedPntTag = "tsf:ComposedPnt";
/// Of existing ground.
inline constexpr std::string_view kExistingBuildFormTag = "tsf:ExistingBuildForm";
/// Of a ground point.
inline constexpr std::string_view kExistingComposedPntTag = "tsf:ExistingComposedPnt";
/// Of a control target.
inline constexpr std::string_view kFormCtrlTargetTag = "tsf:FormCtrlTarget";
/// Of a target point.
inline constexpr std::string_view kFormCtrlTargetPntTag = "tsf:FormCtrlTargetPnt";

/// The elements that the library models.
enum class ElementKind {
  FileInfo,
  StructureType,
  XSections,
  XSection,
  BuildForm,
  ComposedPnt,
  ExistingBuildForm,
  ExistingComposedPnt,
  FormCtrlTarget,
  FormCtrlTargetPnt,
};
/// How many kinds there are.
inline constexpr std::size_t kElementKinds = 10;
/// No element has more attributes that the library models.
inline constexpr std::size_t kMostAttributes = 7;

/// What the library reads of one kind of element. Everything else in it is carried over.
struct KnownElement {
  ElementKind kind;                              ///< which one it is
  std::string_view tag;                          ///< qualified
  std::span<const std::string_view> attributes;  ///< that the library reads
  std::span<const std::string_view> children;    ///< tags of the elements below that the library reads
  bool hasText;                                  ///< whether the library reads its text
};

/// The knowledge of an element; null for one that the library does not model.
[[nodiscard]] const KnownElement* FindKnownElement(std::string_view tag);

/// The knowledge of an element of that kind.
[[nodiscard]] const KnownElement& KnownElementOf(ElementKind kind);

/// What the library reads below an element.
struct KnownBelow {
  std::span<const std::string_view> children;  ///< tags
  bool hasText;                                ///< whether the text is read
};
/// @param edition20 whether the document is read as one of edition 2.0, whose control targets hold text and no points
[[nodiscard]] KnownBelow BelowOf(const KnownElement& element, bool edition20);

/// The elements directly below the root that the library models, in the order in which a new document has them.
inline constexpr std::array<std::string_view, 3> kRootChildren = {kFileInfoTag, kStructureTypeTag, kXSectionsTag};

}  // namespace vorn_host
