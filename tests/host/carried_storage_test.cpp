#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "host/document/carried_content.h"
#include "host/document/carried_item.h"
#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using host_test::DesignDocument;
using host_test::ErrorOf;
using host_test::ReadText;
using host_test::Rewritten;
using host_test::WriteText;
using host_test::Xml;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Carried content from what a project may hold of it; references to characters are resolved as in projects.
CarriedContent Loaded(const std::string& content, const std::string& edition = "4.1") {
  const std::string text = "<document edition=\"" + edition + "\">" + content + "</document>";
  pugi::xml_document tree;
  constexpr unsigned kOptions =
      pugi::parse_escapes | pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi | pugi::parse_ws_pcdata;
  EXPECT_TRUE(tree.load_buffer(text.data(), text.size(), kOptions, pugi::encoding_utf8)) << text;
  return CarriedContent::Load(tree.document_element(), "p.vorn");
}

std::string LoadError(const std::string& content, const std::string& edition = "4.1") {
  const std::string error = ErrorOf([&] { (void)Loaded(content, edition); });
  EXPECT_THAT(error, AnyOf(IsEmpty(), StartsWith("p.vorn: what is carried over from the document is damaged: ")));
  return error;
}

/// The document is stored and loaded again, as a project does with it.
DesignDocument Restored(const std::string& text) {
  DesignDocument document = ReadText(text);
  pugi::xml_document tree;
  pugi::xml_node element = tree.append_child("document");
  element.append_attribute("edition") = std::string(EditionName(document.edition)).c_str();
  document.carried.Store(element);
  document.carried = CarriedContent::Load(element, "p.vorn");
  return document;
}

// --- names -----------------------------------------------------------------------------------------------------------

TEST(CarriedStorage, RefusesARootTagThatIsNoName) {
  EXPECT_THAT(LoadError("<root tag='tsf:x>&lt;evil'/>"), HasSubstr("\"tsf:x><evil\" is no name"));
  EXPECT_THAT(LoadError("<root tag='tsf:x y'/>"), HasSubstr("is no name"));
  EXPECT_THAT(LoadError("<root tag='1'/>"), HasSubstr("is no name"));
  EXPECT_EQ(LoadError("<root tag='tsf:施工データ-1.0'/>"), "");
  EXPECT_EQ(LoadError("<root tag=''/>"), "") << "a document that was never read has none";
}

TEST(CarriedStorage, RefusesAttributesWhoseNameIsNone) {
  for (const char* name : {"a b", "a&lt;", "a=", "", "a&quot;", "-a"}) {
    const std::string text = name;
    EXPECT_THAT(LoadError("<root tag='r'><attribute name='" + text + "' value=''/></root>"), HasSubstr("is no name"));
    EXPECT_THAT(LoadError("<item in='tsf:XSections/0' attribute='" + text + "' value=''/>"), HasSubstr("is no name"));
  }
}

TEST(CarriedStorage, RefusesTextThatNoDocumentCanHold) {
  EXPECT_THAT(LoadError("<item in='tsf:XSections/0' attribute='a' value='&#1;'/>"),
              HasSubstr("control character (U+0001)"));
  EXPECT_THAT(LoadError("<root tag='r'><attribute name='a' value='&#31;'/></root>"), HasSubstr("(U+001F)"));
  EXPECT_THAT(LoadError("<item><a><b c='&#8;'/></a></item>"), HasSubstr("(U+0008)"));
  EXPECT_THAT(LoadError("<item><a>&#2;</a></item>"), HasSubstr("(U+0002)"));
  EXPECT_THAT(LoadError("<item name='&#27;'><a/></item>"), HasSubstr("(U+001B)"));
  EXPECT_THAT(LoadError("<item><!--\x03--></item>"), HasSubstr("(U+0003)"));
  EXPECT_THAT(LoadError("<item><a b='\xC3('/></item>"), HasSubstr("not UTF-8"));
  EXPECT_THAT(LoadError("<root tag='\xFF'/>"), HasSubstr("not UTF-8"));
  EXPECT_EQ(LoadError("<item><a b='&#9;&#10;'>土工&#13;</a></item>"), "");
}

// --- outside the root ------------------------------------------------------------------------------------------------

