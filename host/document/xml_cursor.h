#pragma once

#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vorn/platform/pim_iterator.h"

namespace vorn_host {

/// Text that did not go through a conversion, as all cursors on one document collect it.
struct TextProblems {
  struct Problem {
    std::string what;           ///< "é (U+00E9)"
    std::ptrdiff_t offset = 0;  ///< of the element, in the text that was parsed; -1 when there is none
  };

  std::optional<Problem> first;
  std::size_t count = 0;

  void Add(std::string what, std::ptrdiff_t offset) {
    if (!first) first = Problem{std::move(what), offset};
    ++count;
  }
};

/// The library's cursor on a pugixml tree. Texts are UTF-8 in the tree and code page 932 for the library; a character
/// that the conversion cannot hold becomes 〓 and is reported.
class XmlCursor : public PimIterator {
 public:
  /// The cursor stands on an element. Both references have to outlive it.
  XmlCursor(pugi::xml_node element, TextProblems& problems);

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
  bool VisitTagName(TextVisitor visit) const override;
  bool VisitText(TextVisitor visit) const override;
  bool VisitAttributes(AttributeVisitor visit) const override;

  [[nodiscard]] pugi::xml_node Element() const { return m_element; }

 private:
  bool MoveTo(pugi::xml_node node);
  [[nodiscard]] std::string_view ToModel(std::string_view utf8, bool report) const;
  [[nodiscard]] std::string_view ToTree(std::string_view cp932) const;
  void DeclareNamespace(std::string_view prefix, std::string_view uri);
  void RememberDeclarations();

  pugi::xml_node m_element;
  TextProblems* m_problems;
  /// Declarations of the starting element, which every element below it sees.
  std::vector<std::pair<std::string, std::string>> m_declared;
  mutable std::string m_converted;
};

/// The text of an element as content: a line break (or tab) at either end is layout. None when there is no text. A
/// blank stays: it keeps the place of a value that is not set.
[[nodiscard]] std::optional<std::string_view> ElementText(pugi::xml_node element, std::string& joined);

}  // namespace vorn_host
