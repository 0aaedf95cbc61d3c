#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/design_document.h"
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
  static constexpr std::array<std::string_view, 3> kWritableStoreVersions = {"05.00", "05.50", kNewestStoreVersion};

  /// Something that an older store version cannot hold, and how often.
  struct Loss {
    std::string what;
    int count = 0;
  };

  /// A new project: no road data, and the settings' names of the as-built control items.
  Project();

  /// Reads a project file of any store version. Throws `DocumentError` when it cannot be read, is damaged, or was
  /// written by a newer library.
  [[nodiscard]] static Project Read(const std::filesystem::path& path);
  /// Reads a project file's content; name stands for the file in messages.
  [[nodiscard]] static Project FromBytes(std::string_view content, const std::string& name);

  /// Writes the project, whole or not at all; the file that was there before is kept beside it as
  /// `BackupOf(path)`. Throws `DocumentError`, also while the design is out. An older store version cannot hold
  /// everything; what a point is in its second role is lost in the project as well then.
  /// @returns what the file does not hold
  std::vector<Loss> Save(const std::filesystem::path& path, std::string_view storeVersion = kNewestStoreVersion);
  /// The content that `Save` writes.
  [[nodiscard]] std::vector<std::uint8_t> ToBytes(const std::string& name, std::string_view storeVersion,
                                                  std::vector<Loss>& losses);

  /// Hands out the design: the sets of the document that it came from, or without one, those of all alignments that
  /// have a design. The road data are without it until it is taken back; alignments are not to be added or removed
  /// meanwhile.
  [[nodiscard]] DesignDocument GiveDesign();
  /// Makes a design the project's own in place of the one that it has: one alignment for each set, named as the set
  /// refers to it. What an alignment holds besides its cross sections stays. Two sets that refer to one alignment
  /// become two of that name, since an alignment holds one set. Copies of alignments in the road-centre data stay as
  /// they are (`VornRoadCenterData::SetCommonData` renews them).
  void TakeDesign(DesignDocument design);
  /// Whether the project holds anything besides the design. To be asked while the design is out.
  [[nodiscard]] bool HoldsRoadData() const;

  /// Store version that the project was read in; the newest for a new one.
  [[nodiscard]] const std::string& GetStoreVersion() const { return m_storeVersion; }
  /// The road geometry that the design belongs to.
  [[nodiscard]] const VornRoadGmData& GetRoadGm() const;

  /// All road data. The design is in the construction information; data of hosts that keep it with the road centre
  /// are taken from there.
  VornLinearXMLData data;

 private:
  [[nodiscard]] VornRoadGmData& RoadGm();
  /// The alignments that hold the design, ascending.
  [[nodiscard]] std::vector<int> DesignAlignments() const;
  /// Settles where the design is, once everything is read.
  void FindDesign(const std::string& name);
  void LoadRecord(std::string_view record, const std::string& name);
  [[nodiscard]] std::string DocumentPart() const;
  void LoadDocumentPart(std::string_view text, const std::string& name);

  std::string m_storeVersion{kNewestStoreVersion};
  bool m_designInRoadCenter = false;
  bool m_isOfDocument = false;  ///< the design came from a document
  bool m_isOut = false;         ///< the design is handed out
  std::vector<int> m_given;     ///< while the design is out: the alignment of each set
  /// Alignments whose sets hold nothing, and yet are sets of the document.
  std::vector<int> m_emptySets;

  // What the records do not hold of the design's document.
  Edition m_edition = Edition::V41;
  std::string m_encodingName = "UTF-8";
  bool m_hasStructureType = false;
  CarriedContent m_carried;
};

}  // namespace vorn_host
