#include "vorn/control/form_ctrl_target_pnt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/xml_tree.h"
#include "vorn/platform/code_page_932.h"

namespace {

using test_support::EditionScope;
using test_support::ReadXml;
using test_support::WriteXml;
using test_support::XmlTree;
using test_support::XmlTreeCursor;
using testing::IsEmpty;

class FormCtrlTargetPntTest : public testing::Test {
 protected:
  static VornFormCtrlTargetPnt Complete() {
    VornFormCtrlTargetPnt point;
    point.Set(20.5, "form", "L1", true);
    return point;
  }

  EditionScope m_edition{VornSchema::Version41};
};

/// A point in which no member has its default, and those members as they ought to be.
VornFormCtrlTargetPnt Filled() {
  VornFormCtrlTargetPnt point;
  point.SetPntID(1);
  point.SetOffset(-2.5);
  point.SetElevation(3.5);
  point.SetSide(VornLocation::Left);
  point.SetCumulativeDist(20.5);
  point.SetXSectChg(true);
  point.SetBuildFormName("form");
  point.SetCode("L1");
  point.SetSerialID(4);
  point.SetBuildFormID(5);
  point.SetSectionID(6);
  point.SetXSectType(7);
  point.SetSectNameID(8);
  point.SetCrossPointType(static_cast<CrossPointType>(9));
  return point;
}

void ExpectFilled(const VornFormCtrlTargetPnt& point) {
  EXPECT_EQ(point.tagName(), "tsf:FormCtrlTargetPnt");
  EXPECT_EQ(point.GetPntID(), 1u);
  EXPECT_EQ(point.GetOffset(), -2.5);
  EXPECT_EQ(point.GetElevation(), 3.5);
  EXPECT_EQ(point.GetSide(), VornLocation::Left);
  EXPECT_EQ(point.GetCumulativeDist(), NurReal(20.5));
  EXPECT_TRUE(point.GetXSectChg());
  EXPECT_EQ(point.GetBuildFormName(), "form");
  EXPECT_EQ(point.GetCode(), "L1");
  EXPECT_EQ(point.GetSerialID(), 4u);
  EXPECT_EQ(point.GetBuildFormID(), 5u);
  EXPECT_EQ(point.GetSectionID(), 6u);
  EXPECT_EQ(point.GetXSectType(), 7u);
  EXPECT_EQ(point.GetSectNameID(), 8u);
  EXPECT_EQ(static_cast<int>(point.GetCrossPointType()), 9);
}

// --- data ------------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetPntTest, StartsWithItsDefaults) {
  const VornFormCtrlTargetPnt point;
  EXPECT_EQ(point.tagName(), "tsf:FormCtrlTargetPnt");
  EXPECT_EQ(point.GetPntID(), 0xFFFFFFFFu);
  EXPECT_EQ(point.GetOffset(), -1e-99);
  EXPECT_EQ(point.GetElevation(), -1e-99);
  EXPECT_EQ(point.GetSide(), VornLocation::Unset);
  EXPECT_FALSE(point.GetCumulativeDist().IsSet());
  EXPECT_FALSE(point.GetXSectChg());
  EXPECT_EQ(point.GetBuildFormName(), "");
  EXPECT_EQ(point.GetCode(), "");
  EXPECT_EQ(point.GetSerialID(), 0u);
  EXPECT_EQ(point.GetBuildFormID(), 0u);
  EXPECT_EQ(point.GetSectionID(), 0u);
  EXPECT_EQ(point.GetXSectType(), 0u);
  EXPECT_EQ(point.GetSectNameID(), 0u);
  EXPECT_EQ(point.GetCrossPointType(), CrossPointType::None);
  EXPECT_EQ(static_cast<int>(CrossPointType::None), 0);
}

TEST_F(FormCtrlTargetPntTest, KeepsEveryMember) { ExpectFilled(Filled()); }

TEST_F(FormCtrlTargetPntTest, CopiesEveryMember) {
  const VornFormCtrlTargetPnt original = Filled();
  VornFormCtrlTargetPnt assigned;
  assigned = original;
  const VornFormCtrlTargetPnt& self = assigned;
  assigned = self;
  ExpectFilled(VornFormCtrlTargetPnt(original));
  ExpectFilled(assigned);
}

