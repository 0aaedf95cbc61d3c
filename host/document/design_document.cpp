#include "host/document/design_document.h"

#include <algorithm>
#include <array>
#include <pugixml.hpp>
#include <utility>

#include "host/document/atomic_file.h"
#include "host/document/document_error.h"
#include "host/document/element_knowledge.h"
#include "host/document/xml_cursor.h"

namespace vorn_host {

namespace {

constexpr const char* kDefaultRoot = "tsf:TSFormControlData";
constexpr const char* kRoadGeometryRoot = "RoadGmxml";

// Comments, instructions and the document type are kept so that they can be carried over. A blank that is all the
// text of an element is kept too: it says that a value is not set.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_comments | pugi::parse_pi | pugi::parse_doctype |
                                   pugi::parse_declaration | pugi::parse_ws_pcdata_single;

[[noreturn]] void Malformed(const std::string& name, std::string_view text, std::size_t offset,
                            const std::string& reason) {
  const TextPosition position = PositionAt(text, offset);
  throw DocumentError(name + ": line " + std::to_string(position.line) + ", column " + std::to_string(position.column) +
                      ": " + reason);
}

/// Whether the text at an ampersand is one of the references that every XML document may use.
bool IsKnownReference(std::string_view text) {
  constexpr std::array<std::string_view, 6> kReferences = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"};
  for (const std::string_view reference : kReferences) {
    if (text.starts_with(reference)) return true;
  }
  return false;
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
void RequirePlainReferences(std::string_view text, const std::string& name) {
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
    Malformed(
        name, text, at,
        entity ? "the entity " + std::string(reference) + " is not known" : "an ampersand has to be written &amp;");
  }
}

void RequireXml(std::string_view text, const std::string& name) {
  const std::size_t nul = text.find('\0');
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (nul != std::string_view::npos || first == std::string_view::npos || text[first] != '<') {
    throw DocumentError(name + ": this is not an XML document");
  }
}

void Parse(const std::string& text, const std::string& name, pugi::xml_document& tree) {
  RequireXml(text, name);
  RequirePlainReferences(text, name);
  const pugi::xml_parse_result result = tree.load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8);
  if (!result) {
    const auto offset = static_cast<std::size_t>(result.offset > 0 ? result.offset : 0);
    std::string reason = result.description();
    if (result.status == pugi::status_no_document_element) reason = "there is no element";
    Malformed(name, text, offset, "the document is malformed: " + reason);
  }
  const pugi::xml_node root = tree.document_element();
  for (pugi::xml_node node = root.next_sibling(); node; node = node.next_sibling()) {
    if (node.type() == pugi::node_element) {
      Malformed(name, text, static_cast<std::size_t>(node.offset_debug()),
                std::string("the document is malformed: a second root element, ") + node.name());
    }
  }
}

/// Value of the root's schemaLocation, whatever prefix the document gives to the schema-instance namespace; none when
/// there is none.
std::optional<std::string> SchemaLocation(pugi::xml_node root) {
  const CString xsi = VornSchema::Xsi();
  for (const pugi::xml_attribute declaration : root.attributes()) {
    const std::string_view name = declaration.name();
    if (!name.starts_with("xmlns:") || xsi != declaration.value()) continue;
    const std::string attribute = std::string(name.substr(6)) + ":schemaLocation";
    if (root.attribute(attribute.c_str())) return root.attribute(attribute.c_str()).value();
  }
  const pugi::xml_attribute plain = root.attribute("xsi:schemaLocation");
  return plain ? std::optional<std::string>(plain.value()) : std::nullopt;
}

std::string ExpectedLocations() {
  std::string text;
  for (const Edition edition : kWritableEditions) {
    const EditionScope scope(edition);
    text += "\n  " + std::string(EditionName(edition)) + ": " + VornSchema::Instance().Location().GetString();
  }
  return text;
}

/// The edition of a document; throws when it is not recognised and none is assumed.
Edition RecogniseEdition(pugi::xml_node root, const std::string& name, const std::optional<Edition>& assume,
                         bool& assumed) {
  const EditionScope restoreAfterwards(Edition::V41);
  const std::optional<std::string> location = SchemaLocation(root);
  VornSchema& schema = VornSchema::Instance();
  assumed = !schema.AnalyzeVersion(root.name(), location ? location->c_str() : "");
  if (!assumed) return CurrentEdition();
  if (assume) return *assume;
  throw DocumentError(name + ": the edition of the document is not recognised\n found: root element " + root.name() +
                      ", " + (location ? "xsi:schemaLocation \"" + *location + "\"" : "no xsi:schemaLocation") +
                      "\n expected: a root element tsf:… with one of these xsi:schemaLocation" + ExpectedLocations() +
                      "\n an edition can be assumed: --assume 4.1");
}

/// Hands the modelled elements below the root to the library.
void ReadModel(DesignDocument& document, pugi::xml_node root, TextProblems& problems, const std::string& name) {
  XmlCursor cursor(root, problems);
  if (!cursor.Child()) return;
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
    if (!read) throw DocumentError(name + ": the element " + std::string(tag) + " cannot be read");
  } while (cursor.NextSibling());
}

