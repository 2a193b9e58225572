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

    def test_the_paper_follows_the_settings(self):
        plain = self.picture("paper", "lpMediaSize=9")
        self.assertEqual(self.numbers(plain["layers"]), [15000, 15070, 15080, 15400])
        self.assertEqual([layer["mode"] for layer in plain["layers"]], ["copy", "copy", "xor", "xor"])
        self.assertEqual(len(plain["descriptor"]), 19)
        self.assertEqual(plain["labels"][0]["place"], "originalName")
        booklet = self.picture("paper", "lpMediaSize=9", "lpPRNType=3")
        self.assertEqual((booklet["descriptor"]["booklet"], booklet["descriptor"]["duplexEdge"]), (1, 0))
        self.assertEqual(self.numbers(booklet["layers"])[:2], [15002, 15073])
        bordered = self.picture("paper", "Nup_Check=1", "lpBorder2=1")
        self.assertEqual(bordered["descriptor"]["border"], 1)
        # Nothing of it is kept.
        self.assertEqual(self.picture("paper", "lpMediaSize=9"), plain)
        larger = self.picture("paper", "lpMediaSize=9", "lpOutputPaper=8")
        places = {label["place"]: label["text"] for label in larger["labels"]}
        self.assertEqual((places["arrow"], places["zoom"], places["outputSize"]), ("=>", "142 %", "(297x420mm)"))

    def test_status_keeps_the_order_of_the_wishes(self):
        one = self.picture("status", "lpPRNType=2", "Chapter_Check=1", "ImageShift_Check=1")
        self.assertEqual(one["iconOrder"], [3, 2, 0, 0, 0, 0])
        two = self.picture("status", "lpPRNType=2", "ImageShift_Check=1", "Chapter_Check=1")
        self.assertEqual(two["iconOrder"], [2, 3, 0, 0, 0, 0])
        self.assertEqual(two["descriptor"]["rectangle"], [0, 0, 200, 84])
        self.assertEqual(two["layers"][-1]["picture"], 15540)

    def test_machine_and_device(self):
        self.heron("settings", "-p", "Office", "--device", "-o", "lpOutputUnit=2", "-o", "lpMailBinKit=2", "--yes")
        machine = self.picture("machine")
        self.assertEqual(self.numbers(machine["base"])[-2:], [19013, 19002])
        self.assertNotIn("layers", machine)
        device = self.picture("device", "lpMailBinKit=1")
        self.assertEqual(self.numbers(device["base"])[-2:], [19013, 19001])
        self.assertNotIn("highlights", device)
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
        for kind in ("quality", "watermark"):
            self.heron("picture", kind, "-p", "Office", "--json", code=1)
            self.assertIn("not built yet", self.run_heron("picture", kind, "-p", "Office", "--json").stderr.decode())
        self.heron("picture", "paper", "-p", "Office", code=2)
        self.heron("picture", "landscape", "-p", "Office", "--json", code=2)
        self.heron("picture", "paper", "-p", "Office", "--out", self.folder / "a.jpg", code=2)
        self.heron("picture", "paper", "-p", "Office", "--scale", "0", "--out", self.folder / "a.png", code=2)
        self.heron("picture", "paper", "-p", "Office", "--out", self.folder / "none" / "a.png", code=1)
        self.heron("picture", "paper", "-p", "Office", "--entry", "Nothing", "--json", code=5)
        self.heron("picture", "paper", "-p", "Nowhere", "--json", code=5)
        self.heron("picture", "device", "-p", "Office", "--in", self.folder / "x", "--json", code=2)
        self.heron("picture", "machine", "-p", "Office", "-o", "lpOutputUnit=2", "--json", code=4)
        self.assertEqual(sorted(self.folder.glob("*.png")), [])

    def test_the_command_itself_loads_no_toolkit(self):
        loaded = subprocess.run(["ldd", support.BIN], capture_output=True, text=True, check=True).stdout
        self.assertNotIn("Qt", loaded)


if __name__ == "__main__":
    unittest.main()
