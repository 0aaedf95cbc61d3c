#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/design_document.h"
#include "host/document/document_error.h"
#include "host/document/edition.h"
#include "vorn/platform/code_page_932.h"

// Documents as texts and as models, for tests that care about one thing only.

inline void PrintTo(NurReal value, std::ostream* out) {
  if (value.IsSet()) {
    *out << value.Value();
  } else {
    *out << "unset";
  }
}

inline void PrintTo(const VornComposedPnt& point, std::ostream* out) {
  *out << point.GetCode().GetString() << " slope type " << static_cast<int>(point.GetSlopeType()) << " data type "
       << static_cast<int>(point.GetDataType()) << " X ";
  PrintTo(point.GetX(), out);
  *out << " Y ";
  PrintTo(point.GetY(), out);
}

namespace vorn_host {

inline void PrintTo(Edition edition, std::ostream* out) { *out << EditionName(edition); }

}  // namespace vorn_host

namespace host_test {

using vorn_host::DesignDocument;
using vorn_host::DocumentError;
using vorn_host::Edition;
using vorn_host::EditionScope;

/// UTF-8 text of a u8 literal.
inline std::string U8(std::u8string_view text) { return {text.begin(), text.end()}; }

/// Text of the model, as UTF-8.
inline std::string Shown(const CString& text) { return vorn_host::ToUtf8(text.View()); }

inline std::string EditionTestName(const testing::TestParamInfo<Edition>& info) {
  switch (info.param) {
    case Edition::V20:
      return "Edition20";
    case Edition::V40:
      return "Edition40";
    case Edition::V41:
      return "Edition41";
    case Edition::Maff10:
      return "Agricultural";
    case Edition::RoadGm:
      break;
  }
  return "RoadGeometry";
}

/// The sentence of the error that an action ends with; empty when it ends well.
template <typename Action>
std::string ErrorOf(Action&& action) {
  try {
    std::forward<Action>(action)();
  } catch (const DocumentError& error) {
    return error.what();
  }
  return {};
}

// --- texts ---------------------------------------------------------------------------------------------------------

/// Start tag of the root as a document of the edition has it.
inline std::string RootOpen(Edition edition) {
  const EditionScope scope(edition);
  const VornSchema& schema = VornSchema::Instance();
  return std::string("<tsf:TSFormControlData xmlns:tsf=\"") + schema.Tsf().GetString() + "\" xmlns:rgm=\"" +
         schema.Rgm().GetString() + "\" xmlns:xsi=\"" + VornSchema::Xsi().GetString() + "\" xsi:schemaLocation=\"" +
         schema.Location().GetString() + "\">\n";
}

inline constexpr std::string_view kRootClose = "</tsf:TSFormControlData>\n";
inline constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// A document of the edition around what its root holds.
inline std::string Xml(Edition edition, std::string_view content) {
  return std::string(kDeclaration) + RootOpen(edition) + std::string(content) + std::string(kRootClose);
}

inline DesignDocument ReadText(const std::string& text, const DesignDocument::ReadOptions& options = {}) {
  return DesignDocument::FromBytes(text, "design.xml", options);
}

inline std::string WriteText(DesignDocument& document, const DesignDocument::WriteOptions& options = {}) {
  DesignDocument::WriteReport report;
  return document.ToBytes("out.xml", options, report);
}

/// What a text reads like after it is read and written again.
inline std::string Rewritten(const std::string& text) {
  DesignDocument document = ReadText(text);
  return WriteText(document);
}

/// Replaces the only occurrence of a text.
inline std::string With(std::string text, std::string_view what, std::string_view by) {
  const std::size_t at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  if (at == std::string::npos) return text;
  EXPECT_EQ(text.find(what, at + 1), std::string::npos) << what << " stands twice";
  return text.replace(at, what.size(), by);
}

/// Expects texts in a text, each behind the one before.
inline void ExpectInOrder(const std::string& text, const std::vector<std::string>& parts) {
  std::size_t at = 0;
  for (const std::string& part : parts) {
    at = text.find(part, at);
    ASSERT_NE(at, std::string::npos) << part << "\n" << text;
    at += part.size();
  }
}

// --- models --------------------------------------------------------------------------------------------------------

using DataType = VornComposedPnt::DataType;
using SlopeType = VornComposedPnt::SlopeType;

/// A complete point by its later-edition reading.
inline VornComposedPnt Point(std::string_view code, VornLocation side, DataType type, NurReal x, NurReal y) {
  VornComposedPnt point;
  point.SetCode(CString(code));
  point.SetLocation(side);
  if (side != VornLocation::Center) point.SetComponentType(VornComposedPnt::ComponentType::Roadbed);
  point.SetDataType(type);
  point.SetExistence(VORN_Existence::True);
  point.SetX(x);
  point.SetY(y);
  return point;
}

/// A complete point by its reading in edition 2.0.
inline VornComposedPnt Point20(std::string_view code, VornLocation side, SlopeType type, NurReal x, NurReal y) {
  VornComposedPnt point = Point(code, side, DataType::Unset, x, y);
  point.SetSlopeType(type);
  return point;
}

inline VornComposedPnt Center(NurReal x = 0.0, NurReal y = 0.0) {
  return Point("CL", VornLocation::Center, DataType::WidthHeight, x, y);
}

inline VornBuildForm Form(std::string_view name, std::initializer_list<VornComposedPnt> points) {
  VornBuildForm form;
  form.SetName(CString(name), false);
  for (const VornComposedPnt& point : points) form.GetComposedPntArray().Add(point);
  return form;
}

/// A form with points "CL", "L1" and "R1".
inline VornBuildForm RoadForm(std::string_view name) {
  return Form(name, {Center(), Point("L1", VornLocation::Left, DataType::Percent, 3.5, -2.0),
                     Point("R1", VornLocation::Right, DataType::Percent, 3.5, -2.0)});
}

inline VornXSection Section(NurReal station, std::initializer_list<VornBuildForm> forms, bool xSectChg = false) {
  VornXSection section;
  section.SetCumulativeDist(station);
  section.SetXSectChg(xSectChg);
  for (const VornBuildForm& form : forms) section.GetBuildFormArray().Add(form);
  return section;
}

/// A complete width target without codes.
inline VornFormCtrlTarget Target() {
  VornFormCtrlTarget target;
  target.SetControlItem(VornFormCtrlTarget::ControlItem::Width);
  target.SetTargetScope("Road");
  target.SetTargetRegio("Body");
  target.SetTargetPntType(VornFormCtrlTarget::TargetPntType::LeftRight);
  return target;
}

/// A target of a later edition on points of one form.
inline VornFormCtrlTarget TargetOn(NurReal station, std::string_view form, std::initializer_list<const char*> codes,
                                   bool xSectChg = false) {
  VornFormCtrlTarget target = Target();
  for (const char* code : codes) {
    VornFormCtrlTargetPnt point;
    point.Set(station, CString(form), code, xSectChg);
    target.GetTargetPntArray().Add(point);
  }
  return target;
}

/// A target of edition 2.0 on codes of its form.
inline VornFormCtrlTarget Target20(const char* codes) {
  VornFormCtrlTarget target = Target();
  target.SetWorkType(VornFormCtrlTarget::WorkType::FillWork);
  target.SetCode(codes);
  return target;
}

/// A document that is complete in the edition but for its cross sections.
inline DesignDocument DocumentOf(Edition edition, std::initializer_list<VornXSection> sections) {
  DesignDocument document;
  document.edition = edition;
  VornFileInfo info;
  info.SetCreateDate(COleDateTime(2024, 4, 1, 9, 30, 0));
  document.fileInfos.Add(info);
  document.structureType.SetType(VornStructureType::Type::RoadEarthwork);
  document.hasStructureType = true;
  VornXSections set;
  set.SetRefAlign("CL-1");
  set.SetRefVertical("VL-1");
  for (const VornXSection& section : sections) set.GetXSectionArray().Add(section);
  document.sets.Add(set);
  return document;
}

}  // namespace host_test
