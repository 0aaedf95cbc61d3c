#include "host/settings/settings_nesting.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/settings/settings_store.h"

namespace vorn_host {

namespace {

/// The first byte behind a string, given its opening quote. One that is not closed ends with its line or with the text.
std::size_t StringEnd(std::string_view text, std::size_t begin) {
  const char quote = text[begin];
  const std::string threeQuotes(3, quote);
  const bool isMultiLine = text.substr(begin).starts_with(threeQuotes);
  const std::string_view closing = std::string_view(threeQuotes).substr(isMultiLine ? 0 : 2);
  std::size_t at = begin + closing.size();
  while (at < text.size() && !text.substr(at).starts_with(closing)) {
    if (!isMultiLine && text[at] == '\n') return at;
    at += quote == '"' && text[at] == '\\' ? 2 : 1;
  }
  at = std::min(at + closing.size(), text.size());
  // Up to two quotes may be the string's own, right before those that close it.
  for (int own = 0; isMultiLine && own < 2 && at < text.size() && text[at] == quote; ++own) ++at;
  return at;
}

/// Counts the names that lie within each other, byte by byte of what is neither string nor comment.
class NameCount {
 public:
  void Take(char byte) {
    switch (byte) {
      case '.':
        ++m_count;
        break;
      case '{':
        m_outer.push_back(++m_count);
        break;
      case '[':
        m_outer.push_back(m_count);
        break;
      case ']':
      case '}':
        if (!m_outer.empty()) m_outer.pop_back();
        m_count = Outer();
        break;
      case ',':
        m_count = Outer();
        break;
      case '\n':
        if (m_outer.empty()) m_count = 0;
        break;
      default:
        break;
    }
  }

  /// How many names the present one lies within. The dot of a number counts too.
  [[nodiscard]] std::size_t Count() const { return m_count; }

 private:
  /// The count with which names begin within the innermost open bracket.
  [[nodiscard]] std::size_t Outer() const { return m_outer.empty() ? 0 : m_outer.back(); }

  std::size_t m_count = 0;
  std::vector<std::size_t> m_outer;  ///< by open bracket
};

}  // namespace

std::optional<std::size_t> FindTooManyNames(std::string_view text) {
  NameCount names;
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == '"' || text[at] == '\'') {
      at = StringEnd(text, at);
    } else if (text[at] == '#') {
      at = std::min(text.find('\n', at), text.size());
    } else {
      names.Take(text[at]);
      if (names.Count() > kMostNames) return at;
      ++at;
    }
  }
  return std::nullopt;
}

}  // namespace vorn_host
