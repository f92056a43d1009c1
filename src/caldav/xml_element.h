#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// The namespaces of what clients send and get.
inline constexpr std::string_view kDav = "DAV:";
inline constexpr std::string_view kCalDav = "urn:ietf:params:xml:ns:caldav";
inline constexpr std::string_view kCalendarServer = "http://calendarserver.org/ns/";
inline constexpr std::string_view kApple = "http://apple.com/ns/ical/";

struct XmlAttribute {
  std::string Name;  ///< of one without namespace; others are not kept
  std::string Value;
};

/// An element of an XML document.
struct XmlElement {
  std::string Namespace;
  std::string Name;
  std::vector<XmlAttribute> Attributes{};
  std::vector<XmlElement> Children{};
  std::string Text{};  ///< its own, without that of its children

  bool Is(std::string_view space, std::string_view name) const { return Name == name && Namespace == space; }
  /// The first child of that name, or null.
  const XmlElement* Find(std::string_view space, std::string_view name) const;
  /// The attribute's value, or "".
  std::string_view Attribute(std::string_view name) const;
};

/// The text is no XML, or more than is read.
class InvalidXml : public std::runtime_error {
 public:
  InvalidXml(const std::string& sentence, bool hasDocumentType)
      : std::runtime_error(sentence), HasDocumentType(hasDocumentType) {}
  const bool HasDocumentType;  ///< whose entities could mean files of the server, or take all memory
};

inline constexpr std::size_t kMostXmlDepth = 32;
inline constexpr std::size_t kMostXmlElements = 60'000;
inline constexpr std::size_t kMostXmlTagBytes = 4096;

/// The root element of a document in UTF-8, of whatever size the caller takes. Throws InvalidXml, also for a
/// document type declaration, and beyond the limits above. Thread-safe.
XmlElement ReadXml(std::string_view text);

}  // namespace orlune
