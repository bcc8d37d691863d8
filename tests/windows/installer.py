#!/usr/bin/env python3
"""Installs, starts, upgrades and removes the program under Wine, and looks at what lies there after each step.

usage: installer.py FOLDER    the folder with the packages that tools/windows/package has made, else build/windows
The exit code is 0 when all of it held, 1 when something didn't, 77 when there is nothing to try it with.
"""

import glob
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

WINE, WINESERVER = "/usr/lib/wine/wine64", "/usr/lib/wine/wineserver64"
REGISTERED = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\Burnline"
RUNNING = 2  # the installer's code for a program that stands in its way
PATIENCE = 60  # seconds for anything that has to happen at last


class Failed(Exception):
    pass


def expect(holds, words):
    if not holds:
        raise Failed(words)


def wait_until(condition, words):
    end = time.monotonic() + PATIENCE
    while not condition():
        expect(time.monotonic() < end, words)
        time.sleep(0.1)


class Windows:
    """A fresh installation of Windows with one user and a screen of its own."""

    def __init__(self, folder):
        self.drive = folder / "wine/drive_c"
        self.environment = os.environ | {"WINEPREFIX": str(folder / "wine"), "WINEDEBUG": "-all"}
        for name in ("BURNLINE_HOME", "WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"):
            self.environment.pop(name, None)
        self.run("wineboot", "-i")
        user = self.drive / "users" / next(
            entry.name for entry in (self.drive / "users").iterdir() if entry.name != "Public"
        )
        self.data = user / "AppData/Local/Burnline"
        self.own_place = user / "AppData/Local/Programs/Burnline"
        self.common_place = self.drive / "Program Files/Burnline"
        # A folder of the system's: whoever needs it makes it, and nobody removes it.
        self.own_place.parent.mkdir(parents=True, exist_ok=True)
        self.desktop = user / "Desktop"
        read, write = os.pipe()
        self.screen = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24", "-nolisten", "tcp"],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        os.close(write)
        with os.fdopen(read) as number:
            self.environment["DISPLAY"] = ":" + number.readline().strip()

    def close(self):
        subprocess.run([WINESERVER, "-k"], env=self.environment, check=False)
        subprocess.run([WINESERVER, "-w"], env=self.environment, check=False, timeout=PATIENCE)
        self.screen.terminate()
        self.screen.wait()

    def run(self, *command):
        """What it printed, and its exit code."""
        done = subprocess.run([WINE, *map(str, command)], env=self.environment, timeout=PATIENCE,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, errors="replace")
        return done.stdout, done.returncode

    def files(self):
        """All files and folders but those of the system."""
        found = set()
        for folder, folders, files in os.walk(self.drive):
            here = pathlib.Path(folder)
            folders[:] = [name for name in folders if here / name != self.drive / "windows" and name != "Temp"]
            found.update(here / name for name in folders + files)
        return found

    def registered(self, hive):
        lines, code = self.run("reg", "query", hive + "\\" + REGISTERED)
        if code != 0:
            return None
        fields = (line.split(None, 2) for line in lines.splitlines() if line.startswith(" "))
        return {field[0]: field[2] for field in fields if len(field) == 3}

    def see_window(self):
        seen = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", "Burnline Assistant"],
                              env=self.environment, capture_output=True, check=False)
        return bool(seen.stdout.strip())

    def unix_path(self, path):
        expect(path[:2].upper() == "C:", f"{path} isn't on this drive")
        return self.drive / path[3:].replace("\\", "/")


