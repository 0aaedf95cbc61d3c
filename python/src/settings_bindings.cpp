#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "host/settings/known_settings.h"
#include "host/settings/settings_file.h"
#include "host/settings/user_settings.h"
#include "python/src/binding.h"
#include "vorn/framework/define_manager.h"
#include "vorn/platform/wex_key.h"
#include "vorn/road/form_ctrl.h"
#include "vorn/road/road_gm_data.h"

/// The user's settings as a mapping.
namespace vorn_python {

namespace {

using vorn_host::IntegerSetting;
using vorn_host::KnownSetting;
using vorn_host::SettingsStore;
using vorn_host::SettingValue;

/// The settings of the total-station edition, or of the ordinary one, are those of the process while this lives.
class TotalStationScope {
 public:
  explicit TotalStationScope(bool totalStation) { Manager().SetTSFlag(totalStation); }
  ~TotalStationScope() { Manager().SetTSFlag(false); }
  TotalStationScope(const TotalStationScope&) = delete;
  TotalStationScope& operator=(const TotalStationScope&) = delete;

 private:
  static VornDefineManager& Manager() { return VornDefineManager::GetInstance(); }
};

/// The settings in one store, by their dotted names.
class Settings {
 public:
  /// Settings in a file of the caller's.
  static Settings At(const std::filesystem::path& path, bool totalStation) {
    return Open(totalStation, [=](SettingsStore::ProblemHandler report) {
      return std::make_shared<vorn_host::SettingsFile>(path, std::move(report));
    });
  }
  /// The user's settings of an application.
  static Settings Of(const std::string& company, const std::string& application, bool totalStation) {
    return Open(totalStation, [=](SettingsStore::ProblemHandler report) {
      return vorn_host::OpenUserSettings({company, application}, std::move(report));
    });
  }

  [[nodiscard]] SettingValue Get(const std::string& name) const {
    return Do([&] {
      const KnownSetting& setting = Known(name);
      const std::optional<SettingValue> stored = Stored(setting);
      return stored ? *stored : DefaultOf(setting);
    });
  }
  void Set(const std::string& name, const SettingValue& value) {
    Do([&] {
      const KnownSetting& setting = Known(name);
      m_store->CreateKey(KeyOf(setting));
      if (!Store(setting, value)) throw vorn_host::DocumentError(TakeProblem("the setting could not be stored"));
    });
  }
  [[nodiscard]] bool IsStored(const std::string& name) const {
    return Do([&] { return Stored(Known(name)).has_value(); });
  }
  [[nodiscard]] static SettingValue Default(const std::string& name) { return DefaultOf(Known(name)); }
  [[nodiscard]] static std::optional<std::string> Meaning(const std::string& name, const SettingValue& value) {
    const auto* integer = std::get_if<IntegerSetting>(&Known(name).kind);
    const auto* code = std::get_if<std::int32_t>(&value);
    if (integer == nullptr || integer->meaning == nullptr || code == nullptr) return std::nullopt;
    const std::string meaning = integer->meaning(*code);
    return meaning.empty() ? std::nullopt : std::optional(meaning);
  }
  [[nodiscard]] std::string Place() const { return m_store->Place(); }
  /// Calls work() while the store is the one that the library reads and writes.
  template <typename Work>
  void DoInLibrary(Work&& work) const {
    Do([&] {
      WexSetApplicationStore(m_store, "");  // the store is the application's own key
      work();
    });
  }
  /// As `DoInLibrary`, and throws `DocumentError` when something could not be kept. A store tells a problem only once,
  /// so this is done in a new one.
  template <typename Work>
  void StoreFrom(Work&& work) const {
    const Settings anew = Open(m_totalStation, m_open);
    anew.DoInLibrary([&] {
      work();
      const std::string problem = anew.TakeProblem("");
      if (!problem.empty()) throw vorn_host::DocumentError(problem);
    });
  }

  [[nodiscard]] static std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const KnownSetting& setting : vorn_host::KnownSettings()) names.push_back(DottedName(setting));
    return names;
  }

 private:
  using Opener = std::function<std::shared_ptr<SettingsStore>(SettingsStore::ProblemHandler)>;

