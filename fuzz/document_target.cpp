// An input is a document's bytes.

#include <cstddef>
#include <string_view>
#include <utility>

#include "fuzz/document_judge.h"
#include "fuzz/target.h"
#include "host/document/edition_conversion.h"
#include "host/sample/sample_document.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::Edition;
using vorn_host::SampleKind;
using vorn_host::TextEncoding;

constexpr std::pair<SampleKind, std::string_view> kKinds[] = {
    {SampleKind::Road, "road"}, {SampleKind::River, "river"}, {SampleKind::Farm, "farm"}};

Seed SeedOf(std::string name, std::string_view bytes) { return {std::move(name), {bytes.begin(), bytes.end()}}; }

std::string SampleBytes(SampleKind kind, Edition edition, TextEncoding encoding) {
  vorn_host::SampleOptions options;
  options.sections = 1;
  options.kind = kind;
  DesignDocument document = vorn_host::ToDocument(vorn_host::MakeSampleDesign(options));
  ConvertEdition(document, edition);
  DesignDocument::WriteReport report;
  return document.ToBytes("seed", {encoding, false}, report);
}

constexpr std::string_view kRoadGeometry = R"(<?xml version="1.0" encoding="Shift_JIS"?>
<RoadGmxml xmlns:x="urn:x"><RoadGm><Alignment name="CL-1">1 2</Alignment></RoadGm></RoadGmxml>)";

/// Something of every kind that is carried over. Its edition has to be assumed.
constexpr std::string_view kCarried = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- before --><!DOCTYPE tsf:TSFormControlData>
<tsf:TSFormControlData more="1">
 <rgm:RoadGm a="b"><rgm:Alignment><![CDATA[ <&> ]]>text</rgm:Alignment></rgm:RoadGm>
 <tsf:XSections refAlign="A" refVertical="V" more="&#x3042;">
  <?one two?><tsf:XSection cumulativeDist="1.5" name="n"><more/>
   <tsf:BuildForm name="f"><!-- in --><tsf:ComposedPnt existence="True" location="Center" code="C">0 0</tsf:ComposedPnt>
    <tsf:ComposedPnt existence="True" location="Left" code="L">1.5 2<more/></tsf:ComposedPnt></tsf:BuildForm>
  </tsf:XSection>
  <tsf:FormCtrlTarget more="x"/>
 </tsf:XSections>
</tsf:TSFormControlData><!-- behind -->
)";

}  // namespace

bool Judge(std::span<const std::uint8_t> input) {
  const std::string bytes(input.begin(), input.end());
  const bool plain = JudgeDocument(bytes, {});
  if (plain) return true;
  // What is refused may be read when the user says so.
  const Edition assumed = vorn_host::kWritableEditions[bytes.size() % vorn_host::kWritableEditions.size()];
  return JudgeDocument(bytes, {.assume = assumed, .lossy = true});
}

std::vector<Seed> MakeSeeds() {
  std::vector<Seed> seeds;
  for (const auto& [kind, name] : kKinds) {
    for (const Edition edition : vorn_host::kWritableEditions) {
      const std::string stem = std::string(name) + "_" + std::string(EditionName(edition));
      seeds.push_back(SeedOf(stem, SampleBytes(kind, edition, TextEncoding::Utf8)));
      seeds.push_back(SeedOf(stem + "_shift_jis", SampleBytes(kind, edition, TextEncoding::ShiftJis)));
    }
  }
  seeds.push_back(SeedOf("road_geometry", kRoadGeometry));
  seeds.push_back(SeedOf("carried", kCarried));
  return seeds;
}

}  // namespace vorn_fuzz
