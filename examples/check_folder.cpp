// Checks every document in a folder, in as many processes as the machine has processors: check_folder FOLDER
// The edition belongs to a process, so documents are worked on side by side in several of them.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>
#include <thread>

#include "host/document/design_document.h"
#include "host/document/document_check.h"

namespace {

enum class Outcome { Valid, Invalid, Unreadable };

Outcome Check(const std::filesystem::path& file) try {
  const auto findings = CheckDocument(vorn_host::DesignDocument::Read(file));
  const auto isError = [](const auto& finding) { return finding.severity == vorn_host::Severity::Error; };
  return std::any_of(findings.begin(), findings.end(), isError) ? Outcome::Invalid : Outcome::Valid;
} catch (const std::exception&) {
  return Outcome::Unreadable;
}

void ShowProgress(std::size_t done, std::size_t all) {
  const std::size_t length = 40 * done / all;
  std::cerr << "\r[" << std::string(length, '#') << std::string(40 - length, ' ') << "] " << done << " of " << all;
  if (done == all) std::cerr << '\n';
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) throw std::invalid_argument("check_folder FOLDER");
  std::set<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
    if (entry.path().extension() == ".xml") files.insert(entry.path());
  }

  std::map<std::filesystem::path, Outcome> outcomes;
  std::map<pid_t, std::filesystem::path> running;
  for (auto next = files.begin(); outcomes.size() < files.size();) {
    if (next != files.end() && running.size() < std::max(1u, std::thread::hardware_concurrency())) {
      const pid_t child = fork();
      if (child == 0) _exit(static_cast<int>(Check(*next)));
      if (child < 0) return 2;
      running[child] = *next++;
      continue;
    }
    int status = 0;
    const auto done = running.extract(wait(&status));
    outcomes[done.mapped()] = WIFEXITED(status) ? static_cast<Outcome>(WEXITSTATUS(status)) : Outcome::Unreadable;
    ShowProgress(outcomes.size(), files.size());
  }

  constexpr const char* kWords[] = {"valid", "not valid", "cannot be read"};
  for (const auto& [file, outcome] : outcomes) {
    std::cout << file.filename().string() << ": " << kWords[static_cast<int>(outcome)] << '\n';
  }
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 2;
}
