#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vorn/platform/small_text.h"

/// Text in code page 932, one byte or two bytes a character: the text type of the whole model and its archive.
///
/// A source-compatible subset of the framework's 8-bit string. Positions and lengths count bytes, as there.
/// Comparison is byte-exact; searching and case folding respect double-byte characters: a match never begins
/// inside a character and the second byte of a character is never folded. Conversion to and from UTF-8 is the
/// host's business (`vorn/platform/code_page_932.h`). Where a `const char*` is taken, a null one is an empty text;
/// a `std::string_view` cannot be made of one.
class CString {
 public:
  CString() = default;
  /// A copy of the text.
  CString(const char* text) : m_text(BytesOf(text)) {}  // NOLINT(google-explicit-constructor)
  CString(std::string_view text) : m_text(text) {}      // NOLINT(google-explicit-constructor)
  explicit CString(const std::string& text) : m_text(text) {}
  /// A copy of the first bytes of a text.
  CString(const char* text, int length)
      : m_text(text != nullptr ? std::string_view(text, static_cast<std::size_t>(length)) : std::string_view()) {}

  /// Replaces the text.
  CString& operator=(const char* text) {
    m_text.assign(BytesOf(text));
    return *this;
  }
  CString& operator=(std::string_view text) {
    m_text.assign(text);
    return *this;
  }

  /// The number of bytes.
  [[nodiscard]] int GetLength() const { return static_cast<int>(m_text.size()); }
  /// Whether there is no byte.
  [[nodiscard]] bool IsEmpty() const { return m_text.empty(); }
  /// Removes all bytes.
  void Empty() { m_text.clear(); }

  /// The byte at a position; a position outside the text throws `CInvalidArgException`.
  [[nodiscard]] char GetAt(int index) const;
  /// As `GetAt`.
  char operator[](int index) const { return GetAt(index); }
  /// Replaces the byte at a position; a position outside the text throws `CInvalidArgException`.
  void SetAt(int index, char byte);

  /// Cuts the text or makes it longer, and gives its bytes. Those that are new are to be written before anything else
  /// is asked of it. A negative length throws `CInvalidArgException`; that, like a lack of memory, leaves the text as
  /// it was.
  [[nodiscard]] char* GetBufferSetLength(int length);

  /// The bytes, with a terminator behind them; valid until the text changes.
  [[nodiscard]] const char* GetString() const { return m_text.data(); }
  /// As `GetString`.
  operator const char*() const { return m_text.data(); }  // NOLINT(google-explicit-constructor)
  /// As `View`.
  operator std::string_view() const { return View(); }  // NOLINT(google-explicit-constructor)
  /// The bytes without a copy, valid until the text changes.
  [[nodiscard]] std::string_view View() const { return m_text.View(); }

  /// Appends a text or a byte.
  CString& operator+=(const CString& text) {
    m_text.append(text.View());
    return *this;
  }
  CString& operator+=(const char* text) {
    m_text.append(BytesOf(text));
    return *this;
  }
  CString& operator+=(std::string_view text) {
    m_text.append(text);
    return *this;
  }
  CString& operator+=(char byte) {
    m_text.append(std::string_view(&byte, 1));
    return *this;
  }

  /// Negative, zero or positive, by unsigned bytes.
  [[nodiscard]] int Compare(std::string_view other) const;
  /// As `Compare`, with the letters A to Z (single-byte) folded.
  [[nodiscard]] int CompareNoCase(std::string_view other) const;

  /// Position of the first occurrence at or after start that begins on a character; -1 when there is none.
  [[nodiscard]] int Find(std::string_view part, int start = 0) const;
  [[nodiscard]] int Find(char byte, int start = 0) const { return Find(std::string_view(&byte, 1), start); }
  /// Position of the last occurrence of a single-byte character; -1 when there is none.
  [[nodiscard]] int ReverseFind(char byte) const;

  /// Parts by bytes; a count or position past the end is cut to the end, a negative one counts as 0.
  [[nodiscard]] CString Left(int count) const;
  /// The last bytes.
  [[nodiscard]] CString Right(int count) const;
  /// The bytes from a position on, all or as many as asked for.
  [[nodiscard]] CString Mid(int first) const;
  [[nodiscard]] CString Mid(int first, int count) const;

  /// Removes leading and trailing ASCII white space.
  CString& Trim();
  /// Removes leading ASCII white space.
  CString& TrimLeft();
  /// Removes trailing ASCII white space.
  CString& TrimRight();
  /// Folds the single-byte letters a to z to capitals.
  CString& MakeUpper();
  /// Folds the single-byte letters A to Z to small ones.
  CString& MakeLower();

  /// Whether both are the same bytes.
  friend bool operator==(const CString& a, const CString& b) { return a.View() == b.View(); }
  friend bool operator==(const CString& a, const char* b) { return a.View() == BytesOf(b); }
  friend bool operator==(const CString& a, std::string_view b) { return a.View() == b; }
  /// By unsigned bytes.
  friend bool operator<(const CString& a, const CString& b) { return a.Compare(b.View()) < 0; }
  /// Both texts, one behind the other.
  friend CString operator+(const CString& a, const CString& b) { return Joined(a.View(), b.View()); }
  friend CString operator+(const CString& a, const char* b) { return Joined(a.View(), BytesOf(b)); }
  friend CString operator+(const char* a, const CString& b) { return Joined(BytesOf(a), b.View()); }

 private:
  static std::string_view BytesOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
  }
  static CString Joined(std::string_view a, std::string_view b) {
    CString text(a);
    text += b;
    return text;
  }

  SmallText m_text;
};
