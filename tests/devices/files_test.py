import collections
import datetime
import html
import re
import unittest
import zoneinfo
from pathlib import Path

import vobject

from calendar_server import PAGE, DeviceTest, Person

JUNE, JULY, AUGUST = (2035, 6), (2035, 7), (2035, 8)
HELSINKI = zoneinfo.ZoneInfo("Europe/Helsinki")
SEPTEMBER_ODD = [2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30]

# A file, months, and in these the days of the entries that contain a text.
FILES = [
    ("rules.ics", "zoe", [(1997, 8), (1997, 9), (1997, 10)], {
        "04:00 PM Ten days": ([], list(range(2, 12)), []),
        "Every other day": ([], SEPTEMBER_ODD, SEPTEMBER_ODD),
        "Every ten days": ([], [2, 12, 22], [2, 12]),
        "Every other week": ([], [2, 16, 30], [14, 28]),
        "Two weekdays": ([], [1, 3, 5, 15, 17, 19, 29], [1, 3, 13, 15, 17, 27, 29, 31]),
        "First Friday": ([], [5], [3]),
        "First and last Sunday": ([], [7, 28], []),
        "Second-to-last Monday": ([], [22], [20]),
        "Third-to-last day": ([], [28], [29]),
        "First and last day": ([], [30], [1, 31]),
        "Every 18 months": ([], [10, 11, 12, 13, 14, 15], []),
        "Friday the 13th": ([], [], []),
        "Saturday after a Sunday": ([], [13], [11]),
        "Third of three": ([], [4], [7]),
        "Week starts on Monday": ([5, 10, 19, 24], [], []),
        "Week starts on Sunday": ([5, 17, 19, 31], [], []),
    }),
    ("rules.ics", "zoe", [(1998, 2), (1998, 3), (1999, 3)], {
        "Friday the 13th": ([13], [13], []),
        "Every 18 months": ([], [], [10, 11, 12, 13]),
        "Third-to-last day": ([26], [29], [29]),
    }),
    ("web_calendar.ics", "tomas", [JUNE, JULY], {
        "03:00-04:00 West coast call": ([5, 7, 12, 19, 26, 28], [3, 5, 10]),
        "20:00-20:30 West coast call (moved)": ([21], []),
        "Midsummer away": ([28, 29, 30], [1]),
        "09:00-10:30 Breakfast 🥐 in UTC": ([15], []),
        "Kai's birthday": ([], [1]),
        "Not an event": ([], []),
    }),
    ("desktop_organiser.ics", "noor", [JUNE, JULY, AUGUST], {
        "11:00 AM-12:30 PM Lenkungskreis": ([5], [3], [7]),
        "10:00 PM-11:00 PM Early in Pune": ([10], [], []),
        "08:00 AM-09:00 AM Zone by a name alone": ([12], [], []),
        "Every four weeks": ([6], [4], [1, 29]),
        "10:00 AM-11:00 AM Last Friday": ([29], [27], [31]),
    }),
    ("phone.ics", "priya", [JUNE, JULY, AUGUST], {
        "Night train": ([16, 17, 18], [], []),
        "07:00 AM-07:45 AM Swim": ([1, 2, 4, 5, 6, 9, 11, 12, 13, 14], [], []),
        "08:00 PM-09:00 PM Swim in the evening": ([7], [], []),
        "12:00 PM-12:30 PM Floating lunch": ([20, 22, 27], [], []),
        "Rent": ([], [31], [31]),
    }),
]


def events_in(text):
    """The VEVENTs of a text as lists of their lines, by UID."""
    events = collections.defaultdict(list)
    for event in re.findall(r"BEGIN:VEVENT\r?\n.*?END:VEVENT", re.sub(r"\r?\n[ \t]", "", text), re.S):
        events[re.search(r"^UID:(.*?)\r?$", event, re.M)[1]].append(event.splitlines())
    return events


def local_day(time):
    return time.astimezone(HELSINKI).date() if isinstance(time, datetime.datetime) else time


