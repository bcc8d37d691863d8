"""burnline-flash.exe: boards of each kind on COM5, and ports that aren't there, are taken, have high numbers or go."""

import bench
from bench import Bench


class Console(Bench):
    def flash(self, *words, seconds=240):
        console = self.start_console("--port", f"COM{bench.PORT}", "--yes", *words)
        return self.finish(console, seconds=seconds)

    def assert_done(self, board, memories, unit=None):
        """The board is flashed, its memories hold what srec_cat makes of its files, its parameters are back."""
        self.start_antenna(board, unit)
        before, _ = self.dump("before")
        code, events = self.flash("--board", str(board))
        self.assertEqual(code, 0, events[-8:])
        after, directory = self.dump("after")
        self.assertGreaterEqual(len(before), 3)
        self.assertEqual(after, before)
        for name, judged in memories.items():
            held = (directory / name).read_bytes()
            self.assertGreater(len(held), 1000)
            self.assertEqual(held, judged[:len(held)], name)

    def test_line_board(self):
        self.home.make("F61118AB.HEX", 1600, 0x200)
        self.assert_done(0, {"memory.bin": self.home.judged("F61118AB.HEX")})

    def test_block_board(self):
        self.home.make("F61120A.S19", 4096, 128)
        self.home.make("F61110A.S19", 20000, 2000)
        self.home.make("F61206A.S19", 30000, 34268)  # this board sees its 32 KB twice
        boot, main = self.home.judged("F61120A.S19"), self.home.judged("F61206A.S19")[32768:]
        main = main[:128] + boot[128:4224] + main[4224:]
        image = b"\xff" * 144 + boot[144:528] + b"\xff" * 496 + main[1024:32256]
        self.assert_done(1, {"memory.bin": image})

    def test_board_of_three_stages(self):
        self.home.make("F61350A.S19", 2000, 8320)
        self.home.make("F61340B.S19", 1500, 9000, "-header", "F61340B")
        self.home.make("F61357B.S19", 1200, 500, "-header", "F61357B")
        memories = {"memory.bin": "F61350A.S19", "fpga.bin": "F61340B.S19", "bapi.bin": "F61357B.S19"}
        self.assert_done(21, {memory: self.home.judged(file) for memory, file in memories.items()})

    def words_of(self, console, wanted_code):
        code, events = self.finish(console)
        self.assertEqual(code, wanted_code, events)
        return "\n".join(event.get("words", "") for event in events)

    def test_port_that_is_missing_taken_or_has_a_high_number(self):
        port = f"COM{bench.PORT}"
        missing = self.start_console("--port", port, "--identify", "--yes")
        self.assertIn(f"COM Port not found ({port}).", self.words_of(missing, 2))
        self.assertIn("There is no serial port LPT1", self.words_of(self.start_console("--port", "LPT1"), 2))

        # Wine keeps no second program from an open port. Whatever can't be opened brings the same refusal about.
        self.link_port(bench.PORT, self.place)
        taken = self.start_console("--port", port, "--identify", "--yes")
        self.assertIn(f"COM Port Already in Use. ({port}).", self.words_of(taken, 2))
        self.assertIn(f"{port}  in use", self.words_of(self.start_console("--list-ports"), 0))

        self.start_antenna(0)
        self.plug_in(12)
        self.assertIn("COM12  free", self.words_of(self.start_console("--list-ports"), 0))
        high = self.start_console("--port", "COM12", "--board", "0", "--identify", "--yes")
        self.assertIn("Orbimaster NEVA Ver 4.07", self.words_of(high, 0))

    def test_port_that_goes_in_the_middle_of_a_transfer(self):
        self.home.make("F61195A.HEX", 1280, 0x200)
        self.start_antenna(12, options=("--quick",))
        console = self.start_console("--port", f"COM{bench.PORT}", "--board", "12", "--yes")
        self.antenna.await_words("1 lines taken")
        self.antenna.do("fault port-gone 1")
        words = self.words_of(console, 0)
        self.assertIn(f"COM{bench.PORT} has gone at", words)
        self.assertIn(f"COM{bench.PORT} is back", words)
        _, flashed = self.dump("flashed")
        self.assertEqual((flashed / "memory.bin").read_bytes(), self.home.judged("F61195A.HEX", 0x200 + 1280))
