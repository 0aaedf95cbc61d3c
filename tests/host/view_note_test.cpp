// What is told of a section besides its drawing, in both languages.

#include "host/drawing/view_note.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using testing::HasSubstr;
using vorn_host::Language;
using vorn_host::NoteText;
using vorn_host::ViewNote;
using Kind = ViewNote::Kind;

constexpr Kind kKinds[] = {Kind::FormWithoutPoints,    Kind::FormOutOfReach,      Kind::FormWithoutCenter,
                           Kind::FormPointsLeftOut,    Kind::GroundPointsLeftOut, Kind::GroundTooShort,
                           Kind::GroundWithoutHeight,  Kind::HeightFromGround,    Kind::HeightNotAsStored,
                           Kind::WidthsLeftOut,        Kind::HeightsLeftOut,      Kind::LengthsLeftOut,
                           Kind::TargetsWithoutSection};

TEST(ViewNote, HasItsOwnWordsForEveryKindInBothLanguages) {
  for (const Language language : {Language::English, Language::Japanese}) {
    std::set<std::string> texts;
    for (const Kind kind : kKinds) texts.insert(NoteText({kind, "S", 3, 62.5}, language));
    EXPECT_EQ(texts.size(), std::size(kKinds));
    EXPECT_EQ(texts.count(""), 0u);
  }
}

TEST(ViewNote, NamesWhatItIsAbout) {
  for (const Kind kind : {Kind::FormWithoutPoints, Kind::FormOutOfReach, Kind::FormWithoutCenter,
                          Kind::FormPointsLeftOut, Kind::GroundPointsLeftOut, Kind::GroundTooShort}) {
    EXPECT_THAT(NoteText({kind, "盛土面"}, Language::English), HasSubstr(" 盛土面"));
    EXPECT_THAT(NoteText({kind, "盛土面"}, Language::Japanese), HasSubstr("「盛土面」"));
    EXPECT_THAT(NoteText({kind}, Language::English), HasSubstr("without a name"));
    EXPECT_THAT(NoteText({kind}, Language::Japanese), HasSubstr("（名称なし）"));
  }
}

TEST(ViewNote, CountsPoints) {
  EXPECT_EQ(NoteText({Kind::FormPointsLeftOut, "S", 1}, Language::English),
            "form S: 1 point is left out, for lack of a value or out of reach");
  EXPECT_EQ(NoteText({Kind::GroundPointsLeftOut, "G", 2}, Language::English),
            "existing ground G: 2 points are left out, for lack of a value or out of reach");
  EXPECT_EQ(NoteText({Kind::GroundPointsLeftOut, "G", 2}, Language::Japanese),
            "現況地盤「G」の点のうち 2 点は、値がないか範囲外のため省略");
}

TEST(ViewNote, CountsDimensionsAndTargets) {
  EXPECT_EQ(NoteText({Kind::WidthsLeftOut, "", 1}, Language::English), "1 width is not drawn, for lack of room");
  EXPECT_EQ(NoteText({Kind::HeightsLeftOut, "", 2}, Language::English), "2 heights are not drawn, for lack of room");
  EXPECT_EQ(NoteText({Kind::LengthsLeftOut, "", 2}, Language::English),
            "2 slope lengths are not drawn, for lack of room");
  EXPECT_EQ(NoteText({Kind::LengthsLeftOut, "", 2}, Language::Japanese), "法長 2 件は、余白がないため省略");
  EXPECT_EQ(NoteText({Kind::TargetsWithoutSection, "", 2}, Language::English),
            "2 control targets stand at no cross section");
  EXPECT_EQ(NoteText({Kind::TargetsWithoutSection, "", 2}, Language::Japanese),
            "管理対象 2 件は、どの横断面にも属さない");
}

TEST(ViewNote, TellsHeightsToTheMillimetre) {
  const ViewNote note{.kind = Kind::HeightFromGround, .height = 62.5};
  EXPECT_EQ(NoteText(note, Language::English),
            "the height of the centre line, 62.500 m, is taken from where the design ends on the existing ground "
            "(within 5 mm)");
  EXPECT_EQ(NoteText(note, Language::Japanese),
            "中心線の標高 62.500 m は、設計形状の端部と現況地盤との一致（5 mm 以内）から求めた値");
}

}  // namespace
