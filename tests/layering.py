#!/usr/bin/env python3
"""Walks the #include lines of the tree and fails on the first one that runs upward."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
# Ground floor first: a file includes only what stands above it in this list, or its own floor.
FLOORS = ["text", "platform", "session", "forms", "persistence", "messages", "display", "link",
          "knowledge", "flash", "diagnostics", "update", "wizard", "loop", "host", "console", "desktop"]
# Two front ends on one host: neither knows the other.
FRONT_ENDS = ("console/", "desktop/")
OUTSIDE_THE_CORE = ("host/",) + FRONT_ENDS
# The platform's own twins: nobody in the core asks for one system's files.
SYSTEMS = ("platform/posix/", "platform/win32/")
STANDARD = re.compile(r"^[a-z_]+$")
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')


def floor(path):
    """The floor of a path under src/, without its suffix; None when it stands on no floor."""
    path = re.sub(r"\.(h|cpp)$", "", path)
    for height, name in enumerate(FLOORS):
        if path == name or path.startswith(name + "/"):
            return height
    return None


def fail(source, included, rule):
    print(f"{source} includes {included}: {rule}")
    sys.exit(1)


def main():
    checked = 0
    for source in sorted(list(ROOT.glob("src/**/*.h")) + list(ROOT.glob("src/**/*.cpp"))):
        name = str(source.relative_to(ROOT / "src"))
        own = floor(name)
        if own is None:
            fail(name, "(itself)", "the file stands on no floor of the house")
        for line in source.read_text(encoding="utf-8").splitlines():
            match = INCLUDE.match(line)
            if not match:
                continue
            checked += 1
            kind, included = match.groups()
            if name.startswith(FRONT_ENDS) and included.startswith(FRONT_ENDS):
                if included.split("/")[0] != name.split("/")[0]:
                    fail(name, included, "a front end doesn't know the other one")
            if name.startswith(FRONT_ENDS) or (name.startswith("host/") and not included.startswith(FRONT_ENDS)):
                continue
            if kind == '"':
                other = floor(included)
                if other is None or other > own:
                    fail(name, included, "an include runs upward; the floors are: " + ", ".join(FLOORS))
                if included.startswith(SYSTEMS) and not name.startswith("platform/"):
                    fail(name, included, "only platform/ and the front ends know which system they are on")
            elif not name.startswith(SYSTEMS) and not STANDARD.match(included):
                fail(name, included, "the core uses the standard library only")
    for source in sorted(list(ROOT.glob("simulator/**/*.h")) + list(ROOT.glob("simulator/**/*.cpp"))):
        for line in source.read_text(encoding="utf-8").splitlines():
            match = INCLUDE.match(line)
            if match and match.group(1) == '"' and (ROOT / "src" / match.group(2)).exists():
                fail(source.relative_to(ROOT), match.group(2), "the antenna shares no line with the program")
    if checked == 0:
        fail("tests/layering.py", "nothing", "no include line was found")
    print(f"{checked} include lines, none runs upward")


main()
