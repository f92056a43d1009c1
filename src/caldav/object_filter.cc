#include "caldav/object_filter.h"

#include "base/ascii.h"
#include "caldav/dav_error.h"

namespace orlune {
namespace {

DavError Unsupported(std::string_view what) {
  return {403, "The filter has what this server does not look for: " + std::string(what) + ".",
          "<C:supported-filter/>"};
}

bool IsNotDefined(const XmlElement& filter) {
  return filter.Find(kCalDav, "is-not-defined") != nullptr;
}

bool IsNamed(const XmlElement& filter, std::string_view name) {
  return EqualsIgnoringAsciiCase(filter.Attribute("name"), name);
}

PropertyFilter TextMatch(std::string name, const XmlElement& match) {
  const std::string_view collation = match.Attribute("collation");
  const bool heedsCase = collation == "i;octet";
  if (!collation.empty() && !heedsCase && collation != "i;ascii-casemap" && collation != "default")
    throw DavError(403, "Texts are compared by i;ascii-casemap or i;octet.", "<C:supported-collation/>");
  return {.Name = std::move(name),
          .Text = match.Text,
          .IsNegated = match.Attribute("negate-condition") == "yes",
          .HeedsCase = heedsCase};
}

}  // namespace

ObjectFilter::ObjectFilter(const XmlElement& filter) {
  const XmlElement* calendar = filter.Find(kCalDav, "comp-filter");
  if (calendar == nullptr || filter.Children.size() != 1 || calendar->Attribute("name").empty())
    throw DavError(403, "A filter begins with one comp-filter, named VCALENDAR.", "<C:valid-filter/>");
  if (!IsNamed(*calendar, "VCALENDAR")) {
    isForNone_ = !IsNotDefined(*calendar);
    return;
  }
  for (const XmlElement& part : calendar->Children) {
    if (part.Is(kCalDav, "is-not-defined")) {
      isForNone_ = true;
    } else if (part.Is(kCalDav, "comp-filter")) {
      ReadComponent(part);
    } else {
      throw Unsupported(part.Name + " of VCALENDAR");
    }
  }
}

void ObjectFilter::ReadComponent(const XmlElement& component) {
  const bool isEvent = IsNamed(component, "VEVENT");
  if (IsNotDefined(component)) {
    isForNone_ = isForNone_ || isEvent;
  } else if (!isEvent) {
    // Time zones come with events, but nobody asks for these; other components are not kept as objects.
    isForNone_ = true;
  } else if (hasEvent_) {
    throw Unsupported("VEVENT twice");
  } else {
    hasEvent_ = true;
    ReadEvent(component);
  }
}

void ObjectFilter::ReadEvent(const XmlElement& event) {
  for (const XmlElement& part : event.Children) {
    if (part.Is(kCalDav, "time-range")) {
      period_ = ReadPeriod(part, true);
    } else if (part.Is(kCalDav, "prop-filter")) {
      ReadProperty(part);
    } else {
      throw Unsupported(part.Name + " of VEVENT");
    }
  }
}

void ObjectFilter::ReadProperty(const XmlElement& property) {
  PropertyFilter filter{.Name = std::string(property.Attribute("name"))};
  if (filter.Name.empty()) throw DavError(403, "A prop-filter has a name.", "<C:valid-filter/>");
  if (property.Children.empty()) return properties_.push_back(std::move(filter));
  for (const XmlElement& condition : property.Children) {
    if (condition.Is(kCalDav, "is-not-defined")) {
      properties_.push_back({.Name = filter.Name, .IsNotDefined = true});
    } else if (condition.Is(kCalDav, "text-match")) {
      properties_.push_back(TextMatch(filter.Name, condition));
    } else {
      throw Unsupported(condition.Name + " of a property");
    }
  }
}

ObjectChoice ObjectFilter::Choice(const CalendarText& texts) const {
  ObjectChoice choice;
  if (!period_) return choice;
  choice.First = texts.LocalTime(period_->Begin).Day;
  if (period_->End) choice.Last = texts.LocalTime(*period_->End).Day;
  return choice;
}

bool ObjectFilter::Admits(const SharedObject& object, std::string_view text,
                          const CalendarText& texts) const {
  if (period_ && SpansIn(object, texts, *period_, 1).empty()) return false;
  return properties_.empty() || texts.Matches(text, properties_);
}

}  // namespace orlune
