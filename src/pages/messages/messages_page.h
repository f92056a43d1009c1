#pragma once

namespace orlune {

struct Visit;

/// The messages of the user: the list, reading, writing, replying, sending and deleting.
/// Reads the query parameters "act" ("view", "new", "reply", "send", "del"; anything else is the list) and
/// "msg", and the form fields "msg", "Vastaanottaja" (recipients), "Otsikko" (subject) and "Sisalto"
/// (content). Everything but the list asks for somebody who is logged in; a message is then open to whoever
/// names it, and on a strict hosting page only to its recipient.
void ShowMessagesPage(Visit& visit);

}  // namespace orlune
