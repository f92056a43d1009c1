#include "exchange/participant.h"

#include <algorithm>

#include "base/lists.h"
#include "base/text.h"
#include "exchange/row_text.h"
#include "store/calendars.h"
#include "store/device_settings.h"
#include "store/group_views.h"

namespace orlune {
namespace {

constexpr std::string_view kAdministrator = "admin";
constexpr const char* kEverybodysGroup = "default";

bool IsAmong(const std::vector<std::string>& names, std::string_view name) {
  return std::ranges::any_of(names,
                             [name](const std::string& known) { return EqualIgnoringCase(known, name); });
}

void AddNames(std::string_view list, std::vector<std::string>& names) {
  ForEachItem(list, [&](std::string_view name) {
    if (!name.empty() && !IsAmong(names, name)) names.emplace_back(name);
  });
}

const DeviceSetting* FindSetting(const std::vector<DeviceSetting>& settings, std::string_view calendar) {
  const auto found = std::ranges::find_if(settings, [calendar](const DeviceSetting& setting) {
    return EqualIgnoringCase(setting.Calendar, calendar);
  });
  return found == settings.end() ? nullptr : &*found;
}

void TakeSettings(const std::vector<DeviceSetting>& settings, std::vector<SharedCalendar>& calendars) {
  for (SharedCalendar& calendar : calendars) {
    const DeviceSetting* setting = FindSetting(settings, calendar.Name);
    if (setting == nullptr) continue;
    calendar.Colour = setting->Colour;
    calendar.Order = setting->Position;
  }
}

}  // namespace

const SharedCalendar* Participant::Find(std::string_view name) const {
  const auto found = std::ranges::find_if(
      Calendars, [name](const SharedCalendar& calendar) { return EqualIgnoringCase(calendar.Name, name); });
  return found == Calendars.end() ? nullptr : &*found;
}

std::optional<Participant> LoadParticipant(Connection& database, std::string_view loginName) {
  const bool isAdministrator = loginName == kAdministrator;
  const std::string name(loginName);
  auto [account, friendlyName, memberships, allGroups, views, settings] =
      Ask(database, LoginAccountOf(name), FriendlyNameOf(name), MembershipsOf({{name}}),
          isAdministrator ? GroupNames() : Query<std::vector<std::string>>(), GroupViewsVisibleTo(name),
          DeviceSettingsOf(name));
  if (!account) return std::nullopt;

  std::vector<std::string> administered = std::move(allGroups);
  AddNames(account->Account.AdminOfGroups, administered);
  std::vector<std::string> groups = administered;
  for (const std::string& list : memberships) AddNames(list, groups);
  AddNames(kEverybodysGroup, groups);

  Participant participant{account->Name, PlainText(friendlyName.value_or(account->Name)), {}};
  participant.Calendars.push_back({participant.LoginName, participant.FriendlyName, true, true});
  for (const Calendar& group : Ask(database, GroupsNamed(groups)))
    participant.Calendars.push_back(
        {group.Name, PlainText(group.FriendlyName), IsAmong(administered, group.Name)});
  for (const GroupViewChoice& view : views)
    participant.Calendars.push_back({"@" + view.Name, PlainText(view.FriendlyName)});
  TakeSettings(settings, participant.Calendars);
  return participant;
}

void StoreColourAndOrder(Connection& database, const Participant& participant, const SharedCalendar& calendar,
                         const std::optional<std::string>& colour, const std::optional<std::string>& order) {
  StoreDeviceSetting(database, participant.LoginName,
                     {calendar.Name, colour.value_or(calendar.Colour), order.value_or(calendar.Order)});
}

}  // namespace orlune
