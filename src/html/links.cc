#include "html/links.h"

#include "request/component_state.h"
#include "request/texts.h"

namespace orlune {

Html StatusHandler(std::string_view text) {
  return Html(
      "onMouseOver=\"javascript:window.status='{}'; return true;\" "
      "onMouseOut=\"javascript:window.status=''; return true;\"",
      ScriptAttribute(text));
}

Html PageLink(const ComponentState& state, Markup query) {
  return Html("{}?{}", Attribute(state.ScriptName), query);
}

Html PageButton(const ComponentState& state, Markup query, int text, Markup imageFile) {
  return ImageLink(state, PageLink(state, query), LoadText(state, text), imageFile);
}

Html ImageLink(const ComponentState& state, const Html& href, std::string_view text, Markup imageFile,
               Markup name, const Html& onClick) {
  Html link("<A HREF=\"{}\" ", href);
  if (!name.Text().empty()) link.Add("NAME=\"{}\" ", name);
  if (!onClick.IsEmpty()) link.Add("onClick=\"{}\" ", onClick);
  link.Add("{}><IMG SRC=\"{}{}\" ALT=\"{}\" BORDER=0 ALIGN=ABSMIDDLE></A>\r\n", StatusHandler(text),
           Attribute(state.ImageDir), imageFile, Attribute(text));
  return link;
}

}  // namespace orlune
