#pragma once

namespace orlune {

struct Visit;

/// Shows a calendar or group view as a day, a week or a month; an unknown view mode gives an empty frame. The
/// parameters "cn", "cd" and "dm" are read when the visitor is loaded. Requires no right.
void ShowCalendarPage(Visit& visit);

}  // namespace orlune
