"""`heron sheet` before and behind its window; what happens in it is tests/desk's."""

import unittest

import support


class Sheet(support.Journey):
    def environment(self, **more):
        environment = super().environment()
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
            environment.pop(name, None)
        return {**environment, **more}

    def test_without_a_display_it_names_the_other_way(self):
        self.add_printer()
        for env in ({}, {"DISPLAY": ":4711"}):
            self.heron("sheet", "-p", "Office", code=1, env=self.environment(**env))
            self.assertIn("`heron settings`", self.last_errors)

    def test_what_cant_be_shown_is_refused_first(self):
        self.heron("sheet", "-p", "Unknown", code=5)
        self.add_printer()
        path = self.write("record.bin", self.default_record())
        self.heron("sheet", "-p", "Office", "--device", "--in", path, code=2)
        self.heron("sheet", "-p", "Office", "--device", "--out", path, code=2)
        self.heron("sheet", "-p", "Office", "--in", self.folder / "missing.bin", code=5,
                   env=self.environment(QT_QPA_PLATFORM="offscreen"))

    def test_the_sheet_paints_and_closing_it_writes_nothing(self):
        self.add_printer()
        sheet = support.BIN + "-sheet"
        for more in ([], ["--device"]):
            done = self.run_heron("--printer=Office", "--measure", *more, program=sheet,
                                  env=self.environment(QT_QPA_PLATFORM="offscreen"))
            self.assertEqual(done.returncode, 3, done.stderr)
            self.assertRegex(done.stdout.decode(), r"\AFirst paint \d+ ms")
        self.assertEqual(list(self.home.rglob("*record*")), [])


if __name__ == "__main__":
    unittest.main()
