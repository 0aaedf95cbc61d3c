#pragma once

#include <pybind11/pybind11.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "python/src/casters.h"
#include "python/src/node.h"

namespace vorn_python {

/// A collection of the model as Python has it. Its elements follow when others come or go; one that is removed lives on
/// alone, and one that stood alone stands in the collection once it was added. An element that stands in a collection
/// already is added as a copy, since an element has one place.
template <typename Array>
class Sequence final : public Node {
 public:
  using Item = std::remove_cvref_t<decltype(std::declval<Array&>().GetAt(0))>;

  Sequence(std::shared_ptr<Node> parent, Step step, int index) : Node(std::move(parent), step, index) {}

  [[nodiscard]] Array& Read() { return *static_cast<Array*>(Address()); }
  [[nodiscard]] int Size() { return Read().GetSize(); }

  /// An index as Python counts, where a negative one counts from the end.
  [[nodiscard]] int Checked(py::ssize_t index) {
    const py::ssize_t size = Size();
    if (index < 0) index += size;
    if (index < 0 || index >= size) throw py::index_error("index out of range");
    return static_cast<int>(index);
  }
  [[nodiscard]] std::shared_ptr<Element<Item>> At(int index) { return Below<Element<Item>>(&ItemAt, index); }

  void Insert(int index, Element<Item>& element) {
    Array& items = Change();
    if (element.StandsAlone()) {
      Item& value = element.Read();
      element.AboutToChangeBelow();
      Place(items, index, std::move(value));
    } else {
      Place(items, index, Item(element.Read()));
    }
    MoveItems(&ItemAt, index, 1);
    if (element.StandsAlone()) element.Attach(shared_from_this(), &ItemAt, index);
  }
  void Replace(int index, Element<Item>& element) {
    if (At(index).get() == &element) return;
    Item value(element.Read());
    Array& items = Change();
    if (element.StandsAlone()) element.AboutToChangeBelow();
    DetachAt(index);
    items.SetAt(index, value);
    if (element.StandsAlone()) element.Attach(shared_from_this(), &ItemAt, index);
  }
  void Remove(int index) {
    Array& items = Change();
    DetachAt(index);
    items.RemoveAt(index);
    MoveItems(&ItemAt, index + 1, -1);
  }
  void Clear() {
    Array& items = Change();
    for (int i = 0; i < items.GetSize(); ++i) DetachAt(i);
    items.RemoveAll();
  }
  [[nodiscard]] bool Holds(const py::object& object) {
    if (!py::isinstance<Element<Item>>(object)) return false;
    const auto& element = py::cast<Element<Item>&>(object);
    (void)Size();
    return element.Parent().get() == this;
  }
  /// Index of an element of this collection.
  [[nodiscard]] int IndexOf(const py::object& object) {
    if (!Holds(object)) throw py::value_error("the element is not in this collection");
    return py::cast<Element<Item>&>(object).Index();
  }

