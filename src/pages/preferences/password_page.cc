#include "pages/preferences/password_page.h"

#include <optional>

#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html ToolBar(const ComponentState& state) {
  Html bar = PageButton(state, "p=c", 163, "cal.gif");
  bar.Add(PageButton(state, "p=p", 166, "prefs.gif"));
  return bar.Add(PageButton(state, "p=p&act=groups", 693, "pref_groups.gif"));
}

Html PasswordRow(const ComponentState& state, int label, Markup name) {
  return Html("<TR><TD>{}</TD><TD><INPUT TYPE=password NAME=\"{}\"></TD></TR>",
              Content(LoadText(state, label)), name);
}

/// The number of the text that tells why the password stays as it is; nothing when it may change.
std::optional<int> Refusal(const ComponentState& state) {
  const auto row = OpenQuery(*state.Database,
                             Statement("SELECT Password FROM Calendars WHERE Name = '{}'", state.LoginName));
  if (!row->Next()) return 800;
  const Request& request = *state.Context.Request;
  const Value stored = row->Get(row->Column("Password"));
  if (IsNull(stored) || TextOf(stored) != request.FormField("oldpw")) return 801;
  const std::string_view wanted = request.FormField("newpw1");
  if (wanted.find(' ') != std::string_view::npos) return 855;
  if (wanted != request.FormField("newpw2")) return 840;
  return std::nullopt;
}

void StorePassword(ComponentState& state) {
  bool failed = false;
  ExecuteQuiet(*state.Database,
               Statement("UPDATE Calendars SET Password = '{}' WHERE Name = '{}'",
                         state.Context.Request->FormField("newpw1"), state.LoginName),
               failed);
}

}  // namespace

void ShowPasswordForm(ComponentState& state) {
  Html page = PageHead(state, state.ProductTitle);
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(state, "p=p&act=lsave"));
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(state, 640))), ToolBar(state)));
  page.Add(FormTableOpen(state));
  page.Add(PasswordRow(state, 641, "oldpw"));
  page.Add(PasswordRow(state, 642, "newpw1"));
  page.Add(PasswordRow(state, 643, "newpw2"));
  page.Add("<TR><TD ALIGN=CENTER CLASS=\"captions\"><INPUT TYPE=submit VALUE=\"{}\">",
           Attribute(LoadText(state, 650)));
  page.Add(TableClose());
  page.Add(TableClose());
  FinishFormPage(state, std::move(page));
}

void SavePassword(ComponentState& state) {
  if (const auto refusal = Refusal(state)) {
    AddAlert(state, *refusal);
  } else {
    StorePassword(state);
  }
  if (!state.AlertText.empty()) return ShowPasswordForm(state);
  state.Context.Response->Redirect(state.ScriptName + "?p=p");
}

}  // namespace orlune
