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
  PickerMonth(const PageContext& context, Date date)
      : context_(context),
        week_(context.Visitor.FirstDayOfWeek, context.Visitor.Weekend),
        firstDay_(date - days{DayOfMonth(date) - 1}),
        lastDay_(LastDayOfMonth(date)) {}

  void AddMonthRow(Html& page) const {
    const DateNames& names = context_.Regional.UpperCaseNames;
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
      const auto& name = AbbreviatedWeekdayName(context_.Regional.Names, weekStart + days{column});
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
             Attribute(context_.Hosting.ScriptName), Attribute(FormatShortDate(context_.Regional, month)),
             Attribute(LoadText(context_, hint)), label);
  }

  void AddDayCell(Html& page, Date date) const {
    if (date < firstDay_ || date > lastDay_) {
      page.Add("<TD ALIGN=CENTER CLASS=\"off\">&nbsp;</TD>\r\n");
      return;
    }
    const std::string text = FormatShortDate(context_.Regional, date);
    page.Add(
        "<TD ALIGN=CENTER{}><A HREF=\"javascript:if (window.name=='win1') "
        "{window.opener.document.acForm.date1.value='{}'} "
        "else {window.opener.document.acForm.date2.value='{}'};window.close();\">{}</A> </TD>\r\n",
        DayCellClass(context_, week_, date), ScriptAttribute(text), ScriptAttribute(text), DayOfMonth(date));
  }

  const PageContext& context_;
  Week week_;
  Date firstDay_;
  Date lastDay_;
};

Html PickerHead(const PageContext& context) {
  return Html(
      "<HTML>\r\n<HEAD>\r\n<TITLE>{}</TITLE>\r\n"
      "<LINK REL=stylesheet HREF=\"{}{}\" TYPE=text/css>\r\n</HEAD>\r\n"
      "<STYLE>body { margin: 0pt } table { font-size: 8pt }</STYLE>\r\n"
      "<BODY onBlur=\"javascript:window.focus();\">\r\n",
      Content(LoadText(context, Text::kSelectDate)), Attribute(context.Hosting.CssDir),
      Attribute(context.Visitor.SheetFile));
}

Html WriteDatePicker(const PageContext& context, Date date) {
  const PickerMonth month(context, date);
  Html page = PickerHead(context);
  page.Add(
      "<TABLE ALIGN=CENTER WIDTH=100% HEIGHT=100%><TR><TD CLASS=\"background\">\r\n"
      "<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100% HEIGHT=100%>",
      CellSpacing(context));
  month.AddMonthRow(page);
  month.AddWeekdayRow(page);
  month.AddWeekRows(page);
  page.Add("</TABLE>");
  page.Add(TableClose());
  page.Add(PageFoot(context));
  return page;
}

}  // namespace

void ShowDatePicker(Visit& visit) {
  const PageContext& context = visit.Context;
  const std::string_view asked = visit.Request.QueryParameter("sd");
  const auto date = ParseDate(context.Regional, asked);
  if (!date) AddAlert(visit, Text::kInvalidDate, {asked});
  Html page = WriteDatePicker(context, date.value_or(context.Visitor.CurrentDate));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
