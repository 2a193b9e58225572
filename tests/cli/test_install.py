"""An installed copy: programs, libraries and driver files in a prefix that was moved after it was installed."""

import os
import pathlib
import subprocess
import unittest

import support

BUILD = pathlib.Path(support.LIB).parent


class InstallTest(support.Journey):
    def setUp(self):
        super().setUp()
        made = self.folder / "made"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", made], check=True, capture_output=True)
        self.prefix = self.folder / "prefix"
        made.rename(self.prefix)

    def run_installed(self, *words):
        """Output of the installed program; nothing of the build is on its way."""
        environment = {**self.environment(), "PATH": "/usr/bin:/bin"}
        done = subprocess.run([self.prefix / "bin" / "heron", *words], env=environment, capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def test_programs_run_from_the_prefix(self):
        self.run_installed("printer", "add", "Office")
        self.assertIn("Two-sided", self.run_installed("settings", "-p", "Office", "-o", "lpPRNType=2"))
        self.run_installed("print", "-p", "Office", f"{support.SOURCE}/samples/letter.txt", "--out", str(self.folder / "job"))
        self.assertTrue((self.folder / "job" / "pages.pdf").exists())
        self.run_installed("picture", "paper", "-p", "Office", "--out", str(self.folder / "paper.png"))
        linked = subprocess.run(["ldd", self.prefix / "bin" / "heron-sheet"], capture_output=True, text=True, check=True)
        self.assertIn(str(self.prefix / "lib" / "libheron.so.0"), linked.stdout.replace("/bin/..", ""))

    def test_a_program_in_c_gets_a_valid_record(self):
        self.run_installed("printer", "add", "Office")
        settings = {**os.environ, "PKG_CONFIG_PATH": str(self.prefix / "lib" / "pkgconfig")}
        flags = subprocess.run(["pkg-config", "--cflags", "--libs", "heron"], env=settings, capture_output=True, text=True,
                               check=True).stdout.split()
        program = self.folder / "use_from_c"
        source = self.prefix / "share" / "doc" / "heron" / "samples" / "use_from_c.c"
        subprocess.run(["cc", "-Wall", "-Wextra", "-Werror", source, *flags, "-o", program], check=True)
        environment = {**self.environment(), "LD_LIBRARY_PATH": str(self.prefix / "lib")}
        done = subprocess.run([program, "Office"], env=environment, capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("3328 bytes: 220 public, 3108 private", done.stdout)


if __name__ == "__main__":
    unittest.main()
