#include "pages/calendar/navigation_bar.h"

#include "base/dates.h"
#include "html/links.h"
#include "model/calendar.h"
#include "request/texts.h"

namespace orlune {
namespace {

Html DateLink(const PageContext& context, Date date) {
  return Html("{}?cd={}", Attribute(context.Hosting.ScriptName),
              Attribute(FormatShortDate(context.Regional, date)));
}

Html ColourMappingLink(const PageContext& context) {
  const std::string_view hint = LoadText(context, Text::kShowColourMapping);
  return Html(
      "<A HREF=\"javascript:void(0);\" "
      "onClick=\"javascript:window.open('{}?p=p&act=gcols', '', 'width=180,height=250,left='"
      "+(screen.availWidth-210)+',top='+(screen.availHeight-280)+"
      "',scrollbars=1');\" TITLE=\"{}\" {}>{}</A>&nbsp;&nbsp;",
      ScriptAttribute(context.Hosting.ScriptName), Attribute(hint), StatusHandler(hint),
      Content(LoadText(context, Text::kColours)));
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

Html StepButtons(const PageContext& context, ViewMode mode) {
  const StepHints hints = HintsOf(mode);
  const std::string today = FormatShortDate(context.Regional, context.Today);
  Html buttons = ImageLink(context, DateLink(context, Stepped(context.Visitor.CurrentDate, mode, -1)),
                           LoadText(context, hints.Back), "cal_back.gif");
  buttons.Add(ImageLink(context, DateLink(context, context.Today), LoadText(context, Text::kToday, {today}),
                        "cal_today.gif"));
  buttons.Add(ImageLink(context, DateLink(context, Stepped(context.Visitor.CurrentDate, mode, 1)),
                        LoadText(context, hints.Forward), "cal_forward.gif"));
  buttons.Add("&nbsp;&nbsp;");
  return buttons;
}

Html MessageButton(const PageContext& context, int unread) {
  std::string text(LoadText(context, Text::kMessageList));
  if (unread > 0) text += LoadText(context, Text::kNewMessageCount, {std::to_string(unread)});
  return ImageLink(context, PageLink(context, "p=m"), text,
                   unread > 0 ? Markup("msg_newmail.gif") : Markup("msg_list.gif"));
}

Html FindButton(const PageContext& context) {
  return PageButton(context, "p=e&act=find", Text::kFindEvent, "event_find.gif");
}

}  // namespace

bool HasMessageButton(const PageContext& context) {
  return context.Visitor.IsLoggedIn() && !context.Hosting.NoMessaging;
}

Html NavigationBar(const PageContext& context, ViewMode mode, int unreadMessages) {
  Html bar;
  if (IsGroupView(context.Visitor.CalName)) bar.Add(ColourMappingLink(context));
  bar.Add(StepButtons(context, mode));
  if (!context.Visitor.IsLoggedIn()) return bar.Add(FindButton(context));

  bar.Add(PageButton(context, "p=e", Text::kNewEvent, "event_new.gif"));
  bar.Add(FindButton(context));
  if (HasMessageButton(context)) bar.Add(MessageButton(context, unreadMessages));
  bar.Add(PageButton(context, "p=p", Text::kPreferences, "prefs.gif"));
  if (context.Visitor.IsAdministrator())
    bar.Add(PageButton(context, "p=a", Text::kAdministration, "admin.gif"));
  return bar;
}

}  // namespace orlune
