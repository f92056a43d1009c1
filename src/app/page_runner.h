#pragma once

#include <string>

#include "app/configuration.h"
#include "http/website.h"
#include "platform/surroundings.h"

namespace orlune {

/// What a page has with one kind of access to its database. Outlives the page.
struct PageResources {
  orlune::Surroundings Surroundings;
  SessionStore& Sessions;
};

/// The page that `configuration` describes, which runs a component of its own for every request. `database`
/// is the address to be displayed.
HostedPage MakePage(const PageConfiguration& configuration, const std::string& database,
                    const PageResources& writing, const PageResources& reading);

}  // namespace orlune
