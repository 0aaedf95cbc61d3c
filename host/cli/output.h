#pragma once

#include <cstddef>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/document/carried_content.h"
#include "host/document/unread_values.h"

namespace vorn_cli {

/// Exit codes of every command.
enum ExitCode : int {
  kOk = 0,       ///< everything is in order
  kInvalid = 1,  ///< the data is not valid
  kFailed = 2,   ///< the command was misused, or a file could not be read or written
};

/// Keeps the order in which members are set: what a reader looks for first stands first.
using Json = nlohmann::ordered_json;

/// What a command tells on a terminal. Text from a document cannot break out of its line or reach the terminal's
/// control sequences.
class TextReport {
 public:
  /// A line of text, so many blanks from the left.
  void Line(std::string_view text, int indent = 0);
  /// A label and what it says, in two columns. Continuation rows have an empty label. Here and in tables a full-width
  /// character takes the room of two others.
  void Row(std::string_view label, std::string_view text, int indent = 0);
  /// A number, right-aligned, and what is counted.
  void CountRow(int count, std::string_view what);
  /// Cells in columns, each as wide as its widest cell.
  void Table(const std::vector<std::vector<std::string>>& rows, int indent = 0);

  [[nodiscard]] const std::string& Text() const { return m_text; }

 private:
  std::string m_text;
};

/// Writes to the standard output; throws `DocumentError` when that fails (a full disk behind a redirection).
void Print(const TextReport& report);
/// The same for JSON, indented for people to read.
void Print(const Json& json);
/// As it is: what a command makes for other programs.
void PrintVerbatim(std::string_view text);
/// A file that goes to the standard output, piece by piece.
void PrintPieces(const std::function<void(const vorn_host::TextSink&)>& produce);

/// One sentence to the standard error, behind "vorn: ".
void PrintError(std::string_view sentence);

/// "1 cross section", "12 cross sections".
[[nodiscard]] std::string Counted(int count, std::string_view noun);
/// As a document has it, with four decimals.
[[nodiscard]] std::string StationText(double station);
/// Values of a document that were read as something else, the first of them.
void PrintNotUnderstood(TextReport& report, const std::vector<vorn_host::UnreadValue>& values);
/// How many characters code page 932 could not hold, when there were any.
void PrintReplaced(TextReport& report, std::size_t inReading, std::size_t inWriting);
/// Each with its line, where it is, what it says and why that is not understood.
[[nodiscard]] Json UnreadValuesToJson(const std::vector<vorn_host::UnreadValue>& values);
/// What is carried over: of each kind of thing its name and how many there are.
[[nodiscard]] Json RowsToJson(const std::vector<vorn_host::CarriedContent::Row>& rows);
/// A text, null for an empty one.
[[nodiscard]] inline Json OrNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }
/// A value, null for none.
template <typename Value>
[[nodiscard]] Json OrNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

}  // namespace vorn_cli
