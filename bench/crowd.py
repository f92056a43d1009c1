"""Idle connections beside visitors: the memory that each takes, and how late a visitor's page is beside them and while
1,000 more arrive at once. Usage: crowd.py ADDRESS PROCESS COOKIES
"""
import collections
import re
import resource
import socket
import subprocess
import sys
import time

ADDRESS, PROCESS, COOKIES = sys.argv[1].removeprefix("http://"), sys.argv[2], sys.argv[3]
HOST, PORT = ADDRESS.split(":")
IDLE, ARRIVING, PER_ADDRESS = 10_000, 1_000, 50
resource.setrlimit(resource.RLIMIT_NOFILE, (resource.getrlimit(resource.RLIMIT_NOFILE)[1],) * 2)


def resident_kib():
    with open("/proc/%s/status" % PROCESS) as status:
        return int(re.search(r"VmRSS:\s+(\d+)", status.read()).group(1))


def connect(number):
    """From another address for every 50."""
    connection = socket.socket()
    connection.bind(("127.%d.%d.1" % (1 + number // PER_ADDRESS // 250, number // PER_ADDRESS % 250), 0))
    connection.settimeout(30)
    connection.connect((HOST, int(PORT)))
    return connection


def request(connection, path, cookies=""):
    connection.sendall(("GET %s HTTP/1.1\r\nHost: %s\r\nCookie: %s\r\n\r\n" % (path, ADDRESS, cookies)).encode())


def status(connection):
    try:
        return connection.recv(4096).split(b" ")[1].decode() or "closed"
    except (OSError, IndexError):
        return "nothing"


def visitors(meanwhile=lambda: None):
    wrk = subprocess.Popen(["wrk", "-t1", "-c8", "-d3s", "--latency", "-H", "Cookie: " + COOKIES, "http://%s/month" % ADDRESS],
                           stdout=subprocess.PIPE, text=True)
    meanwhile()
    text = wrk.communicate()[0]
    return "99 %% within %s, %s a second%s" % (
        re.search(r"99%\s+(\S+)", text).group(1), re.search(r"Requests/sec:\s+(\S+)", text).group(1),
        ", " + text[text.index("Non-2xx"):].split("\n")[0] if "Non-2xx" in text else "")


def arrive():
    time.sleep(1)
    arriving = [connect(20_000 + number) for number in range(ARRIVING)]
    for connection in arriving:
        request(connection, "/month", COOKIES)
    print("%d arrive at once:" % ARRIVING, dict(collections.Counter(map(status, arriving))))


print("alone:", visitors())
before = resident_kib()
idle = [connect(number) for number in range(IDLE)]
for connection in idle:
    request(connection, "/healthz")
print("%d connections:" % IDLE, dict(collections.Counter(map(status, idle))))
time.sleep(1)
print("each takes %.1f KiB" % ((resident_kib() - before) / IDLE))
print("beside them:", visitors())
print("while others arrive:", visitors(arrive))
