"""`heron picture`: what is chosen and stacked, as JSON and as a PNG, each in a process of its own."""

import struct
import subprocess
import unittest
import zlib

import support


class Picture(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def picture(self, kind, *wishes, **options):
        changes = [part for wish in wishes for part in ("-o", wish)]
        answer = self.json("picture", kind, "-p", "Office", "--yes", *changes, **options)
        self.assertEqual(answer["schema"], "heron.picture")
        return answer

    def numbers(self, layers):
        return [layer["picture"] for layer in layers]

    def size(self, path):
        data = path.read_bytes()
        self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
        return struct.unpack(">II", data[16:24])

    def test_each_kind_follows_the_settings_and_keeps_nothing(self):
        plain = self.picture("paper", "lpMediaSize=9")
        self.assertEqual(self.numbers(plain["layers"]), [15000, 15070, 15080, 15400])
        self.assertEqual([layer["mode"] for layer in plain["layers"]], ["copy", "copy", "xor", "xor"])
        self.assertEqual(len(plain["descriptor"]), 19)
        larger = self.picture("paper", "lpMediaSize=9", "lpOutputPaper=8")
        places = {label["place"]: label["text"] for label in larger["labels"]}
        self.assertEqual((places["arrow"], places["zoom"], places["outputSize"]), ("=>", "142 %", "(297x420mm)"))
        self.assertEqual(self.picture("paper", "lpMediaSize=9"), plain)
        status = self.picture("status", "lpPRNType=2", "ImageShift_Check=1", "Chapter_Check=1")
        self.assertEqual(status["iconOrder"], [2, 3, 0, 0, 0, 0], "the order of the changes")
        self.assertEqual((status["descriptor"]["rectangle"], status["layers"][-1]["picture"]), ([0, 0, 200, 84], 15540))

    def png(self, name, width, height, levels):
        """A grey PNG with these levels."""
        lines = b"".join(b"\0" + bytes(levels[y * width:(y + 1) * width]) for y in range(height))

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        head = struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)
        return self.write(name, b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(lines))
                          + chunk(b"IEND", b""))

    def levels(self, path):
        """The levels of a grey PNG whose lines have filter 0 to 4."""
        data, at, pixels = path.read_bytes(), 8, b""
        width, height = self.size(path)
        self.assertEqual(data[24:26], b"\x08\x00", "8 bits, grey")
        while at < len(data):
            length = struct.unpack(">I", data[at:at + 4])[0]
            if data[at + 4:at + 8] == b"IDAT":
                pixels += data[at + 8:at + 8 + length]
            at += 12 + length
        raw, rows = zlib.decompress(pixels), [[0] * width]
        for y in range(height):
            kind, line, row = raw[y * (width + 1)], raw[y * (width + 1) + 1:(y + 1) * (width + 1)], []
            for x in range(width):
                left, up = (row[x - 1] if x else 0), rows[-1][x]
                corner = rows[-1][x - 1] if x else 0
                guess = left + up - corner
                paeth = min((left, up, corner), key=lambda value: abs(guess - value))
                row.append((line[x] + (0, left, up, (left + up) // 2, paeth)[kind]) & 255)
            rows.append(row)
        return [level for row in rows[1:] for level in row]

    def test_quality_processes_any_picture(self):
        plain = self.picture("quality")
        self.assertEqual((plain["source"], plain["mask"]), (11202, 11205))
        self.assertEqual(set(plain["descriptor"]), {"density", "halftoneMode", "screen", "saveToner"})
        black = self.picture("quality", "PrintCAD_Check=1", "lpPrintCADMode=2")
        self.assertEqual(black["source"], 11204)
        out = self.folder / "sample.png"
        self.heron("picture", "quality", "-p", "Office", "--out", out)
        self.assertEqual(self.size(out), (120, 160))
        self.heron("picture", "quality", "-p", "Office", "--out", out, "--scale", "2")
        self.assertEqual(self.size(out), (240, 320))

        source = self.png("a.png", 3, 2, [0, 100, 255, 200, 100, 50])
        mask = self.png("b.png", 3, 2, [255] * 6)
        own = ("picture", "quality", "-p", "Office", "--sample", source)
        self.heron(*own, "--mask", mask, "--out", out)
        screen = plain["descriptor"]["screen"]

        def dot(level, x, y):
            if screen == 3:
                light = level * 16 // 255 < [[15, 11, 4, 2], [5, 9, 8, 12]][y][x]
            else:
                light = (level * 9 + 128) // 255 < [[8, 5, 2], [3, 4, 6]][y][x]
            return (level * 7 + 5) // 10 if light else min(255, (level * 13 + 5) // 10)

        wanted = [dot(level, i % 3, i // 3) for i, level in enumerate([0, 100, 255, 200, 100, 50])]
        self.assertEqual(self.levels(out), wanted)
        self.heron(*own, "--out", out, code=2)
        self.heron(*own, "--mask", self.png("c.png", 2, 3, [0] * 6), "--out", out, code=2)
        self.heron(*own, "--mask", self.folder / "none.png", "--out", out, code=5)
        self.heron(*own, "--mask", self.write("d.png", b"no picture"), "--out", out, code=1)
        self.heron("picture", "paper", "-p", "Office", "--sample", source, "--mask", mask, "--out", out, code=2)
        self.assertEqual(self.levels(out), wanted, "a failed command leaves the file alone")

    def test_machine_and_device(self):
        self.heron("settings", "-p", "Office", "--device", "-o", "lpOutputUnit=2", "-o", "lpMailBinKit=2", "--yes")
        machine = self.picture("machine")
        self.assertEqual(self.numbers(machine["base"])[-2:], [19013, 19002])
        device = self.picture("device", "lpMailBinKit=1")
        self.assertEqual(self.numbers(device["base"])[-2:], [19013, 19001])
        self.assertFalse("layers" in machine or "highlights" in device)
        self.assertEqual(self.picture("machine"), machine)
        margin = self.picture("margin", "BindMargin_Check=1", "lpOrientation=2")
        self.assertEqual((margin["descriptor"]["marginEdge"], self.numbers(margin["layers"])), (3, [15281]))

    def test_files(self):
        for kind, size in (("paper", (200, 150)), ("machine", (200, 150)), ("device", (200, 150)), ("status", (200, 84)),
                           ("margin", (140, 140))):
            path = self.folder / f"{kind}.png"
            self.heron("picture", kind, "-p", "Office", "--out", path)
            self.assertEqual(self.size(path), size, kind)
        double = self.folder / "double.png"
        self.heron("picture", "paper", "-p", "Office", "--scale", "2", "--out", double)
        self.assertEqual(self.size(double), (400, 300))
        before = double.read_bytes()
        self.heron("picture", "paper", "-p", "Office", "-o", "Copies=5", "--scale", "2", "--out", double)
        self.assertTrue(double.read_bytes() != before, "the number of copies is written on it")
        self.assertEqual(self.run_heron("picture", "paper", "-p", "Office", "--out", "-").stdout[:4], b"\x89PNG")

    def test_dark_vectors_and_words(self):
        ways = {}
        for name, more in (("light.png", ()), ("dark.png", ("--dark",)), ("vectors.svg", ())):
            path = self.folder / name
            self.heron("picture", "paper", "-p", "Office", "-o", "lpMediaSize=9", *more, "--out", path)
            ways[name] = path.read_bytes()
        self.assertNotEqual(ways["light.png"], ways["dark.png"])
        text = ways["vectors.svg"].decode()
        self.assertIn('width="', text)
        self.assertNotIn("<image", text, "vectors stay vectors")
        self.assertIn("A4 portrait", text, "the sentence is its description")
        self.assertEqual(self.picture("paper", "lpMediaSize=9", "lpPRNType=2", "Nup_Check=1", "lpLayout=10", "lpOrder=3")["says"],
                         "A4 portrait, printed on both sides, bound left, 4 pages a sheet in reading order")
        self.assertTrue(self.picture("machine")["says"].startswith("Machine, "))
        self.assertIn("printed", self.picture("status")["says"])
        self.assertEqual(self.run_heron("picture", "paper", "-p", "Office", "--out", self.folder / "x.gif").returncode, 2)

    def test_a_saved_entry_and_a_record(self):
        self.heron("settings", "-p", "Office", "-o", "lpOrientation=2")
        self.heron("library", "save", "Wide", "-p", "Office", "--folder", self.folder)
        record = self.folder / "wide.bin"
        self.heron("settings", "-p", "Office", "-o", "Copies=2", "--out", record)
        self.heron("settings", "-p", "Office", "--reset")
        self.assertEqual(self.picture("paper")["descriptor"]["landscape"], 0)
        entry = self.json("picture", "paper", "-p", "Office", "--entry", "wide")
        self.assertEqual(entry["descriptor"]["landscape"], 1)
        read = self.json("picture", "paper", "-p", "Office", "--in", record)
        self.assertEqual(read["labels"][-1], {"place": "copies", "text": " X2"})

    def test_refusals(self):
        for code, *arguments in ((2, "paper"), (2, "landscape", "--json"), (2, "paper", "--out", self.folder / "a.jpg"),
                                 (2, "paper", "--scale", "0", "--out", self.folder / "a.png"),
                                 (1, "paper", "--out", self.folder / "none" / "a.png"),
                                 (5, "paper", "--entry", "Nothing", "--json"),
                                 (2, "device", "--in", self.folder / "x", "--json"),
                                 (4, "machine", "-o", "lpOutputUnit=2", "--json")):
            self.heron("picture", *arguments, "-p", "Office", code=code)
        self.heron("picture", "paper", "-p", "Nowhere", "--json", code=5)
        self.assertEqual(sorted(self.folder.glob("*.png")), [])

    def test_the_command_itself_loads_no_toolkit(self):
        loaded = subprocess.run(["ldd", support.BIN], capture_output=True, text=True, check=True).stdout
        self.assertNotIn("Qt", loaded)


if __name__ == "__main__":
    unittest.main()
