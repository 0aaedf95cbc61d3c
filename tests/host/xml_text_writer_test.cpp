#include "host/document/xml_text_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using host_test::U8;

using Attributes = std::vector<std::pair<std::string, std::string>>;

/// A writer with an open root "r", and nothing to be carried over.
struct Fixture {
  explicit Fixture(const Attributes& attributes = {}) { writer.OpenRoot("UTF-8", "r", attributes); }

  /// The document without its XML declaration.
  std::string Finish() { return writer.Finish().substr(host_test::kDeclaration.size()); }

  CarriedContent carried;
  Vorn_XSectionsArray sets;
  CarriedPlaces places{carried, sets};
  TextProblems problems;
  XmlTextWriter writer{places, problems};
};

TEST(XmlTextWriter, WritesTheDeclarationAndTheRoot) {
  CarriedContent carried;
  const Vorn_XSectionsArray sets;
  CarriedPlaces places(carried, sets);
  TextProblems problems;
  XmlTextWriter writer(places, problems);
  writer.OpenRoot("Shift_JIS", "tsf:Root", {{"xmlns:tsf", "urn:tsf"}, {"a", U8(u8"路")}});
  EXPECT_EQ(writer.Finish(), "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>\n<tsf:Root xmlns:tsf=\"urn:tsf\" a=\"" +
                                 U8(u8"路") + "\" />\n");
}

TEST(XmlTextWriter, WritesAnElementALine) {
  Fixture f;
  EXPECT_TRUE(f.writer.InsertChild("a", nullptr));
  EXPECT_TRUE(f.writer.SetTextAttribute("x", "1"));
  EXPECT_TRUE(f.writer.InsertChild("b", nullptr));
  EXPECT_TRUE(f.writer.SetText("text"));
  EXPECT_TRUE(f.writer.Parent());
  EXPECT_TRUE(f.writer.InsertChild("c", nullptr));
  EXPECT_TRUE(f.writer.Parent());
  EXPECT_TRUE(f.writer.Parent());
  EXPECT_EQ(f.Finish(), "<r>\n  <a x=\"1\">\n    <b>text</b>\n    <c />\n  </a>\n</r>\n");
}

TEST(XmlTextWriter, ClosesWhatIsStillOpenAtTheEnd) {
  Fixture f;
  EXPECT_TRUE(f.writer.InsertChild("a", nullptr));
  EXPECT_TRUE(f.writer.InsertChild("b", nullptr));
  EXPECT_EQ(f.Finish(), "<r>\n  <a>\n    <b />\n  </a>\n</r>\n");
}

TEST(XmlTextWriter, TellsTheTagOfTheCurrentElement) {
  Fixture f;
  CString tag;
  EXPECT_TRUE(f.writer.InsertChild("tsf:XSection", nullptr));
  EXPECT_TRUE(f.writer.GetTagName(tag));
  EXPECT_EQ(tag, "tsf:XSection");
  EXPECT_TRUE(f.writer.Parent());
  EXPECT_TRUE(f.writer.GetTagName(tag));
  EXPECT_EQ(tag, "r");
}

/// Writes elements of all depths, some megabytes of them.
void WriteMuch(XmlTextWriter& writer) {
  for (int i = 0; i < 300; ++i) {
    EXPECT_TRUE(writer.InsertChild("outer", nullptr));
    for (int k = 0; k < 100; ++k) {
      EXPECT_TRUE(writer.InsertChild("a-tag-that-is-longer-than-most", nullptr));
      EXPECT_TRUE(writer.SetTextAttribute("n", std::to_string(i * k)));
      EXPECT_TRUE(writer.SetText(std::string(60, 'x')));
      EXPECT_TRUE(writer.Parent());
    }
    EXPECT_TRUE(writer.Parent());
  }
}

TEST(XmlTextWriter, HandsOutInPiecesWhatItWouldGiveAsAWhole) {
  Fixture whole;
  WriteMuch(whole.writer);

  Fixture f;
  std::vector<std::string> pieces;
  XmlTextWriter writer(f.places, f.problems, [&](std::string& piece) {
    pieces.push_back(piece);
    piece.clear();
  });
  writer.OpenRoot("UTF-8", "r", {});
  WriteMuch(writer);
  CString tag;
  EXPECT_TRUE(writer.GetTagName(tag));
  EXPECT_EQ(tag, "r") << "its start has been handed out";
  std::string text;
  for (const std::string& piece : pieces) {
    EXPECT_GE(piece.size(), std::size_t{1} << 20);
    EXPECT_LT(piece.size(), std::size_t{1} << 21);
    text += piece;
  }
  EXPECT_GE(pieces.size(), 2u);
  text += writer.Finish();
  EXPECT_EQ(text, whole.writer.Finish());
}

TEST(XmlTextWriter, EscapesWhatXmlReadsOtherwise) {
  Fixture f;
  f.writer.InsertChild("a", nullptr);
  f.writer.SetTextAttribute("x", "<a> & \"b\" 'c'\t\n\r");
  f.writer.SetText("<a> & \"b\" 'c'\t\n\r");
  EXPECT_EQ(f.Finish(),
            "<r>\n  <a x=\"&lt;a&gt; &amp; &quot;b&quot; 'c'&#9;&#10;&#13;\">&lt;a&gt; &amp; \"b\" "
            "'c'\t\n&#13;</a>\n</r>\n");
}

