"""An X screen of the test's own: keys go in, pictures come out."""
import os
import pathlib
import struct
import subprocess
import zlib

import bench

SIZE = "1366x768"
LIGHT = (0x30, 0x96, 0xFA)  # of what is chosen or at work, in the colours that Wine begins with


class Picture:
    """The screen at one moment, as rows of red, green and blue."""

    def __init__(self, dump):
        header = struct.unpack(">25I", dump[:100])
        self.width, self.height, stride, colors = header[4], header[5], header[12], header[19]
        start = header[0] + colors * 12
        self.rows = []
        for y in range(self.height):
            row = dump[start + y * stride:start + y * stride + self.width * 4]
            pixels = bytearray(self.width * 3)
            pixels[0::3], pixels[1::3], pixels[2::3] = row[2::4], row[1::4], row[0::4]
            self.rows.append(bytes(pixels))

    def save(self, path):
        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
        path.write_bytes(b"\x89PNG\r\n\x1a\n" +
                         chunk(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)) +
                         chunk(b"IDAT", zlib.compress(b"".join(b"\0" + row for row in self.rows))) +
                         chunk(b"IEND", b""))

    def runs(self):
        """Stretches of the light colour: row, first column, length."""
        for y, row in enumerate(self.rows):
            x, light = 0, bytes(LIGHT)
            while (x := row.find(light, x)) >= 0:
                if x % 3:
                    x += 1
                    continue
                end = x
                while row[end:end + 3] == light:
                    end += 3
                yield y, x // 3, (end - x) // 3
                x = end

    def station(self):
        """The row of the filled disc in the list of steps, which stands at the left edge; None when there is none."""
        runs = list(self.runs())
        left = min((x for _, x, _ in runs), default=0)
        disc = [y for y, x, length in runs if x < left + 30 and 10 <= length <= 30]
        return (disc[0] + disc[-1]) // 2 if disc else None


class Screen:
    def __init__(self, directory):
        self.directory = directory
        directory.mkdir(parents=True, exist_ok=True)
        number, told = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(told), "-screen", "0", SIZE + "x24", "-fbdir",
                                        str(directory), "-nolisten", "tcp"], pass_fds=[told],
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        bench.started.append(self.server)
        os.close(told)
        with open(number) as words:
            self.display = ":" + words.readline().strip()

    def look(self):
        return Picture((self.directory / "Xvfb_screen0").read_bytes())

    def keep(self, name):
        self.look().save(pathlib.Path(self.directory) / f"{name}.png")

    def press(self, *keys):
        """Keys as xdotool names them, each after the one before."""
        environment = dict(os.environ, DISPLAY=self.display)
        subprocess.run(["xdotool", "key", "--delay", "150", *keys], env=environment, check=True)

    def end(self):
        self.server.terminate()
        self.server.wait()
