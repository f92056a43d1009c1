#pragma once

namespace orlune {

struct Visit;

/// The messages of the user: the list, reading, writing, replying, sending and deleting.
/// Reads the query parameters "act" ("view", "new", "reply", "send", "del"; anything else is the list) and
/// "msg", and the form fields "msg", "Vastaanottaja" (recipients), "Otsikko" (subject) and "Sisalto"
/// (content). Everything but the list requires a login; any user may then read and delete any message by its
/// number.
void ShowMessagesPage(Visit& visit);

}  // namespace orlune
