#include "vorn/road/land_xml_data.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <type_traits>
#include <utility>

namespace {

static_assert(std::has_virtual_destructor_v<VornLandXMLProject> && std::has_virtual_destructor_v<VornLandXMLCgPoint>);
static_assert(std::has_virtual_destructor_v<VornLandXMLAlignment> && std::has_virtual_destructor_v<VornLandXMLData>);
static_assert(std::is_nothrow_move_constructible_v<VornLandXMLData>);

VornLandXMLCgPointsArray Points(std::initializer_list<std::uint16_t> numbers) {
  VornLandXMLCgPointsArray points;
  for (const std::uint16_t number : numbers) {
    VornLandXMLCgPoint point;
    point.SetNumber(number);
    points.Add(point);
  }
  return points;
}

TEST(LandXmlProject, StartsEmpty) {
  const VornLandXMLProject project;
  EXPECT_EQ(project.GetName(), "");
  EXPECT_EQ(project.GetDesc(), "");
}

TEST(LandXmlCgPoint, ComparesNumbers) {
  VornLandXMLCgPoint a;
  EXPECT_EQ(a.GetNumber(), 0);
  a.SetNumber(65535);
  VornLandXMLCgPoint b;
  EXPECT_FALSE(a.Compare(b));
  b = a;
  EXPECT_TRUE(a.Compare(b));
}

TEST(LandXmlCgPoints, StartEmptyWithTheirOptions) {
  const VornLandXMLCgPointsArray points;
  EXPECT_TRUE(points.IsEmpty());
  EXPECT_EQ(points.GetOption1(), 1);
  EXPECT_EQ(points.GetOption2(), 0);
}

TEST(LandXmlCgPoints, CompareTheirNumbersInOrder) {
  EXPECT_TRUE(Points({}).Compare(Points({})));
  EXPECT_TRUE(Points({1, 2}).Compare(Points({1, 2})));
  EXPECT_FALSE(Points({1, 2}).Compare(Points({2, 1})));
  EXPECT_FALSE(Points({1, 2}).Compare(Points({1})));
}

TEST(LandXmlCgPoints, DoNotCompareTheirOptions) {
  VornLandXMLCgPointsArray points = Points({1});
  points.SetOption1(8);
  points.SetOption2(9);
  EXPECT_TRUE(points.Compare(Points({1})));
  const VornLandXMLCgPointsArray copy = points;
  EXPECT_EQ(copy.GetOption1(), 8);
  EXPECT_EQ(copy.GetOption2(), 9);
}

TEST(LandXmlAlignment, StartsWithoutFlagAndCodes) {
  const VornLandXMLAlignment alignment;
  EXPECT_EQ(alignment.GetName(), "");
  EXPECT_EQ(alignment.GetText(), "");
  EXPECT_EQ(alignment.GetFlag(), 0);
  EXPECT_EQ(alignment.GetCode1(), 65535);
  EXPECT_EQ(alignment.GetCode2(), 65535);
  EXPECT_EQ(alignment.GetCode3(), 65535);
}

TEST(LandXmlData, StartsAsNew) {
  const VornLandXMLData data;
  EXPECT_EQ(data.GetStoreVersion(), "01.11");
  EXPECT_EQ(data.GetProject().GetName(), "");
  EXPECT_TRUE(data.GetCgPoints().IsEmpty());
  EXPECT_EQ(data.GetCgPoints().GetOption1(), 1);
  EXPECT_TRUE(data.GetAlignments().IsEmpty());
  EXPECT_EQ(data.GetFlagAny(), 1);
  EXPECT_EQ(data.GetOption1(), 1);
  EXPECT_EQ(data.GetOption2(), 0);
  EXPECT_TRUE(data.GetTexts().IsEmpty());
  EXPECT_EQ(data.GetOption3(), 0);
  EXPECT_EQ(data.GetValue(), 5.0);
}

TEST(LandXmlData, CopiesAllItsMembers) {
  VornLandXMLData data;
  VornLandXMLProject project;
  project.SetName("name");
  project.SetDesc("desc");
  data.SetProject(project);
  data.SetCgPoints(Points({4}));
  VornLandXMLAlignmentsArray alignments;
  alignments.SetSize(1);
  alignments[0].SetName("alignment");
  data.SetAlignments(alignments);
  data.SetFlagAny(2);
  data.SetOption1(3);
  data.SetOption2(4);
  data.SetOption3(5);
  VornStringList texts;
  texts.AddTail("text");
  data.SetTexts(texts);
  data.SetValue(6.5);

  VornLandXMLData copy;
  copy = data;
  const VornLandXMLData moved = std::move(copy);
  EXPECT_EQ(moved.GetProject().GetName(), "name");
  EXPECT_EQ(moved.GetProject().GetDesc(), "desc");
  EXPECT_TRUE(moved.GetCgPoints().Compare(Points({4})));
  ASSERT_EQ(moved.GetAlignments().GetSize(), 1);
  EXPECT_EQ(moved.GetAlignments()[0].GetName(), "alignment");
  EXPECT_EQ(moved.GetFlagAny(), 2);
  EXPECT_EQ(moved.GetOption1(), 3);
  EXPECT_EQ(moved.GetOption2(), 4);
  EXPECT_EQ(moved.GetOption3(), 5);
  EXPECT_EQ(moved.GetTexts().GetCount(), 1);
  EXPECT_EQ(moved.GetValue(), 6.5);
}

}  // namespace
