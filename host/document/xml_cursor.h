#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "host/document/text_encoding.h"
#include "vorn/platform/pim_iterator.h"

namespace vorn_host {

/// The library's cursor on a pugixml tree. Texts are UTF-8 in the tree and code page 932 for the library; a character
/// that the conversion cannot hold becomes 〓 and is reported.
class XmlCursor : public PimIterator {
 public:
  /// The cursor stands on an element. Its tree and the problems have to outlive the cursor.
  /// @param threads how many threads may read parts of a run at the same time
  XmlCursor(pugi::xml_node element, TextProblems& problems, int threads = 1);

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
  [[nodiscard]] int CountRun() const override;
  [[nodiscard]] int CountParts() const override;
  void ReadParts(PartReader read) override;
  bool VisitTagName(TextVisitor visit) const override;
  bool VisitText(TextVisitor visit) const override;
  bool VisitAttributes(AttributeVisitor visit) const override;

  /// The element that the cursor stands on.
  [[nodiscard]] pugi::xml_node Element() const { return m_element; }

 private:
  /// Siblings with one tag that follow each other.
  struct Run {
    pugi::xml_node last;
    int count = 0;
  };
  [[nodiscard]] Run RunFromHere() const;
  [[nodiscard]] int PartsOf(const Run& run) const;
  bool MoveTo(pugi::xml_node node);
  [[nodiscard]] pugi::xml_node NextOf(pugi::xml_node element) const;
  [[nodiscard]] std::string_view ToModel(std::string_view utf8, bool report) const;
  [[nodiscard]] std::string_view ToTree(std::string_view cp932) const;
  void DeclareNamespace(std::string_view prefix, std::string_view uri);

  pugi::xml_node m_element;
  pugi::xml_node m_end;  ///< the sibling behind the part of a run that this cursor reads; null for no end
  TextProblems* m_problems;
  int m_threads;
  mutable std::string_view m_tag;  ///< of the element, once it has been asked for
  mutable std::string m_converted;
};

}  // namespace vorn_host
