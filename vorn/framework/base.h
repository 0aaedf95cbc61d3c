#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/platform/carray.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/nur_mrm.h"
#include "vorn/platform/nur_real.h"
#include "vorn/platform/ole_date_time.h"
#include "vorn/platform/pim_iterator.h"

class CArchive;

/// Which kind of document the XML layer works on, for all elements alike.
enum class VORN_DataKind : std::int32_t {
  FormControl = 0,
  /// A road-geometry document: "rgm:" prefixes are stripped, elements are made without a namespace and a flagged
  /// integer zero is written as "-0".
  RoadGeometry = 1,
};

/// The tag of an element. Only a literal makes one: an element then carries a pointer to it instead of the text, which
/// a model of a million elements notices.
class VornTagName {
 public:
  constexpr VornTagName() = default;
  /// Takes a literal only.
  consteval VornTagName(const char* literal) : m_text(literal) {}  // NOLINT(google-explicit-constructor)

  /// The tag as text.
  [[nodiscard]] constexpr std::string_view View() const { return m_text; }

 private:
  const char* m_text = "";
};

/// Root class of every XML element: owns the element's tag, and gives derived classes the whole vocabulary with which
/// they walk, read and write the document through a cursor. Every operation reports failure by its bool alone.
class Vorn_Base {
 public:
  virtual ~Vorn_Base() = default;

  /// Writes the element below the cursor's element and comes back to it. The root writes nothing.
  virtual bool toXML(PimIterator*) { return true; }
  /// Reads the element that the cursor stands on; false, and nothing changed, when it has another tag. What the cursor
  /// throws, and a lack of memory, leave this element with what was read so far: read into a new one.
  virtual bool fromXML(PimIterator*) { return true; }
  /// Whether the element holds enough to be valid.
  [[nodiscard]] virtual bool IsEnable() const { return true; }
  /// The qualified tag, for example "tsf:FileInfo".
  [[nodiscard]] virtual CString tagName() const { return m_tagName.View(); }

  /// The data kind of all elements. The host sets it; the library only reads it.
  static VORN_DataKind m_staticDataKind;
  /// Whether the data kind is road geometry.
  [[nodiscard]] static bool IsRoadGeometry() { return m_staticDataKind == VORN_DataKind::RoadGeometry; }

  /// To the first child element; true when the cursor moved.
  static bool GoChild(PimIterator* cursor) { return cursor->Child(); }
  /// To the next sibling element; true when the cursor moved.
  static bool GoNextSibling(PimIterator* cursor) { return cursor->NextSibling(); }
  /// To the previous sibling element; true when the cursor moved.
  static bool GoPrevSibling(PimIterator* cursor) { return cursor->PrevSibling(); }
  /// Back to the parent element; true when the cursor moved.
  static bool ReturnParent(PimIterator* cursor) { return cursor->Parent(); }
  /// The current element's tag as the document writes it, prefix included.
  static bool QueryTagName(const PimIterator* cursor, CString& tag) { return cursor->GetTagName(tag); }

  // Tag tests: exact and case-sensitive, by bytes.
  /// Whether a name of a document is this element's tag, or the given one, but for the "rgm:" of road geometry.
  [[nodiscard]] bool IsMatchTagName(std::string_view name) const { return IsMatchTagName(name, m_tagName.View()); }
  [[nodiscard]] static bool IsMatchTagName(std::string_view name, std::string_view tag) { return DelRgm(tag) == name; }
  /// The text without a leading "rgm:" in a road-geometry document; otherwise the text as it is.
  [[nodiscard]] static std::string_view DelRgm(std::string_view text) {
    constexpr std::string_view kPrefix = "rgm:";
    if (IsRoadGeometry() && text.starts_with(kPrefix)) text.remove_prefix(kPrefix.size());
    return text;
  }

  /// Inserts a child element under the current one and moves onto it; in a road-geometry document without a "rgm:"
  /// prefix and without a namespace.
  static bool MakeChild(PimIterator* cursor, std::string_view tag, const char* namespaceUri);
  /// Sets a text attribute.
  static bool AddAttr(PimIterator* cursor, const char* name, std::string_view value);
  /// Sets a real with exactly that many decimal places, rounded half away from zero; unset is written empty.
  static bool AddAttr(PimIterator* cursor, const char* name, double value, KelMrmFigure places);
  /// Sets a decimal integer; unset is written empty. With the flag, a zero of a road-geometry document is written as
  /// "-0": it belongs to the negative side.
  static bool AddAttr(PimIterator* cursor, const char* name, NurLong value, bool negativeZero);
  /// Sets a date-time as "%Y-%m-%dT%H:%M:%S"; a null or invalid one is written empty, not left out.
  static bool AddAttr(PimIterator* cursor, const char* name, const COleDateTime& value);
  /// Sets the text content.
  static bool SetValue(PimIterator* cursor, std::string_view text) { return cursor->SetText(text); }
  /// Sets the text content to the date alone, "%Y-%m-%d", empty unless valid. `QueryValue` reads the form with the
  /// time part and takes a bare date for 30 December 1899: the two forms differ on purpose.
  static bool SetValue(PimIterator* cursor, const COleDateTime& value);

