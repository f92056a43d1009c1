#include "pages/calendar/day_view.h"

#include <vector>

#include "base/date_text.h"
#include "html/form_parts.h"
#include "pages/calendar/day_layout.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/ol_events.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"
#include "request/component_state.h"

namespace orlune {
namespace {

class Timetable {
 public:
  explicit Timetable(const ComponentState& state)
      : state_(state), hours_{state.DayBegin, state.DayEnd}, entries_(state), events_(state) {
    events_.GetEventsForPeriod(state.CurrentDate, state.CurrentDate);
    events_.GetEventsForDay(state.CurrentDate);
    for (std::size_t i = 1; i <= events_.DayCount(); ++i) today_.push_back(events_.EventsByDay(i));
    columnCount_ = ColumnCount(today_, hours_);
  }

  /// With the columns of the hours and of the events without a time.
  int TotalColumns() const { return columnCount_ + 2; }

  void AddHourRows(Html& page) const {
    ColumnTable columns(columnCount_);
    for (int hour = hours_.First; hour <= hours_.Last; ++hour) {
      page.Add("<TR><TD VALIGN=TOP WIDTH=1% CLASS=\"captions\" NOWRAP>{}</TD>\r\n",
               Content(FormatTime(state_.TimeFormat, std::chrono::hours{hour})));
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

  const ComponentState& state_;
  DisplayedHours hours_;
  EventEntryWriter entries_;
  OL_Events events_;
  std::vector<const OL_Event*> today_;
  int columnCount_ = 1;
};

Html DayCaption(const ComponentState& state) {
  return Html("{}", Content(FormatLongDate(state.Surroundings->Regional.UpperCaseNames, state.CurrentDate)));
}

}  // namespace

void AddDayView(Html& page, const ComponentState& state) {
  const Timetable timetable(state);
  page.Add(ViewOpen(state, ViewMode::kDay, DayCaption(state)));
  page.Add("<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING={}>\r\n", CellSpacing(state));
  page.Add("<TR><TD ALIGN=CENTER COLSPAN={} CLASS=\"captions\">{}</TD></TR>\r\n", timetable.TotalColumns(),
           Content(WeekdayName(state.Surroundings->Regional.Names, state.CurrentDate)));
  timetable.AddHourRows(page);
  page.Add(SelectionRow(state, timetable.TotalColumns()));
  page.Add(ViewClose(state));
}

}  // namespace orlune
