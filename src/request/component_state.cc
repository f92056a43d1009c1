#include "request/component_state.h"

#include "base/version.h"

namespace orlune {

ComponentState::ComponentState(const orlune::Surroundings& surroundings)
    : ExpireCookie(surroundings.Clock.Now().Day + std::chrono::days{1}),
      ProductTitle("Orlune v" + std::string(kVersion)),
      ProductHomeUrl(kProductHomeUrl),
      Today(ExpireCookie - std::chrono::days{1}),
      CurrentDate(Today),
      Surroundings(&surroundings) {}

}  // namespace orlune
