#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "host/document/document_error.h"
#include "host/document/edition.h"
#include "python/src/casters.h"
#include "python/src/node.h"
#include "python/src/sequence.h"
#include "vorn/framework/identifier.h"

/// What the bindings of all classes share: how values, members and collections become attributes, and how work that
/// depends on the library's process-wide edition takes its turn.
namespace vorn_python {

template <typename Type>
using Class = py::class_<Element<Type>, std::shared_ptr<Element<Type>>>;

template <typename Type>
using Ref = std::shared_ptr<Element<Type>>;

/// An element that stands alone.
template <typename Type>
[[nodiscard]] Ref<Type> Alone(Type value) {
  return std::make_shared<Element<Type>>(std::move(value));
}

template <typename Type>
[[nodiscard]] Class<Type> AddClass(py::module_& module, const char* name, const char* doc) {
  Class<Type> cls(module, name, doc);
  if constexpr (std::is_copy_constructible_v<Type>) {
    const auto copy = [](Element<Type>& element) { return Alone<Type>(Type(element.Read())); };
    cls.def("copy", copy, "A copy that stands alone.").def("__copy__", copy);
    cls.def("__deepcopy__", [copy](Element<Type>& element, const py::dict&) { return copy(element); });
  }
  return cls;
}

// --- attributes ----------------------------------------------------------------------------------------------------

/// How an element shows itself in the interpreter, also when it can be used no more.
/// @param describe gives what stands behind the name of the class
template <typename Type, typename Describe>
void Repr(Class<Type>& cls, Describe describe) {
  cls.def("__repr__", [name = py::str(cls.attr("__name__")).cast<std::string>(), describe](Element<Type>& element) {
    std::string text;
    try {
      text = describe(std::as_const(element.Read()));
    } catch (const ExpiredError&) {
      text = "(expired)";
    } catch (const BusyError&) {
      text = "(busy)";
    }
    return "<vorn." + name + (text.empty() ? "" : " ") + text + ">";
  });
}

/// A name as it stands in such a text.
[[nodiscard]] inline std::string Quoted(const CString& text) { return "'" + vorn_host::ToUtf8(text.View()) + "'"; }

/// Says what to do instead of copying or pickling what cannot be copied without a loss.
template <typename Type>
void RefuseCopies(Class<Type>& cls) {
  cls.def("__reduce_ex__", [name = py::str(cls.attr("__name__")).cast<std::string>()](const py::object&, int) {
    throw py::type_error("a " + name + " can be neither copied nor pickled; to_bytes gives what its file holds");
  });
}

/// An attribute through functions of the element itself. Messages about a value of another type name it.
template <typename Type, typename Get, typename Set>
void ElementAttribute(Class<Type>& cls, const char* name, Get get, Set set, const char* doc) {
  cls.def_property(name, py::cpp_function(get, py::name(name), py::is_method(cls)),
                   py::cpp_function(set, py::name(name), py::is_method(cls), py::arg("value")), doc);
}

/// An attribute whose value is another in Python than in the library.
template <typename Type, typename Get, typename Set>
void Attribute(Class<Type>& cls, const char* name, Get get, Set set, const char* doc) {
  ElementAttribute(
      cls, name, [get](Element<Type>& element) { return get(std::as_const(element.Read())); },
      [set](Element<Type>& element, decltype(get(std::declval<const Type&>())) value) {
        set(element.Change(), std::move(value));
      },
      doc);
}

/// A value that is read and set through a pair of member functions.
template <typename Type, typename Base, typename Value, typename SetBase, typename Argument>
void Property(Class<Type>& cls, const char* name, Value (Base::*get)() const, void (SetBase::*set)(Argument),
              const char* doc) {
  Attribute(
      cls, name, [get](const Type& object) -> std::remove_cvref_t<Value> { return (object.*get)(); },
      [set](Type& object, const std::remove_cvref_t<Value>& value) { (object.*set)(value); }, doc);
}

/// A number that says yes or no.
template <typename Type, typename Base, typename Value, typename Argument>
void Flag(Class<Type>& cls, const char* name, Value (Base::*get)() const, void (Base::*set)(Argument),
          const char* doc) {
  Attribute(
      cls, name, [get](const Type& object) { return (object.*get)() != 0; },
      [set](Type& object, bool value) { (object.*set)(value ? 1 : 0); }, doc);
}

/// `None` for an identifier that is not assigned.
[[nodiscard]] inline std::optional<std::uint32_t> AssignedOrNone(std::uint32_t id) {
  return id == kVornNoID ? std::nullopt : std::optional(id);
}

/// An identifier, `None` while it is not assigned.
template <typename Type, typename Base, typename Value, typename Argument>
void Identifier(Class<Type>& cls, const char* name, Value (Base::*get)() const, void (Base::*set)(Argument),
                const char* doc) {
  Attribute(
      cls, name, [get](const Type& object) { return AssignedOrNone((object.*get)()); },
      [set](Type& object, std::optional<std::uint32_t> id) { (object.*set)(id.value_or(kVornNoID)); }, doc);
}

/// A value that can only be read.
template <typename Type, typename Get>
void ReadOnly(Class<Type>& cls, const char* name, Get get, const char* doc) {
  cls.def_property_readonly(
      name, [get](Element<Type>& element) { return get(std::as_const(element.Read())); }, doc);
}

/// The step to a member, told by a function object without a state.
template <typename Type, typename Access>
[[nodiscard]] Step StepTo(Access) {
  static_assert(std::is_empty_v<Access>);
  return [](void* object, int) -> void* { return std::addressof(Access()(*static_cast<Type*>(object))); };
}

/// A member that is an object of its own.
template <typename Type, typename Access>
void Member(Class<Type>& cls, const char* name, Access access, const char* doc) {
  using MemberType = std::remove_cvref_t<decltype(access(std::declval<Type&>()))>;
  cls.def_property_readonly(
      name,
      [step = StepTo<Type>(access)](Element<Type>& element) {
        (void)element.Read();
        return element.template Below<Element<MemberType>>(step);
      },
      doc);
}

/// The node of a collection within an element.
template <typename Type, typename Access>
[[nodiscard]] auto CollectionOf(Element<Type>& element, Access access) {
  using Array = std::remove_cvref_t<decltype(access(std::declval<Type&>()))>;
  (void)element.Read();
  return element.template Below<Sequence<Array>>(StepTo<Type>(access));
}

template <typename Type, typename Access>
void Collection(Class<Type>& cls, const char* name, Access access, const char* doc) {
  cls.def_property_readonly(
      name, [access](Element<Type>& element) { return CollectionOf(element, access); }, doc);
}

/// The element at an index of a collection, `None` for -1.
template <typename Type, typename Access>
[[nodiscard]] auto ItemOrNone(Element<Type>& element, Access access, int index) {
  const auto collection = CollectionOf(element, access);
  return index < 0 ? std::nullopt : std::optional(collection->At(index));
}

// --- work ----------------------------------------------------------------------------------------------------------

/// The library's edition is process-wide: whoever depends on it waits for a turn. Python's lock is let go of while
/// waiting, and a job that lets go of it while it works keeps its turn, so that neither waits for the other for ever.
class LibraryTurn {
 public:
  LibraryTurn() {
    if (Mutex().try_lock()) return;
    const py::gil_scoped_release release;
    Mutex().lock();
  }
  ~LibraryTurn() { Mutex().unlock(); }
  LibraryTurn(const LibraryTurn&) = delete;
  LibraryTurn& operator=(const LibraryTurn&) = delete;

