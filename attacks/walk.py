"""The honest requests of a walk through all pages: what links and forms of the pages ask for, one of each kind."""
import html
import html.parser
import re
import urllib.parse

from server import Browser

# Not followed, only listed: they end the walk, or take away what it walks through.
ENDINGS = re.compile(r"p=l\b|act=(del|delete|remove|declined)\b")


class _Forms(html.parser.HTMLParser):
    """The forms of a page: their address, and (name, value, is a button) of their fields."""

    def __init__(self, page):
        super().__init__()
        self.forms, self.select = [], None
        self.feed(page)

    def handle_starttag(self, tag, attributes):
        a = dict(attributes)
        if tag == "form":
            self.forms.append((a.get("action") or "", []))
        if not self.forms:
            return
        fields, name = self.forms[-1][1], a.get("name")
        if tag == "select":
            self.select = name
        elif tag == "option" and self.select and (name := self.select):
            self.select = None
            fields.append((name, a.get("value") or "", False))
        elif name and tag in ("input", "textarea"):
            kind = (a.get("type") or "text").lower()
            fields.append((name, a.get("value") or ("x" if kind == "text" or tag == "textarea" else ""),
                           kind in ("submit", "image", "button")))


def _kind(query, form):
    """Requests of one kind differ in values only."""
    values = urllib.parse.parse_qsl(query.lstrip("?"), keep_blank_values=True)
    return (tuple(sorted((name, value if name in ("p", "act") else "") for name, value in values)),
            None if form is None else tuple(sorted({re.sub(r"\d+", "", name) for name, _ in form})))


def walk(server, page, user, most=400):
    """[(query, form)], the form None for GET, and the browser that walked, still logged in. `user` may be None."""
    def newBrowser():
        browser = Browser(server, page)
        if user:
            return browser.login(user)
        browser.get()  # sets its session
        return browser

    browser = newBrowser()
    waiting, kinds, requests = [("?p=c", None)], set(), []
    while waiting and len(requests) < most:
        query, form = waiting.pop(0)
        if _kind(query, form) in kinds:
            continue
        kinds.add(_kind(query, form))
        requests.append((query, form))
        if ENDINGS.search(query):
            continue
        text = browser.send("GET" if form is None else "POST", query, form).text
        links = re.findall(r"[?][a-z]+=[^\"'<>\s\\]*", html.unescape(text))
        waiting += [(link, None) for link in links]
        for action, fields in _Forms(text).forms:
            query = "?" + action.partition("?")[2]
            plain = [(name, value) for name, value, isButton in fields if not isButton]
            waiting += [(query, plain + [(name, value)]) for name, value, isButton in fields if isButton] or [(query, plain)]
            # A script may choose what the form asks for.
            waiting += [(link, plain) for link in links if link.startswith(query.split("&")[0] + "&act=")]
    if not browser.isIn():
        browser = newBrowser()
    return requests, browser
