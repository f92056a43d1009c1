#pragma once

#include <string>

#include "exchange/participant.h"

namespace orlune {

/// The colour that a calendar has without one set by a device: one of its own among those of the participant.
std::string DefaultColour(const Participant& participant, const SharedCalendar& calendar);

}  // namespace orlune
