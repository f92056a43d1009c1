#include "demo/demo_company_events.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/dates.h"
#include "base/lists.h"
#include "base/text.h"
#include "demo/demo_company_activities.h"
#include "demo/demo_company_people.h"
#include "store/event_store.h"

namespace orlune::demo {
namespace {

constexpr int kMonthsAround = 4;

/// The same sequence in every build, so that the demo depends on nothing but the day.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) { engine_.discard(10); }
  /// A number below `sides`.
  std::size_t Throw(std::size_t sides) { return engine_() % sides; }
  bool Chance(std::size_t percent) { return Throw(100) < percent; }
  template <class T>
  const T& Pick(std::span<const T> items) {
    return items[Throw(items.size())];
  }

 private:
  std::minstd_rand engine_;
};

/// Deals activities in a random order, each once before any comes again.
class Deck {
 public:
  explicit Deck(std::span<const Activity> activities) : activities_(activities) {}

  const Activity& Deal(Dice& dice) {
    if (next_ == order_.size()) Shuffle(dice);
    return activities_[order_[next_++]];
  }

 private:
  void Shuffle(Dice& dice) {
    order_.resize(activities_.size());
    for (std::size_t i = 0; i < order_.size(); ++i) order_[i] = i;
    for (std::size_t i = order_.size(); i > 1; --i) std::swap(order_[i - 1], order_[dice.Throw(i)]);
    next_ = 0;
  }

  std::span<const Activity> activities_;
  std::vector<std::size_t> order_;
  std::size_t next_ = 0;
};

Date MondayOf(Date day) {
  return AddDays(day, -((WeekdayNumber(day) + 5) % 7));
}
Date FirstOfMonth(Date day) {
  return AddDays(day, 1 - DayOfMonth(day));
}

std::string_view FirstName(const Person& person) {
  return person.FriendlyName.substr(0, person.FriendlyName.find(' '));
}

class EventWriter {
 public:
  EventWriter(Connection& database, const RegionalSettings& regional)
      : database_(&database), regional_(&regional) {}

  void Write(const OL_Event& event) const { SaveEvent(*database_, *regional_, event, {}); }

 private:
  Connection* database_;
  const RegionalSettings* regional_;
};

/// Writes the single events of one person.
class PersonalCalendar {
 public:
  PersonalCalendar(const EventWriter& events, const Person& person, std::uint32_t seed)
      : events_(&events),
        person_(&person),
        dice_(seed),
        work_(ActivitiesOf(person.Department)),
        common_(CommonActivities()),
        evenings_(EveningActivities()),
        weekends_(WeekendActivities()) {}

  void Fill(Date first, Date last, Date vacationBegin, Date vacationEnd) {
    for (Date day = first; day <= last; day += std::chrono::days{1}) {
      if (day >= vacationBegin && day <= vacationEnd) continue;
      if (IsInList(person_->Weekend, std::to_string(WeekdayNumber(day)))) {
        if (dice_.Chance(25)) Add(weekends_, day);
      } else {
        FillWorkday(day);
      }
    }
  }

 private:
  void FillWorkday(Date day) {
    constexpr std::array kEventsADay{0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 2, 2, 2, 3};
    for (int count = dice_.Pick<int>(kEventsADay); count > 0; --count) {
      Add(dice_.Chance(75) ? work_ : common_, day);
    }
    if (dice_.Chance(10)) Add(evenings_, day);
  }

  void Add(Deck& deck, Date day) {
    const Activity& activity = deck.Deal(dice_);
    const std::string_view client = dice_.Pick(Clients());
    const std::string_view colleague = FirstName(Colleague());
    const auto filled = [&](std::string_view text) {
      return ReplaceAll(ReplaceAll(text, "{client}", client), "{colleague}", colleague);
    };
    OL_Event event;
    event.EventName = filled(activity.Title);
    event.Owner = person_->Name;
    event.BeginDate = day;
    event.Private = activity.IsPrivate;
    event.Comments = filled(activity.Comments);
    event.EventType = activity.EventType;
    if (activity.Minutes > 0) SetTimes(event, activity);
    events_->Write(event);
  }

  void SetTimes(OL_Event& event, const Activity& activity) {
    constexpr std::array<std::string_view, 18> kHours{"08:30", "09:00", "09:30", "10:00", "10:00", "10:30",
                                                      "11:00", "11:30", "12:00", "13:00", "13:00", "13:30",
                                                      "14:00", "14:15", "14:30", "15:00", "15:30", "16:45"};
    event.BeginTime =
        ParseTime(activity.Begin.empty() ? dice_.Pick<std::string_view>(kHours) : activity.Begin);
    if (!dice_.Chance(8)) event.EndTime = *event.BeginTime + std::chrono::minutes{activity.Minutes};
  }

