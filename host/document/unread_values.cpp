#include "host/document/unread_values.h"

namespace vorn_host {

std::string Describe(const UnreadValue& value) {
  return value.text.empty() ? value.reason : "\"" + value.text + "\" " + value.reason;
}

std::string PlaceOf(const UnreadValue& value) { return "line " + std::to_string(value.line) + ": " + value.where; }

}  // namespace vorn_host
