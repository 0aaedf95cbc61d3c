#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>
#include <pugixml.hpp>
#include <string>

#include "host/document/design_document.h"
#include "host/project/project.h"
#include "tests/host/documents.h"

// Memory that runs out while a tree grows: nothing of a document may be lost in silence.

namespace vorn_host {
namespace {

using namespace host_test;

/// Lets one allocation of the trees fail, the n-th from 0 on.
class FailingTrees {
 public:
  explicit FailingTrees(int allocation) {
    s_left = allocation;
    pugi::set_memory_management_functions(Allocate, std::free);
  }
  FailingTrees(const FailingTrees&) = delete;
  FailingTrees& operator=(const FailingTrees&) = delete;
  ~FailingTrees() { pugi::set_memory_management_functions(std::malloc, std::free); }

  /// Whether the allocation was asked for.
  [[nodiscard]] static bool HasFailed() { return s_left < 0; }

 private:
  static void* Allocate(std::size_t size) { return s_left-- == 0 ? nullptr : std::malloc(size); }

  static inline int s_left = 0;
};

/// A document with much that is carried over: elements with attributes and texts, comments.
std::string CarryingText() {
  std::string text = "<!-- first -->";
  for (int i = 0; i < 1500; ++i) {
    const std::string number = std::to_string(i);
    text += "<own:a xmlns:own='urn:own' n='" + number + "'>text " + number + "<own:b/></own:a>";
  }
  return Xml(Edition::V41, "<tsf:XSections refAlign='a' refVertical='b' own='c'>" + text + "</tsf:XSections>");
}

std::string RewrittenThroughAProject(const std::string& text) {
  Project project;
  project.TakeDesign(DesignDocument::FromBytes(text, "a.xml", {}));
  std::vector<Project::Loss> losses;
  const std::vector<std::uint8_t> bytes = project.ToBytes("a.vorn", Project::kNewestStoreVersion, losses);
  DesignDocument design = Project::FromBytes(std::string(bytes.begin(), bytes.end()), "a.vorn").GiveDesign();
  DesignDocument::WriteReport report;
  return design.ToBytes("a.xml", {}, report);
}

TEST(TreeWithoutMemory, LosesNothingInSilence) {
  const std::string text = CarryingText();
  const std::string whole = RewrittenThroughAProject(text);
  int refused = 0;
  for (int allocation = 0;; ++allocation) {
    const FailingTrees trees(allocation);
    std::string rewritten;
    try {
      rewritten = RewrittenThroughAProject(text);
    } catch (const std::bad_alloc&) {
      ++refused;
      continue;
    }
    EXPECT_EQ(rewritten == whole, true) << "allocation " << allocation;
    if (!FailingTrees::HasFailed()) break;
  }
  EXPECT_GT(refused, 10);
}

}  // namespace
}  // namespace vorn_host
