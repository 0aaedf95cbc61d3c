#include "vorn/types/structure_type.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/xml_tree.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/exceptions.h"

namespace {

using Type = VornStructureType::Type;
using Ministry = VornStructureType::MinistryType;
using test_support::EditionScope;
using test_support::ReadXml;
using test_support::WriteXml;
using test_support::XmlTree;
using test_support::XmlTreeCursor;
using testing::IsEmpty;

struct Row {
  int value;
  Type type;
  std::string_view name;
  std::uint32_t siblingCode;  ///< 0: none
  bool river;
  bool pavement;
  bool maff;
};

constexpr Row kRows[] = {
    {0, Type::RoadEarthwork, u8"道路土工"_cp932, 1, false, false, false},
    {1, Type::RiverCoastErosionControl, u8"河川・海岸・砂防土工"_cp932, 2, true, false, false},
    {2, Type::RoadPavement, u8"舗装工(道路)"_cp932, 100, false, true, false},
    {3, Type::RiverPavement, u8"舗装工(河川)"_cp932, 101, false, true, false},
    {4, Type::RoadBuriedStructure, u8"道路地下埋設物工"_cp932, 200, false, false, false},
    {5, Type::Other, u8"その他"_cp932, 0, false, false, false},
    {6, Type::MaffCommonEarthwork, u8"共通土工"_cp932, 300, false, false, true},
    {7, Type::MaffPipeline, u8"管水路工事"_cp932, 350, false, false, true},
    {8, Type::MaffFarmField, u8"ほ場整備工事"_cp932, 360, false, false, true},
};

class StructureTypeTest : public testing::Test {
 protected:
  static VornStructureType Complete() {
    VornStructureType structure;
    structure.SetType(Type::RoadEarthwork);
    structure.SetJobName("job");
    structure.SetCompany("company");
    structure.SetStationType("STA");
    return structure;
  }

