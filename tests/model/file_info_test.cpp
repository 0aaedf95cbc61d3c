#include "vorn/model/file_info.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/model/editions.h"

namespace {

using test_support::ReadXml;
using test_support::WriteFailuresOverlooked;
using test_support::WriteXml;
using testing::IsEmpty;

const COleDateTime kCreated(2019, 4, 1, 9, 5, 7);
const COleDateTime kChanged(2020, 12, 31, 23, 59, 58);

COleDateTime DateOf(COleDateTime::DateTimeStatus status) {
  COleDateTime date;
  date.SetStatus(status);
  return date;
}

VornFileInfo InfoOf(const COleDateTime& created, const COleDateTime& changed, const char* note) {
  VornFileInfo info;
  info.SetCreateDate(created);
  info.SetChangeDate(changed);
  info.SetNote(note);
  return info;
}

void ExpectFilled(const VornFileInfo& info) {
  EXPECT_EQ(info.tagName(), "tsf:FileInfo");
  EXPECT_EQ(info.GetCreateDate(), kCreated);
  EXPECT_EQ(info.GetChangeDate(), kChanged);
  EXPECT_EQ(info.GetNote(), "note");
}

TEST(FileInfo, StartsWithoutDatesAndNote) {
  const VornFileInfo info;
  EXPECT_EQ(info.tagName(), "tsf:FileInfo");
  for (const COleDateTime& date : {info.GetCreateDate(), info.GetChangeDate()}) {
    EXPECT_EQ(date.GetStatus(), COleDateTime::null);
    EXPECT_EQ(date.m_dt, 0.0);
  }
  EXPECT_EQ(info.GetNote(), "");
  EXPECT_FALSE(info.IsEnable());
}

TEST(FileInfo, KeepsAndCopiesWhatItIsGiven) {
  const VornFileInfo original = InfoOf(kCreated, kChanged, "note");
  ExpectFilled(original);
  ExpectFilled(VornFileInfo(original));
  VornFileInfo assigned;
  assigned = original;
  ExpectFilled(assigned);
}

TEST(FileInfo, CopiesTheStatusOfItsDates) {
  const VornFileInfo copy(InfoOf(DateOf(COleDateTime::invalid), DateOf(COleDateTime::null), ""));
  EXPECT_EQ(copy.GetCreateDate().GetStatus(), COleDateTime::invalid);
  EXPECT_EQ(copy.GetChangeDate().GetStatus(), COleDateTime::null);
}

TEST(FileInfo, LendsItsFieldsForChange) {
  VornFileInfo info;
  info.GetCreateDate() = kCreated;
  info.GetChangeDate() = kChanged;
  info.GetNote() = "note";
  ExpectFilled(std::as_const(info));
}

TEST(FileInfo, IsEnabledWithAValidCreationDateOnly) {
  EXPECT_TRUE(InfoOf(kCreated, DateOf(COleDateTime::null), "").IsEnable());
  EXPECT_FALSE(InfoOf(DateOf(COleDateTime::null), kChanged, "note").IsEnable());
  EXPECT_FALSE(InfoOf(DateOf(COleDateTime::invalid), kChanged, "note").IsEnable());
}

TEST(FileInfo, StandsOneOrMoreInAnArray) {
  VornFileInfoArray array;
  EXPECT_EQ(array.tagName(), "tsf:FileInfo");
  EXPECT_EQ(array.occurs(), VORN_Occurs::OneOrMore);
  EXPECT_FALSE(array.IsEnable());
  array.Add(InfoOf(kCreated, kChanged, ""));
  EXPECT_TRUE(array.IsEnable());
}

class FileInfoInEdition : public model_test::InEdition {};
class FileInfoInEarlyEdition : public model_test::InEdition {};
class FileInfoInLaterEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, FileInfoInEdition, testing::ValuesIn(model_test::kEditions), model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, FileInfoInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, FileInfoInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);

TEST_P(FileInfoInEarlyEdition, WritesNothing) {
  VornFileInfo info = InfoOf(kCreated, kChanged, "note");
  EXPECT_EQ(WriteXml(info), "");
}

TEST_P(FileInfoInLaterEdition, WritesDatesAndNote) {
  VornFileInfo info = InfoOf(kCreated, kChanged, "note");
  EXPECT_EQ(WriteXml(info),
            "<tsf:FileInfo createDate=\"2019-04-01T09:05:07\" changeDate=\"2020-12-31T23:59:58\" note=\"note\"/>\n");
}

