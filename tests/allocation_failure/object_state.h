#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "vorn/model/file_info.h"
#include "vorn/model/x_sections.h"
#include "vorn/road/linear_xml_data.h"
#include "vorn/types/bld_name_map.h"
#include "vorn/types/hoso_type.h"

// All that an object holds, for comparing an object with what it was and with what it is to become. The extension
// tables of the records are no part of it: they are written empty and forgotten when read, so no object holds one.

namespace allocation_test {

/// The values of an object itself, and the objects in it.
struct State {
  std::string own;
  std::vector<State> parts;
  bool isCollection = false;

  friend bool operator==(const State&, const State&) = default;
};

/// Whether an object and every object in it are as before or as afterwards. Objects that come or go change the one that
/// holds them: it has to be one of the two as a whole then.
inline bool IsOldOrNewThroughout(const State& now, const State& before, const State& after) {
  if (now == before || now == after) return true;
  if (now.own != before.own && now.own != after.own) return false;
  if (now.parts.size() != before.parts.size() || now.parts.size() != after.parts.size()) return false;
  for (std::size_t i = 0; i < now.parts.size(); ++i) {
    if (!IsOldOrNewThroughout(now.parts[i], before.parts[i], after.parts[i])) return false;
  }
  return true;
}

/// Whether no collection in an object has an element that the finished object has not: an object that could not be read
/// to its end has the first ones of each, whole.
inline bool HasWholeElementsOf(const State& now, const State& finished) {
  const auto& parts = now.parts;
  const auto& all = finished.parts;
  if (parts.size() > all.size()) return false;
  if (finished.isCollection) return std::equal(parts.begin(), parts.end(), all.begin());
  return std::equal(parts.begin(), parts.end(), all.begin(), HasWholeElementsOf);
}

// --- values ----------------------------------------------------------------------------------------------------------

inline std::string ToText(std::string_view text) { return std::to_string(text.size()) + ":" + std::string(text); }
inline std::string ToText(const CString& text) { return ToText(text.View()); }
inline std::string ToText(double value) { return std::to_string(std::bit_cast<std::uint64_t>(value)); }
inline std::string ToText(const NurReal& value) { return ToText(value.Value()); }
inline std::string ToText(const COleDateTime& date) {
  return std::to_string(static_cast<int>(date.GetStatus())) + "@" + ToText(date.m_dt);
}
template <typename Value>
requires(std::is_integral_v<Value> || std::is_enum_v<Value>) std::string ToText(Value value) {
  return std::to_string(static_cast<long long>(value));
}
inline std::string ToText(const VornMeasureInfo& info) { return ToText(info.first) + "/" + ToText(info.second); }
inline std::string ToText(const TamWorld2& point) { return ToText(point.x) + "/" + ToText(point.y); }
template <typename Type, typename ArgType>
std::string ToText(const CArray<Type, ArgType>& values) {
  std::string text = "[";
  for (const Type& value : values) text += ToText(value) + " ";
  return text + "]";
}
template <typename Type>
std::string ToText(const CList<Type>& values) {
  std::string text = std::to_string(values.GetCount()) + "[";
  for (const Type& value : values) text += ToText(value) + " ";
  return text + "]";
}

template <typename... Values>
std::string Joined(const Values&... values) {
  return ((ToText(values) + "|") + ... + std::string());
}

// --- objects ---------------------------------------------------------------------------------------------------------

State StateOf(const CString& text);
State StateOf(const VornCrossPointInfo& crossing);
State StateOf(const VornComposedPnt& point);
State StateOf(const VornFormCtrlTargetPnt& point);
State StateOf(const VornFormCtrlTarget& target);
State StateOf(const VornBuildForm& form);
State StateOf(const VornExistingComposedPnt& point);
State StateOf(const VornExistingBuildForm& form);
State StateOf(const VornXSection& section);
State StateOf(const VornXSections& set);
State StateOf(const VornFileInfo& info);
State StateOf(const VornStructureType& type);
State StateOf(const VornBuildItem& item);

State StateOf(const VornXSectType& type);
State StateOf(const VornTsHosoType& type);

State StateOf(const VornCrsData& system);
State StateOf(const VornCtrlPoint& point);
State StateOf(const VornBenchMark& point);
State StateOf(const VornGmPnt& point);
State StateOf(const VornGmPnts& group);
State StateOf(const VornCtrlPoints& points);
State StateOf(const VornCreatorInfoData& creator);
State StateOf(const VornProjectData& project);
State StateOf(const VornAlignment& alignment);
State StateOf(const VornRoadInfo& info);
State StateOf(const VornRoadGmData& data);
State StateOf(const VornFormCtrl& ctrl);
State StateOf(const VornInfoConstrcut& info);
State StateOf(const VornRoadCenterData& data);
State StateOf(const VornLandXMLProject& project);
State StateOf(const VornLandXMLAlignment& alignment);
State StateOf(const VornLandXMLCgPoint& point);
State StateOf(const VornLandXMLData& data);
State StateOf(const VornLinearXMLData& data);

/// The elements, and what the collection itself knows besides.
template <typename Array>
requires requires(const Array& array) { array.GetUpperBound(); }
State StateOf(const Array& array) {
  State state;
  state.isCollection = true;
  if constexpr (requires { array.GetNextSerialID(); }) state.own += Joined(array.GetNextSerialID());
  if constexpr (requires { array.GetCurrent(); }) state.own += Joined(array.GetCurrent());
  using Item = std::remove_cvref_t<decltype(array[0])>;
  for (const auto& item : array) {
    if constexpr (requires(const Item& one) { ToText(one); }) {
      state.parts.push_back({Joined(item), {}});
    } else {
      state.parts.push_back(StateOf(item));
    }
  }
  return state;
}

template <typename Type>
State StateOf(const CList<Type>& list) {
  State state;
  state.isCollection = true;
  for (const Type& item : list) state.parts.push_back(StateOf(item));
  state.own = std::to_string(list.GetCount());
  return state;
}

}  // namespace allocation_test
