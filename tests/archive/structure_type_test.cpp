#include "vorn/types/structure_type.h"

#include <gtest/gtest.h>

#include "tests/archive/full_records.h"
#include "vorn/platform/code_page_932.h"

namespace archive_test {
namespace {

constexpr std::string_view kType = u8"道路土工"_cp932;

VornStructureType FullStructure() {
  VornStructureType structure;
  structure.SetType(CString(kType));
  structure.SetJobName("job");
  structure.SetCompany("company");
  structure.SetStationType("STA");
  return structure;
}

ExpectedBytes StructureBytes() {
  return {
      {"type", Text(kType)},
      {"job", Text("job")},
      {"company", Text("company")},
      {"station type", Text("STA")},
      {"extension table", EmptyTable()},
  };
}

class StructureTypeArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(StructureTypeArchive);

TEST_P(StructureTypeArchive, WritesItsTextsWithTheTableLast) {
  EXPECT_TRUE(HasBytes(StoredAs(FullStructure(), GetParam()), StructureBytes()));
}

TEST_P(StructureTypeArchive, ReadsItsTexts) {
  const auto structure = ReadBack<VornStructureType>(StructureBytes().All(), GetParam());
  EXPECT_EQ(structure.GetTypeStr(), kType);
  EXPECT_EQ(structure.GetJobName(), "job");
  EXPECT_EQ(structure.GetCompany(), "company");
  EXPECT_EQ(structure.GetStationType(), "STA");
}

TEST_P(StructureTypeArchive, TakesATypeThatIsNoneOfTheListAsItStands) {
  VornStructureType structure;
  structure.SetType(CString("no such work"));
  EXPECT_EQ(ReadBack<VornStructureType>(StoredAs(structure, GetParam()), GetParam()).GetTypeStr(), "no such work");
}

TEST_P(StructureTypeArchive, ForgetsWhatLaterVersionsPutIntoItsTable) {
  const ExpectedBytes bytes = {{"type", Text("a")},
                               {"job", Text("b")},
                               {"company", Text("c")},
                               {"station type", Text("d")},
                               {"table", TableOf(1, 2)}};
  EXPECT_EQ(ReadBack<VornStructureType>(bytes.All(), GetParam()).GetStationType(), "d");
}

}  // namespace
}  // namespace archive_test
