#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/wex_key.h"
#include "vorn/road/record.h"
#include "vorn/road/setting.h"

/// How the as-built control items are called and their points marked.
class VornFormCtrl : public VornRecord {
 public:
  /// The control items, in the order of their names.
  enum NameIndex : std::size_t {
    RoadCenter,
    RoadLeft,
    RoadRight,
    SlopeLeft,
    SlopeRight,
    RoadSurface,
    BermLeft,
    BermRight,
    OtherLeft,
    OtherRight,
    NameCount,
  };
  /// What is marked, in the order of the marks.
  enum MarkIndex : std::size_t { SlopeMarks, BermMarks, RoadMarks, OtherMarks, MarkCount };
  /// The series of labels that mark points.
  enum class CtrlMarkType : std::int32_t { Digits = 0, Capitals = 1, SmallLetters = 2 };

  /// Names by `NameIndex`.
  using Names = std::array<CString, NameCount>;
  /// Marks by `MarkIndex`.
  using Marks = std::array<CtrlMarkType, MarkCount>;

  /// What a control item is called in a new object, and the setting of its name. Intended: the two defaults differ.
  struct ItemName {
    std::string_view initial;  ///< the name in a new object
    VornTextSetting setting;   ///< the setting of its name
  };
  /// By `NameIndex`.
  static const std::array<ItemName, NameCount> kItemNames;
  /// By `MarkIndex`; the values are those of `CtrlMarkType`.
  static const std::array<VornIntegerSetting, MarkCount> kMarkSettings;
  /// Name of the key that the settings lie in.
  static constexpr const char* kSettingsKey = "FormCtrl";

  VornFormCtrl() { Init(); }
  VornFormCtrl(const VornFormCtrl&) = default;
  VornFormCtrl(VornFormCtrl&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornFormCtrl& operator=(const VornFormCtrl& other) { return *this = VornFormCtrl(other); }
  VornFormCtrl& operator=(VornFormCtrl&&) noexcept = default;

  /// The record of the project archive. One older than "02.50" lacks the names of the other items and the road and
  /// other marks; its names are discarded: intended, all ten are as `Init` sets them afterwards. Archive and file
  /// exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Sets all names to their defaults.
  void Init();

  /// Takes names and marks from the settings below a key, or below the application's own key when `parent` is null; a
  /// missing value gives its default. Intended: the default names are not those of `Init`. Nothing changes when there
  /// are no such settings.
  void LoadRegistry(WexKey* parent);
  /// Keeps names and marks in the settings below a key, or below the application's own key when `parent` is null, as
  /// far as these can be written.
  void StoreRegistry(WexKey* parent) const;

  /// Names of the control items, by `NameIndex`.
  [[nodiscard]] const Names& GetNames() const { return m_names; }
  [[nodiscard]] Names& GetNames() { return m_names; }
  /// Marks, by `MarkIndex`.
  [[nodiscard]] const Marks& GetMarks() const { return m_marks; }
  [[nodiscard]] Marks& GetMarks() { return m_marks; }
  /// A number that the library keeps and does not look into. Not part of the settings.
  [[nodiscard]] double GetValue() const { return m_value; }
  void SetValue(double value) { m_value = value; }

  /// The labels of a series as a sample, such as "ＡＢＣＤＥ" in full width; empty for an unknown value.
  [[nodiscard]] static CString GetMarkTypeStr(CtrlMarkType type);

  /// Whether the names, the slope and berm marks and the value are equal. Intended: road and other marks do not count.
  [[nodiscard]] bool CompareFormCtrl(const VornFormCtrl& other) const;

 private:
  Names m_names;
  Marks m_marks{};
  double m_value = 15.0;
};
