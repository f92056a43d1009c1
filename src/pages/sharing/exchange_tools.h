#pragma once

#include <string>

#include "exchange/shared_objects.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {

inline ExchangeTools ExchangeToolsOf(const Visit& visit) {
  return {*visit.CalendarTexts,
          *visit.Secrets,
          visit.Context.Regional,
          visit.Context.Today,
          std::string(LoadText(visit.Context, Text::kPrivateEvent)),
          std::string(LoadText(visit.Context, Text::kUntitledEvent))};
}

}  // namespace orlune
