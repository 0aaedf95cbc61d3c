#include "host/project/design_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/host/documents.h"
#include "tests/host/projects.h"
#include "tests/host/temporary_directory.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::HasSubstr;

/// As much as no beginning of a file that is looked at first.
const std::string kLong(100'000, ' ');

/// Whether a file of that content holds a design.
bool IsDesign(const std::string& content) {
  const TemporaryDirectory directory;
  directory.Write("former", content);
  return HoldsDesign(directory / "former");
}

TEST(HoldsDesign, WhereverItsRootStands) {
  const std::string document = Xml(Edition::V41, "<tsf:XSections/>");
  EXPECT_TRUE(IsDesign(document));
  EXPECT_TRUE(IsDesign("<!--" + kLong + "-->" + document));
  EXPECT_TRUE(IsDesign("<RoadGmxml/>"));
  EXPECT_TRUE(IsDesign("<RoadGmxml>" + kLong + "</RoadGmxml>"));
  EXPECT_FALSE(IsDesign("<svg/>"));
  EXPECT_FALSE(IsDesign("<!--" + kLong + "--><svg/>"));
  EXPECT_FALSE(IsDesign(kLong));
  EXPECT_FALSE(IsDesign(""));
}

TEST(HoldsDesign, WhereverTheFirstElementOfADesignStands) {
  EXPECT_TRUE(IsDesign("<other><tsf:XSections/></other>"));
  EXPECT_TRUE(IsDesign("<other a=\"" + kLong + "\"><tsf:XSections/></other>"));
  EXPECT_TRUE(IsDesign("<other xmlns:tsf=\"urn:t\"><a/>" + kLong + "<tsf:XSections/></other>"));
  EXPECT_TRUE(IsDesign("<other><a/>" + kLong + "<tsf:XSections xmlns:tsf=\"urn:t\"/></other>"));
  EXPECT_FALSE(IsDesign("<other xmlns:tsf=\"urn:t\"><a/>" + kLong + "</other>"));
}

TEST(HoldsDesign, BehindBlanksAndInEveryEncoding) {
  const std::string document = "<tsf:XSections/>";
  EXPECT_TRUE(IsDesign(kLong + document));
  EXPECT_TRUE(IsDesign("\xEF\xBB\xBF" + kLong + document));
  EXPECT_FALSE(IsDesign(kLong + "no markup"));
  // The second byte of "ー" is that of a bracket.
  const std::string shiftJis = "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?><other><\x83\x66\x81\x5B\x83\x5E/>";
  EXPECT_TRUE(IsDesign(shiftJis + document + "</other>"));
  EXPECT_TRUE(IsDesign(shiftJis + kLong + document + "</other>"));
  EXPECT_FALSE(IsDesign(shiftJis + "</other>"));
}

TEST(ReasonToKeep, IsABackupsNameWhateverItsLetters) {
  const TemporaryDirectory directory;
  for (const char* name : {"new.vorn", "new.vorn.bak", "new.vorn.BAK", "new.VORN.Bak"}) {
    EXPECT_THAT(ReasonToKeep(directory / name, "a drawing").value_or(""), HasSubstr(name));
  }
  EXPECT_EQ(ReasonToKeep(directory / "new.bak", "a drawing"), std::nullopt);
}

TEST(ReadDesignFile, HoldsProjectsToTheLimitsOfTheHost) {
  const TemporaryDirectory directory;
  Project project = ProjectOf(ReadText(Xml(Edition::V41, "<!-- a --><!-- b --><tsf:XSections/>")));
  project.Save(directory / "ring.vorn");
  EXPECT_EQ(
      DesignFile::Read(directory / "ring.vorn", {.assume = {}, .mostCarriedItems = 2}).design.carried.Rows()[0].count,
      2);
  EXPECT_THAT(ErrorOf([&] { (void)DesignFile::Read(directory / "ring.vorn", {.assume = {}, .mostCarriedItems = 1}); }),
              HasSubstr("ring.vorn: this holds more than 1 attributes, comments and elements"));
}

}  // namespace
}  // namespace vorn_host
