// Cross sections as tables.

#include "host/drawing/section_csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/drawn_sections.h"

namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using namespace vorn_host;  // NOLINT(google-build-using-namespace)
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

std::string TableOf(const SectionView& view, CsvContent content, bool byteOrderMark = false) {
  std::string text;
  SectionCsvWriter writer([&](std::string_view piece) { text += piece; }, content, byteOrderMark);
  writer.Add(view);
  return text;
}

using Cells = std::vector<std::string>;

/// Reads quoted and plain cells, rows ended by CR LF.
std::vector<Cells> RowsOf(std::string_view text) {
  std::vector<Cells> rows;
  Cells row(1);
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (quoted && text.substr(i).starts_with("\"\"")) {
      row.back() += text[++i];
    } else if (text[i] == '"') {
      quoted = !quoted;
    } else if (!quoted && text[i] == ',') {
      row.emplace_back();
    } else if (!quoted && text.substr(i).starts_with("\r\n")) {
      rows.push_back(std::exchange(row, Cells(1)));
      ++i;
    } else {
      row.back() += text[i];
    }
  }
  return rows;
}

/// The rows below the header, each cell under its column's name.
std::vector<std::map<std::string, std::string>> TableRows(std::string_view text) {
  const std::vector<Cells> rows = RowsOf(text);
  std::vector<std::map<std::string, std::string>> table;
  for (std::size_t i = 1; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].size(), rows[0].size());
    table.emplace_back();
    for (std::size_t column = 0; column < rows[i].size(); ++column) table.back()[rows[0][column]] = rows[i][column];
  }
  return table;
}

TEST(SectionCsv, HasARowForEachPoint) {
  SectionView view = HandMadeView();
  view.forms[0].points[2].values = {ViewInput::Reading::Rate, -4.0, 1.500000004};
  const auto rows = TableRows(TableOf(view, CsvContent::Points));
  ASSERT_THAT(rows, SizeIs(4));
  const std::map<std::string, std::string> expected = {{"set", "1"},
                                                       {"section", "3"},
                                                       {"station", "120"},
                                                       {"station_text", "No.6+0.0000"},
                                                       {"section_name", "No.6"},
                                                       {"alignment", "主要道路"},
                                                       {"behind_change", "false"},
                                                       {"control_section", "false"},
                                                       {"center_height", "62.5"},
                                                       {"center_height_source", "told"},
                                                       {"form", "1"},
                                                       {"form_name", "盛土面"},
                                                       {"xsect_type", "盛土工"},
                                                       {"role", "design surface"},
                                                       {"point", "3"},
                                                       {"code", "XL"},
                                                       {"from_point", "2"},
                                                       {"side", "Left"},
                                                       {"part", "slope"},
                                                       {"offset", "-9.5"},
                                                       {"height", "58.45"},
                                                       {"input", "-4.000 m, 1:1.500"},
                                                       {"input_x", "-4"},
                                                       {"input_y", "1.500000004"},
                                                       {"input_reading", "height and rate"},
                                                       {"grade", "1:1.5"},
                                                       {"exists", "true"},
                                                       {"crossing", "true"}};
  EXPECT_EQ(rows[2], expected);
  auto start = rows[0];
  EXPECT_EQ(start["from_point"], "");
  EXPECT_EQ(start["part"], "start");
}

TEST(SectionCsv, CountsFormsAndPointsAsTheDocumentDoes) {
  auto points = TableRows(TableOf(ViewWithPiecesLeftOut(), CsvContent::Points));
  ASSERT_THAT(points, SizeIs(4));
  EXPECT_EQ(points[0]["form"], "2");
  EXPECT_EQ(points[0]["point"], "1");
  EXPECT_EQ(points[2]["code"], "XL");
  EXPECT_EQ(points[2]["point"], "4");
  EXPECT_EQ(points[2]["from_point"], "3");
  auto targets = TableRows(TableOf(ViewWithPiecesLeftOut(), CsvContent::Targets));
  EXPECT_EQ(targets.at(1)["code"], "R1");
  EXPECT_EQ(targets.at(1)["form"], "2");
  EXPECT_EQ(targets.at(1)["point"], "5");
}

TEST(SectionCsv, HasARowForEachPointOfTheGround) {
  auto rows = TableRows(TableOf(HandMadeView(), CsvContent::Ground));
  ASSERT_THAT(rows, SizeIs(3));
  EXPECT_EQ(rows[1]["ground"], "1");
  EXPECT_EQ(rows[1]["ground_name"], "現況");
  EXPECT_EQ(rows[1]["point"], "2");
  EXPECT_EQ(rows[1]["offset"], "-9.5");
  EXPECT_EQ(rows[1]["height"], "58.45");
}

TEST(SectionCsv, HasARowForEachPointOfATarget) {
  auto rows = TableRows(TableOf(HandMadeView(), CsvContent::Targets));
  ASSERT_THAT(rows, SizeIs(3));
  EXPECT_EQ(rows[0]["item"], "width");
  EXPECT_EQ(rows[0]["work_type"], "盛土工");
  EXPECT_EQ(rows[0]["design_value"], "7");
  EXPECT_EQ(rows[1]["point_name"], "盛土面 R1");
  EXPECT_EQ(rows[1]["target_point"], "2");
  EXPECT_EQ(rows[1]["form"], "1");
  EXPECT_EQ(rows[1]["point"], "4");
  EXPECT_EQ(rows[1]["code"], "R1");
  EXPECT_EQ(rows[1]["offset"], "3.5");
  EXPECT_EQ(rows[2]["point_name"], "盛土面 R9") << "a point that is not there is named";
  EXPECT_EQ(rows[2]["form"], "");
  EXPECT_EQ(rows[2]["offset"], "");
}

