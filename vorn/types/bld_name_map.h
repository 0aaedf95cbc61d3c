#pragma once

#include <cstdint>

#include "vorn/model/x_section.h"
#include "vorn/platform/carchive.h"
#include "vorn/platform/clist.h"
#include "vorn/platform/cmap.h"
#include "vorn/platform/cstring.h"

/// The name of a build form as the registry lists it.
class VornBuildItem {
 public:
  /// Color of a new item.
  static constexpr std::uint32_t kDefaultColor = 0xFF8000;

  VornBuildItem() = default;
  /// An item of that name.
  explicit VornBuildItem(const char* name) : m_name(name) {}

  /// Name of the build form.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Color for the host.
  [[nodiscard]] std::uint32_t GetColor() const { return m_color; }
  void SetColor(std::uint32_t color) { m_color = color; }
  /// Non-zero: the design data has a form of that name. Not archived.
  [[nodiscard]] std::int32_t GetUsed() const { return m_used; }
  void SetUsed(std::int32_t used) { m_used = used; }

  /// Extension table, name, color.
  void Serialize(CArchive& ar);

  /// Names (exactly) and colors are equal; whether they are used does not count.
  friend bool operator==(const VornBuildItem& a, const VornBuildItem& b) {
    return a.m_name == b.m_name && a.m_color == b.m_color;
  }

 private:
  CString m_name;
  std::uint32_t m_color = kDefaultColor;
  std::int32_t m_used = 0;
};

/// The build-form names of one class of work, in the order in which they came.
class VornBldNameList : public CList<VornBuildItem> {
 public:
  VornBldNameList() = default;
  VornBldNameList(const VornBldNameList&) = default;
  VornBldNameList(VornBldNameList&&) noexcept = default;
  VornBldNameList& operator=(const VornBldNameList&) = default;
  VornBldNameList& operator=(VornBldNameList&&) noexcept = default;
  virtual ~VornBldNameList() = default;

  /// Extension table, 32-bit count, the items. Loading appends them; an error of the archive leaves the list.
  virtual void Serialize(CArchive& ar);

  /// Whether an item has that name (exactly).
  [[nodiscard]] bool IsExist(const CString& name) const;
  /// Marks every item as used (1) or not (0): the answer of `Vorn_XSectionArray::IsUsedBuildName` for key and its name.
  /// Key and names are taken exactly, not as the registry takes keys. So the names of forms without a type, and of
  /// forms whose type has half-width characters, come out unused under the registry's own key: pass the type as the
  /// forms have it.
  void CheckUsedName(const CString& key, const Vorn_XSectionArray& sections);
};

/// The build-form names of all classes of work, such as "盛土工", "切土工" and "その他". Keys that differ only in the
/// width of their characters are one key: every operation converts its key to full width (`SilString::HanToZen`), and
/// the base is private so that no other key gets in. Names are taken as they are. One registry exists for the whole
/// process; nothing locks it.
class VornBldNameMap : private CMap<CString, VornBldNameList> {
 public:
  /// The registry of the process.
  static VornBldNameMap& Instance() { return m_instance; }

  VornBldNameMap() = default;
  VornBldNameMap(const VornBldNameMap&) = default;
  VornBldNameMap(VornBldNameMap&&) noexcept = default;
  VornBldNameMap& operator=(const VornBldNameMap&) = default;
  VornBldNameMap& operator=(VornBldNameMap&&) noexcept = default;
  virtual ~VornBldNameMap() = default;

  /// Extension table, 32-bit count, then each key with its list, in the order of the keys. Loading replaces all; an
  /// error of the archive leaves the registry.
  virtual void Serialize(CArchive& ar);

  /// Iteration gives each (full-width) key with its list, in the order of the keys by unsigned bytes.
  using CMap::begin;
  /// The end of the iteration.
  using CMap::end;
  /// How many keys there are.
  using CMap::GetCount;
  /// Whether there is no key.
  using CMap::IsEmpty;
  /// Removes all keys.
  using CMap::RemoveAll;

  /// Copies the list of a key; 0, and out unchanged, when there is none.
  std::int32_t Lookup(CString key, VornBldNameList& out) const;
  /// The list of a key; null when there is none. Valid until the registry changes.
  [[nodiscard]] VornBldNameList* Get(CString key);
  [[nodiscard]] const VornBldNameList* Get(CString key) const;
  /// The list of a key, a new one when there is none.
  VornBldNameList& operator[](const CString& key);
  /// Stores a list in place of whatever has the key.
  void SetAt(CString key, const VornBldNameList& list);
  void SetAt(CString key, VornBldNameList&& list);
  /// False when there was no such key.
  bool RemoveKey(const CString& key);
  /// Whether the list of a key has that name; false without the key.
  [[nodiscard]] bool IsExist(CString key, const CString& name) const;
  /// Adds a name to the list of a key, at its end, unless it is there.
  void Set(CString key, const CString& name);
  /// Replaces the registry of the process by the names in the design data, each once in its class, in the order of
  /// their first occurrence. A form without a type counts as "盛土工" or "切土工" when its name tells so ("盛" first,
  /// then "切"), otherwise as "その他". Null counts as no design data: the registry is empty afterwards.
  static void Initiate(Vorn_XSectionArray* sections);

 private:
  static VornBldNameMap m_instance;
};
