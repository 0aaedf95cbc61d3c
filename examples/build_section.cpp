// Builds a cross section from nothing and writes it in every edition: build_section FOLDER

#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "host/document/design_document.h"
#include "host/document/edition_conversion.h"
#include "vorn/platform/code_page_932.h"

namespace {

/// A road of 2 x 3.5 m with a crossfall of 2 %, and slopes of 1:1.5 that fall by 4 m.
VornBuildForm RoadSurface() {
  VornBuildForm form;
  form.SetName(u8"盛土面"_cp932, false);
  form.SetXSectType(u8"盛土工"_cp932);
  // Each point is told from the one before it, outward from the centre line.
  using Component = VornComposedPnt::ComponentType;
  using Data = VornComposedPnt::DataType;
  const auto add = [&form](const char* code, VornLocation side, Component component, Data type, double x, double y) {
    VornComposedPnt& point = form.GetComposedPntArray().AddDefault();
    point.SetCode(code);
    point.SetLocation(side);
    point.SetExistence(VORN_Existence::True);
    point.SetComponentType(component);
    point.SetDataType(type);
    point.SetX(x);
    point.SetY(y);
  };
  using enum VornLocation;
  add("CL", Center, Component::Unset, Data::WidthHeight, 0.0, 0.0);
  add("L1", Left, Component::Roadbed, Data::Percent, 3.5, -2.0);
  add("L2", Left, Component::SlopeFill, Data::Rate, -4.0, 1.5);
  add("R1", Right, Component::Roadbed, Data::Percent, 3.5, -2.0);
  add("R2", Right, Component::SlopeFill, Data::Rate, -4.0, 1.5);
  return form;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) throw std::invalid_argument("build_section FOLDER");
  for (const vorn_host::Edition edition : vorn_host::kWritableEditions) {
    vorn_host::DesignDocument design;
    design.fileInfos.AddDefault().SetCreateDate(COleDateTime(2024, 4, 1, 9, 0, 0));
    design.hasStructureType = true;
    design.structureType.SetType(VornStructureType::Type::RoadEarthwork);
    design.structureType.SetStationType("NO");
    VornXSections& set = design.sets.AddDefault();
    set.SetRefAlign(u8"道路中心線"_cp932);
    set.SetRefVertical(u8"計画縦断"_cp932);
    VornXSection& section = set.GetXSectionArray().AddDefault();
    section.SetName("No.6");
    section.SetCumulativeDist(120.0);  // metres along the alignment
    section.GetBuildFormArray().Add(RoadSurface());

    const vorn_host::ConversionReport report = ConvertEdition(design, edition);
    const std::string file = "section-" + std::string(EditionName(edition)) + ".xml";
    design.Write(std::filesystem::path(argv[1]) / file);
    std::cout << file << ": no point moved by more than " << report.largestDisplacement << " m\n";
  }
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
