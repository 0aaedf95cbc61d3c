#include "vorn/platform/cstring.h"

#include <algorithm>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/exceptions.h"

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

constexpr unsigned char Lower(unsigned char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
}

constexpr unsigned char Upper(unsigned char byte) {
  return byte >= 'a' && byte <= 'z' ? static_cast<unsigned char>(byte - ('a' - 'A')) : byte;
}

using code_page_932::Byte;

template <typename Fold>
void FoldSingleBytes(SmallText& text, Fold fold) {
  const std::string_view bytes = text.View();
  for (std::size_t at = 0, length = 0; at < bytes.size(); at += length) {
    length = code_page_932::CharacterLength(bytes, at);
    if (length == 1) text.data()[at] = static_cast<char>(fold(Byte(bytes, at)));
  }
}

/// A position or count of the interface as an index that is no further than the end.
std::size_t Cut(int position, std::size_t size) {
  return position <= 0 ? 0 : std::min(static_cast<std::size_t>(position), size);
}

std::size_t CheckedIndex(int index, std::size_t size) {
  if (index < 0 || static_cast<std::size_t>(index) >= size) throw CInvalidArgException();
  return static_cast<std::size_t>(index);
}

}  // namespace

char CString::GetAt(int index) const { return View()[CheckedIndex(index, m_text.size())]; }

void CString::SetAt(int index, char byte) { m_text.data()[CheckedIndex(index, m_text.size())] = byte; }

char* CString::GetBufferSetLength(int length) {
  if (length < 0) throw CInvalidArgException();
  return m_text.resize(static_cast<std::size_t>(length));
}

int CString::Compare(std::string_view other) const { return View().compare(other); }

int CString::CompareNoCase(std::string_view other) const {
  const std::string_view text = View();
  const std::size_t common = std::min(text.size(), other.size());
  for (std::size_t at = 0; at < common; ++at) {
    const bool single = code_page_932::CharacterLength(text, at) == 1 && code_page_932::CharacterLength(other, at) == 1;
    const int difference = single ? Lower(Byte(text, at)) - Lower(Byte(other, at)) : Byte(text, at) - Byte(other, at);
    if (difference != 0) return difference;
    if (single || ++at == common) continue;
    if (const int trail = Byte(text, at) - Byte(other, at); trail != 0) return trail;
  }
  return text.size() == other.size() ? 0 : text.size() < other.size() ? -1 : 1;
}

int CString::Find(std::string_view part, int start) const {
  const std::string_view text = View();
  if (start < 0 || static_cast<std::size_t>(start) > text.size()) return -1;
  // The last place that is known to begin a character goes along with the matches: one pass, whatever the text.
  std::size_t boundary = 0;
  bool boundaryKnown = false;
  for (std::size_t at = text.find(part, static_cast<std::size_t>(start)); at != std::string_view::npos;
       at = text.find(part, at + 1)) {
    if (!boundaryKnown) {
      boundary = code_page_932::IsCharacterStart(text, at) ? at : at + 1;
      boundaryKnown = true;
    }
    while (boundary < at) boundary += code_page_932::CharacterLength(text, boundary);
    if (boundary == at) return static_cast<int>(at);
  }
  return -1;
}

int CString::ReverseFind(char byte) const {
  const std::string_view text = View();
  std::size_t found = std::string_view::npos;
  for (std::size_t at = 0, length = 0; at < text.size(); at += length) {
    length = code_page_932::CharacterLength(text, at);
    if (length == 1 && text[at] == byte) found = at;
  }
  return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

CString CString::Left(int count) const { return View().substr(0, Cut(count, m_text.size())); }

CString CString::Right(int count) const { return View().substr(m_text.size() - Cut(count, m_text.size())); }

CString CString::Mid(int first) const { return View().substr(Cut(first, m_text.size())); }

CString CString::Mid(int first, int count) const {
  return View().substr(Cut(first, m_text.size()), Cut(count, m_text.size()));
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::TrimLeft() {
  m_text.assign(View().substr(std::min(View().find_first_not_of(kWhiteSpace), m_text.size())));
  return *this;
}

CString& CString::TrimRight() {
  // White space is no trail byte, so looking at bytes is enough.
  m_text.truncate(View().find_last_not_of(kWhiteSpace) + 1);
  return *this;
}

CString& CString::MakeUpper() {
  FoldSingleBytes(m_text, Upper);
  return *this;
}

CString& CString::MakeLower() {
  FoldSingleBytes(m_text, Lower);
  return *this;
}
