#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/xml_tree.h"

namespace test_support {

/// A run of elements that a host hands out in parts.
class PartedRun {
 public:
  /// The elements of each part, as text.
  explicit PartedRun(const std::vector<std::string>& parts) {
    std::string content;
    for (const std::string& part : parts) {
      content += part;
      m_parts.push_back(XmlTree::Parse("<root>" + part + "</root>"));
    }
    m_whole = XmlTree::Parse("<root>" + content + "</root>");
  }

  /// A cursor on the first element, which hands out the last part first.
  class Cursor : public XmlTreeCursor {
   public:
    explicit Cursor(PartedRun& run) : XmlTreeCursor(run.m_whole), m_parts(run.m_parts) { Child(); }

    [[nodiscard]] int CountParts() const override { return static_cast<int>(m_parts.size()); }
    void ReadParts(PartReader read) override {
      if (CountParts() < 2) throw std::logic_error("one part is no parts");
      for (int part = CountParts() - 1; part >= 0; --part) {
        XmlTreeCursor cursor(m_parts[static_cast<std::size_t>(part)]);
        cursor.Child();
        read(part, cursor);
      }
      while (NextSibling()) continue;
    }

   private:
    std::vector<XmlTree>& m_parts;
  };

 private:
  XmlTree m_whole;
  std::vector<XmlTree> m_parts;
};

}  // namespace test_support
