#pragma once

#include <future>
#include <system_error>

namespace vorn_host {

/// Does something in a thread of its own, or where there is none to be had, when its result is asked for. The result's
/// destructor waits for the thread.
template <typename Work>
[[nodiscard]] auto InBackground(const Work& work) {
  try {
    return std::async(std::launch::async, work);
  } catch (const std::system_error&) {
    return std::async(std::launch::deferred, work);
  }
}

}  // namespace vorn_host
