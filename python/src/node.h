#pragma once

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/document/design_document.h"
#include "host/project/project.h"
#include "vorn/model/x_sections.h"

namespace vorn_python {

/// An object was taken from a collection that an edit has rebuilt since, or belongs to a design that was handed over.
class ExpiredError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Another thread reads or writes the design just now.
class BusyError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Finds an object within the one that holds it: a member, or the element at an index of a collection.
using Step = void* (*)(void* object, int index);

/// Shows memory of an object, as an array of a form's values does. It has to let go before that memory changes.
class Onlooker {
 public:
  virtual ~Onlooker() = default;
  virtual void LetGo() = 0;
};

/// What a Python object of the model stands for. The model holds its elements by value, and they move when a collection
/// changes: a node keeps no address but the way to its element, and holds the nodes on that way. Each element has at
/// most one node, so that the same element is the same Python object, and follows its element when others come or go.
///
/// Nodes are only touched with Python's lock held.
class Node : public std::enable_shared_from_this<Node> {
 public:
  static constexpr int kMember = -1;

  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;
  virtual ~Node();

  /// Where the object is now. Throws `ExpiredError` and `BusyError`.
  [[nodiscard]] void* Address();

  /// The node that this one stands in; null when it stands alone.
  [[nodiscard]] const std::shared_ptr<Node>& Parent() const { return m_parent; }
  [[nodiscard]] Node& Root();
  /// Index in a collection; `kMember` of anything else.
  [[nodiscard]] int Index() const { return m_index; }

  /// The node of something within this object.
  template <typename Type>
  [[nodiscard]] std::shared_ptr<Type> Below(Step step, int index = kMember) {
    const auto live = m_children.find({step, index});
    if (live != m_children.end()) return std::static_pointer_cast<Type>(live->second->shared_from_this());
    auto node = std::make_shared<Type>(shared_from_this(), step, index);
    m_children.emplace(Key{step, index}, node.get());
    return node;
  }
  /// The node of something within this object, null when nobody holds it.
  [[nodiscard]] Node* FindBelow(Step step, int index) const;

  void SetOnlooker(const std::shared_ptr<Onlooker>& onlooker) { m_onlooker = onlooker; }
  [[nodiscard]] std::shared_ptr<Onlooker> GetOnlooker() const { return m_onlooker.lock(); }

  /// To be called before a value of this object changes.
  void AboutToChange();
  /// To be called before something within this object changes that has no node on its way.
  void AboutToChangeBelow();
  /// To be called when the collections within this object were rebuilt: their elements cannot be told any more.
  void ExpireBelow();
  void Expire();

  /// Marks the design as at work in another thread.
  void SetBusy(bool busy) { m_busy = busy; }
  [[nodiscard]] bool IsBusy() const { return m_busy; }

  /// Counts changes of collections within the design that editing steps rely on.
  [[nodiscard]] int Shape() const { return m_shape; }
  void ChangeShape() { ++m_shape; }

  /// The edition that the object's values are read in.
  [[nodiscard]] vorn_host::Edition GetEdition() { return Root().OwnEdition(); }

 protected:
  Node() = default;
  Node(std::shared_ptr<Node> parent, Step step, int index);

  /// The object of a node that stands alone; null when it was handed over.
  [[nodiscard]] virtual void* Own() { return nullptr; }
  [[nodiscard]] virtual vorn_host::Edition OwnEdition() { return vorn_host::Edition::V41; }
  /// Whether edits of a whole design leave the element in its place.
  [[nodiscard]] virtual bool OutlivesEdits() const { return false; }

  void Join(std::shared_ptr<Node> parent, Step step, int index);
  void Leave();
  /// Moves the nodes of the elements from an index on.
  void MoveItems(Step step, int from, int by);

 private:
  /// Nodes within this object that somebody holds; they stay for as long as the list does.
  [[nodiscard]] std::vector<std::shared_ptr<Node>> LiveChildren() const;

  struct Key {
    Step step = nullptr;
    int index = kMember;

    friend bool operator<(const Key& a, const Key& b) {
      return a.step != b.step ? std::less<>()(a.step, b.step) : a.index < b.index;
    }
  };

  std::shared_ptr<Node> m_parent;
  Step m_step = nullptr;
  int m_index = kMember;
  bool m_expired = false;
  bool m_busy = false;
  int m_shape = 0;
  std::map<Key, Node*> m_children;  ///< those that somebody holds
  std::weak_ptr<Onlooker> m_onlooker;
};

/// An element of the model: one that stands alone and owns its value, or one within another.
template <typename Type>
class Element final : public Node {
 public:
  explicit Element(Type value) : m_own(std::make_unique<Type>(std::move(value))) {}
  Element(std::shared_ptr<Node> parent, Step step, int index) : Node(std::move(parent), step, index) {}

  [[nodiscard]] Type& Read() { return *static_cast<Type*>(Address()); }
  [[nodiscard]] Type& Change() {
    (void)Read();
    AboutToChange();
    return Read();  // an array may have kept the place where it was
  }
  [[nodiscard]] bool StandsAlone() const { return Parent() == nullptr; }

  /// Takes the value of an element that is about to be removed, and goes on with it alone.
  void Detach() {
    auto own = std::make_unique<Type>(std::move(Read()));
    m_own = std::move(own);
    Leave();
  }
  /// Stands from now on for an element of a collection, which has the value already.
  void Attach(std::shared_ptr<Node> collection, Step step, int index) {
    m_own.reset();
    Join(std::move(collection), step, index);
  }
  /// Gives the value away for good.
  [[nodiscard]] Type HandOver() {
    Type value = std::move(Read());
    m_own.reset();
    return value;
  }

 private:
  [[nodiscard]] void* Own() override { return m_own.get(); }
  [[nodiscard]] vorn_host::Edition OwnEdition() override;
  [[nodiscard]] bool OutlivesEdits() const override {
    return std::is_same_v<Type, VornXSections> || std::is_same_v<Type, VornXSection> ||
           std::is_same_v<Type, VornFileInfo>;
  }

  std::unique_ptr<Type> m_own;
};

/// The edition that the road data of a project were made in.
[[nodiscard]] vorn_host::Edition EditionOf(const vorn_host::Project& project);

template <typename Type>
vorn_host::Edition Element<Type>::OwnEdition() {
  if constexpr (std::is_same_v<Type, vorn_host::DesignDocument>) return Read().edition;
  if constexpr (std::is_same_v<Type, vorn_host::Project>) return EditionOf(Read());
  return vorn_host::Edition::V41;
}

}  // namespace vorn_python
