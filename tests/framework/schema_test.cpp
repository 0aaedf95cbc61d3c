#include "vorn/framework/schema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/xml_tree.h"
#include "vorn/platform/code_page_932.h"

namespace {

using Version = VornSchema::Version;
using test_support::EditionScope;

constexpr auto kUnknown = VornSchema::VersionUnknown;
constexpr auto k20 = VornSchema::Version20;
constexpr auto k40 = VornSchema::Version40;
constexpr auto k41 = VornSchema::Version41;
constexpr int kTsf = VornSchema::KindTsf;
constexpr int kRoadGm = VornSchema::KindRoadGm;
constexpr int kMaff = VornSchema::KindMaff;

const CString kLocation20 = "http://www.gis.nilim.go.jp/jouho/TSFormControl TSFormControlData_20.xsd";
const CString kLocation40 = "http://www.nilim.go.jp/ts/main/TSFormControl-4.0 TSFormControl-4.0.xsd";
const CString kLocation41 = "http://www.nilim.go.jp/ts/main/TSFormControl-4.1 TSFormControl-4.1.xsd";
const CString kLocationMaff =
    "http://www.maff.go.jp/j/nousin/sekkei/index.html/TSForm_Control_MAFF-1.0 TSForm_Control_MAFF-1.0.xsd";

class SchemaTest : public testing::Test {
 protected:
  ~SchemaTest() override { VornSchema::SetNamespaceHosts(VornNamespaceHosts()); }

  static VornSchema& Schema() { return VornSchema::Instance(); }
  void Select(Version version, int kind) { m_edition.Select(version, kind); }

