#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "caldav/xml_element.h"
#include "caldav/xml_text.h"
#include "fuzz/require.h"

namespace {

using orlune::XmlElement;

void Check(const XmlElement& element, std::size_t depth) {
  Require(depth <= orlune::kMostXmlDepth && !element.Name.empty());
  std::string xml = orlune::XmlDocumentBegin("D:prop");
  orlune::AppendElement(xml, "D:href", element.Text);
  orlune::AppendEmpty(xml, element.Namespace, element.Name);
  orlune::AppendDocumentEnd(xml, "D:prop");
  const XmlElement again = orlune::ReadXml(xml);
  Require(again.Children.size() == 2 && again.Children.front().Text == element.Text);
  Require(again.Children.back().Is(element.Namespace, element.Name));
  for (const XmlElement& child : element.Children) Check(child, depth + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  try {
    Check(orlune::ReadXml({reinterpret_cast<const char*>(bytes), size}), 0);
  } catch (const orlune::InvalidXml&) {
    return 0;  // what most inputs are
  }
  return 0;
}