TEST(XmlTextWriter, TurnsCodePage932IntoUtf8) {
  Fixture f;
  f.writer.InsertChild("a", nullptr);
  f.writer.SetTextAttribute("x", u8"表①"_cp932);
  f.writer.SetText(u8"路面ｱ"_cp932);
  EXPECT_EQ(f.Finish(), U8(u8"<r>\n  <a x=\"表①\">路面ｱ</a>\n</r>\n"));
  EXPECT_EQ(f.problems.count, 0u);
}

TEST(XmlTextWriter, ReportsBytesThatAreNoCharacter) {
  Fixture f;
  f.writer.InsertChild("a", nullptr);
  f.writer.SetTextAttribute("x", "1\x81");
  f.writer.SetText("2\x81");
  EXPECT_EQ(f.Finish(), U8(u8"<r>\n  <a x=\"1〓\">2〓</a>\n</r>\n"));
  EXPECT_EQ(f.problems.count, 2u);
}

TEST(XmlTextWriter, ReportsControlCharactersByTheirNumbers) {
  for (int code = 0; code < 0x20; ++code) {
    if (code == '\t' || code == '\n' || code == '\r') continue;
    Fixture f;
    const std::string text = std::string("1") + static_cast<char>(code) + "2";
    f.writer.InsertChild("a", nullptr);
    f.writer.SetTextAttribute("x", text);
    f.writer.SetText(text);
    EXPECT_EQ(f.Finish(), U8(u8"<r>\n  <a x=\"1〓2\">1〓2</a>\n</r>\n"));
    EXPECT_EQ(f.problems.count, 2u);
    ASSERT_TRUE(f.problems.first.has_value());
    EXPECT_EQ(f.problems.first->what, "the control character " + DescribeCharacter(static_cast<char32_t>(code)));
  }
  Fixture f;
  f.writer.InsertChild("a", nullptr);
  f.writer.SetText(u8"路\u0001面\u001F"_cp932);
  EXPECT_EQ(f.Finish(), U8(u8"<r>\n  <a>路〓面〓</a>\n</r>\n"));
  EXPECT_EQ(f.problems.count, 2u);
}

TEST(XmlTextWriter, DeclaresANamespaceWhereItIsNotInScope) {
  Fixture f(Attributes{{"xmlns:q", "urn:q"}, {"xmlns", "urn:none"}});
  f.writer.InsertChild("q:a", "urn:q");
  f.writer.InsertChild("b", "urn:none");
  f.writer.InsertChild("s:c", "urn:s");
  f.writer.InsertChild("s:d", "urn:s");
  f.writer.Parent();
  f.writer.Parent();
  f.writer.InsertChild("s:e", "urn:s");
  EXPECT_EQ(f.Finish(),
            "<r xmlns:q=\"urn:q\" xmlns=\"urn:none\">\n  <q:a>\n    <b>\n      <s:c xmlns:s=\"urn:s\">\n"
            "        <s:d />\n      </s:c>\n      <s:e xmlns:s=\"urn:s\" />\n    </b>\n  </q:a>\n</r>\n");
}

TEST(XmlTextWriter, LooksAtTheNearestDeclarationOfAPrefix) {
  Fixture f(Attributes{{"xmlns:q", "urn:1"}});
  f.writer.InsertChild("q:a", "urn:2");
  f.writer.InsertChild("q:b", "urn:1");
  f.writer.Parent();
  f.writer.Parent();
  f.writer.InsertChild("q:c", "urn:1");
  EXPECT_EQ(f.Finish(),
            "<r xmlns:q=\"urn:1\">\n  <q:a xmlns:q=\"urn:2\">\n    <q:b xmlns:q=\"urn:1\" />\n  </q:a>\n"
            "  <q:c />\n</r>\n");
}

TEST(XmlTextWriter, RefusesWhatIsNotInTheOrderOfWriting) {
  Fixture f;
  EXPECT_FALSE(f.writer.Parent()) << "the root has none";
  EXPECT_TRUE(f.writer.InsertChild("a", nullptr));
  EXPECT_TRUE(f.writer.SetText("text"));
  EXPECT_FALSE(f.writer.SetText("again"));
  EXPECT_FALSE(f.writer.SetTextAttribute("x", "1"));
  EXPECT_FALSE(f.writer.InsertChild("b", nullptr));
  EXPECT_TRUE(f.writer.Parent());
  EXPECT_FALSE(f.writer.SetTextAttribute("x", "1")) << "the root has a child by now";
  EXPECT_EQ(f.Finish(), "<r>\n  <a>text</a>\n</r>\n");
}

TEST(XmlTextWriter, ReadsNothing) {
  Fixture f;
  f.writer.InsertChild("a", nullptr);
  CString text;
  CArray<PimAttribute> attributes;
  EXPECT_FALSE(f.writer.Child());
  EXPECT_FALSE(f.writer.NextSibling());
  EXPECT_FALSE(f.writer.PrevSibling());
  EXPECT_FALSE(f.writer.GetText(text));
  EXPECT_FALSE(f.writer.GetAttributes(attributes));
}

TEST(XmlTextWriter, WritesAnEmptyTextAsNone) {
  Fixture f;
  f.writer.InsertChild("a", nullptr);
  EXPECT_TRUE(f.writer.SetText(""));
  EXPECT_EQ(f.Finish(), "<r>\n  <a />\n</r>\n");
}

}  // namespace
}  // namespace vorn_host
