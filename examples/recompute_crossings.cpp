// Computes anew where the design meets the existing ground: recompute_crossings DESIGN.xml HEIGHT OUT.xml
// HEIGHT is that of the centre line in metres, which documents do not hold.

#include <charconv>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "host/document/design_document.h"
#include "host/editing/design_editor.h"

namespace {

double HeightOf(const std::string& text) {
  double height = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), height);
  if (error != std::errc() || end != text.data() + text.size())
    throw std::invalid_argument("HEIGHT is in metres: " + text);
  return height;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 4) throw std::invalid_argument("recompute_crossings DESIGN.xml HEIGHT OUT.xml");
  vorn_host::DesignDocument design = vorn_host::DesignDocument::Read(argv[1]);

  vorn_host::DesignEditor editor(design);
  editor.Recalc(HeightOf(argv[2]));  // places the points; the ground is given in elevations
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
