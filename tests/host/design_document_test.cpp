#include "host/document/design_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/document/atomic_file.h"
#include "host/sample/sample_document.h"
#include "tests/host/documents.h"
#include "tests/host/temporary_directory.h"

namespace vorn_host {
namespace {

namespace fs = std::filesystem;

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr std::string_view kSet =
    "  <tsf:XSections refAlign=\"CL-1\" refVertical=\"VL-1\" projectPhase=\"\">\n"
    "    <tsf:XSection cumulativeDist=\"0.0000\" />\n"
    "  </tsf:XSections>\n";

std::string ReadError(const std::string& text, const DesignDocument::ReadOptions& options = {}) {
  return ErrorOf([&] { (void)ReadText(text, options); });
}

DesignDocument SampleDocument(Edition edition, SampleKind kind = SampleKind::Road) {
  SampleOptions options;
  options.sections = 6;
  options.kind = kind;
  DesignDocument document = ToDocument(MakeSampleDesign(options));
  document.edition = edition;
  return document;
}

// --- editions ------------------------------------------------------------------------------------------------------

class DocumentsOfEachEdition : public testing::TestWithParam<Edition> {};

INSTANTIATE_TEST_SUITE_P(Editions, DocumentsOfEachEdition, testing::ValuesIn(kWritableEditions), EditionTestName);

TEST_P(DocumentsOfEachEdition, AreRecognised) {
  const DesignDocument document = ReadText(Xml(GetParam(), kSet));
  EXPECT_EQ(document.edition, GetParam());
  EXPECT_FALSE(document.assumed);
  EXPECT_EQ(document.sets.GetSize(), 1);
}

TEST_P(DocumentsOfEachEdition, AreRecognisedByTheLocationUnderTheFirstPrefixOfTheSchemaInstance) {
  const std::string declaration = std::string("xmlns:xsi=\"") + VornSchema::Xsi().GetString() + "\"";
  const auto under = [&](const char* prefix) { return With(declaration, "xsi", prefix); };
  // The attributes stand the other way round than the declarations, and a prefix without a location is passed over.
  const std::string text = With(
      With(Xml(GetParam(), kSet), "xsi:schemaLocation=", "b:schemaLocation=\"urn:other other.xsd\" a:schemaLocation="),
      declaration, under("none") + " " + under("a") + " " + under("b"));
  EXPECT_EQ(ReadText(text).edition, GetParam());
}

TEST_P(DocumentsOfEachEdition, AreRecognisedUnderAnyPrefixOfTheSchemaInstance) {
  std::string text = Xml(GetParam(), kSet);
  for (std::size_t at = text.find("xsi"); at != std::string::npos; at = text.find("xsi", at)) text.replace(at, 3, "i");
  EXPECT_EQ(ReadText(text).edition, GetParam());
  const std::string written = Rewritten(text);
  EXPECT_THAT(written, AllOf(HasSubstr("xmlns:i=\""), HasSubstr(" i:schemaLocation=\""), Not(HasSubstr("xsi"))));
}

TEST_P(DocumentsOfEachEdition, AreReadableAfterADeclarationOfWhatIsNoPrefix) {
  const std::string declaration = std::string("xmlns:8si=\"") + VornSchema::Xsi().GetString() + "\" xmlns:xsi=";
  std::string text = Xml(GetParam(), kSet);
  text.replace(text.find("xmlns:xsi="), std::string("xmlns:xsi=").size(), declaration);
  EXPECT_EQ(ReadText(Rewritten(text)).edition, GetParam());
}

TEST_P(DocumentsOfEachEdition, GetARootWithItsNamespacesAndSchemaLocation) {
  DesignDocument document;
  document.edition = GetParam();
  EXPECT_EQ(WriteText(document),
            std::string(kDeclaration) + RootOpen(GetParam()).substr(0, RootOpen(GetParam()).size() - 2) + " />\n");
}

TEST_P(DocumentsOfEachEdition, AreWrittenAlikeAfterReading) {
  for (const SampleKind kind : {SampleKind::Road, SampleKind::River, SampleKind::Farm}) {
    DesignDocument document = SampleDocument(GetParam(), kind);
    const std::string first = WriteText(document);
    EXPECT_TRUE(Rewritten(first) == first);
  }
}

TEST_P(DocumentsOfEachEdition, AreWrittenAlikeTwice) {
  DesignDocument document = SampleDocument(GetParam());
  // Targets in the forms are gathered into the set by writing, where they must not stay.
  document.sets[0].GetXSectionArray()[1].GetBuildFormArray()[0].GetFormCtrlTargetArray().Add(Target20("L1 R1"));
  const int targets = document.sets[0].GetFormCtrlTargetArray().GetSize();
  const std::string first = WriteText(document);
  EXPECT_TRUE(WriteText(document) == first);
  EXPECT_EQ(document.sets[0].GetFormCtrlTargetArray().GetSize(), targets);
  EXPECT_EQ(document.sets[0].GetXSectionArray()[1].GetBuildFormArray()[0].GetFormCtrlTargetArray().GetSize(), 1);
}

TEST_P(DocumentsOfEachEdition, ReadTheSameFromShiftJis) {
  DesignDocument document = SampleDocument(GetParam());
  const std::string utf8 = WriteText(document);
  DesignDocument::WriteOptions options;
  options.encoding = TextEncoding::ShiftJis;
  const std::string shiftJis = WriteText(document, options);
  EXPECT_THAT(shiftJis, StartsWith("<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>\n"));
  EXPECT_NE(shiftJis.size(), utf8.size());
  DesignDocument back = ReadText(shiftJis);
  EXPECT_EQ(back.encodingName, "Shift_JIS");
  EXPECT_TRUE(WriteText(back) == utf8);
}

TEST(UnknownEdition, IsRefusedWithWhatWasFoundAndWhatWasExpected) {
  const std::string error = ReadError(
      "<tsf:TSFormControlData xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
      "xsi:schemaLocation=\"http://somewhere.example/Form-9 Form-9.xsd\"/>");
  EXPECT_THAT(error, AllOf(StartsWith("design.xml: the edition of the document is not recognised"),
                           HasSubstr("found: root element tsf:TSFormControlData"),
                           HasSubstr("\"http://somewhere.example/Form-9 Form-9.xsd\""), Not(HasSubstr("--"))));
  for (const Edition edition : kWritableEditions) {
    const EditionScope scope(edition);
    EXPECT_THAT(error,
                HasSubstr(std::string(EditionName(edition)) + ": " + VornSchema::Instance().Location().GetString()));
  }
}

TEST(UnknownEdition, IsAlsoThatOfADocumentWithoutASchemaLocation) {
  EXPECT_THAT(ReadError("<tsf:TSFormControlData/>"), HasSubstr("no xsi:schemaLocation"));
  EXPECT_THAT(ReadError("<html/>"), AllOf(HasSubstr("root element html"), HasSubstr("a root element tsf:")));
}

TEST(UnknownEdition, IsThatOfALocationWithTheSmallestDeviation) {
  std::string text = Xml(Edition::V41, kSet);
  text.replace(text.find(".xsd\""), 5, ".xsd \"");
  EXPECT_THAT(ReadError(text), HasSubstr("not recognised"));
}

TEST(UnknownEdition, CanBeAssumed) {
  const std::string text = "<tsf:TSFormControlData>" + std::string(kSet) + "</tsf:TSFormControlData>";
  for (const Edition edition : kWritableEditions) {
    DesignDocument document = ReadText(text, {edition, false});
    EXPECT_TRUE(document.assumed);
    EXPECT_EQ(document.edition, edition);
    EXPECT_EQ(document.sets.GetSize(), 1);
    EXPECT_FALSE(ReadText(WriteText(document)).assumed) << "the rewritten document is a proper one";
  }
}

TEST(UnknownEdition, IsNotAssumedForElementsOfAnotherPrefix) {
  const std::string error =
      ReadError("<x:TSFormControlData><x:XSections/></x:TSFormControlData>", {Edition::V41, false});
  EXPECT_THAT(error, AllOf(HasSubstr("x:TSFormControlData"), HasSubstr("prefix tsf:")));
  EXPECT_EQ(ReadText("<document>" + std::string(kSet) + "</document>", {Edition::V41, false}).sets.GetSize(), 1);
}

TEST(UnknownEdition, TellsWhetherOneCanBeAssumed) {
  const auto canBeAssumed = [](const std::string& text) {
    try {
      (void)ReadText(text);
    } catch (const vorn_host::UnknownEdition& error) {
      return error.CanBeAssumed();
    }
    ADD_FAILURE() << "the edition was recognised";
    return false;
  };
  EXPECT_TRUE(canBeAssumed("<tsf:TSFormControlData/>"));
  EXPECT_FALSE(canBeAssumed("<x:TSFormControlData><x:XSections/></x:TSFormControlData>"));
}

TEST(UnknownEdition, IsNotAssumedOverARecognisedOne) {
  const DesignDocument document = ReadText(Xml(Edition::V20, kSet), {Edition::V41, false});
  EXPECT_EQ(document.edition, Edition::V20);
  EXPECT_FALSE(document.assumed);
}

TEST(RoadGeometryDocument, IsRecognisedByItsRootAndKeptAsItIs) {
  const std::string text = std::string(kDeclaration) +
                           "<RoadGmxml xmlns:x=\"urn:x\">\n  <RoadGm>\n    <Alignment name=\"CL-1\">1 2</Alignment>\n"
                           "  </RoadGm>\n</RoadGmxml>\n";
  EXPECT_EQ(ReadText(text).edition, Edition::RoadGm);
  EXPECT_EQ(Rewritten(text), text);
}

// --- content -------------------------------------------------------------------------------------------------------

TEST(DesignDocument, HoldsWhatTheLibraryReads) {
  const DesignDocument document =
      ReadText(Xml(Edition::V41,
                   "<tsf:FileInfo createDate='2024-04-01T09:30:00'/>\n"
                   "<tsf:StructureType type='" +
                       U8(u8"道路土工") + "' stationType='SP'/>\n" + std::string(kSet) + std::string(kSet)));
  ASSERT_EQ(document.fileInfos.GetSize(), 1);
  EXPECT_EQ(document.fileInfos[0].GetCreateDate(), COleDateTime(2024, 4, 1, 9, 30, 0));
  EXPECT_TRUE(document.hasStructureType);
  EXPECT_EQ(document.structureType.GetType(), VornStructureType::Type::RoadEarthwork);
  EXPECT_EQ(document.structureType.GetStationType(), "SP");
  EXPECT_EQ(document.sets.GetSize(), 2);
  EXPECT_EQ(document.encodingName, "UTF-8");
}

TEST(DesignDocument, HasNoStructureTypeThatItWasNotGiven) {
  EXPECT_FALSE(ReadText(Xml(Edition::V41, kSet)).hasStructureType);
  EXPECT_THAT(Rewritten(Xml(Edition::V41, kSet)), Not(HasSubstr("StructureType")));
}

TEST(DesignDocument, WritesANewDocumentInTheUsualOrder) {
  DesignDocument document = DocumentOf(Edition::V41, {Section(0.0, {RoadForm("A")})});
  const std::string text = WriteText(document);
  EXPECT_LT(text.find("<tsf:FileInfo"), text.find("<tsf:StructureType"));
  EXPECT_LT(text.find("<tsf:StructureType"), text.find("<tsf:XSections"));
}

TEST(DesignDocument, KeepsTheOrderOfADocument) {
  const std::string text =
      Xml(Edition::V41, std::string(kSet) + "  <tsf:FileInfo createDate=\"2024-04-01T09:30:00\" />\n");
  EXPECT_EQ(Rewritten(text), text);
}

TEST(DesignDocument, IsReadAsItsOwnExampleSays) {
  const TemporaryDirectory directory;
  const fs::path path = directory / "design.xml";
  directory.Write("design.xml", Xml(Edition::V41, kSet));
  DesignDocument document = DesignDocument::Read(path);
  document.sets[0].GetXSectionArray()[0].SetName("No.1");
  document.Write(path);
  EXPECT_EQ(DesignDocument::Read(path).sets[0].GetXSectionArray()[0].GetName(), "No.1");
  EXPECT_THAT(directory.Names(), ElementsAre("design.xml"));
}

TEST(DesignDocument, ReadsItsFileInTheEncodingThatItDeclares) {
  const std::string content = "<tsf:XSections refAlign='" + U8(u8"本線①") + "' refVertical='V'/>";
  const std::string body = RootOpen(Edition::V41) + content + std::string(kRootClose);
  std::size_t replaced = 0;
  const std::string cp932 = EncodeShiftJis(body, "", false, replaced);
  for (const std::string& bytes :
       {"<?xml version='1.0'?>" + body, "\xEF\xBB\xBF" + body, "<?xml version='1.0' encoding='Shift_JIS'?>" + cp932,
        "<?xml version='1.0' encoding='Windows-31J'?>" + cp932}) {
    EXPECT_EQ(ReadText(bytes).sets[0].GetRefAlign(), u8"本線①"_cp932);
  }
}

TEST(DesignDocument, LeavesTheOldFileWhenItCannotBeWritten) {
  const TemporaryDirectory directory;
  const fs::path path = directory / "design.xml";
  directory.Write("design.xml", "old");
  DesignDocument document = ReadText(Xml(Edition::V41, "  <!-- " + U8(u8"é") + " -->\n" + std::string(kSet)));
  DesignDocument::WriteOptions options;
  options.encoding = TextEncoding::ShiftJis;
  EXPECT_THAT(ErrorOf([&] { document.Write(path, options); }),
              AllOf(StartsWith(path.string() + ": line 3: "), HasSubstr(U8(u8"é (U+00E9)"))));
  EXPECT_EQ(ReadFile(path), "old");
  EXPECT_THAT(directory.Names(), ElementsAre("design.xml"));
}

// --- characters that code page 932 does not hold --------------------------------------------------------------------

const std::string& ForeignText() {
  static const std::string text = Xml(Edition::V41, "  <tsf:XSections refAlign=\"" + U8(u8"Café") +
                                                        "\" refVertical=\"" + U8(u8"𠮷") + "\" projectPhase=\"\" />\n");
  return text;
}

TEST(ForeignCharacters, InModelledTextAreAnErrorThatNamesLineAndCharacter) {
  EXPECT_EQ(ReadError(ForeignText()),
            U8(u8"design.xml: line 3: code page 932 cannot hold é (U+00E9) (2 such characters in all)"));
  EXPECT_THROW((void)ReadText(ForeignText()), UnmappableText);
  const std::string point = Xml(Edition::V41,
                                "<tsf:XSections>\n<tsf:XSection>\n<tsf:BuildForm>\n<tsf:ComposedPnt "
                                "code='" +
                                    U8(u8"ü") +
                                    "'/></tsf:BuildForm></tsf:XSection>"
                                    "</tsf:XSections>");
  EXPECT_THAT(ReadError(point), AllOf(HasSubstr("line 6: "), HasSubstr(U8(u8"ü (U+00FC)")), Not(HasSubstr("in all"))));
}

TEST(ForeignCharacters, AreReplacedAndCountedWhenLossy) {
  DesignDocument document = ReadText(ForeignText(), {std::nullopt, true});
  EXPECT_EQ(document.sets[0].GetRefAlign(), u8"Caf〓"_cp932);
  EXPECT_EQ(document.sets[0].GetRefVertical(), u8"〓"_cp932);
  EXPECT_EQ(document.replacedCharacters, 2u);
}

TEST(ForeignCharacters, InCarriedContentAreNoMatterInUtf8) {
  const std::string text =
      Xml(Edition::V41, "  <!-- " + U8(u8"é") + " -->\n  <tsf:XSections vendor=\"" + U8(u8"𠮷") +
                            "\" />\n  <rgm:RoadGm name=\"" + U8(u8"ü") + "\">" + U8(u8"ö") + "</rgm:RoadGm>\n");
  const DesignDocument document = ReadText(text);
  EXPECT_EQ(document.replacedCharacters, 0u);
  const std::string written = Rewritten(text);
  for (const char8_t* kept : {u8"<!-- é -->", u8"vendor=\"𠮷\"", u8"<rgm:RoadGm name=\"ü\">ö</rgm:RoadGm>"}) {
    EXPECT_THAT(written, HasSubstr(U8(kept)));
  }
}

TEST(ForeignCharacters, InCarriedContentAreAnErrorInShiftJisUnlessLossy) {
  DesignDocument document = ReadText(Xml(Edition::V41, "  <rgm:RoadGm name=\"" + U8(u8"éü") + "\" />\n"));
  DesignDocument::WriteOptions options;
  options.encoding = TextEncoding::ShiftJis;
  EXPECT_THAT(ErrorOf([&] { WriteText(document, options); }),
              AllOf(HasSubstr("line 3"), HasSubstr(U8(u8"é (U+00E9)"))));
  options.lossy = true;
  DesignDocument::WriteReport report;
  EXPECT_THAT(document.ToBytes("out.xml", options, report), HasSubstr(std::string(u8"name=\"〓〓\""_cp932)));
  EXPECT_EQ(report.replacedCharacters, 2u);
}

TEST(ForeignCharacters, InTheModelsOwnBytesAreAnErrorUnlessLossy) {
  DesignDocument document = DocumentOf(Edition::V41, {});
  document.sets[0].SetRefAlign("a\x81");
  EXPECT_THAT(ErrorOf([&] { WriteText(document); }), HasSubstr("no character of code page 932"));
  DesignDocument::WriteOptions options;
  options.lossy = true;
  EXPECT_THAT(WriteText(document, options), HasSubstr(U8(u8"refAlign=\"a〓\"")));
}

// --- malformed documents -------------------------------------------------------------------------------------------

/// A root start tag that all following lines are counted from.
std::string Lines(std::string_view rest) { return "<tsf:A>\n" + std::string(rest); }

TEST(MalformedDocument, NamesLineAndColumn) {
  EXPECT_THAT(ReadError(Lines("  <b>\n")), StartsWith("design.xml: line 2, column 6: the document is malformed"));
  EXPECT_THAT(ReadError(Lines("  <b></c></tsf:A>")), StartsWith("design.xml: line 2, column "));
  // Columns count characters, and the markup before them is as it was.
  EXPECT_THAT(ReadError(Lines("<b a='測点'><d>測点</d></c></tsf:A>")), StartsWith("design.xml: line 2, column 22"));
  EXPECT_THAT(ReadError(Lines("<b a=1/></tsf:A>")), StartsWith("design.xml: line 2, column "));
  EXPECT_THAT(ReadError(Lines("<b a='1")), HasSubstr(": line 2, column "));
  EXPECT_THAT(ReadError(Lines("<!-- open")), HasSubstr(": line 2, column "));
  EXPECT_THAT(ReadError(Lines("<![CDATA[ open")), HasSubstr(": line 2, column "));
  EXPECT_THAT(ReadError("<!-- nothing else -->\n"), HasSubstr(": line 2, column 1: the document is malformed: there is "
                                                              "no element"));
}

TEST(MalformedDocument, NamesABareAmpersand) {
  EXPECT_EQ(ReadError(Lines("<b n='" + U8(u8"土") + " & B'/></tsf:A>")),
            "design.xml: line 2, column 9: an ampersand has to be written &amp;");
  EXPECT_THAT(ReadError(Lines("a & b</tsf:A>")), HasSubstr("line 2, column 3: an ampersand"));
  EXPECT_THAT(ReadError(Lines("a &<b/></tsf:A>")), HasSubstr("line 2, column 3: an ampersand"));
  EXPECT_THAT(ReadError(Lines("a &")), HasSubstr("line 2, column 3: an ampersand"));
}

TEST(MalformedDocument, NamesAnUnknownEntity) {
  EXPECT_EQ(ReadError(Lines("<b>&nbsp;</b></tsf:A>")), "design.xml: line 2, column 4: the entity &nbsp; is not known");
  EXPECT_THAT(ReadError(Lines("<!-- &a; --> <![CDATA[&b;]]> &c;</tsf:A>")), HasSubstr("the entity &c; is not known"));
}

TEST(MalformedDocument, NamesAReferenceToWhatIsNoCharacter) {
  for (const char* reference : {"&#0;", "&#x0;", "&#1;", "&#xD800;", "&#xFFFF;", "&#x110000;", "&#99999999999;", "&#;",
                                "&#x;", "&#xG;", "&#-1;"}) {
    EXPECT_THAT(ReadError(Lines("<b>" + std::string(reference) + "</b></tsf:A>")),
                AllOf(HasSubstr("line 2, column 4"), HasSubstr(reference)));
  }
  EXPECT_THAT(ReadError(Lines("&#65")), HasSubstr("line 2, column 1"));
}

TEST(MalformedDocument, NamesASecondRoot) {
  EXPECT_THAT(ReadError(Xml(Edition::V41, "") + "<!-- x -->\n<other/>"),
              AllOf(HasSubstr("line 5, column 2"), HasSubstr("a second root element, other")));
}

TEST(MalformedDocument, NamesTextOutsideTheRoot) {
  EXPECT_THAT(ReadError(Xml(Edition::V41, "") + "\n x\n"),
              HasSubstr("line 5, column 2: the document is malformed: text"));
  EXPECT_THAT(ReadError("<!-- a -->x<!-- b -->" + Xml(Edition::V41, "").substr(kDeclaration.size())),
              HasSubstr("line 1, column 11"));
}

TEST(MalformedDocument, NamesAControlCharacter) {
  EXPECT_EQ(ReadError(Lines("<b>\x01</b></tsf:A>")),
            "design.xml: line 2, column 4: the control character (U+0001) is not allowed");
}

TEST(MalformedDocument, NamesAZeroByteAsAFileHasThatWasNotWrittenToItsEnd) {
  EXPECT_EQ(
      ReadError(Lines("<b/></tsf:A>") + std::string(100, '\0')),
      "design.xml: line 2, column 13: a zero byte is not allowed; a file that was not written to its end has such");
}

TEST(MalformedDocument, IsToldInASentenceHoweverLongItsNamesAre) {
  const std::string error = ReadError("<?xml version='1.0' encoding='" + std::string(100'000, 'x') + "'?><a/>");
  EXPECT_LT(error.size(), 6000u);
  EXPECT_THAT(error, AllOf(HasSubstr("design.xml: line 1: the encoding"), HasSubstr("is not supported")));
}

TEST(MalformedDocument, IsWhatIsNoXmlAtAll) {
  for (const std::string& text : {std::string("PK\x03\x04"), std::string("%PDF-1.7"), std::string("{\"a\": 1}"),
                                  std::string(" \n "), std::string("\0\0<a/>", 6), std::string("\xEF\xBB\xBF")}) {
    EXPECT_EQ(ReadError(text), "design.xml: this is not an XML document");
  }
}

TEST(WellFormedDocument, MayUseEveryReferenceThatXmlHas) {
  const DesignDocument document = ReadText(
      Xml(Edition::V41, "<tsf:XSections refAlign='&amp;&lt;&gt;&quot;&apos;' refVertical='&#65;&#x8DEF;&#x8def;'/>"));
  EXPECT_EQ(document.sets[0].GetRefAlign(), "&<>\"'");
  EXPECT_EQ(document.sets[0].GetRefVertical(), u8"A路路"_cp932);
}

TEST(WellFormedDocument, MayHoldAmpersandsWhereTheyMeanNothing) {
  EXPECT_EQ(ReadError(std::string(kDeclaration) + "<!DOCTYPE tsf:TSFormControlData SYSTEM \"a&b\">\n" +
                      RootOpen(Edition::V41) + "<!-- R&D &x; < & --><?tool a & b ?><q><![CDATA[a && b &y;]]></q>" +
                      std::string(kSet) + std::string(kRootClose) + "<!-- & -->\n"),
            "");
}

TEST(WellFormedDocument, MayHaveBlanksAroundItsRoot) {
  EXPECT_EQ(ReadError(Xml(Edition::V41, kSet) + "\n  \n"), "");
  EXPECT_EQ(ReadError("\n\n" + RootOpen(Edition::V41) + std::string(kRootClose)), "");
}

TEST(WellFormedDocument, MayHaveAnyLayoutAroundItsValues) {
  const DesignDocument document =
      ReadText(Xml(Edition::V41,
                   "<tsf:XSections><tsf:XSection><tsf:BuildForm><tsf:ComposedPnt code='A' dataType='Percent'>\r\n"
                   "\t  3.5 -2\r\n\t</tsf:ComposedPnt><tsf:ComposedPnt> 1.5</tsf:ComposedPnt></tsf:BuildForm>"
                   "</tsf:XSection></tsf:XSections>"));
  const auto& points = document.sets[0].GetXSectionArray()[0].GetBuildFormArray()[0].GetComposedPntArray();
  EXPECT_EQ(points[0].GetX(), NurReal(3.5));
  EXPECT_EQ(points[0].GetY(), NurReal(-2.0));
  EXPECT_FALSE(points[1].GetX().IsSet()) << "the blank says that X is not set";
  EXPECT_EQ(points[1].GetY(), NurReal(1.5));
}

}  // namespace
}  // namespace vorn_host
