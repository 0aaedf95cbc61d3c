#ifdef _WIN32

#include "tests/host/tool_process.h"

#include <windows.h>

#include "host/document/path_text.h"

namespace host_test {

namespace {

std::wstring ToUtf16(const std::string& utf8) { return vorn_host::Utf8Path(utf8).wstring(); }

/// As programs take their command line apart: backslashes count only before a quotation mark.
std::wstring QuotedArgument(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    quoted += unit;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

/// A file that a program prints to.
class Stream {
 public:
  explicit Stream(const std::filesystem::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    m_handle = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { CloseHandle(m_handle); }

  [[nodiscard]] HANDLE Handle() const { return m_handle; }

 private:
  HANDLE m_handle = INVALID_HANDLE_VALUE;
};

}  // namespace

int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::filesystem::path& out, const std::filesystem::path& err) {
  std::wstring commandLine = QuotedArgument(program.wstring());
  for (const std::string& argument : arguments) commandLine += L' ' + QuotedArgument(ToUtf16(argument));
  const Stream outStream(out);
  const Stream errStream(err);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = outStream.Handle();
  startup.hStdError = errStream.Handle();
  PROCESS_INFORMATION process{};
  if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &process) == 0) {
    return -1;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD exitCode = 0;
  GetExitCodeProcess(process.hProcess, &exitCode);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(exitCode);
}

}  // namespace host_test

#endif  // _WIN32
