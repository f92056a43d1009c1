#include "server/demo_company_events.h"

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

#include "frame/dates.h"
#include "frame/lists.h"
#include "frame/text.h"
#include "server/demo_company_activities.h"
#include "server/demo_company_people.h"

namespace orlune::demo {
namespace {

constexpr int kMonthsAround = 4;

/// Minutes since midnight.
constexpr int At(int hour, int minute) {
  return hour * 60 + minute;
}

/// Throws the same numbers in every build: the demo is the same for everybody who makes it on one day.
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

std::string TimeText(int minutes) {
  const auto twoDigits = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  return twoDigits(minutes / 60) + ':' + twoDigits(minutes % 60);
}

std::string_view FirstName(const Person& person) {
  return person.FriendlyName.substr(0, person.FriendlyName.find(' '));
}

/// Fills one person's days with what happens once.
class PersonalCalendar {
 public:
  PersonalCalendar(const RowWriter& rows, const Person& person, std::uint32_t seed)
      : rows_(&rows),
        person_(&person),
        dice_(seed),
        work_(ActivitiesOf(person.Department)),
        common_(CommonActivities()),
        freeTime_(FreeTimeActivities()) {}

  void Fill(Date first, Date last, Date vacationBegin, Date vacationEnd) {
    for (Date day = first; day <= last; day += std::chrono::days{1}) {
      const bool isFree = IsInList(person_->Weekend, std::to_string(WeekdayNumber(day)));
      if (day >= vacationBegin && day <= vacationEnd) continue;
      if (!isFree) FillWorkingHours(day);
      if (dice_.Chance(isFree ? 25 : 10)) AddFreeTime(day, isFree);
    }
  }

 private:
  void FillWorkingHours(Date day) {
    constexpr std::array kStarts{At(8, 30), At(9, 0),   At(9, 30),  At(10, 0), At(10, 0),  At(10, 30),
                                 At(11, 0), At(11, 30), At(12, 0),  At(13, 0), At(13, 0),  At(13, 30),
                                 At(14, 0), At(14, 15), At(14, 30), At(15, 0), At(15, 30), At(16, 45)};
    constexpr std::array kEventsADay{0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 2, 2, 3};
    for (int count = dice_.Pick<int>(kEventsADay); count > 0; --count) {
      Deck& deck = dice_.Chance(70) ? work_ : common_;
      Add(deck.Deal(dice_), day, dice_.Pick<int>(kStarts));
    }
  }

  void AddFreeTime(Date day, bool isFree) {
    constexpr std::array kDaytime{At(9, 30), At(10, 30), At(14, 0), At(15, 0), At(16, 0)};
    constexpr std::array kEvening{At(18, 0), At(18, 30), At(19, 0), At(19, 30)};
    Add(freeTime_.Deal(dice_), day, isFree ? dice_.Pick<int>(kDaytime) : dice_.Pick<int>(kEvening));
  }

  void Add(const Activity& activity, Date day, int begin) {
    const std::string_view client = dice_.Pick(Clients());
    const std::string_view colleague = FirstName(Colleague());
    const auto filled = [&](std::string_view text) {
      return ReplaceAll(ReplaceAll(text, "{client}", client), "{colleague}", colleague);
    };
    const int end = begin + activity.Minutes;
    const bool hasEnd = activity.Minutes > 0 && end < At(24, 0) && !dice_.Chance(8);
    EventRow row;
    row.EventName = filled(activity.Title);
    row.Owner = person_->Name;
    row.BeginDate = day;
    if (activity.Minutes > 0) row.BeginTime = TimeText(begin);
    if (hasEnd) row.EndTime = TimeText(end);
    row.IsPrivate = activity.IsPrivate;
    row.Comments = filled(activity.Comments);
    row.EventType = activity.EventType;
    rows_->Write(row);
  }

  const Person& Colleague() {
    for (;;) {
      const Person& colleague = dice_.Pick<Person>(kPeople);
      if (!colleague.IsHidden && colleague.Name != person_->Name) return colleague;
    }
  }

