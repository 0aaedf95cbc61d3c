#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vorn/framework/define_manager.h"
#include "vorn/platform/wex_key.h"

// Settings stores for tests.

namespace test_support {

/// A store in which no key exists or can be made, but for one, and nothing can be kept.
class RefusingStore : public WexStore {
 public:
  RefusingStore() = default;
  explicit RefusingStore(std::string_view onlyKey) : m_onlyKey(onlyKey) {}

  [[nodiscard]] bool KeyExists(std::string_view path) const override { return m_onlyKey == path; }
  bool CreateKey(std::string_view path) override { return m_onlyKey == path; }
  [[nodiscard]] std::optional<std::int32_t> ReadInt(std::string_view, std::string_view) const override { return {}; }
  [[nodiscard]] std::optional<CString> ReadString(std::string_view, std::string_view) const override { return {}; }
  bool WriteInt(std::string_view, std::string_view, std::int32_t) override { return false; }
  bool WriteString(std::string_view, std::string_view, std::string_view) override { return false; }

 private:
  std::optional<CString> m_onlyKey;
};

/// A store that notes how it is called: "begin", "open App\\Grid", "get Size", "set Size", "end".
class RecordingStore : public WexStore {
 public:
  [[nodiscard]] bool KeyExists(std::string_view path) const override { return Note("open", path), true; }
  bool CreateKey(std::string_view path) override { return Note("create", path), true; }
  [[nodiscard]] std::optional<std::int32_t> ReadInt(std::string_view, std::string_view name) const override {
    return Note("get", name), std::nullopt;
  }
  [[nodiscard]] std::optional<CString> ReadString(std::string_view, std::string_view name) const override {
    return Note("get", name), std::nullopt;
  }
  bool WriteInt(std::string_view, std::string_view name, std::int32_t) override { return Note("set", name), true; }
  bool WriteString(std::string_view, std::string_view name, std::string_view) override {
    return Note("set", name), true;
  }
  void BeginGroup() override { m_calls.emplace_back("begin"); }
  void EndGroup() override { m_calls.emplace_back("end"); }

  [[nodiscard]] const std::vector<std::string>& Calls() const { return m_calls; }

 private:
  void Note(const char* call, std::string_view what) const { (m_calls.emplace_back(call) += ' ') += what; }

  mutable std::vector<std::string> m_calls;
};

/// Settings in memory below "App", in the ordinary edition.
class SettingsTest : public testing::Test {
 protected:
  SettingsTest() { WexSetApplicationStore(m_store, "App"); }
  ~SettingsTest() override {
    VornDefineManager::GetInstance().SetTSFlag(false);
    WexSetApplicationStore(nullptr, "");
  }

  [[nodiscard]] bool HasKey(std::string_view name) const { return m_store->KeyExists(PathOf(name).View()); }

  static CString PathOf(std::string_view name) { return CString("App\\") + CString(name); }

  std::shared_ptr<WexMemoryStore> m_store = std::make_shared<WexMemoryStore>();
};

}  // namespace test_support
