#include "store/event_types.h"

#include "store/rows.h"

namespace orlune {

Query<std::vector<EventTypeEntry>> AllEventTypes() {
  return {
      Statement("SELECT TypeName, FileName FROM EventTypes"), [](ResultSet& rows) {
        const int typeName = rows.Column("TypeName");
        const int fileName = rows.Column("FileName");
        std::vector<EventTypeEntry> types;
        while (rows.Next()) {
          types.push_back({std::string(TextOf(rows.Get(typeName))), std::string(TextOf(rows.Get(fileName)))});
        }
        return types;
      }};
}

}  // namespace orlune
