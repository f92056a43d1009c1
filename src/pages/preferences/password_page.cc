#include "pages/preferences/password_page.h"

#include <optional>
#include <string>

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/field_limits.h"
#include "request/login_stamp.h"
#include "request/password_check.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"

namespace orlune {
namespace {

Html ToolBar(const PageContext& context) {
  Html bar = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  bar.Add(PageButton(context, "p=p", Text::kEditPreferences, "prefs.gif"));
  return bar.Add(PageButton(context, "p=p&act=groups", Text::kEditGroupViews, "pref_groups.gif"));
}

Html PasswordRow(const PageContext& context, Text label, Markup name) {
  return FormRow(context, label, Html("<INPUT TYPE=password NAME=\"{}\">", name));
}

Html WritePasswordForm(const PageContext& context) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(context, "p=p&act=lsave"));
  page.Add(
      TitleBarOpen("70", Html("{}", Content(LoadText(context, Text::kPasswordTitle))), ToolBar(context)));
  page.Add(FormTableOpen(context));
  page.Add(PasswordRow(context, Text::kOldPassword, "oldpw"));
  page.Add(PasswordRow(context, Text::kNewPassword, "newpw1"));
  page.Add(PasswordRow(context, Text::kNewPasswordAgain, "newpw2"));
  page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
           Attribute(LoadText(context, Text::kChangePasswordButton)));
  page.Add(TableClose());
  page.Add(TableClose());
  return page;
}

bool IsPassword(const Visit& visit, const std::optional<Account>& account, std::string_view typed) {
  return account && account->Password && visit.Passwords.AreEqual(*account->Password, typed);
}

/// Why the password cannot be changed; nothing when it can.
std::optional<Text> Refusal(const Visit& visit) {
  const Request& request = visit.Request;
  const std::string& name = visit.Context.Visitor.LoginName;
  const auto account = Ask(visit.Database, AccountOf(name));
  const bool isOldPassword = IsPassword(visit, account, request.FormField("oldpw"));
  EndAttempt(visit, name, isOldPassword);
  if (!account) return Text::kUnknownUser;
  if (!isOldPassword) return Text::kWrongPassword;
  const std::string_view wanted = request.FormField("newpw1");
  if (visit.Context.Hosting.Strict && wanted.empty()) return Text::kPasswordMissing;
  if (wanted.find(' ') != std::string_view::npos) return Text::kPasswordHasSpaces;
  if (wanted != request.FormField("newpw2")) return Text::kPasswordsDiffer;
  return std::nullopt;
}

}  // namespace

void ShowPasswordForm(Visit& visit) {
  FinishFormPage(visit, WritePasswordForm(visit.Context));
}

void SavePassword(Visit& visit) {
  const std::string& name = visit.Context.Visitor.LoginName;
  CheckLengths(visit, {{Text::kNewPassword, visit.Request.FormField("newpw1"), 255}});
  if (name.empty()) AddAlert(visit, Text::kUnknownUser);  // the session has ended; no password is tried
  if (visit.Alerts.empty() && AdmitAttempt(visit, name)) {
    if (const auto refusal = Refusal(visit)) {
      AddAlert(visit, *refusal);
    } else {
      StorePassword(visit.Database, name, PasswordToStore(visit, visit.Request.FormField("newpw1")));
      KeepOwnLogin(visit);
    }
  }
  if (!visit.Alerts.empty()) return ShowPasswordForm(visit);
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?p=p");
}

}  // namespace orlune
