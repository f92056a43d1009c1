#include "store/device_settings.h"

#include "store/database_access.h"
#include "store/rows.h"
#include "store/transaction.h"

namespace orlune {

Query<std::vector<DeviceSetting>> DeviceSettingsOf(std::string_view loginName) {
  return {
      Statement("SELECT Calendar, Colour, Position FROM DeviceSettings WHERE (Login = '{}')", loginName),
      [](ResultSet& rows) {
        std::vector<DeviceSetting> settings;
        while (rows.Next())
          settings.push_back({TextIn(rows, "Calendar"), TextIn(rows, "Colour"), TextIn(rows, "Position")});
        return settings;
      }};
}

void StoreDeviceSetting(Connection& database, std::string_view loginName, const DeviceSetting& setting) {
  Transaction transaction(database);
  database.Execute(Statement("DELETE FROM DeviceSettings WHERE (Login = '{}') AND (Calendar = '{}')",
                             loginName, setting.Calendar));
  database.Execute(BuildSql(SqlMode::kInsert, "DeviceSettings",
                            std::vector<ColumnValue>{{"Login", SqlText(loginName)},
                                                     {"Calendar", SqlText(setting.Calendar)},
                                                     {"Colour", SqlText(setting.Colour)},
                                                     {"Position", SqlText(setting.Position)}}));
  transaction.Commit();
}

}  // namespace orlune
