"""Looks whether every local link of a built site, and of the Markdown files of the sources, leads
somewhere: to a file that is there, and to a place in it that is there.

Arguments: the sources, the folder of the site."""

import html.parser
import os
import re
import sys
import urllib.parse

sources, site = sys.argv[1:]
ELSEWHERE = ("http:", "https:", "mailto:", "javascript:", "data:")


class Page(html.parser.HTMLParser):
    """The links of a page, and the places in it."""

    def __init__(self, path):
        super().__init__()
        self.links, self.places = [], set()
        with open(path, encoding="utf-8") as file:
            self.feed(file.read())

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.links += [attributes[a] for a in ("href", "src") if attributes.get(a)]
        self.places |= {attributes[a] for a in ("id", "name") if attributes.get(a)}


pages, broken, links = {}, [], 0


def page(path):
    if path not in pages:
        pages[path] = Page(path)
    return pages[path]


def look(here, link):
    """Notes a link from the file `here` that leads nowhere."""
    global links
    if link.lower().startswith(ELSEWHERE) or link.startswith("//"):
        return
    links += 1
    path, _, place = link.partition("#")
    target = os.path.normpath(os.path.join(os.path.dirname(here),
                                           urllib.parse.unquote(path.partition("?")[0])))
    if not path:
        target = here
    if not os.path.exists(target):
        broken.append("%s: %s: no such file" % (here, link))
    elif place and target.endswith(".html"):
        if urllib.parse.unquote(place) not in page(target).places | {"top"}:
            broken.append("%s: %s: no such place" % (here, link))


for folder, _, files in os.walk(site):
    for name in files:
        path = os.path.normpath(os.path.join(folder, name))
        if name.endswith(".html") and name != "404.html":  # that one has links for the root
            for link in page(path).links:
                look(path, link)
for folder, folders, files in os.walk(sources):
    folders[:] = [f for f in folders if not f.startswith((".", "build"))]
    for name in files:
        if name.endswith(".md"):
            path = os.path.join(folder, name)
            with open(path, encoding="utf-8") as file:
                text = re.sub(r"^```.*?^```$|^    .*?$|`[^`\n]*`", "", file.read(),
                              flags=re.S | re.M)
            for link in re.findall(r"\]\(([^)\s]+)\)", text):
                look(path, link)

if not any(p.startswith(os.path.join(os.path.normpath(site), "api")) for p in pages):
    broken.append("no page of the reference")
print("\n".join(broken) or "%d links in %d pages, all of them good" % (links, len(pages)))
sys.exit(1 if broken else 0)