 private:
  EditionScope m_edition{k41};
};

TEST(SchemaAtStart, IsEdition41OfFormControl) {
  EXPECT_EQ(VornSchema::Instance().GetVersion(), k41);
  EXPECT_EQ(VornSchema::Instance().Kind(), kTsf);
}

TEST_F(SchemaTest, IsOneObjectForTheProcess) { EXPECT_EQ(&VornSchema::Instance(), &VornSchema::Instance()); }

TEST_F(SchemaTest, FixesTheNumbersOfVersionsAndKinds) {
  EXPECT_EQ(static_cast<int>(kUnknown), -2);
  EXPECT_EQ(static_cast<int>(k20), 0);
  EXPECT_EQ(static_cast<int>(k40), 1);
  EXPECT_EQ(static_cast<int>(k41), 2);
  EXPECT_EQ(kTsf, 0);
  EXPECT_EQ(kRoadGm, 1);
  EXPECT_EQ(kMaff, 2);
}

TEST_F(SchemaTest, KeepsVersionAndKind) {
  Schema().SetVersion(k40);
  Schema().Kind(kMaff);
  EXPECT_EQ(Schema().GetVersion(), k40);
  EXPECT_EQ(Schema().Kind(), kMaff);
}

TEST_F(SchemaTest, AssignmentTakesVersionAndKind) {
  Select(k20, kRoadGm);
  const VornSchema saved = Schema();
  Select(k41, kMaff);
  Schema() = saved;
  EXPECT_EQ(Schema().GetVersion(), k20);
  EXPECT_EQ(Schema().Kind(), kRoadGm);
}

TEST_F(SchemaTest, TellsTheVersionsApart) {
  struct Row {
    Version version;
    bool valid;
    bool ver2;
  };
  for (const Row& row : {
           Row{kUnknown, false, true},
           Row{static_cast<Version>(-1), false, true},
           Row{k20, true, true},
           Row{k40, true, false},
           Row{k41, true, false},
           Row{static_cast<Version>(3), false, false},
       }) {
    Schema().SetVersion(row.version);
    EXPECT_EQ(Schema().IsValid(), row.valid) << row.version;
    EXPECT_EQ(Schema().IsVer2(), row.ver2) << row.version;
  }
}

TEST_F(SchemaTest, OnlyTheAgriculturalKindIsMaff) {
  for (const int kind : {-1, kTsf, kRoadGm, kMaff, 3}) {
    Schema().Kind(kind);
    EXPECT_EQ(Schema().IsMaff(), kind == 2) << kind;
  }
}

// --- names of an edition ---------------------------------------------------------------------------------------------

struct EditionRow {
  int kind;
  Version version;
  const char* tsf;
  const char* rgm;
  const char* schemaFile;
  const char* xsd;
};

class SchemaNames : public SchemaTest, public testing::WithParamInterface<EditionRow> {};

TEST_P(SchemaNames, AreThoseOfTheCurrentEdition) {
  const EditionRow& row = GetParam();
  Select(row.version, row.kind);
  EXPECT_EQ(Schema().Tsf(), row.tsf);
  EXPECT_EQ(Schema().Rgm(), row.rgm);
  EXPECT_EQ(Schema().Location(), std::string(row.tsf) + " " + row.schemaFile);
  EXPECT_EQ(Schema().Xsd(), row.xsd);
}

TEST_P(SchemaNames, AreGivenForAnotherVersionToo) {
  const EditionRow& row = GetParam();
  for (const Version current : {kUnknown, k20, k40, k41}) {
    Select(current, row.kind);
    EXPECT_EQ(Schema().Tsf(row.version), row.tsf);
    EXPECT_EQ(Schema().Location(row.version), std::string(row.tsf) + " " + row.schemaFile);
    EXPECT_EQ(Schema().Xsd(row.version), row.xsd);
  }
}

TEST_P(SchemaNames, NeverTouchTheInstanceNamespace) {
  Select(GetParam().version, GetParam().kind);
  EXPECT_EQ(VornSchema::Xsi(), "http://www.w3.org/2001/XMLSchema-instance");
}

constexpr EditionRow Edition20(int kind) {
  return {kind,
          k20,
          "http://www.gis.nilim.go.jp/jouho/TSFormControl",
          "http://www.gis.nilim.go.jp/RoadGM",
          "TSFormControlData_20.xsd",
          "TSFormControlData_20.xsd"};
}

constexpr EditionRow Edition40(int kind) {
  return {kind,
          k40,
          "http://www.nilim.go.jp/ts/main/TSFormControl-4.0",
          "http://www.nilim.go.jp/ts/main/RoadGM",
          "TSFormControl-4.0.xsd",
          "TSFormControl-4.0"};
}

constexpr EditionRow Edition41(int kind, Version version) {
  return {kind,
          version,
          "http://www.nilim.go.jp/ts/main/TSFormControl-4.1",
          "http://www.nilim.go.jp/ts/main/RoadGM-1.1",
          "TSFormControl-4.1.xsd",
          "TSFormControl-4.1"};
}

constexpr EditionRow EditionMaff(Version version) {
  return {kMaff,
          version,
          "http://www.maff.go.jp/j/nousin/sekkei/index.html/TSForm_Control_MAFF-1.0",
          "http://www.maff.go.jp/j/nousin/sekkei/index.html/MAFF_RoadGM-1.1",
          "TSForm_Control_MAFF-1.0.xsd",
          "TSForm_Control_MAFF-1.0"};
}

INSTANTIATE_TEST_SUITE_P(Edition20, SchemaNames, testing::Values(Edition20(kTsf), Edition20(kRoadGm)));
INSTANTIATE_TEST_SUITE_P(Edition40, SchemaNames, testing::Values(Edition40(kTsf), Edition40(kRoadGm)));
INSTANTIATE_TEST_SUITE_P(Edition41AndAnyOtherVersion, SchemaNames,
                         testing::Values(Edition41(kTsf, k41), Edition41(kRoadGm, k41), Edition41(kTsf, kUnknown),
                                         Edition41(kTsf, static_cast<Version>(3))));
INSTANTIATE_TEST_SUITE_P(Agricultural10InAnyVersion, SchemaNames,
                         testing::Values(EditionMaff(kUnknown), EditionMaff(k20), EditionMaff(k40), EditionMaff(k41),
                                         EditionMaff(static_cast<Version>(3))));

TEST_F(SchemaTest, TakesTheHostsOfTheApplication) {
  VornSchema::SetNamespaceHosts({.gis = "urn:gis", .main = "urn:main", .ministry = "urn:ministry"});
  EXPECT_EQ(VornSchema::NamespaceHosts().main, "urn:main");
  EXPECT_EQ(Schema().Tsf(k20), "urn:gis/jouho/TSFormControl");
  EXPECT_EQ(Schema().Tsf(k40), "urn:main/ts/main/TSFormControl-4.0");
  EXPECT_EQ(Schema().Location(), "urn:main/ts/main/TSFormControl-4.1 TSFormControl-4.1.xsd");
  EXPECT_EQ(Schema().Rgm(), "urn:main/ts/main/RoadGM-1.1");
  Schema().Kind(kMaff);
  EXPECT_EQ(Schema().Rgm(), "urn:ministry/j/nousin/sekkei/index.html/MAFF_RoadGM-1.1");
  EXPECT_TRUE(Schema().AnalyzeVersion("tsf:Data", "urn:gis/jouho/TSFormControl TSFormControlData_20.xsd"));
  EXPECT_FALSE(Schema().AnalyzeVersion("tsf:Data", kLocation20));
}

TEST_F(SchemaTest, DisplaysTheVersion) {
  EXPECT_EQ(VornSchema::VersionStr(k20, false), u8"Ver 2.0形式"_cp932);
  EXPECT_EQ(VornSchema::VersionStr(k40, false), u8"Ver 4.0形式"_cp932);
  EXPECT_EQ(VornSchema::VersionStr(k41, false), u8"Ver 4.1形式"_cp932);
}

TEST_F(SchemaTest, DisplaysNothingForAnUnknownVersion) {
  for (const int version : {-2, -1, 3}) {
    EXPECT_EQ(VornSchema::VersionStr(static_cast<Version>(version), false), "") << version;
  }
}

TEST_F(SchemaTest, DisplaysTheAgriculturalEditionWhateverTheVersion) {
  for (const int version : {-2, 0, 1, 2, 3}) {
    EXPECT_EQ(VornSchema::VersionStr(static_cast<Version>(version), true), u8"Ver 1.0形式"_cp932) << version;
  }
}

// --- recognising a document ------------------------------------------------------------------------------------------

/// What was selected before must not make a difference; every recognition is tried from all of it.
class SchemaRecognition : public SchemaTest, public testing::WithParamInterface<std::tuple<Version, int>> {
 protected:
  SchemaRecognition() { Select(std::get<0>(GetParam()), std::get<1>(GetParam())); }
};

INSTANTIATE_TEST_SUITE_P(FromAnyEdition, SchemaRecognition,
                         testing::Combine(testing::Values(kUnknown, k20, k40, k41),
                                          testing::Values(kTsf, kRoadGm, kMaff)));

TEST_P(SchemaRecognition, KnowsThePublishedLocations) {
  struct Row {
    CString location;
    Version version;
    int kind;
  };
  for (const Row& row : {Row{kLocation20, k20, kTsf}, Row{kLocation40, k40, kTsf}, Row{kLocation41, k41, kTsf},
                         Row{kLocationMaff, k41, kMaff}}) {
    EXPECT_TRUE(Schema().AnalyzeVersion("tsf:TSFormControlData", row.location)) << row.location;
    EXPECT_EQ(Schema().GetVersion(), row.version) << row.location;
    EXPECT_EQ(Schema().Kind(), row.kind) << row.location;
    EXPECT_EQ(Schema().IsMaff(), row.kind == kMaff) << row.location;
    EXPECT_TRUE(Schema().IsValid()) << row.location;
  }
}

TEST_P(SchemaRecognition, TakesAnyRootOfTheNamespace) {
  for (const char* root : {"tsf:", "tsf:A", "tsf:RoadGmxml"}) {
    EXPECT_TRUE(Schema().AnalyzeVersion(root, kLocation40)) << root;
    EXPECT_EQ(Schema().GetVersion(), k40) << root;
  }
}

TEST_P(SchemaRecognition, KnowsARoadGeometryRootWhateverTheLocation) {
  for (const CString& location : {CString(), kLocation41, kLocationMaff, CString("x")}) {
    Select(std::get<0>(GetParam()), std::get<1>(GetParam()));
    EXPECT_TRUE(Schema().AnalyzeVersion("RoadGmxml", location)) << location;
    EXPECT_EQ(Schema().GetVersion(), k20) << location;
    EXPECT_EQ(Schema().Kind(), kRoadGm) << location;
  }
}

TEST_P(SchemaRecognition, RefusesAnyOtherRootAndKeepsTheKind) {
  for (const char* root : {"", "RoadGmXml", "RoadGmxml ", "rgm:RoadGmxml", "TSF:A", "tsf", " tsf:A", "x:tsf:A"}) {
    EXPECT_FALSE(Schema().AnalyzeVersion(root, kLocation41)) << root;
    EXPECT_EQ(Schema().GetVersion(), kUnknown) << root;
    EXPECT_EQ(Schema().Kind(), std::get<1>(GetParam())) << root;
  }
}

TEST_P(SchemaRecognition, UnknownLocationLeavesAnUnknownFormControlDocument) {
  EXPECT_FALSE(Schema().AnalyzeVersion("tsf:A", "http://www.nilim.go.jp/ts/main/TSFormControl-9.9 x.xsd"));
  EXPECT_EQ(Schema().GetVersion(), kUnknown);
  EXPECT_EQ(Schema().Kind(), kTsf);
  EXPECT_FALSE(Schema().IsValid());
  EXPECT_TRUE(Schema().IsVer2());
}

TEST_F(SchemaTest, RefusesALocationThatDeviatesFromThePublishedForm) {
  for (const CString& location : {kLocation20, kLocation40, kLocation41, kLocationMaff}) {
    std::string twoBlanks(location.View());
    twoBlanks.insert(twoBlanks.find(' '), 1, ' ');
    std::string otherHost(location.View());
    otherHost.replace(otherHost.find("www"), 3, "web");
    std::string otherCase(location.View());
    std::replace(otherCase.begin(), otherCase.end(), 'T', 't');
    const std::string cut(location.View().substr(0, location.View().size() - 4));

    for (const std::string& deviation : {twoBlanks, otherHost, otherCase, cut, std::string(location.View()) + ' ',
                                         ' ' + std::string(location.View())}) {
      EXPECT_FALSE(Schema().AnalyzeVersion("tsf:A", std::string_view(deviation))) << deviation;
      EXPECT_EQ(Schema().GetVersion(), kUnknown) << deviation;
    }
  }
  EXPECT_FALSE(Schema().AnalyzeVersion("tsf:A", ""));
}

}  // namespace
