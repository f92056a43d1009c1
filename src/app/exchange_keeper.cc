#include "app/exchange_keeper.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/log_text.h"
#include "exchange/change_log.h"
#include "exchange/upkeep.h"

namespace orlune {
namespace {

std::string AddressOf(const PagePlace* place) {
  return place->Database.Address().Displayed();
}

std::vector<const PagePlace*> OneOfEachDatabase(std::vector<const PagePlace*> places) {
  const auto isSame = [](const PagePlace* a, const PagePlace* b) { return AddressOf(a) == AddressOf(b); };
  std::ranges::sort(places, {}, AddressOf);
  places.erase(std::unique(places.begin(), places.end(), isSame), places.end());
  return places;
}

void KeepUp(const PagePlace& place, const ExchangeKeeperParts& parts) {
  try {
    const std::unique_ptr<Connection> database = place.Database.Open(AddressOf(&place));
    PrepareExchange(*database, parts.Secrets);
    KeepUpExchange(*database, MakeExchangeTools(parts.Texts, parts.Secrets, place.Region.Settings(),
                                                parts.Clock.Now().Day, nullptr));
  } catch (const std::exception& error) {
    parts.Log.error("cannot keep up the exchange with other calendars: {}", OneLine(error.what()));
  }
}

}  // namespace

ExchangeKeeper::ExchangeKeeper(std::vector<const PagePlace*> places, const ExchangeKeeperParts& parts)
    : task_(std::chrono::hours(1), [places = OneOfEachDatabase(std::move(places)), parts] {
        for (const PagePlace* place : places) KeepUp(*place, parts);
      }) {}

}  // namespace orlune
