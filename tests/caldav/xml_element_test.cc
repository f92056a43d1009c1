#include "caldav/xml_element.h"

#include <gtest/gtest.h>

#include "caldav/xml_text.h"

namespace orlune {
namespace {

std::string Nested(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "<a>";
  for (int i = 0; i < depth; ++i) text += "</a>";
  return text;
}

std::string Repeated(const std::string& piece, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

TEST(Xml, IsReadWithItsNamespaces) {
  const XmlElement root = ReadXml(
      "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?>\r\n<!-- a client --><D:propfind xmlns:D='DAV:' "
      "xmlns='urn:x' xml:lang='en'><D:prop a='1' b='&lt;2'/><prop>\xC3\xA4 <![CDATA[<&>]]> "
      "&#13;&amp;</prop></D:propfind>");
  EXPECT_TRUE(root.Is(kDav, "propfind"));
  ASSERT_EQ(root.Children.size(), 2U);
  EXPECT_EQ(root.Find(kDav, "prop")->Attribute("b"), "<2");
  EXPECT_EQ(root.Find("urn:x", "prop")->Text, "\xC3\xA4 <&> \r&");
  EXPECT_EQ(root.Find(kCalDav, "prop"), nullptr);
}

TEST(Xml, OfHostilesIsRefused) {
  const struct {
    const char* Name;
    std::string Text;
    bool HasDocumentType;
  } kCases[] = {
      {"nothing", "", false},
      {"no XML", "BEGIN:VCALENDAR", false},
      {"an end that is missing", "<a><b></b>", false},
      {"two roots", "<a/><b/>", false},
      {"a prefix without namespace", "<D:a/>", false},
      {"an unknown entity", "<a>&b;</a>", false},
      {"no UTF-8", "<a>\xE4</a>", false},
      {"another encoding", std::string("\xFE\xFF\0<\0a\0/\0>", 10), false},
      {"a NUL", std::string("<a>\0</a>", 8), false},
      {"a document type", "<!DOCTYPE a><a/>", true},
      {"a file as entity", "<!DOCTYPE a [<!ENTITY b SYSTEM 'file:///etc/passwd'>]><a>&b;</a>", true},
      {"entities of entities", "<!DOCTYPE a [<!ENTITY b 'bb'><!ENTITY c '&b;&b;'>]><a>&c;&c;</a>", true},
      {"a document type elsewhere", "<?xml version='1.0'?><!DOCTYPE a SYSTEM 'http://127.0.0.1/a.dtd'><a/>",
       true},
      {"depth", Nested(40), false},
      {"great depth", Nested(100'000), false},
      {"many elements", "<a>" + Repeated("<b/>", 70'000) + "</a>", false},
      {"many attributes", "<a " + Repeated("b='c' ", 100'000) + "/>", false},
      {"many namespaces", "<a " + Repeated("xmlns:b='c' ", 100'000) + "/>", false},
  };
  for (const auto& testCase : kCases) {
    try {
      ReadXml(testCase.Text);
      ADD_FAILURE() << testCase.Name;
    } catch (const InvalidXml& invalid) {
      EXPECT_EQ(invalid.HasDocumentType, testCase.HasDocumentType) << testCase.Name;
    }
  }
}

TEST(Xml, ComesBackAsItWasWritten) {
  for (const std::string text : {"<&>\"' ]]>", "a\r\nb\rc\td", "\xEF\xBC\xA1\xEF\xBF\xBD"}) {
    std::string xml = XmlDocumentBegin("D:prop");
    AppendElement(xml, "C:a", text);
    AppendEmpty(xml, "urn:x?a&b='", "b");
    AppendDocumentEnd(xml, "D:prop");
    const XmlElement root = ReadXml(xml);
    EXPECT_EQ(root.Find(kCalDav, "a")->Text, text);
    EXPECT_NE(root.Find("urn:x?a&b='", "b"), nullptr);
  }
  std::string xml;
  AppendText(xml, std::string("a\0\x1F\xEF\xBF\xBE"
                              "b",
                              7));
  EXPECT_EQ(xml,
            "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
            "b");
}

}  // namespace
}  // namespace orlune
