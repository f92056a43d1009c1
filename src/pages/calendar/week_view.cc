#include "pages/calendar/week_view.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/week.h"
#include "html/form_parts.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"

namespace orlune {

using std::chrono::days;

namespace {

/// The months and years of a week, such as DEC 2003/JAN 2004.
Html RangeText(const DateNames& names, Date weekStart, Date weekEnd) {
  const std::string& startMonth = AbbreviatedMonthName(names, weekStart);
  const std::string& endMonth = AbbreviatedMonthName(names, weekEnd);
  Html range("{}", Content(startMonth));
  if (YearNumber(weekStart) != YearNumber(weekEnd)) range.Add("&nbsp;{}", Content(FormatYear(weekStart)));
  if (startMonth != endMonth) range.Add("/{}", Content(endMonth));
  range.Add("&nbsp;{}", Content(FormatYear(weekEnd)));
  return range;
}

Html WeekCaption(const PageContext& context, const Week& week, Date weekStart) {
  const std::string number = std::to_string(week.WeekNumber(context.Visitor.CurrentDate));
  return Html("{} - {}", Content(LoadText(context, Text::kWeekCaption, {number})),
              RangeText(context.Regional.UpperCaseNames, AddDays(weekStart, 0), AddDays(weekStart, 6)));
}

void AddHeaderRow(Html& page, const PageContext& context, Date weekStart) {
  page.Add("<TR>");
  for (int column = 0; column < 7; ++column) {
    page.Add("<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">{}</TD>",
             Content(WeekdayName(context.Regional.Names, weekStart + days{column})));
  }
  page.Add("</TR>\r\n");
}

void AddDayRow(Html& page, const PageContext& context, const ViewContent& content, const Week& week,
               Date weekStart) {
  const DayNumberLinks dayNumbers(context);
  const EventEntryWriter entries(context, content.Group);
  page.Add("<TR>");
  for (int column = 0; column < 7; ++column) {
    const Date date = AddDays(weekStart, column);
    page.Add("<TD VALIGN=TOP HEIGHT=200{}>", DayCellClass(context, week, date));
    dayNumbers.Add(page, date);
    page.Add("\r\n<BR><BR>\r\n");
    for (const Occurrence& occurrence : content.Events.GetEventsForDay(date))
      entries.AddWeekEntry(page, occurrence);
    page.Add("</TD>");
  }
  page.Add("</TR>");
}

}  // namespace

void AddWeekView(Html& page, const PageContext& context, const ViewContent& content) {
  const Week week(context.Visitor.FirstDayOfWeek, context.Visitor.Weekend);
  const Date weekStart = week.Start(context.Visitor.CurrentDate);
  page.Add(ViewOpen(context, content, ViewMode::kWeek, WeekCaption(context, week, weekStart)));
  page.Add("<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING={}>\r\n", CellSpacing(context));
  AddHeaderRow(page, context, weekStart);
  AddDayRow(page, context, content, week, weekStart);
  AddSelectionRow(page, context, content, 7);
  page.Add(ViewClose(context));
}

}  // namespace orlune
