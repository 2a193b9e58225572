"""`heron picture`: what is chosen and stacked, as JSON and as a PNG, each in a process of its own."""

import struct
import subprocess
import unittest

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
        for code, *arguments in ((1, "quality", "--json"), (1, "watermark", "--json"), (1, "cover", "--json"), (2, "paper"),
                                 (2, "landscape", "--json"), (2, "paper", "--out", self.folder / "a.jpg"),
                                 (2, "paper", "--scale", "0", "--out", self.folder / "a.png"),
                                 (1, "paper", "--out", self.folder / "none" / "a.png"),
                                 (5, "paper", "--entry", "Nothing", "--json"),
                                 (2, "device", "--in", self.folder / "x", "--json"),
                                 (4, "machine", "-o", "lpOutputUnit=2", "--json")):
            self.heron("picture", *arguments, "-p", "Office", code=code)
            self.assertEqual("not built yet" in self.last_errors, arguments[0] in ("quality", "watermark", "cover"))
        self.heron("picture", "paper", "-p", "Nowhere", "--json", code=5)
        self.assertEqual(sorted(self.folder.glob("*.png")), [])

    def test_the_command_itself_loads_no_toolkit(self):
        loaded = subprocess.run(["ldd", support.BIN], capture_output=True, text=True, check=True).stdout
        self.assertNotIn("Qt", loaded)


if __name__ == "__main__":
    unittest.main()
