// An application's own XML tree behind the cursor: the library writes existing ground into it and reads it back.

#include <iostream>
#include <list>
#include <map>

#include "vorn/vorn.h"

struct Element {
  std::string tag = {}, text = {};
  std::map<std::string, std::string> attributes = {};
  std::list<Element> children = {};
  Element *parent = nullptr, *previous = nullptr, *next = nullptr;
};

/// Stands on one element. All texts are code page 932, as the library's are.
class TreeCursor : public PimIterator {
 public:
  explicit TreeCursor(Element& root) : m_at(&root) {}

  bool Child() override { return Move(m_at->children.empty() ? nullptr : &m_at->children.front()); }
  bool NextSibling() override { return Move(m_at->next); }
  bool PrevSibling() override { return Move(m_at->previous); }
  bool Parent() override { return Move(m_at->parent); }
  bool GetTagName(CString& tag) const override { return Copy(m_at->tag, tag); }
  bool GetText(CString& text) const override { return !m_at->text.empty() && Copy(m_at->text, text); }
  bool GetAttributes(CArray<PimAttribute>& all) const override {
    all.RemoveAll();
    for (const auto& [name, value] : m_at->attributes) all.Add(PimAttribute(name.c_str(), value.c_str()));
    return true;
  }
  bool InsertChild(const char* tag, const char* /*namespaceUri*/) override {
    Element* last = m_at->children.empty() ? nullptr : &m_at->children.back();
    Element& child = m_at->children.emplace_back(Element{.tag = tag, .parent = m_at, .previous = last});
    if (last != nullptr) last->next = &child;
    return Move(&child);
  }
  bool SetText(std::string_view text) override { return Copy(text, m_at->text); }
  bool SetTextAttribute(const char* name, std::string_view text) override { return Copy(text, m_at->attributes[name]); }

 private:
  static bool Copy(std::string_view from, auto& to) {
    to = from;
    return true;
  }
  bool Move(Element* element) {
    if (element != nullptr) m_at = element;
    return element != nullptr;
  }

  Element* m_at;
};

int main() {
  VornExistingBuildForm ground;
  ground.SetName("ground");
  for (const char* distanceAndHeight : {"-10.0 72.1", "0.0 72.5", "10.0 73.0"}) {
    ground.GetComposedPntArray().AddDefault().GetTextValue(CString(distanceAndHeight));
  }
  VornSchema::Instance().SetVersion(VornSchema::Version41);  // the edition is the process's, and so are its places
  VornNumericalPrecision::GetInstance().SetDecimalPlace();
  Element root;
  TreeCursor cursor(root);
  if (!ground.toXML(&cursor) || !cursor.Child()) return 1;
  for (const Element& point : root.children.front().children) std::cout << point.tag << ": " << point.text << '\n';

  VornExistingBuildForm read;
  std::cout << (read.fromXML(&cursor) ? read.GetComposedPntArray().GetSize() : 0) << " points came back\n";
}
