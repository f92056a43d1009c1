#pragma once

#include "app/configuration.h"
#include "http/website.h"
#include "platform/surroundings.h"

namespace orlune {

/// The page that `configuration` describes: every request gets its own component, configured and run. The
/// surroundings outlive the page.
HostedPage MakePage(PageConfiguration configuration, const Surroundings& surroundings);

}  // namespace orlune
