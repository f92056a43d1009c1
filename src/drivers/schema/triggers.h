#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/catalogue.h"
#include "drivers/dialect/engine_sql.h"

namespace orlune::schema {

/// What a database does by itself for each row of a table that is inserted, updated or deleted.
struct Trigger {
  std::string Name;
  std::string Table;
  std::string_view Change;              ///< INSERT, UPDATE or DELETE
  std::string Condition;                ///< of OLD and NEW; "" for every row
  std::vector<std::string> Statements;  ///< of OLD and NEW
  std::vector<std::string> Written;     ///< the tables that they write to
};

/// What the engines write differently in a trigger.
struct TriggerSql {
  const dialect::EngineSql& Engine;
  std::string_view NextMoment;  ///< an expression: the number of a change that is made now
  std::string_view Exactly;     ///< after a text: compares it byte by byte
};

/// A trigger as the engine has it.
struct DefinedTrigger {
  std::string Name;
  std::string Definition;

  friend bool operator==(const DefinedTrigger&, const DefinedTrigger&) = default;
};

/// The triggers that log which objects of which calendar have changed, whoever changes them, that remove what
/// belongs to a deleted event, and that let the app passwords, links and settings of devices follow the user
/// or group that is renamed or deleted. None unless their tables are there, which are made when calendars are
/// first shared.
///
/// A change of the log has a number, `Moment`.
std::vector<Trigger> PossibleTriggers(const dialect::Catalogue& catalogue, const TriggerSql& sql);

}  // namespace orlune::schema
