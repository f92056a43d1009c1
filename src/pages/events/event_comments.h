#pragma once

namespace orlune {

struct Visit;

/// Tells the script of the views the comments of the event `id`, as plain text: {"comments":"..."}. Answers
/// 404 when there is no such event, and 403 without the right to change the events of its calendar.
void TellEventComments(Visit& visit);

}  // namespace orlune