 private:
  static void* ItemAt(void* array, int index) {
    Array& items = *static_cast<Array*>(array);
    if (index >= items.GetSize()) throw ExpiredError("the element is gone from its collection");
    return &items.GetAt(index);
  }
  [[nodiscard]] Array& Change() {
    Array& items = Read();
    AboutToChange();
    Root().ChangeShape();
    return items;
  }
  static void Place(Array& items, int index, Item&& value) {
    if (index == items.GetSize()) {
      items.Add(std::move(value));
    } else {
      items.InsertAt(index, value);
    }
  }
  void DetachAt(int index) {
    if (FindBelow(&ItemAt, index) != nullptr) At(index)->Detach();
  }
};

/// The indices that a slice tells of a collection.
[[nodiscard]] inline std::vector<int> IndicesOf(const py::slice& slice, int size) {
  py::ssize_t start = 0, stop = 0, step = 0, length = 0;
  if (!slice.compute(size, &start, &stop, &step, &length)) throw py::error_already_set();
  std::vector<int> indices;
  for (py::ssize_t i = 0; i < length; ++i) indices.push_back(static_cast<int>(start + i * step));
  return indices;
}

template <typename Array>
void BindSequence(py::module_& module, const char* name, const char* doc) {
  using Self = Sequence<Array>;
  using ElementOf = Element<typename Self::Item>;
  using ElementPtr = std::shared_ptr<ElementOf>;

  py::class_<Self, std::shared_ptr<Self>> cls(module, name, doc);
  cls.def("__len__", &Self::Size)
      .def("__bool__", [](Self& self) { return self.Size() > 0; })
      .def("__iter__",
           [](const py::object& self) { return py::reinterpret_steal<py::object>(PySeqIter_New(self.ptr())); })
      .def("__contains__", &Self::Holds)
      .def("__getitem__", [](Self& self, py::ssize_t index) { return self.At(self.Checked(index)); })
      .def("__getitem__",
           [](Self& self, const py::slice& slice) {
             std::vector<ElementPtr> items;
             for (const int i : IndicesOf(slice, self.Size())) items.push_back(self.At(i));
             return items;
           })
      .def("__setitem__",
           [](Self& self, py::ssize_t index, ElementOf& element) { self.Replace(self.Checked(index), element); })
      .def("__delitem__", [](Self& self, py::ssize_t index) { self.Remove(self.Checked(index)); })
      .def("__delitem__",
           [](Self& self, const py::slice& slice) {
             std::vector<int> indices = IndicesOf(slice, self.Size());
             std::sort(indices.begin(), indices.end(), std::greater<>());
             for (const int i : indices) self.Remove(i);
           })
      .def(
          "append", [](Self& self, ElementOf& element) { self.Insert(self.Size(), element); }, py::arg("element"),
          "Adds an element at the end: itself when it stands alone, otherwise a copy.")
      .def(
          "insert",
          [](Self& self, py::ssize_t index, ElementOf& element) {
            const py::ssize_t size = self.Size();
            if (index < 0) index = std::max<py::ssize_t>(index + size, 0);
            self.Insert(static_cast<int>(std::min(index, size)), element);
          },
          py::arg("index"), py::arg("element"), "Adds an element before an index, as `append` does.")
      .def(
          "extend",
          [](Self& self, const py::iterable& elements) {
            const py::list added(elements);
            for (const py::handle element : added) {
              if (!py::isinstance<ElementOf>(element)) throw py::type_error("an element of another type");
            }
            for (const py::handle element : added) self.Insert(self.Size(), element.cast<ElementOf&>());
          },
          py::arg("elements"), "Appends each element; all of them or, when one is of another type, none.")
      .def(
          "pop",
          [](Self& self, py::ssize_t index) {
            const int at = self.Checked(index);
            ElementPtr element = self.At(at);
            self.Remove(at);
            return element;
          },
          py::arg("index") = -1, "Removes an element, which lives on alone, and gives it.")
      .def(
          "remove", [](Self& self, const py::object& element) { self.Remove(self.IndexOf(element)); },
          py::arg("element"), "Removes this very element, which lives on alone.")
      .def("clear", &Self::Clear, "Removes all elements, which live on alone.")
      .def(
          "index",
          [](Self& self, const py::object& element, py::ssize_t start, py::ssize_t stop) {
            const int index = self.IndexOf(element);
            const std::vector<int> range = IndicesOf(py::slice(start, stop, 1), self.Size());
            if (range.empty() || index < range.front() || index > range.back()) {
              throw py::value_error("the element is not in this part of the collection");
            }
            return index;
          },
          py::arg("element"), py::arg("start") = 0, py::arg("stop") = std::numeric_limits<py::ssize_t>::max(),
          "Index of this very element; ValueError when it does not stand in this collection.")
      .def(
          "count", [](Self& self, const py::object& element) { return self.Holds(element) ? 1 : 0; },
          py::arg("element"), "1 when this very element stands in this collection, otherwise 0.")
      .def("__copy__", [](const py::object& self) { return py::list(self); })
      .def("__deepcopy__",
           [](const py::object& self, const py::dict&) {
             py::list copies;
             for (const py::handle element : self) copies.append(element.attr("copy")());
             return copies;
           })
      .def("__repr__", [name = std::string(name)](Self& self) {
        try {
          return "<vorn." + name + " of " + std::to_string(self.Size()) + ">";
        } catch (const ExpiredError&) {
          return "<vorn." + name + " (expired)>";
        } catch (const BusyError&) {
          return "<vorn." + name + " (busy)>";
        }
      });
  py::module_::import("collections.abc").attr("Sequence").attr("register")(cls);
}

}  // namespace vorn_python
