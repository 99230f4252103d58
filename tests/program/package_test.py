#!/usr/bin/env python3
"""Packs the program, unpacks it into an odd place, uses it there, removes it.

package_test.py PORTABLE_FOLDER: the folder that holds the built program.
"""

import os
import pathlib
import shutil
import subprocess
import unittest

from program_window import ProgramTestCase, main

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
# What the libraries below the toolkit keep for themselves, whoever calls them.
OF_THE_SYSTEM = {".cache"}


class PackageTest(ProgramTestCase):
    def setUp(self):
        super().setUp()
        root = pathlib.Path(self.scratch.name)
        self.home = root / "home"
        self.home.mkdir()
        self.environment = {name: value for name, value in self.program.screen.environment.items()
                            if not name.startswith(("XDG_", "QT_", "LD_"))}
        self.environment["HOME"] = str(self.home)
        self.program.screen.environment = self.environment
        place = root / "置き 場'所 %f $HOME"
        place.mkdir()
        self.unpack(place)
        self.program.folder = self.folder
        self.make_editor(self.folder)

    @classmethod
    def setUpClass(cls):
        subprocess.run([TOP / "scripts" / "package", "--built"], check=True, capture_output=True)

    def unpack(self, place):
        archive, = (TOP / "build" / "package").glob("sarvik-*-linux-x86_64.tar.gz")
        subprocess.run(["tar", "-xzf", archive, "-C", place], check=True)
        self.folder, = place.iterdir()
        self.assertEqual(self.folder.name + ".tar.gz", archive.name)

    def run_here(self, name, *arguments):
        return subprocess.run([self.folder / name, *arguments], env=self.environment, check=True,
                              capture_output=True, text=True).stdout

    def traces(self):
        return sorted(str(path.relative_to(self.home)) for path in self.home.rglob("*")
                      if path.is_file()
                      and not OF_THE_SYSTEM.intersection(path.relative_to(self.home).parts))

    def test_the_console_searches(self):
        hits = self.run_here("sarvik-cli", "--sort", "灯台守", self.tree)
        self.assertIn("sjis.txt", hits)

    def test_the_toolkit_comes_along(self):
        libraries = subprocess.run(["ldd", self.folder / "sarvik"], env=self.environment,
                                   check=True, capture_output=True, text=True).stdout
        toolkit = [line for line in libraries.splitlines() if "libQt5" in line]
        self.assertTrue(toolkit)
        for line in toolkit:
            self.assertIn(f" => {self.folder}/lib/", line)
        self.assertTrue((self.folder / "plugins" / "platforms" / "libqxcb.so").is_file())
        self.assertTrue(list((self.folder / "licences").iterdir()))

    def test_the_window_keeps_all_in_its_folder(self):
        before = set(self.folder.rglob("*"))
        self.program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        self.program.start()
        self.assertIn("該当行数 4", self.program.search())
        self.assertEqual(self.program.quit(), 0)
        written = {path.name for path in set(self.folder.rglob("*")) - before}
        self.assertIn("sarvik.log", written)
        self.assertEqual(self.traces(), [])
        shutil.rmtree(self.folder)

    def test_a_folder_is_handed_over(self):
        odd = self.tree / "a b'c"
        odd.mkdir()
        for name in ("x.txt", "y.txt"):
            (odd / name).write_text("needle\n")
        self.program.start(self.folder / "sarvik-here", odd, "needle", "*.txt")
        self.assertIn("該当行数 2", self.program.search())
        self.assertEqual(self.program.quit(), 0)

    def test_the_desktops_entries_come_and_go(self):
        self.run_here("desktop-entry", "install")
        entry = (self.home / ".local/share/applications/sarvik.desktop").read_text()
        line, = (line for line in entry.splitlines() if line.startswith("Exec="))
        quoted = str(self.folder / "sarvik").replace("$", "\\\\$").replace("%", "%%")
        self.assertEqual(line, f'Exec="{quoted}"')
        script, = (self.home / ".local/share/nautilus/scripts").iterdir()
        self.assertTrue(os.access(script, os.X_OK))
        subprocess.run(["bash", "-n", script], check=True)
        self.assertGreater(len(self.traces()), 10)
        self.run_here("desktop-entry", "remove")
        self.assertEqual(list(self.home.iterdir()), [])


if __name__ == "__main__":
    main()
