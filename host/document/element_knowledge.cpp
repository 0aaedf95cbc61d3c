#include "host/document/element_knowledge.h"

#include <algorithm>

namespace vorn_host {

namespace {

using Names = std::string_view;

constexpr std::array<Names, 3> kFileInfo = {"createDate", "changeDate", "note"};
constexpr std::array<Names, 4> kStructureType = {"type", "jobName", "company", "stationType"};
constexpr std::array<Names, 4> kXSections = {"refAlign", "refVertical", "projectPhase", "alignment"};
constexpr std::array<Names, 2> kXSectionsChildren = {"tsf:XSection", "tsf:FormCtrlTarget"};
constexpr std::array<Names, 6> kXSection = {"name",        "cumulativeDist", "xSectChg",
                                            "controlSect", "directionAngle", "targetPntID"};
constexpr std::array<Names, 2> kXSectionChildren = {"tsf:BuildForm", "tsf:ExistingBuildForm"};
constexpr std::array<Names, 2> kBuildForm = {"name", "xSectType"};
constexpr std::array<Names, 2> kBuildFormChildren = {"tsf:ComposedPnt", "tsf:FormCtrlTarget"};
constexpr std::array<Names, 7> kComposedPnt = {"code",      "location", "componentType", "seriesPnt",
                                               "slopeType", "dataType", "existence"};
constexpr std::array<Names, 1> kNameOnly = {"name"};
constexpr std::array<Names, 1> kExistingChildren = {"tsf:ExistingComposedPnt"};
constexpr std::array<Names, 5> kTarget = {"workType", "controlItem", "targetScope", "targetRegio", "targetPntType"};
constexpr std::array<Names, 1> kTargetChildren = {"tsf:FormCtrlTargetPnt"};
constexpr std::array<Names, 4> kTargetPnt = {"cumulativeDist", "xSectChg", "buildFormName", "code"};

// The most frequent elements first: every element of a document is looked up.
constexpr std::array<KnownElement, kElementKinds> kElements = {{
    {ElementKind::ComposedPnt, "tsf:ComposedPnt", kComposedPnt, {}, true},
    {ElementKind::ExistingComposedPnt, "tsf:ExistingComposedPnt", kNameOnly, {}, true},
    {ElementKind::FormCtrlTargetPnt, "tsf:FormCtrlTargetPnt", kTargetPnt, {}, false},
    {ElementKind::BuildForm, "tsf:BuildForm", kBuildForm, kBuildFormChildren, false},
    {ElementKind::FormCtrlTarget, "tsf:FormCtrlTarget", kTarget, kTargetChildren, true},
    {ElementKind::XSection, "tsf:XSection", kXSection, kXSectionChildren, false},
    {ElementKind::ExistingBuildForm, "tsf:ExistingBuildForm", kNameOnly, kExistingChildren, false},
    {ElementKind::XSections, "tsf:XSections", kXSections, kXSectionsChildren, false},
    {ElementKind::FileInfo, "tsf:FileInfo", kFileInfo, {}, false},
    {ElementKind::StructureType, "tsf:StructureType", kStructureType, {}, false},
}};

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
