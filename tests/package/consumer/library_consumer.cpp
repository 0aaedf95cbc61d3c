#include <iostream>
#include <utility>

#include "vorn/vorn.h"

// Virtual functions, exceptions and what there is once in a process cross the border of the library.
int main() {
  VornSchema::Instance().SetVersion(VornSchema::Version41);
  VornXSections set;
  VornXSection section;
  section.SetName("No.6");
  section.SetCumulativeDist(120.0);
  set.GetXSectionArray().Insert(section);

  CMemFile file;
  CArchive out(&file, CArchive::store);
  set.Serialize(out, "06.00");
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  VornXSections loaded;
  loaded.Serialize(in, "06.00");

  try {
    VornXSections beyondTheEnd;
    beyondTheEnd.Serialize(in, "06.00");
  } catch (const CArchiveException&) {
    std::cout << std::as_const(loaded).GetXSectionArray()[0].GetName().View() << " came back\n";
    return 0;
  }
  return 1;
}