TEST_P(FileInfoInLaterEdition, LosesTheNoteWithoutAChangeDate) {
  VornFileInfo info = InfoOf(kCreated, DateOf(COleDateTime::null), "x");
  EXPECT_EQ(WriteXml(info), "<tsf:FileInfo createDate=\"2019-04-01T09:05:07\"/>\n");
}

TEST_P(FileInfoInLaterEdition, WritesAnEmptyNoteWithAChangeDate) {
  VornFileInfo info = InfoOf(DateOf(COleDateTime::null), kChanged, "");
  EXPECT_EQ(WriteXml(info), "<tsf:FileInfo changeDate=\"2020-12-31T23:59:58\" note=\"\"/>\n");
}

TEST_P(FileInfoInLaterEdition, WritesInvalidDatesEmpty) {
  VornFileInfo info = InfoOf(DateOf(COleDateTime::invalid), DateOf(COleDateTime::invalid), "x");
  EXPECT_EQ(WriteXml(info), "<tsf:FileInfo createDate=\"\" changeDate=\"\" note=\"x\"/>\n");
}

TEST_P(FileInfoInLaterEdition, WritesAnEmptyElementWhenNew) {
  VornFileInfo info;
  EXPECT_EQ(WriteXml(info), "<tsf:FileInfo/>\n");
}

TEST_P(FileInfoInLaterEdition, WritesIntoTheNamespaceOfTheEdition) {
  VornFileInfo info;
  const std::string uri = VornSchema::Instance().Tsf().GetString();
  EXPECT_THAT(model_test::WriteXmlWithNamespaces(info), testing::HasSubstr("<tsf:FileInfo xmlns=\"" + uri + "\"/>"));
}

TEST_P(FileInfoInLaterEdition, StopsWritingAtTheFirstFailure) {
  VornFileInfo info = InfoOf(kCreated, kChanged, "note");
  EXPECT_THAT(WriteFailuresOverlooked(info), IsEmpty());
}

TEST_P(FileInfoInLaterEdition, ReadsWhatItWrites) {
  VornFileInfo written = InfoOf(kCreated, kChanged, "note");
  VornFileInfo read;
  ASSERT_TRUE(ReadXml(read, WriteXml(written)));
  ExpectFilled(read);
}

TEST_P(FileInfoInEdition, ReadsItsAttributesAndIgnoresOthers) {
  VornFileInfo info;
  ASSERT_TRUE(ReadXml(info,
                      "<tsf:FileInfo other='x' note='note' changeDate='2020-12-31T23:59:58' Note='y'"
                      " createDate='2019-04-01T09:05:07'><tsf:Unknown/></tsf:FileInfo>"));
  ExpectFilled(info);
}

TEST_P(FileInfoInEdition, KeepsWhatTheElementDoesNotName) {
  VornFileInfo info = InfoOf(kCreated, kChanged, "note");
  ASSERT_TRUE(ReadXml(info, "<tsf:FileInfo/>"));
  ExpectFilled(info);
}

TEST_P(FileInfoInEdition, TakesABareDateForTheFirstDayAndCountsAsEnabled) {
  VornFileInfo info;
  ASSERT_TRUE(ReadXml(info, "<tsf:FileInfo createDate='2019-04-01'/>"));
  EXPECT_EQ(info.GetCreateDate(), COleDateTime(1899, 12, 30, 0, 0, 0));
  EXPECT_TRUE(info.IsEnable());
}

TEST_P(FileInfoInEdition, TakesAnEmptyDateForTheFirstDayToo) {
  VornFileInfo info;
  ASSERT_TRUE(ReadXml(info, "<tsf:FileInfo createDate=''/>"));
  EXPECT_EQ(info.GetCreateDate().GetStatus(), COleDateTime::valid);
  EXPECT_EQ(info.GetCreateDate(), COleDateTime(1899, 12, 30, 0, 0, 0));
  EXPECT_TRUE(info.IsEnable());
}

TEST_P(FileInfoInEdition, IsNotEnabledWithADateThatDoesNotExist) {
  VornFileInfo info;
  ASSERT_TRUE(ReadXml(info, "<tsf:FileInfo createDate='2019-13-01T00:00:00'/>"));
  EXPECT_EQ(info.GetCreateDate().GetStatus(), COleDateTime::invalid);
  EXPECT_FALSE(info.IsEnable());
}

TEST_P(FileInfoInEdition, RefusesAnotherTagAndStaysAsItWas) {
  VornFileInfo info = InfoOf(kCreated, kChanged, "note");
  EXPECT_FALSE(ReadXml(info, "<FileInfo createDate='2021-01-01T00:00:00' note='x'/>"));
  ExpectFilled(info);
}

}  // namespace
