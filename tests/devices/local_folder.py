"""A folder of event files that vdirsyncer keeps the same as the calendars of a user."""
import os
import pathlib
import subprocess
import tempfile

from calendar_server import PASSWORD

CONFIGURATION = """
[general]
status_path = "{folder}/status/"
[pair calendars]
a = "local"
b = "server"
collections = ["from b"]
conflict_resolution = {resolution}
[storage local]
type = "filesystem"
path = "{folder}/calendars/"
fileext = ".ics"
[storage server]
type = "caldav"
url = "{url}/"
username = "{user}"
password = "{password}"
"""
SUBSCRIPTION = """
[general]
status_path = "{folder}/status/"
[pair calendars]
a = "local"
b = "server"
collections = null
[storage local]
type = "filesystem"
path = "{folder}/calendars/"
fileext = ".ics"
[storage server]
type = "http"
url = "{subscription}"
"""


class LocalFolder:
    def __init__(self, test, server, user, subscription=None):
        # vdirsyncer waits for the disk after each file.
        folder = tempfile.TemporaryDirectory(prefix="orlune-folder-", dir="/dev/shm" if os.path.isdir("/dev/shm") else None)
        test.addCleanup(folder.cleanup)
        self.path = pathlib.Path(folder.name)
        self._settings = {"folder": self.path, "url": server.url, "user": user, "password": PASSWORD,
                          "subscription": subscription}
        self._form = SUBSCRIPTION if subscription else CONFIGURATION
        self.resolve_conflicts_by("null")
        self.vdirsyncer("discover")

    def resolve_conflicts_by(self, resolution):
        (self.path / "config").write_text(self._form.format(resolution=resolution, **self._settings))

    def calendar(self, name):
        return self.path / "calendars" / name

    def files(self, calendar):
        return {file.name: file.read_bytes() for file in self.calendar(calendar).glob("*.ics")}

    def run(self, *command):
        environment = {**os.environ, "HOME": str(self.path), "XDG_CONFIG_HOME": str(self.path), "XDG_DATA_HOME": str(self.path),
                       "XDG_CACHE_HOME": str(self.path), "LC_ALL": "C.UTF-8", "TZ": "Europe/Helsinki"}
        return subprocess.run(command, input="y\n" * 20, env=environment, text=True, timeout=60,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def vdirsyncer(self, *command, fails=False):
        """What it says."""
        ended = self.run("vdirsyncer", "-c", str(self.path / "config"), *command)
        if (ended.returncode != 0) != fails:
            raise AssertionError("vdirsyncer %s: %d\n%s" % (" ".join(command), ended.returncode, ended.stdout))
        return ended.stdout

    def sync(self, calendar, **options):
        """The lines that tell what was done."""
        said = self.vdirsyncer("sync", "calendars/" + calendar, **options)
        return [line for line in said.splitlines() if not line.startswith("Syncing ")]
