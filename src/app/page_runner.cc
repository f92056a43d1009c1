#include "app/page_runner.h"

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

}  // namespace

HostedPage MakePage(PageConfiguration configuration, std::string database, const Surroundings& surroundings,
                    SessionStore& sessions) {
  std::string path = configuration.Path;
  return {std::move(path),
          [configuration = std::move(configuration), database = std::move(database),
           surroundings](const ScriptingContext& context) {
            Orlune page(surroundings);
            page.DBPath(database);
            for (const PropertyValue& setting : configuration.Properties) Apply(setting, page);
            page.OnStartPage(context);
            page.Execute();
          },
          sessions};
}

}  // namespace orlune
