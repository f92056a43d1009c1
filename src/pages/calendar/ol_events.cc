#include "pages/calendar/ol_events.h"

#include <algorithm>
#include <optional>

#include "base/dates.h"
#include "model/calendar.h"
#include "model/repetition_rule.h"
#include "request/visit.h"
#include "store/database_access.h"
#include "store/event_reader.h"
#include "store/field.h"
#include "store/group_views.h"

namespace orlune {
namespace {

Statement OwnersIn(const std::vector<std::string>& viewed, const std::vector<std::string>& groups) {
  std::vector<std::string> owners = viewed;
  owners.insert(owners.end(), groups.begin(), groups.end());
  return Statement("(Owner In ({})) ", QuotedList(owners));
}

Statement PeriodQuery(const RegionalSettings& regional, const Statement& ownerFilter, Date first, Date last) {
  const std::string from = FormatShortDate(regional, first);
  const std::string to = FormatShortDate(regional, last);
  return Statement(
      "SELECT * FROM Events WHERE {}AND ((Type = 'none' AND BeginDate >= DateValue('{}') "
      "AND BeginDate <= DateValue('{}')) "
      "OR (Type <> 'none' AND BeginDate <= DateValue('{}') "
      "AND EndDate >= DateValue('{}'))) ORDER BY BeginTime",
      ownerFilter, from, to, to, from);
}

}  // namespace

OL_Events::OL_Events(const Visit& visit)
    : visit_(&visit), week_(visit.Context.Visitor.FirstDayOfWeek, visit.Context.Visitor.Weekend) {}

void OL_Events::GetEventsForPeriod(Date first, Date last) {
  occurrences_.clear();
  Connection& database = visit_->Database;
  const bool isGroupView = IsGroupView(visit_->Context.Visitor.CalName);
  const GroupViewMembers group =
      isGroupView ? Ask(database, MembersOf(visit_->Context.Visitor.CalName.substr(1))) : GroupViewMembers();
  const std::vector<std::string> viewed =
      isGroupView ? group.Calendars : std::vector{visit_->Context.Visitor.CalName};

  const auto rows =
      OpenQuery(database, PeriodQuery(visit_->Context.Regional, OwnerFilter(viewed), first, last));
  const EventReader reader(*rows);
  while (rows->Next()) {
    OL_Event event = reader.Read(*rows);
    if (!IsShown(event)) continue;
    event.BackGround = group.BackGroundAt(group.PlaceOf(event.Owner));
    event.ForeGround = group.ForeGroundAt(group.PlaceOf(event.Owner));
    AddOccurrences(event, first, last);
  }
  isLoaded_ = true;
}

Statement OL_Events::OwnerFilter(const std::vector<std::string>& viewed) const {
  if (view_ == "lomat") return Statement("(EventType = 'loma' OR EventType = 'poissaolo') ");
  if (view_ == "julkaisut") return Statement("(Owner = 'Julkaisut') ");
  return OwnersIn(viewed, visit_->Context.Visitor.MemberOfGroups);
}

bool OL_Events::IsShown(const OL_Event& event) const {
  const std::string& suggestion = event.SuggestState;
  if (!suggestion.empty() && suggestion != "accepted" && suggestion != "-") return false;
  return !event.Private || visit_->Context.Visitor.IsViewingOwnCalendar();
}

void OL_Events::AddOccurrences(const OL_Event& event, Date first, Date last) {
  const bool isSingle = event.Type == "none";
  std::optional<RepetitionRule> rule;
  if (!isSingle && event.Type != "day") rule.emplace(event, week_);

  const Date end = std::min(last, isSingle ? event.BeginDate : event.EndDate);
  for (Date day = std::max(event.BeginDate, first); day <= end; day += std::chrono::days{1}) {
    if (rule && !rule->OccursOn(day)) continue;
    occurrences_.push_back(event);
    occurrences_.back().OccurrenceDate = day;
  }
}

std::size_t OL_Events::GetEventsForDay(Date date) {
  day_.clear();
  for (std::size_t index = 1; index <= Count(); ++index) {
    if (Item(index).OccurrenceDate == date) day_.push_back(index);
  }
  return day_.size();
}

const OL_Event* OL_Events::EventsByDay(std::size_t position) const {
  return isLoaded_ ? &Item(day_.at(position - 1)) : nullptr;
}

}  // namespace orlune
