import unittest

from calendar_server import DeviceTest, Person
from local_folder import LocalFolder

CONFIGURATION = """
[calendars]
[[work]]
path = {calendar}
[locale]
local_timezone = Europe/Helsinki
default_timezone = Europe/Helsinki
timeformat = %H:%M
dateformat = %Y-%m-%d
longdateformat = %Y-%m-%d
datetimeformat = %Y-%m-%d %H:%M
longdatetimeformat = %Y-%m-%d %H:%M
[sqlite]
path = {folder}/khal.db
"""


class KhalTest(DeviceTest):
    def setUp(self):
        self.folder = LocalFolder(self, self.server, "niamh")
        self.folder.sync("niamh")
        configuration = CONFIGURATION.format(calendar=self.folder.calendar("niamh"), folder=self.folder.path)
        (self.folder.path / "khal.conf").write_text(configuration)
        self.page = Person(self.server, "niamh")

    def khal(self, *command):
        ended = self.folder.run("khal", "-c", str(self.folder.path / "khal.conf"), *command)
        self.assertEqual(ended.returncode, 0, ended.stdout)
        return ended.stdout

    def days_listed(self, first, last):
        lines = self.khal("list", "--day-format", "", "--format", "{start-date} {start-time}-{end-time} {title}", first, last)
        return [line.strip() for line in lines.splitlines() if line.strip()]

    def test_khal_lists_what_the_pages_repeat(self):
        times = {"time1": "13:00", "time2": "14:30"}
        self.page.save_event("Fortnight", "6/4/2035", date2="7/31/2035", reptype="weekday", repweekday="2, 6", frequency="vko_2", **times)
        self.page.save_event("Pay day", "6/1/2035", date2="9/30/2035", reptype="month", repday="30", repweekends="vkl_pe")
        self.page.save_event("Trip", "7/2/2035", date2="7/4/2035", reptype="day")
        self.folder.sync("niamh")
        listed = self.days_listed("2035-06-01", "2035-08-31")
        self.assertEqual([line for line in listed if "Fortnight" in line],
                         ["2035-%s 13:00-14:30 Fortnight" % day for day in ("06-04", "06-08", "06-18", "06-22", "07-02", "07-06", "07-16", "07-20", "07-30")])
        self.assertEqual([line[:10] for line in listed if "Pay day" in line], ["2035-06-29", "2035-07-30", "2035-08-30"])
        self.assertEqual(len([line for line in listed if "Trip" in line]), 3)

    def test_what_khal_makes_is_on_the_pages(self):
        self.khal("new", "-a", "work", "2035-06-21 09:00", "2035-06-21 11:15", "Käsikirja", "::", "Bring tea")
        self.khal("new", "-a", "work", "--repeat", "weekly", "--until", "2035-07-13", "2035-06-28 18:00", "2035-06-28 18:15", "Watering")
        self.folder.sync("niamh")
        self.assertEqual(self.page.dates_of("9:00-11:15 Käsikirja", (2035, 6)), [21])
        self.assertEqual(self.page.dates_of("Watering", (2035, 6)), [28])
        self.assertEqual(self.page.dates_of("Watering", (2035, 7)), [5, 12])
        self.assertEqual(self.folder.sync("niamh"), [])


if __name__ == "__main__":
    unittest.main()
