#include "html/page_frame.h"

#include "html/links.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

Html ProductLink(const PageContext& context) {
  if (context.Hosting.NoOLORLink) {
    return Html("<FONT STYLE=\"font-size: 8pt\">{}</FONT>", Content(context.Hosting.ProductTitle));
  }
  const std::string_view hint = LoadText(context, Text::kGoToProductSite);
  return Html(
      "<A HREF=\"{}\" STYLE=\"text-decoration:none; font-size: 8pt\" "
      "TARGET=\"_new\" TITLE=\"{}\" {}>{}</A>",
      Attribute(context.Hosting.ProductHomeUrl), Attribute(hint), StatusHandler(hint),
      Content(context.Hosting.ProductTitle));
}

Html SessionLink(const PageContext& context) {
  const bool hasLogin = !context.Visitor.LoginName.empty();
  const std::string_view hint = LoadText(context, hasLogin ? Text::kEndSession : Text::kLoginLink);
  const std::string label =
      hasLogin ? LoadText(context, Text::kLogout, {context.Visitor.LoginName}) : std::string(hint);
  return Html("<A HREF=\"{}?p=l\" TITLE=\"{}\" {}>{}</A>", Attribute(context.Hosting.ScriptName),
              Attribute(hint), StatusHandler(hint), Content(label));
}

}  // namespace

Html PageHead(const PageContext& context, std::string_view title, const Html& onLoad) {
  Html head("<HTML><HEAD>\r\n");
  if (!title.empty()) head.Add("<TITLE>{}</TITLE>\r\n", Content(title));
  head.Add("<LINK REL=stylesheet HREF=\"{}{}\" TYPE=text/css>\r\n", Attribute(context.Hosting.CssDir),
           Attribute(context.Visitor.SheetFile));
  if (!context.Hosting.HeadData.empty()) head.Add("{}\r\n", ConfiguredHtml(context.Hosting.HeadData));
  head.Add("</HEAD><BODY");
  if (!onLoad.IsEmpty()) head.Add(" onLoad=\"{}\"", onLoad);
  head.Add(">\r\n{}\r\n", ConfiguredHtml(context.Hosting.HTMLHeader));
  return head;
}

Html PageFoot(const PageContext& context) {
  return Html("\r\n{}\r\n</BODY></HTML>", ConfiguredHtml(context.Hosting.HTMLFooter));
}

Html AlertScript(std::string_view alerts) {
  if (alerts.empty()) return {};
  return Html(
      "<SCRIPT LANGUAGE=\"javascript\">\r\n"
      "<!--\r\n"
      "alert('{}');\r\n"
      "//-->\r\n"
      "</SCRIPT>\r\n",
      Script(alerts));
}

Html TitleBarOpen(Markup width, const Html& caption, const Html& rightContent) {
  Html bar("<TABLE ALIGN=CENTER");
  if (!width.Text().empty()) bar.Add(" WIDTH={}%", width);
  bar.Add(
      ">\r\n"
      "<TR CLASS=\"plain\"><TD><FONT CLASS=\"caltitle\">{}</FONT></TD><TD ALIGN=RIGHT>&nbsp;{}</TD></TR>\r\n"
      "<TR><TD COLSPAN=2 CLASS=\"background\">\r\n",
      caption, rightContent);
  return bar;
}

Html TitleBarClose(const PageContext& context) {
  return Html(
      "</TD></TR>\r\n"
      "<TR CLASS=\"plain\"><TD>{}</TD><TD ALIGN=RIGHT>{}</TD></TR></TABLE>\r\n",
      ProductLink(context), SessionLink(context));
}

Html TableClose() {
  return Html("</TD></TR></TABLE>\r\n");
}

Html ErrorPage(const PageContext& context, std::string_view message) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(
      "<CENTER><H1>{}</H1><P>{}<P><BR><BR><A HREF=\"javascript:history.back(1);\">{}</A><BR>"
      "<A HREF=\"{}\">{}</A></CENTER>",
      Content(LoadText(context, Text::kErrorTitle)), Content(message),
      Content(LoadText(context, Text::kBackToPreviousPage)), Attribute(context.Hosting.ScriptName),
      Content(LoadText(context, Text::kBackToCalendar)));
  page.Add(PageFoot(context));
  return page;
}

void WritePage(Visit& visit, Html page) {
  visit.Response.Write(std::move(page).Text());
}

void FinishFormPage(Visit& visit, Html page) {
  page.Add(TitleBarClose(visit.Context));
  page.Add("</FORM>");
  page.Add(PageFoot(visit.Context));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
