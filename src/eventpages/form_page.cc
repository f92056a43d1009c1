#include "eventpages/form_page.h"

#include "component/component_state.h"
#include "frame/form_parts.h"
#include "frame/links.h"
#include "frame/page_frame.h"
#include "frame/texts.h"
#include "session/rights.h"

namespace orlune {

Html FormPageOpen(const ComponentState& state, const Html& action, int caption, const Html& toolbar) {
  Html page = PageHead(state, state.ProductTitle);
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(state, caption))), toolbar));
  page.Add("<FORM METHOD=post ACTION=\"{}?{}\" NAME=\"acForm\">", Attribute(state.ScriptName), action);
  return page.Add(FormTableOpen(state));
}

void FinishFormRows(ComponentState& state, Html page, const Html& buttons) {
  page.Add("</TABLE></TD></TR>\r\n<TR><TD ALIGN=CENTER CLASS=\"captions\">{}", buttons);
  page.Add(TableClose());
  FinishFormPage(state, std::move(page));
}

Html FieldRow(const ComponentState& state, int label, Markup field, const Html& control) {
  return Html("<TR><TD VALIGN=TOP><LABEL FOR=\"{}\">{}</LABEL></TD><TD>{}</TD></TR>\r\n", field,
              Content(LoadText(state, label)), control);
}

Html GroupRow(const ComponentState& state, int label, const Html& controls) {
  const std::string_view text = LoadText(state, label);
  return Html("<TR><TD VALIGN=TOP>{}</TD><TD ROLE=group ARIA-LABEL=\"{}\">{}</TD></TR>\r\n", Content(text),
              Attribute(text), controls);
}

Html Choice(const ComponentState& state, Markup value, int label, bool isSelected) {
  return Html("<OPTION VALUE=\"{}\"{}>{}", value, SelectedWhen(isSelected), Content(LoadText(state, label)));
}

Html DateInput(const ComponentState& state, int number, std::string_view value) {
  const Html openPicker(
      "javascript:window.open('{}?p=s&sd='+document.acForm.date{}.value, 'win{}', "
      "'width=180,height=180,left='+(event.screenX - 175)+',top='+(event.screenY + 20));",
      ScriptAttribute(state.ScriptName), number, number);
  return Html("<INPUT TYPE=text NAME=\"date{}\" ID=\"date{}\" VALUE=\"{}\" SIZE={}> {}", number, number,
              Attribute(value), InputSize(state, 18, 38),
              ImageLink(state, Html("javascript:void(0);"), LoadText(state, 180), "event_pick.gif",
                        number == 1 ? Markup("pick1") : Markup("pick2"), openPicker));
}

Html EventToolbar(const ComponentState& state) {
  Html buttons = PageButton(state, "p=c", 163, "cal.gif");
  buttons.Add(PageButton(state, "p=e", 157, "event_new.gif"));
  return buttons.Add(SearchButton(state));
}

Html SearchToolbar(const ComponentState& state) {
  Html buttons = PageButton(state, "p=c", 163, "cal.gif");
  if (IsLoggedIn(state)) buttons.Add(PageButton(state, "p=e", 157, "event_new.gif"));
  return buttons;
}

Html SearchButton(const ComponentState& state) {
  return PageButton(state, "p=e&act=find", 158, "event_find.gif");
}

}  // namespace orlune
