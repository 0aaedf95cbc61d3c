#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "host/document/carried_item.h"
#include "host/document/design_document.h"
#include "tests/host/documents.h"
#include "tests/host/processor_time.h"

// Documents that were made to bring a program down: they end in a sentence, or in what they hold.

namespace vorn_host {
namespace {

using host_test::ErrorOf;
using host_test::ProcessorSeconds;
using host_test::ReadText;
using host_test::With;
using host_test::Xml;
using testing::HasSubstr;

std::string Repeated(const std::string& text, int count) {
  std::string repeated;
  repeated.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) repeated += text;
  return repeated;
}

std::string Error(const std::string& text) {
  return ErrorOf([&] { (void)ReadText(text); });
}

/// A document that defines entities before its root.
std::string Defining(const std::string& entities, const std::string& body) {
  return "<!DOCTYPE a [" + entities + "]>\n" +
         Xml(Edition::V41, body).substr(std::string(host_test::kDeclaration).size());
}

TEST(HostileDocument, OfEntitiesThatMultiplyIsRefusedUnexpanded) {
  std::string entities = "<!ENTITY a0 \"ha\">";
  for (int i = 1; i <= 10; ++i) {
    const std::string former = "&a" + std::to_string(i - 1) + ";";
    entities += "<!ENTITY a" + std::to_string(i) + " \"" + Repeated(former, 10) + "\">";
  }
  EXPECT_THAT(Error(Defining(entities, "<a>&a10;</a>")), HasSubstr("is not known"));
}

TEST(HostileDocument, ReachesForNoOtherFile) {
  EXPECT_THAT(Error(Defining("<!ENTITY x SYSTEM \"file:///etc/passwd\">", "<a>&x;</a>")),
              HasSubstr("the entity &x; is not known"));
}

TEST(HostileDocument, OfAMillionLevelsIsRefusedWithItsLine) {
  constexpr int kLevels = 1'000'000;
  for (const std::string tag : {"a", "tsf:XSections"}) {
    const std::string nested = Repeated("<" + tag + ">", kLevels) + Repeated("</" + tag + ">", kLevels);
    EXPECT_THAT(Error(Xml(Edition::V41, nested)), HasSubstr("elements are nested more than 1000 levels deep"));
  }
}

TEST(HostileDocument, WithALongAttributeIsRead) {
  const std::string name(16'000'000, 'a');
  const DesignDocument document = ReadText(Xml(Edition::V41, "<tsf:XSections refAlign=\"" + name + "\"/>"));
  ASSERT_EQ(document.sets.GetSize(), 1);
  EXPECT_TRUE(document.sets[0].GetRefAlign() == name.c_str());
}

TEST(HostileDocument, WithManyAttributesIsRead) {
  std::string attributes;
  for (int i = 0; i < 100'000; ++i) attributes += " a" + std::to_string(i) + "=\"\"";
  const DesignDocument document = ReadText(Xml(Edition::V41, "<tsf:XSections" + attributes + "/>"));
  EXPECT_EQ(document.carried.Rows().size(), 100'000U);
}

TEST(HostileDocument, WithManyPrefixesOfTheSchemaInstanceIsRecognisedInTime) {
  const std::string declaration = std::string("xmlns:xsi=\"") + VornSchema::Xsi().GetString() + "\"";
  std::string declarations;
  for (int i = 0; i < 100'000; ++i) declarations += With(declaration, "xsi", "p" + std::to_string(i)) + " ";
  std::string text = With(Xml(Edition::V40, "<tsf:XSections/>"), declaration, declarations);
  text = With(text, "xsi:schemaLocation", "p99999:schemaLocation");
  EXPECT_LT(ProcessorSeconds([&] { EXPECT_EQ(ReadText(text).edition, Edition::V40); }), 10.0);
}

TEST(HostileDocument, WithManySiblingsIsRead) {
  const DesignDocument document = ReadText(Xml(Edition::V41, Repeated("<a/>", 200'000)));
  ASSERT_EQ(document.carried.Rows().size(), 1U);
  EXPECT_EQ(document.carried.Rows()[0].count, 200'000);
}

static_assert(CarriedContent::kMostItems == 2'000'000, "the pages name this limit");

TEST(HostileDocument, WithMoreToCarryOverThanTheHostAllowsIsRefused) {
  // Two comments, an attribute and an element, which takes along what is below it.
  const std::string text =
      Xml(Edition::V41, "<!-- a --><tsf:XSections b=\"\"><tsf:XSection><c><d/></c></tsf:XSection></tsf:XSections>") +
      "<!-- e -->";
  DesignDocument::ReadOptions options;
  options.mostCarriedItems = 4;
  EXPECT_EQ(DesignDocument::FromBytes(text, "a.xml", options).carried.Items().size(), 4U);
  options.mostCarriedItems = 3;
  EXPECT_THAT(ErrorOf([&] { (void)DesignDocument::FromBytes(text, "a.xml", options); }),
              HasSubstr("a.xml: this holds more than 3 attributes, comments and elements that are not of a design"));
}

TEST(HostileDocument, LargerThanTheHostAllowsIsRefused) {
  const std::string text = Xml(Edition::V41, "");
  DesignDocument::ReadOptions options;
  options.mostBytes = text.size();
  EXPECT_NO_THROW((void)DesignDocument::FromBytes(text, "a.xml", options));
  --options.mostBytes;
  EXPECT_THAT(ErrorOf([&] { (void)DesignDocument::FromBytes(text, "a.xml", options); }),
              HasSubstr("a.xml: this is larger than"));
}

}  // namespace
}  // namespace vorn_host
