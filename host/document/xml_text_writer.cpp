#include "host/document/xml_text_writer.h"

#include <algorithm>
#include <array>
#include <pugixml.hpp>

#include "host/document/control_character.h"
#include "host/document/xml_nodes.h"

namespace vorn_host {

namespace {

enum class Context : unsigned char { Text = 1, Attribute = 2 };

/// For each byte, in which contexts it cannot stand as it is.
constexpr std::array<unsigned char, 256> kSpecial = [] {
  constexpr auto kBoth = static_cast<unsigned char>(Context::Text) | static_cast<unsigned char>(Context::Attribute);
  std::array<unsigned char, 256> special{};
  for (std::size_t control = 0; control < 0x20; ++control) special[control] = kBoth;
  special['\t'] = special['\n'] = static_cast<unsigned char>(Context::Attribute);
  special['&'] = special['<'] = special['>'] = kBoth;
  special['"'] = static_cast<unsigned char>(Context::Attribute);
  return special;
}();

void AppendReference(char byte, std::string& out) {
  switch (byte) {
    case '&':
      out += "&amp;";
      return;
    case '<':
      out += "&lt;";
      return;
    case '>':
      out += "&gt;";
      return;
    case '"':
      out += "&quot;";
      return;
    default:
      out += "&#" + std::to_string(static_cast<unsigned char>(byte)) + ";";
  }
}

void AppendEscaped(std::string_view text, Context context, std::string& out) {
  std::size_t plain = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if ((kSpecial[static_cast<unsigned char>(text[at])] & static_cast<unsigned char>(context)) == 0) continue;
    out.append(text, plain, at - plain);
    AppendReference(text[at], out);
    plain = at + 1;
  }
  out.append(text, plain);
}

bool HoldsText(const CarriedPlaces::Element& element) {
  return std::any_of(element.nodes.begin(), element.nodes.end(),
                     [](const CarriedItem* item) { return IsText(item->node); });
}

/// Whether layout would make a node grow beyond measure: each line of it is indented by its level.
bool IsTooDeepForLayout(pugi::xml_node top) {
  constexpr int kDeepestLayout = 64;
  int deepest = 0;
  WalkNodes(top, [&](pugi::xml_node, int level) { deepest = std::max(deepest, level); });
  return deepest > kDeepestLayout;
}

struct AppendingWriter : pugi::xml_writer {
  explicit AppendingWriter(std::string& target) : out(target) {}
  void write(const void* data, std::size_t size) override { out.append(static_cast<const char*>(data), size); }

  std::string& out;
};

}  // namespace

XmlTextWriter::XmlTextWriter(CarriedPlaces& places, TextProblems& problems, PieceTaker take)
    : m_places(places), m_problems(problems), m_take(std::move(take)) {}

void XmlTextWriter::OpenRoot(std::string_view encoding, const std::string& tag, const XmlAttributes& attributes) {
  m_out.append("<?xml version=\"1.0\" encoding=\"").append(encoding).append("\"?>\n");
  for (const CarriedItem* item : m_places.BeforeRoot()) PutNode(item->node, 0, false);
  Open(tag, &m_places.Root());
  for (const auto& [name, value] : attributes) {
    PutAttribute(name, value);
    if (name == "xmlns") m_declarations.push_back({"", value, 0});
    const std::string_view prefix = DeclaredPrefix(name);
    if (!prefix.empty()) m_declarations.push_back({std::string(prefix), value, 0});
  }
}

std::string XmlTextWriter::Finish() {
  while (!m_open.empty()) Close();
  for (const CarriedItem* item : m_places.AfterRoot()) PutNode(item->node, 0, false);
  return std::move(m_out);
}

// --- elements --------------------------------------------------------------------------------------------------------

