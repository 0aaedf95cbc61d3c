#include "host/cli/settings_command.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/cli/design_source.h"
#include "host/cli/output.h"
#include "host/document/document_error.h"
#include "host/document/text_encoding.h"
#include "host/settings/known_settings.h"
#include "vorn/framework/define_manager.h"

namespace vorn_cli {

namespace {

using vorn_host::DottedName;
using vorn_host::IntegerSetting;
using vorn_host::KnownSetting;
using vorn_host::KnownSettings;
using vorn_host::SettingsEntry;
using vorn_host::SettingsStore;
using vorn_host::SettingValue;

struct SettingsOptions {
  std::string key;
  std::string value;
  bool totalStation = false;
  bool json = false;
};

/// A known setting as it stands.
struct SettingState {
  const KnownSetting* setting = nullptr;
  SettingValue value;  ///< what the library goes by
  SettingValue defaultValue;
  bool isStored = false;
  std::string ignored;  ///< what is stored but not of the setting's kind, as it is shown; empty otherwise
};

struct SettingsSummary {
  std::string place;
  std::string root;  ///< the key of the known settings
  std::vector<SettingState> settings;
  std::vector<SettingsEntry> others;
};

// --- reading ---------------------------------------------------------------------------------------------------------

std::string RootName() { return vorn_host::ToUtf8(VornDefineManager::GetInstance().GetInfoConstRegKeyRoot()); }

/// What is stored for a setting. Of entries whose names differ in case only, the store knows which one counts.
std::optional<SettingsEntry> EntryOf(const KnownSetting& setting, const SettingsStore& store) {
  return store.Find({RootName(), setting.group}, setting.Name());
}

/// Whether a settings key gives the stored value, rather than the default, for a setting.
bool IsUsable(const SettingsEntry& entry, const KnownSetting& setting) {
  return std::holds_alternative<IntegerSetting>(setting.kind) ? vorn_host::IntegerOf(entry.value).has_value()
                                                              : vorn_host::TextOf(entry.value).has_value();
}

SettingState ReadState(const KnownSetting& setting, const SettingsStore& store) {
  WexKey root;
  WexKey group;
  if (VornGetBaseRegKey(&root)) group.Open(&root, setting.group);
  SettingState state;
  state.setting = &setting;
  if (const auto* integer = std::get_if<IntegerSetting>(&setting.kind)) {
    state.defaultValue = integer->defaultValue;
    state.value = integer->Load(group);
  } else {
    const auto& text = std::get<VornTextSetting>(setting.kind);
    state.defaultValue = vorn_host::ToUtf8(text.defaultValue);
    state.value = vorn_host::ToUtf8(text.Load(group));
  }
  const std::optional<SettingsEntry> entry = EntryOf(setting, store);
  state.isStored = entry.has_value();
  if (state.isStored && !IsUsable(*entry, setting)) state.ignored = entry->shown;
  return state;
}

SettingsSummary Summarise(const SettingsStore& store) {
  SettingsSummary summary;
  summary.place = store.Place();
  summary.root = RootName();
  summary.others = store.Entries();
  for (const KnownSetting& setting : KnownSettings()) {
    summary.settings.push_back(ReadState(setting, store));
    if (const std::optional<SettingsEntry> entry = EntryOf(setting, store)) std::erase(summary.others, *entry);
  }
  return summary;
}

// --- what is told ----------------------------------------------------------------------------------------------------

std::string MeaningOf(const KnownSetting& setting, const SettingValue& value) {
  const auto* integer = std::get_if<IntegerSetting>(&setting.kind);
  return integer != nullptr && integer->meaning != nullptr ? integer->meaning(std::get<std::int32_t>(value)) : "";
}

/// 3 (60 km/h), "道路中心".
std::string ValueText(const KnownSetting& setting, const SettingValue& value) {
  std::string text = vorn_host::ShownText(value);
  const auto* integer = std::get_if<IntegerSetting>(&setting.kind);
  if (integer == nullptr || integer->meaning == nullptr) return text;
  const std::string meaning = MeaningOf(setting, value);
  return text + " (" + (meaning.empty() ? "no such code" : meaning) + ")";
}

std::string StateText(const SettingState& state) {
  const std::string value = ValueText(*state.setting, state.value);
  if (!state.isStored) return value + ", the default";
  if (!state.ignored.empty()) return value + ", the default, as what is stored cannot be used: " + state.ignored;
  return value + ", stored; the default is " + ValueText(*state.setting, state.defaultValue);
}

Json ToJson(const SettingValue& value) {
  return std::visit([](const auto& stored) { return Json(stored); }, value);
}

Json ToJson(const SettingState& state) {
  const std::string meaning = MeaningOf(*state.setting, state.value);
  return {{"key", DottedName(*state.setting)},     {"value", ToJson(state.value)}, {"meaning", OrNull(meaning)},
          {"default", ToJson(state.defaultValue)}, {"stored", state.isStored},     {"ignored", OrNull(state.ignored)}};
}

Json ToJson(const SettingsEntry& entry) {
  return {{"key", DottedName(entry)}, {"value", entry.value ? ToJson(*entry.value) : Json(entry.shown)}};
}

void PrintText(const SettingsSummary& summary) {
  TextReport report;
  report.Row("Settings", summary.place);
  report.Row("Kept under", summary.root);
  std::string_view group;
  for (const SettingState& state : summary.settings) {
    if (state.setting->group != group) report.Line(group = state.setting->group);
    report.Row(state.setting->Name(), StateText(state), 4);
  }
  if (!summary.others.empty()) report.Line("Also stored:");
  for (const SettingsEntry& entry : summary.others) report.Line(DottedName(entry) + " = " + entry.shown, 4);
  Print(report);
}

void PrintJson(const SettingsSummary& summary) {
  Json settings = Json::array();
  for (const SettingState& state : summary.settings) settings.push_back(ToJson(state));
  Json others = Json::array();
  for (const SettingsEntry& entry : summary.others) others.push_back(ToJson(entry));
  Print(Json{{"place", summary.place},
             {"root", summary.root},
             {"settings", std::move(settings)},
             {"others", std::move(others)}});
}

void PrintRow(const std::string& key, const std::string& text) {
  TextReport report;
  report.Row(key, text);
  Print(report);
}

void PrintState(const SettingState& state, bool json) {
  json ? Print(ToJson(state)) : PrintRow(DottedName(*state.setting), StateText(state));
}

/// One entry, or several whose names read alike.
void PrintEntries(const std::vector<SettingsEntry>& entries, bool json) {
  if (!json) {
    for (const SettingsEntry& entry : entries) PrintRow(DottedName(entry), entry.shown);
    return;
  }
  Json all = Json::array();
  for (const SettingsEntry& entry : entries) all.push_back(ToJson(entry));
  Print(all.size() == 1 ? all[0] : all);
}

// --- choosing and changing -------------------------------------------------------------------------------------------

[[noreturn]] void RefuseKey(const std::string& key) {
  std::string known;
  for (const KnownSetting& setting : KnownSettings()) known += (known.empty() ? "" : ", ") + DottedName(setting);
  throw vorn_host::DocumentError("there is no setting " + key + "; there are " + known);
}

[[noreturn]] void RefuseValue(const KnownSetting& setting, const std::string& reason) {
  throw vorn_host::DocumentError(DottedName(setting) + ": " + reason);
}

/// "0 to 7 (0 = 120 km/h, 1 = 100 km/h, ...)".
std::string RangeText(const IntegerSetting& integer) {
  std::string text = std::to_string(integer.min) + " to " + std::to_string(integer.max);
  if (integer.meaning == nullptr) return text;
  std::string codes;
  for (std::int32_t code = integer.min; code <= integer.max; ++code) {
    codes += (codes.empty() ? "" : ", ") + std::to_string(code) + " = " + integer.meaning(code);
  }
  return text + " (" + codes + ")";
}

std::int32_t ParseInteger(const KnownSetting& setting, const IntegerSetting& integer, std::string_view text) {
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool isInteger = error == std::errc() && end == text.data() + text.size();
  if (!isInteger || value < integer.min || value > integer.max) {
    RefuseValue(setting, '"' + std::string(text) + "\" is none of the integers " + RangeText(integer));
  }
  return value;
}

CString ParseText(const KnownSetting& setting, std::string_view text) {
  std::optional<std::string> converted = vorn_host::FromUtf8(text);
  if (!converted) RefuseValue(setting, std::string(text) + " has characters that code page 932 cannot hold");
  return CString(*converted);
}

/// Whether the value could be stored; the store has told why not.
bool StoreValue(const KnownSetting& setting, const std::string& text) {
  WexKey root;
  WexKey group;
  const auto open = [&] { return VornGetBaseRegKey(&root) && group.Create(&root, setting.group); };
  if (const auto* integer = std::get_if<IntegerSetting>(&setting.kind)) {
    const std::int32_t value = ParseInteger(setting, *integer, text);
    return open() && integer->Store(group, value);
  }
  const CString value = ParseText(setting, text);
  return open() && std::get<VornTextSetting>(setting.kind).Store(group, value);
}

/// The entries of a dotted name: those spelled like it, or else those that differ from it in case only.
std::vector<SettingsEntry> EntriesNamed(const std::string& key, const std::vector<SettingsEntry>& entries) {
  std::vector<SettingsEntry> named;
  const auto collect = [&](auto isNamed) {
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(named),
                 [&](const SettingsEntry& entry) { return isNamed(DottedName(entry)); });
  };
  collect([&](const std::string& name) { return name == key; });
  if (named.empty()) collect([&](const std::string& name) { return vorn_host::IsSameName(name, key); });
  return named;
}

// --- the three commands ----------------------------------------------------------------------------------------------

int List(const SettingsStore& store, const SettingsOptions& options) {
  const WexKeyGroup together(nullptr);  // one state of the settings, whoever changes them meanwhile
  const SettingsSummary summary = Summarise(store);
  options.json ? PrintJson(summary) : PrintText(summary);
  return kOk;
}

int Get(const SettingsStore& store, const SettingsOptions& options) {
  const WexKeyGroup together(nullptr);
  const std::vector<SettingsEntry> entries = store.Entries();
  if (const KnownSetting* setting = vorn_host::FindKnownSetting(options.key)) {
    PrintState(ReadState(*setting, store), options.json);
    return kOk;
  }
  const std::vector<SettingsEntry> named = EntriesNamed(options.key, entries);
  if (named.empty()) RefuseKey(options.key);
  PrintEntries(named, options.json);
  return kOk;
}

int Set(const SettingsStore& store, const SettingsOptions& options) {
  const KnownSetting* setting = vorn_host::FindKnownSetting(options.key);
  if (setting == nullptr) RefuseKey(options.key);
  if (!StoreValue(*setting, options.value)) return kFailed;
  PrintState(ReadState(*setting, store), options.json);
  return kOk;
}

}  // namespace

