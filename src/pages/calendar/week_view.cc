#include "pages/calendar/week_view.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/week.h"
#include "html/form_parts.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/ol_events.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

using std::chrono::days;

namespace {

/// The months and years that a week touches, such as DEC 2003/JAN 2004.
Html RangeText(const DateNames& names, Date weekStart, Date weekEnd) {
  const std::string& startMonth = AbbreviatedMonthName(names, weekStart);
  const std::string& endMonth = AbbreviatedMonthName(names, weekEnd);
  Html range("{}", Content(startMonth));
  if (YearNumber(weekStart) != YearNumber(weekEnd)) range.Add("&nbsp;{}", Content(FormatYear(weekStart)));
  if (startMonth != endMonth) range.Add("/{}", Content(endMonth));
  range.Add("&nbsp;{}", Content(FormatYear(weekEnd)));
  return range;
}

Html WeekCaption(const Visit& visit, const Week& week, Date weekStart) {
  const std::string number = std::to_string(week.WeekNumber(visit.Context.Visitor.CurrentDate));
  return Html("{} - {}", Content(LoadText(visit, Text::kWeekCaption, {number})),
              RangeText(visit.Context.Regional.UpperCaseNames, AddDays(weekStart, 0), AddDays(weekStart, 6)));
}

void AddHeaderRow(Html& page, const Visit& visit, Date weekStart) {
  page.Add("<TR>");
  for (int column = 0; column < 7; ++column) {
    page.Add("<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">{}</TD>",
             Content(WeekdayName(visit.Context.Regional.Names, weekStart + days{column})));
  }
  page.Add("</TR>\r\n");
}

void AddDayRow(Html& page, const Visit& visit, const Week& week, Date weekStart) {
  OL_Events events(visit);
  events.GetEventsForPeriod(AddDays(weekStart, 0), AddDays(weekStart, 6));
  const EventEntryWriter entries(visit);

  page.Add("<TR>");
  for (int column = 0; column < 7; ++column) {
    const Date date = AddDays(weekStart, column);
    page.Add("<TD VALIGN=TOP HEIGHT=200{}>{}\r\n<BR><BR>\r\n", DayCellClass(visit, week, date),
             DayNumberLink(visit, date));
    events.GetEventsForDay(date);
    for (std::size_t i = 1; i <= events.DayCount(); ++i) entries.AddWeekEntry(page, *events.EventsByDay(i));
    page.Add("</TD>");
  }
  page.Add("</TR>");
}

}  // namespace

void AddWeekView(Html& page, const Visit& visit) {
  const Week week(visit.Context.Visitor.FirstDayOfWeek, visit.Context.Visitor.Weekend);
  const Date weekStart = week.Start(visit.Context.Visitor.CurrentDate);
  page.Add(ViewOpen(visit, ViewMode::kWeek, WeekCaption(visit, week, weekStart)));
  page.Add("<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING={}>\r\n", CellSpacing(visit));
  AddHeaderRow(page, visit, weekStart);
  AddDayRow(page, visit, week, weekStart);
  page.Add(SelectionRow(visit, 7));
  page.Add(ViewClose(visit));
}

}  // namespace orlune
