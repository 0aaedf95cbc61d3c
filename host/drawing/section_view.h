#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/design_document.h"
#include "host/drawing/view_note.h"

namespace vorn_host {

/// A place in the plane of a cross section, in metres.
struct SectionPlace {
  double offset = 0.0;  ///< from the centre line, positive to the right as seen along rising stations
  double height = 0.0;  ///< elevation where the section's own height is known, else above the centre line

  friend bool operator==(const SectionPlace&, const SectionPlace&) = default;
};

/// Whether both are numbers.
[[nodiscard]] inline bool IsFinite(const SectionPlace& place) {
  return std::isfinite(place.offset) && std::isfinite(place.height);
}

/// What part of a cross section leads to a point, from the point before it.
enum class SectionPart { Start, Roadbed, Slope, Berm, Other };

/// The two input values of a point, and how they are read.
struct ViewInput {
  /// How the two values are read.
  using Reading = VornComposedPnt::Reading;
  Reading reading = Reading::WidthHeight;  ///< how x and y are read
  std::optional<double> x = {};            ///< first value; none when the document has none
  std::optional<double> y = {};            ///< second value; none when the document has none

  friend bool operator==(const ViewInput&, const ViewInput&) = default;
};

/// A point of a build form.
struct ViewPoint {
  SectionPlace place;                     ///< where it lies
  std::string code;                       ///< the survey name; may be empty
  int from = -1;                          ///< index of the point that this one is placed from; -1 for a start point
  SectionPart part = SectionPart::Start;  ///< what leads to it
  std::string side;                       ///< as the document says: "Center", "Left", "Right"; may be empty
  std::string input;        ///< the input values as people write them: "3.500 m, -1.501 %", "-5.000 m, 1:1.500"
  std::string grade;        ///< of the segment from `from`: "-1.5%" on roadbeds and berms, "1:1.5" on slopes
  bool exists = true;       ///< false: a point that the section does not build (beyond a crossing)
  bool isCrossing = false;  ///< the crossing with the existing ground
  ViewInput values = {};    ///< what `input` says, as exact as the document
  int documentIndex = -1;   ///< among the points of the form in the document, which messages count by; ascending

  friend bool operator==(const ViewPoint&, const ViewPoint&) = default;
};

/// What a build form shows.
enum class FormRole {
  DesignSurface,  ///< the surface of the earthwork: what the plan surface is
  Layer,          ///< a pavement layer
  Other,
};

/// A build form with all its points placed.
struct ViewForm {
  std::string name;                 ///< of the form
  std::string xSectType;            ///< its cross-section type; may be empty
  FormRole role = FormRole::Other;  ///< what it shows
  std::vector<ViewPoint> points;    ///< in the order of the document
  /// The lines that the form draws, each from left to right: indices of points, one line where all are connected.
  std::vector<std::vector<int>> lines;
  int documentIndex = -1;  ///< among the forms of the section in the document, which messages count by; ascending

  friend bool operator==(const ViewForm&, const ViewForm&) = default;
};

/// Of two neighbours on a line of a form, by their indices, the one that the line leads to from the start point
/// outward: points of a side stand in the document in that order, whichever points of the other side stand in between.
[[nodiscard]] inline int OuterOf(int one, int other) { return std::max(one, other); }

/// The ratio or the grade of the segment between two neighbours on a line, as `ViewPoint::grade`. Where the outer one
/// is placed from another point, its own grade is that of another segment, and the places tell this one's.
[[nodiscard]] std::string SegmentGrade(const ViewForm& form, int one, int other);

/// The points of a form along its line from one to another, both included; the two alone where no line connects them.
[[nodiscard]] std::vector<int> PathBetween(const ViewForm& form, int from, int to);

/// The existing ground, from left to right.
struct ViewGround {
  std::string name;                ///< of the ground; may be empty
  std::vector<SectionPlace> line;  ///< from left to right

  friend bool operator==(const ViewGround&, const ViewGround&) = default;
};

/// Height of the existing ground at an offset; none beside it.
[[nodiscard]] std::optional<double> GroundHeightAt(const ViewGround& ground, double offset);

/// A control target and the points that it names.
struct ViewTarget {
  /// Where a point stands that is not in the section shown.
  struct Elsewhere {
    std::optional<double> station;  ///< cumulative distance in metres; none where the document tells none
    std::string stationText;        ///< "120.0000"; empty without a station
    bool isBehindChange = false;    ///< behind the change of shape at that station

    friend bool operator==(const Elsewhere&, const Elsewhere&) = default;
  };
  /// What is measured.
  enum class Item { SlopeLength, Width, Height, Thickness, Depth, SectionArea, Length, Area, Other };
  /// A point that a control target names.
  struct Pnt {
    int form = -1;     ///< index into `SectionView::forms`
    int point = -1;    ///< index into its points; both -1 where the point does not exist in this section
    std::string name;  ///< as the document names it: "路面 L1"
    /// Metres: the elevation of a point whose height is measured. None where the points have one value together.
    std::optional<double> designValue = {};
    std::optional<Elsewhere> elsewhere = {};  ///< none where the target means a point of the section shown

