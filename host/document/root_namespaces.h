#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn_host {

/// Names and values of attributes, in their order.
using XmlAttributes = std::vector<std::pair<std::string, std::string>>;

/// The prefix that an attribute declares, "tsf" of "xmlns:tsf"; empty for any other attribute, and for "xmlns:8": no
/// name can begin with such a prefix.
[[nodiscard]] std::string_view DeclaredPrefix(std::string_view name);
/// Whether an attribute declares a prefix of the schema-instance namespace.
[[nodiscard]] bool DeclaresSchemaInstance(std::string_view name, std::string_view value);

/// The attributes of a root that the host writes itself, with the namespaces and the schema location of the selected
/// edition. The schema-instance namespace keeps the prefix that it has among the document's attributes.
[[nodiscard]] XmlAttributes AttributesOfHost(const XmlAttributes& document);

}  // namespace vorn_host
