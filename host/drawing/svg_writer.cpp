#include "host/drawing/svg_writer.h"

#include <algorithm>
#include <string_view>

#include "host/drawing/drawing_style.h"
#include "host/drawing/paper.h"
#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

/// A length on paper: hundredths of a millimetre are finer than any pen.
std::string Mm(double value) { return ValueText(value, 0, 2); }

/// What all drawings have in common: white paper, round lines, and the letters of whatever system shows them.
constexpr std::string_view kCommonRules = R"(svg{background:#fff}
polyline{fill:none;stroke-linecap:round;stroke-linejoin:round}
text{stroke:none;font-family:"Noto Sans","Noto Sans CJK JP","Noto Sans JP","Hiragino Sans","Yu Gothic",Meiryo,"IPAexGothic",sans-serif;white-space:pre}
.mark{fill:#fff;stroke-dasharray:none}
)";

/// One line of rules for a kind: how its group is drawn, its texts, and its marks that are filled.
std::string RulesOf(const DrawingStyle& style) {
  const std::string kind = '.' + std::string(style.name);
  std::string rules = kind + "{stroke:" + std::string(style.lineColor) + ";stroke-width:" + Mm(style.lineMm);
  const char* before = ";stroke-dasharray:";
  for (const double length : style.dashesMm) {
    rules += before + Mm(length);
    before = " ";
  }
  rules += '}' + kind + " text{fill:" + std::string(style.textColor) + '}';
  for (const MarkStyle& mark : MarkStyles()) {
    if (mark.isFilled) rules += kind + " ." + std::string(mark.name) + "{fill:" + std::string(style.lineColor) + '}';
  }
  return rules + '\n';
}

std::string RulesOf(const MarkStyle& mark) {
  return '.' + std::string(mark.name) + "{stroke-width:" + Mm(mark.lineMm) + "}\n";
}

std::string StyleRules() {
  std::string rules(kCommonRules);
  for (const MarkStyle& mark : MarkStyles()) rules += RulesOf(mark);
  for (const DrawingStyle& style : DrawingStyles()) rules += RulesOf(style);
  return rules;
}

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
  explicit SvgSheet(const SectionDrawing& drawing) : m_drawing(drawing), m_scale(drawing.scale, drawing.exaggeration) {}

  [[nodiscard]] double Width() const { return (m_drawing.right - m_drawing.left) * m_scale.Across(); }
  [[nodiscard]] double Height() const { return (m_drawing.top - m_drawing.bottom) * m_scale.Upward(); }

  [[nodiscard]] std::string Content() const {
    std::string svg;
    for (const DrawingStyle& style : DrawingStyles()) {
      std::string group;
      for (const DrawnLine& line : m_drawing.lines) {
        if (line.kind == style.kind) AddLine(group, line);
      }
      for (const DrawnMark& mark : m_drawing.marks) {
        if (mark.kind == style.kind) AddMark(group, mark);
      }
      for (const DrawnText& text : m_drawing.texts) {
        if (text.kind == style.kind && !text.text.empty()) AddText(group, text);
      }
      if (!group.empty()) svg += "<g class=\"" + std::string(style.name) + "\">\n" + group + "</g>\n";
    }
    return svg;
  }

 private:
  struct Place {
    double x = 0.0;
    double y = 0.0;
  };

  [[nodiscard]] Place PlaceOf(const SectionPlace& place) const {
    return {(place.offset - m_drawing.left) * m_scale.Across(), (m_drawing.top - place.height) * m_scale.Upward()};
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
    const MarkStyle& style = StyleOf(mark.shape);
    if (style.radiusMm > 0.0) return AddCircle(svg, style.name, at, style.radiusMm);
    const PaperDirection direction(mark.angle);
    const auto corner = [&](double across) { return Beside(at, direction, -style.lengthMm, across); };
    AddPolygon(svg, style.name, {at, corner(-style.halfBaseMm), corner(style.halfBaseMm)});
  }

  /// The place so far along a direction from another and so far to its left.
  static Place Beside(const Place& place, const PaperDirection& direction, double along, double across) {
    const PaperPlace beside = direction.From({place.x, -place.y}, along, across);
    return {beside.x, -beside.y};
  }

  void AddText(std::string& svg, const DrawnText& text) const {
    const Place place = Beside(PlaceOf(text.place), PaperDirection(text.angle), text.alongMm, text.liftMm);
    const std::string x = Mm(place.x);
    const std::string y = Mm(place.y);
    svg += "<text x=\"" + x + "\" y=\"" + y + "\" font-size=\"" + Mm(text.sizeMm) + '"';
    if (text.anchor != DrawnText::Anchor::Start) svg.append(" text-anchor=\"").append(WordOf(text.anchor)) += '"';
    if (text.angle != 0.0) svg += " transform=\"rotate(" + Mm(-text.angle) + ' ' + x + ' ' + y + ")\"";
    svg += '>' + Escaped(text.text) + "</text>\n";
  }

  const SectionDrawing& m_drawing;
  PaperScale m_scale;
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
         "</title>\n<desc>" + Description(drawings) + "</desc>\n<style>\n" + StyleRules() + "</style>\n" + content +
         "</svg>\n";
}

}  // namespace vorn_host
