#pragma once

#include <vector>

#include <spdlog/logger.h>

#include "app/regions.h"
#include "base/repeated_task.h"
#include "exchange/calendar_text.h"
#include "platform/clock.h"
#include "platform/secrets.h"

namespace orlune {

/// What the upkeep of databases needs; outlives it.
struct ExchangeKeeperParts {
  const CalendarText& Texts;
  orlune::Secrets& Secrets;
  const orlune::Clock& Clock;
  spdlog::logger& Log;
};

/// Keeps the databases of sharing pages up to date, about once an hour, in a thread of its own.
class ExchangeKeeper {
 public:
  /// Each database once a round, however many pages share it.
  ExchangeKeeper(std::vector<const PagePlace*> places, const ExchangeKeeperParts& parts);

 private:
  RepeatedTask task_;
};

}  // namespace orlune
