#pragma once

#include <string>

#include "app/configuration.h"
#include "http/website.h"
#include "platform/surroundings.h"

namespace orlune {

/// The page that `configuration` describes, which runs a component of its own for every request. `database`
/// is the address to be displayed. The surroundings and the sessions outlive the page.
HostedPage MakePage(PageConfiguration configuration, std::string database, const Surroundings& surroundings,
                    SessionStore& sessions);

}  // namespace orlune