def contents(folder):
    return {path: path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def remove_quietly(windows, entry):
    """As Add/Remove Programs does. The uninstaller works on as a copy of itself when its first process has ended."""
    program, option = entry["QuietUninstallString"].rsplit(" ", 1)
    place = windows.unix_path(program.strip('"'))
    _, code = windows.run(place, option)
    expect(code == 0, f"the uninstaller ended with {code}")
    wait_until(lambda: not place.exists() and not (place.parent / "help").exists(), "the uninstaller left itself behind")


def check_starts(windows, place):
    version, code = windows.run(place / "burnline-flash.exe", "--version")
    expect(code == 0 and version.startswith("Burnline "), f"--version said {version!r}, code {code}")
    boards, code = windows.run(place / "burnline-flash.exe", "--list-antennas")
    expect(code == 0 and boards.count("\n") > 5, f"--list-antennas said {boards!r}, code {code}")


def per_user(windows, setup):
    before = windows.files()
    _, code = windows.run(setup, "/S", "/CurrentUser")
    expect(code == 0, f"the installer ended with {code}")
    place, entry = windows.own_place, windows.registered("HKCU")
    expect(entry is not None and windows.unix_path(entry["InstallLocation"]) == place, f"registered is {entry}")
    expect(windows.registered("HKLM") is None, "it is registered for all users too")
    links = [path for path in windows.files() - before if path.suffix == ".lnk"]
    expect(len(links) == 1 and "Start Menu" in str(links[0]), f"the shortcuts are {links}")
    expect(not windows.data.exists(), "the installer made the user's files")

    check_starts(windows, place)
    configuration = windows.data / "FLASHCFG.TXT"
    expect(configuration.read_bytes() == (place / "default/FLASHCFG.TXT").read_bytes(), "no configuration to begin with")

    print("-- while it runs")
    configuration.write_bytes(configuration.read_bytes() + b"; mine\r\n")
    (windows.data / "MINE.HEX").write_text(":00000001FF\n")
    program = subprocess.Popen([WINE, place / "burnline.exe"], env=windows.environment)
    wait_until(windows.see_window, "burnline.exe shows no window")
    installed = contents(place)
    for what in ([setup, "/S", "/CurrentUser"], [place / "uninstall.exe", "/S", "_?=" + entry["InstallLocation"]]):
        _, code = windows.run(*what)
        expect(code == RUNNING and contents(place) == installed, f"{what[0].name} went on, with code {code}")
    windows.run("taskkill", "/F", "/IM", "burnline.exe")
    program.wait(PATIENCE)

    print("-- over an older version")
    mine = contents(windows.data)
    names = {path.name for path in mine}
    expect({"FLASHCFG.TXT", "MINE.HEX", "Burnline.ini", "BNL.LOG"} <= names, f"the program's files are {names}")
    (place / "burnline.exe").write_bytes(b"older")
    shutil.copy(links[0], windows.desktop / links[0].name)
    _, code = windows.run(setup, "/S", "/CurrentUser")
    expect(code == 0 and contents(place) == installed, f"it isn't the new version that lies there; code {code}")
    expect((windows.desktop / links[0].name).exists(), "the shortcut on the desktop is gone")
    expect(contents(windows.data) == mine, "the user's files changed")

    remove_quietly(windows, entry)
    wait_until(lambda: windows.registered("HKCU") is None, "it is still registered")
    left = {path for path in windows.files() - before if windows.data not in [path, *path.parents]}
    expect(not left, f"left behind: {left}")
    expect(contents(windows.data) == mine, "the user's files changed")


def for_all_users(windows, setup):
    before = windows.files()
    _, code = windows.run(setup, "/S", "/AllUsers")
    place, entry = windows.common_place, windows.registered("HKLM")
    expect(code == 0 and entry is not None, f"the installer ended with {code}, registered is {entry}")
    expect(windows.unix_path(entry["InstallLocation"]) == place, f"it lies at {entry['InstallLocation']}")
    expect(windows.registered("HKCU") is None, "it is registered for one user too")
    installed = contents(place)
    check_starts(windows, place)
    expect(contents(place) == installed, "it wrote beside the program, where its user may not")

    (place / "notes.txt").write_text("the user's")
    remove_quietly(windows, entry)
    wait_until(lambda: windows.registered("HKLM") is None, "it is still registered")
    left = windows.files() - before
    expect(left == {place, place / "notes.txt"}, f"left are {left}, not the user's notes alone")


def portable(windows, archive):
    shutil.rmtree(windows.data)
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(windows.drive / "stick")
    place = windows.drive / "stick/Burnline"
    check_starts(windows, place)
    before = contents(place).keys()
    _, code = windows.run(place / "burnline-flash.exe", "--identify", "--board", "0", "--port", "COM9")
    expect(code == 2, f"a port that isn't there gave {code}")
    new = {path.name for path in contents(place).keys() - before}
    expect({"BNL.LOG", "Burnline.ini"} <= new, f"new beside the program: {new}")
    expect(not windows.data.exists(), "it keeps files elsewhere too")


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/windows").resolve()
    setups, archives = glob.glob(f"{folder}/burnline-*-setup.exe"), glob.glob(f"{folder}/burnline-*-portable.zip")
    missing = [tool for tool in (WINE, "Xvfb", "xdotool") if shutil.which(tool) is None]
    if missing or len(setups) != 1 or len(archives) != 1:
        print(f"Nothing to try the packages with: missing {missing}, in {folder} are {setups + archives}")
        return 77
    with tempfile.TemporaryDirectory(prefix="burnline-installer-") as place:
        windows = Windows(pathlib.Path(place))
        try:
            for step, package in ((per_user, setups[0]), (for_all_users, setups[0]), (portable, archives[0])):
                print(f"== {step.__name__.replace('_', ' ')}", flush=True)
                step(windows, pathlib.Path(package))
        except (Failed, OSError, subprocess.SubprocessError) as problem:
            print(f"FAILED: {problem}")
            return 1
        finally:
            windows.close()
    print("The packages install, start, upgrade and go.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
