#include "pages/calendar/view_parts.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "pages/calendar/navigation_bar.h"
#include "pages/calendar/selection_row.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/calendar_list.h"
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

std::string CalendarDisplayName(const ComponentState& state) {
  const auto row = OpenQuery(*state.Database, DisplayNameQuery(state.CalName));
  return std::string(row->Next() ? TextOf(row->Get(row->Column("FriendlyName"))) : state.CalName);
}

void AnnounceViewParts(const ComponentState& state) {
  if (state.ShowTitle) state.Database->Announce(DisplayNameQuery(state.CalName));
  AnnounceNavigationBar(state);
  AnnounceSelectionRow(state);
}

Html ViewOpen(const ComponentState& state, ViewMode mode, const Html& caption) {
  Html view("<FORM ACTION=\"{}\" NAME=\"acForm\">", Attribute(state.ScriptName));
  if (state.ShowTitle) {
    view.Add("<P ALIGN=CENTER><FONT CLASS=\"calname\">{}</FONT>", Content(CalendarDisplayName(state)));
  }
  view.Add(TitleBarOpen("100", caption, NavigationBar(state, mode)));
  return view;
}

Html ViewClose(const ComponentState& state) {
  return Html("</TABLE>{}</FORM>", TitleBarClose(state));
}

Markup DayCellClass(const ComponentState& state, const Week& week, Date date) {
  if (date == state.Today) return " CLASS=\"today\"";
  if (week.IsWeekend(date)) return " CLASS=\"weekend\"";
  return "";
}

Html DayNumberLink(const ComponentState& state, Date date) {
  const std::string_view hint = LoadText(state, 208);
  return Html(
      "<FONT CLASS=\"daynumber\"><A HREF=\"{}?p=c&cd={}&dm=day\" CLASS=\"daynumber\" TITLE=\"{}\" "
      "{}>{}</A></FONT>",
      Attribute(state.ScriptName), Attribute(FormatShortDate(state.Surroundings->Regional, date)),
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
