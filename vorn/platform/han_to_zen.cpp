#include <algorithm>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

namespace {

// Each pair of lines below is a half-width text and its full-width one, character by character.

constexpr std::string_view kAsciiFull =
    u8"　！＂＃＄％＆＇（）＊＋，－．／０１２３４５６７８９：；＜＝＞？"
    u8"＠ＡＢＣＤＥＦＧＨＩＪＫＬＭＮＯＰＱＲＳＴＵＶＷＸＹＺ［＼］＾＿"
    u8"｀ａｂｃｄｅｆｇｈｉｊｋｌｍｎｏｐｑｒｓｔｕｖｗｘｙｚ｛｜｝～"_cp932;

constexpr std::string_view kKana = u8"｡｢｣､･ｦｧｨｩｪｫｬｭｮｯｰｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜﾝﾞﾟ"_cp932;
constexpr std::string_view kKanaFull =
    u8"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン゛゜"_cp932;

constexpr std::string_view kVoiceable = u8"ｳｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾊﾋﾌﾍﾎ"_cp932;
constexpr std::string_view kVoicedFull = u8"ヴガギグゲゴザジズゼゾダヂヅデドバビブベボ"_cp932;

constexpr std::string_view kSemiVoiceable = u8"ﾊﾋﾌﾍﾎ"_cp932;
constexpr std::string_view kSemiVoicedFull = u8"パピプペポ"_cp932;

constexpr char kVoicedMark = u8"ﾞ"_cp932[0];
constexpr char kSemiVoicedMark = u8"ﾟ"_cp932[0];

static_assert(kAsciiFull.size() == std::size_t{2} * (0x7F - 0x20));
static_assert(kKanaFull.size() == 2 * kKana.size());
static_assert(kVoicedFull.size() == 2 * kVoiceable.size());
static_assert(kSemiVoicedFull.size() == 2 * kSemiVoiceable.size());

/// The full-width partner of a half-width character in a pair of lines; empty when it is not among them.
constexpr std::string_view Partner(std::string_view half, std::string_view full, char byte) {
  const std::size_t at = half.find(byte);
  return at == std::string_view::npos ? std::string_view() : full.substr(2 * at, 2);
}

constexpr std::string_view FullWidth(char byte) {
  if (byte >= ' ' && byte <= '~') return kAsciiFull.substr(2 * static_cast<std::size_t>(byte - ' '), 2);
  return Partner(kKana, kKanaFull, byte);
}

constexpr std::string_view FullWidthWithMark(char byte, char mark) {
  if (mark == kVoicedMark) return Partner(kVoiceable, kVoicedFull, byte);
  if (mark == kSemiVoicedMark) return Partner(kSemiVoiceable, kSemiVoicedFull, byte);
  return {};
}

}  // namespace

CString SilString::HanToZen(std::string_view text) {
  std::string full;
  full.reserve(2 * text.size());
  for (std::size_t at = 0; at < text.size();) {
    std::size_t length = code_page_932::CharacterLength(text, at);
    std::string_view replacement;
    if (length == 1 && code_page_932::IsLeadByte(code_page_932::Byte(text, at))) {
      // A broken character, and the byte behind it, which once widened would be taken for its other half.
      length = std::min<std::size_t>(2, text.size() - at);
    } else if (length == 1) {
      if (at + 1 < text.size()) replacement = FullWidthWithMark(text[at], text[at + 1]);
      if (!replacement.empty()) {
        length = 2;
      } else {
        replacement = FullWidth(text[at]);
      }
    }
    full.append(replacement.empty() ? text.substr(at, length) : replacement);
    at += length;
  }
  return CString(full);
}
