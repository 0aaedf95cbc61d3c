#include "host/document/design_document.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <future>
#include <map>
#include <pugixml.hpp>
#include <string_view>
#include <thread>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/background.h"
#include "host/document/carried_places.h"
#include "host/document/control_character.h"
#include "host/document/document_error.h"
#include "host/document/document_scan.h"
#include "host/document/element_knowledge.h"
#include "host/document/path_text.h"
#include "host/document/piece_relay.h"
#include "host/document/root_namespaces.h"
#include "host/document/text_lines.h"
#include "host/document/xml_cursor.h"
#include "host/document/xml_nodes.h"
#include "host/document/xml_text_writer.h"

namespace vorn_host {

namespace {

constexpr const char* kDefaultRoot = "tsf:TSFormControlData";
constexpr const char* kRoadGeometryRoot = "RoadGmxml";

// Comments, instructions and the document type are kept so that they can be carried over. A blank that is all the
// text of an element is kept too: it says that a value is not set. Text outside the root is kept to be refused.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_comments | pugi::parse_pi | pugi::parse_doctype |
                                   pugi::parse_declaration | pugi::parse_ws_pcdata_single | pugi::parse_fragment;

/// A document's text and where messages about it point.
struct Source {
  const std::string& name;
  /// The parser works in it: afterwards its markup is overwritten, and only the lines tell where something stood.
  std::string text;
  TextLines lines;

