#include "support/page_text.h"

namespace orlune::testing {

std::string Cut(const std::string& page, std::string_view from, std::string_view to) {
  const std::size_t begin = page.find(from);
  if (begin == std::string::npos) return "";
  const std::size_t end = page.find(to, begin + from.size());
  return end == std::string::npos ? "" : page.substr(begin, end + to.size() - begin);
}

std::string Status(std::string_view text) {
  return "onMouseOver=\"javascript:window.status='" + std::string(text) +
         "'; return true;\" onMouseOut=\"javascript:window.status=''; return true;\"";
}

std::string Button(std::string_view query, std::string_view text, std::string_view image) {
  return "<A HREF=\"/cal.asp?" + std::string(query) + "\" " + Status(text) + "><IMG SRC=\"images/" +
         std::string(image) + "\" ALT=\"" + std::string(text) + "\" BORDER=0 ALIGN=ABSMIDDLE></A>\r\n";
}

std::string AlertOf(const std::string& page) {
  constexpr std::string_view kOpen = "alert('";
  constexpr std::string_view kClose = "');\r\n";
  const std::string alert = Cut(page, kOpen, kClose);
  return alert.empty() ? "" : alert.substr(kOpen.size(), alert.size() - kOpen.size() - kClose.size());
}

}  // namespace orlune::testing
