#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "model/event_type.h"
#include "model/ol_event.h"

namespace orlune {

/// Who asks, with which settings, and what they look at.
struct Visitor {
  std::string LoginName;  ///< "" for nobody
  std::string CalName;    ///< the viewed calendar, or "@" and a group view
  Date CurrentDate;
  std::string DisplayMode;  ///< "day", "week" or "month"

  std::string SheetFile = "default.css";
  int FirstDayOfWeek = 2;        ///< 1 = Sunday ... 7 = Saturday
  std::string Weekend = "1, 7";  ///< weekday numbers
  std::string TimeFormat = "Hh:Nn";
  int DayBegin = 6;                             ///< first hour that the day view shows
  int DayEnd = 20;                              ///< last hour that the day view shows
  std::vector<std::string> MemberOfGroups{""};  ///< groups of the viewed calendars
  std::vector<std::string> AdminOfGroups{""};   ///< groups that the visitor administers
  std::vector<EventTypeEntry> EventTypes{{}};

  bool IsLoggedIn() const { return !LoginName.empty(); }
  bool IsAdministrator() const { return LoginName == "admin"; }
  /// Whether the visitor may change an event of the calendar `owner`: it is their own, compared ignoring
  /// case, or a group's that they administer.
  bool MayChangeEventsOf(std::string_view owner) const;
  /// The calendars whose events the visitor may change.
  std::vector<std::string> ChangeableCalendars() const;
  bool IsViewingOwnCalendar() const;
  /// Whether a view shows the visitor the event: private ones are shown in the visitor's own calendar only.
  bool Sees(const OL_Event& event) const;
};

}  // namespace orlune