  /// The current element's text; without any, the output is emptied and the result false.
  static bool QueryValue(const PimIterator* cursor, CString& text);
  /// The current element's text as a date-time; without any, false and the output untouched.
  static bool QueryValue(const PimIterator* cursor, COleDateTime& value);
  /// The named attribute, emptied and false when there is none. Attribute names keep their prefix.
  static bool QueryAttr(const PimIterator* cursor, const char* name, CString& value);
  /// The named attribute as a real, unset and false when there is none.
  static bool QueryAttr(const PimIterator* cursor, const char* name, double& value);
  /// The named attribute as an integer, unset and false when there is none.
  static bool QueryAttr(const PimIterator* cursor, const char* name, NurLong& value);
  /// The named attribute as a date-time; when there is none, false and the output untouched.
  static bool QueryAttr(const PimIterator* cursor, const char* name, COleDateTime& value);

  /// Text to real: empty gives unset, otherwise the leading decimal number.
  [[nodiscard]] static double TurnReal(std::string_view text);
  /// Text to integer: empty gives unset, otherwise the leading decimal integer.
  [[nodiscard]] static std::int32_t TurnInt(std::string_view text);
  /// Text "year-month-dayThour:minute:second" to a date-time. A text that stops short of its seconds, a bare date
  /// included, gives 30 December 1899 marked valid; six numbers that are no date give one marked invalid.
  [[nodiscard]] static COleDateTime TurnDate(std::string_view text);

  /// Splits at single blanks, handing out every item. A run of blanks between two items yields exactly one empty
  /// item, a leading blank one leading empty item, a single trailing blank nothing: a value that was unset when the
  /// text was written keeps its place that way.
  template <typename Sink>
  static void ForEachDivided(std::string_view text, Sink&& sink);
  /// As `ForEachDivided`, into an array that is emptied first.
  static void DivideString(std::string_view text, CStringArray& items);

 protected:
  Vorn_Base() = default;
  /// An element with that tag.
  explicit Vorn_Base(VornTagName tag) : m_tagName(tag) {}
  Vorn_Base(const Vorn_Base&) = default;
  Vorn_Base(Vorn_Base&&) noexcept = default;
  Vorn_Base& operator=(const Vorn_Base&) = default;
  Vorn_Base& operator=(Vorn_Base&&) noexcept = default;

  /// Takes the first two values of a text; what is missing stays as it was.
  static void ReadTwoReals(std::string_view text, NurReal& first, NurReal& second);

  /// All attributes of the current element in document order; on failure emptied and false.
  static bool QueryNamedAttrs(const PimIterator* cursor, CArray<PimAttribute>& attributes);
  /// The value of the first attribute whose name equals the given one exactly; false when there is none.
  static bool QueryNamedAttr(const PimIterator* cursor, const char* name, CString& value);

  /// Whether the cursor stands on an element with this element's tag.
  bool IsOnOwnTag(const PimIterator* cursor) const;
  /// Whether the cursor stands on an element that matches a collection's tag.
  static bool IsOnTag(const PimIterator* cursor, std::string_view tag);

  /// Calls `read` on every child element in order and returns to this element. A false result of `read` ends the
  /// walk where it is. An element without children is read well.
  template <typename Read>
  static bool ForEachChild(PimIterator* cursor, Read&& read);

  /// The qualified tag; empty for an element that has none.
  VornTagName m_tagName;
};

template <typename Sink>
void Vorn_Base::ForEachDivided(std::string_view text, Sink&& sink) {
  bool emptyItemAllowed = true;
  while (!text.empty()) {
    const std::size_t blank = text.find(' ');
    if (blank == 0) {
      if (emptyItemAllowed) sink(std::string_view());
      emptyItemAllowed = false;
      text.remove_prefix(1);
      continue;
    }
    sink(text.substr(0, blank));
    emptyItemAllowed = true;
    text.remove_prefix(blank == std::string_view::npos ? text.size() : blank + 1);
  }
}

template <typename Read>
bool Vorn_Base::ForEachChild(PimIterator* cursor, Read&& read) {
  if (!GoChild(cursor)) return true;
  do {
    if (!read()) return false;
  } while (GoNextSibling(cursor));
  ReturnParent(cursor);
  return true;
}
