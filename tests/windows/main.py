#!/usr/bin/env python3
"""Runs the tests of the Windows programs under Wine, some of them at a time: they wait more than they work.

usage: main.py APP ANTENNA WORK [WORDS]

APP is the folder of the installed programs, ANTENNA the simulated antenna's program, WORK a folder for everything that
is made, which is emptied first. With WORDS only tests whose names hold them.
"""
import concurrent.futures
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import unittest

import bench

AT_A_TIME = 4
# Wine brings no fonts along; these are there wherever windows without a display are tested.
FONTS = {"DejaVu Sans": ("Segoe UI", "Tahoma", "MS Shell Dlg", "MS Shell Dlg 2"),
         "DejaVu Sans Mono": ("Courier", "Courier New")}


def make_prefix(prefix):
    environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
    environment.update(WINEPREFIX=str(prefix), WINEDEBUG="-all", WINEDLLOVERRIDES=bench.NO_EXTRAS)

    def wine(*words):
        subprocess.run([bench.WINE, *words], env=environment, check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
    wine("wineboot", "-i")
    fonts = [r"Windows Registry Editor Version 5.00", "", r"[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]"]
    fonts += [f'"{name}"="{font}"' for font, names in FONTS.items() for name in names]
    registry = prefix / "fonts.reg"
    registry.write_text("\r\n".join(fonts) + "\r\n")
    wine("regedit", "/S", bench.dos_path(registry))
    subprocess.run([bench.WINESERVER, "-k"], env=environment)
    subprocess.run([bench.WINESERVER, "-w"], env=environment)
    registry.unlink()


def tests_of(suite):
    for test in suite:
        yield from tests_of(test) if isinstance(test, unittest.TestSuite) else [test]


def run(test):
    start = time.monotonic()
    result = unittest.TestResult()
    test.run(result)
    seconds = time.monotonic() - start
    problems = [words for _, words in result.failures + result.errors]
    print(f"{'failed' if problems else 'passed'} {seconds:6.1f} s  {test.id()}", flush=True)
    return test.id(), problems


def stop(number, _):
    for process in bench.started:
        if process.poll() is None:
            process.terminate()
    os._exit(128 + number)


def main():
    if len(sys.argv) not in (4, 5):
        sys.exit(__doc__)
    for number in signal.SIGINT, signal.SIGTERM:
        signal.signal(number, stop)
    app, antenna, work = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
    wanted = sys.argv[4] if len(sys.argv) == 5 else ""
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    bench.app, bench.antenna_program, bench.work, bench.pristine = app, antenna, work, work / "pristine"
    make_prefix(bench.pristine)
    start = time.monotonic()
    found = unittest.defaultTestLoader.discover(str(bench.HERE))
    # Backwards by name the long ones of the window come first.
    tests = sorted((test for test in tests_of(found) if wanted in test.id()), key=unittest.TestCase.id, reverse=True)
    with concurrent.futures.ThreadPoolExecutor(AT_A_TIME) as pool:
        results = list(pool.map(run, tests))
    failed = [(name, problems) for name, problems in results if problems]
    for name, problems in failed:
        print(f"\n--- {name}\n" + "\n".join(problems))
    print(f"\n{len(results) - len(failed)} of {len(results)} tests passed in {time.monotonic() - start:.0f} s;"
          f" logs and pictures lie in {work}")
    sys.exit(1 if failed or not results else 0)


if __name__ == "__main__":
    main()