  [[noreturn]] void Malformed(std::size_t offset, const std::string& reason) const {
    const std::string_view before = std::string_view(text).substr(0, offset);
    const std::size_t lineStart = std::min(lines.StartOf(offset), before.size());
    const TextPosition position{lines.LineOf(offset), 1 + CountCharacters(before.substr(lineStart))};
    throw DocumentError(name + ": " + Describe(position) + ": " + reason);
  }
};

/// Whether a text begins with a number and a semicolon, and the number is that of a character that XML allows.
bool IsCharacterNumber(std::string_view text, int base) {
  std::uint32_t c = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, c, base);
  if (error != std::errc() || end == last || *end != ';') return false;
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  return c <= 0xD7FF || (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

/// Whether the text at an ampersand is one of the references that every XML document may use.
bool IsKnownReference(std::string_view text) {
  constexpr std::array<std::string_view, 5> kReferences = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
  for (const std::string_view reference : kReferences) {
    if (text.starts_with(reference)) return true;
  }
  if (text.starts_with("&#x")) return IsCharacterNumber(text.substr(3), 16);
  return text.starts_with("&#") && IsCharacterNumber(text.substr(2), 10);
}

/// End of the comment, character-data section, instruction or document type that begins at a position, or npos when
/// none begins there.
std::size_t EndOfOpaque(std::string_view text, std::size_t at) {
  constexpr std::array<std::array<std::string_view, 2>, 4> kOpaque = {
      {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!DOCTYPE", ">"}}};
  for (const auto& [open, close] : kOpaque) {
    if (!text.substr(at).starts_with(open)) continue;
    const std::size_t end = text.find(close, at + open.size());
    return end == std::string_view::npos ? text.size() : end + close.size();
  }
  return std::string_view::npos;
}

/// Refuses what the parser would let pass and the rewritten document would not show as it was meant.
void RequirePlainReferences(const Source& source) {
  const std::string_view text = source.text;
  std::size_t opaqueEnd = 0;
  std::size_t scanned = 0;
  for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
    if (IsKnownReference(text.substr(at))) continue;
    for (std::size_t open = text.find('<', scanned); open < at; open = text.find('<', scanned)) {
      const std::size_t end = EndOfOpaque(text, open);
      if (end != std::string_view::npos) opaqueEnd = end;
      scanned = end == std::string_view::npos ? open + 1 : end;
    }
    if (at < opaqueEnd) continue;
    const std::string_view reference = text.substr(at, text.substr(at).find_first_of(";< \n") + 1);
    const bool entity = reference.ends_with(';');
    source.Malformed(
        at, entity ? "the entity " + std::string(reference) + " is not known" : "an ampersand has to be written &amp;");
  }
}

/// Calls visit(position) for every byte below the blank. Eight bytes at a time: there are few such bytes.
template <typename Visit>
void ForEachBelowBlank(std::string_view text, Visit&& visit) {
  std::size_t at = 0;
  while (at < text.size()) {
    std::uint64_t eight = 0;
    const bool whole = at + sizeof eight <= text.size();
    if (whole) {
      std::memcpy(&eight, text.data() + at, sizeof eight);
      if (BelowBlank(eight) == 0) {
        at += sizeof eight;
        continue;
      }
    }
    const std::size_t end = whole ? at + sizeof eight : text.size();
    for (; at < end; ++at) {
      if (static_cast<unsigned char>(text[at]) < 0x20) visit(at);
    }
  }
}

/// Notes where the lines end. Refuses control characters: XML has no form for them, so that nobody could read the
/// rewritten document.
void FindLines(Source& source) {
  std::size_t control = std::string::npos;
  ForEachBelowBlank(source.text, [&](std::size_t at) {
    const char c = source.text[at];
    if (c == '\n') {
      source.lines.AddBreak(at);
    } else if (c == '\0' || IsControlCharacter(c)) {
      control = std::min(control, at);
    }
  });
  if (control == std::string::npos) return;
  if (source.text[control] == '\0') {
    source.Malformed(control, "a zero byte is not allowed; a file that was not written to its end has such");
  }
  const std::string character = DescribeCharacter(static_cast<char32_t>(source.text[control]));
  source.Malformed(control, "the control character " + character + " is not allowed");
}

/// Refuses what cannot stand beside the root element, and a document without one.
void RequireOneRoot(const pugi::xml_document& tree, const Source& source) {
  const pugi::xml_node root = tree.document_element();
  if (!root) source.Malformed(source.text.size(), "the document is malformed: there is no element");
  bool typeMayFollow = true;
  for (const pugi::xml_node node : tree.children()) {
    const auto offset = static_cast<std::size_t>(node.offset_debug());
    if (node.type() == pugi::node_element && node != root) {
      source.Malformed(offset, std::string("the document is malformed: a second root element, ") + node.name());
    }
    if (IsText(node)) {
      source.Malformed(source.text.find_first_not_of(kXmlBlanks, offset),
                       "the document is malformed: text outside the root element");
    }
    if (node.type() == pugi::node_doctype && !typeMayFollow) {
      source.Malformed(offset, "the document is malformed: one document type may stand, before the root element");
    }
    typeMayFollow = typeMayFollow && node != root && node.type() != pugi::node_doctype;
  }
}

/// Makes the tree of a text. The tree lies in the text, which has to outlive it.
void Parse(Source& source, pugi::xml_document& tree) {
  RequireMarkup(source.text, source.name);
  FindLines(source);
  RequirePlainReferences(source);
  const pugi::xml_parse_result result =
      tree.load_buffer_inplace(source.text.data(), source.text.size(), kParseOptions, pugi::encoding_utf8);
  RequireMemory(result);
  if (!result) {
    const auto offset = static_cast<std::size_t>(result.offset > 0 ? result.offset : 0);
    source.Malformed(offset, std::string("the document is malformed: ") + result.description());
  }
  RequireOneRoot(tree, source);
}

/// Value of the root's schemaLocation, whatever prefix the document gives to the schema-instance namespace; none when
/// there is none.
std::optional<std::string> SchemaLocation(pugi::xml_node root) {
  constexpr std::string_view kName = ":schemaLocation";
  std::map<std::string_view, const char*> locations;  // by prefix
  for (const pugi::xml_attribute attribute : root.attributes()) {
    std::string_view name = attribute.name();
    if (!name.ends_with(kName)) continue;
    name.remove_suffix(kName.size());
    locations.try_emplace(name, attribute.value());
  }
  if (locations.empty()) return std::nullopt;
  for (const pugi::xml_attribute declaration : root.attributes()) {
    const std::string_view name = declaration.name();
    if (!DeclaresSchemaInstance(name, declaration.value())) continue;
    const auto location = locations.find(DeclaredPrefix(name));
    if (location != locations.end()) return location->second;
  }
  const auto plain = locations.find("xsi");
  return plain == locations.end() ? std::nullopt : std::optional<std::string>(plain->second);
}

std::string ExpectedLocations() {
  std::string text;
  for (const Edition edition : kWritableEditions) {
    const EditionScope scope(edition);
    text += "\n  " + std::string(EditionName(edition)) + ": " + VornSchema::Instance().Location().GetString();
  }
  return text;
}

bool HasModelledChild(pugi::xml_node root) {
  return std::any_of(kRootChildren.begin(), kRootChildren.end(),
                     [&](std::string_view tag) { return root.child(std::string(tag).c_str()); });
}

/// Whether an element can be read as the root of a document when an edition is assumed.
bool IsReadable(pugi::xml_node root) {
  return std::string_view(root.name()).starts_with("tsf:") || HasModelledChild(root);
}

/// The edition of a document; throws when it is not recognised and none is assumed.
Edition RecogniseEdition(pugi::xml_node root, const std::string& name, const std::optional<Edition>& assume,
                         bool& assumed) {
  const EditionScope restoreAfterwards(Edition::V41);
  const std::optional<std::string> location = SchemaLocation(root);
  VornSchema& schema = VornSchema::Instance();
  assumed = !schema.AnalyzeVersion(root.name(), location ? location->c_str() : "");
  if (!assumed) return CurrentEdition();
  const bool readable = IsReadable(root);
  if (assume && readable) return *assume;
  if (assume) {
    // Read all the same, it would look like a design without cross sections.
    throw DocumentError(name + ": the root element " + root.name() +
                        " holds no elements with the prefix tsf:, so no edition can be assumed for it");
  }
  throw UnknownEdition(name + ": the edition of the document is not recognised\n found: root element " + root.name() +
                           ", " + (location ? "xsi:schemaLocation \"" + *location + "\"" : "no xsi:schemaLocation") +
                           "\n expected: a root element tsf:… with one of these xsi:schemaLocation" +
                           ExpectedLocations(),
                       readable);
}

/// Hands the modelled elements below the root to the library. Gives the tag of one that it cannot read, or nothing.
std::string ReadModel(DesignDocument& document, pugi::xml_node root, TextProblems& problems, int threads) {
  XmlCursor cursor(root, problems, threads);
  if (!cursor.Child()) return {};
  do {
    const std::string_view tag = cursor.Element().name();
    bool read = true;
    if (document.fileInfos.IsMatchTagName(tag)) {
      read = document.fileInfos.fromXML(&cursor);
    } else if (document.structureType.IsMatchTagName(tag)) {
      read = document.structureType.fromXML(&cursor);
      document.hasStructureType = true;
    } else if (document.sets.IsMatchTagName(tag)) {
      read = document.sets.fromXML(&cursor);
    }
    if (!read) return std::string(tag);
  } while (cursor.NextSibling());
  return {};
}

/// What comes up when a tree is read.
struct ReadResult {
  TextProblems problems;
  DocumentScan scan;
};

/// Reads the model of a document, whose edition is selected, from a tree and looks the tree over. Nothing changes it:
/// with a large document the two go on at the same time.
ReadResult ReadAndScan(DesignDocument& document, const pugi::xml_document& tree, const Source& source) {
  constexpr std::size_t kWorthThreads = 1'000'000;
  const bool large = source.text.size() >= kWorthThreads;
  const int threads = large ? static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1u, 8u)) : 1;
  ReadResult result;
  const auto lookOver = [&] { return ScanDocument(tree, source.lines, IsEdition20(document.edition), result.scan); };
  std::future<DocumentFault> scanned = InBackground(lookOver, large ? std::launch::async : std::launch::deferred);
  const std::string unreadable = ReadModel(document, tree.document_element(), result.problems, threads);
  if (const DocumentFault fault = scanned.get(); !fault.reason.empty()) {
    source.Malformed(static_cast<std::size_t>(fault.offset), "the document is malformed: " + fault.reason);
  }
  if (!unreadable.empty()) throw DocumentError(source.name + ": the element " + unreadable + " cannot be read");
  return result;
}

void RequireNoProblems(const TextProblems& problems, const Source& source) {
  const TextProblems::Problem& first = *problems.first;
  const std::string line =
      first.offset >= 0 ? "line " + std::to_string(source.lines.LineOf(static_cast<std::size_t>(first.offset))) + ": "
                        : std::string();
  throw UnmappableText(source.name + ": " + line + "code page 932 cannot hold " + first.what +
                       (problems.count > 1 ? " (" + std::to_string(problems.count) + " such characters in all)" : ""));
}

// --- writing -------------------------------------------------------------------------------------------------------

void SetAttribute(XmlAttributes& attributes, const std::string& name, const std::string& value) {
  const auto existing = std::find_if(attributes.begin(), attributes.end(),
                                     [&](const auto& attribute) { return attribute.first == name; });
  if (existing == attributes.end()) {
    attributes.emplace_back(name, value);
  } else {
    existing->second = value;
  }
}

/// The root's attributes with those that the host writes itself. The others stay as they were in the document, and so
/// does the order.
XmlAttributes MakeRootAttributes(const DesignDocument& document) {
  XmlAttributes attributes = document.carried.RootAttributes();
  if (document.edition == Edition::RoadGm) return attributes;
  for (const auto& [name, value] : AttributesOfHost(attributes)) SetAttribute(attributes, name, value);
  return attributes;
}

std::string RootTag(const DesignDocument& document) {
  const std::string& carried = document.carried.RootTag();
  if (document.edition == Edition::RoadGm) return kRoadGeometryRoot;
  return carried.starts_with("tsf:") ? carried : kDefaultRoot;
}

bool WriteModel(DesignDocument& document, XmlTextWriter& cursor) {
  std::vector<std::string_view> order = document.carried.RootOrder();
  for (const std::string_view tag : kRootChildren) {
    if (std::find(order.begin(), order.end(), tag) == order.end()) order.push_back(tag);
  }
  for (const std::string_view tag : order) {
    bool written = true;
    if (document.fileInfos.IsMatchTagName(tag)) written = document.fileInfos.toXML(&cursor);
    if (document.sets.IsMatchTagName(tag)) written = document.sets.toXML(&cursor);
    if (document.structureType.IsMatchTagName(tag) && document.hasStructureType) {
      written = document.structureType.toXML(&cursor);
    }
    if (!written) return false;
  }
  return true;
}

/// Writing gathers the build forms' control targets into their set; this takes them out again, so that the document
/// can be written any number of times.
class GatheredTargets {
 public:
  explicit GatheredTargets(Vorn_XSectionsArray& sets) : m_sets(sets) {
    for (const VornXSections& set : sets) m_counts.push_back(set.GetFormCtrlTargetArray().GetSize());
  }
  GatheredTargets(const GatheredTargets&) = delete;
  GatheredTargets& operator=(const GatheredTargets&) = delete;
  ~GatheredTargets() {  // NOLINT(bugprone-exception-escape): a collection that shrinks asks for no memory
    for (int i = 0; i < m_sets.GetSize(); ++i) {
      m_sets[i].GetFormCtrlTargetArray().SetSize(m_counts[static_cast<std::size_t>(i)]);
    }
  }

