#pragma once

#include "html/html.h"
#include "model/ol_event.h"

namespace orlune {

struct PageContext;

/// How an event repeats, in the words of the event form: "By Weekday: Monday, Friday; Every 2 weeks".
Html RepetitionWords(const PageContext& context, const OL_Event& event);

}  // namespace orlune
