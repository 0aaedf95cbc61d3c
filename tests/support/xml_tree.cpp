#include "tests/support/xml_tree.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace test_support {
namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";

struct Entity {
  char byte;
  std::string_view text;
};
constexpr std::array kEntities = {Entity{'&', "&amp;"}, Entity{'<', "&lt;"}, Entity{'>', "&gt;"}, Entity{'"', "&quot;"},
                                  Entity{'\'', "&apos;"}};

// No byte that XML gives a meaning to is the second byte of a character in code page 932: bytes can be looked at
// singly here.
class Parser {
 public:
  explicit Parser(std::string_view xml) : m_rest(xml) {}

  XmlTree Document() {
    SkipMisc();
    Expect("<");
    XmlTree tree{Name()};
    RestOfElement(tree.Root());
    SkipMisc();
    if (!m_rest.empty()) Fail("text behind the root");
    return tree;
  }

 private:
  [[noreturn]] void Fail(const std::string& reason) const {
    throw std::invalid_argument("no XML: " + reason + " at \"" + std::string(m_rest.substr(0, 40)) + '"');
  }

  bool Take(std::string_view expected) {
    if (!m_rest.starts_with(expected)) return false;
    m_rest.remove_prefix(expected.size());
    return true;
  }

  void Expect(std::string_view expected) {
    if (!Take(expected)) Fail("no " + std::string(expected));
  }

  /// Cuts off and returns what stands before the first of the bytes, which has to be there.
  std::string_view TakeBefore(std::string_view bytes) {
    const std::size_t at = m_rest.find_first_of(bytes);
    if (at == std::string_view::npos) Fail("unexpected end");
    const std::string_view taken = m_rest.substr(0, at);
    m_rest.remove_prefix(at);
    return taken;
  }

  bool SkipSpace() {
    const std::size_t size = m_rest.size();
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kWhiteSpace), size));
    return m_rest.size() < size;
  }

  bool SkipUntil(std::string_view end) {
    const std::size_t at = m_rest.find(end);
    if (at == std::string_view::npos) Fail("no " + std::string(end));
    m_rest.remove_prefix(at + end.size());
    return true;
  }

  bool SkipComment() { return Take("<!--") && SkipUntil("-->"); }
  bool SkipDeclaration() { return Take("<?") && SkipUntil("?>"); }

  void SkipMisc() {
    while (SkipSpace() || SkipComment() || SkipDeclaration()) continue;
  }

  std::string_view Name() {
    const std::string_view name = TakeBefore(" \t\r\n=/><\"'");
    if (name.empty()) Fail("no name");
    return name;
  }

  std::string Unescaped(std::string_view raw) const {
    std::string text;
    while (!raw.empty()) {
      if (raw.front() != '&') {
        text += raw.front();
        raw.remove_prefix(1);
        continue;
      }
      const auto entity =
          std::find_if(kEntities.begin(), kEntities.end(), [&](const Entity& e) { return raw.starts_with(e.text); });
      if (entity == kEntities.end()) Fail("unknown entity in " + std::string(raw));
      text += entity->byte;
      raw.remove_prefix(entity->text.size());
    }
    return text;
  }

  void Attribute(XmlElement& element) {
    const std::string_view name = Name();
    Expect("=");
    const std::string_view quote = m_rest.starts_with('\'') ? "'" : "\"";
    Expect(quote);
    element.attributes.emplace_back(name, Unescaped(TakeBefore(quote)));
    Expect(quote);
  }

  /// What follows the tag of a start tag, up to the end of the element.
  void RestOfElement(XmlElement& element) {
    SkipSpace();
    while (!m_rest.starts_with('>') && !m_rest.starts_with('/')) {
      Attribute(element);
      SkipSpace();
    }
    if (Take("/>")) return;
    Expect(">");
    Content(element);
    if (Name() != element.tag) Fail("wrong end tag of " + element.tag);
    SkipSpace();
    Expect(">");
  }

  /// Children and text, up to and including the "</" of the end tag.
  void Content(XmlElement& element) {
    while (true) {
      const std::string_view text = TakeBefore("<");
      if (text.find_first_not_of(kWhiteSpace) != std::string_view::npos) element.text += Unescaped(text);
      if (SkipComment()) continue;
      if (Take("</")) return;
      Expect("<");
      RestOfElement(element.Append(Name()));
    }
  }

  std::string_view m_rest;
};

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char byte : text) {
    const auto entity = std::find_if(kEntities.begin(), kEntities.end(),
                                     [&](const Entity& e) { return e.byte == byte && byte != '\''; });
    if (entity == kEntities.end()) {
      escaped += byte;
    } else {
      escaped += entity->text;
    }
  }
  return escaped;
}

