"""A strict demo company that is attacked, browsers that visit it, and the report of an attack.

The executable is ORLUNE_EXE. Settings that it does not know are left out, so that an older one can be attacked too.
"""
import http.client
import os
import shutil
import signal
import socket
import sqlite3
import subprocess
import sys
import tempfile
import urllib.parse

REPOSITORY = os.path.abspath(os.path.join(os.path.dirname(__file__), ".."))
EXE = os.path.abspath(os.environ.get("ORLUNE_EXE", os.path.join(REPOSITORY, "build/asan/orlune")))
PASSWORD = "demo1"  # of everybody in the demo
# Of the sanitizers. Any of them ends the server.
REPORTS = ("AddressSanitizer", "LeakSanitizer", "runtime error:")

_help = subprocess.run([EXE, "serve", "--help"], capture_output=True, text=True, check=True).stdout
_found = []


def held(attack, isHeld, details=""):
    """Prints whether the server held against an attack; finish() exits with 1 when one was found to work."""
    print("%-5s %s%s" % ("held" if isHeld else "FOUND", attack, ": %s" % (details,) if details != "" else ""), flush=True)
    if not isHeld:
        _found.append(attack)


def finish():
    sys.exit(1 if _found else 0)


class Server:
    """Pages of one database on a free port: /cal, /cookie with the login in a cookie, and /fixed, where everybody is
    the administrator. `server` are settings by name.

    `log`: a file descriptor to log to instead of a file. `files`: the limit of file descriptors.
    """

    def __init__(self, server={}, log=None, files=None):
        self.folder = tempfile.mkdtemp(prefix="orlune_attack.")
        self.database = self.folder + "/demo.db"
        self.exitCode = None
        subprocess.run([EXE, "init", self.database, "--demo"], check=True, stdout=subprocess.DEVNULL)
        settings = {"listen": '"127.0.0.1:0"', "site": '"%s/site"' % REPOSITORY,
                    "secret_file": '"%s/secret.key"' % self.folder, "allowed_hosts": '["127.0.0.1"]', **server}
        pages = {"/cal": "", "/cookie": "UseCookie = true\n", "/fixed": 'LoginName = "admin"\n'}
        with open(self.folder + "/orlune.toml", "w") as file:
            file.write("[server]\n" + "".join("%s = %s\n" % pair for pair in settings.items() if pair[0] in _help))
            for path, more in pages.items():
                file.write('[[page]]\npath = "%s"\nDBPath = "%s"\n%s%s' % (
                    path, self.database, "Strict = true\n" if "Strict" in _help else "", more))
        self.command = [EXE, "serve", "--config", self.folder + "/orlune.toml"]
        if files:
            self.command = ["sh", "-c", 'ulimit -n %d; exec "$@"' % files, "sh"] + self.command
        self.start(log)

    def start(self, log=None):
        with open(self.folder + "/log", "w") as file:
            self.process = subprocess.Popen(self.command, stdout=subprocess.PIPE, stderr=file if log is None else log, text=True)
        line = self.process.stdout.readline()
        if ":" not in line:
            raise RuntimeError("The server did not start: " + self.log())
        self.port = int(line.split("/cal")[0].rsplit(":", 1)[1])

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        self.stop()
        shutil.rmtree(self.folder, True)

    def log(self):
        with open(self.folder + "/log", errors="replace") as file:
            return file.read()

    def processorSeconds(self):
        with open("/proc/%d/stat" % self.process.pid) as file:
            fields = file.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def megabytes(self):
        with open("/proc/%d/statm" % self.process.pid) as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") // 1_000_000

    def kill(self):
        """As a loss of power would, but for the disk."""
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def stop(self):
        """Its exit code, or "killed" when it did not stop."""
        if self.exitCode is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.exitCode = self.process.wait(60)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
                self.exitCode = "killed"
            self.process.stdout.close()
        return self.exitCode

    def heldThrough(self, attack):
        """Stops it, and reports whether it lived, without a word of the sanitizers, and left a sound database."""
        code, log = self.stop(), self.log()
        report = [line for line in log.splitlines() if any(word in line for word in REPORTS)]
        check = subprocess.run([EXE, "check", self.database], capture_output=True, text=True)
        held(attack + ": the server lives, and its database is sound", code == 0 and not report and check.returncode == 0,
             "" if code == 0 and check.returncode == 0 else "exit %s %s %s" % (
                 code, report[:3], [line for line in check.stdout.splitlines() if not line.startswith("  ")]))

    def connect(self, source="127.0.0.1", timeout=20):
        return socket.create_connection(("127.0.0.1", self.port), timeout, (source, 0))

    def raw(self, request, source="127.0.0.1", timeout=20):
        """The answer to these bytes, up to the end of the connection; "" when it ends without one."""
        got = b""
        try:
            with self.connect(source, timeout) as connection:
                connection.sendall(request)
                while piece := connection.recv(65536):
                    got += piece
        except OSError:
            pass
        return got.decode("latin-1")

    def answers(self, source, path="/cal"):
        """Whether a visitor from this address gets a page."""
        request = "GET %s HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n\r\n" % path
        return " 200 " in self.raw(request.encode(), source).split("\r\n")[0]

    def sql(self, statement, *values):
        connection = sqlite3.connect(self.database, timeout=20)
        connection.create_collation("NOCASE", lambda a, b: (a.lower() > b.lower()) - (a.lower() < b.lower()))
        with connection:
            rows = connection.execute(statement, values).fetchall()
        connection.close()
        return rows


class Browser:
    """A cookie jar that knows SameSite."""

    def __init__(self, server, page="/cal"):
        self.server, self.page, self.cookies = server, page, {}

    def send(self, method, query, form=None, foreign=False, headers=()):
        """`foreign`: a page of another site sends it, so that only Lax cookies go along."""
        sent = dict(headers)
        cookies = ["%s=%s" % (name, value) for name, (value, strict) in self.cookies.items() if not (foreign and strict)]
        if cookies:
            sent["Cookie"] = "; ".join(cookies)
        body = None
        if form is not None:
            body = urllib.parse.urlencode(form)
            sent["Content-Type"] = "application/x-www-form-urlencoded"
        connection = http.client.HTTPConnection("127.0.0.1", self.server.port, timeout=60)
        connection.request(method, self.page + query, body, sent)
        answer = connection.getresponse()
        answer.text = answer.read().decode("utf-8", "replace")
        for line in answer.headers.get_all("Set-Cookie") or []:
            name, value = line.split(";")[0].split("=", 1)
            self.cookies.pop(name, None)
            if value:
                self.cookies[name] = (value, "SameSite=Strict" in line)
        connection.close()
        return answer

    def get(self, query="", **more):
        return self.send("GET", query, **more)

    def post(self, query, form, **more):
        return self.send("POST", query, form, **more)

    def login(self, name, password=PASSWORD):
        status = self.post("?p=l", {"Name": name, "Passwd": password}).status
        if status != 302:
            raise RuntimeError("%s could not log in: %d" % (name, status))
        return self

    def isIn(self):
        page = self.get("?p=c").text
        return 'NAME="Passwd"' not in page and "caltitle" in page
