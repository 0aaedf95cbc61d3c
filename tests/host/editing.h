#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/editing/design_editor.h"
#include "tests/host/documents.h"

// Small designs as texts, laid out as they are written, and what editing makes of them.

namespace host_test {

using vorn_host::DesignEditor;
using vorn_host::EditError;
using vorn_host::EditReport;

using Texts = std::vector<std::string>;

// --- texts ---------------------------------------------------------------------------------------------------------

/// The text with something inserted before the only occurrence of a part.
inline std::string WithBefore(std::string text, std::string_view part, std::string_view inserted) {
  return With(std::move(text), part, std::string(inserted) + std::string(part));
}

/// A point of a later edition; side "L", "C" or "R", and its values: "3.5000 -2.000".
inline std::string PointXml(std::string_view code, char side, std::string_view type, std::string_view values,
                            bool series = true) {
  const std::string location = side == 'L' ? "Left" : side == 'R' ? "Right" : "Center";
  return "        <tsf:ComposedPnt code=\"" + std::string(code) + "\" location=\"" + location +
         (side == 'C' ? "\"" : "\" componentType=\"Roadbed\"") + (series ? "" : " seriesPnt=\"false\"") +
         " dataType=\"" + std::string(type) + "\" existence=\"true\">" + std::string(values) + "</tsf:ComposedPnt>\n";
}

inline std::string CenterXml(std::string_view values = "0.0000 0.0000") {
  return PointXml("CL", 'C', "WidthHeight", values);
}

inline std::string FormXml(std::string_view name, std::string_view type, const std::string& content) {
  return "      <tsf:BuildForm name=\"" + std::string(name) + "\" xSectType=\"" + std::string(type) + "\">\n" +
         content + "      </tsf:BuildForm>\n";
}

/// 3.5 m of road at 2 % on either side and a slope of 1:1.5 that goes 4 m down: from the centre line 9.5 m out and
/// 4.07 m down.
inline std::string FillPoints() {
  return CenterXml() + PointXml("L1", 'L', "Percent", "3.5000 -2.000") + PointXml("L2", 'L', "Rate", "-4.0000 1.500") +
         PointXml("R1", 'R', "Percent", "3.5000 -2.000") + PointXml("R2", 'R', "Rate", "-4.0000 1.500");
}

inline constexpr std::string_view kFillType = "盛土工";

inline std::string FillForm(std::string_view name = "S") { return FormXml(name, kFillType, FillPoints()); }

/// A layer with points "CL", "L1" and "R1", which is no plan surface.
inline std::string LayerForm(std::string_view name) {
  return FormXml(name, "基層工",
                 CenterXml("0.0000 -0.0500") + PointXml("L1", 'L', "WidthHeight", "3.0000 -0.0600") +
                     PointXml("R1", 'R', "WidthHeight", "3.0000 -0.0600"));
}

/// Existing ground through points "G1", "G2" and so on, each "-20.0000 8.0000".
inline std::string GroundXml(const Texts& points) {
  std::string text = "      <tsf:ExistingBuildForm name=\"ground\">\n";
  int number = 0;
  for (const std::string& point : points) {
    text += "        <tsf:ExistingComposedPnt name=\"G" + std::to_string(++number) + "\">" + point +
            "</tsf:ExistingComposedPnt>\n";
  }
  return text + "      </tsf:ExistingBuildForm>\n";
}

inline std::string FlatGround(std::string_view height) {
  return GroundXml({"-50.0000 " + std::string(height), "50.0000 " + std::string(height)});
}

inline std::string SectionXml(std::string_view station, const std::string& content) {
  return "    <tsf:XSection cumulativeDist=\"" + std::string(station) + "\">\n" + content + "    </tsf:XSection>\n";
}

/// A target of a later edition on points at one station; each point is form and code.
inline std::string TargetXml(std::string_view item, std::string_view station, std::string_view type,
                             const std::vector<std::pair<std::string, std::string>>& points) {
  std::string text = "    <tsf:FormCtrlTarget controlItem=\"" + std::string(item) +
                     "\" targetScope=\"S\" targetRegio=\"R\" targetPntType=\"" + std::string(type) + "\">\n";
  for (const auto& [form, code] : points) {
    text += "      <tsf:FormCtrlTargetPnt cumulativeDist=\"" + std::string(station) + "\" buildFormName=\"" + form +
            "\" code=\"" + code + "\" />\n";
  }
  return text + "    </tsf:FormCtrlTarget>\n";
}

inline std::string WidthXml(std::string_view station, const std::string& form, const std::string& first,
                            const std::string& second, std::string_view type = "Left Right") {
  return TargetXml("Width", station, type, {{form, first}, {form, second}});
}

inline std::string SetXml(const std::string& content) {
  return "  <tsf:XSections refAlign=\"A\" refVertical=\"V\" projectPhase=\"\">\n" + content + "  </tsf:XSections>\n";
}

/// A document of one set.
inline std::string DesignXml(const std::string& content, Edition edition = Edition::V41) {
  return Xml(edition, SetXml(content));
}

/// A document of one cross section at station 20.
inline std::string OneSection(const std::string& content) { return DesignXml(SectionXml("20.0000", content)); }

// --- models --------------------------------------------------------------------------------------------------------

inline VornXSection& SectionOf(DesignDocument& document, int section = 0, int set = 0) {
  return document.sets[set].GetXSectionArray()[section];
}

inline VornBuildForm& FormOf(DesignDocument& document, int form = 0, int section = 0) {
  return SectionOf(document, section).GetBuildFormArray()[form];
}

/// Names of the forms of a section.
inline Texts FormNames(DesignDocument& document, int section = 0) {
  Texts names;
  for (const VornBuildForm& form : SectionOf(document, section).GetBuildFormArray()) {
    names.push_back(Shown(form.GetName()));
  }
  return names;
}

/// Codes of the points of a form.
inline Texts CodesOf(const VornBuildForm& form) {
  Texts codes;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) codes.push_back(Shown(point.GetCode()));
  return codes;
}

