#!/usr/bin/env python3
"""Packs the program, unpacks it into an odd place, uses it there, removes it.

package_test.py PORTABLE_FOLDER: the folder that holds the built program.
"""

import os
import pathlib
import re
import shutil
import subprocess
import unittest

from program_window import ProgramTestCase, main

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
# What the libraries below the toolkit keep for themselves, whoever calls them.
OF_THE_SYSTEM = {".cache"}
# What every desktop of Debian 12 has of its own: the C library and the compiler's,
# the display, its fonts and its driver, the message bus.
OF_A_DESKTOP = {
    "ld-linux-x86-64.so.2", "libc.so.6", "libm.so.6", "libresolv.so.2", "libgcc_s.so.1",
    "libstdc++.so.6", "libGL.so.1", "libX11.so.6", "libX11-xcb.so.1", "libxcb.so.1",
    "libICE.so.6", "libSM.so.6", "libfontconfig.so.1", "libfreetype.so.6", "libharfbuzz.so.0",
    "libpng16.so.16", "libz.so.1", "libzstd.so.1", "libglib-2.0.so.0", "libdbus-1.so.3",
}


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

    def needed_libraries(self):
        """Of every program and library in the folder, with the file that needs it."""
        needs = {}
        for path in sorted(self.folder.rglob("*")):
            if not path.is_file() or path.read_bytes()[:4] != b"\x7fELF":
                continue
            dynamic = subprocess.run(["readelf", "-dW", path], check=True, capture_output=True,
                                     text=True).stdout
            for library in re.findall(r"\(NEEDED\).*\[(.+)\]", dynamic):
                needs.setdefault(library, path.name)
        return needs

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

    def test_every_library_is_there_or_a_desktops(self):
        needs = self.needed_libraries()
        self.assertIn("libQt5Widgets.so.5", needs)
        packed = {path.name for path in (self.folder / "lib").iterdir()}
        missing = {library: user for library, user in needs.items()
                   if library not in packed | OF_A_DESKTOP}
        self.assertEqual(missing, {})
        # Nor does the list hold what nothing asks for.
        self.assertEqual(OF_A_DESKTOP - set(needs), set())

    def test_what_the_first_words_name_is_there(self):
        for name in ("README.md", "README.ja.md"):
            text = (self.folder / name).read_text(encoding="utf-8")
            names = set(re.findall(r"\]\(([^)]+)\)", text)) \
                | set(re.findall(r"(?:share|doc|scripts|docs|build)/[\w./-]+\w", text))
            self.assertGreater(len(names), 4)
            for missing in (path for path in names if not (self.folder / path).is_file()):
                self.fail(f"{name} names {missing}")
            programs = set(re.findall(r"\./([\w-]+)", text))
            self.assertEqual(programs, {"sarvik", "sarvik-here", "sarvik-cli", "desktop-entry"})
            for program in programs:
                self.assertTrue(os.access(self.folder / program, os.X_OK), program)
            self.assertIn("`licences`", text)

    def test_the_first_words_for_windows_name_no_other_files(self):
        archive = TOP / "doc" / "archive" / "windows"
        for name in ("README.md", "README.ja.md"):
            text = (archive / name).read_text(encoding="utf-8")
            for path in re.findall(r"\]\(([^)]+)\)", text):
                self.assertTrue((self.folder / path).is_file(), path)
            self.assertEqual(set(re.findall(r"[\w-]+\.exe", text)),
                             {"sarvik.exe", "sarvik-cli.exe"})
            self.assertEqual(re.findall(r"\./|scripts/|build/", text), [])

    def test_a_new_folder_begins_with_every_language(self):
        (self.folder / "sarvik.ini").unlink()
        self.program.start()
        self.assertEqual(self.program.quit(), 0)
        kept = (self.folder / "sarvik.ini").read_text(encoding="utf-8-sig")
        shipped = (TOP / "list" / "langlist.ini").read_text(encoding="utf-8")
        self.assertIn(shipped, kept)
        self.assertEqual(kept.count("[langlist]"), 1)

    def test_a_new_folder_begins_with_an_editor(self):
        settings = self.folder / "sarvik.ini"
        settings.unlink()
        self.program.start()
        self.assertEqual(self.program.quit(), 0)
        kept = settings.read_text(encoding="utf-8-sig")
        self.assertIn("editor=/usr/bin/xdg-open\n", kept)
        self.assertIn("editor_para=%f\n", kept)

    def test_unpacking_again_leaves_the_settings_alone(self):
        settings = (self.folder / "sarvik.ini").read_bytes()
        self.unpack(self.folder.parent)
        self.program.start()
        self.assertEqual((self.folder / "sarvik.ini").read_bytes(), settings)

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

    def test_a_selected_file_stands_for_its_folder(self):
        odd = self.tree / "a b'c"
        odd.mkdir()
        for name in ("x.txt", "y.log"):
            (odd / name).write_text("needle\n")
        # Without a mask, and without one of a search before.
        self.program.start(self.folder / "sarvik-here", odd / "x.txt", "needle")
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