bool XmlTextWriter::InsertChild(const char* tag, const char* namespaceUri) {
  if (m_open.empty() || m_open.back().hasText) return false;
  const std::string_view name = tag;
  CarriedPlaces::Element* carried = nullptr;
  if (CarriedState* state = m_open.back().carried.get()) {
    const auto ends = state->childEnds.find(name);
    carried = state->element->Child(name, ends == state->childEnds.end() ? 0 : static_cast<int>(ends->second.size()));
  }
  if (m_open.back().startTagOpen) {
    CloseStartTag();
    BeginBody(m_open.back());
  }
  Open(name, carried);
  if (namespaceUri != nullptr) {
    const std::size_t colon = name.find(':');
    DeclareNamespace(colon == std::string_view::npos ? std::string_view() : name.substr(0, colon), namespaceUri);
  }
  return true;
}

void XmlTextWriter::Open(std::string_view tag, CarriedPlaces::Element* carried) {
  Indent(m_open.size());
  m_out += '<';
  OpenElement element;
  element.tagLength = tag.size();
  m_out += tag;
  m_tags += tag;
  if (carried != nullptr) {
    carried->isWritten = true;
    element.carried = std::make_unique<CarriedState>();
    element.carried->element = carried;
  }
  m_open.push_back(std::move(element));
}

void XmlTextWriter::CloseStartTag() {
  OpenElement& element = m_open.back();
  if (element.carried) {
    for (const CarriedItem* item : element.carried->element->attributes) {
      PutAttribute(item->attributeName, item->attributeValue);
    }
  }
  m_out += '>';
  element.startTagOpen = false;
  if (element.carried) element.carried->bodyStart = m_out.size();
}

void XmlTextWriter::BeginBody(OpenElement& element) {
  m_out += '\n';
  if (element.carried) element.carried->bodyStart = m_out.size();
}

bool XmlTextWriter::Parent() {
  if (m_open.size() < 2) return false;
  Close();
  return true;
}

void XmlTextWriter::Close() {
  const std::size_t depth = m_open.size() - 1;
  OpenElement& element = m_open.back();
  const bool holdsItems = element.carried && !element.carried->element->nodes.empty();
  const bool empty = element.startTagOpen && !holdsItems;
  if (element.startTagOpen) {
    CloseStartTag();
    if (empty) {
      m_out.pop_back();
      m_out += " />\n";
    } else if (HoldsText(*element.carried->element)) {
      element.hasText = true;
    } else {
      BeginBody(element);
    }
  }
  if (holdsItems) InsertCarried(element);
  if (!empty) {
    if (!element.hasText) Indent(depth);
    m_out += "</";
    m_out.append(Tag()).append(">\n");
  }

  const bool counted = depth > 0 && m_open[depth - 1].carried;
  if (counted) m_open[depth - 1].carried->childEnds[std::string(Tag())].push_back(m_out.size());
  m_tags.resize(m_tags.size() - element.tagLength);
  m_open.pop_back();
  while (!m_declarations.empty() && m_declarations.back().depth > 0 && m_declarations.back().depth >= depth) {
    m_declarations.pop_back();
  }
  HandOut();
}

/// Hands out the text when there is enough of it. What stands in an open element that carried items belong into has to
/// stay: they are put in when it is closed.
void XmlTextWriter::HandOut() {
  constexpr std::size_t kPiece = std::size_t{1} << 20;
  if (m_out.size() < kPiece || !m_take) return;
  const bool complete = std::none_of(m_open.begin(), m_open.end(), [](const OpenElement& element) {
    return element.carried && !element.carried->element->nodes.empty();
  });
  if (!complete) return;
  m_take(m_out);
  m_out.reserve(kPiece + kPiece / 8);
}

// --- attributes and text ---------------------------------------------------------------------------------------------

void XmlTextWriter::DeclareNamespace(std::string_view prefix, std::string_view uri) {
  for (auto declaration = m_declarations.rbegin(); declaration != m_declarations.rend(); ++declaration) {
    if (declaration->prefix != prefix) continue;
    if (declaration->uri == uri) return;
    break;
  }
  PutAttribute(prefix.empty() ? "xmlns" : "xmlns:" + std::string(prefix), uri);
  m_declarations.push_back({std::string(prefix), std::string(uri), m_open.size() - 1});
}

