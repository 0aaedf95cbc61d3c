// Reads a document and prints what is in it: read_document DESIGN.xml

#include <exception>
#include <iostream>

#include "host/document/design_document.h"
#include "host/document/text_encoding.h"

using vorn_host::ToUtf8;  // texts of the model are code page 932

namespace {

void Print(const VornBuildForm& form) {
  std::cout << "    " << ToUtf8(form.GetName()) << " (" << ToUtf8(form.GetXSectType()) << "):";
  for (const VornComposedPnt& point : form.GetComposedPntArray()) {
    // X and Y as the document has them: a width and a height, a width and a grade, or a height and a slope.
    std::cout << ' ' << ToUtf8(point.GetCode()) << ' ' << point.GetX().Value() << '/' << point.GetY().Value();
  }
  std::cout << '\n';
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) throw std::invalid_argument("read_document DESIGN.xml");
  const vorn_host::DesignDocument design = vorn_host::DesignDocument::Read(argv[1]);
  std::cout << "edition " << EditionName(design.edition) << ", " << ToUtf8(design.structureType.GetJobName()) << '\n';
  for (const VornXSections& set : design.sets) {
    std::cout << ToUtf8(set.GetRefAlign()) << ", " << set.GetFormCtrlTargetArray().GetSize() << " control targets\n";
    for (const VornXSection& section : set.GetXSectionArray()) {
      std::cout << "  " << ToUtf8(section.GetName()) << " at " << section.GetCumulativeDist().Value() << " m\n";
      for (const VornBuildForm& form : section.GetBuildFormArray()) Print(form);
    }
  }
  return 0;
} catch (const std::exception& error) {  // the message names the file, the place and the reason
  std::cerr << error.what() << '\n';
  return 1;
}
