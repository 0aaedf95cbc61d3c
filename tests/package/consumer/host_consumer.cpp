#include <iostream>

#include "host/document/design_document.h"
#include "host/document/document_error.h"
#include "host/project/project.h"
#include "host/settings/user_settings.h"

/// host_consumer DOCUMENT PROJECT: makes a project of a document, and reads it back.
int main(int, char** arguments) {
  vorn_host::InstallUserSettings({"company", "application"}, [](const std::string&) {});
  vorn_host::Project project;
  project.TakeDesign(vorn_host::DesignDocument::Read(arguments[1]));
  project.Save(arguments[2]);
  try {
    return static_cast<int>(vorn_host::DesignDocument::Read(arguments[2]).sets.GetSize());
  } catch (const vorn_host::DocumentError&) {  // a project is no document
    vorn_host::DesignDocument design = vorn_host::Project::Read(arguments[2]).GiveDesign();
    std::cout << design.sets[0].GetXSectionArray().GetSize() << " cross sections came back\n";
  }
}