  const Person& Colleague() {
    for (;;) {
      const Person& colleague = dice_.Pick<Person>(kPeople);
      if (colleague.IsHidden || colleague.Name == person_->Name) continue;
      if (!WorksInTeam() || colleague.Department == person_->Department) return colleague;
    }
  }

  bool WorksInTeam() const {
    return person_->Department == Department::kEngineering || person_->Department == Department::kSales;
  }

  const EventWriter* events_;
  const Person* person_;
  Dice dice_;
  Deck work_;
  Deck common_;
  Deck evenings_;
  Deck weekends_;
};

OL_Event EveryDay(std::string_view owner, std::string_view title, Date first, Date last) {
  OL_Event event;
  event.EventName = title;
  event.Owner = owner;
  event.Type = Repetition::kDaily;
  event.BeginDate = first;
  event.EndDate = last;
  return event;
}

OL_Event EveryYear(std::string_view owner, std::string_view title, Date first, WeekendRule weekends) {
  OL_Event event = EveryDay(owner, title, first, AddMonths(first, 12 * 20));
  event.Type = Repetition::kYearly;
  event.RepeatWeekends = weekends;
  return event;
}

/// The day in the year before `today`, so that this year's occurrence is a repetition.
Date LastYears(Date today, int month, int day) {
  const auto year = std::chrono::year_month_day{today}.year() - std::chrono::years{1};
  return year / month / day;
}

void AddPersonalDays(const EventWriter& events, const Person& person, int place, Date today) {
  const Date first = AddMonths(FirstOfMonth(today), -kMonthsAround);
  const Date last = LastDayOfMonth(AddMonths(today, kMonthsAround));
  const Date vacationBegin = AddDays(MondayOf(today), 14 * place - 63);
  const Date vacationEnd = AddDays(vacationBegin, place % 2 == 0 ? 4 : 11);
  OL_Event vacation = EveryDay(person.Name, "Vacation", vacationBegin, vacationEnd);
  vacation.EventType = "Holiday";
  events.Write(vacation);
  PersonalCalendar(events, person, static_cast<std::uint32_t>(1000 + place))
      .Fill(first, last, vacationBegin, vacationEnd);
}

void AddRegulars(const EventWriter& events, Date today) {
  const Date begin = MondayOf(AddMonths(FirstOfMonth(today), -kMonthsAround));
  const Date end = AddMonths(today, 12);
  for (const Regular& regular : Regulars()) {
    OL_Event event = EveryDay(regular.Owner, regular.Title, begin, end);
    event.Type = regular.Frequency.empty() ? Repetition::kMonthly : Repetition::kByWeekday;
    event.BeginTime = ParseTime(regular.Begin);
    event.EndTime = ParseTime(regular.End);
    event.RepeatWeekday = regular.Weekdays;
    event.RepeatFrequency = FrequencyOf(regular.Frequency);
    event.RepeatDay = regular.Days;
    event.RepeatWeekends = WeekendRuleOf(regular.Weekends).value_or(WeekendRule::kKeep);
    event.Private = regular.IsPrivate;
    event.Comments = regular.Comments;
    event.EventType = regular.EventType;
    events.Write(event);
  }
}

void AddStretches(const EventWriter& events, Date today) {
  for (const Stretch& stretch : Stretches()) {
    const Date begin = AddDays(MondayOf(today), stretch.FirstDay);
    OL_Event event = EveryDay(stretch.Owner, stretch.Title, begin, AddDays(begin, stretch.Days - 1));
    event.BeginTime = ParseTime(stretch.Begin);
    event.EndTime = ParseTime(stretch.End);
    event.Comments = stretch.Comments;
    event.EventType = stretch.EventType;
    events.Write(event);
  }
}

void AddYearly(const EventWriter& events, Date today) {
  for (const Anniversary& anniversary : Anniversaries()) {
    OL_Event event =
        EveryYear(anniversary.Owner, anniversary.Title, LastYears(today, anniversary.Month, anniversary.Day),
                  WeekendRuleOf(anniversary.Weekends).value_or(WeekendRule::kKeep));
    event.Comments = anniversary.Comments;
    event.EventType = anniversary.EventType;
    events.Write(event);
  }
  for (const Person& person : kPeople) {
    if (person.IsHidden) continue;
    OL_Event event = EveryYear("default", std::string(FirstName(person)) + "'s birthday",
                               LastYears(today, person.BirthMonth, person.BirthDay), WeekendRule::kKeep);
    event.EventType = "Birthday";
    events.Write(event);
  }
}

}  // namespace

void AddEvents(Connection& database, const RegionalSettings& regional, Date today) {
  const EventWriter events(database, regional);
  int place = 0;
  AddPersonalDays(events, kAdministrator, place++, today);
  for (const Person& person : kPeople) AddPersonalDays(events, person, place++, today);
  AddRegulars(events, today);
  AddStretches(events, today);
  AddYearly(events, today);
}

}  // namespace orlune::demo
