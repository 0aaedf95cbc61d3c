#include "host/settings/settings_text.h"

#include <toml++/toml.h>

#include <algorithm>
#include <limits>
#include <sstream>
#include <utility>

#include "host/document/text_encoding.h"
#include "host/document/utf8_character.h"
#include "host/settings/settings_nesting.h"

namespace vorn_host {

namespace {

// --- values ----------------------------------------------------------------------------------------------------------

/// One line, with escapes for quotes, backslashes and control characters; everything else as it is.
std::string Literal(const toml::node& node) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << toml::toml_formatter(node, toml::format_flags::allow_unicode_strings);
  return std::move(stream).str();
}

std::string Quoted(const std::string& text) { return Literal(toml::value<std::string>(text)); }

std::string Literal(const SettingValue& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text != nullptr ? Quoted(*text) : std::to_string(std::get<std::int32_t>(value));
}

std::optional<SettingValue> ValueOf(const toml::node& node) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (const auto* text = node.as_string()) return text->get();
  const auto* number = node.as_integer();
  if (number == nullptr || number->get() < Limits::min() || number->get() > Limits::max()) return std::nullopt;
  return static_cast<std::int32_t>(number->get());
}

// --- names -----------------------------------------------------------------------------------------------------------

bool IsBareCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-';
}

std::string NameText(const std::string& name) {
  const bool isBare = !name.empty() && std::all_of(name.begin(), name.end(), IsBareCharacter);
  return isBare ? name : Quoted(name);
}

/// The names from one on, with dots between them.
std::string PathText(const SettingsPath& path, std::size_t first = 0) {
  std::string text;
  for (std::size_t i = first; i < path.size(); ++i) text += (i == first ? "" : ".") + NameText(path[i]);
  return text;
}

std::string HeaderText(const SettingsPath& path) { return '[' + PathText(path) + ']'; }

/// A name that is in a table, as it is spelled there.
struct Found {
  const toml::key* key = nullptr;
  const toml::node* node = nullptr;
};

Found FindIn(const toml::table& table, std::string_view name) {
  const auto exact = table.find(name);
  if (exact != table.end()) return {&exact->first, &exact->second};
  for (const auto& [key, node] : table) {
    if (IsSameName(key.str(), name)) return {&key, &node};
  }
  return {};
}

/// How far a path leads, in the spelling that the names have in the text as far as it does.
struct Way {
  const toml::table* table;  ///< the last table there is
  SettingsPath path;
  std::size_t length = 0;               ///< names followed
  const toml::table* braces = nullptr;  ///< the last table on the way that is written in braces; null without any
  std::size_t bracesLength = 0;         ///< names followed up to that
};

Way Follow(const toml::table& root, const SettingsPath& path) {
  Way way{&root, path};
  for (std::string& name : way.path) {
    const Found found = FindIn(*way.table, name);
    const toml::table* next = found.node != nullptr ? found.node->as_table() : nullptr;
    if (next == nullptr) break;
    name = found.key->str();
    way.table = next;
    ++way.length;
    if (!next->is_inline()) continue;
    way.braces = next;
    way.bracesLength = way.length;
  }
  return way;
}

SettingsEntry EntryOf(SettingsPath path, const Found& found) {
  return {std::move(path), std::string(found.key->str()), ValueOf(*found.node), Literal(*found.node)};
}

void Collect(const toml::table& table, SettingsPath& path, std::vector<SettingsEntry>& entries) {
  for (const auto& [key, node] : table) {
    if (const toml::table* inner = node.as_table()) {
      path.emplace_back(key.str());
      Collect(*inner, path, entries);
      path.pop_back();
    } else {
      entries.push_back(EntryOf(path, {&key, &node}));
    }
  }
}

// --- places in the text ----------------------------------------------------------------------------------------------

/// The byte at a line and a column, which count characters, from 1.
std::size_t OffsetOf(std::string_view text, toml::source_position position) {
  std::size_t at = text.starts_with(kUtf8ByteOrderMark) ? kUtf8ByteOrderMark.size() : 0;
  for (toml::source_index line = 1; line < position.line; ++line) at = text.find('\n', at) + 1;
  for (toml::source_index column = 1; column < position.column && at < text.size(); ++column) {
    at = EndOfCharacter(text, at);
  }
  return at;
}

