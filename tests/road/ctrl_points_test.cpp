#include "vorn/road/ctrl_points.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

static_assert(std::has_virtual_destructor_v<VornCtrlPoints> && std::is_nothrow_move_constructible_v<VornCtrlPoints>);

TEST(CtrlPoints, StartWithOneEmptyGroupOfGroundPoints) {
  const VornCtrlPoints points;
  EXPECT_EQ(points.GetName(), "");
  EXPECT_TRUE(points.GetCtrlPos().IsEmpty());
  EXPECT_TRUE(points.GetBenchMarks().IsEmpty());
  ASSERT_EQ(points.GetGmPnts().GetSize(), 1);
  EXPECT_TRUE(points.GetGmPnts()[0].Compare(VornGmPnts()));
}

TEST(CtrlPoints, CopyAllTheirMembers) {
  VornCtrlPoints points;
  points.SetName("site");
  points.GetCtrlPos().Add(VornCtrlPoint());
  points.GetBenchMarks().SetSize(2);
  points.GetGmPnts().SetSize(3);
  VornCtrlPoints copy;
  copy = points;
  points = VornCtrlPoints();
  EXPECT_EQ(copy.GetName(), "site");
  EXPECT_EQ(copy.GetCtrlPos().GetSize(), 1);
  EXPECT_EQ(copy.GetBenchMarks().GetSize(), 2);
  EXPECT_EQ(copy.GetGmPnts().GetSize(), 3);
  EXPECT_EQ(points.GetGmPnts().GetSize(), 1);
}

TEST(CtrlPoints, TakeWholeArrays) {
  VornCtrlPosArray positions;
  positions.SetSize(4);
  VornBenchMkArray benchMarks;
  benchMarks.SetSize(5);
  VornCtrlPoints points;
  points.SetCtrlPos(positions);
  points.SetBenchMarks(benchMarks);
  points.SetGmPnts(VornGmPntsArray());
  EXPECT_EQ(points.GetCtrlPos().GetSize(), 4);
  EXPECT_EQ(points.GetBenchMarks().GetSize(), 5);
  EXPECT_TRUE(points.GetGmPnts().IsEmpty());
}

}  // namespace
