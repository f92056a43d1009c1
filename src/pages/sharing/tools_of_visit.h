#pragma once

#include "exchange/exchange_tools.h"
#include "request/visit.h"

namespace orlune {

inline ExchangeTools ExchangeToolsOf(const Visit& visit) {
  const PageContext& context = visit.Context;
  return MakeExchangeTools(*visit.CalendarTexts, *visit.Secrets, context.Regional, context.Today,
                           context.Hosting.Localiser.get());
}

}  // namespace orlune
