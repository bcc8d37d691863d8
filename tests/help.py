#!/usr/bin/env python3
"""Reads the help and the release notes as the viewer does, and fails when a technician would find a door that is shut."""
import html.parser
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
HELP = ROOT / "help"
NOTES = ROOT / "docs" / "BurnlineRelNotes.htm"
TOPICS = range(1010, 1091, 10)  # F1 on a step asks for (step + 1) * 10 + 1000
USB_SECTION = "1050.html#usb"   # a failing adapter leads there
WIDEST_PICTURE = 560            # pixels: fits beside the contents on a small laptop

VOID = {"meta", "link", "img", "br", "hr"}
BLOCKS = {"h1", "h2", "h3", "p", "ul", "ol", "table", "pre"}
INLINE = {"b", "i", "code", "a", "img", "br"}
# What each element may stand in. The viewer knows more; the help needs no more.
PARENTS = {
    "html": {""}, "head": {"html"}, "body": {"html"}, "title": {"head"}, "meta": {"head"}, "link": {"head"},
    "li": {"ul", "ol"}, "tr": {"table"}, "td": {"tr"}, "th": {"tr"}, "hr": {"body"},
    **{block: {"body", "td", "li"} for block in BLOCKS},
    **{inline: {"h1", "h2", "h3", "p", "li", "td", "th", "pre", "b", "i", "code", "a"} for inline in INLINE},
}
ELSEWHERE = re.compile(r"^\s*([a-z][a-z0-9+.-]*:|//)", re.IGNORECASE)


class Page(html.parser.HTMLParser):
    """One page: its title, its anchors, where it leads, and what is wrong with it."""

    def __init__(self, path):
        super().__init__()
        self.title, self.anchors, self.references, self.faults = "", set(), [], []
        self.open = []
        self.feed(path.read_text(encoding="utf-8"))
        self.close()
        for tag in self.open:
            self.fault(f"<{tag}> is never closed")

    def fault(self, words):
        self.faults.append(f"line {self.getpos()[0]}: {words}")

    def handle_starttag(self, tag, attributes):
        values = {name: value or "" for name, value in attributes}
        parent = self.open[-1] if self.open else ""
        if tag not in PARENTS:
            self.fault(f"<{tag}> is none of the elements that the help uses")
        elif parent not in PARENTS[tag]:
            self.fault(f"<{tag}> stands in <{parent}>")
        if tag == "a" and "a" in self.open:
            self.fault("a link in a link")
        if tag not in VOID:
            self.open.append(tag)
        self.note(tag, values)

    def note(self, tag, values):
        for name in values:
            if name.startswith("on"):
                self.fault(f"a script in {name}=")
        for anchor in {values[name] for name in ("name", "id") if name in values and tag != "meta"}:
            if anchor in self.anchors:
                self.fault(f"the anchor {anchor} stands there twice")
            self.anchors.add(anchor)
        for name in ("href", "src", "background"):
            if name in values:
                self.references.append((self.getpos()[0], values[name]))
        if "url(" in values.get("style", "").lower():
            self.fault("a style that loads something")
        if tag == "img":
            self.check_picture(values)

    def check_picture(self, values):
        width = values.get("width", "")
        if not width.isdigit() or not 0 < int(width) <= WIDEST_PICTURE:
            self.fault(f"{values.get('src')} needs a width of {WIDEST_PICTURE} at most")
        if not values.get("alt", "").strip():
            self.fault(f"{values.get('src')} says nothing to those who can't see it")

    def handle_startendtag(self, tag, attributes):
        self.fault(f"<{tag}/> is no HTML 4")

    def handle_endtag(self, tag):
        if self.open and self.open[-1] == tag:
            self.open.pop()
            return
        self.fault(f"</{tag}> closes <{self.open[-1] if self.open else ''}>")
        if tag in self.open:
            del self.open[len(self.open) - 1 - self.open[::-1].index(tag):]

    def handle_data(self, data):
        if self.open and self.open[-1] == "title":
            self.title += data
        elif data.strip() and (not self.open or self.open[-1] in {"html", "head", "body", "ul", "ol", "table", "tr"}):
            self.fault(f"text outside of a paragraph: {data.strip()[:40]}")


def has_file(path):
    """True for a file whose name is written just so: one system doesn't care about capitals, the other does."""
    return path.is_file() and path.name in {entry.name for entry in path.parent.iterdir()}


def reference_fault(source, reference, pages):
    """Why a reference of the page `source` leads nowhere; empty when it leads somewhere."""
    if ELSEWHERE.match(reference):
        return f"{reference} is loaded from elsewhere"
    name, _, anchor = reference.partition("#")
    target = (source.parent / name).resolve() if name else source
    if HELP not in target.parents and target != source:
        return f"{reference} lies outside of the help"
    if not has_file(target):
        return f"{reference} is missing"
    if anchor and (target not in pages or anchor not in pages[target].anchors):
        return f"{reference}: there is no such anchor"
    return ""


def page_faults(pages):
    titles = {}
    for path, page in pages.items():
        for words in page.faults:
            yield f"{path.name}, {words}"
        if not page.title.strip():
            yield f"{path.name}: no title"
        elif page.title in titles:
            yield f"{path.name}: the same title as {titles[page.title]}"
        titles[page.title] = path.name
        for line, reference in page.references:
            words = reference_fault(path, reference, pages)
            if words:
                yield f"{path.name}, line {line}: {words}"


def contents_faults(pages):
    contents = HELP / "contents.txt"
    listed = contents.read_text(encoding="utf-8").splitlines() if contents.is_file() else []
    there = {path.name for path in pages if path != NOTES}
    for name in sorted(there - set(listed)):
        yield f"contents.txt lacks {name}"
    for name in dict.fromkeys(listed):
        if name not in there:
            yield f"contents.txt names {name or 'nothing in a line'}, and there is no such page"
        if listed.count(name) > 1:
            yield f"contents.txt names {name} {listed.count(name)} times"


def wanted_faults(pages):
    for name in [f"{topic}.html" for topic in TOPICS] + [USB_SECTION]:
        words = reference_fault(HELP / "contents.txt", name, pages)
        if words:
            yield words
    if NOTES not in pages:
        yield f"docs/{NOTES.name} is missing"


def style_faults():
    for path in sorted(HELP.rglob("*.css")):
        if re.search(r"url\s*\(|@import", path.read_text(encoding="utf-8"), re.IGNORECASE):
            yield f"{path.name} loads something"


def main():
    paths = sorted(HELP.rglob("*.htm*")) + ([NOTES] if NOTES.is_file() else [])
    pages = {path: Page(path) for path in paths}
    faults = [*wanted_faults(pages), *contents_faults(pages), *page_faults(pages), *style_faults()]
    for words in faults:
        print(words)
    if faults:
        print(f"{len(faults)} faults")
        sys.exit(1)
    print(f"{len(pages)} pages, {sum(len(page.references) for page in pages.values())} references, all lead somewhere")


main()
