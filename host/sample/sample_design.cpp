#include "host/sample/sample_design.h"

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "host/sample/form_builder.h"
#include "host/sample/sample_terrain.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {

namespace {

using Component = FormBuilder::Component;
using Element = FormBuilder::Element;
using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

constexpr Millimetres kStationDistance = 20'000;

constexpr std::string_view kFillWork = u8"盛土工"_cp932;
constexpr std::string_view kCutWork = u8"切土工"_cp932;
constexpr std::string_view kSurfaceCourse = u8"表層工"_cp932;

/// Where a cross section stands, and what is around it.
struct Site {
  Millimetres station = 0;
  /// Behind the change of shape the design is wider.
  bool widened = false;
  Millimetres profileHeight = 0;
  std::int64_t crossfallSwing = 0;
  GroundLine ground;
};

/// Finishes a design surface: its name and work type by how many of its sides lie in cut. Edition 2.0 has no work type
/// and tells the work by the name, so both have to agree.
VornBuildForm TakeSurface(FormBuilder& form, int sidesInCut, std::string_view fillName, std::string_view cutName) {
  if (sidesInCut == 2) return form.Take(cutName, kCutWork);
  return form.Take(sidesInCut == 1 ? u8"片切片盛面"_cp932 : fillName, kFillWork);
}

/// Adds control targets between points of one form of one section.
class TargetWriter {
 public:
  TargetWriter(Vorn_FormCtrlTargetArray& targets, const VornXSection& section)
      : m_targets(targets), m_section(section) {}

  void Add(ControlItem item, TargetPntType type, const CString& form, const CString& first, const CString& second) {
    VornFormCtrlTarget target;
    target.SetControlItem(item);
    target.SetTargetPntType(type);
    target.SetTargetScope(u8"全延長"_cp932);
    target.SetTargetRegio(u8"管理断面"_cp932);
    VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
    points.Reserve(2);
    for (const CString& code : {first, second}) {
      VornFormCtrlTargetPnt point;
      point.Set(m_section.GetCumulativeDist(), form, code, m_section.GetXSectChg());
      points.Add(std::move(point));
    }
    m_targets.Add(std::move(target));
  }

  /// The slopes on both sides; between the surface's last point before the slope and the slope's end.
  void SlopeLengths(const VornBuildForm& form) {
    const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    for (int i = 1; i < points.GetSize(); ++i) {
      const Component component = points[i].GetComponentType();
      if (component != Component::SlopeFill && component != Component::SlopeCut) continue;
      const bool sameSide = points[i - 1].GetLocation() == points[i].GetLocation();
      const VornComposedPnt& inner = sameSide ? points[i - 1] : points[0];
      // From the centre line outward a slope begins at its shoulder when it falls, at its toe when it rises.
      const bool falls = points[i].GetX().Value() < 0.0;
      Add(ControlItem::SlopeLength, falls ? TargetPntType::ShoulderToe : TargetPntType::ToeShoulder, form.GetName(),
          inner.GetCode(), points[i].GetCode());
    }
  }

