#pragma once

#include <string>
#include <string_view>

namespace orlune {

// XML is written by appending to one string. Its elements have the prefixes "D", "C", "CS" and "A" for the
// namespaces of `xml_element.h`.

/// `kXmlHead`, the root with the namespaces, such as "D:multistatus", and its end.
std::string XmlDocumentBegin(std::string_view root);
void AppendDocumentEnd(std::string& xml, std::string_view root);

/// Appends `text` as the content of an element. What XML cannot say becomes U+FFFD; line ends stay what they
/// are.
void AppendText(std::string& xml, std::string_view text);

/// Appends "<name>", the text and "</name>".
void AppendElement(std::string& xml, std::string_view name, std::string_view text);

/// Appends "<C:comp/>" for an element of any namespace, which declares its own when it is none of ours.
void AppendEmpty(std::string& xml, std::string_view space, std::string_view name);

}  // namespace orlune
