#include "host/cli/console.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// Behind windows.h, on which it depends.
#include <shellapi.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include "host/document/path_text.h"
#endif

namespace vorn_cli {

namespace {

std::vector<std::string> BehindTheName(int argc, const char* const* argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

}  // namespace

#ifdef _WIN32

namespace {

/// Has a console act on control sequences, such as those that draw a progress bar anew.
void ActOnControlSequences(DWORD stream) {
  constexpr DWORD kControlSequences = 0x0004;  // older headers lack the name
  const HANDLE console = GetStdHandle(stream);
  DWORD mode = 0;
  if (GetConsoleMode(console, &mode) != 0) SetConsoleMode(console, mode | kControlSequences);
}

}  // namespace

std::vector<std::string> Arguments(int argc, const char* const* argv) {
  // `argv` has lost what the system's code page does not hold.
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> utf16(CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  if (!utf16) return BehindTheName(argc, argv);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(vorn_host::Utf8Text(utf16.get()[i]));
  return arguments;
}

Utf8Console::Utf8Console() : m_formerCodePage(GetConsoleOutputCP()) {
  for (std::FILE* stream : {stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  if (m_formerCodePage != 0) SetConsoleOutputCP(CP_UTF8);
  ActOnControlSequences(STD_ERROR_HANDLE);
}

Utf8Console::~Utf8Console() {
  std::fflush(stdout);
  if (m_formerCodePage != 0) SetConsoleOutputCP(m_formerCodePage);
}

#else

std::vector<std::string> Arguments(int argc, const char* const* argv) { return BehindTheName(argc, argv); }

Utf8Console::Utf8Console() = default;
Utf8Console::~Utf8Console() { (void)m_formerCodePage; }

#endif

}  // namespace vorn_cli
