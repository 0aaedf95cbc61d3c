#include "host/document/name_index.h"

namespace vorn_host {

namespace {

/// So many are looked through faster than an index of them is made.
constexpr int kFew = 64;

}  // namespace

int PointIndex::Find(const CString& code) {
  if (m_points->GetSize() <= kFew) return m_points->Find(code);
  if (m_firstOf.empty()) {
    for (int i = 0; i < m_points->GetSize(); ++i) m_firstOf.try_emplace((*m_points)[i].GetCode().View(), i);
  }
  const auto found = m_firstOf.find(code.View());
  return found == m_firstOf.end() ? -1 : found->second;
}

FormIndex::FormIndex(const Vorn_BuildFormArray& forms) : m_forms(&forms) {
  m_points.reserve(static_cast<std::size_t>(forms.GetSize()));
  for (const VornBuildForm& form : forms) m_points.emplace_back(form.GetComposedPntArray());
}

bool FormIndex::IsLarge() const { return m_forms->GetSize() > kFew; }

const FormIndex::Namesakes* FormIndex::FindNamesakes(const CString& name) {
  if (m_namesakes.empty()) {
    for (int i = 0; i < m_forms->GetSize(); ++i) {
      Namesakes& namesakes = m_namesakes[(*m_forms)[i].GetName().View()];
      if (namesakes.first < 0) namesakes.first = i;
      for (const VornComposedPnt& point : (*m_forms)[i].GetComposedPntArray()) {
        namesakes.formOf.try_emplace(point.GetCode().View(), i);
      }
    }
  }
  const auto found = m_namesakes.find(name.View());
  return found == m_namesakes.end() ? nullptr : &found->second;
}

int FormIndex::Find(const CString& name) {
  if (IsLarge()) {
    const Namesakes* namesakes = FindNamesakes(name);
    return namesakes == nullptr ? -1 : namesakes->first;
  }
  for (int i = 0; i < m_forms->GetSize(); ++i) {
    if ((*m_forms)[i].GetName() == name) return i;
  }
  return -1;
}

int FormIndex::Find(const CString& name, const CString& code) {
  if (IsLarge()) {
    const Namesakes* namesakes = FindNamesakes(name);
    if (namesakes == nullptr) return -1;
    const auto form = namesakes->formOf.find(code.View());
    return form == namesakes->formOf.end() ? -1 : form->second;
  }
  for (int i = 0; i < m_forms->GetSize(); ++i) {
    if ((*m_forms)[i].GetName() == name && FindPoint(i, code) >= 0) return i;
  }
  return -1;
}

int FormIndex::FindPoint(int form, const CString& code) { return m_points[static_cast<std::size_t>(form)].Find(code); }

}  // namespace vorn_host
