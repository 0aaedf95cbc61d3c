#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/document/path_text.h"

namespace host_test {

/// A directory of its own for a test; it goes away with the object.
class TemporaryDirectory {
 public:
  TemporaryDirectory()
      : m_path(std::filesystem::temp_directory_path() / ("vorn-test-" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directories(m_path);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
  [[nodiscard]] std::filesystem::path operator/(std::string_view name) const {
    return m_path / vorn_host::Utf8Path(name);
  }

  void Write(std::string_view name, std::string_view content) const {
    std::ofstream file(*this / name, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
  }

  /// Names of everything in it, in order.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
      names.push_back(vorn_host::Utf8Text(entry.path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path m_path;
};

}  // namespace host_test