 private:
  static std::recursive_mutex& Mutex();
};

/// Calls work(value) in the edition of the design that an element stands in.
template <typename Type, typename Work>
auto InEdition(Element<Type>& element, Work&& work) {
  const LibraryTurn turn;
  Type& value = element.Read();
  const vorn_host::EditionScope scope(element.GetEdition());
  return work(value);
}

/// What an edit does to the elements within its object.
enum class Rebuilds { Nothing, Collections };

/// Prepares an element for an edit. What this leaves holds for as long as Python's lock or the turn is kept.
template <typename Type>
Type& PrepareEdit(Element<Type>& element, Rebuilds rebuilds) {
  (void)element.Change();
  element.AboutToChangeBelow();
  if (rebuilds == Rebuilds::Collections) {
    element.Root().ChangeShape();
    element.ExpireBelow();
  }
  return element.Read();
}

/// Calls work(value) as `InEdition`, where it changes values.
template <typename Type, typename Work>
auto EditInEdition(Element<Type>& element, Rebuilds rebuilds, Work&& work) {
  const LibraryTurn turn;
  Type& value = PrepareEdit(element, rebuilds);
  const vorn_host::EditionScope scope(element.GetEdition());
  return work(value);
}

/// Marks designs as at work while it lives.
class BusyMark {
 public:
  explicit BusyMark(Node& root) : m_root(root) { m_root.SetBusy(true); }
  ~BusyMark() { m_root.SetBusy(false); }
  BusyMark(const BusyMark&) = delete;
  BusyMark& operator=(const BusyMark&) = delete;

 private:
  Node& m_root;
};

/// Calls work() while other Python threads go on.
template <typename Work>
auto WithoutPython(Work&& work) {
  const LibraryTurn turn;
  const py::gil_scoped_release release;
  return work();
}

/// Calls work(value) on a whole design while other Python threads go on; to these the design is busy.
template <typename Type, typename Work>
auto RunJob(Element<Type>& design, Work&& work) {
  const LibraryTurn turn;
  Type& value = design.Read();
  const BusyMark busy(design);
  const py::gil_scoped_release release;
  return work(value);
}

/// Calls work(value) as `RunJob`, where it changes the design.
template <typename Type, typename Work>
auto RunEdit(Element<Type>& design, Rebuilds rebuilds, Work&& work) {
  const LibraryTurn turn;
  PrepareEdit(design, rebuilds);
  return RunJob(design, work);
}

/// A `DocumentError` with the file that it is about.
class FileError : public vorn_host::DocumentError {
 public:
  FileError(const std::string& message, std::string file) : DocumentError(message), m_file(std::move(file)) {}
  [[nodiscard]] const std::string& File() const { return m_file; }

 private:
  std::string m_file;
};

/// Calls work(), and tells the file with whatever goes wrong in it.
template <typename Work>
auto OnFile(const std::string& file, Work&& work) {
  try {
    return work();
  } catch (const vorn_host::DocumentError& error) {
    throw FileError(error.what(), file);
  }
}

// --- parts of the module -------------------------------------------------------------------------------------------

/// Adds the exports of a document.
void AddExports(Class<vorn_host::DesignDocument>& cls);
/// Adds the drawing of a section.
void AddSectionDrawing(Class<VornXSection>& cls);

void AddErrors(py::module_& module);
void AddModel(py::module_& module);
void AddControl(py::module_& module);
void AddRoad(py::module_& module);
void AddDocuments(py::module_& module);
void AddEditing(py::module_& module);
void AddLandXml(py::module_& module);
void AddProjects(py::module_& module);
void AddSettings(py::module_& module);

}  // namespace vorn_python
