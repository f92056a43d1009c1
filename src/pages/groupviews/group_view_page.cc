#include "pages/groupviews/group_view_page.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/lists.h"
#include "base/text.h"
#include "html/page_frame.h"
#include "pages/groupviews/colour_popup.h"
#include "pages/groupviews/group_view_form.h"
#include "request/field_limits.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/group_views.h"

namespace orlune {
namespace {

void Refuse(Visit& visit) {
  WritePage(visit, ErrorPage(visit.Context, LoadText(visit.Context, Text::kNoRights)));
}

void ShowForm(Visit& visit, GroupView view, FormStep step) {
  const auto content = LoadGroupViewForm(visit.Database, visit.Context.Visitor, std::move(view), step);
  FinishFormPage(visit, WriteGroupViewForm(visit.Context, content));
}

std::string_view RequestedId(const Request& request) {
  const std::string_view posted = request.FormField("id");
  return posted.empty() ? request.QueryParameter("id") : posted;
}

std::optional<GroupView> LoadView(Connection& database, std::string_view id) {
  const auto number = WholeNumber(id);
  return number ? Ask(database, GroupViewWithId(*number)) : std::nullopt;
}

bool IsOwn(const Visitor& visitor, const GroupView& view) {
  return visitor.IsLoggedIn() && EqualIgnoringCase(view.Owner, visitor.LoginName);
}

std::string PostedColour(const Request& request, const std::string& field) {
  const std::string_view colour = request.FormField(field);
  return IsColour(colour) ? std::string(colour) : "";
}

GroupViewMembers PostedMembers(const Request& request) {
  GroupViewMembers members;
  ForEachItem(request.FormField("cals"), [&](std::string_view calendar) {
    if (calendar.empty()) return;
    const std::string name(calendar);
    members.Calendars.push_back(name);
    members.BackGround.push_back(PostedColour(request, name + "BG"));
    members.ForeGround.push_back(PostedColour(request, name + "FG"));
  });
  return members;
}

/// `stored` is the view to be replaced; nothing for a new one.
GroupView PostedView(const Visit& visit, const std::optional<GroupView>& stored) {
  const Request& request = visit.Request;
  GroupView view = stored.value_or(GroupView{});
  if (!stored) {
    view.Owner = visit.Context.Visitor.LoginName;
    view.Name = request.FormField("intname");
  }
  view.FriendlyName = request.FormField("name");
  if (view.Name.empty()) view.Name = UnusedGroupViewName(visit.Database, view.FriendlyName);
  view.Members = PostedMembers(request);
  return view;
}

/// Why `view` is invalid; nothing when it is valid.
std::optional<Text> Refusal(const GroupView& view) {
  if (view.FriendlyName.empty()) return Text::kNameMissing;
  if (view.FriendlyName.find('"') != std::string::npos) return Text::kNameHasQuotes;
  if (view.Members.Calendars.empty()) return Text::kMemberCalendarMissing;
  return std::nullopt;
}

void ShowList(Visit& visit) {
  visit.Response.Redirect(visit.Context.Hosting.ScriptName + "?p=p&act=groups");
}

void Save(Visit& visit, const std::optional<GroupView>& stored) {
  GroupView view = PostedView(visit, stored);
  const GroupView before = stored.value_or(GroupView{});
  if (const auto refusal = Refusal(view)) AddAlert(visit, *refusal);
  CheckLengths(visit, {{Text::kGroupViewName, view.FriendlyName, 50, before.FriendlyName},
                       {Text::kGroupViewInternalName, visit.Request.FormField("intname"), 50, before.Name}});
  CheckTextLength(visit, Text::kGroupViewCalendars, JoinList(view.Members.Calendars),
                  JoinList(before.Members.Calendars));
  if (!visit.Alerts.empty()) return ShowForm(visit, std::move(view), FormStep::kColours);
  const int id = StoreGroupView(visit.Database, view);
  if (visit.Request.FormField("return") != "yes") return ShowList(visit);
  ShowForm(visit, Ask(visit.Database, GroupViewWithId(id)).value_or(view), FormStep::kColours);
}

void Delete(Visit& visit, const std::optional<GroupView>& stored) {
  if (stored && stored->Id) DeleteGroupView(visit.Database, *stored->Id);
  ShowList(visit);
}

}  // namespace

bool IsGroupViewAction(std::string_view action) {
  constexpr std::array<std::string_view, 5> kActions{"groups", "gsave", "gdelete", "gadd", "gcols"};
  return std::find(kActions.begin(), kActions.end(), action) != kActions.end();
}

void ShowGroupViewPage(Visit& visit) {
  const std::string_view action = visit.Request.QueryParameter("act");
  if (action == "gcols") return ShowColourPopup(visit);
  const bool isChange = action == "gsave" || action == "gdelete";
  if (isChange && !visit.Context.Visitor.IsLoggedIn()) return Refuse(visit);

  const std::string_view id = RequestedId(visit.Request);
  const auto stored = LoadView(visit.Database, id);
  if (stored && !IsOwn(visit.Context.Visitor, *stored)) return Refuse(visit);
  const bool isGone = !id.empty() && !stored;
  if (isChange && isGone) return ShowList(visit);
  if (action == "gsave") return Save(visit, stored);
  if (action == "gdelete") return Delete(visit, stored);
  ShowForm(visit, stored.value_or(GroupView{}), action == "gadd" ? FormStep::kMembers : FormStep::kColours);
}

}  // namespace orlune
