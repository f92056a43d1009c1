#include "pages/calendar/view_content.h"

#include <optional>
#include <span>
#include <tuple>

#include "base/week.h"
#include "pages/calendar/navigation_bar.h"
#include "store/calendars.h"
#include "store/event_days.h"
#include "store/event_store.h"
#include "store/group_views.h"
#include "store/messages.h"

namespace orlune {
namespace {

Query<std::optional<std::string>> CalendarNameQuery(const PageContext& context) {
  const std::string& viewed = context.Visitor.CalName;
  if (!context.Hosting.ShowTitle) return {};
  return IsGroupView(viewed) ? GroupViewTitle(viewed.substr(1)) : FriendlyNameOf(viewed);
}

/// The calendars `viewed`, and the groups that the visitor belongs to.
std::vector<std::string> SourcesOf(const PageContext& context, std::vector<std::string> viewed) {
  const std::vector<std::string>& groups = context.Visitor.MemberOfGroups;
  viewed.insert(viewed.end(), groups.begin(), groups.end());
  return viewed;
}

Query<std::vector<OL_Event>> EventsQuery(const PageContext& context, std::span<const std::string> sources,
                                         Period period) {
  return EventsOfPeriod(context.Regional, "", sources, period.First, period.Last);
}

Query<DaysOfEvents> DaysQuery(const PageContext& context, std::span<const std::string> sources,
                              Period period) {
  if (!context.Hosting.Sharing) return {};
  return EventDaysOfPeriod(context.Regional, sources, period.First, period.Last);
}

}  // namespace

ViewContent LoadView(Connection& database, const PageContext& context, ViewMode mode) {
  const Visitor& visitor = context.Visitor;
  const Week week(visitor.FirstDayOfWeek, visitor.Weekend);
  const Period period = ShownPeriod(visitor.CurrentDate, mode, week);
  const bool isGroupView = IsGroupView(visitor.CalName);

  const std::vector<std::string> own = SourcesOf(context, {visitor.CalName});

  auto [name, unreadMessages, groupViews, calendars, group, events, days] =
      Ask(database, CalendarNameQuery(context),
          HasMessageButton(context) ? UnreadMessageCount(visitor.LoginName) : Query<int>(),
          GroupViewsVisibleTo(visitor.LoginName), CalendarsVisibleTo(visitor.LoginName),
          isGroupView ? MembersOf(visitor.CalName.substr(1)) : Query<GroupViewMembers>(),
          isGroupView ? Query<std::vector<OL_Event>>() : EventsQuery(context, own, period),
          isGroupView ? Query<DaysOfEvents>() : DaysQuery(context, own, period));
  if (isGroupView) {
    const std::vector<std::string> members = SourcesOf(context, group.Calendars);
    std::tie(events, days) =
        Ask(database, EventsQuery(context, members, period), DaysQuery(context, members, period));
  }
  std::erase_if(events, [&](const OL_Event& event) { return !visitor.Sees(event); });

  ViewContent content{context.Hosting.ShowTitle ? std::move(name).value_or(visitor.CalName) : "",
                      unreadMessages,
                      std::move(groupViews),
                      std::move(calendars),
                      std::move(group),
                      {}};
  content.Events.GetEventsForPeriod(std::move(events), content.Group, week, period.First, period.Last, days);
  return content;
}

}  // namespace orlune
