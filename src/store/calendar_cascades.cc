#include "store/calendar_cascades.h"

#include "store/calendar_records.h"
#include "store/group_views.h"
#include "store/statement.h"

namespace orlune {
namespace {

void DeleteEventsOf(Connection& database, std::string_view owner) {
  database.Execute(Statement("DELETE FROM Events WHERE (Owner = '{}')", owner));
}

}  // namespace

void MoveCalendarContent(Connection& database, std::string_view oldName, std::string_view newName) {
  database.Execute(Statement("UPDATE Events SET Owner = '{}' WHERE Owner = '{}'", newName, oldName));
  RenameInGroupViews(database, oldName, newName);
}

void MoveUserContent(Connection& database, std::string_view oldName, std::string_view newName) {
  MoveCalendarContent(database, oldName, newName);
  database.Execute(Statement("UPDATE Messages SET Sender = '{}' WHERE Sender = '{}'", newName, oldName));
  database.Execute(
      Statement("UPDATE Messages SET Recipient = '{}' WHERE Recipient = '{}'", newName, oldName));
}

void DeleteUserContent(Connection& database, std::string_view name) {
  DeleteEventsOf(database, name);
  database.Execute(Statement("DELETE FROM Messages WHERE (Recipient = '{}')", name));
  RemoveFromGroupViews(database, name);
}

void DeleteGroupContent(Connection& database, std::string_view name) {
  DeleteEventsOf(database, name);
  RemoveFromGroupLists(database, name);
}

}  // namespace orlune
