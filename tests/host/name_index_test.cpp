#include "host/document/name_index.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

#include "tests/host/documents.h"

namespace vorn_host {
namespace {

/// A section of so many forms with so many points each, whose names and codes come again and are in no order; some are
/// empty.
VornXSection SectionOf(int forms, int points) {
  std::mt19937 random(1);
  const auto draw = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
  const auto text = [&](const char* name, int below) {
    const int number = draw(below);
    return number == 0 ? CString() : CString((name + std::to_string(number)).c_str());
  };
  VornXSection section;
  for (int i = 0; i < forms; ++i) {
    VornBuildForm form;
    form.SetName(text("form", forms), false);
    for (int k = 0; k < points; ++k) {
      VornComposedPnt point;
      point.SetCode(text("code", points + forms));
      form.GetComposedPntArray().Add(std::move(point));
    }
    section.GetBuildFormArray().Add(std::move(form));
  }
  return section;
}

class NameIndexTest : public testing::TestWithParam<std::pair<int, int>> {
 protected:
  /// A text that may be there.
  CString Wanted(const char* name, int below) {
    const int number = std::uniform_int_distribution<int>(0, below)(m_random);
    return number == 0 ? CString() : CString((name + std::to_string(number)).c_str());
  }

  int m_forms = GetParam().first;
  int m_points = GetParam().second;
  VornXSection m_section = SectionOf(m_forms, m_points);
  std::mt19937 m_random{2};
};

// On both sides of what is looked through without an index.
INSTANTIATE_TEST_SUITE_P(Sizes, NameIndexTest,
                         testing::Values(std::pair(0, 0), std::pair(1, 1), std::pair(12, 20), std::pair(64, 64),
                                         std::pair(65, 3), std::pair(3, 65), std::pair(150, 150)),
                         [](const auto& info) {
                           return std::to_string(info.param.first) + "x" + std::to_string(info.param.second);
                         });

TEST_P(NameIndexTest, FindsFormsAsTheSectionDoes) {
  FormIndex index(m_section.GetBuildFormArray());
  for (int i = 0; i < 1000; ++i) {
    const CString name = Wanted("form", m_forms);
    EXPECT_EQ(index.Find(name), m_section.Find(name, nullptr)) << host_test::Shown(name);
  }
}

TEST_P(NameIndexTest, FindsTheFormThatHasACodeAsTheSectionDoes) {
  FormIndex index(m_section.GetBuildFormArray());
  for (int i = 0; i < 1000; ++i) {
    const CString name = Wanted("form", m_forms);
    const CString code = Wanted("code", m_points + m_forms);
    EXPECT_EQ(index.Find(name, code), m_section.Find(name, &code))
        << host_test::Shown(name) << ' ' << host_test::Shown(code);
  }
}

TEST_P(NameIndexTest, FindsPointsAsTheirFormDoes) {
  FormIndex index(m_section.GetBuildFormArray());
  for (int form = 0; form < m_forms; ++form) {
    const Vorn_ComposedPntArray& points = m_section.GetBuildFormArray()[form].GetComposedPntArray();
    PointIndex alone(points);
    for (int i = 0; i < 100; ++i) {
      const CString code = Wanted("code", m_points + m_forms);
      EXPECT_EQ(index.FindPoint(form, code), points.Find(code)) << form << ' ' << host_test::Shown(code);
      EXPECT_EQ(alone.Find(code), points.Find(code)) << form << ' ' << host_test::Shown(code);
    }
  }
}

}  // namespace
}  // namespace vorn_host
