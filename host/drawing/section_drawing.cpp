// The sheet around a cross section: its scale, frame, axes, scale bar and title.

#include "host/drawing/section_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "host/document/utf8_character.h"
#include "host/drawing/paper.h"
#include "host/drawing/section_layout.h"
#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

using Anchor = DrawnText::Anchor;

// Sizes on paper, in millimetres.
constexpr double kSheetWidth = 400.0;  ///< A3 with its margins taken off
constexpr double kSheetHeight = 277.0;
constexpr double kTitleSize = 5.0;
constexpr double kTextSize = 3.0;
constexpr double kNumberSize = 2.5;
constexpr double kNoteSize = 2.2;
constexpr double kInside = 5.0;     ///< from the section to the frame
constexpr double kLeftBand = 20.0;  ///< beside the frame: elevations and what they are
constexpr double kRightBand = 6.0;
constexpr double kTitleBand = 20.0;
constexpr double kAxisBand = 14.0;  ///< below the frame: offsets and what they are
constexpr double kScaleBand = 12.0;
constexpr double kNoteLine = 3.6;
constexpr double kTick = 1.8;
constexpr double kLeastStep = 15.0;  ///< from one number of an axis to the next
constexpr double kMostSteps = 200.0;
constexpr double kScaleBar = 40.0;  ///< the scale bar is about that long
constexpr double kLeastFrame = 90.0;
constexpr double kWidestFrame = kSheetWidth - kLeftBand - kRightBand;
constexpr std::size_t kMostNoteLines = 12;
constexpr double kSmallestScale = 1e9;  ///< 1:this, whether or not the section fits

struct Words {
  const char* station;
  const char* behindChange;
  const char* controlSection;
  const char* elevation;
  const char* aboveCenter;
  const char* offset;
  const char* scale;
};
constexpr Words kEnglish = {"Station ",      "behind the change of shape", "control section",
                            "Elevation (m)", "Height above CL (m)",        "Offset from CL (m)",
                            "Scale "};
constexpr Words kJapanese = {
    "測点 ", "断面変化点（後）", "管理断面", "標高 (m)", "CLからの高さ (m)", "CLからの距離 (m)", "縮尺 "};

/// 1, 2 or 5 times a power of ten, no less than a length.
double RoundStep(double least) {
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * (1.0 - 1e-9)) return factor * power;
  }
  return 10.0 * power;
}

/// The decimals that multiples of a round step need.
int DecimalsOf(double step) { return std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 6); }

/// The scale that follows in the row of the usual ones: 50, 100, 200, 250, 500, 1000 ...
double NextUsualScale(double scale) {
  constexpr std::array kFirst = {50.0, 100.0, 200.0, 250.0};
  for (const double usual : kFirst) {
    if (usual > scale) return usual;
  }
  double power = 100.0;
  while (true) {
    for (const double factor : {5.0, 10.0, 20.0, 25.0}) {
      if (factor * power > scale) return factor * power;
    }
    power *= 10.0;
  }
}

/// The pieces of a note that are no wider than a length, broken between words where there are some.
std::vector<std::string> Wrapped(const std::string& note, double width) {
  std::vector<std::string> lines;
  std::string line;
  std::string word;
  const auto endWord = [&] {
    if (!line.empty() && TextWidth(line + word, kNoteSize) > width) {
      lines.push_back(line);
      line.clear();
    }
    line += word;
    word.clear();
  };
  for (std::size_t at = 0; at < note.size();) {
    const std::size_t end = EndOfCharacter(note, at);
    const std::string_view character = std::string_view(note).substr(at, end - at);
    word += character;
    if (character == " " || TextWidth(word, kNoteSize) > width) endWord();
    at = end;
  }
  endWord();
  lines.push_back(line);
  return lines;
}

/// Notes as lines of a width; of too many the last ones are left out.
std::vector<std::string> NoteLines(const std::vector<ViewNote>& notes, Language language, double width) {
  std::vector<std::string> lines;
  for (const ViewNote& note : notes) {
    for (std::string& line : Wrapped("* " + NoteText(note, language), width)) lines.push_back(std::move(line));
  }
  if (lines.size() > kMostNoteLines) {
    lines.resize(kMostNoteLines - 1);
    lines.emplace_back("* ...");
  }
  return lines;
}

/// The room of a sheet around its frame, and where the sheet ends below for so many lines of notes.
PaperBox SheetAround(const PaperBox& frame, std::size_t noteLines) {
  const double below = kAxisBand + kScaleBand + kNoteLine * static_cast<double>(noteLines);
  return {frame.left - kLeftBand, frame.right + kRightBand, frame.bottom - below, frame.top + kTitleBand, false};
}

