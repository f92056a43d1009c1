#include "pages/events/form_page.h"

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {

Html FormPageOpen(const PageContext& context, const Html& action, Text caption, const Html& toolbar) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(context, caption))), toolbar));
  page.Add("<FORM METHOD=post ACTION=\"{}?{}\" NAME=\"acForm\">", Attribute(context.Hosting.ScriptName),
           action);
  return page.Add(FormTableOpen(context));
}

Html CloseFormRows(Html page, const Html& buttons) {
  page.Add("</TABLE></TD></TR>\r\n<TR><TD ALIGN=CENTER CLASS=\"captions\">{}", buttons);
  page.Add(TableClose());
  return page;
}

Html FieldRow(const PageContext& context, Text label, Markup field, const Html& control) {
  return Html("<TR><TD VALIGN=TOP><LABEL FOR=\"{}\">{}</LABEL></TD><TD>{}</TD></TR>\r\n", field,
              Content(LoadText(context, label)), control);
}

Html GroupRow(const PageContext& context, Text label, const Html& controls) {
  const std::string_view text = LoadText(context, label);
  return Html("<TR><TD VALIGN=TOP>{}</TD><TD ROLE=group ARIA-LABEL=\"{}\">{}</TD></TR>\r\n", Content(text),
              Attribute(text), controls);
}

Html Choice(const PageContext& context, std::string_view value, Text label, bool isSelected) {
  return Html("<OPTION VALUE=\"{}\"{}>{}", Attribute(value), SelectedWhen(isSelected),
              Content(LoadText(context, label)));
}

Html DateInput(const PageContext& context, int number, std::string_view value) {
  const Html openPicker(
      "javascript:window.open('{}?p=s&sd='+document.acForm.date{}.value, 'win{}', "
      "'width=180,height=180,left='+(event.screenX - 175)+',top='+(event.screenY + 20));",
      ScriptAttribute(context.Hosting.ScriptName), number, number);
  return Html("<INPUT TYPE=text NAME=\"date{}\" ID=\"date{}\" VALUE=\"{}\" SIZE={}> {}", number, number,
              Attribute(value), InputSize(context, 18, 38),
              ImageLink(context, Html("javascript:void(0);"), LoadText(context, Text::kSelectDate),
                        "event_pick.gif", number == 1 ? Markup("pick1") : Markup("pick2"), openPicker));
}

Html FixedDateInput(const PageContext& context, int number, std::string_view value) {
  return Html("<INPUT TYPE=text NAME=\"date{}\" ID=\"date{}\" VALUE=\"{}\" SIZE={} READONLY>", number, number,
              Attribute(value), InputSize(context, 18, 38));
}

Html EventToolbar(const PageContext& context) {
  Html buttons = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  buttons.Add(PageButton(context, "p=e", Text::kNewEvent, "event_new.gif"));
  return buttons.Add(SearchButton(context));
}

Html SearchToolbar(const PageContext& context) {
  Html buttons = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  if (context.Visitor.IsLoggedIn()) buttons.Add(PageButton(context, "p=e", Text::kNewEvent, "event_new.gif"));
  return buttons;
}

Html SearchButton(const PageContext& context) {
  return PageButton(context, "p=e&act=find", Text::kFindEvent, "event_find.gif");
}

}  // namespace orlune
