#include "host/document/xml_cursor.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <future>
#include <utility>
#include <vector>

#include "host/document/background.h"
#include "host/document/element_knowledge.h"
#include "host/document/text_encoding.h"
#include "host/document/xml_nodes.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {

namespace {

/// The next text of an element from a node on, the node included.
pugi::xml_node TextFrom(pugi::xml_node node) {
  while (node && !IsText(node)) node = node.next_sibling();
  return node;
}

bool IsElement(pugi::xml_node node) { return node.type() == pugi::node_element; }

std::string_view PrefixOf(std::string_view tag) {
  const std::size_t colon = tag.find(':');
  return colon == std::string_view::npos ? std::string_view() : tag.substr(0, colon);
}

/// The attribute that declares a prefix: "xmlns:tsf", or "xmlns" for no prefix.
std::string DeclarationName(std::string_view prefix) {
  return prefix.empty() ? std::string("xmlns") : "xmlns:" + std::string(prefix);
}

}  // namespace

XmlCursor::XmlCursor(pugi::xml_node element, TextProblems& problems, int threads)
    : m_element(element), m_problems(&problems), m_threads(threads) {}

// --- moves ---------------------------------------------------------------------------------------------------------

bool XmlCursor::MoveTo(pugi::xml_node node) {
  if (!node) return false;
  m_element = node;
  m_tag = {};
  return true;
}

bool XmlCursor::Child() {
  pugi::xml_node child = m_element.first_child();
  while (child && !IsElement(child)) child = child.next_sibling();
  return MoveTo(child);
}

/// The next sibling element; null at the end.
pugi::xml_node XmlCursor::NextOf(pugi::xml_node element) const {
  pugi::xml_node sibling = element.next_sibling();
  while (sibling && !IsElement(sibling)) sibling = sibling.next_sibling();
  return sibling == m_end ? pugi::xml_node() : sibling;
}

bool XmlCursor::NextSibling() { return MoveTo(NextOf(m_element)); }

bool XmlCursor::PrevSibling() {
  pugi::xml_node sibling = m_element.previous_sibling();
  while (sibling && !IsElement(sibling)) sibling = sibling.previous_sibling();
  return MoveTo(sibling);
}

bool XmlCursor::Parent() {
  const pugi::xml_node parent = m_element.parent();
  return IsElement(parent) && MoveTo(parent);
}

// --- reading -------------------------------------------------------------------------------------------------------

std::string_view XmlCursor::ToModel(std::string_view utf8, bool report) const {
  if (IsAscii(utf8)) return utf8;
  m_converted.clear();
  while (true) {
    const auto done = code_page_932::AppendFromUtf8(utf8, m_converted);
    if (done) return m_converted;
    if (report) m_problems->Add(DescribeCharacter(done.codePoint), m_element.offset_debug());
    m_converted += kGetaMark932;
    utf8.remove_prefix(done.position + done.length);
  }
}

XmlCursor::Run XmlCursor::RunFromHere() const {
  const char* const tag = m_element.name();
  Run run{m_element, 1};
  for (pugi::xml_node next = NextOf(m_element); next && std::strcmp(next.name(), tag) == 0; next = NextOf(next)) {
    run.last = next;
    ++run.count;
  }
  return run;
}

int XmlCursor::PartsOf(const Run& run) const {
  // A part should be worth the move between threads, and there should be enough of them for threads of unlike speed.
  constexpr std::ptrdiff_t kLeastText = std::ptrdiff_t{64} * 1024;
  constexpr std::ptrdiff_t kPartsOfThread = 8;
  const std::ptrdiff_t text = run.last.offset_debug() - m_element.offset_debug();
  return static_cast<int>(std::clamp<std::ptrdiff_t>(std::min<std::ptrdiff_t>(text / kLeastText, run.count), 1,
                                                     m_threads * kPartsOfThread));
}

int XmlCursor::CountRun() const { return RunFromHere().count; }

int XmlCursor::CountParts() const { return m_threads < 2 ? 1 : PartsOf(RunFromHere()); }

