#ifdef _WIN32

#include "host/settings/registry_store.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

#include "host/document/document_error.h"

namespace vorn_host {

namespace {

struct CloseKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

std::wstring ToUtf16(std::string_view utf8) {
  const auto size = static_cast<int>(utf8.size());
  std::wstring utf16(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, utf16.data(), static_cast<int>(utf16.size()));
  return utf16;
}

std::string FromUtf16(std::wstring_view utf16) {
  const auto size = static_cast<int>(utf16.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, utf8.data(), length, nullptr, nullptr);
  return utf8;
}

std::string MessageOf(LSTATUS status) { return std::system_category().message(static_cast<int>(status)); }

/// Whether there is no such key or value, which is nothing to report.
bool IsMissing(LSTATUS status) { return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND; }

/// Opens a key of the user for reading; null, with the status told, when that fails.
Key OpenKey(const std::string& path, LSTATUS& status) {
  HKEY key = nullptr;
  status = RegOpenKeyExW(HKEY_CURRENT_USER, ToUtf16(path).c_str(), 0, KEY_READ, &key);
  return Key(status == ERROR_SUCCESS ? key : nullptr);
}

/// Opens a key of the user for writing, and makes it and those above it if they are not there.
Key MakeKey(const std::string& path, LSTATUS& status) {
  HKEY key = nullptr;
  status =
      RegCreateKeyExW(HKEY_CURRENT_USER, ToUtf16(path).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
  return Key(status == ERROR_SUCCESS ? key : nullptr);
}

/// The kind and the bytes of a value.
struct Data {
  DWORD type = REG_NONE;
  std::vector<std::byte> bytes;
};

/// None, with the status told, when the value is not there or cannot be read.
std::optional<Data> ReadData(HKEY key, const std::wstring& name, LSTATUS& status) {
  Data data;
  DWORD size = 0;
  status = RegQueryValueExW(key, name.c_str(), nullptr, &data.type, nullptr, &size);
  // Someone else may make the value longer meanwhile. Without room for a byte, only its size would be told.
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    data.bytes.resize(std::max<DWORD>(size, 1));
    size = static_cast<DWORD>(data.bytes.size());
    status =
        RegQueryValueExW(key, name.c_str(), nullptr, &data.type, reinterpret_cast<BYTE*>(data.bytes.data()), &size);
    if (status != ERROR_SUCCESS) continue;
    data.bytes.resize(size);
    return data;
  }
  return std::nullopt;
}

std::optional<SettingValue> ValueOf(const Data& data) {
  if (data.type == REG_DWORD && data.bytes.size() == sizeof(std::int32_t)) {
    std::int32_t number = 0;
    std::memcpy(&number, data.bytes.data(), sizeof number);
    return number;
  }
  if (data.type != REG_SZ) return std::nullopt;
  std::wstring text(data.bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), data.bytes.data(), text.size() * sizeof(wchar_t));
  return FromUtf16(std::wstring_view(text).substr(0, text.find(L'\0')));
}

SettingsEntry EntryOf(const SettingsPath& path, std::string name, const Data& data) {
  std::optional<SettingValue> value = ValueOf(data);
  std::string shown = value ? ShownText(*value) : "a value of type " + std::to_string(data.type);
  return {path, std::move(name), std::move(value), std::move(shown)};
}

/// Names of the values or of the keys in a key, in UTF-16. `Next(index, name, length)` gives the one of an index.
template <typename Next>
std::vector<std::wstring> Names(Next next) {
  constexpr DWORD kLongestName = 16384;
  std::vector<std::wstring> names;
  std::wstring name(kLongestName, L'\0');
  DWORD length = kLongestName;
  for (DWORD i = 0; next(i, name.data(), &length) == ERROR_SUCCESS; ++i, length = kLongestName) {
    names.emplace_back(name, 0, length);
  }
  return names;
}

std::vector<std::wstring> ValueNames(HKEY key) {
  return Names([key](DWORD index, wchar_t* name, DWORD* length) {
    return RegEnumValueW(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
  });
}

std::vector<std::wstring> KeyNames(HKEY key) {
  return Names([key](DWORD index, wchar_t* name, DWORD* length) {
    return RegEnumKeyExW(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
  });
}

LSTATUS Store(HKEY key, const std::wstring& name, std::int32_t number) {
  const auto* bytes = reinterpret_cast<const BYTE*>(&number);
  return RegSetValueExW(key, name.c_str(), 0, REG_DWORD, bytes, sizeof number);
}

LSTATUS Store(HKEY key, const std::wstring& name, const std::string& text) {
  const std::wstring utf16 = ToUtf16(text);
  const auto* bytes = reinterpret_cast<const BYTE*>(utf16.c_str());
  const auto size = static_cast<DWORD>((utf16.size() + 1) * sizeof(wchar_t));  // the NUL is part of the data
  return RegSetValueExW(key, name.c_str(), 0, REG_SZ, bytes, size);
}

}  // namespace

RegistryStore::RegistryStore(std::string rootPath, ProblemHandler report)
    : SettingsStore(std::move(report)), m_rootPath(std::move(rootPath)) {}

std::string RegistryStore::FullPath(const SettingsPath& path) const {
  std::string full = m_rootPath;
  for (const std::string& name : path) (full += kSeparator) += name;
  return full;
}

// --- reading ---------------------------------------------------------------------------------------------------------

void RegistryStore::CheckRead(const std::string& place, long status) const {
  if (status == ERROR_SUCCESS || IsMissing(status)) {
    NoteSuccess(Access::Read, place);
  } else {
    ReportOnce(Access::Read, place + ": cannot be read: " + MessageOf(status), place);
  }
}

std::vector<SettingsEntry> RegistryStore::Entries() const {
  LSTATUS status = ERROR_SUCCESS;
  if (!OpenKey(m_rootPath, status) && !IsMissing(status)) {
    throw DocumentError(Place() + ": cannot be read: " + MessageOf(status));
  }
  std::vector<SettingsEntry> entries;
  Collect({}, entries);
  return entries;
}

void RegistryStore::Collect(const SettingsPath& path, std::vector<SettingsEntry>& entries) const {
  LSTATUS status = ERROR_SUCCESS;
  const Key key = OpenKey(FullPath(path), status);
  CheckRead(PlaceOf(path), status);
  if (!key) return;
  for (const std::wstring& utf16Name : ValueNames(key.get())) {
    std::string name = FromUtf16(utf16Name);
    const std::optional<Data> data = ReadData(key.get(), utf16Name, status);
    CheckRead(PlaceOf(path, name), status);
    if (data) entries.push_back(EntryOf(path, std::move(name), *data));
  }
  SettingsPath inner = path;
  for (const std::wstring& name : KeyNames(key.get())) {
    inner.push_back(FromUtf16(name));
    Collect(inner, entries);
    inner.pop_back();
  }
}

bool RegistryStore::HasKey(const SettingsPath& path) const {
  LSTATUS status = ERROR_SUCCESS;
  const Key key = OpenKey(FullPath(path), status);
  CheckRead(PlaceOf(path), status);
  return key != nullptr;
}

std::optional<SettingsEntry> RegistryStore::Find(const SettingsPath& path, std::string_view name) const {
  LSTATUS status = ERROR_SUCCESS;
  const Key key = OpenKey(FullPath(path), status);
  CheckRead(PlaceOf(path), status);
  if (!key) return std::nullopt;
  const std::optional<Data> data = ReadData(key.get(), ToUtf16(name), status);
  CheckRead(PlaceOf(path, name), status);
  return data ? std::optional(EntryOf(path, std::string(name), *data)) : std::nullopt;
}

// --- writing ---------------------------------------------------------------------------------------------------------

bool RegistryStore::Keep(SettingChange change) {
  LSTATUS status = ERROR_SUCCESS;
  if (const Key key = MakeKey(FullPath(change.path), status)) {
    const std::wstring name = ToUtf16(change.name);
    status = std::visit([&](const auto& value) { return Store(key.get(), name, value); }, change.value);
  }
  NoteTried(change.path);
  const std::string place = PlaceOf(change.path);
  if (status == ERROR_SUCCESS) {
    NoteSuccess(Access::Write, place);
  } else {
    ReportOnce(Access::Write, place + ": cannot be written: " + MessageOf(status), place);
  }
  return status == ERROR_SUCCESS;
}

}  // namespace vorn_host

#endif  // _WIN32