  static Settings Open(bool totalStation, Opener open) {
    Settings settings;
    settings.m_totalStation = totalStation;
    settings.m_open = std::move(open);
    settings.m_store = settings.m_open([problem = settings.m_problem](const std::string& text) { *problem = text; });
    if (settings.m_store == nullptr) {
      throw vorn_host::DocumentError("there is no place for settings: neither XDG_CONFIG_HOME nor HOME names one");
    }
    return settings;
  }

  static const KnownSetting& Known(const std::string& name) {
    const KnownSetting* const setting = vorn_host::FindKnownSetting(name);
    if (setting == nullptr) throw py::key_error(name);
    return *setting;
  }
  static SettingValue DefaultOf(const KnownSetting& setting) {
    if (const auto* integer = std::get_if<IntegerSetting>(&setting.kind)) return integer->defaultValue;
    return vorn_host::ToUtf8(std::get<VornTextSetting>(setting.kind).defaultValue);
  }
  /// The key of a setting, as the library names it.
  static std::string KeyOf(const KnownSetting& setting) {
    const CString root = VornDefineManager::GetInstance().GetInfoConstRegKeyRoot();
    return std::string(root.View()) + WexStore::kSeparator + setting.group;
  }

  [[nodiscard]] std::optional<SettingValue> Stored(const KnownSetting& setting) const {
    if (std::holds_alternative<IntegerSetting>(setting.kind)) return m_store->ReadInt(KeyOf(setting), setting.Name());
    const std::optional<CString> text = m_store->ReadString(KeyOf(setting), setting.Name());
    return text ? std::optional<SettingValue>(vorn_host::ToUtf8(text->View())) : std::nullopt;
  }
  bool Store(const KnownSetting& setting, const SettingValue& value) {
    if (const auto* integer = std::get_if<IntegerSetting>(&setting.kind)) {
      const auto* number = std::get_if<std::int32_t>(&value);
      if (number == nullptr) throw py::type_error(DottedName(setting) + " is an integer");
      if (*number < integer->min || *number > integer->max) {
        throw py::value_error(DottedName(setting) + " is an integer from " + std::to_string(integer->min) + " to " +
                              std::to_string(integer->max));
      }
      return m_store->WriteInt(KeyOf(setting), setting.Name(), *number);
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr) throw py::type_error(DottedName(setting) + " is a text");
    return m_store->WriteString(KeyOf(setting), setting.Name(), ToModelText(py::str(*text)).View());
  }

  /// Calls work() in the settings' edition, and warns of what could not be read or kept.
  template <typename Work>
  std::invoke_result_t<Work> Do(Work&& work) const {
    const LibraryTurn turn;
    const TotalStationScope scope(m_totalStation);
    if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
      work();
      Warn();
    } else {
      auto result = work();
      Warn();
      return result;
    }
  }
  void Warn() const {
    const std::string problem = TakeProblem("");
    if (!problem.empty() && PyErr_WarnEx(PyExc_RuntimeWarning, problem.c_str(), 1) != 0) throw py::error_already_set();
  }
  [[nodiscard]] std::string TakeProblem(const char* otherwise) const {
    std::string problem = std::exchange(*m_problem, {});
    return problem.empty() ? otherwise : problem;
  }

  Opener m_open;
  std::shared_ptr<SettingsStore> m_store;
  bool m_totalStation = false;
  std::shared_ptr<std::string> m_problem = std::make_shared<std::string>();  ///< what the store told last
};

std::vector<std::pair<std::string, SettingValue>> Items(const Settings& settings) {
  std::vector<std::pair<std::string, SettingValue>> items;
  for (std::string& name : Settings::Names()) {
    SettingValue value = settings.Get(name);
    items.emplace_back(std::move(name), std::move(value));
  }
  return items;
}

