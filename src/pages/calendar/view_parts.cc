#include "pages/calendar/view_parts.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "model/calendar.h"
#include "pages/calendar/navigation_bar.h"
#include "pages/calendar/selection_row.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {

namespace {

Statement DisplayNameQuery(std::string_view calName) {
  return IsGroupView(calName)
             ? Statement("SELECT FriendlyName FROM GroupViews WHERE Name = '{}'", calName.substr(1))
             : Statement("SELECT FriendlyName FROM Calendars WHERE Name = '{}'", calName);
}

}  // namespace

std::string CalendarDisplayName(const Visit& visit) {
  const auto row = OpenQuery(visit.Database, DisplayNameQuery(visit.Context.Visitor.CalName));
  return std::string(row->Next() ? TextOf(row->Get(row->Column("FriendlyName")))
                                 : visit.Context.Visitor.CalName);
}

void AnnounceViewParts(const Visit& visit) {
  if (visit.Context.Hosting.ShowTitle)
    visit.Database.Announce(DisplayNameQuery(visit.Context.Visitor.CalName));
  AnnounceNavigationBar(visit);
  AnnounceSelectionRow(visit);
}

Html ViewOpen(const Visit& visit, ViewMode mode, const Html& caption) {
  Html view("<FORM ACTION=\"{}\" NAME=\"acForm\">", Attribute(visit.Context.Hosting.ScriptName));
  if (visit.Context.Hosting.ShowTitle) {
    view.Add("<P ALIGN=CENTER><FONT CLASS=\"calname\">{}</FONT>", Content(CalendarDisplayName(visit)));
  }
  view.Add(TitleBarOpen("100", caption, NavigationBar(visit, mode)));
  return view;
}

Html ViewClose(const Visit& visit) {
  return Html("</TABLE>{}</FORM>", TitleBarClose(visit));
}

Markup DayCellClass(const Visit& visit, const Week& week, Date date) {
  if (date == visit.Context.Today) return " CLASS=\"today\"";
  if (week.IsWeekend(date)) return " CLASS=\"weekend\"";
  return "";
}

Html DayNumberLink(const Visit& visit, Date date) {
  const std::string_view hint = LoadText(visit, Text::kShowDay);
  return Html(
      "<FONT CLASS=\"daynumber\"><A HREF=\"{}?p=c&cd={}&dm=day\" CLASS=\"daynumber\" TITLE=\"{}\" "
      "{}>{}</A></FONT>",
      Attribute(visit.Context.Hosting.ScriptName), Attribute(FormatShortDate(visit.Context.Regional, date)),
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
