#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/document/design_document.h"
#include "host/project/document_part.h"
#include "host/project/set_places.h"
#include "vorn/road/linear_xml_data.h"

namespace vorn_host {

/// A design with all its road data, as a project file keeps it.
///
///     Project project = Project::Read("ring-road.vorn");
///     DesignDocument design = project.GiveDesign();
///     ...
///     project.TakeDesign(std::move(design));
///     project.Save("ring-road.vorn");
///
/// What the library does not model of a document stays with the project, so that a document made from it later has it
/// again. Some of the model is in no project, since no record of the archive has it (docs/project-file.md).
class Project {
 public:
  /// The store version that the library's records have now, and those that it can write: older ones are only read.
  static constexpr std::string_view kNewestStoreVersion = "06.00";
  /// Oldest first.
  static constexpr std::array<std::string_view, 3> kWritableStoreVersions = {"05.00", "05.50", kNewestStoreVersion};

  /// What a project file may hold. Reading takes memory in proportion: whoever takes projects from strangers sets what
  /// the machine can bear.
  struct ReadOptions {
    std::uint64_t mostBytes = kLargestFile;  ///< the largest file that is read, in bytes
    /// How many things that are not of the design it may carry over of its document.
    std::size_t mostCarriedItems = CarriedContent::kMostItems;
  };

  /// Something that an older store version cannot hold, and how often.
  struct Loss {
    std::string what;  ///< as the user is told it
    int count = 0;     ///< how often
  };

  /// A new project: no road data, and the built-in names of the as-built control items.
  Project();

  /// Reads a project file of any store version. Throws `DocumentError` when it cannot be read, is damaged, was written
  /// by a newer library, or holds more than the options allow.
  [[nodiscard]] static Project Read(const std::filesystem::path& path, const ReadOptions& options);
  [[nodiscard]] static Project Read(const std::filesystem::path& path) { return Read(path, ReadOptions()); }
  /// Reads a project file's content; name stands for the file in messages.
  [[nodiscard]] static Project FromBytes(std::string_view content, const std::string& name, const ReadOptions& options);
  [[nodiscard]] static Project FromBytes(std::string_view content, const std::string& name) {
    return FromBytes(content, name, ReadOptions());
  }

  /// Writes the project, whole or not at all; the file that was there before is kept beside it as
  /// `BackupOf(path)`. Throws `DocumentError`, also while the design is out. An older store version cannot hold
  /// everything; the project itself keeps it.
  /// @returns what the file does not hold
  std::vector<Loss> Save(const std::filesystem::path& path, std::string_view storeVersion = kNewestStoreVersion);
  /// The content that `Save` writes.
  [[nodiscard]] std::vector<std::uint8_t> ToBytes(const std::string& name, std::string_view storeVersion,
                                                  std::vector<Loss>& losses);

  /// Hands out the design: the sets of the document that it came from and of every other alignment that has a design.
  /// An alignment has one when its set holds cross sections or control targets, refers to an alignment or a profile, or
  /// names a project phase; once it is a set of a document, it stays one until it is removed. A project that came from
  /// no document takes the edition from the road geometry's schema version, and the structure type when that says
  /// anything. The road data are without the design until it is taken back.
  [[nodiscard]] DesignDocument GiveDesign();
  /// Makes a design the project's own in place of the one that it has: one alignment for each set, in the sets' order.
  /// A set has the alignment of the former set with the same references, else with the same road alignment, else the
  /// alignment of the name that it refers to; of what is left, sets and alignments in the same place belong together.
  /// Whatever an alignment holds besides its cross sections stays; its name follows the reference when it was the
  /// same, so that only a name that was chosen apart differs from it. A set without a former one has a new alignment,
  /// named as it refers to it, and an alignment without a set goes. Two sets that refer to one alignment become two of
  /// that name, since an alignment holds one set. Copies of alignments in the road-centre data stay as they are
  /// (`VornRoadCenterData::SetCommonData` renews them).
  void TakeDesign(DesignDocument design);
  /// Whether the project holds anything besides the design. To be asked while the design is out.
  [[nodiscard]] bool HoldsRoadData() const;

  /// Store version that the project was read in; the newest for a new one.
  [[nodiscard]] const std::string& GetStoreVersion() const { return m_storeVersion; }
  /// The road geometry that the design belongs to; of a project that came from no document, as it was when the design
  /// was last read, given or saved.
  [[nodiscard]] const VornRoadGmData& GetRoadGm() const;

  /// All road data, to be changed at will: alignments may be added, removed and moved at any time, and what is carried
  /// over from the document follows their sets. The design is in the construction information; data of hosts that keep
  /// it with the road centre are taken from there.
  VornLinearXMLData data;

 private:
  [[nodiscard]] VornRoadGmData& RoadGm();
  void LoadRecord(std::string_view record, const std::string& name);
  /// Settles which alignments are sets of the document, once everything is read.
  void FindSets(const std::string& name);
  /// Takes over what the application did with the data meanwhile.
  void Settle();
  void SettleSets();
  /// Lets sets refer to their own alignments where nobody said otherwise.
  void ReferToAlignments();

  std::string m_storeVersion{kNewestStoreVersion};
  bool m_isOfDocument = false;  ///< the design came from a document
  bool m_isOut = false;         ///< the design is handed out
  /// Whether the structure type said nothing when the design was read or taken.
  bool m_isStructureTypeBlank = true;
  SetPlaces m_sets;
  /// What the records do not hold of the design's document.
  DocumentPart m_document;
};

}  // namespace vorn_host
