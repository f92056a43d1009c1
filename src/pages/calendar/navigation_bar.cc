#include "pages/calendar/navigation_bar.h"

#include "base/dates.h"
#include "html/links.h"
#include "model/calendar.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html DateLink(const Visit& visit, Date date) {
  return Html("{}?cd={}", Attribute(visit.Context.Hosting.ScriptName),
              Attribute(FormatShortDate(visit.Context.Regional, date)));
}

Html ColourMappingLink(const Visit& visit) {
  const std::string_view hint = LoadText(visit, Text::kShowColourMapping);
  return Html(
      "<A HREF=\"javascript:void(0);\" "
      "onClick=\"javascript:window.open('{}?p=p&act=gcols', '', 'width=180,height=250,left='"
      "+(screen.availWidth-210)+',top='+(screen.availHeight-280)+"
      "',scrollbars=1');\" TITLE=\"{}\" {}>{}</A>&nbsp;&nbsp;",
      ScriptAttribute(visit.Context.Hosting.ScriptName), Attribute(hint), StatusHandler(hint),
      Content(LoadText(visit, Text::kColours)));
}

struct StepHints {
  Text Back;
  Text Forward;
};

StepHints HintsOf(ViewMode mode) {
  if (mode == ViewMode::kDay) return {Text::kPreviousDay, Text::kNextDay};
  if (mode == ViewMode::kWeek) return {Text::kPreviousWeek, Text::kNextWeek};
  return {Text::kPreviousMonth, Text::kNextMonth};
}

Html StepButtons(const Visit& visit, ViewMode mode) {
  const StepHints hints = HintsOf(mode);
  const std::string today = FormatShortDate(visit.Context.Regional, visit.Context.Today);
  Html buttons = ImageLink(visit, DateLink(visit, Stepped(visit.Context.Visitor.CurrentDate, mode, -1)),
                           LoadText(visit, hints.Back), "cal_back.gif");
  buttons.Add(ImageLink(visit, DateLink(visit, visit.Context.Today), LoadText(visit, Text::kToday, {today}),
                        "cal_today.gif"));
  buttons.Add(ImageLink(visit, DateLink(visit, Stepped(visit.Context.Visitor.CurrentDate, mode, 1)),
                        LoadText(visit, hints.Forward), "cal_forward.gif"));
  buttons.Add("&nbsp;&nbsp;");
  return buttons;
}

bool HasMessageButton(const Visit& visit) {
  return visit.Context.Visitor.IsLoggedIn() && !visit.Context.Hosting.NoMessaging;
}

Statement UnreadMessagesQuery(const Visit& visit) {
  return Statement("SELECT Count(MessageID) AS MsgCount FROM Messages WHERE Recipient = '{}' AND Viewed = No",
                   visit.Context.Visitor.LoginName);
}

int UnreadMessages(const Visit& visit) {
  const auto row = OpenQuery(visit.Database, UnreadMessagesQuery(visit));
  return row->Next() ? NumberOf(row->Get(row->Column("MsgCount"))).value_or(0) : 0;
}

Html MessageButton(const Visit& visit) {
  std::string text(LoadText(visit, Text::kMessageList));
  const int unread = UnreadMessages(visit);
  if (unread > 0) text += LoadText(visit, Text::kNewMessageCount, {std::to_string(unread)});
  return ImageLink(visit, PageLink(visit, "p=m"), text,
                   unread > 0 ? Markup("msg_newmail.gif") : Markup("msg_list.gif"));
}

Html FindButton(const Visit& visit) {
  return PageButton(visit, "p=e&act=find", Text::kFindEvent, "event_find.gif");
}

}  // namespace

void AnnounceNavigationBar(const Visit& visit) {
  if (HasMessageButton(visit)) visit.Database.Announce(UnreadMessagesQuery(visit));
}

Html NavigationBar(const Visit& visit, ViewMode mode) {
  Html bar;
  if (IsGroupView(visit.Context.Visitor.CalName)) bar.Add(ColourMappingLink(visit));
  bar.Add(StepButtons(visit, mode));
  if (!visit.Context.Visitor.IsLoggedIn()) return bar.Add(FindButton(visit));

  bar.Add(PageButton(visit, "p=e", Text::kNewEvent, "event_new.gif"));
  bar.Add(FindButton(visit));
  if (HasMessageButton(visit)) bar.Add(MessageButton(visit));
  bar.Add(PageButton(visit, "p=p", Text::kPreferences, "prefs.gif"));
  if (visit.Context.Visitor.IsAdministrator())
    bar.Add(PageButton(visit, "p=a", Text::kAdministration, "admin.gif"));
  return bar;
}

}  // namespace orlune
