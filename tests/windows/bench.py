"""What the tests of the Windows programs stand on: Wine, the simulated antenna on its port, a program's directory."""
import json
import os
import pathlib
import queue
import random
import shutil
import subprocess
import threading
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
CONFIG = HERE.parents[1] / "demo" / "FLASHCFG.TXT"
NO_EXTRAS = "mscoree,mshtml="  # nothing that Wine would want to fetch
WINE, WINESERVER = "/usr/lib/wine/wine64", "/usr/lib/wine/wineserver64"
PORT = 5
# The parameters that the configuration preserves on the boards of these tests.
PRESERVED = {"BIASAZ", "BIASEL", "GYROSFAZ", "GYROSFEL", "CALUP", "SATINSTALL", "GPS", "SERNUM", "INSTANT", "SLEEP",
             "SKEWMTR", "DEW", "FECHITS1", "FECHITS2"}

# Set by main.py: the installed programs, the antenna's program, a Wine prefix to copy, a folder for all that is made.
app = antenna_program = pristine = work = None
started = []  # every process that is to be ended


def dos_path(path):
    return "Z:" + str(path).replace("/", "\\")


def wait_until(what, holds, seconds=30):
    """What `holds` gives as soon as that is true."""
    end = time.monotonic() + seconds
    while not (found := holds()):
        if time.monotonic() > end:
            raise AssertionError("in vain: " + what)
        time.sleep(0.05)
    return found


