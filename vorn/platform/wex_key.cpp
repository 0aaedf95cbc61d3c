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

bool WexKey::Locate(const WexKey* parent, const char* subKey) {
  // Built aside, because a key may be opened below itself.
  ApplicationRoot origin = parent == nullptr ? Root() : ApplicationRoot{parent->m_store, parent->m_path};
  m_path = Join(origin.path, ViewOf(subKey));
  m_store = std::move(origin.store);
  return IsOpen();
}

bool WexKey::Open(const WexKey* parent, const char* subKey) {
  const bool opened = Locate(parent, subKey) && m_store->KeyExists(m_path.View());
  if (!opened) Close();
  return opened;
}

bool WexKey::Create(const WexKey* parent, const char* subKey) {
  const bool created = Locate(parent, subKey) && m_store->CreateKey(m_path.View());
  if (!created) Close();
  return created;
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
