#include "caldav/xml_text.h"

#include "caldav/xml_element.h"

namespace orlune {
namespace {

struct Prefix {
  std::string_view Namespace;
  std::string_view Name;
};
constexpr Prefix kPrefixes[] = {{kDav, "D:"}, {kCalDav, "C:"}, {kCalendarServer, "CS:"}, {kApple, "A:"}};

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// What stands for the character at `text[i]`, or "" when it stands for itself. U+FFFE and U+FFFF are no
/// characters of XML; a carriage return is read as a line feed unless it is a reference.
std::string_view Replaced(std::string_view text, std::size_t i) {
  const char c = text[i];
  if (c == '&') return "&amp;";
  if (c == '<') return "&lt;";
  if (c == '>') return "&gt;";
  if (c == '"') return "&quot;";
  if (c == '\r') return "&#13;";
  if (c == '\xEF') {
    const std::string_view character = text.substr(i, 3);
    return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF" ? kReplacement : std::string_view();
  }
  return static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' ? kReplacement : std::string_view();
}

bool MayBeReplaced(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == '&' || c == '<' || c == '>' || c == '"' || c == '\xEF';
}

}  // namespace

std::string XmlDocumentBegin(std::string_view root) {
  std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<";
  xml += root;
  for (const Prefix& prefix : kPrefixes) {
    xml.append(" xmlns:").append(prefix.Name.substr(0, prefix.Name.size() - 1)).append("=\"");
    xml.append(prefix.Namespace).append("\"");
  }
  xml += '>';
  return xml;
}

void AppendDocumentEnd(std::string& xml, std::string_view root) {
  xml.append("</").append(root).append(">\n");
}

void AppendText(std::string& xml, std::string_view text) {
  std::size_t plain = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!MayBeReplaced(text[i])) continue;
    const std::string_view replacement = Replaced(text, i);
    if (replacement.empty()) continue;
    xml.append(text, plain, i - plain).append(replacement);
    if (text[i] == '\xEF') i += 2;
    plain = i + 1;
  }
  xml.append(text, plain);
}

void AppendElement(std::string& xml, std::string_view name, std::string_view text) {
  xml.append("<").append(name).append(">");
  AppendText(xml, text);
  xml.append("</").append(name).append(">");
}

void AppendEmpty(std::string& xml, std::string_view space, std::string_view name) {
  xml += '<';
  for (const Prefix& prefix : kPrefixes) {
    if (prefix.Namespace == space) {
      xml.append(prefix.Name).append(name).append("/>");
      return;
    }
  }
  xml.append(name).append(" xmlns=\"");
  AppendText(xml, space);
  xml.append("\"/>");
}

}  // namespace orlune
