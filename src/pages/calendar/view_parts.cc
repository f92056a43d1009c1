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

Html DayNumberLink(const PageContext& context, Date date) {
  const std::string_view hint = LoadText(context, Text::kShowDay);
  return Html(
      "<FONT CLASS=\"daynumber\"><A HREF=\"{}?p=c&cd={}&dm=day\" CLASS=\"daynumber\" TITLE=\"{}\" "
      "{}>{}</A></FONT>",
      Attribute(context.Hosting.ScriptName), Attribute(FormatShortDate(context.Regional, date)),
      Attribute(hint), StatusHandler(hint), DayOfMonth(date));
}

Html ColourStyleOpen(std::string_view background, std::string_view foreground) {
  Html style;
  if (IsColour(background)) style.Add("background:{};", Attribute(background));
  if (IsColour(foreground)) style.Add("color:{};", Attribute(foreground));
  return style.IsEmpty() ? style : Html("<FONT STYLE=\"{}\">", style);
}

Html TimeSpanLabel(std::string_view timeFormat, std::optional<TimeOfDay> begin,
                   std::optional<TimeOfDay> end) {
  std::string span;
  if (begin) span = FormatTime(timeFormat, *begin);
  if (end) span += "-" + FormatTime(timeFormat, *end);
  return span.empty() ? Html() : Html("<B>{}</B> ", Content(span));
}

}  // namespace orlune
