#pragma once

#ifndef _WIN32

#include <sys/resource.h>

#include <csignal>

namespace host_test {

/// No file can grow beyond a size while this lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_former);
    const rlimit limit{bytes, m_former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_former);
    std::signal(SIGXFSZ, m_formerHandler);
  }

 private:
  rlimit m_former{};
  void (*m_formerHandler)(int);
};

}  // namespace host_test

#endif
