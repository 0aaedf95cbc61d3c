// Computes anew where the design meets the existing ground: recompute_crossings DESIGN.xml HEIGHT OUT.xml
// HEIGHT is that of the centre line in metres, which documents do not hold.

#include <exception>
#include <iostream>
#include <stdexcept>

#include "host/document/design_document.h"
#include "host/editing/design_editor.h"

int main(int argc, char** argv) try {
  if (argc != 4) throw std::invalid_argument("recompute_crossings DESIGN.xml HEIGHT OUT.xml");
  vorn_host::DesignDocument design = vorn_host::DesignDocument::Read(argv[1]);

  vorn_host::DesignEditor editor(design);
  editor.Recalc(std::stod(argv[2]));  // places the points; the ground is given in elevations
  const vorn_host::EditReport report = editor.RecalcCrossings();

  for (const auto& [section, what] : report.changes) std::cout << section << ": " << what << '\n';
  for (const auto& [section, why] : report.remarks) std::cout << "not in " << section << ": " << why << '\n';
  for (const std::string& target : editor.LostTargets()) std::cout << "no longer measured: " << target << '\n';
  design.Write(argv[3]);
  return 0;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
