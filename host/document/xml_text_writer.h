#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/carried_places.h"
#include "host/document/root_namespaces.h"
#include "host/document/text_encoding.h"
#include "vorn/platform/pim_iterator.h"

namespace vorn_host {

/// The library's cursor for writing a document: every operation goes straight into the text, in UTF-8, without a tree
/// in between. It takes what writing needs, in the order in which elements write themselves: a child, its attributes
/// (each once), its text or its children, back to the parent. Everything else is refused with false.
///
/// Carried items are put in where they belong as their elements are closed.
class XmlTextWriter : public PimIterator {
 public:
  /// Takes a piece of the text and leaves the string empty.
  using PieceTaker = std::function<void(std::string& piece)>;

  /// What no document can hold in texts of the model, bytes that are no text and control characters, becomes 〓 and is
  /// reported. Both references have to outlive the writer.
  /// @param take gets the text in pieces of about a megabyte, as soon as nothing can be put into them any more; without
  /// it, `Finish` gives all
  XmlTextWriter(CarriedPlaces& places, TextProblems& problems, PieceTaker take = nullptr);

  /// Writes the XML declaration, what stands before the root, and opens the root. Its texts are UTF-8 already.
  void OpenRoot(std::string_view encoding, const std::string& tag, const XmlAttributes& attributes);
  /// Closes the root and writes what stands behind it. The text is complete then: this is what has not been handed out
  /// of it.
  [[nodiscard]] std::string Finish();

  bool InsertChild(const char* tag, const char* namespaceUri) override;
  bool SetTextAttribute(const char* name, std::string_view value) override;
  bool SetText(std::string_view text) override;
  /// Closes the current element.
  bool Parent() override;
  bool GetTagName(CString& tag) const override;

  bool Child() override { return false; }
  bool NextSibling() override { return false; }
  bool PrevSibling() override { return false; }
  bool GetText(CString&) const override { return false; }
  bool GetAttributes(CArray<PimAttribute>&) const override { return false; }

 private:
  /// What is known of an element only because carried items belong into it.
  struct CarriedState {
    CarriedPlaces::Element* element = nullptr;
    std::size_t bodyStart = 0;
    /// End of each written child, by tag and index.
    std::map<std::string, std::vector<std::size_t>, std::less<>> childEnds;
  };
  struct OpenElement {
    std::size_t tagLength = 0;
    bool startTagOpen = true;
    bool hasText = false;
    std::unique_ptr<CarriedState> carried;
  };

  void Open(std::string_view tag, CarriedPlaces::Element* carried);
  void Close();
  void CloseStartTag();
  /// Starts the lines of an element's children.
  void BeginBody(OpenElement& element);
  void Indent(std::size_t depth) { m_out.append(2 * depth, ' '); }
  /// The tag of the innermost open element; good until one is opened or closed.
  [[nodiscard]] std::string_view Tag() const {
    return std::string_view(m_tags).substr(m_tags.size() - m_open.back().tagLength);
  }
  void HandOut();
  void DeclareNamespace(std::string_view prefix, std::string_view uri);
  void PutAttribute(std::string_view name, std::string_view utf8);
  /// A text of the model in UTF-8, as a document can hold it; good until the next one.
  [[nodiscard]] std::string_view ModelText(std::string_view cp932);
  void PutNode(pugi::xml_node node, std::size_t depth, bool inText);
  [[nodiscard]] std::size_t PlaceOf(const CarriedItem& item, const CarriedState& state) const;
  void InsertCarried(const OpenElement& element);

  /// A namespace declaration and the depth of the element that holds it.
  struct Declaration {
    std::string prefix;
    std::string uri;
    std::size_t depth;
  };

  CarriedPlaces& m_places;
  TextProblems& m_problems;
  std::string m_out;
  PieceTaker m_take;
  std::vector<OpenElement> m_open;
  std::string m_tags;  ///< of the open elements, one behind the other
  std::vector<Declaration> m_declarations;
  std::string m_converted;
  std::string m_withoutControls;
};

}  // namespace vorn_host
