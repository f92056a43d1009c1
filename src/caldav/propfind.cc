#include "caldav/propfind.h"

#include "caldav/dav_error.h"
#include "caldav/property_wish.h"
#include "caldav/xml_text.h"

namespace orlune {
namespace {

/// Whether what is in the resource is asked for too. Only an event has nothing in it.
bool HasDepthOne(const DavVisit& visit) {
  const std::string_view depth = visit.Message.Headers.Find("Depth");
  if (depth == "0" || visit.Address.Place == Place::kObject) return false;
  if (depth == "1") return true;
  if (depth.empty() || depth == "infinity")
    throw DavError(403, "Ask with the header Depth: 0 or 1.", "<D:propfind-finite-depth/>");
  throw DavError(400, "The header Depth is 0, 1 or infinity.");
}

class Listing {
 public:
  Listing(const DavVisit& visit, const PropertyWish& wish)
      : visit_(visit), wish_(wish), xml_(XmlDocumentBegin("D:multistatus")) {}

  void Add(Resource resource) {
    std::string text;
    if (resource.Object != nullptr && wish_.NeedsText())
      text = visit_.Tools.Texts.ObjectText(resource.Object->Object, resource.Object->Week);
    resource.Text = text;
    wish_.AppendResponse(visit_, resource, visit_.Links.To(resource.Address), xml_);
  }

  void AddContents() {
    const std::string& user = visit_.Participant.LoginName;
    switch (visit_.Address.Place) {
      case Place::kRoot:
        Add({{Place::kPrincipals}});
        return Add({{Place::kHomes}});
      case Place::kPrincipals:
        return Add({{Place::kPrincipal, user}});
      case Place::kHomes:
        return Add({{Place::kHome, user}});
      case Place::kHome:
        for (const SharedCalendar& calendar : visit_.Participant.Calendars)
          Add({{Place::kCalendar, user, calendar.Name}, &calendar});
        return;
      case Place::kCalendar:
        return AddObjects();
      case Place::kPrincipal:
      case Place::kObject:
        return;
    }
  }

  ReplyMessage Reply() {
    AppendDocumentEnd(xml_, "D:multistatus");
    return XmlReply(207, std::move(xml_));
  }

 private:
  void AddObjects() {
    Resource resource{visit_.Address, visit_.Calendar};
    resource.Address.Place = Place::kObject;
    const auto objects = LoadObjects(visit_.Database, visit_.Tools, *visit_.Calendar);
    for (const SharedObject& object : objects) {
      resource.Address.Object = object.Object.Name;
      resource.Object = &object;
      Add(resource);
    }
  }

  const DavVisit& visit_;
  const PropertyWish& wish_;
  std::string xml_;
};

PropertyWish ReadWish(const DavVisit& visit) {
  if (visit.Message.Body.empty()) return PropertyWish::All();
  return PropertyWish::OfPropfind(ReadBody(visit, "propfind"));
}

}  // namespace

ReplyMessage AnswerPropfind(const DavVisit& visit) {
  const bool hasDepthOne = HasDepthOne(visit);
  const PropertyWish wish = ReadWish(visit);
  Listing listing(visit, wish);
  Resource resource{visit.Address, visit.Calendar};
  std::optional<SharedObject> object;
  if (visit.Address.Place == Place::kObject) {
    object = LoadObject(visit);
    resource.Object = &*object;
  }
  listing.Add(resource);
  if (hasDepthOne) listing.AddContents();
  return listing.Reply();
}

}  // namespace orlune
