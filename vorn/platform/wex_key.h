#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "vorn/platform/cstring.h"
#include "vorn/platform/wex_store.h"

/// A settings key of the host application: named integers and texts that outlast a session.
///
/// A key starts closed. On a closed key reading gives the default and writing gives false, so a caller who is content
/// with the defaults need not ask whether a key could be opened.
///
/// Without the memory that a call takes it throws `std::bad_alloc`, and the key is open or closed where it was. What is
/// stored is then the store's to tell.
class WexKey {
 public:
  /// Opens a key below the parent, or below the application's own key when there is no parent. False, with this key
  /// closed, when there is no such key or the parent is closed. The sub-key may be several names deep; an empty one
  /// is the parent itself.
  bool Open(const WexKey* parent, const char* subKey);
  /// As `Open`, but creates the key if it does not exist.
  bool Create(const WexKey* parent, const char* subKey);
  /// Closes the key; a closed key stays as it is.
  void Close();
  /// Whether the key is open.
  [[nodiscard]] bool IsOpen() const { return m_store != nullptr; }

  /// The value of a name; the default when there is none, or when what is stored is not of this kind.
  [[nodiscard]] std::int32_t GetInt(const char* name, std::int32_t defaultValue) const;
  /// The text of a name; the default when there is none, or when an integer is stored.
  [[nodiscard]] CString GetString(const char* name, const char* defaultValue) const;

  /// Stores a value; false when it could not be stored.
  bool SetInt(const char* name, std::int32_t value);
  /// Stores a text; false when it could not be stored.
  bool SetString(const char* name, const char* value);

 private:
  friend class WexKeyGroup;

  /// A key at a path, without asking whether it exists; closed when the parent is.
  [[nodiscard]] static WexKey Located(const WexKey* parent, const char* subKey);

  std::shared_ptr<WexStore> m_store;
  CString m_path;
};

/// Calls on settings keys that belong together while this lives, so that a set of values is read and kept as a whole:
/// nobody sees half of it, as far as the store can do that. What is stored in a group may be kept only at its end, so
/// a true that storing gives then means that the value is taken; a failure at the end is the store's to report.
class WexKeyGroup {
 public:
  /// Groups the calls on the store of a key, or on the application's when there is none. On a closed key, no calls.
  explicit WexKeyGroup(const WexKey* parent);
  WexKeyGroup(const WexKeyGroup&) = delete;
  WexKeyGroup& operator=(const WexKeyGroup&) = delete;
  /// Ends the group.
  ~WexKeyGroup();

 private:
  std::shared_ptr<WexStore> m_store;
};

/// Installs the process's settings store and the path of the application's own key in it. Until then settings are
/// kept in memory only. Keys that are open stay in the store they were opened in. Without memory, which throws
/// `std::bad_alloc`, the store and the path before stay.
void WexSetApplicationStore(std::shared_ptr<WexStore> store, std::string_view rootPath);

/// Opens a sub-key of the parent, or of the application's own key when there is no parent, and creates it if needed.
bool WexGetApplicationSubKey(WexKey* key, const char* subKey, const WexKey* parent);
