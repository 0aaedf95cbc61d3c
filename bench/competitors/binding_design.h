#pragma once

#include <memory>
#include <string>

#include "bench/competitors/document_tally.h"

/// A design document as the classes hold it that are generated from its schema. Plain C++14, without the generated
/// header: that one is not fit for the compiler settings of this project.
class BindingDesign {
 public:
  /// Reads the bytes of a document without validating them. Throws a `std::runtime_error` that tells what is wrong.
  static std::unique_ptr<BindingDesign> Read(const std::string& bytes);
  BindingDesign(const BindingDesign&) = delete;
  BindingDesign& operator=(const BindingDesign&) = delete;
  ~BindingDesign();

  std::string Write() const;
  DocumentTally Tally() const;

 private:
  struct Tree;
  explicit BindingDesign(std::unique_ptr<Tree> tree);

  std::unique_ptr<Tree> m_tree;
};

/// The data binding's version, and that of the parser under it.
std::string BindingVersion();
