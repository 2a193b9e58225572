"""Changes with their consequences: `heron settings -o`, and `heron controls`."""

import pty
import os
import subprocess
import unittest

import support


class Changes(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def change(self, *wishes, code=0, more=()):
        arguments = [part for wish in wishes for part in ("-o", wish)]
        return self.heron("settings", "-p", "Office", *arguments, *more, code=code)

    def values(self, *keys, more=()):
        rows = {row["key"]: row["value"] for row in self.json("settings", "-p", "Office", *more)["settings"]}
        return [rows[key] for key in keys]

    def test_a_finisher_is_asked_for_and_installed_by_the_device_sheet(self):
        self.change("Staple_Check=1", code=4)
        self.assertIn("Floor-type finisher", self.last_errors)
        self.change("lpOutputUnit=41", code=4)
        self.assertIn("--device", self.last_errors)
        self.change("lpOutputUnit=41", more=["--device"])
        self.assertEqual(self.values("lpOutputUnit", more=["--device"]), [41])
        self.assertEqual(self.change("Staple_Check=on"), "Staple: Off => On\n")
        self.assertEqual(self.values("Staple_Check", "lpOutputUnit"), [1, 41])

    def test_a_fax_resets_what_it_excludes_and_needs_somebody_to_receive_it(self):
        self.change("lpOutput=fax", code=4)
        self.assertIn('"Fax unit" = Installed', self.last_errors)
        self.change("lpFAXUnit=2", more=["--device"])
        text = self.change("Copies=3", "lpOutput=fax", "lpOutput=printer", more=["--dry-run"])
        self.assertIn("For sending as a fax these settings change:\n\nCopies => 1", text)
        self.assertIn("Copies: 1 => 3, and then 1\n", text)
        self.change("lpPRNType=2", "lpOutput=fax", code=4)
        self.assertIn("lpOutput=fax: a fax needs a recipient", self.last_errors)
        self.assertEqual(self.values("lpOutput", "lpPRNType"), [2, 1])

    def test_values_by_number_and_by_label_in_order(self):
        text = self.change("lpPRNType=two-sided", "Copies=12", "107=2")
        self.assertEqual(text.splitlines()[:2], ["Print type: One-sided => Two-sided", "Copies: 1 => 12"])
        self.assertEqual(self.values("lpPRNType", "Copies", "lpOrientation"), [2, 12, 2])
        self.assertEqual(self.change("Copies=12"), "Copies: 12, as it was\n")

    def test_a_dry_run_changes_nothing(self):
        before = self.values("lpPRNType", "Copies")
        self.assertIn("Booklet", self.change("lpPRNType=3", more=["--dry-run"]))
        self.assertEqual(self.values("lpPRNType", "Copies"), before)
        self.assertEqual(list(self.home.glob("users/*.records/*")), [])

    def test_what_is_not_understood_names_the_nearest(self):
        self.change("Stapel_Check=1", code=2)
        self.assertIn("Staple_Check", self.last_errors)
        self.change("lpMediaSize=A44", code=2)
        self.assertIn('"A4"', self.last_errors)
        self.change("Copies", code=2)
        for wish in ("99=1", "Copies=0", "Copies=1000", "lpMediaSize=4242", "lpMediaSize=512", "lpLayout=20"):
            self.change(wish, code=4)

    def test_a_refusal_in_a_row_of_changes_keeps_none_of_them(self):
        self.change("Copies=7", "Staple_Check=1", code=4)
        self.assertEqual(self.values("Copies"), [1])

    def test_a_file_is_written_only_when_everything_was_applied(self):
        record, out = self.write("in.bin", self.default_record()), self.folder / "out.bin"
        self.change("Staple_Check=1", code=4, more=["--in", record, "--out", out])
        self.assertFalse(out.exists())
        self.change("Copies=3", more=["--in", record, "--out", out])
        self.assertEqual(self.json("record", "show", out)["fields"]["dmCopies"], 3)
        self.assertEqual(list(self.home.glob("users/*.records/*")), [], "the user's own record isn't touched")

    def test_json_tells_each_change(self):
        answer = self.json("settings", "-p", "Office", "-o", "Copies=5", "-o", "lpPRNType=2")
        self.assertTrue(answer["applied"])
        first, second = answer["changes"]
        self.assertEqual((first["control"], first["old"], first["new"], first["result"]), (103, 1, 5, 0))
        self.assertEqual((second["control"], second["asked"], second["answer"]), (176, False, None))


class Questions(support.Journey):
    """A booklet is sorted: taking the sorting off takes the booklet with it, and that is asked about first."""

    wish = "Sort_Check=0"

    def setUp(self):
        super().setUp()
        self.add_printer()
        self.heron("settings", "-p", "Office", "-o", "lpPRNType=3")

    def test_consent(self):
        own = next(self.home.glob("users/*.records/*"))
        before = own.read_bytes()
        for more in ([], ["--no"]):
            done = self.run_heron("settings", "-p", "Office", "-o", self.wish, *more)
            self.assertEqual((done.returncode, done.stdout), (3, b""))
            self.assertIn(b"Print type => One-sided", done.stderr)
            self.assertEqual(own.read_bytes(), before)
        self.assertEqual(self.answer_on_a_terminal(self.wish, b"no\n"), 3)
        self.assertEqual(own.read_bytes(), before)
        self.assertEqual(self.answer_on_a_terminal(self.wish, b"what?\nyes\n"), 0)
        self.assertNotEqual(own.read_bytes(), before)

    def test_the_report_reads_as_on_a_page(self):
        answer = self.json("settings", "-p", "Office", "-o", self.wish, "--yes")
        (change,) = answer["changes"]
        self.assertEqual((change["asked"], change["answer"], change["caption"]), (True, "yes", "Sort"))
        self.assertIn("Print type => One-sided", change["text"])
        self.assertEqual([(entry["control"], entry["value"]) for entry in change["log"]], [(176, 1)])

    def test_what_is_opposed_is_refused_with_the_setting_that_opposes(self):
        answer = self.run_heron("settings", "-p", "Office", "-o", "PaperLess_Check=1")
        self.assertEqual(answer.returncode, 4)
        self.assertIn("Print type : Booklet", (answer.stdout + answer.stderr).decode())

    def answer_on_a_terminal(self, wish, answer):
        master, slave = pty.openpty()
        with subprocess.Popen([support.BIN, "settings", "-p", "Office", "-o", wish], stdin=slave,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=self.environment()) as process:
            os.write(master, answer)
            code = process.wait(timeout=60)
        os.close(slave)
        os.close(master)
        return code


class Controls(support.Journey):
    def test_all_controls_with_their_items(self):
        self.add_printer()
        rows = {row["control"]: row for row in self.json("controls", "-p", "Office")["controls"]}
        self.assertEqual(len(rows), 164)
        self.assertFalse(rows[130]["available"], "there is no finisher")
        self.assertTrue(rows[106]["available"])
        sources = {item["label"]: item["status"] for item in rows[120]["items"]}
        self.assertEqual((sources["Tray 1"], sources["Tray 3"]), (1, 4))
        self.assertIn("not available", self.heron("controls", "-p", "Office"))


class LayoutOptions(support.Journey):
    def test_they_stay_in_use_whatever_a_record_says(self):
        self.add_printer()
        self.heron("settings", "-p", "Office", "-o", "Layout_Check2=0", code=4)
        self.assertIn("Nup_Check", self.last_errors)
        pages = {row["key"]: row["page"] for row in self.json("settings", "-p", "Office")["settings"]}
        self.assertEqual(pages["Layout_Check2"], "Kept by the driver")
        record = self.default_record()
        record[1434] = 0
        out = self.folder / "out.bin"
        self.heron("settings", "-p", "Office", "--in", self.write("off.bin", record), "--out", out, "-o",
                   "Nup_Check=1")
        fields = self.json("record", "show", out)["fields"]
        self.assertEqual((fields["Layout_Check2"], fields["Nup_Check"], fields["Layout_Check"]), (1, 1, 1))


if __name__ == "__main__":
    unittest.main()
