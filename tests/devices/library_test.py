import datetime
import unittest
from urllib.parse import unquote

import caldav

from calendar_server import PAGE, PASSWORD, DeviceTest, Person

JUNE = (2035, 6)
FIRST, LAST = datetime.datetime(2035, 6, 1), datetime.datetime(2035, 7, 1)


def event_text(uid, title, *lines):
    return "\r\n".join(("BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Example//Library//EN", "BEGIN:VEVENT", "UID:" + uid,
                        "DTSTAMP:20350601T080000Z", "SUMMARY:" + title, *lines, "END:VEVENT", "END:VCALENDAR", ""))


class LibraryTest(DeviceTest):
    """What python3-caldav sees and does. Its version 0.11 does not follow a bare host to its calendars."""

    def principal(self, user, password=PASSWORD):
        return caldav.DAVClient(self.server.url + PAGE + "/dav/", username=user, password=password).principal()

    def calendar(self, user, name=None):
        [calendar] = [each for each in self.principal(user).calendars() if unquote(each.url.path).endswith("/%s/" % (name or user))]
        return calendar

    def begins(self, events):
        return sorted(str(each.dtstart.value)[:16] for event in events for each in event.vobject_instance.vevent_list)

    def test_the_bare_host_leads_to_the_calendars_with_their_rights(self):
        for path in ("/", "/.well-known/caldav"):
            answer = self.server.request("PROPFIND", path)
            self.assertEqual((answer.status, answer.headers["Location"]), (301, PAGE + "/dav/"), path)
        shown = {}
        for calendar in self.principal("asa").calendars():
            answer = self.server.as_device("asa", "PROPFIND", calendar.url.path.removeprefix(PAGE + "/dav/"), headers={"Depth": "0"},
                                           body='<propfind xmlns="DAV:"><prop><current-user-privilege-set/></prop></propfind>')
            shown[calendar.name] = "write-content" in answer.text
        self.assertEqual(shown, {"Åsa Lindqvist": True, "Sales": True, "Board": False, "Everybody": False,
                                 "Engineering Team": False, "Sales Floor": False, "Who's Where": False})

    def test_events_are_saved_found_changed_and_deleted(self):
        calendar, page = self.calendar("asa"), Person(self.server, "asa")
        self.assertEqual(calendar.date_search(FIRST, LAST, expand=False), [])
        weekly = calendar.save_event(event_text("w-1", "Weekly", "DTSTART:20350604T060000Z", "DTEND:20350604T070000Z",
                                                "RRULE:FREQ=WEEKLY;UNTIL=20350630T000000Z", "EXDATE:20350618T060000Z"))
        calendar.save_event(event_text("d-1", "Holiday", "DTSTART;VALUE=DATE:20350620", "DTEND;VALUE=DATE:20350623"))
        self.assertEqual(page.dates_of("9:00-10:00 Weekly", JUNE), [4, 11, 25])
        self.assertEqual(page.dates_of("Holiday", JUNE), [20, 21, 22])
        self.assertEqual(self.begins(calendar.date_search(FIRST, LAST, expand=True)),
                         ["2035-06-04 06:00", "2035-06-11 06:00", "2035-06-20", "2035-06-25 06:00"])
        self.assertEqual(self.begins(calendar.date_search(datetime.datetime(2035, 6, 18), datetime.datetime(2035, 6, 19), expand=False)), [])
        busy = calendar.freebusy_request(FIRST, LAST).vobject_instance.vfreebusy.freebusy_list
        self.assertEqual(sum(len(period.value) for period in busy), 4)

        weekly.vobject_instance.vevent.summary.value = "Every week"
        weekly.save()
        self.assertEqual(page.dates_of("Every week", JUNE), [4, 11, 25])
        self.assertEqual(calendar.event_by_uid("w-1").url, weekly.url)
        weekly.delete()
        with self.assertRaises(caldav.error.NotFoundError):
            calendar.event_by_uid("w-1")
        self.assertEqual(page.dates_of("Every week", JUNE), [])

    def test_a_token_tells_what_pages_and_others_changed(self):
        calendar, page = self.calendar("tomas"), Person(self.server, "tomas")
        gone = calendar.save_event(event_text("t-1", "Gone", "DTSTART;VALUE=DATE:20350605"))
        page.save_event("Typed", "6/6/2035")
        mirror = calendar.objects_by_sync_token(load_objects=True)
        self.assertEqual(mirror.sync(), ([], []))

        page.save_event("Typed again", "6/7/2035", id=page.event_numbers("Typed", JUNE)[0])
        page.save_event("New", "6/8/2035")
        self.calendar("tomas").event_by_uid("t-1").delete()
        changed, deleted = mirror.sync()
        self.assertEqual(sorted(event.vobject_instance.vevent.summary.value for event in changed), ["New", "Typed again"])
        self.assertEqual([event.url for event in deleted], [gone.url])
        self.assertEqual(mirror.sync(), ([], []))
        Person(self.server, "zoe").save_event("Somebody else's", "6/8/2035")
        self.assertEqual(mirror.sync(), ([], []))

    def test_of_two_clients_the_second_does_not_overwrite_the_first(self):
        path = "calendars/ines/ines/shared.ics"
        first, second = (event_text("s-1", title, "DTSTART:20350614T060000Z") for title in ("First", "Second"))
        made = self.server.put(path, first, **{"If-None-Match": "*"})
        tag = {"If-Match": made.headers["ETag"]}
        self.assertEqual((made.status, self.server.get(path).headers["ETag"]), (201, tag["If-Match"]))
        for text, headers, status in ((second, {"If-None-Match": "*"}, 412), (second, {"If-Match": '"other"'}, 412),
                                      (second, tag, 204), (first, tag, 412)):
            self.assertEqual(self.server.put(path, text, **headers).status, status, headers)
        self.assertEqual(self.server.as_device("ines", "DELETE", path, headers=tag).status, 412)
        self.assertEqual(self.server.get(path).text, second)
        again = self.server.put("calendars/ines/ines/elsewhere.ics", second)
        self.assertEqual(again.status, 409)
        self.assertIn("no-uid-conflict", again.text)

    def test_nobody_gets_what_the_pages_do_not_show(self):
        page = Person(self.server, "jurgen")
        page.save_event("Dentist", "6/13/2035", time1="8:00", time2="9:00", private="on")
        self.server.put("calendars/jurgen/jurgen/secret.ics", event_text("p-1", "Surgery", "CLASS:PRIVATE", "DTSTART:20350613T100000Z", "LOCATION:Clinic"))
        seen = "".join(event.data for event in self.calendar("asa", "@engineeringteam").date_search(FIRST, LAST, expand=False))
        self.assertEqual(seen.count("CLASS:PRIVATE"), 2)
        for secret in ("Dentist", "Surgery", "Clinic"):
            self.assertNotIn(secret, seen)
        text = event_text("x-1", "Intruder", "DTSTART:20350613T100000Z")
        for method, path, status in (
                ("PROPFIND", "calendars/jurgen/", 404), ("GET", "calendars/jurgen/jurgen/secret.ics", 404),
                ("PROPFIND", "calendars/asa/jurgen/", 404), ("PROPFIND", "calendars/asa/engineering/", 404),
                ("PUT", "calendars/asa/jurgen/x.ics", 409), ("PUT", "calendars/asa/board/x.ics", 403),
                ("PUT", "calendars/asa/@salesfloor/x.ics", 403), ("DELETE", "calendars/asa/asa/", 403)):
            self.assertEqual(self.server.as_device("asa", method, path, text if method == "PUT" else None).status, status, (method, path))

    def test_an_app_password_works_until_it_is_revoked(self):
        page = Person(self.server, "daniel")
        made = page.post("/sharing?act=mkpw", {"device": "Phone"})
        secret = page.secrets_on(made)[2]
        self.assertEqual(len(self.principal("daniel", secret).calendars()), 5)
        page.post("/sharing?act=rmpw", {"key": page.keys_on(made)[0]})
        with self.assertRaises(caldav.error.AuthorizationError):
            self.principal("daniel", secret)


if __name__ == "__main__":
    unittest.main()
