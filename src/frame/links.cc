#include "frame/links.h"

#include "component/component_state.h"

namespace orlune {

Html StatusHandler(std::string_view text) {
  return Html(
      "onMouseOver=\"javascript:window.status='{}'; return true;\" "
      "onMouseOut=\"javascript:window.status=''; return true;\"",
      ScriptAttribute(text));
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
