#pragma once

namespace orlune {

struct ComponentState;

/// Takes over the query parameters "cn" (calendar), "cd" (date) and "dm" (view) into the session and reads
/// from it who is logged in and what is shown. A calendar that does not exist falls back to the user's own.
void TakeRequestState(ComponentState& state);

}  // namespace orlune