class Program:
    """A process whose lines are read as they come, and kept in a log."""

    def __init__(self, words, log, **more):
        self.process = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                        encoding="utf-8", errors="replace", **more)
        started.append(self.process)
        self.said = []
        self._came = queue.SimpleQueue()
        threading.Thread(target=self._read, args=[log], daemon=True).start()

    def _read(self, log):
        with open(log, "a", encoding="utf-8") as copy:
            for line in self.process.stdout:
                copy.write(line)
                copy.flush()
                self._came.put(line.rstrip("\r\n"))
        self._came.put(None)

    def line(self, seconds):
        """The next line; None behind the last one."""
        try:
            line = self._came.get(timeout=max(seconds, 0))
        except queue.Empty:
            raise AssertionError(f"{self.process.args[0]} fell silent; its last words:\n" + "\n".join(self.said[-8:]))
        if line is not None:
            self.said.append(line)
        return line

    def await_words(self, words, seconds=60):
        end = time.monotonic() + seconds
        while (line := self.line(end - time.monotonic())) is not None:
            if words in line:
                return line
        raise AssertionError(f'it ended without "{words}"; its last words:\n' + "\n".join(self.said[-8:]))

    def do(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def end(self):
        self.process.kill()
        self.process.wait()


class Antenna(Program):
    """Switched on, and its software runs. Bytes take no time; starts and erases take little."""

    def __init__(self, link, board=0, unit=None, options=("--fast", "--quick")):
        unit = ["--unit", unit] if unit else []
        super().__init__([antenna_program, "--board", str(board), *unit, "--link", link, *options], f"{link}.log")
        self.link = link
        self.await_words("the software runs")

    def device(self):
        return os.readlink(self.link)

    def cycle_power(self):
        time.sleep(0.5)  # nobody is at the switch sooner: it still stores what came last
        self.do("power off")
        time.sleep(0.5)  # no antenna notices a shorter gap
        self.do("power on")

    def dump(self, directory):
        """What it holds: its parameters; its memories lie in the directory, as .bin."""
        self.do(f"dump {directory}")
        self.await_words("dumped")
        lines = (directory / "parameters.txt").read_text().splitlines()
        return dict(line.split("=", 1) for line in lines)


class Home:
    """A program's directory, with flash files that srec_cat makes and judges."""

    def __init__(self, path, port=PORT):
        self.path = path
        path.mkdir(parents=True)
        # Ten seconds of quiet behind every restart prove nothing here.
        config = CONFIG.read_bytes().replace(b"COMMON POSTFLASH RFBOARD$WAIT 10", b"COMMON POSTFLASH RFBOARD$WAIT 1")
        (path / "FLASHCFG.TXT").write_bytes(config)
        (path / "Burnline.ini").write_bytes(b"[BurnlineParameters]\r\nCOMMPort=%d\r\nBaudRate=9600\r\n"
                                            b"AutoCheckForUpdates=False\r\nTransmitDelay=1\r\n" % port)

    def text(self, name):
        file = self.path / name
        return file.read_text(encoding="latin-1") if file.exists() else ""

    @staticmethod
    def _form(name):
        return "-Intel" if name.endswith(".HEX") else "-Motorola"

    def make(self, name, size, offset, *more):
        data = self.path / "data.bin"
        data.write_bytes(random.Random(size).randbytes(size))
        length = ["-line-length=44"] if name.endswith(".HEX") else ["-Output_Block_Size=32"]
        subprocess.run(["srec_cat", data, "-Binary", "-offset", str(offset), *more, "-o", self.path / name,
                        self._form(name), *length, "-CRLF"], check=True, stderr=subprocess.DEVNULL)

    def judged(self, name, size=131072):
        """The bytes of a flash file from address 0 on, 0xFF in its gaps."""
        image = self.path / "judged.bin"
        subprocess.run(["srec_cat", self.path / name, self._form(name), "-crop", "0", str(size), "-fill", "0xFF", "0",
                        str(size), "-o", image, "-Binary"], check=True, stderr=subprocess.DEVNULL)
        return image.read_bytes()


class Bench(unittest.TestCase):
    """Each test has a Wine, a COM port and a directory to itself."""

    display = None  # of the window system, where there is one

    def setUp(self):
        self.place = work / self.id().rsplit(".", 1)[-1]
        self.place.mkdir(parents=True)
        self.prefix = self.place / "prefix"
        shutil.copytree(pristine, self.prefix, symlinks=True, copy_function=os.link)
        for registry in self.prefix.glob("*.reg"):  # the rest is only read
            content = registry.read_bytes()
            registry.unlink()
            registry.write_bytes(content)
        self.home = Home(self.place / "home")
        self.antenna, self.warm = None, False
        # In the foreground it leads no session. As a leader it would take the pseudo-terminal for its own, and end with
        # everything else when that goes.
        server = subprocess.Popen([WINESERVER, "-f", "-p"], env=self.environment(), stderr=subprocess.DEVNULL)
        started.append(server)  # with it go all programs under it
        self.addCleanup(server.wait)
        self.addCleanup(subprocess.run, [WINESERVER, "-k"], env=self.environment())
        wait_until("Wine's server", self.server_socket().exists)

    def server_socket(self):
        place = self.prefix.stat()
        named = self.prefix / "wineserver"  # Debian's Wine keeps the folder's name there
        folder = named.read_text().strip() if named.exists() else f".wine-{os.getuid()}"
        return pathlib.Path("/tmp", folder, f"server-{place.st_dev:x}-{place.st_ino:x}", "socket")

    def environment(self):
        environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        environment.update(WINEPREFIX=str(self.prefix), WINEDEBUG="-all", WINEDLLOVERRIDES=NO_EXTRAS,
                           BURNLINE_HOME=dos_path(self.home.path))
        if self.display:
            environment["DISPLAY"] = self.display
        return environment

    def start_wine(self, *words):
        if not self.warm:
            # What stays in the background would hold on to the output of whatever is started first.
            self.warm = True
            subprocess.run([WINE, "wineboot"], env=self.environment(), stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, check=True)
        program = Program([WINE, *map(str, words)], self.place / "program.log", env=self.environment())
        self.addCleanup(program.end)
        return program

    def start_antenna(self, *words, **more):
        self.antenna = Antenna(self.place / "antenna", *words, **more)
        self.addCleanup(self.antenna.end)
        self.plug_in()

    def plug_in(self, port=PORT):
        """The antenna's pseudo-terminal becomes this COM port."""
        self.link_port(port, self.antenna.device())

    def link_port(self, port, device):
        link = self.prefix / "dosdevices" / f"com{port}"
        link.unlink(missing_ok=True)
        link.symlink_to(device)

    def start_console(self, *words, directory=None):
        directory = dos_path(directory or self.home.path)
        return self.start_wine(app / "burnline-flash.exe", "--directory", directory, *words, "--json")

    def finish(self, console, seconds=240):
        """Reads a console's events to the end, and gives its exit code and them. The antenna's power is switched where
        that is asked for."""
        events, end, asked = [], time.monotonic() + seconds, False
        while (line := console.line(end - time.monotonic())) is not None:
            events.append(json.loads(line))
            words, asked_before = events[-1].get("words", ""), asked
            asked = words.startswith(("*** Please cycle power", "*** Please power off"))  # maybe in two ways
            if asked and not asked_before:
                self.antenna.cycle_power()
        return console.process.wait(), events

    def dump(self, name):
        """What the antenna holds of its parameters, as far as they are to survive, and where its memories lie."""
        directory = self.place / name
        held = self.antenna.dump(directory)
        return {parameter: held[parameter] for parameter in held if parameter.split(",")[0] in PRESERVED}, directory
