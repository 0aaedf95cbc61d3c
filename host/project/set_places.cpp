#include "host/project/set_places.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace vorn_host {

namespace {

constexpr int kNone = -1;

template <typename First, typename Second>
std::optional<std::pair<First, Second>> Key(First first, Second second) {
  return std::pair(first, second);
}
/// An empty name is nobody's.
std::optional<std::string_view> Key(const CString& name) {
  return name.IsEmpty() ? std::nullopt : std::optional(name.View());
}

/// Two lists whose elements are paired with each other, step by step: each has the index of its partner, or -1.
struct Pairing {
  std::vector<int> first;
  std::vector<int> second;

  /// Pairs elements that are left and have the same key, in the order in which they stand. One without a key stays.
  template <typename KeyOfFirst, typename KeyOfSecond>
  void PairByKey(KeyOfFirst&& keyOfFirst, KeyOfSecond&& keyOfSecond) {
    struct Left {
      std::vector<int> indices;
      std::size_t next = 0;
    };
    std::map<typename decltype(keyOfSecond(0))::value_type, Left> left;
    for (int i = 0; i < static_cast<int>(second.size()); ++i) {
      if (second[static_cast<std::size_t>(i)] != kNone) continue;
      if (const auto key = keyOfSecond(i)) left[*key].indices.push_back(i);
    }
    for (int i = 0; i < static_cast<int>(first.size()); ++i) {
      if (first[static_cast<std::size_t>(i)] != kNone) continue;
      const auto key = keyOfFirst(i);
      const auto same = key ? left.find(*key) : left.end();
      if (same == left.end() || same->second.next == same->second.indices.size()) continue;
      Pair(i, same->second.indices[same->second.next++]);
    }
  }

  void Pair(int one, int other) {
    first[static_cast<std::size_t>(one)] = other;
    second[static_cast<std::size_t>(other)] = one;
  }
};

/// The last partner before each element of a list, and behind all of them; -1 when there is none.
std::vector<int> PartnerBefore(const std::vector<int>& partners) {
  std::vector<int> before(partners.size() + 1, kNone);
  for (std::size_t i = 0; i < partners.size(); ++i) before[i + 1] = partners[i] != kNone ? partners[i] : before[i];
  return before;
}

}  // namespace

void SetPlaces::Remember(VornAlignmentsArray& alignments, const std::vector<int>& places) {
  m_sets.clear();
  for (const int place : places) {
    VornAlignment& alignment = alignments[place];
    const VornXSections& set = alignment.GetXSections();  // made now, if it was not: it has a place of its own then
    m_sets.push_back({&set, alignment.GetName(), set.GetRefAlign(), set.GetRefAlign(), set.GetRefVertical()});
  }
}

void SetPlaces::HandOut() {
  for (Set& set : m_sets) set.reference = CString();
}

std::vector<int> SetPlaces::Find(const VornAlignmentsArray& alignments) const {
  const auto setAt = [&](int i) -> const Set& { return m_sets[static_cast<std::size_t>(i)]; };
  const auto objectAt = [&](int i) { return &alignments[i].GetXSections(); };
  const auto nameAt = [&](int i) { return alignments[i].GetName().View(); };
  const auto referenceAt = [&](int i) -> const CString& { return alignments[i].GetXSections().GetRefAlign(); };
  Pairing pairing{std::vector<int>(m_sets.size(), kNone),
                  std::vector<int>(static_cast<std::size_t>(alignments.GetSize()), kNone)};

  // The object itself, unless it took the place of another that went.
  pairing.PairByKey([&](int i) { return Key(setAt(i).object, setAt(i).name.View()); },
                    [&](int i) { return Key(objectAt(i), nameAt(i)); });
  pairing.PairByKey([&](int i) { return Key(setAt(i).object, setAt(i).reference.View()); },
                    [&](int i) { return Key(objectAt(i), referenceAt(i).View()); });
  // A copy of it.
  pairing.PairByKey([&](int i) { return Key(setAt(i).name.View(), setAt(i).reference.View()); },
                    [&](int i) { return Key(nameAt(i), referenceAt(i).View()); });
  pairing.PairByKey([&](int i) { return Key(setAt(i).reference); }, [&](int i) { return Key(referenceAt(i)); });
  // The object with another name, where it was among the others.
  const std::vector<int> foundBefore = PartnerBefore(pairing.first);
  const std::vector<int> setBefore = PartnerBefore(pairing.second);
  const auto before = [](const std::vector<int>& partners, int i) { return partners[static_cast<std::size_t>(i)]; };
  pairing.PairByKey(
      [&](int i) {
        const int neighbour = before(foundBefore, i);
        return Key(setAt(i).object, neighbour == kNone ? kNone : pairing.second[static_cast<std::size_t>(neighbour)]);
      },
      [&](int i) { return Key(objectAt(i), before(setBefore, i)); });
  return pairing.first;
}

