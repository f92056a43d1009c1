#include "pages/groupviews/colour_popup.h"

#include "html/page_frame.h"
#include "model/calendar.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/field.h"
#include "store/group_views.h"

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

void AddMemberLines(Html& page, const Visit& visit) {
  if (!IsGroupView(visit.Context.Visitor.CalName)) return;
  const GroupViewMembers group = Ask(visit.Database, MembersOf(visit.Context.Visitor.CalName.substr(1)));
  for (std::size_t place = 0; place < group.Calendars.size(); ++place) {
    const std::string& member = group.Calendars[place];
    if (member.empty()) continue;
    page.Add("<P ALIGN=CENTER STYLE=\"background:{}; color:{}\">{}", Colour(group.BackGroundAt(place)),
             Colour(group.ForeGroundAt(place)), Content(MemberLabel(visit.Database, member)));
  }
}

}  // namespace

void ShowColourPopup(Visit& visit) {
  Html page = PageHead(visit, LoadText(visit, Text::kColours));
  AddMemberLines(page, visit);
  page.Add(PageFoot(visit));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
