#include "caldav/property_wish.h"

#include <algorithm>

#include "base/ascii.h"
#include "caldav/dav_error.h"
#include "caldav/xml_text.h"

namespace orlune {
namespace {

const Property* FindProperty(const XmlElement& element) {
  const auto found = std::ranges::find_if(KnownProperties(), [&](const Property& property) {
    return property.LocalName() == element.Name && property.Namespace() == element.Namespace;
  });
  return found == KnownProperties().end() ? nullptr : &*found;
}

void CheckDataType(const XmlElement& data) {
  const std::string_view type = data.Attribute("content-type");
  const std::string_view version = data.Attribute("version");
  if ((!type.empty() && !EqualsIgnoringAsciiCase(type, "text/calendar")) ||
      (!version.empty() && version != "2.0"))
    throw DavError(403, "Events are given as text/calendar, version 2.0.", "<C:supported-calendar-data/>");
}

void AppendPropstat(std::string& xml, std::string_view status) {
  xml.append("</D:prop><D:status>HTTP/1.1 ").append(status).append("</D:status></D:propstat>");
}

}  // namespace

PropertyWish PropertyWish::OfPropfind(const XmlElement& propfind) {
  PropertyWish wish;
  if (const XmlElement* prop = propfind.Find(kDav, "prop")) {
    wish.AddNamed(*prop);
  } else if (propfind.Find(kDav, "propname") != nullptr) {
    wish.isNamesOnly_ = true;
    for (const Property& property : KnownProperties()) {
      if (property.LocalName() != "calendar-data") wish.known_.push_back(&property);
    }
  } else {
    wish = All();
    if (const XmlElement* include = propfind.Find(kDav, "include")) wish.AddNamed(*include);
  }
  // The text is no property of the resource, but what a report tells of it (RFC 4791, section 9.6).
  std::erase_if(wish.known_, [&](const Property* property) {
    if (property->LocalName() != "calendar-data") return false;
    AppendEmpty(wish.unknown_, kCalDav, "calendar-data");
    return true;
  });
  return wish;
}

PropertyWish PropertyWish::All() {
  PropertyWish wish;
  for (const Property& property : KnownProperties()) {
    if (property.IsInAll) wish.Add(property);
  }
  return wish;
}

PropertyWish PropertyWish::OfReport(const XmlElement& report) {
  const XmlElement* prop = report.Find(kDav, "prop");
  if (prop == nullptr) return All();
  PropertyWish wish;
  wish.AddNamed(*prop);
  if (const XmlElement* text = prop->Find(kCalDav, "calendar-data")) {
    CheckDataType(*text);
    if (const XmlElement* expand = text->Find(kCalDav, "expand"))
      wish.expansion_ = ReadPeriod(*expand, false);
  }
  return wish;
}

void PropertyWish::AddNamed(const XmlElement& prop) {
  isNamed_ = true;
  for (const XmlElement& element : prop.Children) {
    if (const Property* property = FindProperty(element)) {
      Add(*property);
    } else {
      AppendEmpty(unknown_, element.Namespace, element.Name);
    }
  }
}

void PropertyWish::Add(const Property& property) {
  if (std::ranges::find(known_, &property) != known_.end()) return;
  known_.push_back(&property);
  needsText_ = needsText_ || property.NeedsText;
}

void PropertyWish::AppendFound(const DavVisit& visit, const Resource& resource, std::string& xml,
                               std::string& missing) const {
  for (const Property* property : known_) {
    const std::size_t before = xml.size();
    xml.append("<").append(property->Name).append(">");
    const std::size_t value = xml.size();
    const bool isThere = property->WriteTo(visit, resource, xml);
    if (isThere && !isNamesOnly_ && xml.size() > value) {
      xml.append("</").append(property->Name).append(">");
      continue;
    }
    xml.resize(before);
    std::string& empty = isThere ? xml : missing;
    empty.append("<").append(property->Name).append("/>");
  }
}

void PropertyWish::AppendResponse(const DavVisit& visit, const Resource& resource, std::string_view link,
                                  std::string& xml) const {
  xml += "<D:response>";
  AppendElement(xml, "D:href", link);
  xml += "<D:propstat><D:prop>";
  std::string missing = unknown_;
  AppendFound(visit, resource, xml, missing);
  AppendPropstat(xml, "200 OK");
  if (isNamed_ && !missing.empty() && !WantsMinimalReply(visit)) {
    xml.append("<D:propstat><D:prop>").append(missing);
    AppendPropstat(xml, "404 Not Found");
  }
  xml += "</D:response>\n";
}

void AppendStatusResponse(std::string& xml, std::string_view link, std::string_view status) {
  xml += "<D:response>";
  AppendElement(xml, "D:href", link);
  xml.append("<D:status>HTTP/1.1 ").append(status).append("</D:status></D:response>\n");
}

}  // namespace orlune
