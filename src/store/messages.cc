#include "store/messages.h"

#include "store/field.h"

namespace orlune {

Query<int> UnreadMessageCount(std::string_view loginName) {
  return {
      Statement("SELECT Count(MessageID) AS MsgCount FROM Messages WHERE Recipient = '{}' AND Viewed = No",
                loginName),
      [](ResultSet& rows) {
        return rows.Next() ? NumberOf(rows.Get(rows.Column("MsgCount"))).value_or(0) : 0;
      }};
}

}  // namespace orlune