 private:
  Vorn_FormCtrlTargetArray& m_targets;
  const VornXSection& m_section;
};

CString Left(int number) { return FormBuilder::Code(VornLocation::Left, number); }
CString Right(int number) { return FormBuilder::Code(VornLocation::Right, number); }
const CString& Centre() {
  static const CString code = FormBuilder::Code(VornLocation::Center, 0);
  return code;
}

// --- road ------------------------------------------------------------------------------------------------------------

constexpr Millimetres kLane = 3'500;
constexpr Millimetres kClimbingLane = 3'000;
constexpr Millimetres kShoulder = 750;
constexpr std::int64_t kShoulderGrade = -4'000;

/// Each pavement layer's form is the upper face of the layer; depth is counted from the road surface.
struct PavementLayer {
  std::string_view name;
  std::string_view type;
  Millimetres depth;
};
constexpr PavementLayer kPavement[] = {
    {u8"表層"_cp932, kSurfaceCourse, 0},
    {u8"基層"_cp932, u8"基層工"_cp932, 50},
    {u8"上層路盤"_cp932, u8"上層路盤工"_cp932, 100},
    {u8"下層路盤"_cp932, u8"下層路盤工"_cp932, 250},
};

Millimetres CarriagewayWidth(const Site& site, VornLocation side) {
  return site.widened && side == VornLocation::Left ? kLane + kClimbingLane : kLane;
}

/// The crossfall of the carriageway, falling outward on both sides.
std::int64_t Crossfall(const Site& site, VornLocation side) {
  return -1'750 + (side == VornLocation::Left ? site.crossfallSwing : -site.crossfallSwing);
}

/// A side ditch with upright walls: their points have a height but no width.
void SideDitch(FormBuilder& form) {
  form.Surface(Component::Other, Element::SideDitch);
  form.WidthHeight(0, -300);
  form.WidthHeight(300, 0);
  form.WidthHeight(0, 300);
}

VornBuildForm RoadSurface(const Site& site) {
  FormBuilder form(0, site.profileHeight);
  form.Center(0, 0);
  int sidesInCut = 0;
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    // What a side is built as is told by the ground at its shoulder.
    const Millimetres width = CarriagewayWidth(site, side);
    const Millimetres fall = (width * Crossfall(site, side) + kShoulder * kShoulderGrade) / 100'000;
    const bool inCut = form.IsBelowGround(site.ground, width + kShoulder, fall);
    if (inCut) ++sidesInCut;

    const Component roadbed = inCut ? Component::RoadbedCut : Component::RoadbedFill;
    form.Surface(roadbed, Element::Carriageway);
    form.Percent(width, Crossfall(site, side));
    form.Surface(roadbed, Element::Shoulder);
    form.Percent(kShoulder, kShoulderGrade);
    if (inCut) SideDitch(form);
    form.SlopesToGround(site.ground, FormBuilder::SlopeShape());
  }
  return TakeSurface(form, sidesInCut, u8"盛土面"_cp932, u8"切土面"_cp932);
}

VornBuildForm Pavement(const Site& site, const PavementLayer& layer, std::uint32_t serial) {
  FormBuilder form(serial, site.profileHeight);
  form.Center(0, -layer.depth);
  form.Surface(Component::Roadbed, Element::Pavement);
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    // The lower a layer lies, the wider it is.
    const Millimetres width = CarriagewayWidth(site, side) + layer.depth;
    form.WidthHeight(width, width * Crossfall(site, side) / 100'000);
  }
  return form.Take(layer.name, layer.type);
}

void BuildRoad(const Site& site, VornXSection& section, Vorn_FormCtrlTargetArray& targets) {
  Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  forms.Reserve(1 + static_cast<int>(std::size(kPavement)));
  forms.Add(RoadSurface(site));
  std::uint32_t serial = 1;
  for (const PavementLayer& layer : kPavement) forms.Add(Pavement(site, layer, serial++));
  if (!section.GetControlSect()) return;

  TargetWriter writer(targets, section);
  const VornBuildForm& surface = forms[0];
  writer.Add(ControlItem::Width, TargetPntType::LeftRight, surface.GetName(), Left(2), Right(2));
  writer.Add(ControlItem::Width, TargetPntType::InnerOuter, surface.GetName(), Left(1), Left(2));
  writer.Add(ControlItem::Height, TargetPntType::TargetPnt, surface.GetName(), Centre(), Right(2));
  writer.SlopeLengths(surface);
  for (int i = 1; i < forms.GetSize(); ++i) {
    writer.Add(ControlItem::Thickness, TargetPntType::TargetPnt, forms[i].GetName(), Centre(), Right(1));
  }
}

// --- river -----------------------------------------------------------------------------------------------------------

constexpr Millimetres kHalfCrown = 3'000;
constexpr Millimetres kTurningPlace = 2'000;
/// The low-water bed: its middle from the centre line, half its width, its depth below the crown.
constexpr Millimetres kBedOffset = 44'000;
constexpr Millimetres kHalfBed = 5'000;
constexpr Millimetres kBedDepth = 10'000;

FormBuilder::SlopeShape LeveeSlopes() {
  FormBuilder::SlopeShape shape;
  shape.fillRatio = 20;
  shape.lowerFillRatio = 20;
  shape.fillStage = 3'000;
  shape.bermWidth = 3'000;
  shape.bermByHeight = true;
  return shape;
}

VornBuildForm LeveeSurface(const Site& site) {
  FormBuilder form(0, site.profileHeight);
  form.Center(0, 0);
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    form.Surface(Component::RoadbedFill, Element::LeveeCrown);
    const bool turning = site.widened && side == VornLocation::Left;
    form.Percent(turning ? kHalfCrown + kTurningPlace : kHalfCrown, -2'000 + site.crossfallSwing);
    form.SlopesToGround(site.ground, LeveeSlopes());
  }
  return form.Take(u8"堤防盛土面"_cp932, kFillWork);
}

