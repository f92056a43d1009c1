#pragma once

#include "app/configuration.h"
#include "http/website.h"
#include "platform/surroundings.h"

namespace orlune {

/// The page that `configuration` describes, which runs a component of its own for every request. The
/// surroundings and the sessions outlive the page.
HostedPage MakePage(PageConfiguration configuration, const Surroundings& surroundings,
                    SessionStore& sessions);

}  // namespace orlune
