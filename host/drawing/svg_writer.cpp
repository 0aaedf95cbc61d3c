#include "host/drawing/svg_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "host/document/text_encoding.h"
#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

/// Line widths in millimetres: a heavy line, a thin one, and the one between.
constexpr std::string_view kStyle =
    R"(svg{background:#fff}
path,line,polyline{fill:none;stroke:#000;stroke-width:.18;stroke-linecap:round;stroke-linejoin:round}
text{fill:#000;font-family:"Noto Sans","Noto Sans CJK JP","Noto Sans JP","Hiragino Sans","Yu Gothic",Meiryo,"IPAexGothic",sans-serif;white-space:pre}
.design-surface polyline{stroke-width:.7}
.slope polyline{stroke:#0072b2;stroke-width:.5}
.pavement-layer polyline{stroke:#d55e00;stroke-width:.25}
.other-form polyline{stroke:#cc79a7;stroke-width:.35;stroke-dasharray:4 1}
.ground polyline{stroke:#009e73;stroke-width:.25}
.ground text{fill:#00664b}
.ground-hatch polyline{stroke:#009e73;stroke-width:.13}
.center-line polyline{stroke-width:.18;stroke-dasharray:8 1.5 1.5 1.5}
.crossing .mark{fill:#fff;stroke:#d55e00;stroke-width:.3}
.code polyline{stroke-width:.1}
.code .mark{fill:#fff;stroke:#000;stroke-width:.15}
.grade text{fill:#00507d}
.dimension polyline{stroke-width:.13}
.dimension .mark{fill:#000;stroke:#000;stroke-width:.13}
.dimension .height{fill:#fff}
.frame polyline{stroke-width:.18}
)";

struct KindClass {
  DrawingKind kind;
  std::string_view name;
};

/// In the order in which they are drawn: what comes later lies above.
constexpr std::array kClasses = {
    KindClass{DrawingKind::Frame, "frame"},
    KindClass{DrawingKind::GroundHatch, "ground-hatch"},
    KindClass{DrawingKind::Ground, "ground"},
    KindClass{DrawingKind::CenterLine, "center-line"},
    KindClass{DrawingKind::PavementLayer, "pavement-layer"},
    KindClass{DrawingKind::OtherForm, "other-form"},
    KindClass{DrawingKind::DesignSurface, "design-surface"},
    KindClass{DrawingKind::Slope, "slope"},
    KindClass{DrawingKind::Dimension, "dimension"},
    KindClass{DrawingKind::Code, "code"},
    KindClass{DrawingKind::Crossing, "crossing"},
    KindClass{DrawingKind::Grade, "grade"},
    KindClass{DrawingKind::Title, "title"},
};

/// A length on paper: hundredths of a millimetre are finer than any pen.
std::string Mm(double value) { return ValueText(value, 0, 2); }

/// What XML and people can read of a text: control characters become �, which shows that something was there.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    switch (byte) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        if (code < 0x20 || code == 0x7F) {
          escaped += "\xEF\xBF\xBD";
        } else {
          escaped += byte;
        }
    }
  }
  return escaped;
}

/// Writes the pieces of one drawing; y grows downward here.
class SvgSheet {
 public:
  explicit SvgSheet(const SectionDrawing& drawing)
      : m_drawing(drawing), m_across(1000.0 / drawing.scale), m_upward(1000.0 / drawing.scale * drawing.exaggeration) {}

  [[nodiscard]] double Width() const { return (m_drawing.right - m_drawing.left) * m_across; }
  [[nodiscard]] double Height() const { return (m_drawing.top - m_drawing.bottom) * m_upward; }

  [[nodiscard]] std::string Content() const {
    std::string svg;
    for (const KindClass& kind : kClasses) {
      std::string group;
      for (const DrawnLine& line : m_drawing.lines) {
        if (line.kind == kind.kind) AddLine(group, line);
      }
      for (const DrawnMark& mark : m_drawing.marks) {
        if (mark.kind == kind.kind) AddMark(group, mark);
      }
      for (const DrawnText& text : m_drawing.texts) {
        if (text.kind == kind.kind && !text.text.empty()) AddText(group, text);
      }
      if (!group.empty()) svg += "<g class=\"" + std::string(kind.name) + "\">\n" + group + "</g>\n";
    }
    return svg;
  }

 private:
  struct Place {
    double x = 0.0;
    double y = 0.0;
  };

  [[nodiscard]] Place PlaceOf(const SectionPlace& place) const {
    return {(place.offset - m_drawing.left) * m_across, (m_drawing.top - place.height) * m_upward};
  }

  void AddLine(std::string& svg, const DrawnLine& line) const {
    svg += "<polyline points=\"";
    for (std::size_t i = 0; i < line.places.size(); ++i) {
      const Place place = PlaceOf(line.places[i]);
      svg += (i > 0 ? " " : "") + Mm(place.x) + ',' + Mm(place.y);
    }
    svg += "\"/>\n";
  }

  static void AddPolygon(std::string& svg, std::string_view shape, std::initializer_list<Place> corners) {
    svg += "<polygon class=\"mark " + std::string(shape) + "\" points=\"";
    const char* blank = "";
    for (const Place& corner : corners) {
      svg += blank + Mm(corner.x) + ',' + Mm(corner.y);
      blank = " ";
    }
    svg += "\"/>\n";
  }

  static void AddCircle(std::string& svg, std::string_view shape, const Place& at, double radius) {
    svg += "<circle class=\"mark " + std::string(shape) + "\" cx=\"" + Mm(at.x) + "\" cy=\"" + Mm(at.y) + "\" r=\"" +
           Mm(radius) + "\"/>\n";
  }

  void AddMark(std::string& svg, const DrawnMark& mark) const {
    const Place at = PlaceOf(mark.place);
    switch (mark.shape) {
      case DrawnMark::Shape::Point:
        return AddCircle(svg, "point", at, 0.4);
      case DrawnMark::Shape::Crossing:
        return AddCircle(svg, "cross", at, 0.9);
      case DrawnMark::Shape::Height:
        return AddPolygon(svg, "height", {at, {at.x - 1.3, at.y - 2.2}, {at.x + 1.3, at.y - 2.2}});
      case DrawnMark::Shape::Arrow:
        break;
    }
    const double radians = mark.angle * std::numbers::pi / 180.0;
    const Place back = {-2.2 * std::cos(radians), 2.2 * std::sin(radians)};
    const Place side = {0.35 * std::sin(radians), 0.35 * std::cos(radians)};
    AddPolygon(
        svg, "arrow",
        {at, {at.x + back.x + side.x, at.y + back.y + side.y}, {at.x + back.x - side.x, at.y + back.y - side.y}});
  }

  void AddText(std::string& svg, const DrawnText& text) const {
    const Place place = PlaceOf(text.place);
    const double radians = text.angle * std::numbers::pi / 180.0;
    const std::string x = Mm(place.x - text.liftMm * std::sin(radians));
    const std::string y = Mm(place.y - text.liftMm * std::cos(radians));
    svg += "<text x=\"" + x + "\" y=\"" + y + "\" font-size=\"" + Mm(text.sizeMm) + '"';
    if (text.anchor == DrawnText::Anchor::Middle) svg += " text-anchor=\"middle\"";
    if (text.anchor == DrawnText::Anchor::End) svg += " text-anchor=\"end\"";
    if (text.angle != 0.0) svg += " transform=\"rotate(" + Mm(-text.angle) + ' ' + x + ' ' + y + ")\"";
    svg += '>' + Escaped(text.text) + "</text>\n";
  }

  const SectionDrawing& m_drawing;
  double m_across;
  double m_upward;
};

/// The titles of the drawing, which say what it shows to those who do not see it.
std::string Description(const std::vector<SectionDrawing>& drawings) {
  std::string description;
  for (const SectionDrawing& drawing : drawings) {
    for (const DrawnText& text : drawing.texts) {
      if (text.kind != DrawingKind::Title || text.text.empty()) continue;
      description += (description.empty() ? "" : "; ") + Escaped(text.text);
    }
  }
  return description;
}

}  // namespace

std::string_view ClassOf(DrawingKind kind) {
  const auto known = std::find_if(kClasses.begin(), kClasses.end(), [&](const auto& row) { return row.kind == kind; });
  return known == kClasses.end() ? std::string_view() : known->name;
}

std::string WriteSvg(const SectionDrawing& drawing, const std::string& title) {
  return WriteSvg(std::vector<SectionDrawing>{drawing}, title);
}

std::string WriteSvg(const std::vector<SectionDrawing>& drawings, const std::string& title) {
  double width = 0.0;
  double height = 0.0;
  std::string content;
  for (const SectionDrawing& drawing : drawings) {
    const SvgSheet sheet(drawing);
    const bool isFirst = content.empty();
    content += isFirst ? "<g>\n" : "<g transform=\"translate(0 " + Mm(height) + ")\">\n";
    content += sheet.Content() + "</g>\n";
    width = std::max(width, sheet.Width());
    height += sheet.Height();
  }
  const std::string size = Mm(width) + ' ' + Mm(height);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" xml:space=\"preserve\" "
         "width=\"" +
         Mm(width) + "mm\" height=\"" + Mm(height) + "mm\" viewBox=\"0 0 " + size + "\">\n<title>" + Escaped(title) +
         "</title>\n<desc>" + Description(drawings) + "</desc>\n<style>\n" + std::string(kStyle) + "</style>\n" +
         content + "</svg>\n";
}

}  // namespace vorn_host
