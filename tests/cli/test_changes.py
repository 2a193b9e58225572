"""Changes with `heron settings -o`: their consequences and questions, what reads back afterwards, and what is refused;
and `heron controls`."""

import unittest

import settings_sweep
import support


class Changes(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def refused(self, wish, *words, more=()):
        before = self.rows(*more)
        self.change(wish, code=4, more=more)
        for word in words:
            self.assertIn(word, self.last_errors)
        self.assertEqual(self.rows(*more), before, "nothing is changed")

    def test_a_finisher_is_asked_for_and_installed_by_the_device_sheet(self):
        self.refused("Staple_Check=1", "Floor-type finisher")
        self.refused("lpOutputUnit=41", "--device")
        self.change("lpOutputUnit=41", more=["--device"])
        self.assertEqual(self.change("Staple_Check=on"), "Staple: Off => On\n")
        self.assertEqual(self.values("Staple_Check", "lpOutputUnit"), [1, 41])
        self.assertRegex(self.change(more=["--device"]), r"Output unit +lpOutputUnit +Floor-type")
        self.assertIn("defaults again", self.change(more=["--device", "--reset"]))
        self.assertEqual(self.values("lpOutputUnit", more=["--device"]), [1])

    def test_a_fax_resets_what_it_excludes_and_needs_a_recipient(self):
        self.refused("lpOutput=fax", '"Fax unit" = Installed')
        self.change("lpFAXUnit=2", more=["--device"])
        text = self.change("Copies=3", "lpOutput=fax", "lpOutput=printer", more=["--dry-run"])
        self.assertIn("For sending as a fax these settings change:\n\nCopies => 1", text)
        self.assertIn("Copies: 1 => 3, and then 1\n", text)
        self.change("lpPRNType=2", "lpOutput=fax", code=4)
        self.assertIn("lpOutput=fax: a fax needs a recipient", self.last_errors)
        self.assertEqual(self.values("lpOutput", "lpPRNType"), [2, 1])
        done = self.run_heron("settings", "-p", "Office", "-o", "lpOutput=1", "--json", "--yes")
        self.assertEqual(done.returncode, 4)
        self.assertIn(b"No recipient is entered", done.stdout)

    def test_values_by_number_and_by_label_in_order(self):
        text = self.change("lpPRNType=two-sided", "Copies=12", "107=2")
        self.assertEqual(text.splitlines()[:2], ["Print type: One-sided => Two-sided", "Copies: 1 => 12"])
        self.assertEqual(self.values("lpPRNType", "Copies", "lpOrientation"), [2, 12, 2])
        self.assertEqual(self.change("Copies=12"), "Copies: 12, as it was\n")
        self.assertIn("Booklet", self.change("lpPRNType=3", more=["--dry-run"]))
        self.assertEqual(self.values("lpPRNType"), [2])
        answer = self.json("settings", "-p", "Office", "-o", "Copies=5", "-o", "lpPRNType=1")
        self.assertEqual((answer["applied"], answer["messages"]), (True, []))
        first, second = answer["changes"]
        self.assertEqual((first["control"], first["old"], first["new"], first["result"]), (103, 12, 5, 0))
        self.assertEqual((second["control"], second["asked"], second["answer"]), (176, False, None))

    def test_what_is_not_understood_or_refused_changes_nothing(self):
        for wish, hint in (("Stapel_Check=1", "Staple_Check"), ("lpMediaSize=A44", '"A4"'), ("Copies", "")):
            self.change("Copies=7", wish, code=2)
            self.assertIn(hint, self.last_errors)
        for wish in ("Staple_Check=1", "99=1", "Copies=0", "Copies=1000", "lpMediaSize=4242", "lpMediaSize=512", "lpLayout=20"):
            self.change("Copies=7", wish, code=4)
        self.refused("lpOverlay=3", "list of forms")
        self.refused("lpOverlay=2", "file")
        self.refused("lpDitherType=1", "no record keeps it")
        self.refused("Layout_Check=1", "Nup_Check")
        self.refused("lpPDLType=2", "--device")
        self.assertEqual((self.values("Copies"), self.own_records()), ([1], []))

    def test_a_file_is_written_only_when_everything_was_applied(self):
        record, out = self.write("in.bin", self.default_record()), self.folder / "out.bin"
        self.change("Staple_Check=1", code=4, more=["--in", record, "--out", out])
        self.assertFalse(out.exists())
        self.change("Copies=3", more=["--in", record, "--out", out])
        self.assertEqual(self.json("record", "show", out)["fields"]["dmCopies"], 3)
        self.assertEqual(self.own_records(), [], "the user's own record isn't touched")

    def test_a_zoom_takes_a_print_size_of_its_own_as_on_the_page(self):
        self.assertEqual(self.change("Zoom=200"), "Zoom: 100 => 200\n")
        self.assertEqual(self.values("Zoom", "ZoomCheck", "lpOutputPaper"), [200, 1, 9])
        self.change("ZoomCheck=0")
        self.assertEqual(self.values("Zoom", "ZoomCheck", "lpOutputPaper"), [100, 0, 257])
        self.change("Nup_Check=1")
        self.refused("Zoom=50", '"Pages per sheet" = On', "Nup_Check=0")

    def test_a_custom_size_is_the_jobs_own_or_the_printers(self):
        self.refused("UDPaperWidth=1500", "-o lpMediaSize=256")
        self.refused("UDMediaWidth=1500", "lpOutputPaper")
        self.change("lpMediaSize=513")
        self.assertEqual(self.values("UDPaperWidth", "UDMediaLength"), [2100, 2100])
        self.change("lpMediaSize=256")
        self.refused("UDPaperWidth=500", "92.0 to 297.0 mm")
        self.change("UDPaperWidth=1500", "UDPaperLength=2000")
        self.assertEqual(self.values("UDPaperWidth", "UDPaperLength"), [1500, 2000])

    def test_numbers_are_signed_and_json_names_the_key(self):
        self.change("Density_Check=1")
        self.assertEqual(self.change("Density=-3"), "Density: 0 => -3\n")
        (change,) = self.json("settings", "-p", "Office", "-o", "Density=-1")["changes"]
        self.assertEqual((change["key"], change["old"], change["new"]), ("Density", -3, -1))

    def test_an_order_is_named_as_the_layout_shows_it(self):
        self.change("Nup_Check=1")
        self.assertEqual(self.change("lpOrder=right to left"), "Page order: Left to right => Right to left\n")
        self.assertEqual(self.rows()["lpOrder"]["valueLabel"], "Right to left")
        self.refused("lpOrder=top to bottom", '"Left to right", "Right to left"', "lpOrientation")
        self.change("lpOrientation=2")
        self.assertEqual(self.rows()["lpOrder"]["valueLabel"], "Bottom to top")
        self.assertEqual(self.change("lpOrder=1"), "Page order: Bottom to top => Top to bottom\n")

    def test_the_short_list_shows_trays(self):
        self.change("lpMediaSource=2", "3310=4")
        self.assertRegex(self.change(), r"Paper type in: Tray 2 .* Heavy paper")

    def test_layout_options_stay_in_use_whatever_a_record_says(self):
        self.refused("Layout_Check2=0", "Nup_Check")
        self.assertEqual(self.rows()["Layout_Check2"]["page"], "Kept by the driver")
        record = self.default_record()
        record[1434] = 0
        out = self.folder / "out.bin"
        self.change("Nup_Check=1", more=["--in", self.write("off.bin", record), "--out", out])
        fields = self.json("record", "show", out)["fields"]
        self.assertEqual((fields["Layout_Check2"], fields["Nup_Check"], fields["Layout_Check"]), (1, 1, 1))

    def test_all_controls_with_their_items(self):
        rows = {row["control"]: row for row in self.json("controls", "-p", "Office")["controls"]}
        self.assertEqual(len(rows), 164)
        self.assertFalse(rows[130]["available"], "there is no finisher")
        self.assertTrue(rows[106]["available"])
        sources = {item["label"]: item["status"] for item in rows[120]["items"]}
        self.assertEqual((sources["Tray 1"], sources["Tray 3"]), (1, 4))
        self.assertIn("not available", self.heron("controls", "-p", "Office"))


class Questions(support.Journey):
    """A booklet is sorted: taking the sorting off takes the booklet with it, and that is asked about first."""

    wish = "Sort_Check=0"

    def setUp(self):
        super().setUp()
        self.add_printer()
        self.change("lpPRNType=3")

    def test_consent(self):
        (own,) = self.own_records()
        before = own.read_bytes()
        for more in ([], ["--no"]):
            done = self.run_heron("settings", "-p", "Office", "-o", self.wish, *more)
            self.assertEqual((done.returncode, done.stdout), (3, b""))
            self.assertIn(b"Print type => One-sided", done.stderr)
            self.assertEqual(own.read_bytes(), before)
        for typed, code in (([b"no\n"], 3), ([b"what?\n", b"yes\n"], 0)):
            steps = [(b"[yes/no] ", line) for line in typed]
            self.assertEqual(self.on_terminal(["settings", "-p", "Office", "-o", self.wish], steps)[0], code)
            self.assertEqual(own.read_bytes() == before, code == 3)

    def test_the_report_reads_as_on_a_page(self):
        (change,) = self.json("settings", "-p", "Office", "-o", self.wish, "--yes")["changes"]
        self.assertEqual((change["asked"], change["answer"], change["caption"]), (True, "yes", "Sort"))
        self.assertIn("Print type => One-sided", change["text"])
        self.assertEqual([(entry["control"], entry["value"]) for entry in change["log"]], [(176, 1)])

    def test_what_is_opposed_is_refused_with_the_setting_that_opposes(self):
        answer = self.run_heron("settings", "-p", "Office", "-o", "PaperLess_Check=1")
        self.assertEqual(answer.returncode, 4)
        self.assertIn("Print type : Booklet", (answer.stdout + answer.stderr).decode())


class Swept(support.Journey):
    """A share of scripts/sweep-settings."""

    def test_on_a_bare_and_on_an_equipped_printer(self):
        for equipment in ((), settings_sweep.EQUIPMENT):
            swept = settings_sweep.Sweep(self.run_heron, self.folder, equipment)
            swept.try_all(share=13, first=5)
            self.assertEqual(swept.faults, [])
            self.assertGreater(swept.counts[0], 20)
            self.assertGreater(swept.counts["way"], 1)


if __name__ == "__main__":
    unittest.main()
