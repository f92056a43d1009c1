#include "pages/messages/recipients.h"

#include <algorithm>
#include <unordered_set>

#include "base/lists.h"
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

/// Names in the order that they came in, each once.
class NameList {
 public:
  void Add(std::string_view name) {
    if (known_.emplace(name).second) names_.emplace_back(name);
  }
  bool Remove(const std::string& name) {
    if (known_.erase(name) == 0) return false;
    names_.erase(std::find(names_.begin(), names_.end(), name));
    return true;
  }
  void AddNamesOf(Connection& database, const Statement& query) {
    const auto rows = OpenQuery(database, query);
    const int name = rows->Column("Name");
    while (rows->Next()) Add(TextOf(rows->Get(name)));
  }
  std::vector<std::string> Names() && { return std::move(names_); }

 private:
  std::vector<std::string> names_;
  std::unordered_set<std::string> known_;
};

std::string_view WithoutBrackets(std::string_view name) {
  const bool hasBrackets = name.size() >= 2 && name.starts_with('[') && name.ends_with(']');
  return hasBrackets ? name.substr(1, name.size() - 2) : name;
}

std::vector<std::string> TakeGroups(Connection& database, NameList& recipients) {
  std::vector<std::string> groups;
  const auto rows = OpenQuery(database, Statement("SELECT Name FROM Calendars WHERE (IsGroup = yes)"));
  const int nameColumn = rows->Column("Name");
  while (rows->Next()) {
    std::string name(TextOf(rows->Get(nameColumn)));
    if (recipients.Remove(name)) groups.push_back(std::move(name));
  }
  return groups;
}

}  // namespace

std::vector<std::string> ChosenRecipients(Connection& database, std::string_view listText) {
  NameList chosen;
  if (listText.empty()) return {};
  ForEachItem(listText, [&](std::string_view item) {
    chosen.AddNamesOf(database,
                      Statement("SELECT Name FROM Calendars WHERE Name = '{}'", WithoutBrackets(item)));
  });
  return std::move(chosen).Names();
}

void ExpandGroupRecipients(Connection& database, std::vector<std::string>& recipients) {
  NameList expanded;
  for (const std::string& name : recipients) expanded.Add(name);
  for (const std::string& group : TakeGroups(database, expanded)) {
    expanded.AddNamesOf(
        database, group == "default"
                      ? Statement("SELECT Name FROM Calendars WHERE IsGroup = no")
                      : Statement("SELECT Name FROM Calendars WHERE MemberOfGroups LIKE '%{}%'", group));
  }
  recipients = std::move(expanded).Names();
}

}  // namespace orlune
