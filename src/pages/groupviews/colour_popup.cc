#include "pages/groupviews/colour_popup.h"

#include <span>
#include <string>
#include <vector>

#include "html/page_frame.h"
#include "model/calendar.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"
#include "store/group_views.h"

namespace orlune {
namespace {

struct MemberLine {
  std::string Label;
  std::string BackGround;
  std::string ForeGround;
};

std::vector<MemberLine> LoadMemberLines(Connection& database, const Visitor& visitor) {
  if (!IsGroupView(visitor.CalName)) return {};
  const GroupViewMembers group = Ask(database, MembersOf(visitor.CalName.substr(1)));
  std::vector<MemberLine> lines;
  std::vector<Query<std::optional<std::string>>> labels;
  for (std::size_t place = 0; place < group.Calendars.size(); ++place) {
    const std::string& member = group.Calendars[place];
    if (member.empty()) continue;
    lines.push_back({member, std::string(group.BackGroundAt(place)), std::string(group.ForeGroundAt(place))});
    labels.push_back(FriendlyNameOf(member));
  }
  auto line = lines.begin();
  for (std::optional<std::string>& label :
       AskAll(database, std::span<const Query<std::optional<std::string>>>(labels))) {
    if (label) line->Label = std::move(*label);
    ++line;
  }
  return lines;
}

HtmlPart Colour(std::string_view text) {
  return Attribute(IsColour(text) ? text : std::string_view());
}

Html WriteMemberLines(const PageContext& context, std::span<const MemberLine> lines) {
  Html page = PageHead(context, LoadText(context, Text::kColours));
  for (const MemberLine& line : lines) {
    page.Add("<P ALIGN=CENTER STYLE=\"background:{}; color:{}\">{}", Colour(line.BackGround),
             Colour(line.ForeGround), Content(line.Label));
  }
  page.Add(PageFoot(context));
  return page;
}

}  // namespace

void ShowColourPopup(Visit& visit) {
  Html page = WriteMemberLines(visit.Context, LoadMemberLines(visit.Database, visit.Context.Visitor));
  page.Add(AlertScript(visit.Alerts));
  WritePage(visit, std::move(page));
}

}  // namespace orlune
