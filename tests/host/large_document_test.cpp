#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "host/document/document_error.h"
#include "tests/host/documents.h"
#include "tests/host/file_size_limit.h"
#include "tests/host/temporary_directory.h"

// Large documents are looked over beside the reading, on a thread of their own: it has to find the same.

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr int kSections = 10'000;

/// A set of more than a megabyte, with something more at the beginning and the end of it.
std::string LargeText(const std::string& first, const std::string& last) {
  std::string text = "<tsf:XSections refAlign=\"中心線\">\n" + first;
  for (int i = 0; i < kSections; ++i) {
    text += "<tsf:XSection cumulativeDist=\"" + std::to_string(i) +
            "\"><tsf:BuildForm name=\"a\"><tsf:ComposedPnt code=\"CL\">0 0</tsf:ComposedPnt></tsf:BuildForm>"
            "</tsf:XSection>\n";
  }
  text = Xml(Edition::V41, text + last + "</tsf:XSections>");
  EXPECT_GT(text.size(), 1'000'000u);
  return text;
}

std::string ErrorOf(const std::string& text) {
  try {
    (void)ReadText(text);
  } catch (const DocumentError& error) {
    return error.what();
  }
  return "no error";
}

TEST(LargeDocument, IsReadWhole) {
  const DesignDocument document = ReadText(LargeText("", ""));
  ASSERT_EQ(document.sets.GetSize(), 1);
  EXPECT_EQ(document.sets[0].GetXSectionArray().GetSize(), kSections);
  EXPECT_THAT(document.unreadValues, SizeIs(0));
  EXPECT_THAT(document.carried.Rows(), SizeIs(0));
}

TEST(LargeDocument, KeepsTheOrderOfItsSectionsAndTargetsAndNumbersTheTargets) {
  std::string sections;
  std::string targets;
  for (int i = 0; i < kSections; ++i) {
    // At one station, so that nothing sorts them.
    sections += "<tsf:XSection name=\"" + std::to_string(i) + "\" cumulativeDist=\"0\"/>\n";
    targets += "<tsf:FormCtrlTarget targetScope=\"" + std::to_string(i) + "\"/>\n";
  }
  const DesignDocument document =
      ReadText(Xml(Edition::V41, "<tsf:XSections>" + sections + targets + "</tsf:XSections>"));
  const VornXSections& set = document.sets[0];
  ASSERT_EQ(set.GetXSectionArray().GetSize(), kSections);
  ASSERT_EQ(set.GetFormCtrlTargetArray().GetSize(), kSections);
  for (int i = 0; i < kSections; ++i) {
    ASSERT_EQ(set.GetXSectionArray()[i].GetName(), std::to_string(i).c_str());
    const VornFormCtrlTarget& target = set.GetFormCtrlTargetArray()[i];
    ASSERT_EQ(target.GetTargetScope(), std::to_string(i).c_str());
    ASSERT_EQ(target.GetSerialID(), static_cast<std::uint32_t>(i));
  }
}

TEST(LargeDocument, TellsValuesThatAreNotUnderstood) {
  const std::string text =
      LargeText("<tsf:XSection cumulativeDist=\"first\"/>\n", "<tsf:XSection cumulativeDist=\"last\"/>\n");
  const DesignDocument document = ReadText(text);
  ASSERT_THAT(document.unreadValues, SizeIs(2));
  EXPECT_EQ(document.unreadValues[0].text, "first");
  EXPECT_EQ(document.unreadValues[1].text, "last");
  EXPECT_EQ(document.unreadValues[1].line, document.unreadValues[0].line + kSections + 1);
}

TEST(LargeDocument, KeepsWhatIsNotModelled) {
  const DesignDocument document = ReadText(LargeText("<!-- first -->\n", "<tsf:XSection other=\"1\"/>\n"));
  ASSERT_THAT(document.carried.Rows(), SizeIs(2));
  EXPECT_EQ(document.carried.Rows()[0].name, "comment");
  EXPECT_EQ(document.carried.Rows()[1].name, "attribute other of tsf:XSection");
}

std::string Content(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A file is written while its text is made.

TEST(LargeDocument, IsWrittenAsItsBytes) {
  const TemporaryDirectory directory;
  // What stands beside the sections is put between them when the set is closed, so that all of it waits until then.
  for (const char* more : {"", "<!-- between -->\n"}) {
    DesignDocument document = ReadText(LargeText(more, more));
    document.Write(directory / "a.xml");
    DesignDocument::WriteReport report;
    EXPECT_EQ(Content(directory / "a.xml"), document.ToBytes("a", DesignDocument::WriteOptions(), report));
    EXPECT_THAT(directory.Names(), ElementsAre("a.xml"));
  }
}

TEST(LargeDocument, ThatCannotBeWrittenToItsEndLeavesTheFileThatWasThere) {
  const TemporaryDirectory directory;
  directory.Write("a.xml", "former");
  DesignDocument document = ReadText(LargeText("", ""));
  Vorn_XSectionArray& sections = document.sets[0].GetXSectionArray();
  sections[sections.GetUpperBound()].SetName("\x01");
  EXPECT_THROW(document.Write(directory / "a.xml"), DocumentError);
  EXPECT_EQ(Content(directory / "a.xml"), "former");
  EXPECT_THAT(directory.Names(), ElementsAre("a.xml"));
}

#ifndef _WIN32

TEST(LargeDocument, ThatFindsNoRoomHalfWayLeavesTheFileThatWasThere) {
  const TemporaryDirectory directory;
  directory.Write("a.xml", "former");
  DesignDocument document = ReadText(LargeText("", ""));
  DesignDocument::WriteReport report;
  const std::size_t size = document.ToBytes("a", DesignDocument::WriteOptions(), report).size();
  for (const std::size_t room : {size / 2, size - 1}) {
    const FileSizeLimit limit(room);
    EXPECT_THROW(document.Write(directory / "a.xml"), DocumentError) << room;
    EXPECT_EQ(Content(directory / "a.xml"), "former");
    EXPECT_THAT(directory.Names(), ElementsAre("a.xml"));
  }
}

#endif

TEST(LargeDocument, TellsThatADeviceIsFull) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no device that is always full";
  DesignDocument document = ReadText(LargeText("", ""));
  EXPECT_THROW(document.Write("/dev/full"), DocumentError);
}

TEST(LargeDocument, IsRefusedForAFaultAtItsEnd) {
  const std::string text = LargeText("", "<tsf:XSection name=\"a\" name=\"b\"/>");
  const auto line =
      1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find("name=\"b\"")), '\n');
  EXPECT_THAT(ErrorOf(text), HasSubstr("line " + std::to_string(line) +
                                       ", column 2: the document is malformed: "
                                       "tsf:XSection has the attribute name twice"));
}

TEST(LargeDocument, TellsTheLineOfACharacterThatTheModelCannotHold) {
  const std::string text = LargeText("", "<tsf:XSection name=\"€\"/>");
  const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find("€")), '\n');
  EXPECT_THAT(ErrorOf(text), HasSubstr("line " + std::to_string(line) + ": code page 932 cannot hold € (U+20AC)"));
}

}  // namespace
}  // namespace vorn_host