TEST_F(FormCtrlTargetPntTest, HandsOutItsMembersForChange) {
  VornFormCtrlTargetPnt point;
  point.GetCumulativeDist() = 1.5;
  point.GetXSectChg() = true;
  point.GetBuildFormName() = "form";
  point.GetCode() = "L1";
  point.GetSerialID() = 1;
  point.GetBuildFormID() = 2;
  point.GetSectionID() = 3;
  point.GetXSectType() = 4;
  point.GetSectNameID() = 5;
  point.GetCrossPointType() = static_cast<CrossPointType>(6);
  const VornFormCtrlTargetPnt& changed = point;
  EXPECT_EQ(changed.GetCumulativeDist(), NurReal(1.5));
  EXPECT_TRUE(changed.GetXSectChg());
  EXPECT_EQ(changed.GetBuildFormName(), "form");
  EXPECT_EQ(changed.GetCode(), "L1");
  EXPECT_EQ(changed.GetSerialID(), 1u);
  EXPECT_EQ(changed.GetBuildFormID(), 2u);
  EXPECT_EQ(changed.GetSectionID(), 3u);
  EXPECT_EQ(changed.GetXSectType(), 4u);
  EXPECT_EQ(changed.GetSectNameID(), 5u);
  EXPECT_EQ(static_cast<int>(changed.GetCrossPointType()), 6);
}

TEST_F(FormCtrlTargetPntTest, SetAssignsFourMembersAndNoOther) {
  VornFormCtrlTargetPnt point = Filled();
  point.Set(40.25, "other", "R2", false);
  EXPECT_EQ(point.GetCumulativeDist(), NurReal(40.25));
  EXPECT_EQ(point.GetBuildFormName(), "other");
  EXPECT_EQ(point.GetCode(), "R2");
  EXPECT_FALSE(point.GetXSectChg());
  point.Set(20.5, "form", "L1", true);
  ExpectFilled(point);
}

TEST_F(FormCtrlTargetPntTest, NeedsStationFormAndCode) {
  EXPECT_FALSE(VornFormCtrlTargetPnt().IsEnable());
  EXPECT_TRUE(Complete().IsEnable());
  VornFormCtrlTargetPnt point = Complete();
  point.SetCumulativeDist(NurReal());
  EXPECT_FALSE(point.IsEnable());
  point = Complete();
  point.SetBuildFormName("");
  EXPECT_FALSE(point.IsEnable());
  point = Complete();
  point.SetCode("");
  EXPECT_FALSE(point.IsEnable());
}

// --- XML -------------------------------------------------------------------------------------------------------------

