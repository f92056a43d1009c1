#pragma once

namespace orlune {

struct Visit;

/// Tells the script of the day view how many timed events it leaves out: {"earlier":2,"later":1}. An event is
/// earlier when it begins before the displayed hours. What is viewed is a day. Requires no right.
void TellHiddenHours(Visit& visit);

}  // namespace orlune
