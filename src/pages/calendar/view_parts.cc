#include "pages/calendar/view_parts.h"

#include <string>

#include "base/date_text.h"
#include "base/dates.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "pages/calendar/navigation_bar.h"
#include "request/texts.h"

namespace orlune {

Html ViewOpen(const PageContext& context, const ViewContent& content, ViewMode mode, const Html& caption) {
  Html view("<FORM ACTION=\"{}\" NAME=\"acForm\">", Attribute(context.Hosting.ScriptName));
  if (context.Hosting.ShowTitle) {
    view.Add("<P ALIGN=CENTER><FONT CLASS=\"calname\">{}</FONT>", Content(content.CalendarName));
  }
  view.Add(TitleBarOpen("100", caption, NavigationBar(context, mode, content.UnreadMessages)));
  return view;
}

Html ViewClose(const PageContext& context) {
  return Html("</TABLE>{}</FORM>", TitleBarClose(context));
}

Markup DayCellClass(const PageContext& context, const Week& week, Date date) {
  if (date == context.Today) return " CLASS=\"today\"";
  if (week.IsWeekend(date)) return " CLASS=\"weekend\"";
  return "";
}

DayNumberLinks::DayNumberLinks(const PageContext& context)
    : regional_(&context.Regional),
      linkOpen_("<FONT CLASS=\"daynumber\"><A HREF=\"{}?p=c&cd=", Attribute(context.Hosting.ScriptName)),
      attributes_("&dm=day\" CLASS=\"daynumber\" TITLE=\"{}\" {}",
                  Attribute(LoadText(context, Text::kShowDay)),
                  StatusHandler(LoadText(context, Text::kShowDay))) {}

void DayNumberLinks::Add(Html& page, Date date) const {
  page.Add("{}{}{}>{}</A></FONT>", linkOpen_, Attribute(FormatShortDate(*regional_, date)), attributes_,
           DayOfMonth(date));
}

Html ColourStyleOpen(std::string_view background, std::string_view foreground) {
  Html style;
  if (IsColour(background)) style.Add("background:{};", Attribute(background));
  if (IsColour(foreground)) style.Add("color:{};", Attribute(foreground));
  return style.IsEmpty() ? style : Html("<FONT STYLE=\"{}\">", style);
}

void AddTimeSpan(Html& page, std::string_view timeFormat, std::optional<TimeOfDay> begin,
                 std::optional<TimeOfDay> end) {
  if (!begin && !end) return;
  page.Add("<B>");
  if (begin) page.Add("{}", Content(FormatTime(timeFormat, *begin)));
  if (end) page.Add("-{}", Content(FormatTime(timeFormat, *end)));
  page.Add("</B> ");
}

}  // namespace orlune
