#include "host/document/xml_cursor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using host_test::Shown;
using host_test::U8;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr unsigned kParseAll =
    pugi::parse_default | pugi::parse_comments | pugi::parse_pi | pugi::parse_ws_pcdata_single;

/// A document and a cursor on its root.
struct Fixture {
  explicit Fixture(const std::string& xml) {
    EXPECT_TRUE(tree.load_buffer(xml.data(), xml.size(), kParseAll, pugi::encoding_utf8));
    cursor.emplace(tree.document_element(), problems);
  }

  [[nodiscard]] std::string Tag() const {
    CString tag;
    EXPECT_TRUE(cursor->GetTagName(tag));
    return tag.GetString();
  }
  /// The text as UTF-8; none when the element has none.
  [[nodiscard]] std::optional<std::string> Text() const {
    CString text;
    return cursor->GetText(text) ? std::optional(Shown(text)) : std::nullopt;
  }
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> Attributes() const {
    CArray<PimAttribute> attributes;
    EXPECT_TRUE(cursor->GetAttributes(attributes));
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const PimAttribute& attribute : attributes) {
      pairs.emplace_back(attribute.GetName().GetString(), Shown(attribute.GetValue()));
    }
    return pairs;
  }
  [[nodiscard]] std::string Print() const {
    std::ostringstream out;
    tree.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return out.str();
  }

  pugi::xml_document tree;
  TextProblems problems;
  std::optional<XmlCursor> cursor;
};

std::optional<std::string> TextOf(const std::string& element) { return Fixture(element).Text(); }

// --- moves ---------------------------------------------------------------------------------------------------------

TEST(XmlCursorMoves, FromElementToElement) {
  Fixture f("<r><a><b/></a><c/></r>");
  EXPECT_EQ(f.Tag(), "r");
  EXPECT_TRUE(f.cursor->Child());
  EXPECT_EQ(f.Tag(), "a");
  EXPECT_TRUE(f.cursor->NextSibling());
  EXPECT_EQ(f.Tag(), "c");
  EXPECT_TRUE(f.cursor->PrevSibling());
  EXPECT_TRUE(f.cursor->Child());
  EXPECT_EQ(f.Tag(), "b");
  EXPECT_TRUE(f.cursor->Parent());
  EXPECT_TRUE(f.cursor->Parent());
  EXPECT_EQ(f.Tag(), "r");
}

TEST(XmlCursorMoves, SkipWhatIsNoElement) {
  Fixture f("<r><!-- one --><?x y?>text<a/><!-- two -->more<![CDATA[data]]><?x z?><b/><!-- three --></r>");
  EXPECT_TRUE(f.cursor->Child());
  EXPECT_EQ(f.Tag(), "a");
  EXPECT_TRUE(f.cursor->NextSibling());
  EXPECT_EQ(f.Tag(), "b");
  EXPECT_FALSE(f.cursor->NextSibling());
  EXPECT_TRUE(f.cursor->PrevSibling());
  EXPECT_EQ(f.Tag(), "a");
}

TEST(XmlCursorMoves, ThatFindNothingLeaveTheCursorWhereItIs) {
  Fixture f("<!-- before --><r><a>text<!-- no element --></a></r><!-- behind -->");
  EXPECT_FALSE(f.cursor->Parent());
  EXPECT_FALSE(f.cursor->NextSibling());
  EXPECT_FALSE(f.cursor->PrevSibling());
  EXPECT_EQ(f.Tag(), "r");
  EXPECT_TRUE(f.cursor->Child());
  EXPECT_FALSE(f.cursor->Child());
  EXPECT_FALSE(f.cursor->NextSibling());
  EXPECT_FALSE(f.cursor->PrevSibling());
  EXPECT_EQ(f.Tag(), "a");
}

// --- reading -------------------------------------------------------------------------------------------------------

TEST(XmlCursorMoves, CountTheElementsOfOneTagThatFollowEachOther) {
  Fixture f("<a><b/> text <b/><!-- between --><b><b/></b><c/><b/></a>");
  EXPECT_EQ(f.cursor->CountRun(), 1);
  ASSERT_TRUE(f.cursor->Child());
  EXPECT_EQ(f.cursor->CountRun(), 3);
  ASSERT_TRUE(f.cursor->NextSibling());
  EXPECT_EQ(f.cursor->CountRun(), 2);
  ASSERT_TRUE(f.cursor->NextSibling());
  ASSERT_TRUE(f.cursor->NextSibling());
  EXPECT_EQ(f.cursor->CountRun(), 1);
}