void AddSettingsCommand(CLI::App& app, int& exitCode, std::shared_ptr<SettingsStore> store) {
  const auto options = std::make_shared<SettingsOptions>();
  CLI::App* settings = app.add_subcommand("settings", "List, show and change the user's settings");
  settings->require_subcommand(1);
  const auto add = [&](const char* name, const char* description,
                       int (*run)(const SettingsStore&, const SettingsOptions&)) {
    CLI::App* command = settings->add_subcommand(name, description);
    command->add_flag("--ts", options->totalStation, "the settings of the total-station edition");
    AddJsonOption(*command, options->json);
    command->callback([options, store, run, &exitCode] {
      if (store == nullptr) {
        throw vorn_host::DocumentError("there is no place for settings: neither XDG_CONFIG_HOME nor HOME names one");
      }
      VornDefineManager::GetInstance().SetTSFlag(options->totalStation);
      exitCode = run(*store, *options);
    });
    return command;
  };
  const auto addKey = [&](CLI::App* command) {
    command->add_option("KEY", options->key, "the setting, such as RoadInfo.speed")->required()->type_name("");
  };
  add("list", "Every setting with its value, its default and whether it is stored", List);
  addKey(add("get", "One setting", Get));
  CLI::App* set = add("set", "Store a setting", Set);
  addKey(set);
  set->add_option("VALUE", options->value, "an integer or a text; after --, one may begin with a dash")
      ->required()
      ->type_name("");
}

}  // namespace vorn_cli
