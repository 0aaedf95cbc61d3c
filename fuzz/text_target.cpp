// An input is a text in whatever encoding, or a number in front of one. Every conversion of text is tried on it.

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/target.h"
#include "host/document/document_error.h"
#include "host/document/text_encoding.h"
#include "host/settings/settings_text.h"
#include "vorn/framework/base.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/fixed_decimal.h"
#include "vorn/platform/nur_mrm.h"
#include "vorn/platform/sil_string.h"

namespace vorn_fuzz {

namespace {

using Conversion = code_page_932::Conversion;
using Convert = Conversion (*)(std::string_view, std::string&);

/// Beyond the places that any edition writes, in both directions.
constexpr KelMrmFigure kLeastPlaces = -20;
constexpr KelMrmFigure kMostPlaces = 20;

// --- code page 932 ---------------------------------------------------------------------------------------------------

/// The converted text, with a mark for whatever cannot be: it never stands still and never leaves the input.
std::string ConvertAll(std::string_view text, Convert convert, std::string_view mark, bool& clean) {
  std::string converted;
  clean = true;
  while (true) {
    const Conversion done = convert(text, converted);
    if (done) {
      if (done.position != text.size()) Finding("conversion", "it ends early");
      return converted;
    }
    clean = false;
    if (done.length == 0 || done.position + done.length > text.size()) Finding("conversion", "the fault has no place");
    converted += mark;
    text.remove_prefix(done.position + done.length);
  }
}

/// Whatever was converted has a form in the other encoding, and comes back from there as it was.
void JudgeConversion(std::string_view text, Convert there, Convert back, std::string_view mark, const char* where) {
  bool clean = false;
  const std::string converted = ConvertAll(text, there, mark, clean);
  bool cleanBack = false;
  const std::string returned = ConvertAll(converted, back, {}, cleanBack);
  if (!cleanBack) Finding(where, "what was converted is no text");
  bool cleanAgain = false;
  if (ConvertAll(returned, there, mark, cleanAgain) != converted || !cleanAgain) {
    Finding(where, "what was converted does not come back");
  }
}

/// Every position of a text belongs to one character, whether it is walked to or looked at from where it is.
void JudgeCharacterStarts(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    if (!code_page_932::IsCharacterStart(text, at)) Finding("characters", "a character does not start where it is");
    const std::size_t length = code_page_932::CharacterLength(text, at);
    if (length == 2 && code_page_932::IsCharacterStart(text, at + 1)) Finding("characters", "one starts in another");
    at += length;
  }
}

void JudgeModelText(std::string_view text) {
  std::string buffer;
  vorn_host::TextProblems problems;
  const std::string utf8(vorn_host::ModelTextToUtf8(text, buffer, problems));
  const std::optional<std::string> back = vorn_host::FromUtf8(utf8);
  if (!back) Finding("model text", "what was converted for a document cannot be read from it");
  if (vorn_host::ToUtf8(*back) != utf8) Finding("model text", "it is another one after a document");
  if (!vorn_host::FromUtf8(vorn_host::ToUtf8(text)) && problems.count == 0) {
    Finding("model text", "a text without a fault cannot be read from a message");
  }
}

// --- widths and cases ------------------------------------------------------------------------------------------------

void JudgeWidths(std::string_view text) {
  const CString full = SilString::HanToZen(text);
  if (SilString::HanToZen(full) != full) Finding("full width", "widening twice gives another text");
  bool clean = false;
  (void)ConvertAll(text, code_page_932::AppendAsUtf8, {}, clean);
  bool fullClean = false;
  (void)ConvertAll(full.View(), code_page_932::AppendAsUtf8, {}, fullClean);
  if (clean && !fullClean) Finding("full width", "widening breaks a character");
}

void JudgeCases(std::string_view text) {
  CString upper(text);
  upper.MakeUpper();
  CString lower = upper;
  lower.MakeLower();
  if (lower.CompareNoCase(text) != 0) Finding("letter case", "folding gives another text");
  CString trimmed(text);
  trimmed.Trim();
  if (trimmed.GetLength() > 0 && CString(text).Find(trimmed.View()) < 0 &&
      code_page_932::IsCharacterStart(text, text.find(trimmed.View()))) {
    Finding("trimming", "what is left is not found in the text");
  }
}

// --- numbers ---------------------------------------------------------------------------------------------------------

void JudgeDecimal(double value, KelMrmFigure places) {
  const std::string where = "decimal with " + std::to_string(places) + " places";
  const FixedDecimal decimal(value, places);
  const std::string_view text = decimal.View();
  if (!std::isfinite(value)) {
    if (!text.empty()) Finding(where, "there is one for what is no number");
    return;
  }
  if (text.empty() || text.find_first_not_of("-0123456789.") != std::string_view::npos) Finding(where, "it is none");
  const double rounded = FixedDecimal::Round(value, places);
  if (SilString::ToDouble(text) != rounded) Finding(where, "it is not what rounding gives");
  if (FixedDecimal::Round(rounded, places) != rounded) Finding(where, "rounding twice gives another number");
  if (FixedDecimal(rounded, places).View() != text) Finding(where, "what was rounded has another text");
}

void JudgeNumber(double value) {
  for (KelMrmFigure places = kLeastPlaces; places <= kMostPlaces; ++places) JudgeDecimal(value, places);
  (void)NurMrm(NurMrm::kHalfAwayFromZero, 0, 4).Text(value);
}

void JudgeNumbers(std::span<const std::uint8_t> input, std::string_view text) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, input.data(), std::min(sizeof bits, input.size()));
  JudgeNumber(std::bit_cast<double>(bits));
  const double read = SilString::ToDouble(text);
  if (!std::isfinite(read)) Finding("number", "what is read is infinite or none");
  JudgeNumber(read);
  const std::int32_t whole = SilString::ToInteger(text);
  if (SilString::ToInteger(SilString::StrSignedInteger(whole)) != whole) Finding("integer", "it does not come back");
}

