"""`heron watermark`: the list of a user, one process a command, and what is printed of it."""

import json
import unittest

import support
from support import SAMPLES


class Watermark(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def mark(self, command, *arguments, **options):
        return self.heron("watermark", command, "-p", "Office", *arguments, **options)

    def list(self):
        return self.json("watermark", "list", "-p", "Office")

    def texts(self):
        return [row["text"] for row in self.list()["watermarks"]]

    def entry(self, index):
        return self.json("watermark", "show", str(index), "-p", "Office")

    def test_a_life_of_a_watermark(self):
        seeded = self.list()
        self.assertEqual((seeded["current"], len(seeded["watermarks"]), seeded["watermarks"][0]["index"]), (0, 11, 1))
        self.mark("add", "--text", "Entwurf Größe", "--font", "DejaVu Sans", "--style", "bold-italic", "--size", "96",
                  "--angle", "45deg", "--color", "red", "--shade", "0", "--x", "-12.5mm", "--y", "300")
        entry = self.entry(12)
        expected = {"index": 12, "text": "Entwurf Größe", "font": "DejaVu Sans", "style": 4, "size": 96, "angle": 450,
                    "color": 1, "shade": 0, "x": -125, "y": 300}
        self.assertEqual({key: entry[key] for key in expected}, expected)
        self.assertEqual(self.list()["current"], 0, "a new one isn't in use")
        self.mark("edit", "Entwurf Größe", "--angle", "-90deg", "--x", "0")
        self.assertEqual((self.entry(12)["angle"], self.entry(12)["x"], self.entry(12)["size"]), (-900, 0, 96))
        self.mark("use", "Entwurf Größe")
        self.assertEqual((self.list()["current"], self.list()["used"]), (12, True))
        self.mark("remove", "3")
        self.assertEqual(self.list()["current"], 11, "it stays the current one and has moved up")
        self.assertIn("*11", self.mark("list"))
        self.mark("remove", "11")
        self.assertEqual(self.list()["current"], 10, "the one before")
        self.mark("use", "none")
        self.assertEqual(self.list()["current"], 0)

    def test_what_is_refused(self):
        before = self.list()
        for option, value in (("--size", "7"), ("--size", "401"), ("--angle", "901"), ("--angle", "91deg"), ("--shade", "256"),
                              ("--x", "32768"), ("--y", "4000mm"), ("--style", "fat"), ("--color", "7"), ("--size", "1e2"),
                              ("--text", "x" * 33), ("--font", "x" * 32), ("--text", "a\nb"), ("--x", "mm")):
            more = () if option == "--text" else ("--text", "x")
            self.mark("add", option, value, *more, code=2)
            self.mark("edit", "1", option, value, code=2)
        self.assertRegex(self.run_heron("watermark", "edit", "1", "-p", "Office", "--size", "5").stderr.decode(), "8 to 400 points")
        self.mark("edit", "0", "--size", "10", code=4)
        self.mark("remove", "0", code=4)
        self.mark("edit", "1", code=2)
        self.mark("add", code=2)
        self.mark("show", "77", code=5)
        self.mark("use", "Nowhere", code=5)
        self.mark("remove", "2", "--dry-run")
        self.assertEqual(self.list(), before)

    def test_the_list_holds_fifty(self):
        for number in range(12, 51):
            self.mark("add", "--text", f"m{number}")
        self.mark("add", "--text", "one more", code=4)
        self.mark("remove", "m20")
        self.mark("add", "--text", "one more")
        self.assertEqual(self.texts()[-1], "one more")

    def test_records_choose_for_themselves(self):
        record = self.folder / "job.bin"
        self.mark("use", "2", "--out", record)
        self.assertEqual(self.list()["current"], 0)
        self.assertEqual(self.json("watermark", "list", "-p", "Office", "--in", record)["current"], 2)

    def test_picture_and_print_show_it(self):
        self.mark("add", "--text", "OFFEN", "--font", "DejaVu Sans", "--shade", "0", "--size", "100", "--y", "-80mm")
        self.mark("use", "OFFEN")
        picture = self.json("picture", "watermark", "-p", "Office", "-o", "lpMediaSize=9")["descriptor"]
        self.assertEqual((picture["paper"], picture["W"], picture["H"], picture["L"]), ([32, 41, 88, 119], 21000, 29700, 45720))
        self.assertEqual(picture["cross"], [60, 80 + -800 * 78 * 10 // 29700 + 1])
        self.assertEqual(picture["color"], [0, 0, 0])
        self.assertEqual(picture["text"][0], 60)
        file = self.folder / "mark.png"
        self.heron("picture", "watermark", "-p", "Office", "--scale", "3", "--out", file)
        self.assertEqual(file.read_bytes()[16:24], bytes([0, 0, 1, 104, 0, 0, 1, 224]))
        off = self.json("picture", "watermark", "-p", "Office", "-o", "Watermark_Use=0")["descriptor"]
        self.assertEqual((off["text"], off["cross"], off["textColor"]), (None, None, [255, 255, 255]))
        out = self.folder / "job"
        self.heron("print", "-p", "Office", SAMPLES / "letter.txt", "--out", out)
        drawn = [note["draws"] for note in json.loads((out / "job.json").read_text())["escapes"] if "draws" in note]
        self.assertEqual(set(drawn), {"OFFEN"})


if __name__ == "__main__":
    unittest.main()
