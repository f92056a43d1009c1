#pragma once

#include "exchange/shared_objects.h"

namespace orlune {

/// What has to be done from time to time, by one or by several servers of a database: lists the days of
/// series without end further ahead, and removes old entries of the log of changes. Throws DatabaseError.
void KeepUpExchange(Connection& database, const ExchangeTools& tools);

}  // namespace orlune
