#include "host/drawing/view_note.h"

#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

using Kind = ViewNote::Kind;

std::string HeightText(const ViewNote& note) { return ValueText(note.height, 3, 3) + " m"; }

/// "2 widths are not drawn, for lack of room"
std::string NotDrawn(const ViewNote& note, const std::string& what) {
  return std::to_string(note.points) + " " + what + (note.points == 1 ? " is" : "s are") +
         " not drawn, for lack of room";
}

std::string EnglishText(const ViewNote& note) {
  const std::string name = note.name.empty() ? "without a name" : note.name;
  const std::string form = "form " + name;
  const std::string ground = "existing ground " + name;
  const std::string leftOut = ": " + std::to_string(note.points) + (note.points == 1 ? " point is" : " points are") +
                              " left out, for lack of a value or out of reach";
  switch (note.kind) {
    case Kind::FormWithoutPoints:
      return form + " has no points";
    case Kind::FormOutOfReach:
      return form + " is left out: its start point lies out of reach";
    case Kind::FormWithoutCenter:
      return form + " is left out: it does not begin with a centre point, so nobody can tell where it lies";
    case Kind::FormPointsLeftOut:
      return form + leftOut;
    case Kind::GroundPointsLeftOut:
      return ground + leftOut;
    case Kind::GroundTooShort:
      return ground + " is left out: it has fewer than two points";
    case Kind::GroundWithoutHeight:
      return "the existing ground is left out: it lies at elevations, and the height of the centre line is not known";
    case Kind::HeightFromGround:
      return "the height of the centre line, " + HeightText(note) +
             ", is taken from where the design ends on the existing ground (within 5 mm)";
    case Kind::HeightNotAsStored:
      return "the points are placed from another height of the centre line than that of the section itself, " +
             HeightText(note);
    case Kind::WidthsLeftOut:
      return NotDrawn(note, "width");
    case Kind::HeightsLeftOut:
      return NotDrawn(note, "height");
    case Kind::LengthsLeftOut:
      return NotDrawn(note, "slope length");
    case Kind::TargetsWithoutSection:
      return std::to_string(note.points) + (note.points == 1 ? " control target stands" : " control targets stand") +
             " at no cross section";
  }
  return {};
}

std::string JapaneseText(const ViewNote& note) {
  const std::string name = note.name.empty() ? "（名称なし）" : "「" + note.name + "」";
  const std::string form = "構築形状" + name;
  const std::string ground = "現況地盤" + name;
  const std::string notDrawn = " " + std::to_string(note.points) + " 件は、余白がないため省略";
  const std::string leftOut = "のうち " + std::to_string(note.points) + " 点は、値がないか範囲外のため省略";
  switch (note.kind) {
    case Kind::FormWithoutPoints:
      return form + "には構成点がない";
    case Kind::FormOutOfReach:
      return form + "は、起点が範囲外のため省略";
    case Kind::FormWithoutCenter:
      return form + "は、中心点から始まらず位置が定まらないため省略";
    case Kind::FormPointsLeftOut:
      return form + "の構成点" + leftOut;
    case Kind::GroundPointsLeftOut:
      return ground + "の点" + leftOut;
    case Kind::GroundTooShort:
      return ground + "は、点が 2 点に満たないため省略";
    case Kind::GroundWithoutHeight:
      return "現況地盤は標高で与えられ、中心線の標高が不明のため省略";
    case Kind::HeightFromGround:
      return "中心線の標高 " + HeightText(note) + " は、設計形状の端部と現況地盤との一致（5 mm 以内）から求めた値";
    case Kind::HeightNotAsStored:
      return "構成点の位置は、断面自身の中心線標高 " + HeightText(note) + " とは異なる標高から求めた値";
    case Kind::WidthsLeftOut:
      return "幅の寸法" + notDrawn;
    case Kind::HeightsLeftOut:
      return "基準高" + notDrawn;
    case Kind::LengthsLeftOut:
      return "法長" + notDrawn;
    case Kind::TargetsWithoutSection:
      return "管理対象 " + std::to_string(note.points) + " 件は、どの横断面にも属さない";
  }
  return {};
}

}  // namespace

std::string NoteText(const ViewNote& note, Language language) {
  return language == Language::Japanese ? JapaneseText(note) : EnglishText(note);
}

std::vector<std::string> NoteTexts(const std::vector<ViewNote>& notes, Language language) {
  std::vector<std::string> texts;
  texts.reserve(notes.size());
  for (const ViewNote& note : notes) texts.push_back(NoteText(note, language));
  return texts;
}

}  // namespace vorn_host
