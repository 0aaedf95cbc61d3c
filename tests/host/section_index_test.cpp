#include "host/document/section_index.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using host_test::Section;

VornXSections SetOf(const std::vector<VornXSection>& sections) {
  VornXSections set;
  for (const VornXSection& section : sections) set.GetXSectionArray().Add(section);
  return set;
}

TEST(SectionIndex, FindsNothingInAnEmptySet) {
  const VornXSections set;
  EXPECT_EQ(SectionIndex(set).Find(0.0, false), -1);
}

TEST(SectionIndex, FindsAStationWithinAThousandthOfAMillimetre) {
  const VornXSections set = SetOf({Section(0.0, {}), Section(20.0, {}), Section(40.0, {})});
  const SectionIndex index(set);
  EXPECT_EQ(index.Find(20.0, false), 1);
  EXPECT_EQ(index.Find(20.0000005, false), 1);
  EXPECT_EQ(index.Find(19.9999995, false), 1);
  EXPECT_EQ(index.Find(20.000002, false), -1);
  EXPECT_EQ(index.Find(60.0, false), -1);
}

TEST(SectionIndex, TellsTheSectionsOfAChangeOfShapeApart) {
  const VornXSections set = SetOf({Section(20.0, {}), Section(20.0, {}, true), Section(40.0, {}, true)});
  const SectionIndex index(set);
  EXPECT_EQ(index.Find(20.0, false), 0);
  EXPECT_EQ(index.Find(20.0, true), 1);
  EXPECT_EQ(index.Find(40.0, false), -1);
}

TEST(SectionIndex, TakesNoSectionWithoutAStationForOneAtTheBeginning) {
  const VornXSections set = SetOf({Section(NurReal(), {}), Section(0.0, {}), Section(NurReal(), {}, true)});
  const SectionIndex index(set);
  EXPECT_EQ(index.Find(0.0, false), 1);
  EXPECT_EQ(index.Find(0.0, true), -1);
  EXPECT_EQ(index.Find(NurReal(), false), 0);
  EXPECT_EQ(index.Find(NurReal(), true), 2);
}

TEST(SectionIndex, AnswersAsTheSetDoes) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> step(0, 6);
  std::vector<VornXSection> sections;
  for (int i = 0; i < 300; ++i) {
    // Many stations lie within the tolerance of others, in no order.
    const NurReal station = step(random) + 4e-7 * step(random);
    sections.push_back(Section(station, {}, step(random) > 3));
  }
  const VornXSections set = SetOf(sections);
  const SectionIndex index(set);
  for (int i = 0; i < 2000; ++i) {
    const NurReal station = step(random) + 3e-7 * (step(random) - 3);
    const bool flag = step(random) > 3;
    EXPECT_EQ(index.Find(station, flag), set.Find(station, flag)) << station.Value();
  }
}

VornFormCtrlTargetPnt TargetPnt(NurReal station, const char* form, const char* code) {
  VornFormCtrlTargetPnt point;
  point.Set(station, form, code, false);
  return point;
}

TEST(SectionIndex, FindsStationsAsFarAsNumbersGo) {
  for (const double station : {3.5e10, 1e15, -1e15}) {
    const VornXSections set = SetOf({Section(0.0, {}), Section(station, {})});
    EXPECT_EQ(SectionIndex(set).Find(station, false), 1) << station;
    EXPECT_EQ(set.Find(station, false), 1) << station;
  }
}

TEST(SectionIndex, FindsTheOthersBesideAStationThatIsNoNumber) {
  const VornXSections set = SetOf({Section(40.0, {}), Section(std::nan(""), {}), Section(0.0, {}), Section(20.0, {})});
  const SectionIndex index(set);
  EXPECT_EQ(index.Find(0.0, false), 2);
  EXPECT_EQ(index.Find(20.0, false), 3);
  EXPECT_EQ(index.Find(40.0, false), 0);
  EXPECT_EQ(index.Find(std::nan(""), false), -1);
}

TEST(SectionIndex, FindsWhereATargetsPointStands) {
  const auto code = [](const char* text) {
    return host_test::Point(text, VornLocation::Right, host_test::DataType::WidthHeight, 1.0, 0.0);
  };
  const VornXSections set =
      SetOf({Section(0.0, {host_test::Form("A", {code("R1"), code("R2")})}),
             Section(20.0, {host_test::Form("A", {code("R1")}), host_test::Form("B", {code("R1")}),
                            host_test::Form("A", {code("R3"), code("R4")})})});
  SectionIndex index(set);
  struct Case {
    VornFormCtrlTargetPnt point;
    int section, form, at;
    std::string missing;
  };
  for (const Case& wanted : {
           Case{TargetPnt(0.0, "A", "R2"), 0, 0, 1, ""},
           Case{TargetPnt(20.0, "B", "R1"), 1, 1, 0, ""},
           Case{TargetPnt(20.0, "A", "R4"), 1, 2, 1, ""},   // of two forms of that name, the one that has the code
           Case{TargetPnt(20.0, "A", "R9"), 1, 0, -1, ""},  // the first, where none has it
           Case{TargetPnt(20.0, "C", "R1"), 1, -1, -1, "there is no form C at station 20.0000"},
           Case{TargetPnt(40.0, "A", "R1"), -1, -1, -1, "there is no cross section at station 40.0000"},
       }) {
    const Standing standing = index.FindStanding(wanted.point);
    EXPECT_EQ(standing.section, wanted.section) << wanted.missing;
    EXPECT_EQ(standing.form, wanted.form) << wanted.missing;
    EXPECT_EQ(standing.point, wanted.at) << wanted.missing;
    EXPECT_EQ(WhyWithoutForm(wanted.point, standing), wanted.missing);
  }
}

}  // namespace
}  // namespace vorn_host
