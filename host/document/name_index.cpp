#include "host/document/name_index.h"

#include <algorithm>

namespace vorn_host {

namespace {

/// To look through so many for each control target costs no more than an index.
constexpr int kFew = 64;

using SortedNames = std::vector<std::pair<std::string_view, int>>;

/// The first of a name; -1 without one.
int FirstOf(const SortedNames& names, std::string_view name) {
  const auto found = std::lower_bound(names.begin(), names.end(), std::pair(name, 0));
  return found == names.end() || found->first != name ? -1 : found->second;
}

}  // namespace

int PointIndex::Find(const CString& code) {
  if (m_points->GetSize() <= kFew) return m_points->Find(code);
  if (!m_codes) {
    SortedNames codes;
    codes.reserve(static_cast<std::size_t>(m_points->GetSize()));
    for (int i = 0; i < m_points->GetSize(); ++i) codes.emplace_back((*m_points)[i].GetCode().View(), i);
    std::sort(codes.begin(), codes.end());
    m_codes = std::move(codes);
  }
  return FirstOf(*m_codes, code.View());
}

FormIndex::FormIndex(const Vorn_BuildFormArray& forms) : m_forms(&forms) {
  m_points.reserve(static_cast<std::size_t>(forms.GetSize()));
  for (const VornBuildForm& form : forms) m_points.emplace_back(form.GetComposedPntArray());
}

bool FormIndex::IsLarge() const { return m_forms->GetSize() > kFew; }

const FormIndex::Names& FormIndex::NamesOfMany() {
  if (m_names) return *m_names;
  Names names;
  for (int i = 0; i < m_forms->GetSize(); ++i) names.forms.emplace_back((*m_forms)[i].GetName().View(), i);
  std::sort(names.forms.begin(), names.forms.end());
  int first = -1;
  std::string_view nameOfFirst;
  for (const auto& [name, form] : names.forms) {
    if (first < 0 || name != nameOfFirst) {
      first = form;
      nameOfFirst = name;
    }
    for (const VornComposedPnt& point : (*m_forms)[form].GetComposedPntArray()) {
      names.codes.emplace_back(first, point.GetCode().View(), form);
    }
  }
  std::sort(names.codes.begin(), names.codes.end());
  m_names = std::move(names);
  return *m_names;
}

int FormIndex::Find(const CString& name) {
  if (IsLarge()) return FirstOf(NamesOfMany().forms, name.View());
  for (int i = 0; i < m_forms->GetSize(); ++i) {
    if ((*m_forms)[i].GetName() == name) return i;
  }
  return -1;
}

int FormIndex::Find(const CString& name, const CString& code) {
  if (IsLarge()) {
    const Names& names = NamesOfMany();
    const int first = FirstOf(names.forms, name.View());
    const auto found = std::lower_bound(names.codes.begin(), names.codes.end(), std::tuple(first, code.View(), 0));
    if (first < 0 || found == names.codes.end()) return -1;
    const auto& [namesake, itsCode, form] = *found;
    return namesake == first && itsCode == code.View() ? form : -1;
  }
  for (int i = 0; i < m_forms->GetSize(); ++i) {
    if ((*m_forms)[i].GetName() == name && FindPoint(i, code) >= 0) return i;
  }
  return -1;
}

int FormIndex::FindPoint(int form, const CString& code) { return m_points[static_cast<std::size_t>(form)].Find(code); }

}  // namespace vorn_host