bool FitsPaper(const PaperBox& sheet) {
  constexpr double kRounding = 1e-6;  // what fills the paper exactly fits, though its sides are sums and quotients
  return sheet.Width() <= kSheetWidth + kRounding && sheet.Height() <= kSheetHeight + kRounding;
}

/// Sets one sheet around a section that is laid out at one scale.
class Sheet {
 public:
  /// @param laidOut what the section consists of
  /// @param section the room that it takes
  Sheet(const SectionView& view, Language language, const PaperScale& scale, SectionDrawing laidOut, PaperBox section)
      : m_view(view),
        m_words(language == Language::Japanese ? kJapanese : kEnglish),
        m_scale(scale),
        m_drawing(std::move(laidOut)) {
    section = section.Widened(kInside);
    const std::string title = Fitting(TitleText(), kTitleSize);
    const std::string subtitle = Fitting(SubtitleText(), kTextSize);
    WidenTo(std::max({kLeastFrame, TextWidth(title, kTitleSize), TextWidth(subtitle, kTextSize)}), section);
    m_frame = section;
    AddFrame();
    AddAxes();
    AddTitle(title, subtitle);
    AddScaleBar();
    const std::vector<std::string> notes = NoteLines(NotesOf(view, m_drawing), language, m_frame.Width());
    AddNotes(notes);
    m_sheet = SheetAround(m_frame, notes.size());
    const SectionPlace lowerLeft = m_scale.ToSection({m_sheet.left, m_sheet.bottom});
    const SectionPlace upperRight = m_scale.ToSection({m_sheet.right, m_sheet.top});
    m_drawing.left = lowerLeft.offset;
    m_drawing.bottom = lowerLeft.height;
    m_drawing.right = upperRight.offset;
    m_drawing.top = upperRight.height;
  }

  [[nodiscard]] bool Fits() const { return FitsPaper(m_sheet); }
  [[nodiscard]] SectionDrawing Take() { return std::move(m_drawing); }

 private:
  static void WidenTo(double width, PaperBox& box) {
    const double missing = (width - box.Width()) / 2.0;
    if (missing <= 0.0) return;
    box.left -= missing;
    box.right += missing;
  }

  void AddLine(DrawingKind kind, std::initializer_list<PaperPlace> places) {
    DrawnLine line{kind, {}};
    for (const PaperPlace& place : places) line.places.push_back(m_scale.ToSection(place));
    m_drawing.lines.push_back(std::move(line));
  }

  DrawnText& AddText(DrawingKind kind, const PaperPlace& place, std::string label, double size, Anchor anchor,
                     double angle = 0.0) {
    DrawnText text{kind, m_scale.ToSection(place)};
    text.sizeMm = size;
    text.anchor = anchor;
    text.angle = angle;
    text.text = std::move(label);
    return m_drawing.texts.emplace_back(std::move(text));
  }

  /// The number of a tick, so far from its end.
  void AddNumber(const PaperPlace& end, double along, double lift, std::string number, Anchor anchor) {
    DrawnText& text = AddText(DrawingKind::Frame, end, std::move(number), kNumberSize, anchor);
    text.alongMm = along;
    text.liftMm = lift;
  }

  void AddFrame() {
    AddLine(DrawingKind::Frame, {{m_frame.left, m_frame.bottom},
                                 {m_frame.right, m_frame.bottom},
                                 {m_frame.right, m_frame.top},
                                 {m_frame.left, m_frame.top},
                                 {m_frame.left, m_frame.bottom}});
  }

  /// Calls visit(millimetres, number) at every round number between two places of an axis.
  template <typename Visit>
  static void ForEachTick(double from, double to, double millimetresOfMetre, Visit&& visit) {
    const double step = RoundStep(std::max(kLeastStep, (to - from) / kMostSteps) / millimetresOfMetre);
    const int decimals = DecimalsOf(step);
    const double first = std::ceil(from / millimetresOfMetre / step);
    const double last = std::floor(to / millimetresOfMetre / step);
    const int ticks = static_cast<int>(std::clamp(last - first, -1.0, kMostSteps)) + 1;
    for (int i = 0; i < ticks; ++i) {
      const double tick = (first + i) * step;
      visit(tick * millimetresOfMetre, ValueText(tick, decimals, decimals));
    }
  }

