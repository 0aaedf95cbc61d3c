#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

// The report's page as a browser takes it apart.

namespace host_test {

inline std::string FromBase64(std::string_view text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char digit : text) {
    if (digit == '=') break;
    const std::size_t value = kDigits.find(digit);
    EXPECT_NE(value, std::string_view::npos) << "no digit: " << digit;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

inline std::string Inflated(std::string_view bytes) {
  z_stream stream{};
  EXPECT_EQ(inflateInit(&stream), Z_OK);
  std::vector<unsigned char> in(bytes.begin(), bytes.end());
  stream.next_in = in.data();
  stream.avail_in = static_cast<uInt>(in.size());
  std::string text;
  int result = Z_OK;
  while (result == Z_OK) {
    std::vector<unsigned char> part(1 << 16);
    stream.next_out = part.data();
    stream.avail_out = static_cast<uInt>(part.size());
    result = inflate(&stream, Z_NO_FLUSH);
    text.append(part.begin(), part.end() - static_cast<std::ptrdiff_t>(stream.avail_out));
  }
  EXPECT_EQ(result, Z_STREAM_END);
  inflateEnd(&stream);
  return text;
}

/// What a report's page holds.
struct ReportPage {
  nlohmann::json index;
  std::vector<nlohmann::json> sections;
  nlohmann::json documentFindings;
  nlohmann::json targetsWithoutSection;

  explicit ReportPage(const std::string& html) {
    const std::vector<std::string> json = Scripts(html, "<script type=\"application/json\" id=\"index\">");
    EXPECT_EQ(json.size(), 1u);
    if (json.size() == 1) index = nlohmann::json::parse(json[0]);
    const std::vector<std::string> packs = Scripts(html, "<script type=\"application/octet-stream\" class=\"pack\">");
    for (std::size_t i = 0; i < packs.size(); ++i) {
      nlohmann::json pack = nlohmann::json::parse(Inflated(FromBase64(packs[i])));
      if (i + 1 == packs.size()) {
        documentFindings = std::move(pack["findings"]);
        targetsWithoutSection = std::move(pack["targets"]);
      } else {
        for (nlohmann::json& section : pack) sections.push_back(std::move(section));
      }
    }
  }

 private:
  /// What the script elements that begin like this hold.
  static std::vector<std::string> Scripts(const std::string& html, std::string_view start) {
    std::vector<std::string> scripts;
    for (std::size_t at = html.find(start); at != std::string::npos; at = html.find(start, at)) {
      at += start.size();
      scripts.push_back(html.substr(at, html.find("</script>", at) - at));
    }
    return scripts;
  }
};

}  // namespace host_test