void XmlTextWriter::PutAttribute(std::string_view name, std::string_view utf8) {
  m_out += ' ';
  m_out += name;
  m_out += "=\"";
  AppendEscaped(utf8, Context::Attribute, m_out);
  m_out += '"';
}

std::string_view XmlTextWriter::ModelText(std::string_view cp932) {
  if (IsPlainAscii(cp932)) return cp932;
  const std::string_view utf8 = ModelTextToUtf8(cp932, m_converted, m_problems);
  if (std::none_of(utf8.begin(), utf8.end(), IsControlCharacter)) return utf8;
  m_withoutControls.clear();
  for (const char byte : utf8) {
    if (!IsControlCharacter(byte)) {
      m_withoutControls += byte;
      continue;
    }
    m_problems.Add("the control character " + DescribeCharacter(static_cast<char32_t>(byte)), -1);
    m_withoutControls += kGetaMarkUtf8;
  }
  return m_withoutControls;
}

bool XmlTextWriter::SetTextAttribute(const char* name, std::string_view value) {
  if (m_open.empty() || !m_open.back().startTagOpen) return false;
  PutAttribute(name, ModelText(value));
  return true;
}

bool XmlTextWriter::SetText(std::string_view text) {
  if (m_open.empty() || !m_open.back().startTagOpen) return false;
  if (text.empty()) return true;
  CloseStartTag();
  m_open.back().hasText = true;
  AppendEscaped(ModelText(text), Context::Text, m_out);
  return true;
}

bool XmlTextWriter::GetTagName(CString& tag) const {
  if (m_open.empty()) return false;
  tag = Tag();
  return true;
}

// --- carried items ---------------------------------------------------------------------------------------------------

void XmlTextWriter::PutNode(pugi::xml_node node, std::size_t depth, bool inText) {
  AppendingWriter writer(m_out);
  // Text among elements gets a line of its own: the line breaks around it are layout.
  const bool ownLine = !inText && (IsText(node) || IsTooDeepForLayout(node));
  if (ownLine) Indent(depth);
  const unsigned format = inText || ownLine ? pugi::format_raw : pugi::format_indent;
  node.print(writer, "  ", format, pugi::encoding_utf8, static_cast<unsigned>(depth));
  if (ownLine) m_out += '\n';
}

std::size_t XmlTextWriter::PlaceOf(const CarriedItem& item, const CarriedState& state) const {
  for (const ElementStep& anchor : item.anchors) {
    const auto ends = state.childEnds.find(anchor.tag);
    const int written = m_places.WrittenUpTo(anchor, item.parent);
    if (ends == state.childEnds.end() || written < 0) continue;
    return ends->second[std::min(static_cast<std::size_t>(written), ends->second.size() - 1)];
  }
  return state.bodyStart;
}

/// Puts the items of an element into its body, which is the end of the text so far. Everything behind a place moves
/// once, however many items there are.
void XmlTextWriter::InsertCarried(const OpenElement& element) {
  const CarriedState& state = *element.carried;
  std::vector<std::pair<std::size_t, const CarriedItem*>> placed;
  for (const CarriedItem* item : state.element->nodes) placed.emplace_back(PlaceOf(*item, state), item);
  std::stable_sort(placed.begin(), placed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });

  const std::size_t firstPlace = placed.front().first;
  const std::string rest = m_out.substr(firstPlace);
  m_out.resize(firstPlace);
  std::size_t copied = firstPlace;
  for (const auto& [place, item] : placed) {
    m_out.append(rest, copied - firstPlace, place - copied);
    copied = place;
    PutNode(item->node, m_open.size(), element.hasText);
  }
  m_out.append(rest, copied - firstPlace);
}

}  // namespace vorn_host