void XmlCursor::ReadParts(PartReader read) {
  struct Part {
    pugi::xml_node first;
    pugi::xml_node end;
    TextProblems problems = {};
  };
  std::vector<Part> parts;
  const Run run = RunFromHere();
  const int count = PartsOf(run);
  pugi::xml_node element = m_element;
  for (int part = 0, at = 0; part < count; ++part) {
    const pugi::xml_node first = element;
    const int end = static_cast<int>(static_cast<std::int64_t>(run.count) * (part + 1) / count);
    for (; at < end; ++at) element = NextOf(element);
    parts.push_back({first, element});
  }

  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < parts.size(); i = next++) {
      XmlCursor cursor(parts[i].first, parts[i].problems);
      cursor.m_end = parts[i].end;
      read(static_cast<int>(i), cursor);
    }
  };
  std::vector<std::future<void>> helpers;  // each waits for its thread before it goes, whatever is thrown
  for (int i = 1; i < m_threads; ++i) {
    helpers.push_back(InBackground(work));
  }
  work();
  for (std::future<void>& helper : helpers) helper.get();
  for (Part& part : parts) m_problems->Append(std::move(part.problems));
  MoveTo(run.last);
}

bool XmlCursor::VisitTagName(TextVisitor visit) const {
  // Whether it is the tag looked for is asked several times of each element.
  if (m_tag.data() == nullptr) m_tag = m_element.name();
  visit(m_tag);
  return true;
}

bool XmlCursor::VisitText(TextVisitor visit) const {
  std::string joined;
  const auto text = ElementText(m_element, joined);
  if (text) visit(ToModel(*text, true));
  return text.has_value();
}

bool XmlCursor::VisitAttributes(AttributeVisitor visit) const {
  for (pugi::xml_attribute attribute = m_element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    const std::string_view name = attribute.name();
    const std::string_view value = attribute.value();
    if (IsAscii(value)) {
      visit(name, value);
      continue;
    }
    // Only what the library takes into the model has to fit into it; the rest is carried over as it is.
    const KnownElement* known = FindKnownElement(m_element.name());
    const bool modelled = known != nullptr && std::find(known->attributes.begin(), known->attributes.end(), name) !=
                                                  known->attributes.end();
    visit(name, ToModel(value, modelled));
  }
  return true;
}

bool XmlCursor::GetTagName(CString& tag) const {
  return VisitTagName([&](std::string_view name) { tag = name; });
}

bool XmlCursor::GetText(CString& text) const {
  return VisitText([&](std::string_view content) { text = content; });
}

bool XmlCursor::GetAttributes(CArray<PimAttribute>& attributes) const {
  attributes.RemoveAll();
  return VisitAttributes([&](std::string_view name, std::string_view value) {
    attributes.Add(PimAttribute(CString(name), CString(value)));
  });
}

// --- writing -------------------------------------------------------------------------------------------------------

std::string_view XmlCursor::ToTree(std::string_view cp932) const {
  return ModelTextToUtf8(cp932, m_converted, *m_problems);
}

bool XmlCursor::InsertChild(const char* tag, const char* namespaceUri) {
  if (!MoveTo(m_element.append_child(tag))) return false;
  if (namespaceUri != nullptr) DeclareNamespace(PrefixOf(tag), namespaceUri);
  return true;
}

void XmlCursor::DeclareNamespace(std::string_view prefix, std::string_view uri) {
  const std::string name = DeclarationName(prefix);
  for (pugi::xml_node node = m_element.parent(); IsElement(node); node = node.parent()) {
    const pugi::xml_attribute declaration = node.attribute(name.c_str());
    if (!declaration) continue;
    if (declaration.value() == uri) return;
    break;
  }
  SetTextAttribute(name.c_str(), uri);
}

bool XmlCursor::SetText(std::string_view text) {
  const std::string_view content = ToTree(text);
  pugi::xml_node data = TextFrom(m_element.first_child());
  if (content.empty() && !data) return true;
  if (!data) data = m_element.append_child(pugi::node_pcdata);
  while (const pugi::xml_node rest = TextFrom(data.next_sibling())) m_element.remove_child(rest);
  return data.set_value(content.data(), content.size());
}

bool XmlCursor::SetTextAttribute(const char* name, std::string_view value) {
  pugi::xml_attribute attribute = m_element.attribute(name);
  if (!attribute) attribute = m_element.append_attribute(name);
  const std::string_view content = ToTree(value);
  return attribute && attribute.set_value(content.data(), content.size());
}

}  // namespace vorn_host
