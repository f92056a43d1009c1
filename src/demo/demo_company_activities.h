#pragma once

#include <span>
#include <string_view>

#include "demo/demo_company_people.h"

namespace orlune::demo {

/// Something that a person does once. "{client}" and "{colleague}" stand for names.
struct Activity {
  std::string_view Title;
  std::string_view EventType;
  int Minutes;  ///< 0: without a time
  std::string_view Comments = {};
  bool IsPrivate = false;
  std::string_view Begin = {};  ///< "hh:mm", or "": at any hour
};

/// A person's or group's event that repeats. Its kind of repetition follows from what is set: `Frequency` for
/// weekdays, `Days` for days of the month.
struct Regular {
  std::string_view Owner;
  std::string_view Title;
  std::string_view EventType;
  std::string_view Begin;  ///< "hh:mm", or "" without a time
  std::string_view End;
  std::string_view Weekdays;
  std::string_view Frequency;
  std::string_view Days;
  std::string_view Weekends;
  std::string_view Comments = {};
  bool IsPrivate = false;
};

/// An event on every day of a stretch, counted in days from the Monday of the week that it is made around.
struct Stretch {
  std::string_view Owner;
  std::string_view Title;
  std::string_view EventType;
  int FirstDay;
  int Days;
  std::string_view Begin = {};
  std::string_view End = {};
  std::string_view Comments = {};
};

/// A yearly event.
struct Anniversary {
  std::string_view Owner;
  std::string_view Title;
  std::string_view EventType;
  int Month;
  int Day;
  std::string_view Weekends;
  std::string_view Comments = {};
};

/// What fills the working days of a department.
std::span<const Activity> ActivitiesOf(Department department);
/// What any of them may have besides.
std::span<const Activity> CommonActivities();
std::span<const Activity> EveningActivities();
std::span<const Activity> WeekendActivities();

std::span<const Regular> Regulars();
std::span<const Stretch> Stretches();
std::span<const Anniversary> Anniversaries();
std::span<const std::string_view> Clients();

}  // namespace orlune::demo
