#include "host/document/root_namespaces.h"

#include <algorithm>

#include "host/document/text_encoding.h"
#include "vorn/framework/schema.h"

namespace vorn_host {

namespace {

constexpr std::string_view kDeclaration = "xmlns:";

bool IsPrefix(std::string_view prefix) {
  if (prefix.empty()) return false;
  const char first = prefix.front();
  return (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z') || first == '_' || !IsAscii({&first, 1});
}

}  // namespace

std::string_view DeclaredPrefix(std::string_view name) {
  if (!name.starts_with(kDeclaration)) return {};
  name.remove_prefix(kDeclaration.size());
  return IsPrefix(name) ? name : std::string_view();
}

bool DeclaresSchemaInstance(std::string_view name, std::string_view value) {
  return !DeclaredPrefix(name).empty() && VornSchema::Xsi() == value;
}

XmlAttributes AttributesOfHost(const XmlAttributes& document) {
  const VornSchema& schema = VornSchema::Instance();
  const auto instance = std::find_if(document.begin(), document.end(), [](const auto& attribute) {
    return DeclaresSchemaInstance(attribute.first, attribute.second);
  });
  const std::string prefix(instance == document.end() ? "xsi" : DeclaredPrefix(instance->first));
  const std::string declaration(kDeclaration);
  return {{declaration + "tsf", schema.Tsf().GetString()},
          {declaration + "rgm", schema.Rgm().GetString()},
          {declaration + prefix, VornSchema::Xsi().GetString()},
          {prefix + ":schemaLocation", schema.Location().GetString()}};
}

}  // namespace vorn_host
