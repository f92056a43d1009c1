"""scanners.py sqlmap|wapiti [MINUTES]: a scanner over the strict demo, logged in as an administrator.

sqlmap gets the requests of a walk through all pages; wapiti crawls for itself, on the page that needs no login. What they find makes it fail.
"""
import glob
import json
import os
import pty
import subprocess
import sys
import urllib.parse

from server import Server, finish, held
from walk import ENDINGS, walk


def cookies(browser):
    return "; ".join("%s=%s" % (name, value) for name, (value, _) in browser.cookies.items())


def requestLog(server, browser, requests):
    """The requests in the form of a proxy's log, those with few fields first."""
    requests = [(query, form) for query, form in requests if not ENDINGS.search(query)]
    texts = []
    for query, form in sorted(requests, key=lambda request: len(request[1] or ())):
        head = "%s %s%s HTTP/1.1\r\nHost: 127.0.0.1:%d\r\nCookie: %s\r\n" % (
            "GET" if form is None else "POST", browser.page, query, server.port, cookies(browser))
        if form is not None:
            head += "Content-Type: application/x-www-form-urlencoded\r\n"
        texts.append(head + "\r\n" + urllib.parse.urlencode(form or ()))
    line = "=" * 54
    path = server.folder + "/requests.log"
    with open(path, "w") as file:
        file.write("".join("%s\r\n0:00:00  http://127.0.0.1:%d  [127.0.0.1]\r\n%s\r\n%s\r\n%s\r\n\r\n" % (
            line, server.port, line, text, line) for text in texts))
    return path, len(texts)


def run(command, minutes, output):
    _, terminal = pty.openpty()  # sqlmap reads its targets from any other standard input
    with open(output, "w") as file:
        return subprocess.run(["timeout", "-s", "INT", "-k", "20", "%dm" % minutes] + command, stdin=terminal, stdout=file,
                              stderr=subprocess.STDOUT).returncode


def sqlmap(server, minutes):
    requests, browser = walk(server, "/cal", "admin")
    path, targets = requestLog(server, browser, requests)
    output = server.folder + "/sqlmap"
    code = run(["sqlmap", "-l", path, "--batch", "--level=3", "--risk=2", "--technique=BEU", "--dbms=SQLite", "--keep-alive",
                "--skip=orlune_session,orlune_same_site", "--ignore-code=403", "--disable-coloring", "--flush-session",
                "--output-dir=" + output], minutes, output + ".txt")
    with open(output + ".txt", errors="replace") as file:
        text = file.read()
    findings = [line for line in text.splitlines() if line.startswith("Parameter: ")]
    print("      %d of %d links and forms tested%s" % (text.count("testing URL"), targets, ", stopped by the time" if code else ""))
    held("sqlmap finds no injection", not findings, findings[:10] or "")
    held("sqlmap tested", "testing if" in text or "heuristic" in text, text[-300:] if "testing" not in text else "")


def wapiti(server, minutes):
    report = server.folder + "/wapiti.json"
    # Without ssrf and xxe: they need a server of wapiti's makers that is asked from outside.
    # The first address sets the session, the second is crawled.
    address = "http://127.0.0.1:%d/fixed" % server.port
    run(["wapiti", "-u", address, "-s", address + "?p=c", "--scope", "folder", "--store-session", server.folder,
         "-m", "sql,blindsql,xss,permanentxss,exec,file,crlf,redirect,shellshock,backup,htaccess,methods",
         "--max-scan-time", str(minutes * 60), "-f", "json", "-o", report, "--no-bugreport"], minutes + 5,
        server.folder + "/wapiti.txt")
    if not os.path.exists(report):
        with open(server.folder + "/wapiti.txt", errors="replace") as file:
            return held("wapiti wrote a report", False, file.read()[-600:])
    with open(report) as file:
        found = json.load(file)
    for kind in ("vulnerabilities", "anomalies"):
        lines = ["%s %s %s" % (name, one["path"], one.get("info", "")) for name, each in found[kind].items() for one in each]
        held("wapiti finds no " + kind, not lines, lines[:10] or "")


name, minutes = sys.argv[1], int((sys.argv[2:] or ["10"])[0])
with Server() as server:
    {"sqlmap": sqlmap, "wapiti": wapiti}[name](server, minutes)
    errors = [line for line in server.log().splitlines() if "[error]" in line]
    held("no answer to %s is 500" % name, not errors, errors[:5] or "")
    print("      %d requests of %s" % (server.log().count("[info] 127."), name))
    server.heldThrough(name)
    if os.environ.get("ORLUNE_KEEP"):
        subprocess.run(["cp", "-r", server.folder, os.environ["ORLUNE_KEEP"]], check=True)
finish()
