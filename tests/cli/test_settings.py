"""`heron settings`: a record through the working settings and back, the user's own record, and the list of settings."""

import unittest

import support


class Settings(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def through(self, source):
        out = self.folder / "out.bin"
        self.heron("settings", "-p", "Office", "--in", source, "--out", out)
        return out

    def test_nothing_changes_on_the_way(self):
        for sample in sorted(support.SAMPLES.glob("*.bin")):
            resolved = self.folder / "resolved.bin"
            self.heron("record", "merge", "-p", "Office", "--in", sample, "--out", resolved)
            written = self.through(resolved)
            changed = {row["field"] for row in self.json("record", "diff", resolved, written)["differences"]}
            # Confirmed settings note the paper that they were made for.
            self.assertLessEqual(changed, {"documentPaperSnapshot"}, sample.name)

    def test_covers_survive_and_records_of_other_drivers_are_resolved_first(self):
        record = self.default_record()
        record[1979] = 3  # a printed front cover
        written = self.through(self.write("covered.bin", record)).read_bytes()
        self.assertEqual((written[1979], written[1982]), (3, 1))
        self.assertEqual(len(self.through(support.SAMPLES / "bare-220.bin").read_bytes()), 3328)

    def test_files_that_are_no_records_are_refused_and_nothing_is_written(self):
        out = self.folder / "out.bin"
        self.heron("settings", "-p", "Office", "--in", self.write("short.bin", b"\0" * 71), "--out", out, code=1)
        self.heron("settings", "-p", "Office", "--in", self.folder / "missing.bin", "--out", out, code=5)
        self.heron("settings", "-p", "Unknown", "--out", out, code=5)
        self.heron("settings", "-p", "Office", "--in", out, "--reset", code=2)
        self.assertFalse(out.exists())

    def test_it_starts_as_the_default_and_reset_returns_to_it(self):
        self.assertIn("as the printer starts with", self.heron("settings", "-p", "Office"))
        self.assertEqual(self.own_records(), [], "looking makes no file")
        self.heron("settings", "-p", "Office", "--reset")
        (own,) = self.own_records()
        self.assertEqual(own.stat().st_mode & 0o777, 0o600)
        changed = bytearray(own.read_bytes())
        changed[86] = changed[306] = 9  # copies and their mirror
        own.write_bytes(changed)
        self.assertRegex(self.heron("settings", "-p", "Office"), r"(?m)^  Copies +Copies +9$")
        self.heron("settings", "-p", "Office", "--reset")
        self.assertNotIn("Copies", self.heron("settings", "-p", "Office"))

    def test_a_queue_and_a_user_each_have_their_own(self):
        self.add_printer("../Upstairs")
        self.heron("settings", "-p", "Office", "--reset")
        self.heron("settings", "-p", "../Upstairs", "--reset")
        self.heron("settings", "-p", "Office", "--reset", env=self.environment(HERON_USER="other"))
        self.assertEqual(len(self.own_records()), 3)
        self.assertTrue(all(path.resolve().is_relative_to(self.home.resolve()) for path in self.own_records()))

    def test_every_setting_has_a_label_and_a_value_among_its_choices(self):
        answer = self.json("settings", "-p", "Office")
        self.assertEqual((answer["applied"], answer["changes"]), (False, []))
        unfilled = {"Only in open dialogs"}
        for row in answer["settings"]:
            self.assertTrue(row["label"] and row["page"], row)
            self.assertTrue(all(option["label"] for option in row["options"]), row["key"])
            if row["options"] and row["page"] not in unfilled:
                self.assertIn(True, [option["current"] for option in row["options"]], row["key"])
            if row["min"] is not None and row["page"] not in unfilled:
                self.assertLessEqual(row["min"], row["value"])
                self.assertLessEqual(row["value"], row["max"])
        rows = {row["key"]: row for row in answer["settings"]}
        self.assertEqual(rows["lpMediaSize"]["valueLabel"], "A4")
        self.assertEqual((rows["Density"]["min"], rows["Density"]["max"]), (-5, 1))

    def test_the_list_reads_page_by_page(self):
        text = self.heron("settings", "-p", "Office", "-l")
        self.assertRegex(text, r"(?m)^Paper$(?s:.*)^Fax$(?s:.*)^Device$")
        self.assertRegex(text, r"(?m)^ +\*1=Portrait \(default\); 2=Landscape$")
        self.assertLessEqual(max(map(len, text.splitlines())), 120)


if __name__ == "__main__":
    unittest.main()
