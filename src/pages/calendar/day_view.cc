#include "pages/calendar/day_view.h"

#include <vector>

#include "base/date_text.h"
#include "html/form_parts.h"
#include "pages/calendar/day_layout.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/ol_events.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"
#include "request/visit.h"

namespace orlune {
namespace {

class Timetable {
 public:
  explicit Timetable(const Visit& visit)
      : visit_(visit),
        hours_{visit.Context.Visitor.DayBegin, visit.Context.Visitor.DayEnd},
        entries_(visit),
        events_(visit) {
    events_.GetEventsForPeriod(visit.Context.Visitor.CurrentDate, visit.Context.Visitor.CurrentDate);
    events_.GetEventsForDay(visit.Context.Visitor.CurrentDate);
    for (std::size_t i = 1; i <= events_.DayCount(); ++i) today_.push_back(events_.EventsByDay(i));
    columnCount_ = ColumnCount(today_, hours_);
  }

  /// With the columns of the hours and of the events without a time.
  int TotalColumns() const { return columnCount_ + 2; }

  void AddHourRows(Html& page) const {
    ColumnTable columns(columnCount_);
    for (int hour = hours_.First; hour <= hours_.Last; ++hour) {
      page.Add("<TR><TD VALIGN=TOP WIDTH=1% CLASS=\"captions\" NOWRAP>{}</TD>\r\n",
               Content(FormatTime(visit_.Context.Visitor.TimeFormat, std::chrono::hours{hour})));
      AddEventCells(page, hour, columns);
      AddFreeCells(page, hour, columns);
      if (hour == hours_.First) AddAllDayCell(page);
      page.Add("</TR>\r\n");
      columns.EndRow();
    }
  }

 private:
  void AddEventCells(Html& page, int hour, ColumnTable& columns) const {
    for (const OL_Event* event : today_) {
      const auto span = SpanInRow(*event, hour, hours_.First);
      if (!span) continue;
      columns.Allocate(*span);
      page.Add("<TD VALIGN=TOP ROWSPAN={} WIDTH={}% CLASS=\"event\">", *span, 75 / columnCount_);
      entries_.AddDayEntry(page, *event);
      page.Add("</TD>\r\n");
    }
  }

  void AddFreeCells(Html& page, int hour, const ColumnTable& columns) const {
    const int free = columnCount_ - Occupancy(today_, hour);
    if (free == 1) page.Add("<TD WIDTH=75% VALIGN=TOP>&nbsp;</TD>\r\n");
    if (free <= 1) return;
    for (const int length : columns.FreeRuns()) page.Add("<TD VALIGN=TOP COLSPAN={}>&nbsp;</TD>\r\n", length);
  }

  void AddAllDayCell(Html& page) const {
    page.Add("<TD VALIGN=TOP ROWSPAN={} WIDTH=24% CLASS=\"event\">", hours_.Last + 1 - hours_.First);
    for (const OL_Event* event : today_) {
      if (event->BeginTime) continue;
      entries_.AddDayEntry(page, *event);
      page.Add("<BR>");
    }
    page.Add("&nbsp;</TD>\r\n");
  }

  const Visit& visit_;
  DisplayedHours hours_;
  EventEntryWriter entries_;
  OL_Events events_;
  std::vector<const OL_Event*> today_;
  int columnCount_ = 1;
};

Html DayCaption(const Visit& visit) {
  return Html("{}", Content(FormatLongDate(visit.Context.Regional.UpperCaseNames,
                                           visit.Context.Visitor.CurrentDate)));
}

}  // namespace

void AddDayView(Html& page, const Visit& visit) {
  const Timetable timetable(visit);
  page.Add(ViewOpen(visit, ViewMode::kDay, DayCaption(visit)));
  page.Add("<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING={}>\r\n", CellSpacing(visit));
  page.Add("<TR><TD ALIGN=CENTER COLSPAN={} CLASS=\"captions\">{}</TD></TR>\r\n", timetable.TotalColumns(),
           Content(WeekdayName(visit.Context.Regional.Names, visit.Context.Visitor.CurrentDate)));
  timetable.AddHourRows(page);
  page.Add(SelectionRow(visit, timetable.TotalColumns()));
  page.Add(ViewClose(visit));
}

}  // namespace orlune
