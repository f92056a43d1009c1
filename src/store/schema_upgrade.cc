#include "store/schema_upgrade.h"

#include "store/database_access.h"

namespace orlune {
namespace {

/// False on an error: the database already has what the statement would add.
bool Succeeds(Connection& database, const Statement& statement) {
  bool failed = false;
  ExecuteQuiet(database, statement, failed);
  return !failed;
}

struct Step {
  Statement Change;
  std::vector<Statement> FollowUps;
};

const std::vector<Step>& Steps() {
  static const std::vector<Step> kSteps{
      {Statement("ALTER TABLE Calendars ADD COLUMN ClockMode LONG"),
       {Statement("UPDATE Calendars SET ClockMode = 24")}},
      {Statement("ALTER TABLE Calendars ADD COLUMN IsHidden YESNO"),
       {Statement("UPDATE Calendars SET IsHidden = yes WHERE IsGroup = yes OR Name = 'admin'"),
        Statement("UPDATE Calendars SET IsHidden = no WHERE IsGroup = no AND Name <> 'admin'")}},
      {Statement("ALTER TABLE Events ADD COLUMN EventType TEXT (50)"), {}},
      {Statement("CREATE TABLE GroupViews (GroupID COUNTER CONSTRAINT GroupID PRIMARY KEY, "
                 "FriendlyName TEXT (50), Name TEXT (50), Owner TEXT (50), Calendars TEXT (255), "
                 "BackGround TEXT (255), ForeGround TEXT (255))"),
       {}},
      {Statement("CREATE TABLE EventTypes (TypeID COUNTER CONSTRAINT TypeID PRIMARY KEY, "
                 "TypeName TEXT (50), FileName TEXT (50))"),
       {}},
      {Statement("ALTER TABLE Calendars ADD COLUMN FirstDayOfWeek LONG"),
       {Statement("UPDATE Calendars SET FirstDayOfWeek = 2 WHERE MondayFirst = yes"),
        Statement("UPDATE Calendars SET FirstDayOfWeek = 1 WHERE MondayFirst = no"),
        Statement("ALTER TABLE Calendars DROP COLUMN MondayFirst")}},
      {Statement("ALTER TABLE Calendars ADD COLUMN Weekend TEXT (50)"),
       {Statement("UPDATE Calendars SET Weekend = '1, 7'")}},
  };
  return kSteps;
}

}  // namespace

void UpgradeSchema(Connection& database) {
  for (const Step& step : Steps()) {
    if (!Succeeds(database, step.Change)) continue;
    for (const Statement& followUp : step.FollowUps) Succeeds(database, followUp);
  }
}

}  // namespace orlune