    friend bool operator==(const Pnt&, const Pnt&) = default;
  };
  Item item = Item::Other;  ///< what is measured
  std::string itemText;     ///< the control item as the document says it: "Width"
  std::string formName;     ///< the build form that holds it
  std::string workType;     ///< may be empty
  std::string scope;        ///< target scope; may be empty
  std::string regulation;   ///< target regulation; may be empty
  std::vector<Pnt> points;  ///< in the order of the document
  /// Metres: the width, the elevation, the length along the form, or the thickness or depth between two points at one
  /// offset that the design has. None for a height of several points, each of which has its own, for a thickness
  /// between points at different offsets, and for what a section cannot tell, such as an area.
  std::optional<double> designValue;

  friend bool operator==(const ViewTarget&, const ViewTarget&) = default;
};

/// A cross section as people look at it: texts in UTF-8, every point at its place.
struct SectionView {
  int set = 0;                    ///< index of the set in the document
  int section = 0;                ///< index of the section in the set; -1 for what stands in none of them
  std::string alignment;          ///< the alignment that the set refers to; may be empty
  std::string name;               ///< may be empty
  std::optional<double> station;  ///< cumulative distance in metres
  std::string stationText;        ///< "No.6+0.0000" where the document counts by numbers, else "120.0000"
  bool isBehindChange = false;    ///< of two sections at one station, the one behind the change of shape
  bool isControlSection = false;  ///< whether it is an as-built control section
  /// Height of the centre line above the datum in metres, where it is known; heights are elevations then.
  std::optional<double> centerHeight;
  bool isHeightAssumed = false;     ///< nobody told that height: it is taken from where the design ends on the ground
  std::vector<ViewForm> forms;      ///< in the order of the document
  std::vector<ViewGround> grounds;  ///< empty where the height of the centre line is not known
  std::vector<ViewTarget> targets;  ///< those that have a point in this section
  std::vector<ViewNote> notes;      ///< what could not be shown

  friend bool operator==(const SectionView&, const SectionView&) = default;
};

/// The form that a named point of a control target lies in; null where there is none.
[[nodiscard]] inline const ViewForm* FormOf(const SectionView& view, const ViewTarget::Pnt& named) {
  const auto index = static_cast<std::size_t>(named.form);
  return named.form >= 0 && index < view.forms.size() ? &view.forms[index] : nullptr;
}

/// The point that a control target names; null where the section has none of that name.
[[nodiscard]] inline const ViewPoint* PointOf(const SectionView& view, const ViewTarget::Pnt& named) {
  const ViewForm* form = FormOf(view, named);
  const auto index = static_cast<std::size_t>(named.point);
  return form != nullptr && named.point >= 0 && index < form->points.size() ? &form->points[index] : nullptr;
}

/// Index in the document of the point that a point is placed from; -1 for a start point.
[[nodiscard]] inline int OriginIndexOf(const ViewForm& form, const ViewPoint& point) {
  const auto index = static_cast<std::size_t>(point.from);
  return point.from >= 0 && index < form.points.size() ? form.points[index].documentIndex : -1;
}

/// Looks at the cross sections of a document, one by one: what all of them share (which target stands where, how
/// stations are counted) is found once. The document has to outlive the object and to stay as it is meanwhile.
class SectionViewer {
 public:
  /// The document has to outlive the viewer.
  explicit SectionViewer(const DesignDocument& document);

  /// The cross section of a set, at its indices in the document. Points are placed from their input values where they
  /// have no position yet; what cannot be placed is left out and told in the notes.
  ///
  /// Most documents do not tell the height of the centre line, but their ground lies at elevations. The height is taken
  /// then from where the slopes end on the ground, when both sides give the same one, and the notes say so. On level
  /// ground that takes marked crossings, as equal slopes agree there at any height. Otherwise heights count from the
  /// centre line, and the ground is left out.
  /// @param centerHeight height of the centre line, in metres, where the document does not tell it
  [[nodiscard]] SectionView Of(int set, int section, const std::optional<double>& centerHeight = std::nullopt) const;

  /// The control targets of a set that no cross section shows, as none of their points is at the station of one.
  /// Nothing else is in the view.
  [[nodiscard]] SectionView WithoutSection(int set) const;

  /// The station that a text names in a set, in metres: "120", "120.0000", and "No.6", "No.6+0.0000" where the set
  /// counts by numbers. None for any other text.
  [[nodiscard]] std::optional<double> StationOf(int set, std::string_view text) const;

 private:
  struct Knowledge;

  const DesignDocument& m_document;
  std::shared_ptr<const Knowledge> m_knowledge;
};

/// One cross section; see `SectionViewer::Of`, which is quicker for many.
[[nodiscard]] SectionView ViewOf(const DesignDocument& document, int set, int section,
                                 const std::optional<double>& centerHeight = std::nullopt);

}  // namespace vorn_host
