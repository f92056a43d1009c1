#include "pages/events/form_page.h"

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

Html FormPageOpen(const Visit& visit, const Html& action, Text caption, const Html& toolbar) {
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(visit, caption))), toolbar));
  page.Add("<FORM METHOD=post ACTION=\"{}?{}\" NAME=\"acForm\">", Attribute(visit.Context.Hosting.ScriptName),
           action);
  return page.Add(FormTableOpen(visit));
}

void FinishFormRows(Visit& visit, Html page, const Html& buttons) {
  page.Add("</TABLE></TD></TR>\r\n<TR><TD ALIGN=CENTER CLASS=\"captions\">{}", buttons);
  page.Add(TableClose());
  FinishFormPage(visit, std::move(page));
}

Html FieldRow(const Visit& visit, Text label, Markup field, const Html& control) {
  return Html("<TR><TD VALIGN=TOP><LABEL FOR=\"{}\">{}</LABEL></TD><TD>{}</TD></TR>\r\n", field,
              Content(LoadText(visit, label)), control);
}

Html GroupRow(const Visit& visit, Text label, const Html& controls) {
  const std::string_view text = LoadText(visit, label);
  return Html("<TR><TD VALIGN=TOP>{}</TD><TD ROLE=group ARIA-LABEL=\"{}\">{}</TD></TR>\r\n", Content(text),
              Attribute(text), controls);
}

Html Choice(const Visit& visit, Markup value, Text label, bool isSelected) {
  return Html("<OPTION VALUE=\"{}\"{}>{}", value, SelectedWhen(isSelected), Content(LoadText(visit, label)));
}

Html DateInput(const Visit& visit, int number, std::string_view value) {
  const Html openPicker(
      "javascript:window.open('{}?p=s&sd='+document.acForm.date{}.value, 'win{}', "
      "'width=180,height=180,left='+(event.screenX - 175)+',top='+(event.screenY + 20));",
      ScriptAttribute(visit.Context.Hosting.ScriptName), number, number);
  return Html("<INPUT TYPE=text NAME=\"date{}\" ID=\"date{}\" VALUE=\"{}\" SIZE={}> {}", number, number,
              Attribute(value), InputSize(visit, 18, 38),
              ImageLink(visit, Html("javascript:void(0);"), LoadText(visit, Text::kSelectDate),
                        "event_pick.gif", number == 1 ? Markup("pick1") : Markup("pick2"), openPicker));
}

Html EventToolbar(const Visit& visit) {
  Html buttons = PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif");
  buttons.Add(PageButton(visit, "p=e", Text::kNewEvent, "event_new.gif"));
  return buttons.Add(SearchButton(visit));
}

Html SearchToolbar(const Visit& visit) {
  Html buttons = PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif");
  if (visit.Context.Visitor.IsLoggedIn())
    buttons.Add(PageButton(visit, "p=e", Text::kNewEvent, "event_new.gif"));
  return buttons;
}

Html SearchButton(const Visit& visit) {
  return PageButton(visit, "p=e&act=find", Text::kFindEvent, "event_find.gif");
}

}  // namespace orlune
