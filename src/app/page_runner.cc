#include "app/page_runner.h"

#include <algorithm>
#include <utility>

namespace orlune {
namespace {

void Apply(const PropertyValue& setting, Orlune& page) {
  if (const auto* set = std::get_if<PageProperty::SwitchSetter>(&setting.Property->Set)) {
    (*set)(page, std::get<bool>(setting.Value));
  } else {
    std::get<PageProperty::TextSetter>(setting.Property->Set)(page, std::get<std::string>(setting.Value));
  }
}

PageWithSessions MakePage(const PageConfiguration& configuration, const std::string& database,
                          const PageResources& resources) {
  return {[properties = configuration.Properties, database,
           surroundings = resources.Surroundings](const ScriptingContext& context) {
            Orlune page(surroundings);
            page.DBPath(database);
            for (const PropertyValue& setting : properties) Apply(setting, page);
            page.OnStartPage(context);
            page.Execute();
          },
          resources.Sessions};
}

bool IsSharing(const PageConfiguration& configuration) {
  return std::ranges::any_of(configuration.Properties, [](const PropertyValue& property) {
    return property.Property->Name == "Sharing" && std::get<bool>(property.Value);
  });
}

}  // namespace

HostedPage MakePage(const PageConfiguration& configuration, const std::string& database,
                    const PageResources& writing, const PageResources& reading) {
  return {configuration.Path, MakePage(configuration, database, writing),
          MakePage(configuration, database, reading), Orlune::Companions(IsSharing(configuration))};
}

}  // namespace orlune
