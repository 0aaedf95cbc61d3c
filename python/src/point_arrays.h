#pragma once

#include <pybind11/numpy.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "python/src/sequence.h"

namespace vorn_python {

/// Keeps the points that arrays show: those of the collection until it is about to change, which then goes on with a
/// copy.
template <typename Array>
class PointKeeper final : public Onlooker {
 public:
  explicit PointKeeper(std::shared_ptr<Sequence<Array>> points) : m_points(std::move(points)) {}

  void LetGo() override {
    if (!m_points) return;
    Array& points = m_points->Read();
    Array copy(points);
    m_kept = std::move(points);  // the points themselves stay where they are
    points = std::move(copy);
    m_points.reset();
  }
  [[nodiscard]] bool LooksOn() const { return m_points != nullptr; }

 private:
  std::shared_ptr<Sequence<Array>> m_points;
  Array m_kept;
};

/// The keeper of a collection's points, for all arrays of them.
template <typename Array>
[[nodiscard]] std::shared_ptr<Onlooker> KeeperOf(const std::shared_ptr<Sequence<Array>>& points) {
  if (auto keeper = std::dynamic_pointer_cast<PointKeeper<Array>>(points->GetOnlooker()); keeper && keeper->LooksOn()) {
    return keeper;
  }
  auto keeper = std::make_shared<PointKeeper<Array>>(points);
  points->SetOnlooker(keeper);
  return keeper;
}

/// A value of all points as an array that cannot be written to: the model's own memory, or, where a point has no value,
/// a copy with NaN in its place.
/// @param value gives the reference to a point's value
template <typename Array, typename Value>
[[nodiscard]] py::array_t<double> PointArray(const std::shared_ptr<Sequence<Array>>& points, Value value) {
  static_assert(std::is_standard_layout_v<NurReal> && sizeof(NurReal) == sizeof(double));
  using Item = typename Sequence<Array>::Item;

  const Array& items = points->Read();
  const py::ssize_t size = items.GetSize();
  py::array_t<double> array;
  if (std::all_of(items.begin(), items.end(), [&](const Item& item) { return value(item).IsSet(); }) && size > 0) {
    auto keeper = std::make_unique<std::shared_ptr<Onlooker>>(KeeperOf(points));
    const py::capsule owner(keeper.get(), [](void* held) { delete static_cast<std::shared_ptr<Onlooker>*>(held); });
    (void)keeper.release();
    const auto* const first = reinterpret_cast<const double*>(&value(items[0]));
    array = py::array_t<double>({size}, {static_cast<py::ssize_t>(sizeof(Item))}, first, owner);
  } else {
    array = py::array_t<double>(size);
    std::transform(items.begin(), items.end(), array.mutable_data(), [&](const Item& item) {
      return value(item).IsSet() ? value(item).Value() : std::numeric_limits<double>::quiet_NaN();
    });
  }
  array.attr("flags").attr("writeable") = false;
  return array;
}

}  // namespace vorn_python
