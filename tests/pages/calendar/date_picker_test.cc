#include "support/calendar_fixture.h"
#include "support/page_text.h"

namespace orlune::testing {
namespace {

class DatePicker : public CalendarFixture {
 protected:
  DatePicker() { LogIn("anna", "secret"); }
};

std::string Captions(std::string_view content) {
  return "<TD ALIGN=CENTER CLASS=\"captions\">" + std::string(content) + "</TD>";
}

std::string Day(std::string_view date, std::string_view number, std::string_view cellClass = "") {
  const std::string text(date);
  return "<TD ALIGN=CENTER" + std::string(cellClass) +
         "><A HREF=\"javascript:if (window.name=='win1') {window.opener.document.acForm.date1.value='" +
         text + "'} else {window.opener.document.acForm.date2.value='" + text + "'};window.close();\">" +
         std::string(number) + "</A> </TD>\r\n";
}

TEST_F(DatePicker, ShowsTheMonthInSixWeeks) {
  const std::string page = Get("p=s&sd=2004-02-10").Body;
  EXPECT_EQ(Cut(page, "<HTML>", "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100% HEIGHT=100%>"),
            "<HTML>\r\n<HEAD>\r\n<TITLE>Select Date</TITLE>\r\n"
            "<LINK REL=stylesheet HREF=\"css/dark.css\" TYPE=text/css>\r\n</HEAD>\r\n"
            "<STYLE>body { margin: 0pt } table { font-size: 8pt }</STYLE>\r\n"
            "<BODY onBlur=\"javascript:window.focus();\">\r\n"
            "<TABLE ALIGN=CENTER WIDTH=100% HEIGHT=100%><TR><TD CLASS=\"background\">\r\n"
            "<TABLE CELLSPACING=0.5 ALIGN=CENTER WIDTH=100% HEIGHT=100%>");
  EXPECT_EQ(Cut(page, "<TR CLASS=\"plain\">", "</TR>\r\n"),
            "<TR CLASS=\"plain\"><TD ALIGN=CENTER CLASS=\"captions\"><A HREF=\"/cal.asp?p=s&sd=1/1/2004\" "
            "CLASS=\"captions\" TITLE=\"Previous Month\">&lt;&lt;</A></TD>\r\n"
            "<TD ALIGN=CENTER COLSPAN=6 CLASS=\"captions\">FEBRUARY&nbsp;2004</TD>"
            "<TD ALIGN=CENTER CLASS=\"captions\"><A HREF=\"/cal.asp?p=s&sd=3/1/2004\" CLASS=\"captions\" "
            "TITLE=\"Next Month\">&gt;&gt;</A></TD></TR>\r\n");
  EXPECT_EQ(Cut(page, "<TR><TD CLASS=\"captions\">&nbsp;</TD>", "</TR>\r\n"),
            "<TR><TD CLASS=\"captions\">&nbsp;</TD>" + Captions("M") + Captions("T") + Captions("W") +
                Captions("T") + Captions("F") + Captions("S") + Captions("S") + "</TR>\r\n");
  std::string off("<TD ALIGN=CENTER CLASS=\"off\">&nbsp;</TD>\r\n");
  std::string sixOff;
  for (int i = 0; i < 6; ++i) sixOff += off;
  EXPECT_EQ(
      Cut(page, "<TR>" + Captions("5"), "</TR>\r\n"),
      "<TR>" + Captions("5") + "\r\n" + sixOff + Day("2/1/2004", "1", " CLASS=\"weekend\"") + "</TR>\r\n");
  const std::string emptyWeek = "<TR>" + Captions("&nbsp;") + "\r\n" + sixOff + off + "</TR>\r\n";
  EXPECT_TRUE(page.ends_with(Day("2/29/2004", "29", " CLASS=\"weekend\"") + "</TR>\r\n" + emptyWeek +
                             "</TABLE></TD></TR></TABLE>\r\n\r\n\r\n</BODY></HTML>"));
}

TEST_F(DatePicker, MarksTodayAndRejectsInvalidDates) {
  const std::string today = Day("3/15/2004", "15", " CLASS=\"today\"");
  EXPECT_NE(Get("p=s&sd=3/1/2004").Body.find(today), std::string::npos);
  const std::string page = Get("p=s&sd=2/30/2004").Body;
  EXPECT_NE(page.find(today), std::string::npos);
  EXPECT_EQ(AlertOf(page), "2/30/2004 is not a valid date.\\n");
  EXPECT_NE(Get("p=s&sd=12/31/9999").Body.find(Day("12/31/9999", "31")), std::string::npos);
  EXPECT_NE(Get("p=s&sd=1/1/0100").Body.find("sd=1/1/0100\""), std::string::npos);
}

}  // namespace
}  // namespace orlune::testing