// --- texts of documents and settings ---------------------------------------------------------------------------------

void JudgeDates(std::string_view text) {
  const COleDateTime date = Vorn_Base::TurnDate(text);
  if (date.GetStatus() != COleDateTime::valid) return;
  constexpr const char* kForm = "%Y-%m-%dT%H:%M:%S";
  const CString written = date.Format(kForm);
  if (Vorn_Base::TurnDate(written).Format(kForm) != written) Finding("date", "it does not come back");
}

void JudgeItems(std::string_view text) {
  CStringArray items;
  Vorn_Base::DivideString(text, items);
  std::size_t bytes = 0;
  for (const CString& item : items) {
    if (item.Find(' ') >= 0) Finding("items", "one has a blank");
    bytes += item.View().size();
  }
  if (bytes > text.size()) Finding("items", "they are more than the text");
  (void)Vorn_Base::TurnReal(text);
  (void)Vorn_Base::TurnInt(text);
}

void JudgeDecoding(const std::string& text) {
  try {
    const vorn_host::DecodedText decoded = vorn_host::DecodeDocument(text, "text");
    bool clean = false;
    (void)ConvertAll(decoded.utf8, code_page_932::AppendFromUtf8, {}, clean);
    std::size_t replaced = 0;
    const std::string encoded = vorn_host::EncodeShiftJis(decoded.utf8, "text", true, replaced);
    if (clean != (replaced == 0)) Finding("encoding", "what is replaced is not told");
    bool encodedClean = false;
    (void)ConvertAll(encoded, code_page_932::AppendAsUtf8, {}, encodedClean);
    if (!encodedClean) Finding("encoding", "it gives no Shift_JIS");
  } catch (const vorn_host::DocumentError&) {
  }
}

void JudgeSettings(const std::string& text) {
  try {
    const vorn_host::SettingsText settings(text);
    for (const vorn_host::SettingsEntry& entry : settings.Entries()) {
      if (!settings.FindEntry(entry.path, entry.name)) Finding("settings", "an entry is not found");
    }
    const auto changed = settings.With({"key"}, "name", vorn_host::SettingValue(std::int32_t{7}));
    if (changed && changed->Find({"key"}, "name") != vorn_host::SettingValue(std::int32_t{7})) {
      Finding("settings", "a value is not what was set");
    }
  } catch (const vorn_host::SettingsSyntaxError&) {
  }
}

Seed SeedOf(std::string name, std::string_view text) { return {std::move(name), {text.begin(), text.end()}}; }

}  // namespace

bool Judge(std::span<const std::uint8_t> input) {
  const std::string text(input.begin(), input.end());
  JudgeConversion(text, code_page_932::AppendAsUtf8, code_page_932::AppendFromUtf8, vorn_host::kGetaMarkUtf8, "UTF-8");
  JudgeConversion(text, code_page_932::AppendFromUtf8, code_page_932::AppendAsUtf8, vorn_host::kGetaMark932, "932");
  JudgeCharacterStarts(text);
  JudgeModelText(text);
  JudgeWidths(text);
  JudgeCases(text);
  JudgeNumbers(input, text);
  JudgeDates(text);
  JudgeItems(text);
  JudgeDecoding(text);
  JudgeSettings(text);
  return true;
}

std::vector<Seed> MakeSeeds() {
  return {
      SeedOf("text_932", u8"盛土工 No.1ｶﾞｷﾞﾊﾟ～－"_cp932),
      SeedOf("text_utf8", "盛土工 No.1ｶﾞ〜−é😀"),
      SeedOf("text_utf16", std::string_view("\xFF\xFE<\0a\0/\0>\0\x42\x30", 12)),
      SeedOf("declared", "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?><a/>"),
      SeedOf("number", "-1234.5678e-3 0.5"),
      SeedOf("small_number", "4.9406564584124654e-324"),
      SeedOf("half", "1.005"),
      SeedOf("integer", "-2147483648"),
      SeedOf("date", "2024-02-29T12:00:00"),
      SeedOf("settings", "[key]\nname = 1 # one\n[[a.b]]\nc = \"\\u3042\"\n"),
      SeedOf("items", " 1.5  L1 "),
  };
}

}  // namespace vorn_fuzz