// --- parts of a run ------------------------------------------------------------------------------------------------

/// A run of elements "b" with their numbers, something else in between and behind it, and what is read of its parts.
struct RunFixture : Fixture {
  RunFixture(int elements, int threads) : Fixture(Xml(elements)) {
    cursor.emplace(tree.document_element(), problems, threads);
    cursor->Child();
  }

  static std::string Xml(int elements) {
    std::string xml = "<a>";
    const std::string more(8192, 'x');  // eight of them are worth a part
    for (int i = 0; i < elements; ++i) xml += "<b n='" + std::to_string(i) + "'><b/><c/></b> <!--" + more + "-->";
    return xml + "<c/><b/></a>";
  }

  static std::string NumberAt(const PimIterator& at) {
    CArray<PimAttribute> attributes;
    at.GetAttributes(attributes);
    return attributes.IsEmpty() ? "none" : attributes[0].GetValue().GetString();
  }

  /// The numbers of each part's elements, going over the parts as a collection does.
  std::vector<std::vector<std::string>> Read() {
    std::vector<std::vector<std::string>> numbers(static_cast<std::size_t>(cursor->CountParts()));
    cursor->ReadParts([&](int part, PimIterator& at) {
      std::vector<std::string>& own = numbers[static_cast<std::size_t>(part)];
      const int run = at.CountRun();
      do {
        own.push_back(NumberAt(at));
      } while (at.NextSibling());
      EXPECT_EQ(run, static_cast<int>(own.size()));
    });
    return numbers;
  }
};

TEST(XmlCursorParts, AreOneWithoutThreadsAndForAShortRun) {
  EXPECT_EQ(RunFixture(1000, 1).cursor->CountParts(), 1);
  EXPECT_EQ(RunFixture(15, 4).cursor->CountParts(), 1);
  EXPECT_EQ(RunFixture(1, 4).cursor->CountParts(), 1);
  EXPECT_EQ(RunFixture(17, 4).cursor->CountParts(), 2);
  EXPECT_EQ(RunFixture(1000, 4).cursor->CountParts(), 32);
}

TEST(XmlCursorParts, AreNotMoreThanTheElements) {
  const std::string more(1'000'000, 'x');
  Fixture f("<a><b/><!--" + more + "--><b/><!--" + more + "--><b/></a>");
  f.cursor.emplace(f.tree.document_element(), f.problems, 4);
  f.cursor->Child();
  EXPECT_EQ(f.cursor->CountParts(), 3);
}

TEST(XmlCursorParts, HoldEveryElementOfTheRunOnceAndInOrder) {
  for (const int elements : {17, 33, 47, 500}) {
    for (const int threads : {2, 3, 8}) {
      RunFixture f(elements, threads);
      std::vector<std::string> all;
      for (const std::vector<std::string>& part : f.Read()) {
        EXPECT_GE(part.size(), 7u);
        all.insert(all.end(), part.begin(), part.end());
      }
      std::vector<std::string> expected;
      for (int i = 0; i < elements; ++i) expected.push_back(std::to_string(i));
      EXPECT_EQ(all, expected);
      EXPECT_EQ(RunFixture::NumberAt(*f.cursor), std::to_string(elements - 1)) << "the cursor is not on the last one";
      EXPECT_TRUE(f.cursor->NextSibling());
      EXPECT_EQ(f.Tag(), "c");
    }
  }
}

TEST(XmlCursorParts, EndNothingBelowTheirElements) {
  RunFixture f(100, 2);
  std::mutex mutex;
  int below = 0;
  f.cursor->ReadParts([&](int, PimIterator& at) {
    do {
      ASSERT_TRUE(at.Child());
      ASSERT_TRUE(at.NextSibling());
      ASSERT_FALSE(at.NextSibling());
      ASSERT_TRUE(at.Parent());
      const std::lock_guard lock(mutex);
      ++below;
    } while (at.NextSibling());
  });
  EXPECT_EQ(below, 100);
}

