#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/drawing/dxf_writer.h"
#include "host/drawing/section_drawing.h"

// Small sections made by hand, and what is written of them.

namespace host_test {

/// The groups of an ASCII drawing file: code and value.
using DxfGroups = std::vector<std::pair<int, std::string>>;

/// Reads a drawing file line by line, as any reader does: a line with a code, a line with its value.
inline DxfGroups GroupsOf(std::string_view file) {
  std::vector<std::string> lines;
  while (!file.empty()) {
    const std::size_t end = file.find("\r\n");
    lines.emplace_back(file.substr(0, end));
    file.remove_prefix(end == std::string_view::npos ? file.size() : end + 2);
  }
  DxfGroups groups;
  for (std::size_t i = 0; i + 1 < lines.size(); i += 2) groups.emplace_back(std::stoi(lines[i]), lines[i + 1]);
  return groups;
}

/// An entity or table entry: its type and its groups.
struct DxfItem {
  std::string type;
  DxfGroups groups;

  /// The value of a group; empty when there is none.
  [[nodiscard]] std::string operator[](int code) const {
    for (const auto& [known, value] : groups) {
      if (known == code) return value;
    }
    return {};
  }
  [[nodiscard]] double Real(int code) const { return std::stod((*this)[code]); }
  [[nodiscard]] vorn_host::DxfPlace Place(int code = 10) const { return {Real(code), Real(code + 10)}; }
};

/// The items of a type on a layer; on all layers when it is empty.
inline std::vector<DxfItem> ItemsOf(std::string_view file, std::string_view type, std::string_view layer = {}) {
  std::vector<DxfItem> items;
  for (auto& group : GroupsOf(file)) {
    if (group.first == 0) {
      items.push_back({group.second, {}});
    } else if (!items.empty()) {
      items.back().groups.push_back(std::move(group));
    }
  }
  std::erase_if(items, [&](const DxfItem& item) { return item.type != type || (!layer.empty() && item[8] != layer); });
  return items;
}

/// A road 7 m wide with slopes, at 62.5 m above the datum, the existing ground and a width as control target.
inline vorn_host::SectionView HandMadeView() {
  using namespace vorn_host;
  SectionView view;
  view.set = 0;
  view.section = 2;
  view.alignment = "主要道路";
  view.name = "No.6";
  view.station = 120.0;
  view.stationText = "No.6+0.0000";
  view.centerHeight = 62.5;
  ViewForm form;
  form.name = "盛土面";
  form.xSectType = "盛土工";
  form.role = FormRole::DesignSurface;
  form.points = {{{0.0, 62.5}, "CL", -1, SectionPart::Start, "Center", "", "", true, false},
                 {{-3.5, 62.45}, "L1", 0, SectionPart::Roadbed, "Left", "3.500 m, -1.500 %", "-1.5%", true, false},
                 {{-9.5, 58.45}, "XL", 1, SectionPart::Slope, "Left", "-4.000 m, 1:1.500", "1:1.5", true, true},
                 {{3.5, 62.45}, "R1", 0, SectionPart::Roadbed, "Right", "3.500 m, -1.500 %", "-1.5%", true, false}};
  for (int i = 0; i < 4; ++i) form.points[static_cast<std::size_t>(i)].documentIndex = i;
  form.lines = {{2, 1, 0, 3}};
  form.documentIndex = 0;
  view.forms = {form};
  view.grounds = {{"現況", {{-20.0, 58.0}, {-9.5, 58.45}, {20.0, 60.0}}}};
  ViewTarget target;
  target.item = ViewTarget::Item::Width;
  target.itemText = "Width";
  target.formName = "盛土面";
  target.workType = "盛土工";
  target.points = {{0, 1, "盛土面 L1"}, {0, 3, "盛土面 R1"}, {-1, -1, "盛土面 R9"}};
  target.designValue = 7.0;
  view.targets = {target};
  view.notes = {{ViewNote::Kind::FormWithoutPoints, "S"}};
  return view;
}

/// The same, in a document with another form before its own and a second point that are left out.
inline vorn_host::SectionView ViewWithPiecesLeftOut() {
  vorn_host::SectionView view = HandMadeView();
  view.forms[0].documentIndex = 1;
  for (std::size_t i = 1; i < view.forms[0].points.size(); ++i) ++view.forms[0].points[i].documentIndex;
  return view;
}

/// What is left of a design when its sections are taken: a control target that stands at none of them.
inline vorn_host::SectionView ViewOfTargetWithoutSection() {
  using namespace vorn_host;
  SectionView view;
  view.section = -1;
  view.targets = {{ViewTarget::Item::Width,
                   "Width",
                   "S",
                   "",
                   "",
                   "",
                   {{-1, -1, "S L1", {}, ViewTarget::Elsewhere{30.0, "30.0000", true}}},
                   {}}};
  return view;
}

/// What might be drawn of it, with one of everything.
inline vorn_host::SectionDrawing HandMadeDrawing() {
  using namespace vorn_host;
  SectionDrawing drawing;
  drawing.left = -22.0;
  drawing.right = 22.0;
  drawing.bottom = 55.0;
  drawing.top = 66.0;
  drawing.scale = 200.0;
  const auto line = [&](DrawingKind kind, std::vector<SectionPlace> places) {
    drawing.lines.push_back({kind, std::move(places)});
  };
  line(DrawingKind::DesignSurface, {{-3.5, 62.45}, {0.0, 62.5}, {3.5, 62.45}});
  line(DrawingKind::Slope, {{-9.5, 58.45}, {-3.5, 62.45}});
  line(DrawingKind::Ground, {{-20.0, 58.0}, {-9.5, 58.45}, {20.0, 60.0}});
  line(DrawingKind::CenterLine, {{0.0, 56.0}, {0.0, 65.0}});
  line(DrawingKind::Frame, {{1.0, 1.0}});  // a line of one place shows nothing
  drawing.marks = {{DrawingKind::Code, DrawnMark::Shape::Point, {-3.5, 62.45}},
                   {DrawingKind::Crossing, DrawnMark::Shape::Crossing, {-9.5, 58.45}},
                   {DrawingKind::Dimension, DrawnMark::Shape::Height, {0.0, 62.5}, -90.0},
                   {DrawingKind::Dimension, DrawnMark::Shape::Arrow, {3.5, 64.0}, 180.0}};
  const auto text = [&](DrawingKind kind, SectionPlace place, std::string words) {
    DrawnText drawn;
    drawn.kind = kind;
    drawn.place = place;
    drawn.text = std::move(words);
    drawing.texts.push_back(drawn);
  };
  text(DrawingKind::Code, {-3.5, 62.45}, "L1");
  text(DrawingKind::Title, {0.0, 65.5}, "No.6+0.0000 盛土面");
  text(DrawingKind::Grade, {0.0, 60.0}, "");
  return drawing;
}

}  // namespace host_test
