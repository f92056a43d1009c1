#include "pages/groupviews/group_view.h"

#include <array>
#include <span>

#include "base/lists.h"
#include "base/text.h"
#include "store/database_access.h"
#include "store/field.h"
#include "store/transaction.h"

namespace orlune {
namespace {

std::vector<std::string> ListOf(const Value& value) {
  const std::string_view text = TextOf(value);
  return text.empty() ? std::vector<std::string>() : SplitList(text);
}

int IdOfName(Connection& database, std::string_view name) {
  const auto row = OpenQuery(database, Statement("SELECT GroupID FROM GroupViews WHERE Name = '{}'", name));
  return row->Next() ? NumberOf(row->Get(row->Column("GroupID"))).value_or(0) : 0;
}

/// The row of `view`, beginning with its owner.
std::array<ColumnValue, 6> Columns(const GroupView& view) {
  return {{{"Owner", SqlText(view.Owner)},
           {"Name", SqlText(view.Name)},
           {"FriendlyName", SqlText(ReplaceAll(view.FriendlyName, "'", "&#39;"))},
           {"Calendars", SqlText(JoinList(view.Members.Calendars))},
           {"BackGround", SqlText(JoinList(view.Members.BackGround))},
           {"ForeGround", SqlText(JoinList(view.Members.ForeGround))}}};
}

}  // namespace

std::optional<GroupView> LoadGroupView(Connection& database, int id) {
  const auto row =
      OpenQuery(database, Statement("SELECT Owner, Name, FriendlyName, Calendars, BackGround, ForeGround "
                                    "FROM GroupViews WHERE GroupID = {}",
                                    id));
  if (!row->Next()) return std::nullopt;
  const auto field = [&](std::string_view column) { return row->Get(row->Column(column)); };
  const auto text = [&](std::string_view column) { return std::string(TextOf(field(column))); };
  return GroupView{id,
                   text("Owner"),
                   text("Name"),
                   text("FriendlyName"),
                   {ListOf(field("Calendars")), ListOf(field("BackGround")), ListOf(field("ForeGround"))}};
}

std::string UnusedViewName(Connection& database, std::string_view text) {
  return MakeInternalName(database, text, "GroupID", "GroupViews");
}

int StoreGroupView(Connection& database, GroupView view) {
  if (view.Id) {
    const auto columns = Columns(view);
    database.Execute(BuildSql(SqlMode::kUpdate, "GroupViews", std::span(columns).subspan(1),
                              Statement("WHERE GroupID = {}", *view.Id)));
    return *view.Id;
  }
  Transaction transaction(database);
  view.Name = UnusedViewName(database, view.Name);
  database.Execute(BuildSql(SqlMode::kInsert, "GroupViews", Columns(view)));
  const int id = IdOfName(database, view.Name);
  transaction.Commit();
  return id;
}

void DeleteGroupView(Connection& database, const GroupView& view) {
  if (view.Id) database.Execute(Statement("DELETE FROM GroupViews WHERE GroupID = {}", *view.Id));
}

}  // namespace orlune
