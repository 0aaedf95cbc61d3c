#pragma once

#include <string>
#include <vector>

namespace vorn_cli {

/// The arguments of the command line behind the name of the program, in UTF-8.
[[nodiscard]] std::vector<std::string> Arguments(int argc, const char* const* argv);

/// While this lives, what the tool prints leaves it byte by byte, and a console shows it as UTF-8. On Windows, where
/// neither is a matter of course, the console is the user's again afterwards.
class Utf8Console {
 public:
  Utf8Console();
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console();

 private:
  unsigned m_formerCodePage = 0;  ///< 0 where there is no console
};

}  // namespace vorn_cli
