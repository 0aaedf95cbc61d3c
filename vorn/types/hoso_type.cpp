#include "vorn/types/hoso_type.h"

#include <string_view>

#include "vorn/platform/code_page_932.h"

namespace {

/// Keys of the pavement settings, all integers. Archives hold them: a key is never given another meaning.
enum SettingKey : std::int32_t {
  kPaveIDKey = 1,
  kScaleIDKey = 2,
  kFirstKindIDKey = 100,     ///< to 113
  kFirstFurtherIDKey = 200,  ///< to 205
};

struct PavementWork {
  std::string_view name;
  std::int32_t category;
};

/// In the order of the search: a longer course name stands before the shorter one that it contains.
constexpr std::array kPavementWorks = {
    PavementWork{u8"基層"_cp932, 3},
    PavementWork{u8"表層"_cp932, 1},
    PavementWork{u8"オーバーレイ"_cp932, 1},
    PavementWork{u8"ｵｰﾊﾞｰﾚｲ"_cp932, 1},  // intended: the search does not convert widths
    PavementWork{u8"路上再生"_cp932, 1},
    PavementWork{u8"路面切削"_cp932, 1},
    PavementWork{u8"歩道舗装工"_cp932, 1},
    PavementWork{u8"取合舗装工"_cp932, 1},
    PavementWork{u8"路肩舗装工"_cp932, 1},
    PavementWork{u8"歩道舗装修繕"_cp932, 1},
    PavementWork{u8"舗装補修"_cp932, 1},
    PavementWork{u8"コンクリート版工"_cp932, 1},
    PavementWork{u8"下層路盤工"_cp932, 6},
    PavementWork{u8"透水性舗装工（路盤工）"_cp932, 6},
    PavementWork{u8"粒度調整路盤工"_cp932, 4},
    PavementWork{u8"セメント"_cp932, 5},
    PavementWork{u8"アスファルト安定処理"_cp932, 2},
    PavementWork{u8"中間層"_cp932, 2},
    PavementWork{u8"歩道路盤工"_cp932, 7},
    PavementWork{u8"取合舗装路盤工"_cp932, 7},
    PavementWork{u8"路肩舗装路盤工"_cp932, 7},
    PavementWork{u8"路盤工"_cp932, 7},
};

}  // namespace

void VornHosoType::Serialize(CArchive& ar, const CString&) {
  DovDataTable table;
  if (ar.IsStoring()) GetDataTable(table);
  table.Serialize(ar);
  if (ar.IsLoading()) SetDataTable(table);
}

template <typename Visit>
void VornTsHosoType::VisitSettings(Visit visit) {
  visit(kPaveIDKey, m_paveID);
  visit(kScaleIDKey, m_scaleID);
  std::int32_t key = kFirstKindIDKey;
  for (std::uint32_t& id : m_kindIDs) visit(key++, id);
  key = kFirstFurtherIDKey;
  for (std::uint32_t& id : m_furtherIDs) visit(key++, id);
}

void VornTsHosoType::Serialize(CArchive& ar, const CString& tag) {
  if (ar.IsStoring()) return VornHosoType::Serialize(ar, tag);
  DovDataTable table;
  table.Serialize(ar);
  Initiate();  // only now: what cannot be read leaves the settings as they were
  SetDataTable(table);
}

void VornTsHosoType::Initiate() {
  VisitSettings([](std::int32_t, std::uint32_t& id) { id = 0; });
}

std::int32_t VornTsHosoType::XSectTypeToMsdoPaveIdx(const CString& text) {
  for (const PavementWork& work : kPavementWorks) {
    // Intended: a match may begin inside a double-byte character; `CString::Find` would pass it over.
    if (text.View().find(work.name) != std::string_view::npos) return work.category;
  }
  return -1;
}

void VornTsHosoType::GetDataTable(DovDataTable& table) {
  VisitSettings([&table](std::int32_t key, std::uint32_t id) { table.SetAt(key, static_cast<std::int32_t>(id)); });
}

void VornTsHosoType::SetDataTable(DovDataTable& table) {
  VisitSettings([&table](std::int32_t key, std::uint32_t& id) {
    std::int32_t held = 0;
    if (table.Lookup(key, held)) id = static_cast<std::uint32_t>(held);
  });
}