VornBuildForm CrownPavement(const Site& site) {
  FormBuilder form(1, site.profileHeight);
  form.Center(0, 50);
  form.Surface(Component::Roadbed, Element::Pavement);
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    form.WidthHeight(2'500, 2'500 * (-2'000 + site.crossfallSwing) / 100'000);
  }
  return form.Take(u8"天端舗装"_cp932, kSurfaceCourse);
}

VornBuildForm BedExcavation(const Site& site) {
  FormBuilder::SlopeShape shape;
  shape.cutRatio = 20;
  shape.upperCutRatio = 20;
  FormBuilder form(2, site.profileHeight);
  form.Center(kBedOffset, -kBedDepth);
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    form.Surface(Component::RoadbedCut, Element::Excavation);
    form.Percent(kHalfBed, 200);
    form.SlopesToGround(site.ground, shape);
  }
  return form.Take(u8"河道掘削面"_cp932, kCutWork);
}

void BuildRiver(const Site& site, VornXSection& section, Vorn_FormCtrlTargetArray& targets) {
  Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  forms.Reserve(3);
  forms.Add(LeveeSurface(site));
  forms.Add(CrownPavement(site));
  forms.Add(BedExcavation(site));
  if (!section.GetControlSect()) return;

  TargetWriter writer(targets, section);
  writer.Add(ControlItem::Width, TargetPntType::LeftRight, forms[0].GetName(), Left(1), Right(1));
  writer.Add(ControlItem::Height, TargetPntType::TargetPnt, forms[0].GetName(), Centre(), Right(1));
  writer.SlopeLengths(forms[0]);
  writer.Add(ControlItem::Thickness, TargetPntType::TargetPnt, forms[1].GetName(), Left(1), Right(1));
  writer.Add(ControlItem::Width, TargetPntType::LeftRight, forms[2].GetName(), Left(1), Right(1));
  writer.SlopeLengths(forms[2]);
}

// --- farm ------------------------------------------------------------------------------------------------------------

constexpr Millimetres kField = 22'000;
constexpr Millimetres kNextField = 16'000;
constexpr Millimetres kMoreField = 4'000;
constexpr Millimetres kRidge = 300;
constexpr Millimetres kTopsoil = 150;

std::int64_t FieldGrade(const Site& site) { return site.crossfallSwing / 10; }

void Ridge(FormBuilder& form) {
  form.Surface(Component::SlopeFill, Element::SlopeFill);
  form.Rate(kRidge, 10);
  form.Surface(Component::Other, Element::Other);
  form.WidthHeight(kRidge, 0);
  form.Surface(Component::SlopeFill, Element::SlopeFill);
  form.Rate(-kRidge, 10);
}

VornBuildForm FieldSurface(const Site& site) {
  FormBuilder form(0, site.profileHeight);
  form.Center(0, 0);
  int sidesInCut = 0;
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    const Millimetres nextField = site.widened ? kNextField + kMoreField : kNextField;
    const bool inCut = form.IsBelowGround(site.ground, kField + nextField, 0);
    if (inCut) ++sidesInCut;
    const Component field = inCut ? Component::RoadbedCut : Component::RoadbedFill;
    form.Surface(field, Element::Other);
    form.Percent(kField, FieldGrade(site));
    Ridge(form);
    form.Surface(field, Element::Other);
    form.Percent(nextField, 0);
    Ridge(form);
    form.SlopesToGround(site.ground, FormBuilder::SlopeShape());
  }
  return TakeSurface(form, sidesInCut, u8"ほ場盛土面"_cp932, u8"ほ場切土面"_cp932);
}

VornBuildForm Subsoil(const Site& site) {
  FormBuilder form(1, site.profileHeight);
  form.Center(0, -kTopsoil);
  form.Surface(Component::Other, Element::Subgrade);
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    form.Begin(side);
    form.WidthHeight(kField, kField * FieldGrade(site) / 100'000);
  }
  return form.Take(u8"基盤面"_cp932, u8"整地工"_cp932);
}

void BuildFarm(const Site& site, VornXSection& section, Vorn_FormCtrlTargetArray& targets) {
  Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  forms.Reserve(2);
  forms.Add(FieldSurface(site));
  forms.Add(Subsoil(site));
  if (!section.GetControlSect()) return;

  TargetWriter writer(targets, section);
  writer.Add(ControlItem::Width, TargetPntType::LeftRight, forms[0].GetName(), Left(1), Right(1));
  writer.Add(ControlItem::Height, TargetPntType::TargetPnt, forms[0].GetName(), Centre(), Left(1));
  writer.SlopeLengths(forms[0]);
  writer.Add(ControlItem::Thickness, TargetPntType::TargetPnt, forms[1].GetName(), Left(1), Right(1));
}

