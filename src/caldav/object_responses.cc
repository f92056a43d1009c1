#include "caldav/object_responses.h"

#include "caldav/dav_error.h"
#include "caldav/xml_text.h"

namespace orlune {

ObjectResponses::ObjectResponses(const DavVisit& visit, const PropertyWish& wish)
    : visit_(visit),
      wish_(wish),
      xml_(XmlDocumentBegin("D:multistatus")),
      link_(visit.Links.To({Place::kCalendar, visit.Address.User, visit.Address.Calendar})),
      calendarLength_(link_.size()) {}

void ObjectResponses::Add(const SharedObject& object, std::string_view text) {
  Resource resource{{Place::kObject}, visit_.Calendar, &object, text};
  std::string expanded;
  if (wish_.Expansion()) {
    expanded = visit_.Tools.Texts.Expanded(text, *wish_.Expansion());
    resource.Text = expanded;
  }
  wish_.AppendResponse(visit_, resource, LinkTo(object.Object.Name), xml_);
}

void ObjectResponses::Add(const SharedObject& object) {
  if (!wish_.NeedsText()) return Add(object, "");
  Add(object, visit_.Tools.Texts.ObjectText(object.Object, object.Week));
}

void ObjectResponses::AddMissing(std::string_view name) {
  AddMissingLink(LinkTo(name));
}

void ObjectResponses::AddMissingLink(std::string_view link) {
  AppendStatusResponse(xml_, link, "404 Not Found");
}

void ObjectResponses::AddText(std::string_view element, std::string_view text) {
  AppendElement(xml_, element, text);
}

ReplyMessage ObjectResponses::Reply() {
  AppendDocumentEnd(xml_, "D:multistatus");
  return XmlReply(207, std::move(xml_));
}

std::string_view ObjectResponses::LinkTo(std::string_view name) {
  link_.resize(calendarLength_);
  AppendSegment(link_, name);
  return link_;
}

}  // namespace orlune