/// A table that has a header starts there, and the name in the header stands behind that; one that is there through a
/// dotted name starts with its own; everything else stands behind its name.
bool StandsBehindItsName(const toml::key& key, const toml::node& node) {
  return key.source().begin < node.source().begin;
}

/// Whether a name is that of a table which is there through a dotted name of a value only.
bool IsDotted(const toml::key& key, const toml::node& node) {
  return node.is_table() && key.source().begin == node.source().begin;
}

/// The value of a table's own that comes last, behind its name or behind a dotted one; the key is that in the table.
Found LastValueOf(const toml::table& table) {
  Found last;
  for (const auto& [key, node] : table) {
    const toml::node* value = StandsBehindItsName(key, node) ? &node : nullptr;
    if (IsDotted(key, node)) value = LastValueOf(*node.as_table()).node;
    if (value == nullptr) continue;
    if (last.node == nullptr || last.node->source().end < value->source().end) last = {&key, value};
  }
  return last;
}

/// Whether a table has a header of its own, rather than being only named in that of a table within it.
bool HasHeader(const toml::table& table, std::string_view text) {
  const toml::source_position begin = table.source().begin;
  const std::size_t at = OffsetOf(text, begin);
  return at < text.size() && text[at] == '[' && std::none_of(table.begin(), table.end(), [&](const auto& inner) {
           return inner.second.is_table() && inner.second.source().begin == begin;
         });
}

std::string_view LineEnd(std::string_view text) { return text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n"; }

}  // namespace

struct SettingsText::Tree {
  toml::table root;
};

struct SettingsText::Edit {
  std::size_t at;
  std::size_t length;
  std::string replacement;

  static Edit Replace(std::string_view text, const toml::source_region& region, std::string replacement) {
    const std::size_t begin = OffsetOf(text, region.begin);
    return {begin, OffsetOf(text, region.end) - begin, std::move(replacement)};
  }

  /// A line of its own below the one in which a position lies.
  static Edit InsertBelow(std::string_view text, toml::source_position position, const std::string& line) {
    const std::size_t lineEnd = text.find('\n', OffsetOf(text, position));
    std::string ending(LineEnd(text));
    if (lineEnd == std::string_view::npos) return {text.size(), 0, ending + line + ending};
    return {lineEnd + 1, 0, line + ending};
  }

  /// A section at the end of the text.
  static Edit Append(std::string_view text, const std::string& header, const std::string& line) {
    const std::string ending(LineEnd(text));
    const bool isEmpty = text.empty() || text == kUtf8ByteOrderMark;
    std::string section = isEmpty || text.ends_with('\n') ? "" : ending;
    if (!isEmpty) section += ending;
    return {text.size(), 0, section + header + ending + line + ending};
  }

  /// A further entry before the brace that closes a table written in one line.
  static Edit InsertIntoBraces(std::string_view text, const toml::table& table, const std::string& entry) {
    const std::size_t brace = OffsetOf(text, table.source().end) - 1;
    const std::size_t at = text.find_last_not_of(" \t", brace - 1) + 1;
    return {at, brace - at, (table.empty() ? " " : ", ") + entry + " "};
  }
};

SettingsText::SettingsText() : m_tree(std::make_unique<const Tree>()) {}
SettingsText::SettingsText(SettingsText&&) noexcept = default;
SettingsText& SettingsText::operator=(SettingsText&&) noexcept = default;
SettingsText::~SettingsText() = default;

SettingsText::SettingsText(std::string text) : m_text(std::move(text)) {
  std::string_view body = m_text;
  if (body.starts_with(kUtf8ByteOrderMark)) body.remove_prefix(kUtf8ByteOrderMark.size());
  if (const std::optional<std::size_t> tooDeep = FindTooManyNames(body)) {
    const TextPosition at = PositionAt(body, *tooDeep);
    throw SettingsSyntaxError(Describe(at) + ": more than " + std::to_string(kMostNames) +
                              " names lie within each other");
  }
  try {
    m_tree = std::make_unique<const Tree>(Tree{toml::parse(body)});
  } catch (const toml::parse_error& error) {
    const toml::source_position at = error.source().begin;
    throw SettingsSyntaxError(Describe(TextPosition{at.line, at.column}) + ": " + std::string(error.description()));
  }
}

