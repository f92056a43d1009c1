#include "html/links.h"

#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {

Html StatusHandler(std::string_view text) {
  return Html(
      "onMouseOver=\"javascript:window.status='{}'; return true;\" "
      "onMouseOut=\"javascript:window.status=''; return true;\"",
      ScriptAttribute(text));
}

Html PageLink(const PageContext& context, Markup query) {
  return Html("{}?{}", Attribute(context.Hosting.ScriptName), query);
}

Html SharingLink(const PageContext& context, Markup query) {
  return Html("{}/sharing{}", Attribute(context.Hosting.ScriptName), query);
}

Html PageButton(const PageContext& context, Markup query, Text text, Markup imageFile) {
  return ImageLink(context, PageLink(context, query), LoadText(context, text), imageFile);
}

Html ImageLink(const PageContext& context, const Html& href, std::string_view text, Markup imageFile,
               Markup name, const Html& onClick) {
  Html link("<A HREF=\"{}\" ", href);
  if (!name.Text().empty()) link.Add("NAME=\"{}\" ", name);
  if (!onClick.IsEmpty()) link.Add("onClick=\"{}\" ", onClick);
  link.Add("{}><IMG SRC=\"{}{}\" ALT=\"{}\" BORDER=0 ALIGN=ABSMIDDLE></A>\r\n", StatusHandler(text),
           Attribute(context.Hosting.ImageDir), imageFile, Attribute(text));
  return link;
}

}  // namespace orlune
