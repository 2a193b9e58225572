"""What `heron settings -o` acknowledges is there in the next call; what can't be kept or chosen is refused with its
reason and the way there."""

import unittest

import settings_sweep
import support


class Kept(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def change(self, *wishes, code=0, more=()):
        arguments = [part for wish in wishes for part in ("-o", wish)]
        return self.heron("settings", "-p", "Office", *arguments, *more, code=code)

    def rows(self, *more):
        return {row["key"]: row for row in self.json("settings", "-p", "Office", *more)["settings"]}

    def values(self, *keys):
        rows = self.rows()
        return [rows[key]["value"] for key in keys]

    def refused(self, wish, *words, more=()):
        before = self.rows(*more)
        self.change(wish, code=4, more=more)
        for word in words:
            self.assertIn(word, self.last_errors)
        self.assertEqual(self.rows(*more), before, "nothing is changed")

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

    def test_what_cannot_stay_is_refused_before_anything_is_written(self):
        self.refused("lpOverlay=3", "list of forms")
        self.refused("lpOverlay=2", "file")
        self.refused("lpDitherType=1", "no record keeps it")
        self.refused("Layout_Check=1", "Nup_Check")
        self.refused("lpPDLType=2", "--device")
        self.assertEqual(list(self.home.glob("users/*.records/*")), [])

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

    def test_the_short_list_shows_device_options_trays_and_the_watermark(self):
        self.change("lpOutputUnit=41", more=["--device"])
        self.assertRegex(self.heron("settings", "-p", "Office", "--device"), r"Output unit +lpOutputUnit +Floor-type")
        self.change("lpMediaSource=2", "3310=4")
        self.assertRegex(self.heron("settings", "-p", "Office"), r"Paper type in: Tray 2 .* Heavy paper")
        text = self.change(more=["--device", "--reset"])
        self.assertIn("defaults again", text)
        self.assertEqual(self.rows("--device")["lpOutputUnit"]["value"], 1)

    def test_the_messages_of_the_commit_are_in_json(self):
        self.assertEqual(self.json("settings", "-p", "Office", "-o", "Copies=2")["messages"], [])
        self.change("lpFAXUnit=2", more=["--device"])
        done = self.run_heron("settings", "-p", "Office", "-o", "lpOutput=1", "--json", "--yes")
        self.assertEqual(done.returncode, 4)
        self.assertIn(b"No recipient is entered", done.stdout)
        self.assertIn(b"recipient", done.stderr)


class Swept(support.Journey):
    """A share of scripts/sweep-settings."""

    def check(self, equipment):
        swept = settings_sweep.Sweep(self.run_heron, self.folder, equipment)
        swept.try_all(share=13, first=5)
        self.assertEqual(swept.faults, [])
        self.assertGreater(swept.counts[0], 20)
        self.assertGreater(swept.counts["way"], 1)

    def test_on_a_bare_printer(self):
        self.check(())

    def test_on_an_equipped_printer(self):
        self.check(settings_sweep.EQUIPMENT)


if __name__ == "__main__":
    unittest.main()