std::vector<int> SetPlaces::Match(const Vorn_XSectionsArray& sets, const VornAlignmentsArray& alignments,
                                  const std::vector<int>& found) const {
  const auto setAt = [&](int i) -> const Set& { return m_sets[static_cast<std::size_t>(i)]; };
  const auto isFound = [&](int i) { return found[static_cast<std::size_t>(i)] != kNone; };
  Pairing pairing{std::vector<int>(static_cast<std::size_t>(sets.GetSize()), kNone),
                  std::vector<int>(m_sets.size(), kNone)};
  for (int i = 0; i < GetSize(); ++i) {
    if (!isFound(i)) pairing.second[static_cast<std::size_t>(i)] = GetSize();  // nobody's
  }

  using References = std::optional<std::pair<std::string_view, std::string_view>>;
  const auto references = [](const CString& align, const CString& vertical) {
    return align.IsEmpty() ? References() : Key(align.View(), vertical.View());
  };
  const auto reference = [&](int i) { return Key(sets[i].GetRefAlign()); };
  pairing.PairByKey([&](int i) { return references(sets[i].GetRefAlign(), sets[i].GetRefVertical()); },
                    [&](int i) { return references(setAt(i).given, setAt(i).vertical); });
  pairing.PairByKey(reference, [&](int i) { return Key(setAt(i).given); });
  pairing.PairByKey(reference, [&](int i) { return Key(alignments[found[static_cast<std::size_t>(i)]].GetName()); });
  const auto place = [](int i) { return std::optional(i); };
  pairing.PairByKey(place, place);
  return pairing.first;
}

// --- arranging -------------------------------------------------------------------------------------------------------

namespace {

/// Builds the array of alignments anew.
class Arrangement {
 public:
  Arrangement(VornAlignmentsArray& former, const std::vector<int>& chosen)
      : m_former(former), m_chosen(chosen), m_movedTo(static_cast<std::size_t>(former.GetSize())) {}

  void Keep(int index) {
    m_movedTo[static_cast<std::size_t>(index)] = m_arranged.GetSize();
    m_arranged.Add(std::move(m_former[index]));
  }
  /// Leaves one out: the next has its place.
  void Leave(int index) { m_movedTo[static_cast<std::size_t>(index)] = m_arranged.GetSize(); }
  void PutNextSet() {
    const int index = m_chosen[m_places.size()];
    m_places.push_back(m_arranged.GetSize());
    index == kNone ? static_cast<void>(m_arranged.AddDefault()) : Keep(index);
  }

  std::vector<int> Finish() {
    while (m_places.size() < m_chosen.size()) PutNextSet();
    int current = m_former.GetCurrent();
    if (m_former.IsRange(current)) {
      current = std::min(m_movedTo[static_cast<std::size_t>(current)], m_arranged.GetUpperBound());
    }
    m_arranged.SetCurrent(current);
    m_former = std::move(m_arranged);
    return std::move(m_places);
  }

 private:
  VornAlignmentsArray& m_former;
  const std::vector<int>& m_chosen;
  VornAlignmentsArray m_arranged;
  std::vector<int> m_movedTo;
  std::vector<int> m_places;
};

}  // namespace

std::vector<int> ArrangeAlignments(VornAlignmentsArray& alignments, const std::vector<int>& found,
                                   const std::vector<int>& chosen) {
  enum class Fate : unsigned char { Stays, Goes, HasSet };
  std::vector<Fate> fates(static_cast<std::size_t>(alignments.GetSize()), Fate::Stays);
  const auto note = [&](const std::vector<int>& indices, Fate fate) {
    for (const int index : indices) {
      if (index != kNone) fates[static_cast<std::size_t>(index)] = fate;
    }
  };
  note(found, Fate::Goes);
  note(chosen, Fate::HasSet);
  Arrangement arrangement(alignments, chosen);
  for (int i = 0; i < static_cast<int>(fates.size()); ++i) {
    switch (fates[static_cast<std::size_t>(i)]) {
      case Fate::Stays:
        arrangement.Keep(i);
        break;
      case Fate::Goes:
        arrangement.Leave(i);
        break;
      case Fate::HasSet:
        // Some set's alignment stands here; the sets take these places in their order.
        arrangement.PutNextSet();
        break;
    }
  }
  return arrangement.Finish();
}

}  // namespace vorn_host
