#include "pages/calendar/selection_row.h"

#include <span>
#include <string>

#include "base/dates.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "request/texts.h"

namespace orlune {
namespace {

Html DateInput(const PageContext& context) {
  return Html("{}&nbsp;<INPUT TYPE=TEXT NAME=\"cd\" VALUE=\"{}\" SIZE={}>&nbsp;&nbsp;&nbsp;",
              Content(LoadText(context, Text::kViewedDate)),
              Attribute(FormatShortDate(context.Regional, context.Visitor.CurrentDate)),
              InputSize(context, 18, 38));
}

void AddGroupViewOptions(Html& list, const PageContext& context, std::span<const GroupViewChoice> views) {
  for (const GroupViewChoice& view : views) {
    const std::string calName = "@" + view.Name;
    list.Add("<OPTION VALUE=\"{}\"{}>-{}-", Attribute(calName),
             SelectedWhen(calName == context.Visitor.CalName), OptionLabel(view.FriendlyName));
  }
}

Html ViewOption(const PageContext& context, Markup value, Text label) {
  return Html("<OPTION VALUE=\"{}\"{}>{}", value, SelectedWhen(value.Text() == context.Visitor.DisplayMode),
              Content(LoadText(context, label)));
}

Html ViewList(const PageContext& context) {
  return Html("{}&nbsp;<SELECT NAME=\"dm\">{}{}{}</SELECT>", Content(LoadText(context, Text::kViewMode)),
              ViewOption(context, "day", Text::kDayMode), ViewOption(context, "week", Text::kWeekMode),
              ViewOption(context, "month", Text::kMonthMode));
}

Html OkButton(const PageContext& context) {
  return Html(
      "<INPUT TYPE=button VALUE=\"{}\" "
      "onClick=\"javascript:f=document.acForm;f.action='{}?'"
      "+f.cd.value+f.dm.options[f.dm.selectedIndex].value"
      "+f.cn.options[f.cn.selectedIndex].value;f.submit();\">",
      Attribute(LoadText(context, Text::kViewButton)), ScriptAttribute(context.Hosting.ScriptName));
}

}  // namespace

void AddSelectionRow(Html& page, const PageContext& context, const ViewContent& content, int columnCount) {
  page.Add("<TR><TD ALIGN=CENTER COLSPAN={} CLASS=\"captions\">{}", columnCount, DateInput(context));
  page.Add("{}&nbsp;<SELECT NAME=\"cn\">", Content(LoadText(context, Text::kViewedCalendar)));
  AddGroupViewOptions(page, context, content.GroupViews);
  AddCalendarOptions(page, content.Calendars,
                     [&](std::string_view name) { return name == context.Visitor.CalName; });
  page.Add("</SELECT>&nbsp;&nbsp;&nbsp;{}&nbsp;&nbsp;&nbsp;{}</TD></TR>", ViewList(context),
           OkButton(context));
}

}  // namespace orlune
