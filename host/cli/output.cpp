#include "host/cli/output.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#include "host/document/document_error.h"
#include "host/document/text_encoding.h"
#include "host/document/utf8_character.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_cli {

namespace {

constexpr std::size_t kLabelWidth = 18;
constexpr std::size_t kCountWidth = 8;

/// The code point of a character, or the byte that stands for itself.
char32_t CodePointOf(std::string_view character) {
  const auto lead = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return lead;
  char32_t codePoint = lead & (0x7Fu >> character.size());
  for (const char byte : character.substr(1)) codePoint = codePoint << 6 | (static_cast<unsigned char>(byte) & 0x3Fu);
  return codePoint;
}

/// Whether a terminal would act on a character instead of showing it: control characters, line breaks of every kind,
/// and the marks that make text around them run the other way. A name in a file must not disguise what is told.
bool IsActedOn(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x061C || c == 0x200E || c == 0x200F ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

/// The text with a blank in place of every character that a terminal would act on.
std::string Visible(std::string_view text, bool keepNewlines = false) {
  std::string visible;
  visible.reserve(text.size());
  std::size_t end = 0;
  for (std::size_t at = 0; at < text.size(); at = end) {
    end = vorn_host::EndOfCharacter(text, at);
    const std::string_view character = text.substr(at, end - at);
    const bool isKept = !IsActedOn(CodePointOf(character)) || (keepNewlines && character == "\n");
    visible += isKept ? character : " ";
  }
  return visible;
}

/// Columns of a terminal. Full-width characters are those of two bytes in code page 932; a character that it does not
/// hold is taken for a narrow one.
std::size_t DisplayWidth(std::string_view utf8) {
  std::size_t width = 0;
  std::size_t end = 0;
  for (std::size_t at = 0; at < utf8.size(); at = end) {
    end = vorn_host::EndOfCharacter(utf8, at);
    const std::optional<std::string> character = vorn_host::FromUtf8(utf8.substr(at, end - at));
    width += character ? character->size() : 1;
  }
  return width;
}

void PadTo(std::string& line, std::size_t width) {
  const std::size_t present = DisplayWidth(line);
  if (present < width) line.append(width - present, ' ');
}

void Require(bool written) {
  if (!written) throw vorn_host::DocumentError("the report cannot be written to the standard output");
}

void PutToStandardOutput(std::string_view text) {
  Require(std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

void WriteToStandardOutput(std::string_view text) {
  PutToStandardOutput(text);
  Require(std::fflush(stdout) == 0);
}

}  // namespace

void TextReport::Line(std::string_view text, int indent) {
  m_text.append(static_cast<std::size_t>(indent), ' ');
  m_text += Visible(text);
  m_text += '\n';
}

void TextReport::Row(std::string_view label, std::string_view text, int indent) {
  std::string line(static_cast<std::size_t>(indent), ' ');
  line += label;
  PadTo(line, kLabelWidth);
  line += "  ";
  line += text;
  Line(line);
}

void TextReport::CountRow(int count, std::string_view what) {
  const std::string number = std::to_string(count);
  std::string line;
  PadTo(line, kCountWidth > number.size() ? kCountWidth - number.size() : 0);
  line += number + "  ";
  line += what;
  Line(line);
}

void TextReport::Table(const std::vector<std::vector<std::string>>& rows, int indent) {
  constexpr std::size_t kGap = 2;
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], DisplayWidth(row[i]));
  }
  for (const auto& row : rows) {
    std::string line;
    std::size_t start = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
      PadTo(line, start);
      line += row[i];
      start += widths[i] + kGap;
    }
    Line(line, indent);
  }
}

void Print(const TextReport& report) { WriteToStandardOutput(report.Text()); }

void Print(const Json& json) {
  // Texts are UTF-8 already; whatever is not would be shown replaced rather than end the command.
  WriteToStandardOutput(json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
}

void PrintVerbatim(std::string_view text) { WriteToStandardOutput(text); }
void PrintPieces(const std::function<void(const vorn_host::TextSink&)>& produce) {
  produce(PutToStandardOutput);
  Require(std::fflush(stdout) == 0);
}

void PrintError(std::string_view sentence) {
  const std::string line = "vorn: " + Visible(sentence, true) + '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string Counted(int count, std::string_view noun) {
  std::string text = std::to_string(count) + ' ';
  text += noun;
  if (count != 1) text += 's';
  return text;
}

std::string StationText(double station) { return std::string(FixedDecimal(station, 4).View()); }

void PrintNotUnderstood(TextReport& report, const std::vector<vorn_host::UnreadValue>& values) {
  constexpr std::size_t kShown = 20;
  if (values.empty()) return;
  report.Line("Not understood, and therefore written otherwise:");
  for (std::size_t i = 0; i < std::min(values.size(), kShown); ++i) {
    report.Line(PlaceOf(values[i]) + ": " + Describe(values[i]), 4);
  }
  if (values.size() > kShown) report.Line("and " + std::to_string(values.size() - kShown) + " more", 4);
}

void PrintReplaced(TextReport& report, std::size_t inReading, std::size_t inWriting) {
  const auto row = [&](std::size_t count, const char* when) {
    if (count > 0) report.Row("Replaced by 〓", Counted(static_cast<int>(count), "character") + when);
  };
  row(inReading, " in reading");
  row(inWriting, " in writing");
}

Json UnreadValuesToJson(const std::vector<vorn_host::UnreadValue>& values) {
  Json json = Json::array();
  for (const vorn_host::UnreadValue& value : values) {
    json.push_back({{"line", value.line}, {"where", value.where}, {"text", value.text}, {"reason", value.reason}});
  }
  return json;
}

Json RowsToJson(const std::vector<vorn_host::CarriedContent::Row>& rows) {
  Json json = Json::array();
  for (const auto& row : rows) json.push_back({{"name", row.name}, {"count", row.count}});
  return json;
}

}  // namespace vorn_cli
