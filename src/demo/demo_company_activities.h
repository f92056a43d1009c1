#pragma once

#include <span>
#include <string_view>

#include "demo/demo_company_people.h"

namespace orlune::demo {

/// A single event of a person. "{client}" and "{colleague}" are replaced by names.
struct Activity {
  std::string_view Title;
  std::string_view EventType;
  int Minutes;  ///< 0: without a time
  std::string_view Comments = {};
  bool IsPrivate = false;
  std::string_view Begin = {};  ///< "hh:mm", or "": at any hour
};

/// A repeating event of a person or a group: by weekday when `Frequency` is set, otherwise monthly on `Days`.
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

/// A daily event of several days. `FirstDay` is relative to the Monday of the current week.
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

/// Activities on working days of a department.
std::span<const Activity> ActivitiesOf(Department department);
/// Further activities on working days of any department.
std::span<const Activity> CommonActivities();
std::span<const Activity> EveningActivities();
std::span<const Activity> WeekendActivities();

std::span<const Regular> Regulars();
std::span<const Stretch> Stretches();
std::span<const Anniversary> Anniversaries();
std::span<const std::string_view> Clients();

}  // namespace orlune::demo
