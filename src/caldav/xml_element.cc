#include "caldav/xml_element.h"

#include <algorithm>
#include <memory>
#include <mutex>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace orlune {
namespace {

std::string_view Text(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

/// libxml2 compares each attribute of a tag with all others.
bool HasLongTag(std::string_view text) {
  for (std::size_t begin = text.find('<'); begin != std::string_view::npos; begin = text.find('<', begin)) {
    const std::size_t end = std::min(text.find('>', begin), text.size());
    const bool isTag = !text.substr(begin).starts_with("<!") && !text.substr(begin).starts_with("<?");
    if (isTag && end - begin > kMostXmlTagBytes) return true;
    begin = end;
  }
  return false;
}

/// Builds the tree of one document while libxml2 reads it. The elements that are open are the last child of
/// each other.
class TreeBuilder {
 public:
  explicit TreeBuilder(std::string_view text) {
    xmlSAXHandler handler = Handler();
    parser_.reset(xmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr));
    if (!parser_) throw std::bad_alloc();
    // Entities are replaced, also in attributes; without a document type there are only those of XML itself.
    xmlCtxtUseOptions(parser_.get(), XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR |
                                         XML_PARSE_NOWARNING | XML_PARSE_IGNORE_ENC);
    xmlSwitchEncoding(parser_.get(), XML_CHAR_ENCODING_UTF8);
    xmlParseChunk(parser_.get(), text.data(), static_cast<int>(text.size()), 1);
    if (hasDocumentType_) throw InvalidXml("A document type declaration is not taken.", true);
    if (isTooLarge_) throw InvalidXml("The XML has too many elements, or too many within each other.", false);
    const bool isRead = parser_->wellFormed != 0 && parser_->nsWellFormed != 0;
    if (!isRead || root_.Children.size() != 1)
      throw InvalidXml("The body is not well-formed XML in UTF-8.", false);
  }

  XmlElement TakeRoot() { return std::move(root_.Children.front()); }

 private:
  static xmlSAXHandler Handler() {
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.internalSubset = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
      static_cast<TreeBuilder*>(self)->Stop(&TreeBuilder::hasDocumentType_);
    };
    handler.startElementNs = [](void* self, const xmlChar* name, const xmlChar*, const xmlChar* space, int,
                                const xmlChar**, int count, int, const xmlChar** attributes) {
      static_cast<TreeBuilder*>(self)->Open(Text(space), Text(name), count, attributes);
    };
    handler.endElementNs = [](void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
      static_cast<TreeBuilder*>(self)->Close();
    };
    handler.characters = [](void* self, const xmlChar* text, int length) {
      static_cast<TreeBuilder*>(self)->Append({reinterpret_cast<const char*>(text), std::size_t(length)});
    };
    handler.cdataBlock = handler.characters;
    handler.ignorableWhitespace = handler.characters;
    // Without one, libxml2 writes errors to stderr.
    handler.serror = [](void*, xmlErrorPtr) {};
    return handler;
  }

  void Open(std::string_view space, std::string_view name, int attributeCount, const xmlChar** attributes) {
    if (open_.size() > kMostXmlDepth || ++elements_ > kMostXmlElements)
      return Stop(&TreeBuilder::isTooLarge_);
    open_.push_back(&open_.back()->Children.emplace_back(XmlElement{std::string(space), std::string(name)}));
    // Each is name, prefix, namespace, and begin and end of its value.
    for (int i = 0; i < attributeCount; ++i, attributes += 5) {
      if (attributes[2] != nullptr) continue;
      const auto* begin = reinterpret_cast<const char*>(attributes[3]);
      const auto* end = reinterpret_cast<const char*>(attributes[4]);
      open_.back()->Attributes.push_back({std::string(Text(attributes[0])), std::string(begin, end)});
    }
  }

  void Close() {
    if (open_.size() > 1) open_.pop_back();
  }

  void Append(std::string_view text) { open_.back()->Text += text; }

  void Stop(bool TreeBuilder::*reason) {
    this->*reason = true;
    xmlStopParser(parser_.get());
  }

  XmlElement root_;
  std::vector<XmlElement*> open_{&root_};
  std::size_t elements_ = 0;
  bool hasDocumentType_ = false;
  bool isTooLarge_ = false;
  std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser_{nullptr, &xmlFreeParserCtxt};
};

}  // namespace

const XmlElement* XmlElement::Find(std::string_view space, std::string_view name) const {
  const auto found =
      std::ranges::find_if(Children, [&](const XmlElement& child) { return child.Is(space, name); });
  return found == Children.end() ? nullptr : &*found;
}

std::string_view XmlElement::Attribute(std::string_view name) const {
  const auto found = std::ranges::find(Attributes, name, &XmlAttribute::Name);
  return found == Attributes.end() ? std::string_view() : std::string_view(found->Value);
}

XmlElement ReadXml(std::string_view text) {
  static std::once_flag prepared;
  std::call_once(prepared, &xmlInitParser);
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (HasLongTag(text)) throw InvalidXml("A tag of the XML is too long.", false);
  return TreeBuilder(text).TakeRoot();
}

}  // namespace orlune
