#pragma once

#include <future>
#include <system_error>

namespace vorn_host {

/// Does something in a thread of its own, or where there is none to be had, when its result is asked for. The result's
/// destructor waits for the thread.
/// @param launch `deferred` for work that is not worth a thread
template <typename Work>
[[nodiscard]] auto InBackground(const Work& work, std::launch launch = std::launch::async) {
  try {
    return std::async(launch, work);
  } catch (const std::system_error&) {
    return std::async(std::launch::deferred, work);
  }
}

}  // namespace vorn_host
