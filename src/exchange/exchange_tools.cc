#include "exchange/exchange_tools.h"

#include "texts/english_texts.h"

namespace orlune {
namespace {

std::string TextIn(const Localiser* localiser, Text id) {
  const auto translated = localiser == nullptr ? std::nullopt : localiser->Loadstring(static_cast<int>(id));
  return std::string(translated.value_or(EnglishText(id)));
}

}  // namespace

ExchangeTools MakeExchangeTools(const CalendarText& texts, const Secrets& secrets,
                                const RegionalSettings& regional, Date today, const Localiser* localiser) {
  return {texts,
          secrets,
          regional,
          today,
          TextIn(localiser, Text::kPrivateEvent),
          TextIn(localiser, Text::kUntitledEvent)};
}

}  // namespace orlune
