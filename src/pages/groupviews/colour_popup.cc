#include "pages/groupviews/colour_popup.h"

#include "html/page_frame.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/calendar_list.h"
#include "store/database_access.h"
#include "store/field.h"
#include "store/group_data.h"

namespace orlune {
namespace {

/// The name that a calendar is shown under; its internal name when it is gone.
std::string MemberLabel(Connection& database, std::string_view name) {
  const auto row =
      OpenQuery(database, Statement("SELECT FriendlyName FROM Calendars WHERE Name = '{}'", name));
  return std::string(row->Next() ? TextOf(row->Get(row->Column("FriendlyName"))) : name);
}

HtmlPart Colour(std::string_view text) {
  return Attribute(IsColour(text) ? text : std::string_view());
}

void AddMemberLines(Html& page, const ComponentState& state) {
  if (!IsGroupView(state.CalName)) return;
  const GroupData group = GetGroupData(*state.Database, state.CalName.substr(1));
  for (std::size_t place = 0; place < group.Calendars.size(); ++place) {
    const std::string& member = group.Calendars[place];
    if (member.empty()) continue;
    page.Add("<P ALIGN=CENTER STYLE=\"background:{}; color:{}\">{}", Colour(group.BackGroundAt(place)),
             Colour(group.ForeGroundAt(place)), Content(MemberLabel(*state.Database, member)));
  }
}

}  // namespace

void ShowColourPopup(ComponentState& state) {
  Html page = PageHead(state, LoadText(state, 694));
  AddMemberLines(page, state);
  page.Add(PageFoot(state));
  page.Add(AlertScript(state));
  WritePage(state, std::move(page));
}

}  // namespace orlune
