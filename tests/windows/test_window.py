"""burnline.exe, by keyboard alone: the screen, the log, the settings and the antenna tell how far it is."""
import bench
from bench import Bench, wait_until
from screen import SIZE, Screen


class Window(Bench):
    def start_window(self):
        self.screen = Screen(self.place / "screen")
        self.addCleanup(self.screen.end)
        self.display = self.screen.display
        # In a desktop of Wine's own, which tells its windows which of them has the keys.
        self.start_wine("explorer", f"/desktop=test,{SIZE}", bench.dos_path(bench.app / "burnline.exe"))
        self.addCleanup(self.screen.keep, "last")
        self.at = wait_until("a window", self.screen_station, 60)

    def screen_station(self):
        return self.screen.look().station()

    def log_holds(self, *words, seconds=60):
        def all_in_order(at=0):
            log = self.home.text("BNL.LOG")
            for word in words:
                if (at := log.find(word, at)) < 0:
                    return False
                at += len(word)
            return True
        wait_until(f"BNL.LOG holds {words}", all_in_order, seconds)

    def press_until(self, what, holds, *keys, seconds=60):
        """A key that nothing follows from is pressed again, as anybody would."""
        def press():
            self.screen.press(*keys)
            try:
                return wait_until(what, holds, 8)
            except AssertionError:
                return None
        return wait_until(what, press, seconds)

    def next(self, name, *keys):
        """The next step."""
        before = self.at

        def moved():
            self.at = self.screen_station() or before
            return self.at > before
        self.press_until("on to " + name, moved, *keys or ["alt+n"])
        self.screen.keep(name)

    def await_ready(self):
        # Next is off, and its key is no letter for the command line.
        self.press_until("the antenna answers", lambda: "\n>" in self.home.text("BNL.LOG"), "alt+m", "alt+n", "Return")
        self.assertNotIn("==>n", self.home.text("BNL.LOG"))

    def choose_board(self, *keys):
        self.next("before-you-begin")
        self.next("select-software")
        self.next("versions", "alt+m", "Tab", "Tab", "Tab", *keys, "alt+n")

    def test_main_board_from_welcome_to_finished(self):
        self.home.make("F61118AB.HEX", 960, 0x200)
        self.start_antenna(0)
        before, _ = self.dump("before")
        self.start_window()
        self.screen.keep("welcome")
        self.await_ready()
        self.choose_board("space")
        self.log_holds("==>VERSION", ">QEL Orbimaster NEVA")
        self.next("flash-file")
        self.next("update")
        self.log_holds("DO NOT POWER OFF ANTENNA", "PLEASE PRESS NEXT")
        lost, flashed = self.dump("flashed")
        self.assertNotEqual(lost, before)
        judged = self.home.judged("F61118AB.HEX", 0x200 + 960)
        self.assertEqual((flashed / "memory.bin").read_bytes(), judged)
        self.next("restart")
        self.antenna.cycle_power()
        self.log_holds("Parameters uploaded", seconds=90)
        self.next("finished", "Return", "alt+n")
        self.assertEqual(self.dump("after")[0], before)
        self.press_until("the program ends", lambda: "Assistant - Finished" in self.home.text("BNL.LOG"), "alt+f",
                         "space")

    def test_port_chosen_from_the_menu_and_pulled_in_the_middle_of_a_transfer(self):
        file = "F61195A.HEX"
        self.home.make(file, 1280, 0x200)
        self.start_antenna(12, options=("--quick",))
        (self.prefix / "dosdevices" / f"com{bench.PORT}").unlink()
        self.start_window()
        self.screen.keep("no-port")
        self.plug_in(12)
        # Escape for the box of a machine without any port; the last of the menu, behind the machine's own.
        self.press_until("COM12 is in the settings", lambda: "COMMPort=12" in self.home.text("Burnline.ini"), "Escape",
                         "alt+c", "Up", "Return")
        self.await_ready()
        self.choose_board("Tab", "b")
        self.next("flash-file", "alt+m", "Tab", "Tab", "Tab", "space", "alt+n")  # by the antenna's serial port
        self.next("update")
        self.antenna.await_words("1 lines taken")
        self.antenna.do("fault port-gone 3")
        self.antenna.await_words("the port is back")
        self.plug_in(12)
        self.screen.keep("pulled")
        wait_until("the flash goes on", lambda: "PLEASE PRESS NEXT" in self.home.text("BNL.LOG"), 90)
        self.log_holds("COM12 has gone at", "COM12 is back", "PLEASE PRESS NEXT")
        self.screen.keep("flashed")
        _, flashed = self.dump("flashed")
        self.assertEqual((flashed / "memory.bin").read_bytes(), self.home.judged(file, 0x200 + 1280))
