#include "pages/calendar/month_view.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/week.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/ol_events.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

using std::chrono::days;

namespace {

class MonthGrid {
 public:
  explicit MonthGrid(const Visit& visit)
      : visit_(visit),
        week_(visit.Context.Visitor.FirstDayOfWeek, visit.Context.Visitor.Weekend),
        entries_(visit),
        events_(visit),
        firstDay_(visit.Context.Visitor.CurrentDate -
                  days{DayOfMonth(visit.Context.Visitor.CurrentDate) - 1}),
        lastDay_(LastDayOfMonth(visit.Context.Visitor.CurrentDate)) {
    events_.GetEventsForPeriod(firstDay_, lastDay_);
  }

  void AddHeaderRow(Html& page) const {
    page.Add("<TR><TD WIDTH=2% CLASS=\"captions\">&nbsp;</TD>\r\n");
    const Date weekStart = week_.Start(firstDay_);
    for (int column = 0; column < 7; ++column) {
      page.Add("<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">{}</TD>\r\n",
               Content(WeekdayName(visit_.Context.Regional.Names, weekStart + days{column})));
    }
    page.Add("</TR>\r\n");
  }

  void AddWeekRows(Html& page) {
    for (Date weekStart = week_.Start(firstDay_); weekStart <= lastDay_; weekStart += days{7}) {
      page.Add(WeekLinkCell(weekStart));
      for (int column = 0; column < 7; ++column) AddDayCell(page, weekStart + days{column});
      page.Add("</TR>\r\n");
    }
  }

 private:
  Html WeekLinkCell(Date weekStart) const {
    const int number = week_.WeekNumber(weekStart);
    const std::string hint = LoadText(visit_, Text::kShowWeek, {std::to_string(number)});
    return Html(
        "<TR><TD ALIGN=CENTER CLASS=\"captions\"><BR><BR>"
        "<A HREF=\"{}?dm=week&cd={}\" CLASS=\"captions\" TITLE=\"{}\" {}>{}</A><BR><BR><BR></TD>\r\n",
        Attribute(visit_.Context.Hosting.ScriptName),
        Attribute(FormatShortDate(visit_.Context.Regional, AddDays(weekStart, 0))), Attribute(hint),
        StatusHandler(hint), number);
  }

  void AddDayCell(Html& page, Date date) {
    if (date < firstDay_ || date > lastDay_) {
      page.Add("<TD VALIGN=TOP CLASS=\"off\"><FONT CLASS=\"daynumdim\">{}</FONT>", DayOfMonth(date));
    } else {
      page.Add("<TD VALIGN=TOP{}>{}\r\n<BR>\r\n", DayCellClass(visit_, week_, date),
               DayNumberLink(visit_, date));
      AddEntries(page, date);
    }
    page.Add("</TD>\r\n");
  }

  void AddEntries(Html& page, Date date) {
    events_.GetEventsForDay(date);
    for (std::size_t i = 1; i <= events_.DayCount(); ++i)
      entries_.AddMonthEntry(page, *events_.EventsByDay(i));
  }

  const Visit& visit_;
  Week week_;
  EventEntryWriter entries_;
  OL_Events events_;
  Date firstDay_;
  Date lastDay_;
};

Html MonthCaption(const Visit& visit) {
  return Html("{}", Content(FormatMonthAndYear(visit.Context.Regional.UpperCaseNames,
                                               visit.Context.Visitor.CurrentDate)));
}

}  // namespace

void AddMonthView(Html& page, const Visit& visit) {
  MonthGrid grid(visit);
  page.Add(ViewOpen(visit, ViewMode::kMonth, MonthCaption(visit)));
  page.Add("<TABLE WIDTH=100% ALIGN=CENTER CELLSPACING={}>", CellSpacing(visit));
  grid.AddHeaderRow(page);
  grid.AddWeekRows(page);
  page.Add(SelectionRow(visit, 8));
  page.Add(ViewClose(visit));
}

}  // namespace orlune
