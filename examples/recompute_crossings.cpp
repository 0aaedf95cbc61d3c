// Computes anew where the design meets the existing ground: recompute_crossings DESIGN.xml HEIGHT OUT.xml
// HEIGHT is that of the centre line in metres, which documents do not hold.

#include <charconv>
#include <cmath>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <utility>

#include "host/editing/design_editor.h"
#include "host/project/design_file.h"

namespace {

double HeightOf(const std::string& text) {
  double height = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), height);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(height))
    throw std::invalid_argument("HEIGHT is in metres: " + text);
  return height;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 4) throw std::invalid_argument("recompute_crossings DESIGN.xml HEIGHT OUT.xml");
  vorn_host::DesignFile file = vorn_host::DesignFile::Read(argv[1], {});  // a document or a project

  vorn_host::DesignEditor editor(file.design);
  editor.Recalc(HeightOf(argv[2]));  // places the points; the ground is given in elevations
  const vorn_host::EditReport report = editor.RecalcCrossings();

  for (const auto& [section, what] : report.changes) std::cout << section << ": " << what << '\n';
  for (const auto& [section, why] : report.remarks) std::cout << "not in " << section << ": " << why << '\n';
  for (const std::string& target : editor.LostTargets()) std::cout << "no longer measured: " << target << '\n';
  std::move(file).Write(argv[3], {});  // as what that file is, or is named
  return 0;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
