#include "pages/preferences/password_page.h"

#include <optional>

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html ToolBar(const Visit& visit) {
  Html bar = PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif");
  bar.Add(PageButton(visit, "p=p", Text::kEditPreferences, "prefs.gif"));
  return bar.Add(PageButton(visit, "p=p&act=groups", Text::kEditGroupViews, "pref_groups.gif"));
}

Html PasswordRow(const Visit& visit, Text label, Markup name) {
  return Html("<TR><TD>{}</TD><TD><INPUT TYPE=password NAME=\"{}\"></TD></TR>",
              Content(LoadText(visit, label)), name);
}

/// The number of the text that tells why the password stays as it is; nothing when it may change.
std::optional<Text> Refusal(const Visit& visit) {
  const auto row = OpenQuery(visit.Database, Statement("SELECT Password FROM Calendars WHERE Name = '{}'",
                                                       visit.Context.Visitor.LoginName));
  if (!row->Next()) return Text::kUnknownUser;
  const Request& request = visit.Request;
  const Value stored = row->Get(row->Column("Password"));
  if (IsNull(stored) || TextOf(stored) != request.FormField("oldpw")) return Text::kWrongPassword;
  const std::string_view wanted = request.FormField("newpw1");
  if (wanted.find(' ') != std::string_view::npos) return Text::kPasswordHasSpaces;
  if (wanted != request.FormField("newpw2")) return Text::kPasswordsDiffer;
  return std::nullopt;
}

void StorePassword(Visit& visit) {
  bool failed = false;
  ExecuteQuiet(visit.Database,
               Statement("UPDATE Calendars SET Password = '{}' WHERE Name = '{}'",
                         visit.Request.FormField("newpw1"), visit.Context.Visitor.LoginName),
               failed);
}

}  // namespace

void ShowPasswordForm(Visit& visit) {
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(visit, "p=p&act=lsave"));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(visit, Text::kPasswordTitle))), ToolBar(visit)));
  page.Add(FormTableOpen(visit));
  page.Add(PasswordRow(visit, Text::kOldPassword, "oldpw"));
  page.Add(PasswordRow(visit, Text::kNewPassword, "newpw1"));
  page.Add(PasswordRow(visit, Text::kNewPasswordAgain, "newpw2"));
  page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
           Attribute(LoadText(visit, Text::kChangePasswordButton)));
  page.Add(TableClose());
  page.Add(TableClose());
  FinishFormPage(visit, std::move(page));
}

void SavePassword(Visit& visit) {
  if (const auto refusal = Refusal(visit)) {
    AddAlert(visit, *refusal);
  } else {
    StorePassword(visit);
  }
  if (!visit.Alerts.empty()) return ShowPasswordForm(visit);
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?p=p");
}

}  // namespace orlune
