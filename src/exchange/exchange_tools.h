#pragma once

#include <string>

#include "base/regional_settings.h"
#include "exchange/calendar_text.h"
#include "platform/localiser.h"
#include "platform/secrets.h"

namespace orlune {

/// What the exchange needs of its surroundings, which outlives it.
struct ExchangeTools {
  const CalendarText& Texts;
  const orlune::Secrets& Secrets;
  const RegionalSettings& Regional;
  Date Today;
  std::string PrivateTitle;  ///< what others read of a private event, in the page's language
  std::string Untitled;      ///< the title of an event that comes without one
};

/// With the texts of the language pack; null for English.
ExchangeTools MakeExchangeTools(const CalendarText& texts, const Secrets& secrets,
                                const RegionalSettings& regional, Date today, const Localiser* localiser);

}  // namespace orlune
