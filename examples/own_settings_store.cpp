// An application's own settings store, here a text file with a line for each value: own_settings_store FILE

#include <fstream>
#include <iostream>
#include <map>
#include <memory>

#include "vorn/vorn.h"

namespace {

/// Every key is there; values are kept as "i3" or "stext" under "path|name". All texts are code page 932.
class LineStore final : public WexStore {
 public:
  explicit LineStore(std::string file) : m_file(std::move(file)) {
    std::ifstream in(m_file);
    for (std::string key, value; std::getline(in, key, '\t') && std::getline(in, value);) m_values[key] = value;
  }

  bool KeyExists(std::string_view) const override { return true; }
  bool CreateKey(std::string_view) override { return true; }
  std::optional<std::int32_t> ReadInt(std::string_view path, std::string_view name) const override {
    const auto found = m_values.find(Key(path, name));
    if (found == m_values.end() || found->second.front() != 'i') return std::nullopt;
    return std::stoi(found->second.substr(1));
  }
  std::optional<CString> ReadString(std::string_view path, std::string_view name) const override {
    const auto found = m_values.find(Key(path, name));
    if (found == m_values.end() || found->second.front() != 's') return std::nullopt;
    return CString(found->second.substr(1));
  }
  bool WriteInt(std::string_view path, std::string_view name, std::int32_t value) override {
    return Keep(Key(path, name), "i" + std::to_string(value));
  }
  bool WriteString(std::string_view path, std::string_view name, std::string_view value) override {
    return Keep(Key(path, name), "s" + std::string(value));
  }

 private:
  /// Names that differ in the case of ASCII letters only are the same.
  static std::string Key(std::string_view path, std::string_view name) {
    return std::string(CString(std::string(path) + '|' + std::string(name)).MakeLower().View());
  }
  bool Keep(const std::string& key, const std::string& value) {
    if ((key + value).find_first_of("\t\n") != std::string::npos) return false;  // these end what is kept
    m_values[key] = value;
    std::ofstream out(m_file);
    for (const auto& [name, kept] : m_values) out << name << '\t' << kept << '\n';
    return out.good();
  }

  std::string m_file;
  std::map<std::string, std::string> m_values;
};

}  // namespace

int main(int argc, char** argv) {
  std::string line;  // nothing is written over but a file of this program
  if (argc != 2 || (std::getline(std::ifstream(argv[1]), line) && line.find('|') >= line.find('\t'))) {
    return std::cerr << "own_settings_store FILE, new or of this program\n", 2;
  }
  WexSetApplicationStore(std::make_shared<LineStore>(argv[1]), "Company\\Application");
  VornFormCtrl control;  // what the as-built control items are called, and how points are marked
  control.LoadRegistry(nullptr);
  std::cout << "marks of slopes: " << static_cast<int>(control.GetMarks()[VornFormCtrl::SlopeMarks]) << "\n";
  control.GetMarks()[VornFormCtrl::SlopeMarks] = VornFormCtrl::CtrlMarkType::Capitals;
  control.StoreRegistry(nullptr);
}
