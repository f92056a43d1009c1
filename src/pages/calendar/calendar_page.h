#pragma once

namespace orlune {

struct Visit;

/// Shows one calendar or group view for one date as a day, a week or a month; an unknown view mode gives the
/// page's frame with nothing in it. Its parameters "cn", "cd" and "dm" were taken over before. Asks for no
/// right.
void ShowCalendarPage(Visit& visit);

}  // namespace orlune
