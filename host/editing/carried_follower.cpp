#include "host/editing/carried_follower.h"

#include <iterator>

#include "host/document/carried_item.h"
#include "host/document/element_knowledge.h"

namespace vorn_host {

namespace {

/// Marks lie where no identifier of a document's own does: a document brings none.
constexpr std::uint32_t kFirstMark = 0x80000000;

}  // namespace

CarriedFollower::CarriedFollower(DesignDocument& document) : m_document(document) {
  for (const CarriedItem& item : document.carried.Items()) {
    const ElementPath& path = item.parent;
    if (path.size() >= 2 && path[0].tag == kXSectionsTag && path[1].tag == kXSectionTag) {
      m_carrying.emplace(path[0].index, path[1].index);
    }
  }
}

void CarriedFollower::Mark(int set, int section) {
  if (m_carrying.contains({set, section})) MarkForms(m_document.sets[set].GetXSectionArray()[section]);
}

void CarriedFollower::Trace(int set, int section, bool mirrored) {
  if (!m_carrying.contains({set, section})) return;
  VornXSection& changed = m_document.sets[set].GetXSectionArray()[section];
  Moves& moves = m_moves[{set, section}];
  TraceForms(changed, moves);
  TraceGround(changed, mirrored, moves);
}

void CarriedFollower::FollowTargets(int set, const std::vector<TargetFate>& fates) {
  std::vector<TargetMove>& moves = m_targetMoves[set];
  int index = 0;
  int before = -1;
  for (const TargetFate& fate : fates) {
    const auto former = static_cast<int>(moves.size());
    moves.push_back({fate.removed ? -1 : index++, before, fate.swapped});
    if (!fate.removed) before = former;
  }
}

void CarriedFollower::MarkForms(VornXSection& section) {
  m_marked = Marked();
  std::uint32_t formMark = kFirstMark;
  for (int i = 0; i < section.GetBuildFormArray().GetSize(); ++i) {
    VornBuildForm& form = section.GetBuildFormArray()[i];
    m_marked.typeIDs.push_back(form.GetXSectTypeID());
    form.SetXSectType(form.GetXSectType(), formMark++);
    Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    for (int j = 0; j < points.GetSize(); ++j) {
      m_marked.drawIDs.push_back(points[j].GetDrawID());
      points[j].SetDrawID(kFirstMark + static_cast<std::uint32_t>(m_marked.points.size()));
      m_marked.points.emplace_back(i, j);
    }
    Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
    for (int t = 0; t < targets.GetSize(); ++t) {
      m_marked.targetSerials.push_back(targets[t].GetSerialID());
      targets[t].SetSerialID(kFirstMark + static_cast<std::uint32_t>(m_marked.targets.size()));
      m_marked.targets.emplace_back(i, t);
    }
  }
}

void CarriedFollower::TraceForms(VornXSection& section, Moves& moves) const {
  // The first element that bears a mark is the one itself; copies come behind it.
  for (int i = 0; i < section.GetBuildFormArray().GetSize(); ++i) {
    VornBuildForm& form = section.GetBuildFormArray()[i];
    const std::size_t former = form.GetXSectTypeID() - kFirstMark;
    if (former < m_marked.typeIDs.size()) {
      moves.try_emplace({kBuildFormTag, static_cast<int>(former), {}, -1}, i, -1);
      form.SetXSectType(form.GetXSectType(), m_marked.typeIDs[former]);
    }
    Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
    for (int t = 0; t < targets.GetSize(); ++t) {
      const std::size_t mark = targets[t].GetSerialID() - kFirstMark;
      if (mark >= m_marked.targets.size()) continue;
      const auto& [formerForm, formerIndex] = m_marked.targets[mark];
      moves.try_emplace({kBuildFormTag, formerForm, kFormCtrlTargetTag, formerIndex}, i, t);
      targets[t].SetSerialID(m_marked.targetSerials[mark]);
    }
    Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    for (int j = 0; j < points.GetSize(); ++j) {
      const std::size_t mark = points[j].GetDrawID() - kFirstMark;
      if (mark >= m_marked.points.size()) continue;
      const auto& [formerForm, formerIndex] = m_marked.points[mark];
      moves.try_emplace({kBuildFormTag, formerForm, kComposedPntTag, formerIndex}, i, j);
      points[j].SetDrawID(m_marked.drawIDs[mark]);
    }
  }
}

void CarriedFollower::TraceGround(const VornXSection& section, bool mirrored, Moves& moves) {
  const VornExistingBuildFormArray& grounds = section.GetExistingBuildFormArray();
  for (int i = 0; i < grounds.GetSize(); ++i) {
    const int former = mirrored ? grounds.GetUpperBound() - i : i;
    moves.try_emplace({kExistingBuildFormTag, former, {}, -1}, i, -1);
    const int last = grounds[i].GetComposedPntArray().GetUpperBound();
    for (int j = 0; j <= last; ++j) {
      moves.try_emplace({kExistingBuildFormTag, former, kExistingComposedPntTag, mirrored ? last - j : j}, i, j);
    }
  }
}

bool CarriedFollower::FollowIntoSection(ElementPath& path) const {
  const auto moves = m_moves.find({path[0].index, path[1].index});
  if (moves == m_moves.end()) return true;
  const auto move = moves->second.find(ElementOf(path));
  if (move == moves->second.end()) return false;
  path[2].index = move->second.first;
  if (path.size() > 3) path[3].index = move->second.second;
  return true;
}

bool CarriedFollower::FollowTarget(ElementPath& path) const {
  const auto moves = m_targetMoves.find(path[0].index);
  if (moves == m_targetMoves.end()) return true;
  const auto former = static_cast<std::size_t>(path[1].index);
  if (former >= moves->second.size()) return false;  // never was; so is -1
  const TargetMove& move = moves->second[former];
  if (move.index < 0) return false;
  path[1].index = move.index;
  const bool isOfPair = path.size() > 2 && (path[2].index == 0 || path[2].index == 1);
  if (isOfPair && move.swapped) path[2].index = 1 - path[2].index;
  return true;
}

bool CarriedFollower::Follow(ElementPath& path) const {
  if (path.size() < 2 || path[0].tag != kXSectionsTag) return true;
  if (path[1].tag == kFormCtrlTargetTag) return FollowTarget(path);
  return path[1].tag != kXSectionTag || path.size() < 3 || FollowIntoSection(path);
}

int CarriedFollower::SiblingBefore(const ElementPath& path) const {
  if (path.size() == 2 && path[1].tag == kFormCtrlTargetTag) return TargetBefore(path);
  const bool isMovedAlone = path.size() == 3 || path.size() == 4;
  return isMovedAlone && path[1].tag == kXSectionTag ? SiblingBeforeInSection(path) : -1;
}

int CarriedFollower::SiblingBeforeInSection(const ElementPath& path) const {
  const auto moves = m_moves.find({path[0].index, path[1].index});
  if (moves == m_moves.end()) return -1;
  const auto next = moves->second.lower_bound(ElementOf(path));
  if (next == moves->second.begin()) return -1;
  const auto& [tag, index, tagInForm, indexInForm] = std::prev(next)->first;
  if (path.size() == 3) return tag == path[2].tag ? index : -1;  // or in a form that is gone itself
  const bool isSibling = tag == path[2].tag && index == path[2].index && tagInForm == path[3].tag;
  return isSibling ? indexInForm : -1;
}

int CarriedFollower::TargetBefore(const ElementPath& path) const {
  const auto moves = m_targetMoves.find(path[0].index);
  if (moves == m_targetMoves.end() || moves->second.empty() || path[1].index < 0) return -1;
  const auto former = static_cast<std::size_t>(path[1].index);
  if (former < moves->second.size()) return moves->second[former].before;
  return moves->second.back().index < 0 ? moves->second.back().before : static_cast<int>(moves->second.size()) - 1;
}

CarriedFollower::Element CarriedFollower::ElementOf(const ElementPath& path) {
  if (path.size() == 3) return {path[2].tag, path[2].index, {}, -1};
  return {path[2].tag, path[2].index, path[3].tag, path[3].index};
}

std::vector<CarriedContent::Row> CarriedFollower::Apply() {
  if (m_moves.empty() && m_targetMoves.empty()) return {};
  std::vector<CarriedContent::Row> dropped =
      m_document.carried.MoveElements({[this](ElementPath& path) { return Follow(path); },
                                       [this](const ElementPath& path) { return SiblingBefore(path); }});
  m_moves.clear();
  m_targetMoves.clear();
  return dropped;
}

}  // namespace vorn_host