TEST_F(FormCtrlTargetPntTest, WritesItsAttributesInOrder) {
  VornFormCtrlTargetPnt point = Complete();
  for (const auto version : {VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    EXPECT_EQ(
        WriteXml(point),
        "<tsf:FormCtrlTargetPnt cumulativeDist=\"20.5000\" xSectChg=\"true\" buildFormName=\"form\" code=\"L1\"/>\n");
  }
}

TEST_F(FormCtrlTargetPntTest, WritesItsStationWithThePlacesOfADistance) {
  // With the places of edition 2.0 a position has two more than a distance.
  m_edition.Select(VornSchema::Version20);
  VornSchema::Instance().SetVersion(VornSchema::Version41);
  ASSERT_EQ(VornNumericalPrecision::GetInstance().GetDecimalPlacePos(), 6);
  VornFormCtrlTargetPnt point = Complete();
  EXPECT_EQ(
      WriteXml(point),
      "<tsf:FormCtrlTargetPnt cumulativeDist=\"20.5000\" xSectChg=\"true\" buildFormName=\"form\" code=\"L1\"/>\n");
}

TEST_F(FormCtrlTargetPntTest, WritesNoFlagUnlessItIsSet) {
  VornFormCtrlTargetPnt point = Complete();
  point.SetXSectChg(false);
  EXPECT_EQ(WriteXml(point),
            "<tsf:FormCtrlTargetPnt cumulativeDist=\"20.5000\" buildFormName=\"form\" code=\"L1\"/>\n");
}

TEST_F(FormCtrlTargetPntTest, WritesWhatIsUnsetAsEmptyAttributes) {
  VornFormCtrlTargetPnt point;
  EXPECT_EQ(WriteXml(point), "<tsf:FormCtrlTargetPnt cumulativeDist=\"\" buildFormName=\"\" code=\"\"/>\n");
}

TEST_F(FormCtrlTargetPntTest, WritesIntoTheNamespaceOfTheEdition) {
  for (const int kind : {VornSchema::KindTsf, VornSchema::KindMaff}) {
    m_edition.Select(VornSchema::Version40, kind);
    XmlTree tree;
    XmlTreeCursor cursor(tree);
    VornFormCtrlTargetPnt point = Complete();
    EXPECT_TRUE(point.toXML(&cursor));
    EXPECT_EQ(tree.Root().children.front()->namespaceUri, std::string(VornSchema::Instance().Tsf()));
  }
}

TEST_F(FormCtrlTargetPntTest, WritesNothingBeforeEdition40) {
  VornFormCtrlTargetPnt point = Complete();
  for (const auto version : {VornSchema::Version20, VornSchema::VersionUnknown}) {
    m_edition.Select(version);
    EXPECT_EQ(WriteXml(point), "");
  }
}

TEST_F(FormCtrlTargetPntTest, StopsWritingAtAnyFailure) {
  VornFormCtrlTargetPnt point = Complete();
  EXPECT_THAT(test_support::WriteFailuresOverlooked(point), IsEmpty());
}

TEST_F(FormCtrlTargetPntTest, ReadsItsAttributesInAnyOrderAndEdition) {
  for (const auto version : {VornSchema::Version20, VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    VornFormCtrlTargetPnt point;
    EXPECT_TRUE(ReadXml(
        point,
        "<tsf:FormCtrlTargetPnt code='L1' other='x' buildFormName='form' xSectChg='true' cumulativeDist='20.5'/>"));
    EXPECT_EQ(point.GetCumulativeDist(), NurReal(20.5));
    EXPECT_TRUE(point.GetXSectChg());
    EXPECT_EQ(point.GetBuildFormName(), "form");
    EXPECT_EQ(point.GetCode(), "L1");
  }
}

TEST_F(FormCtrlTargetPntTest, ReadsAnEmptyStationAsUnset) {
  VornFormCtrlTargetPnt point = Complete();
  EXPECT_TRUE(ReadXml(point, "<tsf:FormCtrlTargetPnt cumulativeDist=''/>"));
  EXPECT_FALSE(point.GetCumulativeDist().IsSet());
}

TEST_F(FormCtrlTargetPntTest, TakesTheFlagForSetOnlyWhenItReadsTrue) {
  for (const std::string text : {"false", "True", "TRUE", "1", "", " true"}) {
    VornFormCtrlTargetPnt point = Complete();
    EXPECT_TRUE(ReadXml(point, "<tsf:FormCtrlTargetPnt xSectChg='" + text + "'/>"));
    EXPECT_FALSE(point.GetXSectChg()) << text;
  }
}

TEST_F(FormCtrlTargetPntTest, KeepsWhatTheElementDoesNotName) {
  VornFormCtrlTargetPnt point = Filled();
  EXPECT_TRUE(ReadXml(point, "<tsf:FormCtrlTargetPnt Code='wrong case'/>"));
  ExpectFilled(point);
}

TEST_F(FormCtrlTargetPntTest, RefusesAnotherElementAndStaysAsItIs) {
  VornFormCtrlTargetPnt point = Filled();
  EXPECT_FALSE(ReadXml(point, "<tsf:FormCtrlTarget code='R2'/>"));
  EXPECT_FALSE(ReadXml(point, "<FormCtrlTargetPnt code='R2'/>"));
  ExpectFilled(point);
}

TEST_F(FormCtrlTargetPntTest, ReadsWhatItWrote) {
  VornFormCtrlTargetPnt written = Complete();
  written.SetBuildFormName(CString(u8"表層"_cp932));
  VornFormCtrlTargetPnt read;
  EXPECT_TRUE(ReadXml(read, WriteXml(written)));
  EXPECT_EQ(read.GetCumulativeDist(), NurReal(20.5));
  EXPECT_TRUE(read.GetXSectChg());
  EXPECT_EQ(read.GetBuildFormName(), u8"表層"_cp932);
  EXPECT_EQ(read.GetCode(), "L1");
}

}  // namespace
