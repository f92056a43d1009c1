#include "pages/groupviews/group_view_form.h"

#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "base/lists.h"
#include "base/name_set.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "pages/groupviews/colour_list.h"
#include "request/texts.h"
#include "store/calendars.h"
#include "store/group_views.h"

namespace orlune {
namespace {

Html ToolBar(const PageContext& context) {
  Html bar = PageButton(context, "p=c", Text::kViewCalendar, "cal.gif");
  bar.Add(PageButton(context, "p=p", Text::kEditPreferences, "prefs.gif"));
  if (!context.Hosting.NoLoginChange)
    bar.Add(PageButton(context, "p=p&act=login", Text::kChangePassword, "pref_passwd.gif"));
  return bar;
}

Html ViewRow(const PageContext& context, const GroupViewFormContent& content) {
  Html row(
      "<TR><TD VALIGN=TOP>{}</TD><TD VALIGN=TOP>"
      "<SELECT NAME=\"id\" onChange=\"javascript:document.acForm.submit();\">"
      "<OPTION VALUE=\"\"{}>&lt;{}&gt;",
      Content(LoadText(context, Text::kSavedGroupViews)), SelectedWhen(!content.View.Id),
      Content(LoadText(context, Text::kNewGroupView)));
  for (const GroupViewChoice& saved : content.SavedViews) {
    row.Add("<OPTION VALUE=\"{}\"{}>{}", saved.Id, SelectedWhen(content.View.Id == saved.Id),
            OptionLabel(saved.FriendlyName));
  }
  return row.Add("</SELECT></TD></TR>");
}

Html NameRow(const PageContext& context, const GroupView& view) {
  return FormRow(
      context, Text::kGroupViewName,
      Html("{}{}", TextInput(context, "name", view.FriendlyName), HiddenField("intname", view.Name)));
}

void AddKeptColour(Html& page, std::string_view calendar, Markup kind, std::string_view colour) {
  page.Add("<INPUT TYPE=hidden NAME=\"{}{}\" VALUE=\"{}\">", Attribute(calendar), kind, Attribute(colour));
}

void AddMemberStep(Html& page, const PageContext& context, const GroupViewFormContent& content) {
  const GroupViewMembers& members = content.View.Members;
  const NameSet names(JoinList(members.Calendars));
  page.Add("<TD VALIGN=TOP>{}<BR>{}</TD><TD><SELECT MULTIPLE SIZE=5 NAME=\"cals\">",
           Content(LoadText(context, Text::kGroupViewCalendars)),
           Content(LoadText(context, Text::kSelectionHint)));
  AddCalendarOptions(page, content.Calendars, [&](std::string_view name) { return names.Contains(name); });
  for (std::size_t place = 0; place < members.Calendars.size(); ++place) {
    AddKeptColour(page, members.Calendars[place], "BG", members.BackGroundAt(place));
    AddKeptColour(page, members.Calendars[place], "FG", members.ForeGroundAt(place));
  }
  page.Add("</SELECT>{}</TD></TR></TABLE>", HiddenField("return", "yes"));
}

Html PaintMembers(const GroupViewFormContent& content) {
  std::map<std::string, std::string> shown;
  for (const Calendar& member : content.Calendars) shown.emplace(ToLower(member.Name), member.Name);
  std::vector<std::string> painted;
  for (const std::string& member : content.View.Members.Calendars) {
    if (const auto cell = shown.find(ToLower(member)); cell != shown.end()) painted.push_back(cell->second);
  }
  return PaintScript(painted);
}

void AddColourStep(Html& page, const PageContext& context, const GroupViewFormContent& content) {
  const GroupViewMembers& members = content.View.Members;
  page.Add("<TD COLSPAN=2><TABLE WIDTH=100%><TR><TD>{}</TD><TD>{}</TD><TD>{}</TD></TR>",
           Content(LoadText(context, Text::kGroupViewCalendars)),
           Content(LoadText(context, Text::kBackgroundColour)),
           Content(LoadText(context, Text::kForegroundColour)));
  const MemberPlaces places(members);
  for (const Calendar& member : content.Calendars) {
    const std::size_t place = places.PlaceOf(member.Name);
    page.Add("<TR><TD ID=\"{}\">{}{}</TD><TD>{}</TD><TD>{}</TD></TR>", Attribute(member.Name),
             Content(member.FriendlyName), HiddenField("cals", member.Name),
             ColourList(context, member.Name, ColourKind::kBackground, members.BackGroundAt(place)),
             ColourList(context, member.Name, ColourKind::kForeground, members.ForeGroundAt(place)));
  }
  page.Add("</TABLE>{}{}", HiddenField("return", "no"), PaintMembers(content));
}

Html ButtonRow(const PageContext& context, bool isStored, bool hasColours) {
  Html row("<TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">{}&nbsp;&nbsp;",
           ActionButton(context, LoadText(context, Text::kSaveGroupView), Html("p=p&act=gsave")));
  if (hasColours)
    row.Add("{}&nbsp;&nbsp;",
            ActionButton(context, LoadText(context, Text::kAddCalendars), Html("p=p&act=gadd")));
  if (isStored)
    row.Add(ActionButton(context, LoadText(context, Text::kDeleteGroupView), Html("p=p&act=gdelete")));
  return row;
}

}  // namespace

GroupViewFormContent LoadGroupViewForm(Connection& database, const Visitor& visitor, GroupView view,
                                       FormStep step) {
  GroupViewFormContent content{std::move(view), step, {}, {}};
  const std::vector<std::string>& members = content.View.Members.Calendars;
  if (!content.View.Id || members.empty()) content.Step = FormStep::kMembers;
  std::tie(content.SavedViews, content.Calendars) = Ask(
      database, GroupViewsOwnedBy(visitor.LoginName),
      content.Step == FormStep::kColours ? CalendarsNamed(members) : CalendarsVisibleTo(visitor.LoginName));
  return content;
}

Html WriteGroupViewForm(const PageContext& context, const GroupViewFormContent& content) {
  const bool hasColours = content.Step == FormStep::kColours;
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(
      TitleBarOpen("70", Html("{}", Content(LoadText(context, Text::kGroupViewsTitle))), ToolBar(context)));
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(context, "p=p&act=groups"));
  page.Add(FormTableOpen(context));
  page.Add(ViewRow(context, content));
  page.Add(NameRow(context, content.View));
  page.Add("<TR>");
  if (hasColours) {
    AddColourStep(page, context, content);
  } else {
    AddMemberStep(page, context, content);
  }
  page.Add(ButtonRow(context, content.View.Id.has_value(), hasColours));
  return page;
}

}  // namespace orlune