  const RowWriter* rows_;
  const Person* person_;
  Dice dice_;
  Deck work_;
  Deck common_;
  Deck freeTime_;
};

EventRow EveryDay(std::string_view owner, std::string_view title, Date first, Date last) {
  EventRow row;
  row.EventName = title;
  row.Owner = owner;
  row.Type = "day";
  row.BeginDate = first;
  row.EndDate = last;
  return row;
}

EventRow EveryYear(std::string_view owner, std::string_view title, Date first, std::string_view weekends) {
  EventRow row = EveryDay(owner, title, first, AddMonths(first, 12 * 20));
  row.Type = "year";
  row.RepeatWeekends = weekends;
  return row;
}

/// The day in the year before `today`, so that this year's is a repetition.
Date LastYears(Date today, int month, int day) {
  const auto year = std::chrono::year_month_day{today}.year() - std::chrono::years{1};
  return year / month / day;
}

void AddPersonalDays(const RowWriter& rows, const Person& person, int place, Date today) {
  const Date first = AddMonths(FirstOfMonth(today), -kMonthsAround);
  const Date last = LastDayOfMonth(AddMonths(today, kMonthsAround));
  const Date vacationBegin = AddDays(MondayOf(today), 14 * place - 63);
  const Date vacationEnd = AddDays(vacationBegin, place % 2 == 0 ? 4 : 11);
  EventRow vacation = EveryDay(person.Name, "Vacation", vacationBegin, vacationEnd);
  vacation.EventType = "Holiday";
  rows.Write(vacation);
  PersonalCalendar(rows, person, static_cast<std::uint32_t>(1000 + place))
      .Fill(first, last, vacationBegin, vacationEnd);
}

void AddRegulars(const RowWriter& rows, Date today) {
  const Date begin = MondayOf(AddMonths(FirstOfMonth(today), -kMonthsAround));
  const Date end = AddMonths(today, 12);
  for (const Regular& regular : Regulars()) {
    EventRow row = EveryDay(regular.Owner, regular.Title, begin, end);
    row.Type = regular.Frequency.empty() ? "month" : "weekday";
    row.BeginTime = regular.Begin;
    row.EndTime = regular.End;
    row.RepeatWeekday = regular.Weekdays;
    row.RepeatFrequency = regular.Frequency;
    row.RepeatDay = regular.Days;
    row.RepeatWeekends = regular.Weekends;
    row.IsPrivate = regular.IsPrivate;
    row.Comments = regular.Comments;
    row.EventType = regular.EventType;
    rows.Write(row);
  }
}

void AddStretches(const RowWriter& rows, Date today) {
  for (const Stretch& stretch : Stretches()) {
    const Date begin = AddDays(MondayOf(today), stretch.FirstDay);
    EventRow row = EveryDay(stretch.Owner, stretch.Title, begin, AddDays(begin, stretch.Days - 1));
    row.BeginTime = stretch.Begin;
    row.EndTime = stretch.End;
    row.Comments = stretch.Comments;
    row.EventType = stretch.EventType;
    rows.Write(row);
  }
}

void AddYearly(const RowWriter& rows, Date today) {
  for (const Anniversary& anniversary : Anniversaries()) {
    EventRow row = EveryYear(anniversary.Owner, anniversary.Title,
                             LastYears(today, anniversary.Month, anniversary.Day), anniversary.Weekends);
    row.Comments = anniversary.Comments;
    row.EventType = anniversary.EventType;
    rows.Write(row);
  }
  for (const Person& person : kPeople) {
    if (person.IsHidden) continue;
    EventRow row = EveryYear("default", std::string(FirstName(person)) + "'s birthday",
                             LastYears(today, person.BirthMonth, person.BirthDay), "vkl_ok");
    row.EventType = "Birthday";
    rows.Write(row);
  }
}

}  // namespace

void AddEvents(const RowWriter& rows, Date today) {
  int place = 0;
  AddPersonalDays(rows, kAdministrator, place++, today);
  for (const Person& person : kPeople) AddPersonalDays(rows, person, place++, today);
  AddRegulars(rows, today);
  AddStretches(rows, today);
  AddYearly(rows, today);
}

}  // namespace orlune::demo
