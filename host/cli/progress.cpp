#include "host/cli/progress.h"

#include <cstdint>
#include <cstdio>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace vorn_cli {

namespace {

constexpr int kBarWidth = 30;
constexpr std::uintmax_t kLongFile = 8u << 20;
constexpr std::chrono::milliseconds kRedrawAfter{100};

bool IsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

}  // namespace

Progress::Progress(bool longWork) : m_enabled(longWork && IsTerminal()) {}

Progress::~Progress() {
  if (m_drawn) std::fputs("\r\x1b[K", stderr);
}

void Progress::Show(std::string_view what, int done, int total) {
  if (!m_enabled || total <= 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (m_drawn && what == m_what && now - m_drawnAt < kRedrawAfter) return;
  m_drawn = true;
  m_drawnAt = now;
  m_what = what;
  const int filled = static_cast<int>(static_cast<std::int64_t>(kBarWidth) * done / total);
  const int percent = static_cast<int>(std::int64_t{100} * done / total);
  const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                          std::string(static_cast<std::size_t>(kBarWidth - filled), '.');
  std::fprintf(stderr, "\r[%s] %3d %%  %s\x1b[K", bar.c_str(), percent, m_what.c_str());
  std::fflush(stderr);
}

bool Progress::IsLong(const std::filesystem::path& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  return !error && size >= kLongFile;
}

}  // namespace vorn_cli
