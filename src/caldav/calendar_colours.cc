#include "caldav/calendar_colours.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orlune {

std::string DefaultColour(const Participant& participant, const SharedCalendar& calendar) {
  constexpr std::array<std::string_view, 12> kColours = {"#1E88E5FF", "#43A047FF", "#E53935FF", "#8E24AAFF",
                                                         "#FB8C00FF", "#00897BFF", "#D81B60FF", "#6D4C41FF",
                                                         "#3949ABFF", "#7CB342FF", "#F4B400FF", "#546E7AFF"};
  // A colour follows the calendar's name, so that it stays when others come and go; of two that would get
  // the same, the later takes the next one.
  std::array<bool, kColours.size()> taken{};
  for (const SharedCalendar& other : participant.Calendars) {
    std::size_t colour = other.IsOwn ? 0 : 1;
    for (const char c : other.IsOwn ? std::string_view() : std::string_view(other.Name))
      colour = (colour * 31 + static_cast<unsigned char>(c)) % kColours.size();
    if (std::ranges::find(taken, false) == taken.end()) taken = {};
    while (taken[colour]) colour = (colour + 1) % kColours.size();
    taken[colour] = true;
    if (&other == &calendar) return std::string(kColours[colour]);
  }
  return std::string(kColours.front());
}

}  // namespace orlune