TEST(CarriedStorage, RefusesElementsAndTextOutsideTheRoot) {
  for (const std::string place : {"before-root", "after-root"}) {
    const auto item = [&](const std::string& content) {
      return LoadError("<item place='" + place + "'>" + content + "</item>");
    };
    EXPECT_THAT(item("<a/>"), HasSubstr("only comments and instructions may stand outside the root"));
    EXPECT_THAT(item("text"), HasSubstr("only comments and instructions"));
    EXPECT_THAT(item("<![CDATA[text]]>"), HasSubstr("only comments and instructions"));
    EXPECT_EQ(item("<!--a-->"), "");
    EXPECT_EQ(item("<?a b?>"), "");
    EXPECT_THAT(LoadError("<item place='" + place + "' attribute='a' value=''/>"), HasSubstr("stands in no element"));
    EXPECT_THAT(LoadError("<item place='" + place + "' in='tsf:XSections/0'><!--a--></item>"),
                HasSubstr("outside the root has a place in it"));
  }
  EXPECT_THAT(LoadError("<item place='elsewhere'><!--a--></item>"), HasSubstr("\"elsewhere\" is no place"));
}

TEST(CarriedStorage, TakesOneDocumentTypeBeforeTheRoot) {
  EXPECT_EQ(LoadError("<item place='before-root' doctype='a [&lt;!ELEMENT a (#PCDATA)>]'/>"), "");
  EXPECT_THAT(LoadError("<item doctype='a'/>"), HasSubstr("one document type may stand, before the root"));
  EXPECT_THAT(LoadError("<item place='after-root' doctype='a'/>"), HasSubstr("one document type may stand"));
  EXPECT_THAT(LoadError("<item in='tsf:XSections/0' doctype='a'/>"), HasSubstr("one document type may stand"));
  EXPECT_THAT(LoadError("<item place='before-root' doctype='a'/><item place='before-root' doctype='a'/>"),
              HasSubstr("one document type may stand"));
}

TEST(CarriedStorage, RefusesADocumentTypeThatReachesBeyondItself) {
  for (const std::string type : {"a>&lt;evil/", "a>&lt;!--", "a \"b"}) {
    EXPECT_THAT(LoadError("<item place='before-root' doctype='" + type + "'/>"), HasSubstr("is no document type"));
  }
}

// --- what belongs to the design --------------------------------------------------------------------------------------

TEST(CarriedStorage, RefusesElementsOfTheDesignWhereTheyAreModelled) {
  EXPECT_THAT(LoadError("<item><tsf:XSections/></item>"), HasSubstr("tsf:XSections belongs to the design"));
  EXPECT_THAT(LoadError("<item><tsf:FileInfo/></item>"), HasSubstr("tsf:FileInfo belongs to the design"));
  EXPECT_THAT(LoadError("<item in='tsf:XSections/0'><tsf:XSection/></item>"), HasSubstr("tsf:XSection belongs"));
  EXPECT_THAT(LoadError("<item in='tsf:XSections/0 tsf:XSection/0 tsf:BuildForm/0'><tsf:ComposedPnt/></item>"),
              HasSubstr("tsf:ComposedPnt belongs"));
  EXPECT_EQ(LoadError("<item in='tsf:XSections/0'><tsf:BuildForm/></item>"), "") << "nothing models it there";
  EXPECT_EQ(LoadError("<item in='tsf:XSections/0'><v><tsf:XSection/></v></item>"), "");
}

TEST(CarriedStorage, RefusesTextOfTheDesign) {
  const std::string point = "<item in='tsf:XSections/0 tsf:XSection/0 tsf:BuildForm/0 tsf:ComposedPnt/0'>";
  EXPECT_THAT(LoadError(point + "9 9</item>"), HasSubstr("the text of tsf:ComposedPnt belongs to the design"));
  EXPECT_THAT(LoadError(point + "<![CDATA[9]]></item>"), HasSubstr("the text of tsf:ComposedPnt"));
  EXPECT_EQ(LoadError(point + "<measured>9</measured></item>"), "");
  EXPECT_EQ(LoadError("<item in='tsf:XSections/0'>text</item>"), "");
}

TEST(CarriedStorage, KnowsWhatTheEditionReadsOfControlTargets) {
  const std::string item = "<item in='tsf:XSections/0 tsf:FormCtrlTarget/0'>";
  const std::string point = item + "<tsf:FormCtrlTargetPnt/></item>";
  const std::string text = item + "L1 R1</item>";
  for (const char* later : {"4.0", "4.1", "maff-1.0"}) {
    EXPECT_THAT(LoadError(point, later), HasSubstr("tsf:FormCtrlTargetPnt belongs to the design"));
    EXPECT_EQ(LoadError(text, later), "");
  }
  EXPECT_EQ(LoadError(point, "2.0"), "");
  EXPECT_THAT(LoadError(text, "2.0"), HasSubstr("the text of tsf:FormCtrlTarget belongs to the design"));
}