bool SettingsText::HasKey(const SettingsPath& path) const { return Follow(m_tree->root, path).length == path.size(); }

std::optional<SettingsEntry> SettingsText::FindEntry(const SettingsPath& path, std::string_view name) const {
  Way way = Follow(m_tree->root, path);
  if (way.length < path.size()) return std::nullopt;
  const Found found = FindIn(*way.table, name);
  if (found.node == nullptr || found.node->is_table()) return std::nullopt;
  return EntryOf(std::move(way.path), found);
}

std::optional<SettingValue> SettingsText::Find(const SettingsPath& path, std::string_view name) const {
  std::optional<SettingsEntry> entry = FindEntry(path, name);
  return entry ? std::move(entry->value) : std::nullopt;
}

std::vector<SettingsEntry> SettingsText::Entries() const {
  std::vector<SettingsEntry> entries;
  SettingsPath path;
  Collect(m_tree->root, path, entries);
  return entries;
}

std::optional<SettingsText> SettingsText::With(const SettingsPath& path, const std::string& name,
                                               const SettingValue& value) const {
  const std::optional<Edit> edit = PlanEdit(path, name, Literal(value));
  if (!edit) return std::nullopt;
  try {
    SettingsText result(std::string(m_text).replace(edit->at, edit->length, edit->replacement));
    if (result.Follows(*this, path, name, value)) return result;
  } catch (const SettingsSyntaxError&) {
    // The text is laid out so that nothing can be added there.
  }
  return std::nullopt;
}

std::optional<SettingsText::Edit> SettingsText::PlanEdit(const SettingsPath& path, const std::string& name,
                                                         const std::string& literal) const {
  const Way way = Follow(m_tree->root, path);
  std::string entry = NameText(name) + " = " + literal;
  const toml::table& table = *way.table;
  const toml::node* former = way.length == path.size() ? FindIn(table, name).node : nullptr;
  if (former != nullptr && former->is_table()) return std::nullopt;
  if (former != nullptr) return Edit::Replace(m_text, former->source(), literal);
  if (way.braces != nullptr) {
    // Nothing outside the braces can add to them.
    const std::string inner = PathText(way.path, way.bracesLength);
    return Edit::InsertIntoBraces(m_text, *way.braces, (inner.empty() ? "" : inner + '.') + entry);
  }
  if (way.length < path.size()) return Edit::Append(m_text, HeaderText(way.path), entry);
  if (const Found last = LastValueOf(table); last.key != nullptr) {
    // Indented like that value, and with whatever of the path stands before its name.
    const std::size_t lastName = OffsetOf(m_text, last.key->source().begin);
    const std::size_t lineStart = OffsetOf(m_text, {last.key->source().begin.line, 1});
    entry.insert(0, m_text, lineStart, lastName - lineStart);
    return Edit::InsertBelow(m_text, last.node->source().end, entry);
  }
  if (path.empty()) {
    const std::size_t start = OffsetOf(m_text, {1, 1});
    return Edit{start, 0, entry.append(LineEnd(m_text))};
  }
  if (HasHeader(table, m_text)) return Edit::InsertBelow(m_text, table.source().begin, entry);
  return Edit::Append(m_text, HeaderText(way.path), entry);
}

bool SettingsText::Follows(const SettingsText& former, const SettingsPath& path, const std::string& name,
                           const SettingValue& value) const {
  const auto others = [&](const SettingsText& text) {
    std::vector<SettingsEntry> entries = text.Entries();
    std::erase_if(entries, [&](const SettingsEntry& entry) { return entry.IsAt(path, name); });
    return entries;
  };
  return Find(path, name) == value && others(*this) == others(former);
}

}  // namespace vorn_host
