#include "html/page_frame.h"

#include "html/links.h"
#include "request/component_state.h"
#include "request/texts.h"

namespace orlune {
namespace {

Html ProductLink(const ComponentState& state) {
  if (state.NoOLORLink) {
    return Html("<FONT STYLE=\"font-size: 8pt\">{}</FONT>", Content(state.ProductTitle));
  }
  const std::string_view hint = LoadText(state, 113);
  return Html(
      "<A HREF=\"{}\" STYLE=\"text-decoration:none; font-size: 8pt\" "
      "TARGET=\"_new\" TITLE=\"{}\" {}>{}</A>",
      Attribute(state.ProductHomeUrl), Attribute(hint), StatusHandler(hint), Content(state.ProductTitle));
}

Html SessionLink(const ComponentState& state) {
  const bool hasLogin = !state.LoginName.empty();
  const std::string_view hint = LoadText(state, hasLogin ? 111 : 112);
  const std::string label = hasLogin ? LoadText(state, 110, {state.LoginName}) : std::string(hint);
  return Html("<A HREF=\"{}?p=l\" TITLE=\"{}\" {}>{}</A>", Attribute(state.ScriptName), Attribute(hint),
              StatusHandler(hint), Content(label));
}

}  // namespace

Html PageHead(const ComponentState& state, std::string_view title, const Html& onLoad) {
  Html head("<HTML><HEAD>\r\n");
  if (!title.empty()) head.Add("<TITLE>{}</TITLE>\r\n", Content(title));
  head.Add("<LINK REL=stylesheet HREF=\"{}{}\" TYPE=text/css>\r\n", Attribute(state.CssDir),
           Attribute(state.SheetFile));
  if (!state.HeadData.empty()) head.Add("{}\r\n", ConfiguredHtml(state.HeadData));
  head.Add("</HEAD><BODY");
  if (!onLoad.IsEmpty()) head.Add(" onLoad=\"{}\"", onLoad);
  head.Add(">\r\n{}\r\n", ConfiguredHtml(state.HTMLHeader));
  return head;
}

Html PageFoot(const ComponentState& state) {
  return Html("\r\n{}\r\n</BODY></HTML>", ConfiguredHtml(state.HTMLFooter));
}

Html AlertScript(const ComponentState& state) {
  if (state.AlertText.empty()) return {};
  return Html(
      "<SCRIPT LANGUAGE=\"javascript\">\r\n"
      "<!--\r\n"
      "alert('{}');\r\n"
      "//-->\r\n"
      "</SCRIPT>\r\n",
      Script(state.AlertText));
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

Html TitleBarClose(const ComponentState& state) {
  return Html(
      "</TD></TR>\r\n"
      "<TR CLASS=\"plain\"><TD>{}</TD><TD ALIGN=RIGHT>{}</TD></TR></TABLE>\r\n",
      ProductLink(state), SessionLink(state));
}

Html TableClose() {
  return Html("</TD></TR></TABLE>\r\n");
}

Html ErrorPage(const ComponentState& state, std::string_view message) {
  Html page = PageHead(state, state.ProductTitle);
  page.Add(
      "<CENTER><H1>{}</H1><P>{}<P><BR><BR><A HREF=\"javascript:history.back(1);\">{}</A><BR>"
      "<A HREF=\"{}\">{}</A></CENTER>",
      Content(LoadText(state, 171)), Content(message), Content(LoadText(state, 172)),
      Attribute(state.ScriptName), Content(LoadText(state, 173)));
  page.Add(PageFoot(state));
  return page;
}

void WritePage(ComponentState& state, Html page) {
  state.Context.Response->Write(std::move(page).Text());
}

void FinishFormPage(ComponentState& state, Html page) {
  page.Add(TitleBarClose(state));
  page.Add("</FORM>");
  page.Add(PageFoot(state));
  page.Add(AlertScript(state));
  WritePage(state, std::move(page));
}

}  // namespace orlune
