#include "host/document/text_lines.h"

#include <gtest/gtest.h>

namespace vorn_host {
namespace {

TEST(TextLines, AreOneWithoutABreak) {
  const TextLines lines;
  EXPECT_EQ(lines.LineOf(0), 1u);
  EXPECT_EQ(lines.LineOf(1000), 1u);
  EXPECT_EQ(lines.StartOf(1000), 0u);
}

TEST(TextLines, EndWithTheirBreaks) {
  TextLines lines;
  lines.AddBreak(4);
  lines.AddBreak(5);
  lines.AddBreak(9);
  EXPECT_EQ(lines.LineOf(4), 1u) << "the break itself is part of the line that it ends";
  EXPECT_EQ(lines.LineOf(5), 2u);
  EXPECT_EQ(lines.LineOf(6), 3u);
  EXPECT_EQ(lines.LineOf(10), 4u);
  EXPECT_EQ(lines.StartOf(4), 0u);
  EXPECT_EQ(lines.StartOf(5), 5u);
  EXPECT_EQ(lines.StartOf(9), 6u);
  EXPECT_EQ(lines.StartOf(10), 10u);
}

}  // namespace
}  // namespace vorn_host