class FilesTest(DeviceTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.files = {name: (Path(__file__).parent / "files" / name).read_bytes() for name, *_ in FILES}
        cls.pages = {}
        for name, user, _, _ in FILES:
            if user not in cls.pages:
                cls.pages[user] = page = Person(cls.server, user)
                cls.import_file(page, name, cls.files[name])

    @staticmethod
    def import_file(page, name, content):
        """What the preview tells, and the page after the import, of which there is none when nothing is new."""
        preview = page.post_file("/sharing?act=preview", {"calendar": page.name}, name, content)
        posted = re.search(r'<TEXTAREA NAME="text" HIDDEN>(.*?)</TEXTAREA>', preview, re.S)
        if not posted:
            return preview, ""
        return preview, page.post_file("/sharing?act=import", {"calendar": page.name, "text": html.unescape(posted[1])}, None, None)

    def test_the_days_on_the_pages_are_those_of_the_files(self):
        for name, user, months, entries in FILES:
            shown = [self.pages[user].days(month) for month in months]
            for text, expected in entries.items():
                days = tuple([day.day for day, lines in month.items() if any(text in line for line in lines)] for month in shown)
                with self.subTest(file=name, text=text):
                    self.assertEqual(days, tuple(expected))

    def test_a_preview_tells_what_comes_in_and_the_same_file_again_adds_nothing(self):
        preview, _ = self.import_file(Person(self.server, "daniel"), "organiser.ics", self.files["desktop_organiser.ics"])
        for row in ("Lenkungskreis .*1st in month .*new .*alarms, location", "Zone by a name alone .*unknown time zone",
                    "Last Friday .*Listed Days .*rule \\(its days are listed\\)"):
            self.assertRegex(re.sub("<[^>]*>", " ", preview), row)
        for user, page in self.pages.items():
            name = next(name for name, other, *_ in FILES if other == user)
            before = page.days(JUNE)
            self.assertEqual(self.import_file(page, name, self.files[name])[1], "", name)
            changed = re.sub(rb"SUMMARY:(Swim|West coast|Lenkungskreis|Ten days)", rb"SUMMARY:New \1", self.files[name])
            self.import_file(page, name, changed)
            after = page.days(JUNE)
            self.assertEqual([len(lines) for lines in after.values()], [len(lines) for lines in before.values()], name)
            self.import_file(page, name, self.files[name])
            self.assertEqual(page.days(JUNE), before, name)

    def test_devices_get_each_event_of_a_file_as_it_was(self):
        for user in self.pages:
            name = next(name for name, other, *_ in FILES if other == user)
            stored = self.server.objects(user, user)
            for uid, events in events_in(self.files[name].decode()).items():
                with self.subTest(file=name, uid=uid):
                    self.assertEqual(events_in(stored[uid])[uid], events)

    def test_an_object_that_a_device_sends_comes_back_byte_for_byte(self):
        for name, content in self.files.items():
            text = content.decode()
            head = text[:text.index("BEGIN:VEVENT")].replace("METHOD:PUBLISH\r\n", "")
            for number, uid in enumerate(events_in(text)):
                events = [event for event in re.findall(r"BEGIN:VEVENT\r\n.*?END:VEVENT\r\n", text, re.S) if uid in re.sub("\r\n[ \t]", "", event)]
                one = (head + "".join(events) + "END:VCALENDAR\r\n").encode()
                path = "calendars/ines/ines/%s-%d.ics" % (name.split(".")[0], number)
                with self.subTest(file=name, uid=uid):
                    sent = self.server.put(path, one)
                    back = self.server.get(path)
                    self.assertEqual((sent.status, sent.headers["ETag"], one), (201, back.headers["ETag"], back.body))

    def days_in(self, text):
        """The days of each title in a calendar file, as another program works them out."""
        days, changed = collections.defaultdict(set), collections.defaultdict(set)
        events = vobject.readOne(text).vevent_list
        for event in events:
            if hasattr(event, "recurrence_id"):
                changed[event.uid.value].add(local_day(event.recurrence_id.value))
        for event in events:
            if hasattr(event, "status") and event.status.value == "CANCELLED":
                continue
            begin, end = event.dtstart.value, getattr(event, "dtend", event.dtstart).value
            first, last = local_day(begin), local_day(end)
            length = max((last - first).days - (0 if isinstance(begin, datetime.datetime) else 1), 0)
            begins = [first]
            if not hasattr(event, "recurrence_id") and event.getrruleset(addRDate=True):
                until = datetime.datetime(2035, 9, 1, tzinfo=begin.tzinfo if isinstance(begin, datetime.datetime) else None)
                begins = [local_day(day) if isinstance(begin, datetime.datetime) else day.date()
                          for day in event.getrruleset(addRDate=True).between(datetime.datetime(1990, 1, 1, tzinfo=until.tzinfo), until)]
                begins = [day for day in begins if day not in changed[event.uid.value]]
            days[event.summary.value].update(day + datetime.timedelta(more) for day in begins for more in range(length + 1))
        return days

    def test_a_feed_has_the_same_days(self):
        for user, page in self.pages.items():
            made = page.post("/sharing?act=mklink", {"calendar": user, "link": "Family"})
            path = page.secrets_on(made)[0].removeprefix(self.server.url)
            self.assertTrue(path.startswith(PAGE + "/feed/"), path)
            feed = self.server.request("GET", path)
            self.assertEqual(self.server.request("GET", path, headers={"If-None-Match": feed.headers["ETag"]}).status, 304)
            days = self.days_in(feed.text)
            for name, other, months, entries in FILES:
                for text, expected in entries.items() if other == user else ():
                    title = re.sub(r"^[\d:]+( [AP]M)?(-[\d:]+( [AP]M)?)? ", "", text)
                    with self.subTest(file=name, title=title):
                        told = tuple(sorted(day.day for day in days[title] if (day.year, day.month) == month) for month in months)
                        self.assertEqual(told, tuple(expected))
            page.post("/sharing?act=rmlink", {"key": page.keys_on(made)[-1]})
            self.assertEqual(self.server.request("GET", path).status, 404)


if __name__ == "__main__":
    unittest.main()
