#include "vorn/framework/identifier.h"

#include <gtest/gtest.h>

namespace {

class Element {
 public:
  explicit Element(std::uint32_t serialID = kVornNoID) : m_serialID(serialID) {}
  [[nodiscard]] std::uint32_t GetSerialID() const { return m_serialID; }
  void SetSerialID(std::uint32_t serialID) { m_serialID = serialID; }

 private:
  std::uint32_t m_serialID;
};

std::uint32_t Numbered(VornSerialCounter& serials, Element element = Element()) {
  serials.Number(element);
  return element.GetSerialID();
}

TEST(SerialCounter, GivesElementsWithoutASerialTheNextOne) {
  VornSerialCounter serials(1);
  EXPECT_EQ(Numbered(serials), 1u);
  EXPECT_EQ(Numbered(serials), 2u);
  EXPECT_EQ(serials.Take(), 3u);
  EXPECT_EQ(serials.Next(), 4u);
}

TEST(SerialCounter, GoesOnAboveTheSerialThatAnElementBrings) {
  VornSerialCounter serials(1);
  EXPECT_EQ(Numbered(serials, Element(7)), 7u);
  EXPECT_EQ(Numbered(serials, Element(3)), 3u);
  EXPECT_EQ(Numbered(serials, Element(7)), 7u);
  EXPECT_EQ(Numbered(serials), 8u);
}

TEST(SerialCounter, KeepsZeroForTheElementThatHasIt) {
  VornSerialCounter serials(0);
  serials.KeepZero();
  EXPECT_EQ(Numbered(serials), 1u);
  serials.KeepZero();
  EXPECT_EQ(serials.Next(), 2u);
}

TEST(SerialCounter, LeavesElementsWithoutASerialWhenAllAreGivenAway) {
  VornSerialCounter serials(1);
  EXPECT_EQ(Numbered(serials, Element(kVornNoID - 1)), kVornNoID - 1);
  EXPECT_EQ(Numbered(serials), kVornNoID);
  EXPECT_EQ(Numbered(serials), kVornNoID);
  EXPECT_EQ(serials.Next(), kVornNoID);
}

}  // namespace
