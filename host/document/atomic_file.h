#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vorn_host {

/// The bytes of the largest file that is read unless told otherwise, 1 GiB: five times a design of a million points.
inline constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 30;

/// What is said of a file or document with more bytes than may be read.
[[nodiscard]] std::string TooLarge(const std::string& name, std::uint64_t most);

/// The whole content of a file. Throws `DocumentError` with a plain sentence when it is missing, a directory, not
/// readable or empty, or has more than `most` bytes.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path, std::uint64_t most = kLargestFile);

/// As `ReadFile`, for a file that need not be there, in which case there is no content, and that may be empty.
[[nodiscard]] std::optional<std::string> ReadFileIfThere(const std::filesystem::path& path,
                                                         std::uint64_t most = kLargestFile);

/// What a regular file begins with, at most so many bytes; nothing where there is none. Throws `DocumentError` when
/// that cannot be told: whoever asks what a file is must not take one for none.
[[nodiscard]] std::string ReadBeginning(const std::filesystem::path& path, std::size_t size);

/// Writes a file whole or not at all: into a temporary file beside it, flushed to the disk, then renamed over it. A
/// link is followed; what is no regular file (a device, a pipe) is written directly. Throws `DocumentError`.
///
/// Where a file is replaced, the new one has its rights and, where the system allows that, its owner and group. Without
/// the group, nobody gets what the group was allowed.
///
/// The temporary file of "design.xml" is ".design.xml-" with ten digits and ".tmp". One that a killed program left is
/// removed by a save of the same file that comes an hour later.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view content);

/// Takes the next piece of a text that is written from its beginning to its end.
using TextSink = std::function<void(std::string_view)>;

/// As above, for content that is made piece by piece and need not be in memory as a whole. When `produce` throws,
/// nothing is written.
void WriteFileAtomically(const std::filesystem::path& path, const std::function<void(const TextSink&)>& produce);

/// Whether the file that was there before is kept when another takes its place.
enum class FormerFile { Drop, Keep };

/// As above, and with `Keep` the file that was there before stays as `BackupOf` it, in place of an earlier one. At
/// every moment either the former or the new file has the name; a save that fails leaves file and backup as they were.
/// (Where the new file has the name, and the former one can be neither put back nor kept as the backup, it stays under
/// the second name that the message tells.)
/// Until the former file is the backup it has a second name, like that of a temporary file but with ".bak". A program
/// that is killed just when the new file has its place leaves it under that; a save that comes an hour later then makes
/// it the backup, unless there is a newer one.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view content, FormerFile former);

/// Where the former file is kept: "design.vorn" as "design.vorn.bak". A link is followed. Of a name for which that
/// would be too long, the last characters are left out: at most those of ".vorn", so that no two projects share one.
[[nodiscard]] std::filesystem::path BackupOf(const std::filesystem::path& path);

/// The file that a path names in the end, whether it exists or not: links are followed. Throws `DocumentError` when it
/// cannot be told whether the path is that of a link, or where that leads.
[[nodiscard]] std::filesystem::path ThroughLinks(const std::filesystem::path& path);

/// Makes a program that is stopped by a signal (Ctrl-C, a closed terminal) take its unfinished files away first, or
/// where the new file has its place already, make the former one the backup. Makes a file that grows too large an error
/// instead of the program's end. For the main function of a tool.
void RemoveUnfinishedFilesOnSignals();

}  // namespace vorn_host
