#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/document/root_namespaces.h"
#include "vorn/model/x_sections.h"

namespace pugi {
class xml_document;
class xml_node;
}  // namespace pugi

namespace vorn_host {

struct CarriedItem;
struct DocumentScan;
struct ElementStep;
/// The way to an element from the root, which is no step itself.
using ElementPath = std::vector<ElementStep>;

/// What a document holds and the library does not model: unknown elements, attributes, comments and processing
/// instructions, each with the place where it stood. It is put back there when the document is written again.
class CarriedContent {
 public:
  /// One row of a report: what is carried over, and how often.
  struct Row {
    std::string name;  ///< "rgm:RoadGm", "comment", "attribute version of tsf:BuildForm"
    int count = 0;     ///< how often
  };

  /// Where elements are after a change of the model, told by the paths that they had before.
  struct ElementMoves {
    /// Turns the path of an element into where it is now; false when it is gone or never was.
    std::function<bool(ElementPath&)> follow;
    /// Index of the last element of the same tag and parent before an element that is still in the model, maybe below
    /// another parent; -1 when there is none.
    std::function<int(const ElementPath&)> siblingBefore;
  };

  CarriedContent();
  ~CarriedContent();
  /// Takes the content over.
  CarriedContent(CarriedContent&&) noexcept;
  /// Takes the content over in place of its own.
  CarriedContent& operator=(CarriedContent&&) noexcept;

  /// How many attributes, comments and elements that are not of the design are carried over unless told otherwise: each
  /// takes up to a kilobyte with its place, and an element takes all below it along as one.
  static constexpr std::size_t kMostItems = 2'000'000;

  /// Takes everything out of a source document that the library leaves alone when reading it. False when that is more
  /// than so many items.
  /// @param scan of the document: elements that hold nothing more are passed over
  /// @param sets the sets read from it: their cross sections may stand in another order than in the document
  /// @param edition20 whether it was read as edition 2.0, where control targets hold text and no points
  [[nodiscard]] bool Collect(const pugi::xml_document& source, const DocumentScan& scan,
                             const Vorn_XSectionsArray& sets, bool edition20, std::size_t mostItems = kMostItems);
  /// What is carried over, in the order of the document.
  [[nodiscard]] const std::vector<CarriedItem>& Items() const;

  /// Tag of the document's root; empty for a new document.
  [[nodiscard]] const std::string& RootTag() const;
  /// All attributes of the root as they stood, in order.
  [[nodiscard]] const XmlAttributes& RootAttributes() const;
  /// The modelled elements below the root by first appearance.
  [[nodiscard]] const std::vector<std::string_view>& RootOrder() const;

  /// For every cross section of a set, in the order of the document, its index in the model; empty for a set that was
  /// not read from a document.
  [[nodiscard]] const std::vector<int>& SectionOrder(int set) const;

  /// Whether nothing is carried over.
  [[nodiscard]] bool IsEmpty() const { return Rows().empty(); }
  /// The items by name and number, in the order of the document, attributes of the root included.
  [[nodiscard]] std::vector<Row> Rows() const;
  /// Whether road geometry ("rgm:" elements) is among it.
  [[nodiscard]] bool HasRoadGeometry() const;

  /// Changes the URI of a namespace wherever a carried item declares it itself: elements move with the edition.
  void ChangeNamespace(const std::string& from, const std::string& to);
  /// Drops what hangs on control targets: they move when a document changes between 2.0 and a later edition.
  /// @returns what was dropped
  std::vector<Row> DropBelowControlTargets();
  /// Moves items along with their elements when the model changes.
  /// @returns what was dropped, as the element that held it is gone
  std::vector<Row> MoveElements(const ElementMoves& moves);
  /// Moves items along with their sets. What hung on a set that is gone goes with it.
  /// @param formers for each set, which one it was, -1 for a new one
  /// @param formerCount how many there were
  void RearrangeSets(const std::vector<int>& formers, int formerCount);

  /// Writes everything below an element of another document, so that it can be kept apart from the design.
  void Store(pugi::xml_node parent) const;
  /// Reads what `Store` wrote. Throws `DocumentError` when it is damaged, or such that the document written from it
  /// could not be read again, or when it is more than so many items; name stands for the file.
  /// @param parent names the document's edition in its attribute "edition": what the library models depends on it
  [[nodiscard]] static CarriedContent Load(pugi::xml_node parent, const std::string& name,
                                           std::size_t mostItems = kMostItems);

  struct Impl;

 private:
  std::unique_ptr<Impl> m_impl;
};

/// What the user is told of a file with more carried items than that.
[[nodiscard]] std::string TooManyCarried(const std::string& name, std::size_t mostItems);

/// "rgm:RoadGm, comment (3)".
[[nodiscard]] std::string Describe(const std::vector<CarriedContent::Row>& rows);

/// Counts carried items by name, the names in the order in which they come.
class RowCounter {
 public:
  /// Counts an item of that name.
  void Add(const std::string& name);
  /// The rows; the counter is empty then.
  [[nodiscard]] std::vector<CarriedContent::Row> Take();

 private:
  std::vector<CarriedContent::Row> m_rows;
  std::unordered_map<std::string, std::size_t> m_places;
};

}  // namespace vorn_host
