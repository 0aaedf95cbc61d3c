#pragma once

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>

#include "tests/support/xml_tree.h"

// The editions of the schema as parameters of a test.

namespace model_test {

struct Edition {
  const char* name;
  VornSchema::Version version;
  int kind;

  friend std::ostream& operator<<(std::ostream& out, const Edition& edition) { return out << edition.name; }
};

inline constexpr Edition kEdition20 = {"Edition20", VornSchema::Version20, VornSchema::KindTsf};
inline constexpr Edition kEdition40 = {"Edition40", VornSchema::Version40, VornSchema::KindTsf};
inline constexpr Edition kEdition41 = {"Edition41", VornSchema::Version41, VornSchema::KindTsf};
inline constexpr Edition kEditionMaff = {"Agricultural", VornSchema::Version41, VornSchema::KindMaff};
/// What a document that was not recognised leaves behind: it counts as edition 2.0.
inline constexpr Edition kEditionUnknown = {"Unrecognised", VornSchema::VersionUnknown, VornSchema::KindTsf};

inline constexpr std::array kEarlyEditions = {kEdition20, kEditionUnknown};
inline constexpr std::array kLaterEditions = {kEdition40, kEdition41, kEditionMaff};
inline constexpr std::array kEditions = {kEdition20, kEditionUnknown, kEdition40, kEdition41, kEditionMaff};

/// Runs a test in the edition of its parameter.
class InEdition : public testing::TestWithParam<Edition> {
 public:
  static std::string Name(const testing::TestParamInfo<Edition>& info) { return info.param.name; }

 private:
  test_support::EditionScope m_edition{GetParam().version, GetParam().kind};
};

/// What an element writes into a document, with the namespace of each element.
template <typename Element>
std::string WriteXmlWithNamespaces(Element& element) {
  test_support::XmlTree tree;
  test_support::XmlTreeCursor cursor(tree);
  EXPECT_TRUE(element.toXML(&cursor));
  return tree.PrintWithNamespaces();
}

}  // namespace model_test
