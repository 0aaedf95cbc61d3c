#pragma once

#include <string_view>

#include "vorn/platform/carray.h"
#include "vorn/platform/function_ref.h"

/// One attribute of an XML element: name and value.
class PimAttribute {
 public:
  PimAttribute() = default;
  /// An attribute of that name and value.
  PimAttribute(const char* name, const char* value) : m_name(name), m_value(value) {}
  PimAttribute(const PimAttribute&) = default;
  PimAttribute(PimAttribute&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  PimAttribute& operator=(const PimAttribute& other) { return *this = PimAttribute(other); }
  PimAttribute& operator=(PimAttribute&&) noexcept = default;

  /// The qualified name, prefix included.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  /// The value.
  [[nodiscard]] const CString& GetValue() const { return m_value; }

 private:
  CString m_name;
  CString m_value;
};

/// A cursor on an XML document, opened by the host; it always stands on one element. Every text is in code page 932.
///
/// A host implements the plain operations over its own XML tree. The `Visit` operations, `CountRun` and the reading of
/// a run in parts are an optional faster path: their defaults go through the plain operations, or do without.
class PimIterator {
 public:
  virtual ~PimIterator() = default;

  /// Moves to the first child element; false when there is none, and the cursor stays.
  virtual bool Child() = 0;
  /// Moves to the next sibling element; false at the end, and the cursor stays.
  virtual bool NextSibling() = 0;
  /// Moves to the previous sibling element; false at the beginning, and the cursor stays.
  virtual bool PrevSibling() = 0;
  /// Moves to the parent element; false on the document's root, and the cursor stays.
  virtual bool Parent() = 0;

  /// The qualified tag of the current element, prefix included.
  virtual bool GetTagName(CString& tag) const = 0;
  /// The text content of the current element; false when it has none.
  virtual bool GetText(CString& text) const = 0;
  /// All attributes of the current element, in document order.
  virtual bool GetAttributes(CArray<PimAttribute>& attributes) const = 0;

  /// Appends a new child element behind the existing children and moves onto it.
  /// @param namespaceUri the namespace of the tag's prefix, or null for none
  virtual bool InsertChild(const char* tag, const char* namespaceUri) = 0;
  /// Sets the text content of the current element.
  virtual bool SetText(std::string_view text) = 0;
  /// Adds or replaces an attribute.
  virtual bool SetTextAttribute(const char* name, std::string_view value) = 0;

  /// How many sibling elements there are from the current one on that have its tag, itself included: collections make
  /// room for them at once. 0 when the host does not count them.
  [[nodiscard]] virtual int CountRun() const { return 0; }

  /// Reads one part of a run through a cursor of its own.
  using PartReader = FunctionRef<void(int part, PimIterator& cursor)>;

  /// In how many parts the host lets the run of `CountRun` be read at the same time; 1 when it has no threads for it.
  [[nodiscard]] virtual int CountParts() const { return 1; }
  /// Calls `read` once for every part of the run, in several threads at once and in any order. Each part has a cursor
  /// of its own, which stands on the first element of the part and finds no sibling behind its last. Parts are numbered
  /// from 0 in document order. Afterwards this cursor stands on the last element of the run. What `read` throws
  /// reaches the caller when no part is being read any more.
  virtual void ReadParts(PartReader) {}

  /// Is handed a tag or a text.
  using TextVisitor = FunctionRef<void(std::string_view text)>;
  /// Is handed the name and the value of an attribute.
  using AttributeVisitor = FunctionRef<void(std::string_view name, std::string_view value)>;

  /// Hands the tag to the visitor; the view is valid during the call only.
  virtual bool VisitTagName(TextVisitor visit) const {
    CString tag;
    if (!GetTagName(tag)) return false;
    visit(tag.View());
    return true;
  }
  /// Hands the text content to the visitor, as `GetText`.
  virtual bool VisitText(TextVisitor visit) const {
    CString text;
    if (!GetText(text)) return false;
    visit(text.View());
    return true;
  }
  /// Hands every attribute to the visitor, in document order.
  virtual bool VisitAttributes(AttributeVisitor visit) const {
    CArray<PimAttribute> attributes;
    if (!GetAttributes(attributes)) return false;
    for (const PimAttribute& attribute : attributes) visit(attribute.GetName().View(), attribute.GetValue().View());
    return true;
  }
};
