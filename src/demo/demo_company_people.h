#pragma once

#include <array>
#include <string_view>

namespace orlune::demo {

/// Determines the activities of a person's working days.
enum class Department { kOffice, kEngineering, kSales, kManagement };

/// A user account. `Groups`, `AdminOfGroups` and `Weekend` are lists joined with ", "; `StyleSheet` counts
/// from 1.
struct Person {
  std::string_view Name;
  std::string_view FriendlyName;
  demo::Department Department;
  std::string_view Groups;
  std::string_view AdminOfGroups;
  std::string_view StartMode;
  int FirstDayOfWeek;
  std::string_view Weekend;
  int ClockMode;
  int DayBegin;
  int DayEnd;
  int StyleSheet;
  bool IsHidden;
  int BirthMonth;
  int BirthDay;
};

inline constexpr Person kAdministrator{
    "admin", "Administrator", Department::kOffice, "", "", "month", 2, "1, 7", 24, 8, 18, 1, true, 6, 14};

// clang-format off
inline constexpr std::array<Person, 13> kPeople{{
    {"grace",  "Grace Okafor",        Department::kManagement,  "board, office",        "board",       "week",  2, "1, 7", 24, 7, 19, 1, false,  2, 11},
    {"asa",    "Åsa Lindqvist",       Department::kSales,       "sales, board",         "sales",       "month", 2, "1, 7", 24, 8, 18, 1, false,  5, 23},
    {"zoe",    "Zoë Fairweather",     Department::kSales,       "sales, sport",         "",            "month", 1, "1, 7", 12, 9, 18, 1, false,  9,  2},
    {"tomas",  "Tomás Herrera",       Department::kSales,       "sales",                "",            "day",   2, "1, 7", 24, 9, 20, 4, false, 12, 19},
    {"noor",   "Noor Haddad",         Department::kSales,       "sales, sport",         "",            "week",  1, "6, 7", 12, 7, 16, 1, false,  7, 30},
    {"jurgen", "Jürgen Weiß",         Department::kEngineering, "engineering, board",   "engineering", "month", 2, "1, 7", 24, 7, 17, 1, false, 10,  5},
    {"lukasz", "Łukasz Zieliński",    Department::kEngineering, "engineering, sport",   "sport",       "week",  2, "1, 7", 24, 8, 18, 2, false,  4,  8},
    {"niamh",  "Niamh O'Brien",       Department::kEngineering, "engineering, sport",   "",            "month", 2, "1, 7", 24, 8, 17, 1, false,  3, 17},
    {"priya",  "Priya Raman",         Department::kEngineering, "engineering",          "",            "day",   1, "1, 7", 12, 9, 18, 2, false, 11, 21},
    {"mikko",  "Mikko Järvinen",      Department::kEngineering, "engineering, sport",   "",            "week",  2, "1, 7", 24, 7, 16, 1, false,  1, 26},
    {"ines",   "Inês Duarte",         Department::kEngineering, "engineering, office",  "",            "month", 2, "1, 7", 24, 9, 19, 3, false,  8, 13},
    {"daniel", "Daniel Kim",          Department::kOffice,      "office",               "office",      "month", 1, "1, 7", 12, 8, 17, 1, false,  6,  6},
    {"walter", "Walter Strand",       Department::kManagement,  "board",                "",            "month", 2, "1, 7", 24, 8, 18, 3, true,  10, 28},
}};

/// A group calendar.
struct Group {
  std::string_view Name;
  std::string_view FriendlyName;
  bool IsHidden;
};

inline constexpr std::array<Group, 5> kGroups{{
    {"engineering", "Engineering",  false},
    {"sales",       "Sales",        false},
    {"office",      "Office Life",  false},
    {"sport",       "Sports Club",  false},
    {"board",       "Board",        true},
}};

/// A group view; the three text lists correspond by position.
struct View {
  std::string_view Owner;
  std::string_view Name;
  std::string_view FriendlyName;
  std::string_view Calendars;
  std::string_view BackGround;
  std::string_view ForeGround;
};

inline constexpr std::array<View, 4> kGroupViews{{
    {"admin", "engineeringteam", "Engineering Team",
     "jurgen, lukasz, niamh, priya, mikko, ines",
     "#000080, #008000, #800000, #FFFF00, #008080, #800080",
     "#FFFFFF, #FFFFFF, #FFFFFF, #000000, #FFFFFF, #FFFFFF"},
    {"admin", "whoswhere", "Who&#39;s Where",
     "office, sales, engineering, sport",
     "#C0C0C0, #00FFFF, #FFFF00, ",
     "#000000, #000080, #800000, #008000"},
    {"asa", "salesfloor", "Sales Floor",
     "asa, zoe, tomas, noor",
     ", #800080, #00FFFF, #808000",
     ", #FFFFFF, #000000, #FFFFFF"},
    {"grace", "directors", "Directors",
     "grace, asa, jurgen, walter, board",
     "#808080, #C0C0C0, #000080, #FFFFFF, #800000",
     "#FFFFFF, #000000, #FFFFFF, #0000FF, #FFFF00"},
}};
// clang-format on

}  // namespace orlune::demo
