#include "python/src/node.h"

namespace vorn_python {

namespace {

constexpr const char* kExpired =
    "the element was taken from a collection that an edit has rebuilt since: take it from there again";
constexpr const char* kHandedOver = "the design was handed over to a project: ask the project for it again";
constexpr const char* kBusy = "another thread is at work on this design: wait for it to come to an end";

}  // namespace

Node::Node(std::shared_ptr<Node> parent, Step step, int index)
    : m_parent(std::move(parent)), m_step(step), m_index(index) {}

Node::~Node() {
  if (m_parent) m_parent->m_children.erase({m_step, m_index});
}

void* Node::Address() {
  if (m_expired) throw ExpiredError(kExpired);
  if (m_parent) return m_step(m_parent->Address(), m_index);
  if (m_busy) throw BusyError(kBusy);
  void* const own = Own();
  if (own == nullptr) throw ExpiredError(kHandedOver);
  return own;
}

Node& Node::Root() {
  Node* node = this;
  while (node->m_parent) node = node->m_parent.get();
  return *node;
}

Node* Node::FindBelow(Step step, int index) const {
  const auto live = m_children.find({step, index});
  return live == m_children.end() ? nullptr : live->second;
}

void Node::AboutToChange() {
  for (Node* node = this; node != nullptr; node = node->m_parent.get()) {
    if (const auto onlooker = node->m_onlooker.lock()) onlooker->LetGo();
  }
}

std::vector<std::shared_ptr<Node>> Node::LiveChildren() const {
  std::vector<std::shared_ptr<Node>> children;
  for (const auto& [key, child] : m_children) children.push_back(child->shared_from_this());
  return children;
}

void Node::AboutToChangeBelow() {
  if (const auto onlooker = m_onlooker.lock()) onlooker->LetGo();
  for (const auto& child : LiveChildren()) child->AboutToChangeBelow();
}

void Node::ExpireBelow() {
  for (const auto& child : LiveChildren()) {
    if (child->m_index == kMember || child->OutlivesEdits()) {
      child->ExpireBelow();
    } else {
      child->Expire();
    }
  }
}

void Node::Expire() {
  for (const auto& child : LiveChildren()) child->Expire();
  Leave();
  m_expired = true;
}

void Node::Join(std::shared_ptr<Node> parent, Step step, int index) {
  m_parent = std::move(parent);
  m_step = step;
  m_index = index;
  m_parent->m_children.emplace(Key{step, index}, this);
}

void Node::Leave() {
  if (!m_parent) return;
  m_parent->m_children.erase({m_step, m_index});
  // Last, as the parent may have no other holder.
  const std::shared_ptr<Node> parent = std::move(m_parent);
  m_parent.reset();
  m_index = kMember;
}

void Node::MoveItems(Step step, int from, int by) {
  std::map<Key, Node*> moved;
  for (auto child = m_children.lower_bound({step, from}); child != m_children.end() && child->first.step == step;) {
    child->second->m_index += by;
    moved.emplace(Key{step, child->second->m_index}, child->second);
    child = m_children.erase(child);
  }
  m_children.merge(moved);
}

vorn_host::Edition EditionOf(const vorn_host::Project& project) {
  switch (project.GetRoadGm().GetSchemaVersion()) {
    case VornSchema::Version20:
      return vorn_host::Edition::V20;
    case VornSchema::Version40:
      return vorn_host::Edition::V40;
    default:
      return VornIsMaff(project.GetRoadGm().GetStructureType().GetType()) ? vorn_host::Edition::Maff10
                                                                          : vorn_host::Edition::V41;
  }
}

}  // namespace vorn_python
