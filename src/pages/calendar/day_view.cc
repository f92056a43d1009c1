#include "pages/calendar/day_view.h"

#include <span>

#include "base/date_text.h"
#include "html/form_parts.h"
#include "pages/calendar/day_layout.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"

namespace orlune {
namespace {

class Timetable {
 public:
  Timetable(const PageContext& context, const ViewContent& content)
      : context_(context),
        hours_{context.Visitor.DayBegin, context.Visitor.DayEnd},
        entries_(context, content.Group),
        today_(content.Events.GetEventsForDay(context.Visitor.CurrentDate)),
        columnCount_(ColumnCount(today_, hours_)) {}

  /// Including the columns of the hours and of the events without a time.
  int TotalColumns() const { return columnCount_ + 2; }

  void AddHourRows(Html& page) const {
    ColumnTable columns(columnCount_);
    for (int hour = hours_.First; hour <= hours_.Last; ++hour) {
      page.Add("<TR><TD VALIGN=TOP WIDTH=1% CLASS=\"captions\" NOWRAP>{}</TD>\r\n",
               Content(FormatTime(context_.Visitor.TimeFormat, std::chrono::hours{hour})));
      AddEventCells(page, hour, columns);
      AddFreeCells(page, hour, columns);
      if (hour == hours_.First) AddAllDayCell(page);
      page.Add("</TR>\r\n");
      columns.EndRow();
    }
  }

 private:
  void AddEventCells(Html& page, int hour, ColumnTable& columns) const {
    for (const Occurrence& occurrence : today_) {
      const auto span = SpanInRow(*occurrence.Event, hour, hours_.First);
      if (!span) continue;
      columns.Allocate(*span);
      page.Add("<TD VALIGN=TOP ROWSPAN={} WIDTH={}% CLASS=\"event\">", *span, 75 / columnCount_);
      entries_.AddDayEntry(page, occurrence);
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
    for (const Occurrence& occurrence : today_) {
      if (occurrence.Event->BeginTime) continue;
      entries_.AddDayEntry(page, occurrence);
      page.Add("<BR>");
    }
    page.Add("&nbsp;</TD>\r\n");
  }

  const PageContext& context_;
  DisplayedHours hours_;
  EventEntryWriter entries_;
  std::span<const Occurrence> today_;
  int columnCount_;
};

Html DayCaption(const PageContext& context) {
  return Html("{}", Content(FormatLongDate(context.Regional.UpperCaseNames, context.Visitor.CurrentDate)));
}

}  // namespace

void AddDayView(Html& page, const PageContext& context, const ViewContent& content) {
  const Timetable timetable(context, content);
  page.Add(ViewOpen(context, content, ViewMode::kDay, DayCaption(context)));
  page.Add("<TABLE ALIGN=CENTER WIDTH=100% CELLSPACING={}>\r\n", CellSpacing(context));
  page.Add("<TR><TD ALIGN=CENTER COLSPAN={} CLASS=\"captions\">{}</TD></TR>\r\n", timetable.TotalColumns(),
           Content(WeekdayName(context.Regional.Names, context.Visitor.CurrentDate)));
  timetable.AddHourRows(page);
  AddSelectionRow(page, context, content, timetable.TotalColumns());
  page.Add(ViewClose(context));
}

}  // namespace orlune
