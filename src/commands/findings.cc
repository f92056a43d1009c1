#include "commands/findings.h"

#include <algorithm>

#include "base/log_text.h"

namespace orlune {
namespace {

constexpr std::size_t kMostPlaces = 20;

}  // namespace

void Findings::Add(const FindingKind& kind, std::string_view place) {
  auto group = std::find_if(groups_.begin(), groups_.end(),
                            [&kind](const Group& known) { return known.Kind.What == kind.What; });
  if (group == groups_.end()) group = groups_.insert(group, Group{kind, 0, {}});
  if (++group->Count <= static_cast<std::int64_t>(kMostPlaces)) group->Places.push_back(OneLine(place));
}

bool Findings::IsSound() const {
  return std::all_of(groups_.begin(), groups_.end(), [](const Group& group) { return group.Kind.IsNote; });
}

void Findings::Print(std::ostream& output) const {
  for (const Group& group : groups_) {
    output << (group.Kind.IsNote ? "note: " : "") << group.Kind.What << " (" << group.Count << "); "
           << group.Kind.Remedy << ".\n";
    for (const std::string& place : group.Places) output << "  " << place << "\n";
    const std::int64_t omitted = group.Count - static_cast<std::int64_t>(group.Places.size());
    if (omitted > 0) output << "  and " << omitted << " more\n";
  }
}

}  // namespace orlune
