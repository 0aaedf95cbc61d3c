#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "vorn/framework/base.h"
#include "vorn/platform/kel_array.h"

/// How many elements of one kind the schema asks for.
enum class VORN_Occurs : std::int32_t { ExactlyOne = 0, ZeroOrOne = 1, AnyNumber = 2, OneOrMore = 3, TwoOrMore = 4 };

/// The collection layer of elements that archive as a counted run.
template <typename Type, typename ArgType = const Type&>
class VornArray : public KelArray<Type, ArgType> {
 public:
  /// The 32-bit count, then every element's own record of that store version. Loading replaces what the collection
  /// held; `CArchiveException` leaves the elements that were read.
  virtual void Serialize(CArchive& ar, const CString& tag) {
    std::uint32_t leastBytes = 0;
    if constexpr (requires { Type::kLeastArchiveBytes; }) leastBytes = Type::kLeastArchiveBytes;
    const auto transfer = [&](Type& item) { item.Serialize(ar, tag); };
    SerializeCounted(ar, *this, transfer, leastBytes);
  }
};

/// A collection of like elements that tests its own cardinality, writes all its members and reads a run of them.
/// It owns its elements by value. Derived collections fix the tag and the cardinality.
template <typename Type, typename ArgType = const Type&>
class Vorn_Array : public VornArray<Type, ArgType> {
 public:
  /// Whether the number of elements satisfies `occurs` and every element is enabled.
  [[nodiscard]] virtual bool IsEnable() const {
    if (!IsCountAllowed(this->GetSize())) return false;
    for (const Type& item : *this) {
      if (!item.IsEnable()) return false;
    }
    return true;
  }

  /// Writes the members in order; each decides for itself whether to write. False at the first failure.
  virtual bool toXML(PimIterator* cursor) {
    for (Type& item : *this) {
      if (!item.toXML(cursor)) return false;
    }
    return true;
  }

  /// Reads the run of consecutive siblings that share the tag of the cursor's element, appends them, and leaves the
  /// cursor on the last of them, so that the owner's next step reaches the element behind the run. A member that
  /// fails to read ends the run with false; those before it stay. False as well when the first tag cannot be read.
  virtual bool fromXML(PimIterator* cursor) {
    const int parts = cursor->CountParts();
    return parts > 1 ? ReadParts(cursor, parts) : ReadRun(cursor);
  }

  /// How many elements the schema asks for.
  [[nodiscard]] virtual VORN_Occurs occurs() const { return VORN_Occurs::ExactlyOne; }
  /// The tag of the collection's elements.
  [[nodiscard]] virtual CString tagName() const { return CString(); }

  /// Whether an element of that name belongs into this collection.
  [[nodiscard]] bool IsMatchTagName(std::string_view name) const {
    return Vorn_Base::IsMatchTagName(name, tagName().View());
  }

  /// Whether a number of elements satisfies `occurs`.
  [[nodiscard]] bool IsCountAllowed(int count) const {
    switch (occurs()) {
      case VORN_Occurs::ExactlyOne:
        return count == 1;
      case VORN_Occurs::ZeroOrOne:
        return count <= 1;
      case VORN_Occurs::AnyNumber:
        return true;
      case VORN_Occurs::OneOrMore:
        return count >= 1;
      case VORN_Occurs::TwoOrMore:
        return count >= 2;
    }
    return false;
  }

 private:
  /// Reads a run one element after the other, as `fromXML` says.
  bool ReadRun(PimIterator* cursor) {
    CString runTag;
    if (!Vorn_Base::QueryTagName(cursor, runTag)) return false;
    if (this->IsEmpty()) this->Reserve(cursor->CountRun());
    do {
      bool sameTag = false;
      cursor->VisitTagName([&](std::string_view tag) { sameTag = tag == runTag.View(); });
      if (!sameTag) return Vorn_Base::GoPrevSibling(cursor);
      // Plain appending: a collection that numbers its members leaves those of a document unnumbered.
      if (!this->AddFilled([&](Type& item) { return item.fromXML(cursor); })) return false;
    } while (Vorn_Base::GoNextSibling(cursor));
    return true;
  }

  /// Reads a run in parts at the same time. The elements of a run do not depend on each other: what is read, and what
  /// stays when one cannot be read, is the same. When something is thrown, nothing of the run stays.
  bool ReadParts(PimIterator* cursor, int count) {
    struct Part {
      Vorn_Array items;
      bool read = false;
    };
    std::vector<Part> parts(static_cast<std::size_t>(count));
    cursor->ReadParts([&](int index, PimIterator& start) {
      Part& part = parts[static_cast<std::size_t>(index)];
      part.read = part.items.ReadRun(&start);
    });
    int size = 0;
    for (const Part& part : parts) size += part.items.GetSize();
    this->ReserveMore(size);  // before the first element leaves its part: without memory, none of the run is here
    for (Part& part : parts) {
      for (Type& item : part.items) this->Add(std::move(item));
      if (!part.read) return false;
    }
    return true;
  }
};