/// The position of the first point of a code in a form: distance from the centre line and height.
inline TamWorld2 PositionOf(const VornBuildForm& form, const char* code) {
  const int index = form.GetComposedPntArray().Find(code);
  if (index < 0) ADD_FAILURE() << "no point " << code;
  return index < 0 ? TamWorld2{NAN, NAN} : form.GetComposedPntArray()[index].Pos();
}

inline void ExpectAt(const VornBuildForm& form, const char* code, double dist, double height, double tolerance = 1e-4) {
  const TamWorld2 position = PositionOf(form, code);
  EXPECT_NEAR(position.x, dist, tolerance) << code;
  EXPECT_NEAR(position.y, height, tolerance) << code;
}

/// "station form code" of the points of a set's control targets, one text for each target.
inline Texts TargetsOf(const DesignDocument& document, int set = 0) {
  Texts texts;
  for (const VornFormCtrlTarget& target : document.sets[set].GetFormCtrlTargetArray()) {
    std::string& text = texts.emplace_back();
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      text += (text.empty() ? "" : ", ") + std::to_string(std::lround(point.GetCumulativeDist().Value())) + " " +
              Shown(point.GetBuildFormName()) + " " + Shown(point.GetCode());
    }
  }
  return texts;
}

/// Computes all positions from a height of the centre line, as the edition of the document reads its values.
inline void Place(DesignDocument& document, double height) {
  const EditionScope scope(document.edition);
  for (VornXSections& set : document.sets) {
    for (VornXSection& section : set.GetXSectionArray()) {
      NurReal planDist;
      NurReal planHeight;
      section.GetBuildFormArray().RegulateComposedPnt(NurReal(height), planDist, planHeight);
    }
  }
}

/// Expects that the document, written and read again, puts every point where the model has it, to 0.2 mm.
/// @param height of the centre line, from which the model's positions were computed
inline void ExpectPositionsAreWritten(DesignDocument& document, double height) {
  constexpr double kTolerance = 2e-4;
  DesignDocument again = ReadText(WriteText(document));
  Place(again, height);
  ASSERT_EQ(again.sets.GetSize(), document.sets.GetSize());
  for (int set = 0; set < again.sets.GetSize(); ++set) {
    const int sections = document.sets[set].GetXSectionArray().GetSize();
    ASSERT_EQ(again.sets[set].GetXSectionArray().GetSize(), sections);
    for (int i = 0; i < sections; ++i) {
      const Vorn_BuildFormArray& forms = SectionOf(document, i, set).GetBuildFormArray();
      const Vorn_BuildFormArray& read = SectionOf(again, i, set).GetBuildFormArray();
      ASSERT_EQ(read.GetSize(), forms.GetSize());
      for (int f = 0; f < forms.GetSize(); ++f) {
        ASSERT_EQ(CodesOf(read[f]), CodesOf(forms[f]));
        for (int p = 0; p < forms[f].GetComposedPntArray().GetSize(); ++p) {
          const TamWorld2 wanted = forms[f].GetComposedPntArray()[p].Pos();
          const TamWorld2 found = read[f].GetComposedPntArray()[p].Pos();
          EXPECT_LE(std::hypot(found.x - wanted.x, found.y - wanted.y), kTolerance)
              << "section " << i << ", form " << f << ", point " << p << ": (" << found.x << ", " << found.y
              << ") instead of (" << wanted.x << ", " << wanted.y << ")";
        }
      }
    }
  }
}

/// "2 crossings with the ground" and so on.
inline Texts CountsOf(const EditReport& report) {
  Texts texts;
  for (const EditReport::Count& row : report.counts) texts.push_back(std::to_string(row.count) + " " + row.what);
  return texts;
}

/// What was changed, or remarked, in the sections.
inline Texts WhatOf(const std::vector<EditReport::Change>& changes) {
  Texts texts;
  for (const EditReport::Change& change : changes) texts.push_back(change.what);
  return texts;
}

}  // namespace host_test
