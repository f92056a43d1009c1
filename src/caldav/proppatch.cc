#include <algorithm>
#include <optional>
#include <string>

#include "base/text.h"
#include "caldav/dav_error.h"
#include "caldav/propfind.h"
#include "caldav/xml_text.h"

namespace orlune {
namespace {

/// "#RRGGBB" or "#RRGGBBAA".
bool IsColour(std::string_view text) {
  constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";
  return (text.size() == 7 || text.size() == 9) && text[0] == '#' &&
         text.find_first_not_of(kHexDigits, 1) == std::string_view::npos;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlank = " \t\r\n";
  const std::size_t begin = std::min(text.find_first_not_of(kBlank), text.size());
  const std::size_t end = text.find_last_not_of(kBlank);
  return text.substr(begin, end == std::string_view::npos ? 0 : end + 1 - begin);
}

/// What a request changes; the texts are "" for a property that it removes.
class Changes {
 public:
  Changes(const DavVisit& visit, const XmlElement& update) : visit_(visit) {
    for (const XmlElement& action : update.Children) {
      const bool isSet = action.Is(kDav, "set");
      if (!isSet && !action.Is(kDav, "remove")) continue;
      const XmlElement* prop = action.Find(kDav, "prop");
      if (prop == nullptr) continue;
      for (const XmlElement& property : prop->Children) Take(property, isSet);
    }
  }

  bool AreAllowed() const { return protected_.empty() && invalid_.empty(); }

  void Store() const {
    if (colour_ || order_)
      StoreColourAndOrder(visit_.Database, visit_.Participant, *visit_.Calendar, colour_, order_);
  }

  ReplyMessage Reply() const {
    std::string xml = XmlDocumentBegin("D:multistatus") + "<D:response>";
    AppendElement(xml, "D:href", visit_.Links.To(visit_.Address));
    AppendPropstat(xml, allowed_, AreAllowed() ? "200 OK" : "424 Failed Dependency", "");
    AppendPropstat(xml, invalid_, "409 Conflict", "");
    AppendPropstat(xml, protected_, "403 Forbidden",
                   "<D:error><D:cannot-modify-protected-property/></D:error>");
    xml += "</D:response>";
    AppendDocumentEnd(xml, "D:multistatus");
    return XmlReply(207, std::move(xml));
  }

 private:
  void Take(const XmlElement& property, bool isSet) {
    const std::string value(isSet ? Trimmed(property.Text) : "");
    std::string* list = &protected_;
    if (visit_.Address.Place == Place::kCalendar && property.Is(kApple, "calendar-color")) {
      list = !isSet || IsColour(value) ? &allowed_ : &invalid_;
      colour_ = value;
    } else if (visit_.Address.Place == Place::kCalendar && property.Is(kApple, "calendar-order")) {
      const auto number = WholeNumber(value);
      list = !isSet || number ? &allowed_ : &invalid_;
      order_ = number ? std::to_string(*number) : "";
    }
    AppendEmpty(*list, property.Namespace, property.Name);
  }

  static void AppendPropstat(std::string& xml, std::string_view properties, std::string_view status,
                             std::string_view error) {
    if (properties.empty()) return;
    xml.append("<D:propstat><D:prop>").append(properties).append("</D:prop><D:status>HTTP/1.1 ");
    xml.append(status).append("</D:status>").append(error).append("</D:propstat>");
  }

  const DavVisit& visit_;
  std::optional<std::string> colour_;
  std::optional<std::string> order_;
  std::string allowed_;  // as empty elements, like the others
  std::string invalid_;
  std::string protected_;
};

}  // namespace

ReplyMessage AnswerProppatch(const DavVisit& visit) {
  if (visit.Address.Place == Place::kObject) LoadObject(visit);
  const Changes changes(visit, ReadBody(visit, "propertyupdate"));
  if (changes.AreAllowed()) changes.Store();
  return changes.Reply();
}

}  // namespace orlune
