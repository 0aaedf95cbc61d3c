#include "vorn/road/alignment.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

#include "vorn/platform/code_page_932.h"

namespace {

static_assert(std::has_virtual_destructor_v<VornAlignment> && std::has_virtual_destructor_v<VornUpDate>);
static_assert(std::is_nothrow_move_constructible_v<VornAlignment>);
static_assert(std::is_nothrow_move_assignable_v<VornAlignmentsArray>);

TEST(UpDate, StartsWithNullDates) {
  const VornUpDate dates;
  for (const COleDateTime& date : dates.GetDates()) {
    EXPECT_EQ(date.m_dt, 0.0);
    EXPECT_EQ(static_cast<int>(date.GetStatus()), 2);
  }
}

TEST(UpDate, SetsAllDatesAlike) {
  VornUpDate dates;
  const COleDateTime day(2024, 2, 29, 12, 0, 0);
  dates.SetDate(day);
  for (const COleDateTime& date : dates.GetDates()) EXPECT_EQ(date, day);
  dates.GetDates()[1] = COleDateTime();
  EXPECT_EQ(dates.GetDates()[0], day);
  EXPECT_EQ(dates.GetDates()[1], COleDateTime());
}

TEST(Alignment, StartsEmpty) {
  const VornAlignment alignment;
  EXPECT_EQ(alignment.GetName(), "");
  EXPECT_EQ(alignment.GetCrsName(), "");
  EXPECT_EQ(alignment.GetAuxText(), "");
  EXPECT_EQ(alignment.GetAttr1(), 0);
  EXPECT_EQ(alignment.GetAttr2(), 0);
  EXPECT_EQ(alignment.GetAttr3(), 0);
  EXPECT_TRUE(alignment.GetXSections().GetXSectionArray().IsEmpty());
  EXPECT_EQ(alignment.GetUpDate().GetDates(), VornUpDate().GetDates());
  EXPECT_EQ(alignment.GetMemo1(), "");
  EXPECT_EQ(alignment.GetMemo2(), "");
  EXPECT_EQ(alignment.GetMemo3(), "");
}

TEST(Alignment, CopiesAllItsMembers) {
  VornAlignment alignment;
  alignment.SetName("name");
  alignment.SetCrsName("crs");
  alignment.SetAuxText("aux");
  alignment.SetAttr1(1);
  alignment.SetAttr2(2);
  alignment.SetAttr3(65535);
  VornXSections sections;
  sections.SetRefAlign("ref");
  alignment.SetXSections(sections);
  VornUpDate dates;
  dates.SetDate(COleDateTime(2024, 2, 29, 0, 0, 0));
  alignment.SetUpDate(dates);
  alignment.SetMemo1("memo 1");
  alignment.SetMemo2("memo 2");
  alignment.SetMemo3("memo 3");

  VornAlignment copy;
  copy = alignment;
  const VornAlignment moved = std::move(copy);
  EXPECT_EQ(moved.GetName(), "name");
  EXPECT_EQ(moved.GetCrsName(), "crs");
  EXPECT_EQ(moved.GetAuxText(), "aux");
  EXPECT_EQ(moved.GetAttr1(), 1);
  EXPECT_EQ(moved.GetAttr2(), 2);
  EXPECT_EQ(moved.GetAttr3(), 65535);
  EXPECT_EQ(moved.GetXSections().GetRefAlign(), "ref");
  EXPECT_EQ(moved.GetUpDate().GetDates()[2], COleDateTime(2024, 2, 29, 0, 0, 0));
  EXPECT_EQ(moved.GetMemo1(), "memo 1");
  EXPECT_EQ(moved.GetMemo2(), "memo 2");
  EXPECT_EQ(moved.GetMemo3(), "memo 3");
}

TEST(AlignmentsArray, StartsWithoutACurrentAlignment) {
  const VornAlignmentsArray alignments;
  EXPECT_TRUE(alignments.IsEmpty());
  EXPECT_EQ(alignments.GetCurrent(), -1);
}

TEST(AlignmentsArray, CopiesItsCurrentAlignmentToo) {
  VornAlignmentsArray alignments;
  alignments.Add(VornAlignment());
  alignments.SetCurrent(0);
  const VornAlignmentsArray copy = alignments;
  EXPECT_EQ(copy.GetSize(), 1);
  EXPECT_EQ(copy.GetCurrent(), 0);
}

TEST(AlignmentsArray, KnowsWhichSystemsItsAlignmentsUse) {
  VornAlignmentsArray alignments;
  EXPECT_FALSE(alignments.IsUsedCrsName("a"));
  alignments.SetSize(3);
  alignments[1].SetCrsName("a");
  alignments[2].SetCrsName(u8"座標"_cp932);
  EXPECT_TRUE(alignments.IsUsedCrsName("a"));
  EXPECT_TRUE(alignments.IsUsedCrsName(u8"座標"_cp932.data()));
  EXPECT_FALSE(alignments.IsUsedCrsName("A"));
  EXPECT_FALSE(alignments.IsUsedCrsName("a "));
}

TEST(AlignmentsArray, DoesNotUseASystemWithoutAName) {
  VornAlignmentsArray alignments;
  alignments.SetSize(1);
  EXPECT_FALSE(alignments.IsUsedCrsName(""));
  EXPECT_FALSE(alignments.IsUsedCrsName(nullptr));
}

}  // namespace
