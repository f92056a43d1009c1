#include "pages/login/login.h"

#include <optional>
#include <string>

#include "base/dates.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html NameRow(const Visit& visit) {
  return Html("<TR><TD ALIGN=RIGHT>{}</TD><TD><INPUT TYPE=TEXT SIZE={} NAME=\"Name\" VALUE=\"{}\"></TD></TR>",
              Content(LoadText(visit, Text::kLoginName)), InputSize(visit, 18, 38),
              Attribute(visit.Request.FormField("Name")));
}

Html PasswordRow(const Visit& visit) {
  return Html("<TR><TD ALIGN=RIGHT>{}</TD><TD><INPUT TYPE=PASSWORD SIZE={} NAME=\"Passwd\"></TD></TR>",
              Content(LoadText(visit, Text::kLoginPassword)), InputSize(visit, 18, 38));
}

Html ButtonRow(const Visit& visit) {
  return Html("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
              Attribute(LoadText(visit, Text::kLoginButton)));
}

void ShowLoginForm(Visit& visit, Markup focusField) {
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle,
                       Html("javascript:document.forms[0].{}.focus();", focusField));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=l\">", Attribute(visit.Context.Hosting.ScriptName));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(visit, Text::kLoginTitle))), {}));
  page.Add(FormTableOpen(visit));
  page.Add(NameRow(visit));
  page.Add(PasswordRow(visit));
  page.Add(ButtonRow(visit));
  page.Add(TableClose());
  page.Add(TitleBarClose(visit));
  if (visit.Context.Hosting.DemoMode) page.Add("<P ALIGN=CENTER>Username: admin, password: demo1");
  page.Add("</FORM>");
  page.Add(PageFoot(visit));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

void RefuseLogin(Visit& visit, Text reason, Markup focusField) {
  AddAlert(visit, reason);
  ShowLoginForm(visit, focusField);
}

void RedirectAfterLogin(Visit& visit) {
  const std::string query =
      visit.Request.QueryParameter("p") == "l" ? "p=c" : std::string(visit.Request.QueryString());
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?" + query);
}

void LogIn(Visit& visit, std::string_view name) {
  visit.Session.Set("Login", name);
  if (!visit.Context.Hosting.CalNameFixed) visit.Session.Set("Calendar", name);
  visit.Session.Set("CurrentDate", FormatShortDate(visit.Context.Regional, visit.Context.Today));
  visit.Session.RefreshCookie();
  RedirectAfterLogin(visit);
}

/// Without a `password` the hosting page vouches for the user.
void CheckLogin(Visit& visit, std::string_view name, std::optional<std::string_view> password) {
  const auto rows = OpenQuery(
      visit.Database,
      Statement("SELECT Name, Password FROM Calendars WHERE (Name = '{}') AND (IsGroup = no)", name));
  if (!rows->Next()) return RefuseLogin(visit, Text::kUnknownUser, "Name");
  const Value stored = rows->Get(rows->Column("Password"));
  if (password && !IsNull(stored) && TextOf(stored) != *password)
    return RefuseLogin(visit, Text::kWrongPassword, "Passwd");
  LogIn(visit, TextOf(rows->Get(rows->Column("Name"))));
}

}  // namespace

void LoginStep(Visit& visit) {
  const Request& request = visit.Request;
  if (request.FormFieldCount() > 0) {
    CheckLogin(visit, request.FormField("Name"), request.FormField("Passwd"));
  } else if (visit.Context.Visitor.LoginName == "?" || visit.Context.Visitor.LoginName.empty() ||
             visit.Request.QueryParameter("p") == "l") {
    ShowLoginForm(visit, "Name");
  } else {
    CheckLogin(visit, visit.Context.Visitor.LoginName, std::nullopt);
  }
}

}  // namespace orlune
