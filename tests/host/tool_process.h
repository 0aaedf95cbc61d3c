#pragma once

#ifdef _WIN32

#include <filesystem>
#include <string>
#include <vector>

namespace host_test {

/// Runs a program without a shell, what it prints going to two files, and gives its exit code; -1 when it cannot run.
int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& out, const std::filesystem::path& err);

}  // namespace host_test

#endif  // _WIN32