TEST(XmlCursorParts, HandOnWhatIsThrownInAnyOfThem) {
  for (const int thrower : {0, 3, 6}) {
    RunFixture f(7 * 9, 4);
    const auto read = [&] {
      f.cursor->ReadParts([&](int part, PimIterator&) {
        if (part == thrower) throw std::runtime_error("part " + std::to_string(part));
      });
    };
    EXPECT_THROW(read(), std::runtime_error) << thrower;
  }
}

TEST(XmlCursorParts, TellTheFirstProblemOfTheDocumentAndCountAll) {
  std::string xml = "<a>";
  const std::string more = "<!--" + std::string(8192, 'x') + "-->";
  for (int i = 0; i < 100; ++i) xml += (i < 40 ? "<b>x</b>" : i == 40 ? "<b>é</b>" : "<b>ü</b>") + more;
  Fixture f(xml + "</a>");
  f.cursor.emplace(f.tree.document_element(), f.problems, 4);
  f.cursor->Child();
  EXPECT_GT(f.cursor->CountParts(), 4);
  f.cursor->ReadParts([](int, PimIterator& at) {
    do {
      CString text;
      EXPECT_TRUE(at.GetText(text));
    } while (at.NextSibling());
  });
  EXPECT_EQ(f.problems.count, 60u);
  ASSERT_TRUE(f.problems.first.has_value());
  EXPECT_THAT(f.problems.first->what, testing::HasSubstr("é"));
}

// --- texts and attributes ------------------------------------------------------------------------------------------

TEST(XmlCursorReading, GivesQualifiedTags) { EXPECT_EQ(Fixture("<tsf:XSection/>").Tag(), "tsf:XSection"); }

TEST(XmlCursorReading, GivesAttributesInDocumentOrder) {
  EXPECT_THAT(Fixture("<a z='1' xmlns:q='u' b='&lt;2&gt;' c=''/>").Attributes(),
              ElementsAre(Pair("z", "1"), Pair("xmlns:q", "u"), Pair("b", "<2>"), Pair("c", "")));
  EXPECT_THAT(Fixture("<a/>").Attributes(), IsEmpty());
}

TEST(XmlCursorReading, ReplacesTheAttributesOfTheCaller) {
  const Fixture f("<a b='1'/>");
  CArray<PimAttribute> attributes;
  attributes.Add(PimAttribute("old", "x"));
  EXPECT_TRUE(f.cursor->GetAttributes(attributes));
  EXPECT_EQ(attributes.GetSize(), 1);
}

TEST(XmlCursorReading, VisitsWhatItGives) {
  const Fixture f("<a b='1'>" + U8(u8"路") + "</a>");
  std::string seen;
  EXPECT_TRUE(f.cursor->VisitTagName([&](std::string_view tag) { seen += tag; }));
  EXPECT_TRUE(f.cursor->VisitText([&](std::string_view text) { seen += text; }));
  EXPECT_TRUE(f.cursor->VisitAttributes([&](std::string_view name, std::string_view value) {
    seen += name;
    seen += value;
  }));
  EXPECT_EQ(seen, "a" + std::string(u8"路"_cp932) + "b1");
}

TEST(XmlCursorReading, TurnsTextsIntoCodePage932) {
  const Fixture f("<a b='" + U8(u8"表①") + "'>" + U8(u8"路面") + "</a>");
  CString text;
  EXPECT_TRUE(f.cursor->GetText(text));
  EXPECT_EQ(text, u8"路面"_cp932);
  EXPECT_THAT(f.Attributes(), ElementsAre(Pair("b", U8(u8"表①"))));
  EXPECT_EQ(f.problems.count, 0u);
}

TEST(XmlCursorText, IsNotThereWithoutContent) {
  EXPECT_EQ(TextOf("<a/>"), std::nullopt);
  EXPECT_EQ(TextOf("<a></a>"), std::nullopt);
  EXPECT_EQ(TextOf("<a><b>inner</b></a>"), std::nullopt);
  EXPECT_EQ(TextOf("<a><!-- comment --></a>"), std::nullopt);
  EXPECT_EQ(TextOf("<a>\n  </a>"), std::nullopt);
  EXPECT_EQ(TextOf("<a><![CDATA[]]></a>"), std::nullopt);
}

