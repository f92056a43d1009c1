#include "pages/calendar/navigation_bar.h"

#include "base/dates.h"
#include "html/links.h"
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"
#include "store/calendar_list.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html DateLink(const ComponentState& state, Date date) {
  return Html("{}?cd={}", Attribute(state.ScriptName),
              Attribute(FormatShortDate(state.Surroundings->Regional, date)));
}

Html ColourMappingLink(const ComponentState& state) {
  const std::string_view hint = LoadText(state, 695);
  return Html(
      "<A HREF=\"javascript:void(0);\" "
      "onClick=\"javascript:window.open('{}?p=p&act=gcols', '', 'width=180,height=250,left='"
      "+(screen.availWidth-210)+',top='+(screen.availHeight-280)+"
      "',scrollbars=1');\" TITLE=\"{}\" {}>{}</A>&nbsp;&nbsp;",
      ScriptAttribute(state.ScriptName), Attribute(hint), StatusHandler(hint), Content(LoadText(state, 694)));
}

Html StepButtons(const ComponentState& state, ViewMode mode) {
  const int modeIndex = static_cast<int>(mode);
  const std::string today = FormatShortDate(state.Surroundings->Regional, state.Today);
  Html buttons = ImageLink(state, DateLink(state, Stepped(state.CurrentDate, mode, -1)),
                           LoadText(state, 150 + modeIndex), "cal_back.gif");
  buttons.Add(ImageLink(state, DateLink(state, state.Today), LoadText(state, 156, {today}), "cal_today.gif"));
  buttons.Add(ImageLink(state, DateLink(state, Stepped(state.CurrentDate, mode, 1)),
                        LoadText(state, 153 + modeIndex), "cal_forward.gif"));
  buttons.Add("&nbsp;&nbsp;");
  return buttons;
}

bool HasMessageButton(const ComponentState& state) {
  return IsLoggedIn(state) && !state.NoMessaging;
}

Statement UnreadMessagesQuery(const ComponentState& state) {
  return Statement("SELECT Count(MessageID) AS MsgCount FROM Messages WHERE Recipient = '{}' AND Viewed = No",
                   state.LoginName);
}

int UnreadMessages(const ComponentState& state) {
  const auto row = OpenQuery(*state.Database, UnreadMessagesQuery(state));
  return row->Next() ? NumberOf(row->Get(row->Column("MsgCount"))).value_or(0) : 0;
}

Html MessageButton(const ComponentState& state) {
  std::string text(LoadText(state, 159));
  const int unread = UnreadMessages(state);
  if (unread > 0) text += LoadText(state, 160, {std::to_string(unread)});
  return ImageLink(state, PageLink(state, "p=m"), text,
                   unread > 0 ? Markup("msg_newmail.gif") : Markup("msg_list.gif"));
}

Html FindButton(const ComponentState& state) {
  return PageButton(state, "p=e&act=find", 158, "event_find.gif");
}

}  // namespace

void AnnounceNavigationBar(const ComponentState& state) {
  if (HasMessageButton(state)) state.Database->Announce(UnreadMessagesQuery(state));
}

Html NavigationBar(const ComponentState& state, ViewMode mode) {
  Html bar;
  if (IsGroupView(state.CalName)) bar.Add(ColourMappingLink(state));
  bar.Add(StepButtons(state, mode));
  if (!IsLoggedIn(state)) return bar.Add(FindButton(state));

  bar.Add(PageButton(state, "p=e", 157, "event_new.gif"));
  bar.Add(FindButton(state));
  if (HasMessageButton(state)) bar.Add(MessageButton(state));
  bar.Add(PageButton(state, "p=p", 161, "prefs.gif"));
  if (IsAdministrator(state)) bar.Add(PageButton(state, "p=a", 162, "admin.gif"));
  return bar;
}

}  // namespace orlune
