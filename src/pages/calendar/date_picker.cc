#include "pages/calendar/date_picker.h"

#include <string>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/text.h"
#include "base/week.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/calendar/view_parts.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

using std::chrono::days;

namespace {

constexpr int kWeekRows = 6;

class PickerMonth {
 public:
  PickerMonth(const Visit& visit, Date date)
      : visit_(visit),
        week_(visit.Context.Visitor.FirstDayOfWeek, visit.Context.Visitor.Weekend),
        firstDay_(date - days{DayOfMonth(date) - 1}),
        lastDay_(LastDayOfMonth(date)) {}

  void AddMonthRow(Html& page) const {
    const DateNames& names = visit_.Context.Regional.UpperCaseNames;
    page.Add("<TR CLASS=\"plain\"><TD ALIGN=CENTER CLASS=\"captions\">");
    AddMonthLink(page, AddMonths(firstDay_, -1), Text::kPreviousMonth, "&lt;&lt;");
    page.Add("</TD>\r\n<TD ALIGN=CENTER COLSPAN=6 CLASS=\"captions\">{}&nbsp;{}</TD>",
             Content(MonthName(names, firstDay_)), Content(FormatYear(firstDay_)));
    page.Add("<TD ALIGN=CENTER CLASS=\"captions\">");
    AddMonthLink(page, AddMonths(firstDay_, 1), Text::kNextMonth, "&gt;&gt;");
    page.Add("</TD></TR>\r\n");
  }

  void AddWeekdayRow(Html& page) const {
    page.Add("<TR><TD CLASS=\"captions\">&nbsp;</TD>");
    const Date weekStart = week_.Start(firstDay_);
    for (int column = 0; column < 7; ++column) {
      const auto& name = AbbreviatedWeekdayName(visit_.Context.Regional.Names, weekStart + days{column});
      page.Add("<TD ALIGN=CENTER CLASS=\"captions\">{}</TD>", Content(FirstCharacter(name)));
    }
    page.Add("</TR>\r\n");
  }

  void AddWeekRows(Html& page) const {
    Date weekStart = week_.Start(firstDay_);
    for (int row = 0; row < kWeekRows; ++row, weekStart += days{7}) {
      page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\">");
      if (weekStart <= lastDay_) {
        page.Add("{}</TD>\r\n", week_.WeekNumber(weekStart));
      } else {
        page.Add("&nbsp;</TD>\r\n");
      }
      for (int column = 0; column < 7; ++column) AddDayCell(page, weekStart + days{column});
      page.Add("</TR>\r\n");
    }
  }

 private:
  void AddMonthLink(Html& page, Date month, Text hint, Markup label) const {
    page.Add("<A HREF=\"{}?p=s&sd={}\" CLASS=\"captions\" TITLE=\"{}\">{}</A>",
             Attribute(visit_.Context.Hosting.ScriptName),
             Attribute(FormatShortDate(visit_.Context.Regional, month)), Attribute(LoadText(visit_, hint)),
             label);
  }

  void AddDayCell(Html& page, Date date) const {
    if (date < firstDay_ || date > lastDay_) {
      page.Add("<TD ALIGN=CENTER CLASS=\"off\">&nbsp;</TD>\r\n");
      return;
    }
    const std::string text = FormatShortDate(visit_.Context.Regional, date);
    page.Add(
        "<TD ALIGN=CENTER{}><A HREF=\"javascript:if (window.name=='win1') "
        "{window.opener.document.acForm.date1.value='{}'} "
        "else {window.opener.document.acForm.date2.value='{}'};window.close();\">{}</A> </TD>\r\n",
        DayCellClass(visit_, week_, date), ScriptAttribute(text), ScriptAttribute(text), DayOfMonth(date));
  }

  const Visit& visit_;
  Week week_;
  Date firstDay_;
  Date lastDay_;
};

Html PickerHead(const Visit& visit) {
  return Html(
      "<HTML>\r\n<HEAD>\r\n<TITLE>{}</TITLE>\r\n"
      "<LINK REL=stylesheet HREF=\"{}{}\" TYPE=text/css>\r\n</HEAD>\r\n"
      "<STYLE>body { margin: 0pt } table { font-size: 8pt }</STYLE>\r\n"
      "<BODY onBlur=\"javascript:window.focus();\">\r\n",
      Content(LoadText(visit, Text::kSelectDate)), Attribute(visit.Context.Hosting.CssDir),
      Attribute(visit.Context.Visitor.SheetFile));
}

}  // namespace

void ShowDatePicker(Visit& visit, Date date) {
  const PickerMonth month(visit, date);
  Html page = PickerHead(visit);
  page.Add(
      "<TABLE ALIGN=CENTER WIDTH=100% HEIGHT=100%><TR><TD CLASS=\"background\">\r\n"
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100% HEIGHT=100%>",
      CellSpacing(visit));
  month.AddMonthRow(page);
  month.AddWeekdayRow(page);
  month.AddWeekRows(page);
  page.Add("</TABLE>");
  page.Add(TableClose());
  page.Add(PageFoot(visit));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

void ShowDatePicker(Visit& visit) {
  const std::string_view asked = visit.Request.QueryParameter("sd");
  const auto date = ParseDate(visit.Context.Regional, asked);
  if (!date) AddAlert(visit, Text::kInvalidDate, {asked});
  ShowDatePicker(visit, date.value_or(visit.Context.Visitor.CurrentDate));
}

}  // namespace orlune
