#include "session/login.h"

#include <optional>
#include <string>

#include "component/component_state.h"
#include "data/database_access.h"
#include "data/field.h"
#include "frame/dates.h"
#include "frame/form_parts.h"
#include "frame/page_frame.h"
#include "frame/texts.h"
#include "session/session_data.h"

namespace orlune {
namespace {

Html NameRow(const ComponentState& state) {
  return Html("<TR><TD ALIGN=RIGHT>{}</TD><TD><INPUT TYPE=TEXT SIZE={} NAME=\"Name\" VALUE=\"{}\"></TD></TR>",
              Content(LoadText(state, 101)), InputSize(state, 18, 38),
              Attribute(state.Context.Request->FormField("Name")));
}

Html PasswordRow(const ComponentState& state) {
  return Html("<TR><TD ALIGN=RIGHT>{}</TD><TD><INPUT TYPE=PASSWORD SIZE={} NAME=\"Passwd\"></TD></TR>",
              Content(LoadText(state, 102)), InputSize(state, 18, 38));
}

Html ButtonRow(const ComponentState& state) {
  return Html("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
              Attribute(LoadText(state, 103)));
}

void ShowLoginForm(ComponentState& state, Markup focusField) {
  Html page =
      PageHead(state, state.ProductTitle, Html("javascript:document.forms[0].{}.focus();", focusField));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=l\">", Attribute(state.ScriptName));
  page.Add(TitleBarOpen("", Html("{}", Content(LoadText(state, 100))), {}));
  page.Add(FormTableOpen(state));
  page.Add(NameRow(state));
  page.Add(PasswordRow(state));
  page.Add(ButtonRow(state));
  page.Add(TableClose());
  page.Add(TitleBarClose(state));
  if (state.DemoMode) page.Add("<P ALIGN=CENTER>Username: admin, password: demo1");
  page.Add("</FORM>");
  page.Add(PageFoot(state));
  page.Add(AlertScript(state));
  WritePage(state, std::move(page));
}

void RefuseLogin(ComponentState& state, int reason, Markup focusField) {
  AddAlert(state, reason);
  ShowLoginForm(state, focusField);
}

void RedirectAfterLogin(ComponentState& state) {
  const std::string query = state.PageName == "l" ? "p=c" : std::string(state.Context.Request->QueryString());
  state.Context.Response->Redirect(state.ScriptName + "?" + query);
}

void LogIn(ComponentState& state, std::string_view name) {
  SetSessionData(state, "Login", name);
  if (!state.CalNameFixed) SetSessionData(state, "Calendar", name);
  SetSessionData(state, "CurrentDate", FormatShortDate(state.Surroundings->Regional, state.Today));
  RefreshCookie(state, state.ExpireCookie);
  RedirectAfterLogin(state);
}

/// Without a `password` the hosting page vouches for the user.
void CheckLogin(ComponentState& state, std::string_view name, std::optional<std::string_view> password) {
  const auto rows = OpenQuery(
      *state.Database,
      Statement("SELECT Name, Password FROM Calendars WHERE (Name = '{}') AND (IsGroup = no)", name));
  if (!rows->Next()) return RefuseLogin(state, 800, "Name");
  const Value stored = rows->Get(rows->Column("Password"));
  if (password && !IsNull(stored) && TextOf(stored) != *password) return RefuseLogin(state, 801, "Passwd");
  LogIn(state, TextOf(rows->Get(rows->Column("Name"))));
}

}  // namespace

void LoginStep(ComponentState& state) {
  const Request& request = *state.Context.Request;
  if (request.FormFieldCount() > 0) {
    CheckLogin(state, request.FormField("Name"), request.FormField("Passwd"));
  } else if (state.LoginName == "?" || state.LoginName.empty() || state.PageName == "l") {
    ShowLoginForm(state, "Name");
  } else {
    CheckLogin(state, state.LoginName, std::nullopt);
  }
}

}  // namespace orlune
