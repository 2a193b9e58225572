"""What settings contain, and settings for others: summary, library export, library default."""

import unittest

import support

TABS = ["Paper", "Per Page", "Special", "Overlay", "Watermark", "Quality", "Font", "Fax"]


class Summary(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.files = self.folder / "files"
        self.files.mkdir()

    def library(self, command, *arguments, printer="Office", **options):
        return self.heron("library", command, *arguments, "-p", printer, **options)

    def names(self, printer):
        return [entry["name"] for entry in self.json("library", "list", "-p", printer)["entries"]]

    def rows(self, *arguments):
        return {tab["title"]: tab["rows"] for tab in self.json("summary", "-p", "Office", *arguments)["tabs"]}

    def value(self, printer, key):
        return next(row["value"] for row in self.json("settings", "-p", printer)["settings"] if row["key"] == key)

    def test_tabs_of_the_current_and_of_saved_settings(self):
        tabs = self.json("summary", "-p", "Office")["tabs"]
        self.assertEqual([tab["tab"] for tab in tabs], list(range(8)))
        self.assertEqual([tab["title"] for tab in tabs], TABS)
        self.assertTrue(all(len(row) == 3 for tab in tabs for row in tab["rows"]))
        self.assertIn(["Orientation", "Portrait", ""], self.rows()["Paper"])
        self.heron("settings", "-p", "Office", "-o", "lpOrientation=2", "-o", "Nup_Check=1")
        self.library("save", "Wide", "--folder", self.files)
        self.heron("settings", "-p", "Office", "--reset")
        self.assertIn(["Orientation", "Landscape", ""], self.rows("--entry", "Wide")["Paper"])
        self.assertIn(["Orientation", "Portrait", ""], self.rows()["Paper"])
        shown = self.json("library", "show", "Wide", "-p", "Office", "--diff")
        self.assertEqual({tab["title"]: tab["rows"] for tab in shown["tabs"]}, self.rows("--entry", "wide"))
        changed = [row for row in shown["rowDifferences"] if row["entry"][0] == "Orientation"]
        self.assertEqual(changed, [{"tab": 0, "entry": ["Orientation", "Landscape", ""],
                                    "now": ["Orientation", "Portrait", ""]}])

    def test_one_tab_as_text(self):
        text = self.heron("summary", "-p", "Office", "--tab", "Per-Page")
        self.assertEqual(text.splitlines()[0], "Per Page")
        self.assertNotIn("-----", text)
        self.assertEqual(text, self.heron("summary", "-p", "Office", "--tab", "1"))
        self.heron("summary", "-p", "Office", "--tab", "margins", code=2)
        self.heron("summary", "-p", "Office", "--entry", "Nobody", code=5)
        self.heron("summary", "-p", "Nowhere", code=5)
        record = self.folder / "job.bin"
        self.heron("settings", "-p", "Office", "-o", "Copies=9", "--out", record)
        self.assertRegex(self.heron("summary", "-p", "Office", "--in", record, "--tab", "paper"), r"Copies +9\n")

    def test_search(self):
        self.heron("settings", "-p", "Office", "-o", "lpOrientation=2")
        self.library("save", "Wide", "--folder", self.files, "--comment", "for the Board")
        for wanted, found in {"WIDE": ["Wide"], "board": ["Wide"], "Landscape": ["Wide"], "nothing like it": []}.items():
            entries = self.json("library", "list", "-p", "Office", "--find", wanted)["entries"]
            self.assertEqual([entry["name"] for entry in entries], found, wanted)
        self.assertIn("No settings hold this text", self.library("list", "--find", "nothing like it"))

    def test_a_colleague_registers_what_was_exported(self):
        self.heron("settings", "-p", "Office", "-o", "Copies=5")
        self.library("save", "Five", "--folder", self.files, "--comment", "five of each")
        copy = self.folder / "Fives.vxs"
        self.library("export", "Five", copy, "--dry-run")
        self.assertFalse(copy.exists())
        self.library("export", "Five", copy)
        self.library("export", "Five", copy, "--no", code=3)
        self.library("export", "Standard settings", "--out", copy, "--yes")
        self.library("export", "Five", copy, "--yes")
        self.add_printer("Hall")
        self.library("register", copy, printer="Hall")
        listed = self.json("library", "list", "-p", "Hall")["entries"][1]
        self.assertEqual((listed["name"], listed["comment"], listed["kind"]), ("Fives", "five of each", "own"))
        self.library("recall", "Fives", "--with", "size", printer="Hall")
        self.assertEqual(self.value("Hall", "Copies"), 5)

    def test_exports_that_are_refused(self):
        self.library("save", "Five", "--folder", self.files)
        before = (self.files / "Five.vxs").read_bytes()
        self.library("export", "Standard settings", self.files / "Five.vxs", "--yes", code=4)
        self.assertEqual((self.files / "Five.vxs").read_bytes(), before)
        self.library("export", "Five", self.folder / "five.txt", code=2)
        self.library("export", "Five", self.folder / "a.b.vxs", code=2)
        self.library("export", "Five", self.folder / "nowhere" / "five.vxs", code=6)
        self.library("export", "Six", self.folder / "six.vxs", code=5)

    def test_new_printers_start_from_chosen_settings(self):
        self.assertIn("start with their defaults", self.library("default"))
        self.heron("settings", "-p", "Office", "-o", "Copies=4", "-o", "lpPRNType=2")
        self.library("save", "House", "--folder", self.files)
        self.library("default", "House", "--dry-run")
        self.assertIsNone(self.json("library", "default", "-p", "Office")["file"])
        self.library("default", "House")
        self.assertEqual(self.json("library", "default", "-p", "Office")["file"], str(self.files / "House.vxs"))
        self.add_printer("Second")
        self.assertIn("House.vxs", self.last_errors)
        self.assertEqual([self.value("Second", key) for key in ("Copies", "lpPRNType")], [4, 2])
        self.assertEqual(self.names("Second"), ["Standard settings", "House"])
        self.heron("settings", "-p", "Second", "-o", "Copies=2")
        self.heron("printer", "add", "Second", "--replace")
        self.assertEqual(self.value("Second", "Copies"), 2, "it isn't new")
        (self.files / "House.vxs").unlink()
        self.add_printer("Third")
        self.assertIn("starts with its defaults", self.last_errors)
        self.assertEqual(self.value("Third", "Copies"), 1)
        self.library("default", "--none")
        self.add_printer("Fourth")
        self.assertEqual(self.last_errors, "")
        self.library("default", "House", "--none", code=2)


if __name__ == "__main__":
    unittest.main()
