#include "pages/calendar/view_content.h"

#include <optional>

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

/// The events of the calendars `viewed`, and of the groups that they belong to.
Query<std::vector<OL_Event>> EventsQuery(const PageContext& context, std::vector<std::string> viewed,
                                         Period period) {
  const std::vector<std::string>& groups = context.Visitor.MemberOfGroups;
  viewed.insert(viewed.end(), groups.begin(), groups.end());
  return EventsOfPeriod(context.Regional, "", viewed, period.First, period.Last);
}

}  // namespace

ViewContent LoadView(Connection& database, const PageContext& context, ViewMode mode) {
  const Visitor& visitor = context.Visitor;
  const Week week(visitor.FirstDayOfWeek, visitor.Weekend);
  const Period period = ShownPeriod(visitor.CurrentDate, mode, week);
  const bool isGroupView = IsGroupView(visitor.CalName);

  auto [name, unreadMessages, groupViews, calendars, days, group, events] =
      Ask(database, CalendarNameQuery(context),
          HasMessageButton(context) ? UnreadMessageCount(visitor.LoginName) : Query<int>(),
          GroupViewsVisibleTo(visitor.LoginName), CalendarsVisibleTo(visitor.LoginName),
          context.Hosting.Sharing ? EventDaysOfPeriod(context.Regional, period.First, period.Last)
                                  : Query<DaysOfEvents>(),
          isGroupView ? MembersOf(visitor.CalName.substr(1)) : Query<GroupViewMembers>(),
          isGroupView ? Query<std::vector<OL_Event>>() : EventsQuery(context, {visitor.CalName}, period));
  if (isGroupView) events = Ask(database, EventsQuery(context, group.Calendars, period));
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
