// Reads a project of any store version and keeps it in the newest: read_old_project OLD.vorn NEW.vorn

#include <exception>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "host/document/text_encoding.h"
#include "host/project/project.h"

using vorn_host::ToUtf8;

int main(int argc, char** argv) try {
  if (argc != 3) throw std::invalid_argument("read_old_project OLD.vorn NEW.vorn");
  vorn_host::Project project = vorn_host::Project::Read(argv[1]);
  std::cout << "store version " << project.GetStoreVersion() << '\n';

  const VornInfoConstrcut& construction = project.data.GetInfoConstrcut();
  for (const VornCrsData& system : construction.GetCrsArray())
    std::cout << "system " << ToUtf8(system.GetName()) << '\n';
  std::cout << "road " << ToUtf8(construction.GetRoadGm().GetRoadInfo().GetName()) << '\n';

  // The design is worked on as a document, and given back.
  vorn_host::DesignDocument design = project.GiveDesign();
  for (const VornXSections& set : design.sets) {
    std::cout << ToUtf8(set.GetRefAlign()) << ": " << set.GetXSectionArray().GetSize() << " cross sections\n";
  }
  project.TakeDesign(std::move(design));

  for (const vorn_host::Project::Loss& loss : project.Save(argv[2])) {
    std::cout << "not kept: " << loss.what << " (" << loss.count << ")\n";
  }
  std::cout << "store version " << vorn_host::Project::Read(argv[2]).GetStoreVersion() << '\n';
  return 0;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
