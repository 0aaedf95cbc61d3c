#include <gtest/gtest.h>

#include <string>

#include "tests/archive/full_records.h"
#include "vorn/model/existing_build_form.h"

namespace archive_test {

namespace {

VornExistingComposedPnt FullGroundPoint(int n) {
  VornExistingComposedPnt point;
  point.SetCLDist(n + 0.81);
  point.SetGh(n + 0.82);
  point.SetName(CString("ground point " + std::to_string(n)));
  // Not archived.
  point.SetSpare1(n + 0.83);
  point.SetSpare2(n + 0.84);
  return point;
}

ExpectedBytes GroundPointBytes(int n) {
  return {
      {"distance", Real(n + 0.81)},
      {"height", Real(n + 0.82)},
      {"name", Text("ground point " + std::to_string(n))},
      {"extension table", EmptyTable()},
  };
}

void ExpectGroundPoint(const VornExistingComposedPnt& point, int n) {
  EXPECT_EQ(point.GetCLDist(), n + 0.81);
  EXPECT_EQ(point.GetGh(), n + 0.82);
  EXPECT_EQ(point.GetName(), CString("ground point " + std::to_string(n)));
  EXPECT_FALSE(point.GetSpare1().IsSet());
  EXPECT_FALSE(point.GetSpare2().IsSet());
}

}  // namespace

VornExistingBuildForm FullGround(int n) {
  VornExistingBuildForm ground;
  ground.SetName(CString("ground " + std::to_string(n)));
  ground.GetComposedPntArray().Add(FullGroundPoint(10 * n));
  ground.GetComposedPntArray().Add(FullGroundPoint(10 * n + 1));
  return ground;
}

ExpectedBytes GroundBytes(int n) {
  return {
      {"name", Text("ground " + std::to_string(n))},
      {"point count", U32(2)},
      {"points[0]", GroundPointBytes(10 * n)},
      {"points[1]", GroundPointBytes(10 * n + 1)},
      {"extension table", EmptyTable()},
  };
}

void ExpectGround(const VornExistingBuildForm& ground, int n) {
  EXPECT_EQ(ground.GetName(), CString("ground " + std::to_string(n)));
  ASSERT_EQ(ground.GetComposedPntArray().GetSize(), 2);
  ExpectGroundPoint(ground.GetComposedPntArray()[0], 10 * n);
  ExpectGroundPoint(ground.GetComposedPntArray()[1], 10 * n + 1);
}

namespace {

class ExistingGroundArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(ExistingGroundArchive);

TEST_P(ExistingGroundArchive, WritesAPointWithItsTableLast) {
  EXPECT_TRUE(HasBytes(StoredAs(FullGroundPoint(4), GetParam()), GroundPointBytes(4)));
}

TEST_P(ExistingGroundArchive, ReadsAPoint) {
  ExpectGroundPoint(ReadBack<VornExistingComposedPnt>(GroundPointBytes(4).All(), GetParam()), 4);
}

TEST_P(ExistingGroundArchive, WritesAFormWithItsTableLast) {
  EXPECT_TRUE(HasBytes(StoredAs(FullGround(4), GetParam()), GroundBytes(4)));
}

TEST_P(ExistingGroundArchive, ReadsAForm) {
  ExpectGround(ReadBack<VornExistingBuildForm>(GroundBytes(4).All(), GetParam()), 4);
}

TEST_P(ExistingGroundArchive, ReadsAFormInPlaceOfWhatItHeld) {
  VornExistingBuildForm ground = FullGround(7);
  ground.GetComposedPntArray().Add(FullGroundPoint(8));
  ReadInto(ground, GroundBytes(4).All(), GetParam());
  ExpectGround(ground, 4);
}

// Found only where the table really is last: its values would otherwise be read as fields.
TEST_P(ExistingGroundArchive, ForgetsWhatLaterVersionsPutIntoItsTable) {
  const ExpectedBytes bytes = {{"name", Text("G")}, {"point count", U32(0)}, {"table", TableOf(1, 2)}};
  EXPECT_EQ(ReadBack<VornExistingBuildForm>(bytes.All(), GetParam()).GetName(), "G");
}

}  // namespace
}  // namespace archive_test