TEST(XmlCursorText, KeepsABlankWhichStandsForAnUnsetValue) {
  EXPECT_EQ(TextOf("<a> </a>"), " ");
  EXPECT_EQ(TextOf("<a> 2.000</a>"), " 2.000");
  EXPECT_EQ(TextOf("<a>3.5000 </a>"), "3.5000 ");
}

TEST(XmlCursorText, LosesTheLayoutAroundIt) {
  EXPECT_EQ(TextOf("<a>\n    3.5000 2.000\n  </a>"), "3.5000 2.000");
  EXPECT_EQ(TextOf("<a>\r\n\t3.5000 2.000\t</a>"), "3.5000 2.000");
  EXPECT_EQ(TextOf("<a>  \n 3.5000\n2.000 </a>"), "3.5000\n2.000 ") << "each end for itself";
}

TEST(XmlCursorText, IsJoinedOverCommentsAndCharacterData) {
  EXPECT_EQ(TextOf("<a>3.5<!-- metres -->000 <![CDATA[2.000]]></a>"), "3.5000 2.000");
  EXPECT_EQ(TextOf("<a><![CDATA[]]>1<!-- -->2<?x?>3</a>"), "123");
  EXPECT_EQ(TextOf("<a>\n<!-- layout -->\n L1\n</a>"), "L1");
  EXPECT_EQ(TextOf("<a><![CDATA[<&>]]></a>"), "<&>");
}

TEST(XmlCursorProblems, AreReportedForTextsThatTheModelTakes) {
  const Fixture f("<r>\n<tsf:XSection name='" + U8(u8"é") + "'>" + U8(u8"ö𠮷") + "</tsf:XSection></r>");
  ASSERT_TRUE(XmlCursor(*f.cursor).Child());
  XmlCursor cursor(f.tree.document_element().first_child(), const_cast<TextProblems&>(f.problems));
  CString text;
  EXPECT_TRUE(cursor.GetText(text));
  EXPECT_EQ(text, u8"〓〓"_cp932);
  CArray<PimAttribute> attributes;
  EXPECT_TRUE(cursor.GetAttributes(attributes));
  EXPECT_EQ(attributes[0].GetValue(), u8"〓"_cp932);
  EXPECT_EQ(f.problems.count, 3u);
  ASSERT_TRUE(f.problems.first.has_value());
  EXPECT_EQ(f.problems.first->what, U8(u8"ö (U+00F6)"));
  EXPECT_EQ(f.problems.first->offset, 5) << "of the element's name";
}

TEST(XmlCursorProblems, AreNoneForAttributesThatTheModelDoesNotTake) {
  const Fixture f("<tsf:XSection vendor='" + U8(u8"é") + "'/>");
  EXPECT_THAT(f.Attributes(), ElementsAre(Pair("vendor", U8(u8"〓"))));
  EXPECT_EQ(f.problems.count, 0u);
}

// --- writing -------------------------------------------------------------------------------------------------------

TEST(XmlCursorWriting, AppendsChildrenBehindTheOthersAndMovesOntoThem) {
  Fixture f("<r><a/></r>");
  EXPECT_TRUE(f.cursor->InsertChild("b", nullptr));
  EXPECT_EQ(f.Tag(), "b");
  EXPECT_TRUE(f.cursor->InsertChild("c", nullptr));
  EXPECT_TRUE(f.cursor->Parent());
  EXPECT_TRUE(f.cursor->Parent());
  EXPECT_TRUE(f.cursor->InsertChild("d", nullptr));
  EXPECT_EQ(f.Print(), "<r><a/><b><c/></b><d/></r>");
}

TEST(XmlCursorWriting, DeclaresANamespaceThatIsNotInScope) {
  Fixture f("<r/>");
  EXPECT_TRUE(f.cursor->InsertChild("q:a", "urn:q"));
  EXPECT_TRUE(f.cursor->InsertChild("b", "urn:b"));
  EXPECT_EQ(f.Print(), "<r><q:a xmlns:q=\"urn:q\"><b xmlns=\"urn:b\"/></q:a></r>");
}