void PrintElement(const XmlElement& element, std::size_t indent, bool withNamespaces, std::string& out) {
  const auto attribute = [&out](std::string_view name, std::string_view value) {
    out.append(" ").append(name).append("=\"").append(Escaped(value)).append("\"");
  };
  out.append(indent, ' ').append("<").append(element.tag);
  if (withNamespaces && element.namespaceUri) attribute("xmlns", *element.namespaceUri);
  for (const auto& [name, value] : element.attributes) attribute(name, value);
  if (element.text.empty() && element.children.empty()) {
    out += "/>\n";
    return;
  }
  out.append(">").append(Escaped(element.text));
  if (!element.children.empty()) {
    out += '\n';
    for (const auto& child : element.children) PrintElement(*child, indent + 2, withNamespaces, out);
    out.append(indent, ' ');
  }
  out.append("</").append(element.tag).append(">\n");
}

}  // namespace

XmlElement& XmlElement::Append(std::string_view name) {
  return *children.emplace_back(std::make_unique<XmlElement>(name, this));
}

XmlTree XmlTree::Parse(std::string_view xml) { return Parser(xml).Document(); }

std::string XmlTree::Print() const {
  std::string out;
  PrintElement(*m_root, 0, false, out);
  return out;
}

std::string XmlTree::PrintWithNamespaces() const {
  std::string out;
  PrintElement(*m_root, 0, true, out);
  return out;
}

std::string XmlTree::PrintContent() const {
  std::string out;
  for (const auto& child : m_root->children) PrintElement(*child, 0, false, out);
  return out;
}

bool XmlTreeCursor::MoveTo(XmlElement* element) {
  if (!Begin() || element == nullptr) return false;
  m_current = element;
  return true;
}

XmlElement* XmlTreeCursor::Sibling(int step) const {
  if (m_current->parent == nullptr) return nullptr;
  const auto& siblings = m_current->parent->children;
  const auto own =
      std::find_if(siblings.begin(), siblings.end(), [this](const auto& s) { return s.get() == m_current; });
  const auto wanted = own - siblings.begin() + step;
  if (wanted < 0 || wanted >= siblings.end() - siblings.begin()) return nullptr;
  return siblings[static_cast<std::size_t>(wanted)].get();
}

bool XmlTreeCursor::Child() {
  return MoveTo(m_current->children.empty() ? nullptr : m_current->children.front().get());
}

bool XmlTreeCursor::NextSibling() { return MoveTo(Sibling(1)); }

bool XmlTreeCursor::PrevSibling() { return MoveTo(Sibling(-1)); }

bool XmlTreeCursor::Parent() { return MoveTo(m_current->parent); }

bool XmlTreeCursor::GetTagName(CString& tag) const {
  if (!Begin()) return false;
  tag = std::string_view(m_current->tag);
  return true;
}

bool XmlTreeCursor::GetText(CString& text) const {
  if (!Begin() || m_current->text.empty()) return false;
  text = std::string_view(m_current->text);
  return true;
}

bool XmlTreeCursor::GetAttributes(CArray<PimAttribute>& attributes) const {
  if (!Begin()) return false;
  attributes.RemoveAll();
  for (const auto& [name, value] : m_current->attributes) {
    attributes.Add(PimAttribute(name.c_str(), value.c_str()));
  }
  return true;
}

bool XmlTreeCursor::InsertChild(const char* tag, const char* namespaceUri) {
  if (!Begin()) return false;
  m_current = &m_current->Append(tag);
  if (namespaceUri != nullptr) m_current->namespaceUri = namespaceUri;
  return true;
}

bool XmlTreeCursor::SetText(std::string_view text) {
  if (!Begin()) return false;
  m_current->text = text;
  return true;
}

bool XmlTreeCursor::SetTextAttribute(const char* name, std::string_view value) {
  if (!Begin()) return false;
  auto& attributes = m_current->attributes;
  const auto found = std::find_if(attributes.begin(), attributes.end(), [&](const auto& a) { return a.first == name; });
  if (found == attributes.end()) {
    attributes.emplace_back(name, value);
  } else {
    found->second = value;
  }
  return true;
}

}  // namespace test_support