void AddMapping(py::class_<Settings>& cls) {
  const auto contains = [](const Settings&, const py::object& name) {
    return py::isinstance<py::str>(name) && vorn_host::FindKnownSetting(name.cast<std::string>()) != nullptr;
  };
  cls.def("__getitem__", &Settings::Get, py::arg("name"))
      .def("__setitem__", &Settings::Set, py::arg("name"), py::arg("value"))
      .def("__contains__", contains, py::arg("name"))
      .def("__len__", [](const Settings&) { return Settings::Names().size(); })
      .def("__iter__", [](const Settings&) { return py::iter(py::cast(Settings::Names())); })
      .def(
          "keys", [](const Settings&) { return Settings::Names(); }, "The names of the settings.")
      .def(
          "values",
          [](const Settings& settings) {
            std::vector<SettingValue> values;
            for (auto& [name, value] : Items(settings)) values.push_back(std::move(value));
            return values;
          },
          "The values of the settings.")
      .def("items", &Items, "The settings, each with its name and its value.")
      .def(
          "get",
          [contains](const Settings& settings, const std::string& name, const std::optional<SettingValue>& other) {
            return contains(settings, py::str(name)) ? std::optional(settings.Get(name)) : other;
          },
          py::arg("name"), py::arg("default") = py::none(), "The value of a setting, another one where there is none.");
  py::module_::import("collections.abc").attr("Mapping").attr("register")(cls);
}

/// What of a project comes from settings, and goes there.
void AddExchange(py::class_<Settings>& cls) {
  using Names = Element<VornFormCtrl>;
  using Road = Element<VornRoadGmData>;
  const auto loadNames = [](VornFormCtrl& names) {
    WexKey root;
    if (VornGetBaseRegKey(&root)) names.LoadRegistry(&root);
  };
  const auto storeNames = [](const VornFormCtrl& names) {
    WexKey root;
    if (VornGetBaseRegKey(&root)) names.StoreRegistry(&root);
  };
  cls.def(
         "load_names",
         [=](const Settings& settings, Names& names) { settings.DoInLibrary([&] { loadNames(names.Change()); }); },
         py::arg("names"), "Gives a project the names and marks of the as-built control items.")
      .def(
          "store_names",
          [=](const Settings& settings, Names& names) { settings.StoreFrom([&] { storeNames(names.Read()); }); },
          py::arg("names"), "Stores a project's names and marks of the as-built control items.")
      .def(
          "load_road",
          [](const Settings& settings, Road& road) { settings.DoInLibrary([&] { road.Change().LoadRegistry(); }); },
          py::arg("road_geometry"), "Gives a project the road class, the design speed and the traffic class.")
      .def(
          "store_road",
          [](const Settings& settings, Road& road) { settings.StoreFrom([&] { road.Read().StoreRegistry(); }); },
          py::arg("road_geometry"), "Stores a project's road class, design speed and traffic class.");
}

}  // namespace

void AddSettings(py::module_& module) {
  py::class_<Settings> cls(
      module, "UserSettings",
      "The user's settings of the dialogs for construction information: a mapping from names such as RoadInfo.speed\n"
      "to integers and texts. A setting that is not stored has its default. What is set is stored at once, and what\n"
      "another program stores counts at once. A place that cannot be read is warned of (RuntimeWarning), and all its\n"
      "settings have their defaults.");
  cls.def(py::init(&Settings::Of), py::arg("company") = "vorn", py::arg("application") = "vorn", py::kw_only(),
          py::arg("total_station") = false,
          "The settings of an application; those of the command-line tool unless told otherwise.\n\n"
          ":param total_station: the settings of the total-station edition, which are kept apart\n"
          ":raises DocumentError: there is no place for them")
      .def_static("at", &Settings::At, py::arg("path"), py::kw_only(), py::arg("total_station") = false,
                  "The settings in a file, which is TOML and need not exist yet.")
      .def_property_readonly("place", &Settings::Place, "Where they are: a file, or a key of the system registry.")
      .def("is_stored", &Settings::IsStored, py::arg("name"), "Whether a value is stored, which is no default then.")
      .def_static("default", &Settings::Default, py::arg("name"), "What a setting is while none is stored.")
      .def_static("meaning", &Settings::Meaning, py::arg("name"), py::arg("value"),
                  "What a value of a setting stands for, such as 60 km/h; None for one that stands for nothing else.")
      .def("__repr__", [](const Settings& settings) { return "<vorn.UserSettings in " + settings.Place() + ">"; });
  AddMapping(cls);
  AddExchange(cls);
}

}  // namespace vorn_python
