#include "host/settings/settings_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What all stores that outlast the process have in common.

namespace vorn_host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A store of keys that fail on their own, as those of a system registry do.
class StoreOfPlaces : public SettingsStore {
 public:
  explicit StoreOfPlaces(ProblemHandler report) : SettingsStore(std::move(report)) {}

  void Fail(const std::string& key, bool fails) { fails ? (void)m_failing.insert(key) : (void)m_failing.erase(key); }

  [[nodiscard]] std::string Place() const override { return "store"; }
  [[nodiscard]] std::vector<SettingsEntry> Entries() const override { return {}; }
  [[nodiscard]] std::optional<SettingsEntry> Find(const SettingsPath& path, std::string_view) const override {
    Note(Access::Read, path.at(0), "cannot be read");
    return std::nullopt;
  }

 private:
  [[nodiscard]] bool HasKey(const SettingsPath&) const override { return true; }
  bool Keep(SettingChange change) override { return Note(Access::Write, change.path.at(0), "cannot be written"); }

  bool Note(Access access, const std::string& key, const char* problem) const {
    const bool fails = m_failing.contains(key);
    fails ? ReportOnce(access, key + ' ' + problem, key) : NoteSuccess(access, key);
    return !fails;
  }

  std::set<std::string> m_failing;
};

class SettingsStoreTest : public testing::Test {
 protected:
  /// What is reported when both keys are read and written.
  std::vector<std::string> Problems() {
    m_problems.clear();
    for (const char* key : {"A", "B", "A"}) {
      EXPECT_EQ(m_store.ReadInt(key, "x"), std::nullopt);
      m_store.WriteInt(key, "x", 1);
    }
    return m_problems;
  }

  std::vector<std::string> m_problems;
  StoreOfPlaces m_store{[this](const std::string& problem) { m_problems.push_back(problem); }};
};

TEST_F(SettingsStoreTest, TellsAProblemOfAPlaceOnceWhateverBecomesOfOthers) {
  m_store.Fail("A", true);
  EXPECT_THAT(Problems(), ElementsAre("A cannot be read", "A cannot be written"));
  EXPECT_THAT(Problems(), IsEmpty()) << "that the other can be used is no news of this one";
  m_store.Fail("B", true);
  EXPECT_THAT(Problems(), ElementsAre("B cannot be read", "B cannot be written"));
  EXPECT_THAT(Problems(), IsEmpty());
}

TEST_F(SettingsStoreTest, TellsAProblemAgainThatWasOver) {
  m_store.Fail("A", true);
  m_store.Fail("B", true);
  EXPECT_EQ(Problems().size(), 4u);
  m_store.Fail("A", false);
  EXPECT_THAT(Problems(), IsEmpty());
  m_store.Fail("A", true);
  EXPECT_THAT(Problems(), ElementsAre("A cannot be read", "A cannot be written"));
}

}  // namespace
}  // namespace vorn_host
