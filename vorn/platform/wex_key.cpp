#include "vorn/platform/wex_key.h"

#include <utility>

namespace {

struct ApplicationRoot {
  std::shared_ptr<WexStore> store = std::make_shared<WexMemoryStore>();
  CString path;
};

/// The process's root.
ApplicationRoot& Root() {
  static ApplicationRoot root;
  return root;
}

std::string_view ViewOf(const char* text) { return text != nullptr ? std::string_view(text) : std::string_view(); }

CString Join(const CString& parent, std::string_view subKey) {
  if (parent.IsEmpty()) return subKey;
  CString path = parent;
  if (!subKey.empty()) (path += WexStore::kSeparator) += subKey;
  return path;
}

}  // namespace

WexKey WexKey::Located(const WexKey* parent, const char* subKey) {
  WexKey key;
  if (parent == nullptr) {
    key.m_store = Root().store;
    key.m_path = Join(Root().path, ViewOf(subKey));
  } else {
    key.m_store = parent->m_store;
    key.m_path = Join(parent->m_path, ViewOf(subKey));
  }
  return key;
}

// Located aside: a key may be opened below itself, and without memory it stays what it was. A key that were left at a
// path that nobody has looked up would pass for an open one.

bool WexKey::Open(const WexKey* parent, const char* subKey) {
  WexKey key = Located(parent, subKey);
  if (!key.IsOpen() || !key.m_store->KeyExists(key.m_path.View())) key.Close();
  *this = std::move(key);
  return IsOpen();
}

bool WexKey::Create(const WexKey* parent, const char* subKey) {
  WexKey key = Located(parent, subKey);
  if (!key.IsOpen() || !key.m_store->CreateKey(key.m_path.View())) key.Close();
  *this = std::move(key);
  return IsOpen();
}

void WexKey::Close() {
  m_store.reset();
  m_path.Empty();
}

std::int32_t WexKey::GetInt(const char* name, std::int32_t defaultValue) const {
  return IsOpen() ? m_store->ReadInt(m_path.View(), ViewOf(name)).value_or(defaultValue) : defaultValue;
}

CString WexKey::GetString(const char* name, const char* defaultValue) const {
  return IsOpen() ? m_store->ReadString(m_path.View(), ViewOf(name)).value_or(defaultValue) : CString(defaultValue);
}

bool WexKey::SetInt(const char* name, std::int32_t value) {
  return IsOpen() && m_store->WriteInt(m_path.View(), ViewOf(name), value);
}

bool WexKey::SetString(const char* name, const char* value) {
  return IsOpen() && m_store->WriteString(m_path.View(), ViewOf(name), ViewOf(value));
}

WexKeyGroup::WexKeyGroup(const WexKey* parent) : m_store(parent == nullptr ? Root().store : parent->m_store) {
  if (m_store != nullptr) m_store->BeginGroup();
}

WexKeyGroup::~WexKeyGroup() {
  if (m_store != nullptr) m_store->EndGroup();
}

void WexSetApplicationStore(std::shared_ptr<WexStore> store, std::string_view rootPath) {
  ApplicationRoot root{std::move(store), rootPath};
  if (root.store == nullptr) root.store = std::make_shared<WexMemoryStore>();
  Root() = std::move(root);
}

bool WexGetApplicationSubKey(WexKey* key, const char* subKey, const WexKey* parent) {
  return key != nullptr && key->Create(parent, subKey);
}
