#include "pages/calendar/month_view.h"

#include "base/date_text.h"
#include "base/dates.h"
#include "base/week.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "pages/calendar/event_entry.h"
#include "pages/calendar/selection_row.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"

namespace orlune {

using std::chrono::days;

namespace {

class MonthGrid {
 public:
  MonthGrid(const PageContext& context, const ViewContent& content)
      : context_(context),
        events_(content.Events),
        week_(context.Visitor.FirstDayOfWeek, context.Visitor.Weekend),
        dayNumbers_(context),
        entries_(context, content.Group),
        firstDay_(context.Visitor.CurrentDate - days{DayOfMonth(context.Visitor.CurrentDate) - 1}),
        lastDay_(LastDayOfMonth(context.Visitor.CurrentDate)) {}

  void AddHeaderRow(Html& page) const {
    page.Add("<TR><TD WIDTH=2% CLASS=\"captions\">&nbsp;</TD>\r\n");
    const Date weekStart = week_.Start(firstDay_);
    for (int column = 0; column < 7; ++column) {
      page.Add("<TD ALIGN=CENTER WIDTH=14% CLASS=\"captions\">{}</TD>\r\n",
               Content(WeekdayName(context_.Regional.Names, weekStart + days{column})));
    }
    page.Add("</TR>\r\n");
  }

  void AddWeekRows(Html& page) const {
    for (Date weekStart = week_.Start(firstDay_); weekStart <= lastDay_; weekStart += days{7}) {
      page.Add(WeekLinkCell(weekStart));
      for (int column = 0; column < 7; ++column) AddDayCell(page, weekStart + days{column});
      page.Add("</TR>\r\n");
    }
  }

 private:
  Html WeekLinkCell(Date weekStart) const {
    const int number = week_.WeekNumber(weekStart);
    const std::string hint = LoadText(context_, Text::kShowWeek, {std::to_string(number)});
    return Html(
        "<TR><TD ALIGN=CENTER CLASS=\"captions\"><BR><BR>"
        "<A HREF=\"{}?dm=week&cd={}\" CLASS=\"captions\" TITLE=\"{}\" {}>{}</A><BR><BR><BR></TD>\r\n",
        Attribute(context_.Hosting.ScriptName),
        Attribute(FormatShortDate(context_.Regional, AddDays(weekStart, 0))), Attribute(hint),
        StatusHandler(hint), number);
  }

  void AddDayCell(Html& page, Date date) const {
    if (date < firstDay_ || date > lastDay_) {
      page.Add("<TD VALIGN=TOP CLASS=\"off\"><FONT CLASS=\"daynumdim\">{}</FONT>", DayOfMonth(date));
    } else {
      page.Add("<TD VALIGN=TOP{}>", DayCellClass(context_, week_, date));
      dayNumbers_.Add(page, date);
      page.Add("\r\n<BR>\r\n");
      for (const Occurrence& occurrence : events_.GetEventsForDay(date))
        entries_.AddMonthEntry(page, occurrence);
    }
    page.Add("</TD>\r\n");
  }

  const PageContext& context_;
  const OL_Events& events_;
  Week week_;
  DayNumberLinks dayNumbers_;
  EventEntryWriter entries_;
  Date firstDay_;
  Date lastDay_;
};

Html MonthCaption(const PageContext& context) {
  return Html("{}",
              Content(FormatMonthAndYear(context.Regional.UpperCaseNames, context.Visitor.CurrentDate)));
}

}  // namespace

void AddMonthView(Html& page, const PageContext& context, const ViewContent& content) {
  const MonthGrid grid(context, content);
  page.Add(ViewOpen(context, content, ViewMode::kMonth, MonthCaption(context)));
  page.Add("<TABLE WIDTH=100% ALIGN=CENTER CELLSPACING={}>", CellSpacing(context));
  grid.AddHeaderRow(page);
  grid.AddWeekRows(page);
  AddSelectionRow(page, context, content, 8);
  page.Add(ViewClose(context));
}

}  // namespace orlune