  void AddAxes() {
    ForEachTick(m_frame.left, m_frame.right, m_scale.Across(), [&](double x, std::string number) {
      AddLine(DrawingKind::Frame, {{x, m_frame.bottom}, {x, m_frame.bottom - kTick}});
      AddNumber({x, m_frame.bottom - kTick}, 0.0, -3.0, std::move(number), Anchor::Middle);
    });
    ForEachTick(m_frame.bottom, m_frame.top, m_scale.Upward(), [&](double y, std::string number) {
      AddLine(DrawingKind::Frame, {{m_frame.left, y}, {m_frame.left - kTick, y}});
      AddNumber({m_frame.left - kTick, y}, -0.8, -0.9, std::move(number), Anchor::End);
    });
    AddText(DrawingKind::Frame, {(m_frame.left + m_frame.right) / 2.0, m_frame.bottom - 10.5}, m_words.offset,
            kTextSize, Anchor::Middle);
    AddText(DrawingKind::Frame, {m_frame.left - 14.5, (m_frame.bottom + m_frame.top) / 2.0},
            m_view.centerHeight ? m_words.elevation : m_words.aboveCenter, kTextSize, Anchor::Middle, 90.0);
  }

  /// "Station 120.0000 m", "No.6+0.0000", with the name where it tells more.
  [[nodiscard]] std::string TitleText() const {
    const bool isNumbered = m_view.station && m_view.stationText.find('+') != std::string::npos;
    std::string text = m_view.stationText;
    if (m_view.station && !isNumbered) text = m_words.station + text + " m";
    const bool isNameTold = isNumbered && m_view.stationText == m_view.name + "+0.0000";
    if (m_view.name.empty() || isNameTold) return text;
    return text.empty() ? m_view.name : text + "  " + m_view.name;
  }

  [[nodiscard]] std::string SubtitleText() const {
    std::string text;
    const auto add = [&](const std::string& part) {
      if (!part.empty()) text += (text.empty() ? "" : "   ") + part;
    };
    add(m_view.alignment);
    if (m_view.isBehindChange) add(m_words.behindChange);
    if (m_view.isControlSection) add(m_words.controlSection);
    // The sign for "about" that Japanese drawings have: code page 932 holds no other.
    if (m_view.centerHeight) add((m_view.isHeightAssumed ? "FH≒" : "FH=") + ValueText(*m_view.centerHeight, 3, 3));
    if (!m_view.grounds.empty()) {
      const std::optional<double> ground = GroundHeightAt(m_view.grounds.front(), 0.0);
      if (ground) add("GH=" + ValueText(*ground, 3, 3));
    }
    return text;
  }

  /// A text that is no wider than a sheet; the end of a longer one is left out.
  static std::string Fitting(std::string text, double size) {
    if (TextWidth(text, size) <= kWidestFrame) return text;
    double width = size;  // of what shows that there is more
    std::size_t end = 0;
    while (width <= kWidestFrame) {
      const std::size_t next = EndOfCharacter(text, end);
      width += TextWidth(std::string_view(text).substr(end, next - end), size);
      if (width <= kWidestFrame) end = next;
    }
    return text.substr(0, end) + "…";
  }

  void AddTitle(const std::string& title, const std::string& subtitle) {
    const double middle = (m_frame.left + m_frame.right) / 2.0;
    AddText(DrawingKind::Title, {middle, m_frame.top + 11.0}, title, kTitleSize, Anchor::Middle);
    if (!subtitle.empty()) {
      AddText(DrawingKind::Title, {middle, m_frame.top + 4.5}, subtitle, kTextSize, Anchor::Middle);
    }
  }

  [[nodiscard]] std::string ScaleText() const {
    const std::string across = "1:" + ValueText(m_drawing.scale, 0, 3);
    if (m_drawing.exaggeration == 1.0) return m_words.scale + across;
    return m_words.scale + std::string("H ") + across +
           "  V 1:" + ValueText(m_drawing.scale / m_drawing.exaggeration, 0, 3);
  }

  /// Two parts, the first of them divided again, at the right below the frame.
  void AddScaleBar() {
    const double part = RoundStep(kScaleBar / 2.0 / m_scale.Across() * 0.7);
    const double length = part * m_scale.Across();
    const double right = m_frame.right - 8.0;
    const double y = m_frame.bottom - kAxisBand - 6.0;
    const double left = right - 2.0 * length;
    AddLine(DrawingKind::Frame, {{left, y}, {right, y}});
    AddLine(DrawingKind::Frame, {{left, y}, {left, y + kTick}});
    AddLine(DrawingKind::Frame, {{left + length / 2.0, y}, {left + length / 2.0, y + kTick / 2.0}});
    AddLine(DrawingKind::Frame, {{left + length, y}, {left + length, y + kTick}});
    AddLine(DrawingKind::Frame, {{right, y}, {right, y + kTick}});
    const int decimals = DecimalsOf(part);
    const auto addNumber = [&](double x, std::string number) {
      AddNumber({x, y + kTick}, 0.0, 0.8, std::move(number), Anchor::Middle);
    };
    addNumber(left, "0");
    addNumber(left + length, ValueText(part, decimals, decimals));
    addNumber(right, ValueText(2.0 * part, decimals, decimals) + " m");
    AddText(DrawingKind::Frame, {left - 6.0, y}, ScaleText(), kTextSize, Anchor::End);
  }

