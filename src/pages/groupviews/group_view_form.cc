#include "pages/groupviews/group_view_form.h"

#include <map>
#include <string>
#include <vector>

#include "base/lists.h"
#include "base/name_set.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "html/option_label.h"
#include "html/page_frame.h"
#include "pages/groupviews/colour_list.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

Html ToolBar(const Visit& visit) {
  Html bar = PageButton(visit, "p=c", Text::kViewCalendar, "cal.gif");
  bar.Add(PageButton(visit, "p=p", Text::kEditPreferences, "prefs.gif"));
  if (!visit.Context.Hosting.NoLoginChange)
    bar.Add(PageButton(visit, "p=p&act=login", Text::kChangePassword, "pref_passwd.gif"));
  return bar;
}

void AddViewRow(Html& page, const Visit& visit, const GroupView& view) {
  page.Add(
      "<TR><TD VALIGN=TOP>{}</TD><TD VALIGN=TOP>"
      "<SELECT NAME=\"id\" onChange=\"javascript:document.acForm.submit();\">"
      "<OPTION VALUE=\"\"{}>&lt;{}&gt;",
      Content(LoadText(visit, Text::kSavedGroupViews)), SelectedWhen(!view.Id),
      Content(LoadText(visit, Text::kNewGroupView)));
  const auto rows = OpenQuery(visit.Database, Statement("SELECT GroupID, Name, FriendlyName FROM GroupViews "
                                                        "WHERE (Owner = '{}') ORDER BY FriendlyName",
                                                        visit.Context.Visitor.LoginName));
  const int groupId = rows->Column("GroupID");
  const int friendlyName = rows->Column("FriendlyName");
  while (rows->Next()) {
    const int id = NumberOf(rows->Get(groupId)).value_or(0);
    page.Add("<OPTION VALUE=\"{}\"{}>{}", id, SelectedWhen(view.Id == id),
             OptionLabel(TextOf(rows->Get(friendlyName))));
  }
  page.Add("</SELECT></TD></TR>");
}

Html NameRow(const Visit& visit, const GroupView& view) {
  return Html("<TR><TD>{}</TD><TD>{}{}</TD></TR>", Content(LoadText(visit, Text::kGroupViewName)),
              TextInput(visit, "name", view.FriendlyName), HiddenField("intname", view.Name));
}

void AddKeptColour(Html& page, std::string_view calendar, Markup kind, std::string_view colour) {
  page.Add("<INPUT TYPE=hidden NAME=\"{}{}\" VALUE=\"{}\">", Attribute(calendar), kind, Attribute(colour));
}

void AddMemberStep(Html& page, const Visit& visit, const GroupViewMembers& members) {
  const NameSet names(JoinList(members.Calendars));
  page.Add("<TD VALIGN=TOP>{}<BR>{}</TD><TD><SELECT MULTIPLE SIZE=5 NAME=\"cals\">",
           Content(LoadText(visit, Text::kGroupViewCalendars)),
           Content(LoadText(visit, Text::kSelectionHint)));
  const auto rows = OpenQuery(visit.Database,
                              Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars "
                                        "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
                                        visit.Context.Visitor.LoginName));
  AddCalendarOptions(page, *rows, [&](std::string_view name) { return names.Contains(name); });
  for (std::size_t place = 0; place < members.Calendars.size(); ++place) {
    AddKeptColour(page, members.Calendars[place], "BG", members.BackGroundAt(place));
    AddKeptColour(page, members.Calendars[place], "FG", members.ForeGroundAt(place));
  }
  page.Add("</SELECT>{}</TD></TR></TABLE>", HiddenField("return", "yes"));
}

void AddColourStep(Html& page, const Visit& visit, const GroupViewMembers& members) {
  page.Add("<TD COLSPAN=2><TABLE WIDTH=100%><TR><TD>{}</TD><TD>{}</TD><TD>{}</TD></TR>",
           Content(LoadText(visit, Text::kGroupViewCalendars)),
           Content(LoadText(visit, Text::kBackgroundColour)),
           Content(LoadText(visit, Text::kForegroundColour)));
  const auto rows =
      OpenQuery(visit.Database,
                Statement("SELECT Name, FriendlyName FROM Calendars WHERE Name IN ({}) ORDER BY FriendlyName",
                          QuotedList(members.Calendars)));
  const int nameColumn = rows->Column("Name");
  const int friendlyName = rows->Column("FriendlyName");
  std::map<std::string, std::string> shown;
  while (rows->Next()) {
    const std::string_view name = TextOf(rows->Get(nameColumn));
    page.Add("<TR><TD ID=\"{}\">{}{}</TD><TD>{}</TD><TD>{}</TD></TR>", Attribute(name),
             Content(TextOf(rows->Get(friendlyName))), HiddenField("cals", name),
             ColourList(visit, name, ColourKind::kBackground, members.BackGroundAt(members.PlaceOf(name))),
             ColourList(visit, name, ColourKind::kForeground, members.ForeGroundAt(members.PlaceOf(name))));
    shown.emplace(ToLower(name), name);
  }
  page.Add("</TABLE>{}", HiddenField("return", "no"));
  std::vector<std::string> painted;
  for (const std::string& member : members.Calendars) {
    if (const auto cell = shown.find(ToLower(member)); cell != shown.end()) painted.push_back(cell->second);
  }
  page.Add(PaintScript(painted));
}

Html ButtonRow(const Visit& visit, bool isStored, bool hasColours) {
  Html row("<TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">{}&nbsp;&nbsp;",
           ActionButton(visit, LoadText(visit, Text::kSaveGroupView), Html("p=p&act=gsave")));
  if (hasColours)
    row.Add("{}&nbsp;&nbsp;",
            ActionButton(visit, LoadText(visit, Text::kAddCalendars), Html("p=p&act=gadd")));
  if (isStored)
    row.Add(ActionButton(visit, LoadText(visit, Text::kDeleteGroupView), Html("p=p&act=gdelete")));
  return row;
}

}  // namespace

void ShowGroupViewForm(Visit& visit, const GroupView& view, FormStep step) {
  const bool hasColours = step == FormStep::kColours && view.Id && !view.Members.Calendars.empty();
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(visit, Text::kGroupViewsTitle))), ToolBar(visit)));
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(visit, "p=p&act=groups"));
  page.Add(FormTableOpen(visit));
  AddViewRow(page, visit, view);
  page.Add(NameRow(visit, view));
  page.Add("<TR>");
  if (hasColours) {
    AddColourStep(page, visit, view.Members);
  } else {
    AddMemberStep(page, visit, view.Members);
  }
  page.Add(ButtonRow(visit, view.Id.has_value(), hasColours));
  FinishFormPage(visit, std::move(page));
}

}  // namespace orlune
