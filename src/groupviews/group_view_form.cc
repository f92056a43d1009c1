#include "groupviews/group_view_form.h"

#include <map>
#include <string>
#include <vector>

#include "component/component_state.h"
#include "data/calendar_options.h"
#include "data/database_access.h"
#include "data/field.h"
#include "frame/form_parts.h"
#include "frame/links.h"
#include "frame/lists.h"
#include "frame/name_set.h"
#include "frame/option_label.h"
#include "frame/page_frame.h"
#include "frame/text.h"
#include "frame/texts.h"
#include "groupviews/colour_list.h"

namespace orlune {
namespace {

Html ToolBar(const ComponentState& state) {
  Html bar = PageButton(state, "p=c", 163, "cal.gif");
  bar.Add(PageButton(state, "p=p", 166, "prefs.gif"));
  if (!state.NoLoginChange) bar.Add(PageButton(state, "p=p&act=login", 165, "pref_passwd.gif"));
  return bar;
}

void AddViewRow(Html& page, const ComponentState& state, const GroupView& view) {
  page.Add(
      "<TR><TD VALIGN=TOP>{}</TD><TD VALIGN=TOP>"
      "<SELECT NAME=\"id\" onChange=\"javascript:document.acForm.submit();\">"
      "<OPTION VALUE=\"\"{}>&lt;{}&gt;",
      Content(LoadText(state, 661)), SelectedWhen(!view.Id), Content(LoadText(state, 662)));
  const auto rows = OpenQuery(*state.Database, Statement("SELECT GroupID, Name, FriendlyName FROM GroupViews "
                                                         "WHERE (Owner = '{}') ORDER BY FriendlyName",
                                                         state.LoginName));
  const int groupId = rows->Column("GroupID");
  const int friendlyName = rows->Column("FriendlyName");
  while (rows->Next()) {
    const int id = NumberOf(rows->Get(groupId)).value_or(0);
    page.Add("<OPTION VALUE=\"{}\"{}>{}", id, SelectedWhen(view.Id == id),
             OptionLabel(TextOf(rows->Get(friendlyName))));
  }
  page.Add("</SELECT></TD></TR>");
}

Html NameRow(const ComponentState& state, const GroupView& view) {
  return Html("<TR><TD>{}</TD><TD>{}{}</TD></TR>", Content(LoadText(state, 663)),
              TextInput(state, "name", view.FriendlyName), HiddenField("intname", view.Name));
}

void AddKeptColour(Html& page, std::string_view calendar, Markup kind, std::string_view colour) {
  page.Add("<INPUT TYPE=hidden NAME=\"{}{}\" VALUE=\"{}\">", Attribute(calendar), kind, Attribute(colour));
}

void AddMemberStep(Html& page, const ComponentState& state, const GroupData& members) {
  const NameSet names(JoinList(members.Calendars));
  page.Add("<TD VALIGN=TOP>{}<BR>{}</TD><TD><SELECT MULTIPLE SIZE=5 NAME=\"cals\">",
           Content(LoadText(state, 665)), Content(LoadText(state, 792)));
  const auto rows = OpenQuery(*state.Database,
                              Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars "
                                        "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
                                        state.LoginName));
  AddCalendarOptions(page, *rows, [&](std::string_view name) { return names.Contains(name); });
  for (std::size_t place = 0; place < members.Calendars.size(); ++place) {
    AddKeptColour(page, members.Calendars[place], "BG", members.BackGroundAt(place));
    AddKeptColour(page, members.Calendars[place], "FG", members.ForeGroundAt(place));
  }
  page.Add("</SELECT>{}</TD></TR></TABLE>", HiddenField("return", "yes"));
}

void AddColourStep(Html& page, const ComponentState& state, const GroupData& members) {
  page.Add("<TD COLSPAN=2><TABLE WIDTH=100%><TR><TD>{}</TD><TD>{}</TD><TD>{}</TD></TR>",
           Content(LoadText(state, 665)), Content(LoadText(state, 683)), Content(LoadText(state, 684)));
  const auto rows =
      OpenQuery(*state.Database,
                Statement("SELECT Name, FriendlyName FROM Calendars WHERE Name IN ({}) ORDER BY FriendlyName",
                          QuotedList(members.Calendars)));
  const int nameColumn = rows->Column("Name");
  const int friendlyName = rows->Column("FriendlyName");
  std::map<std::string, std::string> shown;
  while (rows->Next()) {
    const std::string_view name = TextOf(rows->Get(nameColumn));
    page.Add("<TR><TD ID=\"{}\">{}{}</TD><TD>{}</TD><TD>{}</TD></TR>", Attribute(name),
             Content(TextOf(rows->Get(friendlyName))), HiddenField("cals", name),
             ColourList(state, name, ColourKind::kBackground, members.BackGroundOf(name)),
             ColourList(state, name, ColourKind::kForeground, members.ForeGroundOf(name)));
    shown.emplace(ToLower(name), name);
  }
  page.Add("</TABLE>{}", HiddenField("return", "no"));
  std::vector<std::string> painted;
  for (const std::string& member : members.Calendars) {
    if (const auto cell = shown.find(ToLower(member)); cell != shown.end()) painted.push_back(cell->second);
  }
  page.Add(PaintScript(painted));
}

Html ButtonRow(const ComponentState& state, bool isStored, bool hasColours) {
  Html row("<TR><TD COLSPAN=6 ALIGN=CENTER CLASS=\"captions\">{}&nbsp;&nbsp;",
           ActionButton(state, LoadText(state, 690), Html("p=p&act=gsave")));
  if (hasColours) row.Add("{}&nbsp;&nbsp;", ActionButton(state, LoadText(state, 691), Html("p=p&act=gadd")));
  if (isStored) row.Add(ActionButton(state, LoadText(state, 692), Html("p=p&act=gdelete")));
  return row;
}

}  // namespace

void ShowGroupViewForm(ComponentState& state, const GroupView& view, FormStep step) {
  const bool hasColours = step == FormStep::kColours && view.Id && !view.Members.Calendars.empty();
  Html page = PageHead(state, state.ProductTitle);
  page.Add(TitleBarOpen("70", Html("{}", Content(LoadText(state, 660))), ToolBar(state)));
  page.Add("<FORM METHOD=post ACTION=\"{}\" NAME=\"acForm\">", PageLink(state, "p=p&act=groups"));
  page.Add(FormTableOpen(state));
  AddViewRow(page, state, view);
  page.Add(NameRow(state, view));
  page.Add("<TR>");
  if (hasColours) {
    AddColourStep(page, state, view.Members);
  } else {
    AddMemberStep(page, state, view.Members);
  }
  page.Add(ButtonRow(state, view.Id.has_value(), hasColours));
  FinishFormPage(state, std::move(page));
}

}  // namespace orlune