  EditionScope m_edition{VornSchema::Version41};
};

// --- data ------------------------------------------------------------------------------------------------------------

TEST_F(StructureTypeTest, StartsEmptyWithNumberedStations) {
  const VornStructureType structure;
  EXPECT_EQ(structure.tagName(), "tsf:StructureType");
  EXPECT_EQ(structure.GetTypeStr(), "");
  EXPECT_EQ(structure.GetJobName(), "");
  EXPECT_EQ(structure.GetCompany(), "");
  EXPECT_EQ(structure.GetStationType(), "NO");
}

TEST_F(StructureTypeTest, KeepsItsTexts) {
  VornStructureType structure = Complete();
  structure.SetType("any name");
  structure.GetJobName() += "!";
  structure.GetCompany() += "!";
  structure.GetStationType() += "!";
  EXPECT_EQ(structure.GetTypeStr(), "any name");
  EXPECT_EQ(std::as_const(structure).GetJobName(), "job!");
  EXPECT_EQ(std::as_const(structure).GetCompany(), "company!");
  EXPECT_EQ(std::as_const(structure).GetStationType(), "STA!");
}

TEST_F(StructureTypeTest, CopiesAllTexts) {
  const VornStructureType original = Complete();
  const VornStructureType copy(original);
  VornStructureType assigned;
  assigned = original;
  const VornStructureType& self = assigned;
  assigned = self;
  for (const VornStructureType& structure : {copy, assigned}) {
    EXPECT_EQ(structure.tagName(), "tsf:StructureType");
    EXPECT_EQ(structure.GetTypeStr(), u8"道路土工"_cp932);
    EXPECT_EQ(structure.GetJobName(), "job");
    EXPECT_EQ(structure.GetCompany(), "company");
    EXPECT_EQ(structure.GetStationType(), "STA");
  }
}

TEST_F(StructureTypeTest, InitializeEmptiesAllTextsTheStationTypeToo) {
  VornStructureType structure = Complete();
  structure.Initialize();
  EXPECT_EQ(structure.GetTypeStr(), "");
  EXPECT_EQ(structure.GetJobName(), "");
  EXPECT_EQ(structure.GetCompany(), "");
  EXPECT_EQ(structure.GetStationType(), "");
}

// --- types and names -------------------------------------------------------------------------------------------------

TEST_F(StructureTypeTest, ListsTheNineNamesInOrder) {
  CStringArray names;
  names.Add("stale");
  EXPECT_TRUE(VornStructureType::GetStructureTypes(names));
  ASSERT_EQ(names.GetSize(), 9);
  for (const Row& row : kRows) EXPECT_EQ(names[row.value], row.name) << row.value;
}

TEST_F(StructureTypeTest, TypeIsTheIndexOfItsName) {
  EXPECT_EQ(static_cast<int>(Type::Unknown), -1);
  EXPECT_EQ(sizeof(Type), 4u);
  for (const Row& row : kRows) {
    EXPECT_EQ(static_cast<int>(row.type), row.value);
    VornStructureType structure;
    structure.SetType(row.type);
    EXPECT_EQ(structure.GetTypeStr(), row.name) << row.value;
    EXPECT_EQ(structure.GetType(), row.type) << row.value;
  }
}

TEST_F(StructureTypeTest, ANameOutsideTheListHasNoType) {
  VornStructureType structure;
  for (const std::string_view name :
       {std::string_view(), u8"道路"_cp932, u8"道路土工 "_cp932, u8"舗装工（道路）"_cp932, std::string_view("0")}) {
    structure.SetType(CString(name));
    EXPECT_EQ(structure.GetType(), Type::Unknown) << name;
  }
}

TEST_F(StructureTypeTest, SettingNoTypeChangesNothing) {
  VornStructureType structure;
  structure.SetType(Type::MaffCommonEarthwork);
  for (const int value : {-1, 9, 10, 1000}) {
    structure.SetType(static_cast<Type>(value));
    EXPECT_EQ(structure.GetTypeStr(), u8"共通土工"_cp932) << value;
  }
}

TEST_F(StructureTypeTest, RefusesATypeBelowTheUnknownOne) {
  VornStructureType structure = Complete();
  EXPECT_THROW(structure.SetType(static_cast<Type>(-2)), CInvalidArgException);
  EXPECT_THROW(structure.SetType(static_cast<Type>(INT32_MIN)), CInvalidArgException);
  EXPECT_EQ(structure.GetTypeStr(), u8"道路土工"_cp932);
}

TEST_F(StructureTypeTest, AgricultureMinistryHasTheLastThreeTypes) {
  EXPECT_EQ(static_cast<int>(Ministry::Land), 0);
  EXPECT_EQ(static_cast<int>(Ministry::Agriculture), 1);
  for (const Row& row : kRows) {
    const Ministry ministry = row.maff ? Ministry::Agriculture : Ministry::Land;
    VornStructureType structure;
    structure.SetType(row.type);
    EXPECT_EQ(VornStructureType::Ministry(row.type), ministry) << row.value;
    EXPECT_EQ(structure.Ministry(), ministry) << row.value;
    EXPECT_EQ(structure.MinistryStr(), row.maff ? u8"農林水産省"_cp932 : u8"国土交通省"_cp932) << row.value;
  }
}

TEST_F(StructureTypeTest, UnknownTypesCountAsTheLandMinistry) {
  for (const int value : {-1, 9}) {
    EXPECT_EQ(VornStructureType::Ministry(static_cast<Type>(value)), Ministry::Land) << value;
  }
  EXPECT_EQ(VornStructureType().Ministry(), Ministry::Land);
  EXPECT_EQ(VornStructureType().MinistryStr(), u8"国土交通省"_cp932);
}

TEST_F(StructureTypeTest, OtherIsTypeFiveOfTheLandMinistryWithoutASiblingCode) {
  VornStructureType structure;
  structure.SetType(CString(u8"その他"_cp932));
  EXPECT_EQ(static_cast<int>(structure.GetType()), 5);
  EXPECT_EQ(static_cast<int>(structure.Ministry()), 0);
  EXPECT_EQ(VornStructureTypeVornToLumr(structure.GetType()), 0u);
}

// --- predicates ------------------------------------------------------------------------------------------------------

TEST_F(StructureTypeTest, ClassifiesEveryType) {
  for (const Row& row : kRows) {
    EXPECT_EQ(VornIsRiver(row.type, false), row.river) << row.value;
    EXPECT_EQ(VornIsPavement(row.type), row.pavement) << row.value;
    EXPECT_EQ(VornIsMaff(row.type), row.maff) << row.value;
  }
}

TEST_F(StructureTypeTest, RiverPavementIsARiverOnlyWithPavement) {
  for (const Row& row : kRows) EXPECT_EQ(VornIsRiver(row.type, true), row.value == 1 || row.value == 3) << row.value;
  EXPECT_FALSE(VornIsRiver(Type::RiverPavement, false));
}

TEST_F(StructureTypeTest, UnknownTypesAreOfNoClass) {
  for (const int value : {-2, -1, 9}) {
    const Type type = static_cast<Type>(value);
    EXPECT_FALSE(VornIsRiver(type, true)) << value;
    EXPECT_FALSE(VornIsPavement(type)) << value;
    EXPECT_FALSE(VornIsMaff(type)) << value;
  }
}

TEST_F(StructureTypeTest, APlanIsNamedByAnyOfSixTextsAnywhere) {
  for (const std::string_view text :
       {u8"盛土"_cp932, u8"切土"_cp932, u8"掘削"_cp932, u8"表層"_cp932, u8"基準面"_cp932, u8"その他"_cp932}) {
    EXPECT_TRUE(VornIsPlan(CString(text)));
    EXPECT_TRUE(VornIsPlan(CString(u8"路体"_cp932) + CString(text) + CString(u8"工"_cp932)));
  }
}

TEST_F(StructureTypeTest, APartOfSuchATextIsNoPlan) {
  for (const std::string_view name : {std::string_view(), u8"盛"_cp932, u8"土"_cp932, u8"盛 土"_cp932, u8"土盛"_cp932,
                                      u8"基準"_cp932, u8"下層路盤"_cp932, u8"そのほか"_cp932}) {
    EXPECT_FALSE(VornIsPlan(CString(name))) << name;
  }
}

TEST_F(StructureTypeTest, APlanTextThatBeginsInsideACharacterIsNone) {
  const std::string_view fill = u8"盛土"_cp932;
  CString name("\x81");  // swallows the first byte of the text as its second
  name += fill;
  EXPECT_FALSE(VornIsPlan(name));
}

TEST_F(StructureTypeTest, TranslatesTheSiblingCodesBothWays) {
  for (const Row& row : kRows) {
    EXPECT_EQ(VornStructureTypeVornToLumr(row.type), row.siblingCode) << row.value;
    if (row.siblingCode != 0) {
      EXPECT_EQ(VornStructureTypeLumrToVorn(row.siblingCode), row.type) << row.value;
    }
  }
}

TEST_F(StructureTypeTest, OtherSiblingCodesHaveNoType) {
  for (const std::uint32_t code : {0u, 3u, 99u, 102u, 201u, 301u, 361u, 0xFFFFFFFFu}) {
    EXPECT_EQ(VornStructureTypeLumrToVorn(code), Type::Unknown) << code;
  }
}

TEST_F(StructureTypeTest, UnknownTypesHaveNoSiblingCode) {
  for (const int value : {-2, -1, 5, 9}) EXPECT_EQ(VornStructureTypeVornToLumr(static_cast<Type>(value)), 0u) << value;
}

// --- validity --------------------------------------------------------------------------------------------------------

TEST_F(StructureTypeTest, EveryTypeWithEveryStationTypeIsValid) {
  for (const Row& row : kRows) {
    for (const std::string_view station :
         {std::string_view("NO"), std::string_view("SP"), std::string_view("STA"), u8"距離標"_cp932}) {
      VornStructureType structure;
      structure.SetType(row.type);
      structure.SetStationType(CString(station));
      EXPECT_TRUE(structure.IsEnable()) << row.value << ' ' << station;
    }
  }
}

TEST_F(StructureTypeTest, ANewOneIsNotValidAlthoughItsStationsAre) { EXPECT_FALSE(VornStructureType().IsEnable()); }

TEST_F(StructureTypeTest, AnInitialisedOneIsNotValidBeforeItsStationTypeIsSetAgain) {
  VornStructureType structure = Complete();
  structure.Initialize();
  structure.SetType(Type::RoadEarthwork);
  EXPECT_FALSE(structure.IsEnable());
  structure.SetStationType("NO");
  EXPECT_TRUE(structure.IsEnable());
}

TEST_F(StructureTypeTest, AnUnknownNameIsNotValid) {
  VornStructureType structure = Complete();
  structure.SetType("earthwork");
  EXPECT_FALSE(structure.IsEnable());
}

TEST_F(StructureTypeTest, NeverFoldsTheSecondByteOfACharacter) {
  VornStructureType structure = Complete();
  const std::string_view listed = u8"道路土工"_cp932;
  std::string name(listed);
  ASSERT_EQ(name[5], 'y');
  name[5] = 'Y';  // another character, not the same one in upper case
  structure.SetType(CString(std::string_view(name)));
  EXPECT_FALSE(structure.IsEnable());
}

TEST_F(StructureTypeTest, StationTypesAreComparedExactly) {
  VornStructureType structure = Complete();
  for (const std::string_view station :
       {std::string_view(), std::string_view("no"), std::string_view("Sta"), std::string_view("NO "), u8"距離"_cp932}) {
    structure.SetStationType(CString(station));
    EXPECT_FALSE(structure.IsEnable()) << station;
  }
}

// --- XML -------------------------------------------------------------------------------------------------------------

TEST_F(StructureTypeTest, WritesItsAttributesInOrder) {
  VornStructureType structure = Complete();
  structure.SetType("name");
  for (const auto version : {VornSchema::Version40, VornSchema::Version41}) {
    m_edition.Select(version);
    EXPECT_EQ(WriteXml(structure),
              "<tsf:StructureType type=\"name\" jobName=\"job\" company=\"company\" stationType=\"STA\"/>\n");
  }
}

TEST_F(StructureTypeTest, WritesEmptyTextsAsEmptyAttributes) {
  VornStructureType structure;
  structure.Initialize();
  EXPECT_EQ(WriteXml(structure), "<tsf:StructureType type=\"\" jobName=\"\" company=\"\" stationType=\"\"/>\n");
}

TEST_F(StructureTypeTest, WritesIntoTheNamespaceOfTheEdition) {
  for (const int kind : {VornSchema::KindTsf, VornSchema::KindMaff}) {
    m_edition.Select(VornSchema::Version40, kind);
    XmlTree tree;
    XmlTreeCursor cursor(tree);
    VornStructureType structure = Complete();
    EXPECT_TRUE(structure.toXML(&cursor));
    EXPECT_EQ(tree.Root().children.front()->namespaceUri, std::string(VornSchema::Instance().Tsf()));
  }
}

TEST_F(StructureTypeTest, WritesNothingBeforeEdition40) {
  VornStructureType structure = Complete();
  for (const auto version : {VornSchema::Version20, VornSchema::VersionUnknown}) {
    m_edition.Select(version);
    EXPECT_EQ(WriteXml(structure), "");
  }
}

TEST_F(StructureTypeTest, StopsWritingAtAnyFailure) {
  VornStructureType structure = Complete();
  EXPECT_THAT(test_support::WriteFailuresOverlooked(structure), IsEmpty());
}

TEST_F(StructureTypeTest, ReadsItsAttributesUncheckedInAnyOrder) {
  VornStructureType structure;
  EXPECT_TRUE(ReadXml(structure, "<tsf:StructureType other='x' stationType='any' company='c' jobName='j' type='t'/>"));
  EXPECT_EQ(structure.GetTypeStr(), "t");
  EXPECT_EQ(structure.GetJobName(), "j");
  EXPECT_EQ(structure.GetCompany(), "c");
  EXPECT_EQ(structure.GetStationType(), "any");
}

TEST_F(StructureTypeTest, ReadsItInEveryEdition) {
  for (const auto version : {VornSchema::Version20, VornSchema::VersionUnknown, VornSchema::Version40}) {
    m_edition.Select(version);
    VornStructureType structure;
    EXPECT_TRUE(ReadXml(structure, "<tsf:StructureType type='t'/>"));
    EXPECT_EQ(structure.GetTypeStr(), "t");
  }
}

TEST_F(StructureTypeTest, KeepsWhatTheElementDoesNotName) {
  VornStructureType structure = Complete();
  EXPECT_TRUE(ReadXml(structure, "<tsf:StructureType Type='wrong case' company=''/>"));
  EXPECT_EQ(structure.GetTypeStr(), u8"道路土工"_cp932);
  EXPECT_EQ(structure.GetJobName(), "job");
  EXPECT_EQ(structure.GetCompany(), "");
  EXPECT_EQ(structure.GetStationType(), "STA");
}

TEST_F(StructureTypeTest, RefusesAnotherElementAndStaysAsItIs) {
  VornStructureType structure = Complete();
  EXPECT_FALSE(ReadXml(structure, "<StructureType type='t'/>"));
  EXPECT_FALSE(ReadXml(structure, "<tsf:structureType type='t'/>"));
  EXPECT_EQ(structure.GetTypeStr(), u8"道路土工"_cp932);
}

TEST_F(StructureTypeTest, ReadsWhatItWrote) {
  VornStructureType written = Complete();
  VornStructureType read;
  EXPECT_TRUE(ReadXml(read, WriteXml(written)));
  EXPECT_EQ(read.GetType(), Type::RoadEarthwork);
  EXPECT_EQ(read.GetJobName(), "job");
  EXPECT_EQ(read.GetCompany(), "company");
  EXPECT_EQ(read.GetStationType(), "STA");
}

}  // namespace
