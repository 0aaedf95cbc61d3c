#include "fuzz/editing_model.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "host/document/edition_conversion.h"
#include "host/sample/sample_document.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::SampleKind;

/// The sizes of a model from which on it has two sets.
constexpr std::uint8_t kFirstOfTwoSets = 128;

/// Adds the same sections along another alignment.
void AddSet(DesignDocument& design) {
  VornXSections set = design.sets[0];
  set.SetRefAlign("CL-2");
  design.sets.Add(std::move(set));
}

void ChangePoints(VornBuildForm& form, InputReader& input) {
  Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  switch (input.Choose(4)) {
    case 0:
      points.Add(MakePoint(input));
      break;
    case 1:
      points.InsertAt(input.Choose(points.GetSize() + 1), MakePoint(input));
      break;
    case 2:
      if (!points.IsEmpty()) points.SetAt(input.Choose(points.GetSize()), MakePoint(input));
      break;
    default:
      if (!points.IsEmpty()) points.RemoveAt(input.Choose(points.GetSize()));
  }
}

void AddTarget(DesignDocument& design, InputReader& input) {
  VornFormCtrlTarget target;
  target.SetControlItem(static_cast<VornFormCtrlTarget::ControlItem>(input.Choose(9) - 1));
  target.SetTargetPntType(static_cast<VornFormCtrlTarget::TargetPntType>(input.Choose(8) - 1));
  target.SetWorkType(static_cast<VornFormCtrlTarget::WorkType>(input.Choose(3) - 1));
  target.SetCode(ChooseText(input));
  for (int i = input.Choose(3); i > 0; --i) {
    VornFormCtrlTargetPnt point;
    point.Set(20.0 * input.Choose(3), ChooseText(input), ChooseText(input), input.Choose(4) == 0);
    target.GetTargetPntArray().Add(std::move(point));
  }
  VornBuildForm* const form = IsEdition20(design.edition) ? ChooseForm(design, input) : nullptr;
  if (form != nullptr) {
    form->GetFormCtrlTargetArray().Add(std::move(target));
  } else if (VornXSections* const set = IsEdition20(design.edition) ? nullptr : ChooseSet(design, input)) {
    set->GetFormCtrlTargetArray().Add(std::move(target));
  }
}

void AddForm(VornXSection& section, InputReader& input) {
  VornBuildForm form;
  form.SetName(ChooseText(input), false);
  form.SetXSectType(ChooseText(input));
  for (int i = input.Choose(5); i > 0; --i) form.GetComposedPntArray().Add(MakePoint(input));
  section.GetBuildFormArray().Add(std::move(form));
}

void Change(DesignDocument& design, InputReader& input) {
  const int kind = input.Choose(4);
  VornBuildForm* const form = ChooseForm(design, input);
  VornXSection* const section = ChooseSection(design, input);
  if (kind < 2 && form != nullptr) return ChangePoints(*form, input);
  if (kind == 2) return AddTarget(design, input);
  if (section != nullptr) AddForm(*section, input);
}

}  // namespace

CString ChooseText(InputReader& input) {
  constexpr std::string_view kTexts[] = {"L1",
                                         "R1",
                                         "CL",
                                         "XL",
                                         "XR",
                                         "KE-L1",
                                         "L1 R1",
                                         "",
                                         "a",
                                         u8"路面"_cp932,
                                         u8"盛土工"_cp932,
                                         u8"切土工"_cp932,
                                         u8"計画面"_cp932,
                                         u8"上層路盤"_cp932};
  return input.Choose(kTexts);
}

VornLocation ChooseSide(InputReader& input) { return static_cast<VornLocation>(input.Choose(4) - 1); }

VornComposedPnt MakePoint(InputReader& input) {
  VornComposedPnt point;
  point.SetLocation(ChooseSide(input));
  point.SetX(input.Length());
  point.SetY(input.Length());
  point.SetDataType(static_cast<VornComposedPnt::DataType>(input.Choose(4) - 1));
  point.SetSlopeType(static_cast<VornComposedPnt::SlopeType>(input.Choose(3) - 1));
  point.SetExistence(static_cast<VORN_Existence>(input.Choose(4) - 1));
  point.SetPointType(static_cast<std::uint16_t>(input.Choose(4)));
  point.SetCode(ChooseText(input));
  if (input.Choose(2) == 0) {
    point.SetCLDist(input.Length());
    point.SetGh(input.Length());
  }
  return point;
}

VornXSections* ChooseSet(DesignDocument& design, InputReader& input) {
  if (design.sets.IsEmpty()) return nullptr;
  return &design.sets[design.sets.GetSize() > 1 ? input.Choose(design.sets.GetSize()) : 0];
}

VornXSection* ChooseSection(DesignDocument& design, InputReader& input) {
  VornXSections* const set = ChooseSet(design, input);
  return set == nullptr ? nullptr : ChooseSection(*set, input);
}

VornXSection* ChooseSection(VornXSections& set, InputReader& input) {
  Vorn_XSectionArray& sections = set.GetXSectionArray();
  return sections.IsEmpty() ? nullptr : &sections[input.Choose(sections.GetSize())];
}

VornBuildForm* ChooseForm(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  if (section == nullptr || section->GetBuildFormArray().IsEmpty()) return nullptr;
  return &section->GetBuildFormArray()[input.Choose(section->GetBuildFormArray().GetSize())];
}

DesignDocument MakeModel(InputReader& input) {
  constexpr SampleKind kKinds[] = {SampleKind::Road, SampleKind::River, SampleKind::Farm};
  vorn_host::SampleOptions options;
  options.kind = input.Choose(kKinds);
  const std::uint8_t size = input.Byte();
  options.sections = 1 + size % 3;
  options.seed = input.Byte();
  DesignDocument design = vorn_host::ToDocument(vorn_host::MakeSampleDesign(options));
  if (size >= kFirstOfTwoSets) AddSet(design);
  ConvertEdition(design, vorn_host::kWritableEditions[static_cast<std::size_t>(input.Choose(4))]);
  for (int i = input.Choose(8); i > 0; --i) Change(design, input);
  return design;
}

}  // namespace vorn_fuzz
