#include "pages/groupviews/group_view_page.h"

#include "base/lists.h"
#include "base/text.h"
#include "html/page_frame.h"
#include "pages/groupviews/colour_popup.h"
#include "pages/groupviews/group_view.h"
#include "pages/groupviews/group_view_form.h"
#include "request/component_state.h"
#include "request/rights.h"
#include "request/texts.h"

namespace orlune {
namespace {

void Refuse(ComponentState& state) {
  WritePage(state, ErrorPage(state, LoadText(state, 850)));
}

std::string_view RequestedId(const Request& request) {
  const std::string_view posted = request.FormField("id");
  return posted.empty() ? request.QueryParameter("id") : posted;
}

std::optional<GroupView> FindView(const ComponentState& state, std::string_view id) {
  const auto number = WholeNumber(id);
  return number ? LoadGroupView(*state.Database, *number) : std::nullopt;
}

bool IsOwn(const ComponentState& state, const GroupView& view) {
  return IsLoggedIn(state) && EqualIgnoringCase(view.Owner, state.LoginName);
}

std::string PostedColour(const Request& request, const std::string& field) {
  const std::string_view colour = request.FormField(field);
  return IsColour(colour) ? std::string(colour) : "";
}

GroupData PostedMembers(const Request& request) {
  GroupData members;
  ForEachItem(request.FormField("cals"), [&](std::string_view calendar) {
    if (calendar.empty()) return;
    const std::string name(calendar);
    members.Calendars.push_back(name);
    members.BackGround.push_back(PostedColour(request, name + "BG"));
    members.ForeGround.push_back(PostedColour(request, name + "FG"));
  });
  return members;
}

/// The posted view; `stored` is what it replaces.
GroupView PostedView(const ComponentState& state, const std::optional<GroupView>& stored) {
  const Request& request = *state.Context.Request;
  GroupView view = stored.value_or(GroupView{});
  if (!stored) {
    view.Owner = state.LoginName;
    view.Name = request.FormField("intname");
  }
  view.FriendlyName = request.FormField("name");
  if (view.Name.empty()) view.Name = UnusedViewName(*state.Database, view.FriendlyName);
  view.Members = PostedMembers(request);
  return view;
}

/// The number of the text that tells why `view` cannot be stored; nothing when it can.
std::optional<int> Refusal(const GroupView& view) {
  if (view.FriendlyName.empty()) return 851;
  if (view.FriendlyName.find('"') != std::string::npos) return 852;
  if (view.Members.Calendars.empty()) return 870;
  return std::nullopt;
}

void ShowList(ComponentState& state) {
  state.Context.Response->Redirect(state.ScriptName + "?p=p&act=groups");
}

void Save(ComponentState& state, const std::optional<GroupView>& stored) {
  GroupView view = PostedView(state, stored);
  if (const auto refusal = Refusal(view)) {
    AddAlert(state, *refusal);
    return ShowGroupViewForm(state, view, FormStep::kColours);
  }
  const int id = StoreGroupView(*state.Database, view);
  if (state.Context.Request->FormField("return") != "yes") return ShowList(state);
  ShowGroupViewForm(state, LoadGroupView(*state.Database, id).value_or(view), FormStep::kColours);
}

void Delete(ComponentState& state, const std::optional<GroupView>& stored) {
  if (stored) DeleteGroupView(*state.Database, *stored);
  ShowList(state);
}

}  // namespace

void ShowGroupViewPage(ComponentState& state) {
  const std::string_view action = state.Context.Request->QueryParameter("act");
  if (action == "gcols") return ShowColourPopup(state);
  const bool isChange = action == "gsave" || action == "gdelete";
  if (isChange && !IsLoggedIn(state)) return Refuse(state);

  const std::string_view id = RequestedId(*state.Context.Request);
  const auto stored = FindView(state, id);
  if (stored && !IsOwn(state, *stored)) return Refuse(state);
  const bool isGone = !id.empty() && !stored;
  if (isChange && isGone) return ShowList(state);
  if (action == "gsave") return Save(state, stored);
  if (action == "gdelete") return Delete(state, stored);
  ShowGroupViewForm(state, stored.value_or(GroupView{}),
                    action == "gadd" ? FormStep::kMembers : FormStep::kColours);
}

}  // namespace orlune
