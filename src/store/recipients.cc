#include "store/recipients.h"

#include <algorithm>
#include <unordered_set>

#include "base/lists.h"
#include "store/calendars.h"

namespace orlune {
namespace {

/// Distinct names in the order in which they were added.
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
  void AddAnswers(Connection& database, std::span<const Query<std::vector<std::string>>> queries) {
    for (const auto& answer : AskAll(database, queries)) {
      for (const std::string& name : answer) Add(name);
    }
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

}  // namespace

std::vector<std::string> ChosenRecipients(Connection& database, std::string_view listText) {
  if (listText.empty()) return {};
  std::vector<Query<std::vector<std::string>>> spellings;
  ForEachItem(listText,
              [&](std::string_view item) { spellings.push_back(SpellingsOf(WithoutBrackets(item))); });
  NameList chosen;
  chosen.AddAnswers(database, spellings);
  return std::move(chosen).Names();
}

std::vector<std::string> ExpandGroupRecipients(Connection& database,
                                               std::span<const std::string> recipients) {
  NameList expanded;
  for (const std::string& name : recipients) expanded.Add(name);
  std::vector<Query<std::vector<std::string>>> members;
  for (const std::string& group : Ask(database, GroupNames())) {
    if (expanded.Remove(group)) members.push_back(group == "default" ? UserNames() : MembersOfGroup(group));
  }
  expanded.AddAnswers(database, members);
  return std::move(expanded).Names();
}

}  // namespace orlune