// --- the document
// ------------------------------------------------------------------------------------------------------

VornExistingBuildForm ExistingGround(const GroundLine& ground) {
  VornExistingBuildForm form;
  form.SetName(u8"現況地盤"_cp932);
  VornExistingComposedPntArray& points = form.GetComposedPntArray();
  points.Reserve(static_cast<int>(ground.size()));
  int number = 0;
  for (const GroundVertex& vertex : ground) {
    VornExistingComposedPnt point;
    point.SetCLDist(static_cast<double>(vertex.offset) / 1e3);
    point.SetGh(static_cast<double>(vertex.height) / 1e3);
    point.SetName(CString("G" + std::to_string(++number)));
    points.Add(std::move(point));
  }
  return form;
}

VornFileInfo FileInfo() {
  VornFileInfo info;
  // Fixed dates: the same options give the same document on any day.
  info.SetCreateDate(COleDateTime(2024, 4, 1, 9, 0, 0));
  info.SetChangeDate(COleDateTime(2024, 4, 15, 17, 30, 0));
  info.SetNote(u8"試用のための設計データ"_cp932);
  return info;
}

/// What is said about a design of one kind as a whole.
struct Job {
  VornStructureType::Type type;
  std::string_view jobName;
  std::string_view refAlign;
  void (*build)(const Site&, VornXSection&, Vorn_FormCtrlTargetArray&);
};

Job JobOf(SampleKind kind) {
  switch (kind) {
    case SampleKind::River:
      return {VornStructureType::Type::RiverCoastErosionControl, u8"見本川築堤工事"_cp932, u8"堤防法線"_cp932,
              BuildRiver};
    case SampleKind::Farm:
      return {VornStructureType::Type::MaffFarmField, u8"見本地区ほ場整備工事"_cp932, u8"ほ場中心線"_cp932, BuildFarm};
    case SampleKind::Road:
      break;
  }
  return {VornStructureType::Type::RoadEarthwork, u8"見本道路改良工事"_cp932, u8"道路中心線"_cp932, BuildRoad};
}

}  // namespace

SampleDesign MakeSampleDesign(const SampleOptions& options, FunctionRef<void(int done, int total)> progress) {
  const SampleTerrain terrain(options.kind, options.seed);
  const Job job = JobOf(options.kind);

  SampleDesign design;
  design.fileInfos.Add(FileInfo());
  design.structureType.SetType(job.type);
  design.structureType.SetJobName(CString(job.jobName));
  design.structureType.SetCompany(u8"見本建設株式会社"_cp932);
  design.structureType.SetStationType("NO");

  VornXSections set;
  set.SetRefAlign(CString(job.refAlign));
  set.SetRefVertical(u8"計画縦断"_cp932);
  set.SetProjectPhase(u8"施工"_cp932);
  Vorn_XSectionArray& sections = set.GetXSectionArray();
  sections.Reserve(options.sections);

  // The shape changes in the middle: two sections at one station, before and behind the change.
  const int changeAt = options.sections >= 3 ? options.sections / 2 : options.sections;
  for (int i = 0; i < options.sections; ++i) {
    const bool widened = i >= changeAt;
    const int number = widened ? i - 1 : i;
    Site site;
    site.station = number * kStationDistance;
    site.widened = widened;
    site.profileHeight = terrain.ProfileHeight(site.station);
    site.crossfallSwing = terrain.CrossfallSwing(site.station);
    site.ground = terrain.Ground(site.station);

    VornXSection section;
    section.SetName(CString("No." + std::to_string(number)));
    section.SetCumulativeDist(static_cast<double>(site.station) / 1e3);
    section.SetHeight(static_cast<double>(site.profileHeight) / 1e3);
    section.SetXSectChg(i == changeAt);
    section.SetControlSect(number % 2 == 0 || i == changeAt || i == changeAt - 1);
    section.SetExistingFlag(1);
    section.GetExistingBuildFormArray().Add(ExistingGround(site.ground));
    job.build(site, section, set.GetFormCtrlTargetArray());
    sections.Add(std::move(section));
    progress(i + 1, options.sections);
  }
  design.sets.Add(std::move(set));
  return design;
}

SampleDesign MakeSampleDesign(const SampleOptions& options) {
  return MakeSampleDesign(options, [](int, int) {});
}

}  // namespace vorn_host