TEST(CarriedStorage, RefusesAttributesThatTheLibraryWrites) {
  EXPECT_THAT(LoadError("<item in='tsf:XSections/0' attribute='refAlign' value='B'/>"),
              HasSubstr("the attribute refAlign of tsf:XSections belongs to the design"));
  EXPECT_THAT(LoadError("<item in='tsf:XSections/0 tsf:XSection/0' attribute='cumulativeDist' value='9'/>"),
              HasSubstr("cumulativeDist of tsf:XSection belongs"));
  EXPECT_THAT(LoadError("<item attribute='version' value='1'/>"), HasSubstr("stands in no element"));
}

TEST(CarriedStorage, RefusesAnAttributeTwice) {
  const std::string item = "<item in='tsf:XSections/0' attribute='v' value='1'/>";
  EXPECT_THAT(LoadError(item + item), HasSubstr("tsf:XSections has the attribute v twice"));
  EXPECT_EQ(LoadError(item + "<item in='tsf:XSections/1' attribute='v' value='1'/>"), "");
  EXPECT_THAT(LoadError("<root tag='r'><attribute name='v' value=''/><attribute name='v' value=''/></root>"),
              HasSubstr("the root has the attribute v twice"));
  EXPECT_THAT(LoadError("<item><a><b v='1' w='' v='2'/></a></item>"), HasSubstr("b has the attribute v twice"));
}

TEST(CarriedStorage, RefusesAnOrderInWhichAnElementIsWrittenTwice) {
  EXPECT_THAT(LoadError("<root tag='r' order='tsf:XSections tsf:XSections'/>"), HasSubstr("twice in the order"));
  EXPECT_THAT(LoadError("<root tag='r' order='tsf:XSection'/>"), HasSubstr("does not stand directly below the root"));
  EXPECT_THAT(LoadError("<root tag='r'/><root tag='r'/>"), HasSubstr("a second root"));
}

TEST(CarriedStorage, RefusesItemsThatHoldSeveralNodes) {
  for (const std::string item :
       {"<item><a/><b/></item>", "<item><!--a-->text</item>", "<item in='tsf:XSections/0' attribute='a'><b/></item>",
        "<item place='before-root' doctype='a'><!--b--></item>", "<item attribute='a' doctype='b'/>"}) {
    EXPECT_THAT(LoadError(item), HasSubstr("an item holds more than one node")) << item;
  }
  EXPECT_THAT(LoadError("<item name='x'/>"), HasSubstr("an item is empty"));
}

// --- what documents hold comes back ----------------------------------------------------------------------------------

TEST(CarriedStorage, LoadsAllThatADocumentCanHold) {
  const std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a -->\n<!DOCTYPE tsf:TSFormControlData [<!ELEMENT a (b)>]>\n"
      "<?tool x?>\n" +
      host_test::RootOpen(Edition::V41) +
      "  <v:図面 xmlns:v=\"urn:v\" 名=\"1\">\n    <tsf:XSections />\n  </v:図面>\n"
      "  <tsf:XSections refAlign=\"A\" refVertical=\"\" projectPhase=\"\" v=\"&lt;&quot;&#10;\">\n"
      "    text &amp; more\n    <![CDATA[<data>]]>\n    <tsf:BuildForm />\n  </tsf:XSections>\n"
      "</tsf:TSFormControlData>\n<!-- z -->\n<?tool y?>\n";
  DesignDocument document = Restored(text);
  EXPECT_EQ(WriteText(document), Rewritten(text));
}

TEST(CarriedStorage, LoadsTheTargetPointsOfAnEditionThatOnlyReadsCodes) {
  const std::string text =
      Xml(Edition::V20,
          "<tsf:XSections><tsf:XSection cumulativeDist='0'><tsf:BuildForm name='A'>"
          "<tsf:ComposedPnt code='A'>0 0</tsf:ComposedPnt><tsf:ComposedPnt code='B'>1 2</tsf:ComposedPnt>"
          "<tsf:FormCtrlTarget workType='RE_CutWork'>A B<tsf:FormCtrlTargetPnt code='x'/>"
          "</tsf:FormCtrlTarget></tsf:BuildForm></tsf:XSection></tsf:XSections>");
  DesignDocument document = Restored(text);
  EXPECT_EQ(WriteText(document), Rewritten(text));
}

}  // namespace
}  // namespace vorn_host
