#include "pages/login/login.h"

#include <optional>
#include <string>

#include "base/dates.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "request/login_stamp.h"
#include "request/password_check.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"

namespace orlune {
namespace {

Html NameRow(const PageContext& context, std::string_view name) {
  return Html("<TR><TD ALIGN=RIGHT>{}</TD><TD><INPUT TYPE=TEXT SIZE={} NAME=\"Name\" VALUE=\"{}\"></TD></TR>",
              Content(LoadText(context, Text::kLoginName)), InputSize(context, 18, 38), Attribute(name));
}

Html PasswordRow(const PageContext& context) {
  return Html("<TR><TD ALIGN=RIGHT>{}</TD><TD><INPUT TYPE=PASSWORD SIZE={} NAME=\"Passwd\"></TD></TR>",
              Content(LoadText(context, Text::kLoginPassword)), InputSize(context, 18, 38));
}

Html ButtonRow(const PageContext& context) {
  return Html("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
              Attribute(LoadText(context, Text::kLoginButton)));
}

Html WriteLoginForm(const PageContext& context, std::string_view name, Markup focusField) {
  Html page = PageHead(context, context.Hosting.ProductTitle,
                       Html("javascript:document.forms[0].{}.focus();", focusField));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=l\">", Attribute(context.Hosting.ScriptName));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(context, Text::kLoginTitle))), {}));
  page.Add(FormTableOpen(context));
  page.Add(NameRow(context, name));
  page.Add(PasswordRow(context));
  page.Add(ButtonRow(context));
  page.Add(TableClose());
  page.Add(TitleBarClose(context));
  if (context.Hosting.DemoMode) page.Add("<P ALIGN=CENTER>Username: admin, password: demo1");
  page.Add("</FORM>");
  page.Add(PageFoot(context));
  return page;
}

void ShowLoginForm(Visit& visit, Markup focusField) {
  Html page = WriteLoginForm(visit.Context, visit.Request.FormField("Name"), focusField);
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

void LogIn(Visit& visit, const LoginAccount& login) {
  const std::string& name = login.Name;
  visit.Session.Set("Login", name);
  StampLogin(visit.Session, visit.Passwords, login.Account);
  if (visit.Context.Hosting.UseCookie) visit.Session.Set("LoginId", visit.Passwords.MakeRandom());
  if (!visit.Context.Hosting.CalNameFixed) visit.Session.Set("Calendar", name);
  visit.Session.Set("CurrentDate", FormatShortDate(visit.Context.Regional, visit.Context.Today));
  visit.Session.RefreshCookie();
  RedirectAfterLogin(visit);
}

/// The user configured for the hosting page needs no password.
void LogInUnasked(Visit& visit, std::string_view name) {
  const auto login = Ask(visit.Database, LoginAccountOf(name));
  if (!login) return RefuseLogin(visit, Text::kUnknownUser, "Name");
  LogIn(visit, *login);
}

bool IsPassword(const Visit& visit, const std::optional<std::string>& stored, std::string_view typed) {
  if (!visit.Context.Hosting.AllowNoPassword && stored.value_or("").empty()) return false;
  return !stored || visit.Passwords.AreEqual(*stored, typed);
}

/// A password stored in plain text is hashed at its first use on a strict page. Of two such logins at once
/// the second takes the first one's hash, so that both stay logged in.
void HashStoredPassword(Visit& visit, LoginAccount& login, std::string_view password) {
  const std::optional<std::string>& stored = login.Account.Password;
  if (!visit.Context.Hosting.Strict || stored.value_or("").empty() || visit.Passwords.IsHash(*stored)) return;
  ReplacePassword(visit.Database, login.Name, *stored, PasswordToStore(visit, password));
  auto account = Ask(visit.Database, AccountOf(login.Name));
  if (account && IsPassword(visit, account->Password, password)) login.Account = *std::move(account);
}

void CheckLogin(Visit& visit, std::string_view name, std::string_view password) {
  // The form of another page, posted after its session had ended, tries no password.
  if (name.empty()) return RefuseLogin(visit, Text::kUnknownUser, "Name");
  if (!AdmitAttempt(visit, name)) return ShowLoginForm(visit, "Passwd");
  auto login = Ask(visit.Database, LoginAccountOf(name));
  const bool isRight = login && IsPassword(visit, login->Account.Password, password);
  EndAttempt(visit, name, isRight);
  if (!login) return RefuseLogin(visit, Text::kUnknownUser, "Name");
  if (!isRight) return RefuseLogin(visit, Text::kWrongPassword, "Passwd");
  HashStoredPassword(visit, *login, password);
  LogIn(visit, *login);
}

}  // namespace

void LoginStep(Visit& visit) {
  const Request& request = visit.Request;
  if (request.FormFieldCount() > 0) {
    CheckLogin(visit, request.FormField("Name"), request.FormField("Passwd"));
  } else if (visit.Context.Visitor.LoginName == "?" || visit.Context.Visitor.LoginName.empty() ||
             request.QueryParameter("p") == "l") {
    ShowLoginForm(visit, "Name");
  } else {
    LogInUnasked(visit, visit.Context.Visitor.LoginName);
  }
}

}  // namespace orlune
