#include "host/editing/edit_report.h"

#include <algorithm>

namespace vorn_host {

void EditReport::Add(const std::string& what, int count) {
  if (count == 0) return;
  const auto row = std::find_if(counts.begin(), counts.end(), [&](const Count& known) { return known.what == what; });
  if (row == counts.end()) {
    counts.push_back({what, count});
  } else {
    row->count += count;
  }
}

}  // namespace vorn_host