TEST(SectionCsv, KeepsATargetThatNamesNoPoint) {
  SectionView view = HandMadeView();
  view.targets[0].points.clear();
  view.targets[0].designValue.reset();
  auto rows = TableRows(TableOf(view, CsvContent::Targets));
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0]["item_text"], "Width");
  EXPECT_EQ(rows[0]["design_value"], "");
  EXPECT_EQ(rows[0]["target_point"], "");
}

TEST(SectionCsv, OfASectionWithNothingIsTheHeaderAlone) {
  for (const CsvContent content : {CsvContent::Points, CsvContent::Ground, CsvContent::Targets}) {
    EXPECT_THAT(RowsOf(TableOf(SectionView(), content)), SizeIs(1));
  }
}

TEST(SectionCsv, LeavesWhatIsNotKnownEmpty) {
  SectionView view = HandMadeView();
  view.station.reset();
  view.centerHeight.reset();
  view.forms[0].points[0].place.height = std::numeric_limits<double>::quiet_NaN();
  auto rows = TableRows(TableOf(view, CsvContent::Points));
  EXPECT_EQ(rows[0]["station"], "");
  EXPECT_EQ(rows[0]["center_height"], "");
  EXPECT_EQ(rows[0]["height"], "");
}

TEST(SectionCsv, TellsWhereTheHeightComesFrom) {
  SectionView view = HandMadeView();
  view.isHeightAssumed = true;
  EXPECT_EQ(TableRows(TableOf(view, CsvContent::Ground))[0]["center_height_source"], "ground");
  view.isHeightAssumed = false;
  EXPECT_EQ(TableRows(TableOf(view, CsvContent::Ground))[0]["center_height_source"], "told");
  view.centerHeight.reset();
  EXPECT_EQ(TableRows(TableOf(view, CsvContent::Ground))[0]["center_height_source"], "");
}

TEST(SectionCsv, TakesANegativeStationForANumber) {
  SectionView view = HandMadeView();
  view.station = -20.0;
  view.stationText = "-20.0000";
  EXPECT_EQ(TableRows(TableOf(view, CsvContent::Points))[0]["station_text"], "-20.0000");
}

TEST(SectionCsv, HasARowForATargetWithoutASection) {
  const SectionView view = ViewOfTargetWithoutSection();
  auto rows = TableRows(TableOf(view, CsvContent::Targets));
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_EQ(rows[0]["set"], "1");
  for (const char* column : {"section", "station", "station_text", "behind_change", "control_section", "offset"}) {
    EXPECT_EQ(rows[0][column], "") << column;
  }
  EXPECT_EQ(rows[0]["point_name"], "S L1") << "the design's own text";
  EXPECT_EQ(rows[0]["point_station"], "30");
  EXPECT_EQ(rows[0]["point_behind_change"], "true");
}

TEST(SectionCsv, BeginsWithAByteOrderMarkOnRequest) {
  EXPECT_THAT(TableOf(HandMadeView(), CsvContent::Points), StartsWith("set,section,"));
  EXPECT_THAT(TableOf(HandMadeView(), CsvContent::Points, true), StartsWith("\xEF\xBB\xBFset,section,"));
}

TEST(SectionCsv, QuotesWhatWouldEndACell) {
  SectionView view = HandMadeView();
  view.forms[0].points[0].code = "a,\"b\"\r\nc";
  const std::string text = TableOf(view, CsvContent::Points);
  EXPECT_THAT(text, HasSubstr("\"a,\"\"b\"\"\r\nc\""));
  EXPECT_EQ(TableRows(text)[0]["code"], "a,\"b\"\r\nc");
  EXPECT_THAT(text, EndsWith("\r\n"));
}

TEST(SectionCsv, CountsItsRows) {
  SectionCsvWriter writer([](std::string_view) {}, CsvContent::Points);
  writer.Add(HandMadeView());
  writer.Add(HandMadeView());
  EXPECT_EQ(writer.RowCount(), 8);
}

TEST(CsvDesignText, LetsNoTextBeAFormulaAndKeepsIt) {
  for (const std::string text :
       {"=1+1", "+L1", "-5", "@SUM(A1)", "'quoted", "\t=1", "\r=1", "\n=1", "＝1", "＋1", "－1", "＠1"}) {
    EXPECT_EQ(CsvDesignText(text), "'" + text);
  }
  for (const std::string text : {"", "L1", "盛土面", "No.1+0.0", "<script>alert(1)</script>", "a=b", "a'b"}) {
    EXPECT_EQ(CsvDesignText(text), text);
  }
}

TEST(CsvDesignText, ShowsControlCharactersAsSymbols) {
  EXPECT_EQ(CsvDesignText(std::string_view("a\0b\x1B\x1F\x7F", 6)), "a␀b␛␟␡");
  EXPECT_EQ(CsvDesignText("a\tb\nc"), "a\tb\nc");
}

TEST(SectionCsv, TakesNumbersAndItsOwnWordsAsTheyAre) {
  auto rows = TableRows(TableOf(HandMadeView(), CsvContent::Points));
  EXPECT_EQ(rows[1]["grade"], "-1.5%");
  EXPECT_EQ(rows[1]["offset"], "-3.5");
}

TEST(SectionCsv, KeepsHostileNamesApartFromFormulas) {
  SectionView view = HandMadeView();
  view.forms[0].name = "=HYPERLINK(\"http://x\",\"y\")";
  auto rows = TableRows(TableOf(view, CsvContent::Points));
  EXPECT_EQ(rows[0]["form_name"], "'=HYPERLINK(\"http://x\",\"y\")");
}

}  // namespace
