#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/civil_time.h"
#include "model/event_type.h"
#include "model/ol_event.h"

namespace orlune {

/// The user of a request with their settings and rights, and what they view.
struct Visitor {
  std::string LoginName;  ///< "" when not logged in
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
  /// Whether the visitor may change the events of the calendar `owner`: their own, compared ignoring case,
  /// and those of groups that they administer.
  bool MayChangeEventsOf(std::string_view owner) const;
  /// The calendars whose events the visitor may change.
  std::vector<std::string> ChangeableCalendars() const;
  bool IsViewingOwnCalendar() const;
  /// Whether a view shows the event: private ones only in the visitor's own calendar.
  bool Sees(const OL_Event& event) const;
};

}  // namespace orlune