  void AddNotes(const std::vector<std::string>& lines) {
    double y = m_frame.bottom - kAxisBand - kScaleBand;
    for (const std::string& line : lines) {
      AddText(DrawingKind::Title, {m_frame.left, y}, line, kNoteSize, Anchor::Start);
      y -= kNoteLine;
    }
  }

  const SectionView& m_view;
  const Words& m_words;
  PaperScale m_scale;
  PaperBox m_frame;
  PaperBox m_sheet;
  SectionDrawing m_drawing;
};

double Sensible(double value, double otherwise) { return std::isfinite(value) && value > 0.0 ? value : otherwise; }

/// The sheets of a section at one scale, one for each language. What stands on the section itself is laid out once.
std::vector<Sheet> SheetsAt(double scale, double exaggeration, std::span<const Language> languages,
                            const SectionView& view) {
  SectionDrawing section;
  section.scale = scale;
  section.exaggeration = exaggeration;
  const PaperScale paper(scale, exaggeration);
  const PaperBox room = LayOutSection(view, WindowOf(view), paper, section);
  std::vector<Sheet> sheets;
  for (const Language language : languages) sheets.emplace_back(view, language, paper, section, room);
  return sheets;
}

/// The largest usual scale, no larger than 1:least, at which the section could fit in a language.
double ScaleFrom(double least, const SectionView& view, Language language, double exaggeration) {
  const SectionWindow window = WindowOf(view);
  const std::size_t notes = NoteLines(view.notes, language, kWidestFrame).size();
  const auto couldFit = [&](double scale) {
    const PaperBox section = LeastRoom(view, window, PaperScale(scale, exaggeration)).Widened(kInside);
    return FitsPaper(SheetAround(section, notes));
  };
  double scale = NextUsualScale(least * (1.0 - 1e-9));
  while (scale < kSmallestScale && !couldFit(scale)) scale = NextUsualScale(scale);
  return scale;
}

}  // namespace

std::vector<ViewNote> NotesOf(const SectionView& view, const SectionDrawing& drawing) {
  std::vector<ViewNote> notes = view.notes;
  const auto tell = [&](ViewNote::Kind kind, int leftOut) {
    if (leftOut > 0) notes.push_back({.kind = kind, .points = leftOut});
  };
  tell(ViewNote::Kind::WidthsLeftOut, drawing.widthsLeftOut);
  tell(ViewNote::Kind::HeightsLeftOut, drawing.heightsLeftOut);
  tell(ViewNote::Kind::LengthsLeftOut, drawing.lengthsLeftOut);
  return notes;
}

double LargestScale(const SectionView& view, const DrawingOptions& options) {
  if (const double scale = Sensible(options.scale, 0.0); scale > 0.0) return scale;
  return ScaleFrom(Sensible(options.leastScale, 0.0), view, options.language, Sensible(options.exaggeration, 1.0));
}

std::vector<SectionDrawing> DrawInEach(std::span<const Language> languages, const SectionView& view,
                                       const DrawingOptions& options) {
  const bool isChosen = Sensible(options.scale, 0.0) > 0.0;
  const double exaggeration = Sensible(options.exaggeration, 1.0);
  for (double scale = LargestScale(view, options);; scale = NextUsualScale(scale)) {
    std::vector<Sheet> sheets = SheetsAt(scale, exaggeration, languages, view);
    const bool doFit = std::all_of(sheets.begin(), sheets.end(), [](const Sheet& sheet) { return sheet.Fits(); });
    if (!isChosen && !doFit && scale < kSmallestScale) continue;
    std::vector<SectionDrawing> drawings;
    drawings.reserve(sheets.size());
    for (Sheet& sheet : sheets) drawings.push_back(sheet.Take());
    return drawings;
  }
}

SectionDrawing Draw(const SectionView& view, const DrawingOptions& options) {
  return std::move(DrawInEach(std::span(&options.language, 1), view, options).front());
}

}  // namespace vorn_host