TEST(XmlCursorWriting, DeclaresNoNamespaceThatIsInScope) {
  Fixture f("<r xmlns='urn:b' xmlns:q='urn:q'/>");
  EXPECT_TRUE(f.cursor->InsertChild("q:a", "urn:q"));
  EXPECT_TRUE(f.cursor->InsertChild("b", "urn:b"));
  EXPECT_TRUE(f.cursor->InsertChild("q:c", "urn:q"));
  EXPECT_EQ(f.Print(), "<r xmlns=\"urn:b\" xmlns:q=\"urn:q\"><q:a><b><q:c/></b></q:a></r>");
}

TEST(XmlCursorWriting, LooksAtTheNearestDeclarationOfAPrefix) {
  Fixture f("<r xmlns:q='urn:1'/>");
  EXPECT_TRUE(f.cursor->InsertChild("q:a", "urn:2"));
  EXPECT_TRUE(f.cursor->InsertChild("q:b", "urn:2"));
  EXPECT_TRUE(f.cursor->InsertChild("q:c", "urn:1"));
  EXPECT_EQ(f.Print(), "<r xmlns:q=\"urn:1\"><q:a xmlns:q=\"urn:2\"><q:b><q:c xmlns:q=\"urn:1\"/></q:b></q:a></r>");
}

TEST(XmlCursorWriting, SeesTheDeclarationsAboveTheElementItStartedFrom) {
  pugi::xml_document tree;
  ASSERT_TRUE(tree.load_string("<r xmlns:q='urn:q'><s xmlns:t='urn:t'/></r>"));
  TextProblems problems;
  XmlCursor cursor(tree.document_element().first_child(), problems);
  EXPECT_TRUE(cursor.InsertChild("q:a", "urn:q"));
  EXPECT_FALSE(cursor.Element().attribute("xmlns:q"));
  EXPECT_TRUE(cursor.Parent());
  EXPECT_TRUE(cursor.Parent());
  EXPECT_TRUE(cursor.InsertChild("t:b", "urn:t"));
  EXPECT_STREQ(cursor.Element().attribute("xmlns:t").value(), "urn:t") << "that of s is not in scope here";
}

TEST(XmlCursorWriting, SetsAndReplacesText) {
  Fixture f("<r/>");
  EXPECT_TRUE(f.cursor->SetText("one"));
  EXPECT_EQ(f.Text(), "one");
  EXPECT_TRUE(f.cursor->SetText("<two> & more"));
  EXPECT_EQ(f.Print(), "<r>&lt;two&gt; &amp; more</r>");
  EXPECT_TRUE(f.cursor->SetText(""));
  EXPECT_EQ(f.Text(), std::nullopt);
}

TEST(XmlCursorWriting, ReplacesTextThatStandsInPieces) {
  Fixture f("<r>one<!-- comment -->two<a/><![CDATA[three]]></r>");
  EXPECT_TRUE(f.cursor->SetText("new"));
  EXPECT_EQ(f.Text(), "new");
  EXPECT_EQ(f.Print(), "<r>new<!-- comment --><a/></r>");
}

TEST(XmlCursorWriting, AddsAndReplacesAttributes) {
  Fixture f("<r a='1' b='2'/>");
  EXPECT_TRUE(f.cursor->SetTextAttribute("b", "<\">"));
  EXPECT_TRUE(f.cursor->SetTextAttribute("c", ""));
  EXPECT_THAT(f.Attributes(), ElementsAre(Pair("a", "1"), Pair("b", "<\">"), Pair("c", "")));
}

TEST(XmlCursorWriting, TurnsCodePage932IntoUtf8) {
  Fixture f("<r/>");
  EXPECT_TRUE(f.cursor->SetTextAttribute("a", u8"表"_cp932));
  EXPECT_TRUE(f.cursor->SetText(u8"①ｱ"_cp932));
  EXPECT_EQ(f.Print(), U8(u8"<r a=\"表\">①ｱ</r>"));
  EXPECT_EQ(f.problems.count, 0u);
}

TEST(XmlCursorWriting, ReportsBytesThatAreNoCharacter) {
  Fixture f("<r/>");
  EXPECT_TRUE(f.cursor->SetText("a\x81"));
  EXPECT_EQ(f.Print(), U8(u8"<r>a〓</r>"));
  EXPECT_EQ(f.problems.count, 1u);
}

}  // namespace
}  // namespace vorn_host
