#include "host/sample/form_builder.h"

#include <cstddef>
#include <utility>

namespace vorn_host {

namespace {

/// Metres of a length in millimetres.
double Metres(Millimetres length) { return static_cast<double>(length) / 1e3; }

/// A slope lower than this is not built: the surface runs out into the ground.
constexpr Millimetres kLeastSlope = 100;
/// So much of a slope has to be left for a berm to be worth while.
constexpr Millimetres kLeastAboveBerm = 500;
/// Fall of a berm, in 0.001 %, towards the foot of the slope.
constexpr std::int64_t kBermGrade = 5'000;

/// The ground's vertex number i, counted towards a side, by its distance towards that side.
GroundVertex Towards(VornLocation side, const GroundLine& ground, std::size_t i) {
  if (side != VornLocation::Left) return ground[i];
  const GroundVertex& vertex = ground[ground.size() - 1 - i];
  return {-vertex.offset, vertex.height};
}

}  // namespace

FormBuilder::FormBuilder(std::uint32_t serial, Millimetres profileHeight) : m_profileHeight(profileHeight) {
  m_form.SetSerialID(serial);
}

void FormBuilder::Center(Millimetres offset, Millimetres height) {
  m_side = VornLocation::Center;
  m_startOutward = m_outward = offset * kFine;
  m_startHeight = m_height = (m_profileHeight + height) * kFine;
  Add(VornComposedPnt::DataType::WidthHeight, Metres(offset), Metres(height));
}

void FormBuilder::Begin(VornLocation side) {
  m_side = side;
  m_outward = side == VornLocation::Left ? -m_startOutward : m_startOutward;
  m_height = m_startHeight;
}

void FormBuilder::Surface(Component component, Element element) {
  m_component = component;
  m_element = element;
}

void FormBuilder::WidthHeight(Millimetres width, Millimetres height) {
  m_outward += width * kFine;
  m_height += height * kFine;
  Add(VornComposedPnt::DataType::WidthHeight, Metres(width), Metres(height));
}

void FormBuilder::Percent(Millimetres width, std::int64_t grade) {
  m_outward += width * kFine;
  m_height += width * grade;
  Add(VornComposedPnt::DataType::Percent, Metres(width), static_cast<double>(grade) / 1e3);
}

void FormBuilder::Rate(Millimetres height, std::int64_t ratio) {
  m_outward += (height < 0 ? -height : height) * ratio * (kFine / 10);
  m_height += height * kFine;
  Add(VornComposedPnt::DataType::Rate, Metres(height), static_cast<double>(ratio) / 10.0);
}

void FormBuilder::SlopesToGround(const GroundLine& ground, const SlopeShape& shape) {
  const bool cut = IsBelowGround(ground);
  const int direction = cut ? 1 : -1;
  const Millimetres stage = cut ? shape.cutStage : shape.fillStage;
  std::int64_t ratio = cut ? shape.cutRatio : shape.fillRatio;
  while (direction * (GroundHeight(ground, OffsetOutward()) - HeightReached()) >= kLeastSlope) {
    const Millimetres rest = HeightToGround(ground, ratio, direction);
    const bool last = rest <= stage + kLeastAboveBerm;
    Surface(cut ? Component::SlopeCut : Component::SlopeFill, cut ? Element::SlopeCut : Element::SlopeFill);
    Rate(direction * (last ? rest : stage), ratio);
    if (last) return;
    Surface(cut ? Component::BermCut : Component::BermFill, cut ? Element::BermCut : Element::BermFill);
    if (shape.bermByHeight) {
      WidthHeight(shape.bermWidth, direction * shape.bermWidth * 3 / 100);
    } else {
      Percent(shape.bermWidth, direction * kBermGrade);
    }
    ratio = cut ? shape.upperCutRatio : shape.lowerFillRatio;
  }
}

bool FormBuilder::IsBelowGround(const GroundLine& ground, Millimetres width, Millimetres height) const {
  return GroundHeight(ground, OffsetOutward() + width) > HeightReached() + height;
}

CString FormBuilder::Code(VornLocation side, int number) {
  if (side == VornLocation::Center) return "CL";
  return CString((side == VornLocation::Left ? "L" : "R") + std::to_string(number));
}

VornBuildForm FormBuilder::Take(std::string_view name, std::string_view xSectType) {
  m_form.SetName(CString(name), false);
  m_form.SetXSectType(CString(xSectType));
  return std::move(m_form);
}

void FormBuilder::Add(VornComposedPnt::DataType type, double x, double y) {
  VornComposedPnt point;
  const bool left = m_side == VornLocation::Left;
  int number = 0;
  if (m_side != VornLocation::Center) {
    number = left ? ++m_left : ++m_right;
    point.SetComponentType(m_component);
    point.ElmType(m_element);
  }
  point.SetCode(Code(m_side, number));
  point.SetLocation(m_side);
  point.SetExistence(VORN_Existence::True);
  point.SetDataType(type);
  point.SetX(x);
  point.SetY(y);
  point.SetCLDist(static_cast<double>(left ? -m_outward : m_outward) / (1e3 * kFine));
  point.SetGh(static_cast<double>(m_height) / (1e3 * kFine));
  m_form.GetComposedPntArray().Add(std::move(point));
}

Millimetres FormBuilder::GroundHeight(const GroundLine& ground, Millimetres outward) const {
  GroundVertex before = Towards(m_side, ground, 0);
  if (outward <= before.offset) return before.height;
  for (std::size_t i = 1; i < ground.size(); ++i) {
    const GroundVertex after = Towards(m_side, ground, i);
    if (outward < after.offset) {
      const Millimetres rise = after.height - before.height;
      return before.height + rise * (outward - before.offset) / (after.offset - before.offset);
    }
    before = after;
  }
  return before.height;
}

/// How far a slope rises (direction 1) or falls (-1) from here until it meets the ground.
Millimetres FormBuilder::HeightToGround(const GroundLine& ground, std::int64_t ratio, int direction) const {
  const Millimetres here = OffsetOutward();
  const Millimetres height = HeightReached();
  GroundVertex before = Towards(m_side, ground, 0);
  for (std::size_t i = 1; i < ground.size(); ++i) {
    const GroundVertex after = Towards(m_side, ground, i);
    const Millimetres slopeHeight = height + direction * (after.offset - here) * 10 / ratio;
    if (after.offset > here && direction * (after.height - slopeHeight) <= 0) {
      const Millimetres run = after.offset - before.offset;
      const Millimetres rise = after.height - before.height;
      const std::int64_t dividend = 10 * ((here - before.offset) * rise - (height - before.height) * run) * direction;
      const std::int64_t divisor = (10 * run * direction - ratio * rise) * direction;
      return (dividend + divisor / 2) / divisor;
    }
    before = after;
  }
  return direction * (before.height - height);
}

}  // namespace vorn_host
