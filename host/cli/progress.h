#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace vorn_cli {

/// A progress bar on the standard error while work is long and somebody watches: never in a pipe or a file. It is
/// wiped away when the work ends, however it ends.
class Progress {
 public:
  /// @param longWork whether the work takes long enough for a bar
  explicit Progress(bool longWork);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Shows that done of total steps are done, and what is being done now.
  void Show(std::string_view what, int done, int total);

  /// Whether a document of that file's size is worth a bar.
  [[nodiscard]] static bool IsLong(const std::filesystem::path& file);

 private:
  bool m_enabled;
  bool m_drawn = false;
  std::string m_what;
  std::chrono::steady_clock::time_point m_drawnAt;
};

}  // namespace vorn_cli
