#include "host/document/element_knowledge.h"

#include <algorithm>

namespace vorn_host {

namespace {

constexpr std::array<std::string_view, 3> kFileInfo = {"createDate", "changeDate", "note"};
constexpr std::array<std::string_view, 4> kStructureType = {"type", "jobName", "company", "stationType"};
constexpr std::array<std::string_view, 4> kXSections = {"refAlign", "refVertical", "projectPhase", "alignment"};
constexpr std::array<std::string_view, 2> kXSectionsChildren = {kXSectionTag, kFormCtrlTargetTag};
constexpr std::array<std::string_view, 6> kXSection = {"name",        "cumulativeDist", "xSectChg",
                                                       "controlSect", "directionAngle", "targetPntID"};
constexpr std::array<std::string_view, 2> kXSectionChildren = {kBuildFormTag, kExistingBuildFormTag};
constexpr std::array<std::string_view, 2> kBuildForm = {"name", "xSectType"};
constexpr std::array<std::string_view, 2> kBuildFormChildren = {kComposedPntTag, kFormCtrlTargetTag};
constexpr std::array<std::string_view, 7> kComposedPnt = {"code",      "location", "componentType", "seriesPnt",
                                                          "slopeType", "dataType", "existence"};
constexpr std::array<std::string_view, 1> kNameOnly = {"name"};
constexpr std::array<std::string_view, 1> kExistingChildren = {kExistingComposedPntTag};
constexpr std::array<std::string_view, 5> kTarget = {"workType", "controlItem", "targetScope", "targetRegio",
                                                     "targetPntType"};
constexpr std::array<std::string_view, 1> kTargetChildren = {kFormCtrlTargetPntTag};
constexpr std::array<std::string_view, 4> kTargetPnt = {"cumulativeDist", "xSectChg", "buildFormName", "code"};

// The most frequent elements first: every element of a document is looked up.
constexpr std::array<KnownElement, kElementKinds> kElements = {{
    {ElementKind::ComposedPnt, kComposedPntTag, kComposedPnt, {}, true},
    {ElementKind::ExistingComposedPnt, kExistingComposedPntTag, kNameOnly, {}, true},
    {ElementKind::FormCtrlTargetPnt, kFormCtrlTargetPntTag, kTargetPnt, {}, false},
    {ElementKind::BuildForm, kBuildFormTag, kBuildForm, kBuildFormChildren, false},
    {ElementKind::FormCtrlTarget, kFormCtrlTargetTag, kTarget, kTargetChildren, true},
    {ElementKind::XSection, kXSectionTag, kXSection, kXSectionChildren, false},
    {ElementKind::ExistingBuildForm, kExistingBuildFormTag, kNameOnly, kExistingChildren, false},
    {ElementKind::XSections, kXSectionsTag, kXSections, kXSectionsChildren, false},
    {ElementKind::FileInfo, kFileInfoTag, kFileInfo, {}, false},
    {ElementKind::StructureType, kStructureTypeTag, kStructureType, {}, false},
}};

constexpr bool HasEveryKind() {
  for (std::size_t kind = 0; kind < kElementKinds; ++kind) {
    const auto isThis = [kind](const KnownElement& element) { return static_cast<std::size_t>(element.kind) == kind; };
    if (std::count_if(kElements.begin(), kElements.end(), isThis) != 1) return false;
  }
  return true;
}
static_assert(HasEveryKind(), "whatever looks a kind up relies on finding it");

constexpr std::size_t MostAttributes() {
  std::size_t most = 0;
  for (const KnownElement& element : kElements) most = std::max(most, element.attributes.size());
  return most;
}
static_assert(MostAttributes() == kMostAttributes, "the rules of an element have room for its attributes, and no more");

}  // namespace

const KnownElement* FindKnownElement(std::string_view tag) {
  const auto found = std::find_if(kElements.begin(), kElements.end(),
                                  [tag](const KnownElement& element) { return element.tag == tag; });
  return found == kElements.end() ? nullptr : &*found;
}

const KnownElement& KnownElementOf(ElementKind kind) {
  return *std::find_if(kElements.begin(), kElements.end(),
                       [kind](const KnownElement& element) { return element.kind == kind; });
}

KnownBelow BelowOf(const KnownElement& element, bool edition20) {
  const bool isTarget = element.kind == ElementKind::FormCtrlTarget;
  if (isTarget && edition20) return {{}, true};
  return {element.children, element.hasText && !isTarget};
}

}  // namespace vorn_host
