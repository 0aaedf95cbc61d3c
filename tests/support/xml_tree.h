#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vorn/framework/base.h"
#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"
#include "vorn/platform/pim_iterator.h"

namespace test_support {

/// One element of an `XmlTree`. Texts are bytes in code page 932.
struct XmlElement {
  explicit XmlElement(std::string_view name, XmlElement* owner = nullptr) : tag(name), parent(owner) {}

  XmlElement& Append(std::string_view name);

  std::string tag;
  std::optional<std::string> namespaceUri;  ///< as handed to the cursor; none when the element came from a text
  std::vector<std::pair<std::string, std::string>> attributes;
  std::string text;
  std::vector<std::unique_ptr<XmlElement>> children;
  XmlElement* parent;
};

/// A small XML document in memory: enough of one for the library to be read from and written to.
class XmlTree {
 public:
  /// A document that holds nothing but its root.
  explicit XmlTree(std::string_view rootTag = "root") : m_root(std::make_unique<XmlElement>(rootTag)) {}

  /// The document of a text: elements, attributes, text, the predefined entities, comments. White space alone
  /// is no text. Anything else throws `std::invalid_argument`.
  static XmlTree Parse(std::string_view xml);

  [[nodiscard]] XmlElement& Root() { return *m_root; }
  [[nodiscard]] const XmlElement& Root() const { return *m_root; }

  /// One element a line, two blanks deeper than its parent, attributes in order, text behind the start tag.
  [[nodiscard]] std::string Print() const;
  /// As `Print`, with the namespace of an inserted element as its first attribute, "xmlns".
  [[nodiscard]] std::string PrintWithNamespaces() const;
  /// As `Print`, without the root around it.
  [[nodiscard]] std::string PrintContent() const;

 private:
  std::unique_ptr<XmlElement> m_root;
};

/// A cursor with the plain operations only, so that the library's default visits run over it. It counts operations
/// and can let any one of them fail.
class XmlTreeCursor : public PimIterator {
 public:
  /// Stands on the root.
  explicit XmlTreeCursor(XmlTree& tree) : m_tree(tree), m_current(&tree.Root()) {}

  /// The n-th operation from now fails without doing anything (1: the next one); those after it work again.
  void FailAfter(int n) { m_failing = m_operations + n; }
  /// The number of operations so far, failed ones included.
  [[nodiscard]] int Operations() const { return m_operations; }
  /// The element the cursor stands on.
  [[nodiscard]] const XmlElement& Current() const { return *m_current; }
  [[nodiscard]] bool IsOnRoot() const { return m_current == &m_tree.Root(); }

  bool Child() override;
  bool NextSibling() override;
  bool PrevSibling() override;
  bool Parent() override;
  bool GetTagName(CString& tag) const override;
  bool GetText(CString& text) const override;
  bool GetAttributes(CArray<PimAttribute>& attributes) const override;
  bool InsertChild(const char* tag, const char* namespaceUri) override;
  bool SetText(std::string_view text) override;
  bool SetTextAttribute(const char* name, std::string_view value) override;

 private:
  /// Counts an operation; false when it is the one that has to fail.
  bool Begin() const { return ++m_operations != m_failing; }
  bool MoveTo(XmlElement* element);
  [[nodiscard]] XmlElement* Sibling(int step) const;

  XmlTree& m_tree;
  XmlElement* m_current;
  mutable int m_operations = 0;
  int m_failing = 0;
};

/// What the element writes, as `XmlTree::Print` prints it; empty when it writes nothing. A writer that fails, or that
/// does not come back to the element it started from, throws `std::logic_error`.
template <typename Element>
std::string WriteXml(Element& element) {
  XmlTree tree;
  XmlTreeCursor cursor(tree);
  if (!element.toXML(&cursor)) throw std::logic_error("toXML gave false");
  if (!cursor.IsOnRoot()) throw std::logic_error("toXML left the cursor on " + cursor.Current().tag);
  return tree.PrintContent();
}

/// Reads the element from the root of the text.
template <typename Element>
bool ReadXml(Element& element, std::string_view xml) {
  XmlTree tree = XmlTree::Parse(xml);
  XmlTreeCursor cursor(tree);
  return element.fromXML(&cursor);
}

/// Lets each cursor operation of `element.toXML` fail in turn. Gives the numbers (from 1) of those after which the
/// writer carried on or reported success: none of them, when the writer is right. An element that performs no
/// operation at all gives {0}, as nothing was tested then.
template <typename Element>
std::vector<int> WriteFailuresOverlooked(Element& element) {
  XmlTree whole;
  XmlTreeCursor counting(whole);
  if (!element.toXML(&counting)) throw std::logic_error("toXML gave false");
  if (counting.Operations() == 0) return {0};

  std::vector<int> overlooked;
  for (int n = 1; n <= counting.Operations(); ++n) {
    XmlTree tree;
    XmlTreeCursor cursor(tree);
    cursor.FailAfter(n);
    if (element.toXML(&cursor) || cursor.Operations() != n) overlooked.push_back(n);
  }
  return overlooked;
}

/// Selects a schema edition, with the decimal places that go with it, for a scope; puts back the edition, the decimal
/// places and the data kind as they were before.
class EditionScope {
 public:
  explicit EditionScope(VornSchema::Version version, int kind = VornSchema::KindTsf) { Select(version, kind); }
  EditionScope(const EditionScope&) = delete;
  EditionScope& operator=(const EditionScope&) = delete;
  ~EditionScope() {
    VornSchema::Instance() = m_schema;
    VornNumericalPrecision::GetInstance() = m_precision;
    Vorn_Base::m_staticDataKind = m_dataKind;
  }

  /// Goes on with another edition inside the same scope.
  void Select(VornSchema::Version version, int kind = VornSchema::KindTsf) {
    VornSchema::Instance().SetVersion(version);
    VornSchema::Instance().Kind(kind);
    VornNumericalPrecision::GetInstance().SetDecimalPlace();
  }

 private:
  VornSchema m_schema = VornSchema::Instance();
  VornNumericalPrecision m_precision = VornNumericalPrecision::GetInstance();
  VORN_DataKind m_dataKind = Vorn_Base::m_staticDataKind;
};

}  // namespace test_support