 private:
  Vorn_XSectionsArray& m_sets;
  std::vector<int> m_counts;
};

/// Whether the root is one that can be read, if need be with an assumed edition. The text may end anywhere.
bool HasRootOfDocument(std::string_view text) {
  pugi::xml_document tree;  // what stands before a fault is in the tree
  RequireMemory(tree.load_buffer(text.data(), text.size()));
  const pugi::xml_node root = tree.document_element();
  return std::string_view(root.name()) == kRoadGeometryRoot || IsReadable(root);
}

}  // namespace

DesignDocument DesignDocument::Read(const std::filesystem::path& path, const ReadOptions& options) {
  return FromBytes(ReadFile(path, options.mostBytes), Utf8Text(path), options);
}

bool DesignDocument::IsMarkup(std::string_view content) {
  const std::size_t first = content.find_first_not_of(std::string_view("\xEF\xBB\xBF\xFE\xFF \t\r\n\0", 10));
  return first != std::string_view::npos && content[first] == '<';
}

bool DesignDocument::IsDocument(std::string_view content) {
  if (HasRootOfDocument(content)) return true;
  if (!IsMarkup(content)) return false;
  try {  // in Shift_JIS half a character can be a sign of XML
    return HasRootOfDocument(DecodeDocument(std::string(content), {}).utf8);
  } catch (const DocumentError&) {
    return false;
  }
}

DesignDocument DesignDocument::FromBytes(std::string bytes, const std::string& name, const ReadOptions& options) {
  if (bytes.size() > options.mostBytes) throw DocumentError(TooLarge(name, options.mostBytes));
  DecodedText decoded = DecodeDocument(std::move(bytes), name);
  Source source{name, std::move(decoded.utf8), {}};
  pugi::xml_document tree;
  Parse(source, tree);

  DesignDocument document;
  document.encodingName = std::move(decoded.encodingName);
  document.edition = RecogniseEdition(tree.document_element(), name, options.assume, document.assumed);

  const EditionScope scope(document.edition);
  auto [problems, scan] = ReadAndScan(document, tree, source);
  if (problems.count > 0 && !options.lossy) RequireNoProblems(problems, source);
  document.replacedCharacters = problems.count;
  if (!document.carried.Collect(tree, scan, document.sets, IsEdition20(document.edition), options.mostCarriedItems)) {
    throw DocumentError(TooManyCarried(name, options.mostCarriedItems));
  }
  document.unreadValues = std::move(scan.unreadValues);
  return document;
}

namespace {

/// Writes a document as UTF-8 text.
/// @param take gets the text in pieces; without it, nothing is handed out
/// @return what has not been handed out
std::string WriteText(DesignDocument& document, const std::string& name, const DesignDocument::WriteOptions& options,
                      DesignDocument::WriteReport& report, XmlTextWriter::PieceTaker take = nullptr) {
  const EditionScope scope(document.edition);
  const GatheredTargets takeOutAgain(document.sets);
  CarriedPlaces places(document.carried, document.sets);
  TextProblems problems;
  XmlTextWriter writer(places, problems, std::move(take));
  writer.OpenRoot(EncodingName(options.encoding), RootTag(document), MakeRootAttributes(document));
  if (!WriteModel(document, writer)) throw DocumentError(name + ": the document cannot be put together");
  if (problems.count > 0 && !options.lossy) {
    throw DocumentError(name + ": the design holds " + problems.first->what);
  }
  std::string text = writer.Finish();
  report.replacedCharacters = problems.count;
  report.unplaced = places.Unplaced();
  return text;
}

/// Whether a path is that of a device or pipe, which shows at once what is written into it.
bool IsWrittenDirectly(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error);
}

}  // namespace

DesignDocument::WriteReport DesignDocument::Write(const std::filesystem::path& path, const WriteOptions& options) {
  WriteReport report;
  if (options.encoding != TextEncoding::Utf8 || IsWrittenDirectly(path)) {
    WriteFileAtomically(path, ToBytes(Utf8Text(path), options, report));
    return report;
  }
  // The file is written while the text is made, and takes its name when all of it is there.
  WriteFileAtomically(path, [&](const TextSink& write) {
    PieceRelay relay(write);
    const std::string rest =
        WriteText(*this, Utf8Text(path), options, report, [&](std::string& piece) { relay.Take(piece); });
    relay.Wait();
    write(rest);
  });
  return report;
}

std::string DesignDocument::ToBytes(const std::string& name, const WriteOptions& options, WriteReport& report) {
  std::string text = WriteText(*this, name, options, report);
  if (options.encoding == TextEncoding::Utf8) return text;
  return EncodeShiftJis(text, name, options.lossy, report.replacedCharacters);
}

}  // namespace vorn_host