void RequireNoProblems(const TextProblems& problems, std::string_view text, const std::string& name) {
  const TextProblems::Problem& first = *problems.first;
  const std::string line =
      first.offset >= 0 ? "line " + std::to_string(PositionAt(text, static_cast<std::size_t>(first.offset)).line) + ": "
                        : std::string();
  throw DocumentError(name + ": " + line + "code page 932 cannot hold " + first.what +
                      (problems.count > 1 ? " (" + std::to_string(problems.count) + " such characters in all)" : "") +
                      "; --lossy replaces it with 〓");
}

// --- writing -------------------------------------------------------------------------------------------------------

void SetAttribute(pugi::xml_node element, const char* name, const char* value) {
  pugi::xml_attribute attribute = element.attribute(name);
  if (!attribute) attribute = element.append_attribute(name);
  attribute.set_value(value);
}

/// The root with its namespaces and schema location for the current edition. Its other attributes stay as they were.
pugi::xml_node WriteRoot(pugi::xml_document& tree, const DesignDocument& document) {
  const VornSchema& schema = VornSchema::Instance();
  const bool roadGeometry = document.edition == Edition::RoadGm;
  const std::string& carriedTag = document.carried.RootTag();
  const char* tag = roadGeometry ? kRoadGeometryRoot : kDefaultRoot;
  if (carriedTag.starts_with("tsf:")) tag = carriedTag.c_str();
  pugi::xml_node root = tree.append_child(tag);

  std::string location = "xsi:schemaLocation";
  for (const auto& [name, value] : document.carried.RootAttributes()) {
    root.append_attribute(name.c_str()).set_value(value.c_str());
    // The schema-instance namespace may have another prefix in the document.
    if (name.starts_with("xmlns:") && VornSchema::Xsi() == value.c_str()) location = name.substr(6) + ":schemaLocation";
  }
  if (roadGeometry) return root;
  SetAttribute(root, "xmlns:tsf", schema.Tsf());
  SetAttribute(root, "xmlns:rgm", schema.Rgm());
  if (location == "xsi:schemaLocation") SetAttribute(root, "xmlns:xsi", VornSchema::Xsi());
  SetAttribute(root, location.c_str(), schema.Location());
  return root;
}

bool WriteModel(DesignDocument& document, pugi::xml_node root, TextProblems& problems) {
  std::vector<std::string_view> order = document.carried.RootOrder();
  for (const std::string_view tag : kRootChildren) {
    if (std::find(order.begin(), order.end(), tag) == order.end()) order.push_back(tag);
  }
  XmlCursor cursor(root, problems);
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
  ~GatheredTargets() {
    for (int i = 0; i < m_sets.GetSize(); ++i) {
      m_sets[i].GetFormCtrlTargetArray().SetSize(m_counts[static_cast<std::size_t>(i)]);
    }
  }

 private:
  Vorn_XSectionsArray& m_sets;
  std::vector<int> m_counts;
};

struct StringWriter : pugi::xml_writer {
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }

  std::string text;
};

}  // namespace

DesignDocument DesignDocument::Read(const std::filesystem::path& path, const ReadOptions& options) {
  return FromBytes(ReadFile(path), path.string(), options);
}

DesignDocument DesignDocument::FromBytes(std::string bytes, const std::string& name, const ReadOptions& options) {
  const DecodedText decoded = DecodeDocument(std::move(bytes), name);
  pugi::xml_document tree;
  Parse(decoded.utf8, name, tree);

  DesignDocument document;
  document.encodingName = decoded.encodingName;
  const pugi::xml_node root = tree.document_element();
  document.edition = RecogniseEdition(root, name, options.assume, document.assumed);

  const EditionScope scope(document.edition);
  TextProblems problems;
  ReadModel(document, root, problems, name);
  if (problems.count > 0 && !options.lossy) RequireNoProblems(problems, decoded.utf8, name);
  document.replacedCharacters = problems.count;
  document.carried.Collect(tree, document.sets, VornSchema::Instance().IsVer2());
  return document;
}

DesignDocument::WriteReport DesignDocument::Write(const std::filesystem::path& path, const WriteOptions& options) {
  WriteReport report;
  const std::string bytes = ToBytes(path.string(), options, report);
  WriteFileAtomically(path, bytes);
  return report;
}

std::string DesignDocument::ToBytes(const std::string& name, const WriteOptions& options, WriteReport& report) {
  const EditionScope scope(edition);
  const GatheredTargets takeOutAgain(sets);
  pugi::xml_document tree;
  pugi::xml_node declaration = tree.append_child(pugi::node_declaration);
  declaration.append_attribute("version").set_value("1.0");
  declaration.append_attribute("encoding").set_value(EncodingName(options.encoding).data());

  TextProblems problems;
  const pugi::xml_node root = WriteRoot(tree, *this);
  if (!WriteModel(*this, root, problems)) throw DocumentError(name + ": the document cannot be put together");
  if (problems.count > 0 && !options.lossy) {
    throw DocumentError(name + ": the design holds " + problems.first->what);
  }
  report.replacedCharacters = problems.count;
  report.unplaced = carried.Restore(tree, sets);

  StringWriter writer;
  tree.save(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
  if (options.encoding == TextEncoding::Utf8) return std::move(writer.text);
  return EncodeShiftJis(writer.text, name, options.lossy, report.replacedCharacters);
}

}  // namespace vorn_host
