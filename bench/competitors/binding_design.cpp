#include "bench/competitors/binding_design.h"

#include <cstdint>
#include <istream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <utility>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XercesVersion.hpp>

#include "design_4_1.h"

namespace {

/// The parser is set up once: it is not the documents' fault what that takes.
void SetUpParser() {
  struct Platform {
    Platform() { xercesc::XMLPlatformUtils::Initialize(); }
  };
  static const Platform platform;
}

/// Bytes that a stream reads where they are.
class ReadBuffer : public std::streambuf {
 public:
  explicit ReadBuffer(const std::string& bytes) {
    char* const first = const_cast<char*>(bytes.data());
    setg(first, first, first + bytes.size());
  }
};

template <typename Failure>
[[noreturn]] void Rethrow(const Failure& failure) {
  std::ostringstream what;
  what << failure;
  throw std::runtime_error(what.str());
}

}  // namespace

struct BindingDesign::Tree {
  std::unique_ptr<binding::Design> design;
};

BindingDesign::BindingDesign(std::unique_ptr<Tree> tree) : m_tree(std::move(tree)) {}
BindingDesign::~BindingDesign() = default;

std::unique_ptr<BindingDesign> BindingDesign::Read(const std::string& bytes) {
  SetUpParser();
  ReadBuffer buffer(bytes);
  std::istream stream(&buffer);
  std::unique_ptr<Tree> tree(new Tree);
  try {
    tree->design =
        binding::TSFormControlData(stream, xml_schema::flags::dont_validate | xml_schema::flags::dont_initialize);
  } catch (const xml_schema::exception& failure) {
    Rethrow(failure);
  }
  return std::unique_ptr<BindingDesign>(new BindingDesign(std::move(tree)));
}

std::string BindingDesign::Write() const {
  SetUpParser();
  xml_schema::namespace_infomap namespaces;
  namespaces["tsf"].name = "http://www.nilim.go.jp/ts/main/TSFormControl-4.1";
  namespaces["tsf"].schema = "TSFormControl-4.1.xsd";
  std::ostringstream stream;
  try {
    binding::TSFormControlData(stream, *m_tree->design, namespaces, "UTF-8", xml_schema::flags::dont_initialize);
  } catch (const xml_schema::exception& failure) {
    Rethrow(failure);
  }
  return stream.str();
}

DocumentTally BindingDesign::Tally() const {
  DocumentTally tally;
  for (const binding::XSections& set : m_tree->design->XSections()) {
    for (const binding::XSection& section : set.XSection()) {
      ++tally.sections;
      tally.stations += section.cumulativeDist();
      for (const binding::BuildForm& form : section.BuildForm()) {
        ++tally.forms;
        for (const binding::ComposedPnt& point : form.ComposedPnt()) {
          ++tally.points;
          tally.leftPoints += point.location() == binding::Location::Left;
          tally.slopes +=
              point.componentType().present() && (point.componentType().get() == binding::ComponentType::Slope_Cut_ ||
                                                  point.componentType().get() == binding::ComponentType::Slope_Fill_);
          tally.grades += point.dataType().present() && point.dataType().get() == binding::DataType::Percent;
          tally.existing += point.existence().present() && point.existence().get();
          tally.codeBytes += static_cast<std::int64_t>(point.code().size());
          tally.x += point.at(0);
          tally.y += point.at(1);
        }
      }
      for (const binding::ExistingBuildForm& ground : section.ExistingBuildForm()) {
        for (const binding::ExistingComposedPnt& point : ground.ExistingComposedPnt()) {
          ++tally.groundPoints;
          tally.codeBytes += static_cast<std::int64_t>(point.name().size());
          tally.groundDistances += point.at(0);
          tally.groundHeights += point.at(1);
        }
      }
    }
    for (const binding::FormCtrlTarget& target : set.FormCtrlTarget()) {
      ++tally.targets;
      tally.slopeTargets += target.controlItem() == binding::ControlItem::SlopeLength;
      for (const binding::FormCtrlTargetPnt& point : target.FormCtrlTargetPnt()) {
        ++tally.targetPoints;
        tally.codeBytes += static_cast<std::int64_t>(point.code().size());
        tally.targetStations += point.cumulativeDist();
      }
    }
  }
  return tally;
}

std::string BindingVersion() { return std::string("xsd ") + XSD_STR_VERSION + ", xerces-c " + XERCES_FULLVERSIONDOT; }
