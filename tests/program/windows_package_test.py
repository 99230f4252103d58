#!/usr/bin/env python3
"""Looks at the unpacked archive for Windows, and runs the console program of it
where Wine finds no other libraries than its own.

windows_package_test.py FOLDER
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

FOLDER = None
OBJDUMP = "x86_64-w64-mingw32-objdump"


def headers(program):
    return subprocess.run([OBJDUMP, "-p", FOLDER / program], check=True, capture_output=True,
                          text=True, errors="replace").stdout


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def search(folder, *arguments):
    """The lines that the console program of the folder writes, sorted by their paths."""
    with tempfile.NamedTemporaryFile() as output:
        subprocess.run(["wine", folder / "sarvik-cli.exe", "-F", "--format", "grep", "--sort",
                        *arguments], check=True, stdin=subprocess.DEVNULL, stdout=output,
                       stderr=subprocess.DEVNULL)
        return pathlib.Path(output.name).read_text(encoding="utf-8").splitlines()


class WindowsPackageTest(unittest.TestCase):
    def test_the_window_has_no_console_behind_it(self):
        self.assertIn("(Windows GUI)", headers("sarvik.exe"))
        self.assertIn("(Windows CUI)", headers("sarvik-cli.exe"))

    def test_each_program_has_a_version_and_a_manifest_and_the_window_an_icon(self):
        # Kinds of resources: version, manifest; icon, group of icons.
        for program, wanted in (("sarvik.exe", {"10", "18", "03", "0e"}),
                                ("sarvik-cli.exe", {"10", "18"})):
            with self.subTest(program):
                kinds = set(re.findall(r"^\S+\s+Entry: ID: 0x0000(\w\w), Value: 0x8", headers(program),
                                       re.MULTILINE))
                self.assertLessEqual(wanted, kinds)
                content = (FOLDER / program).read_bytes()
                for setting in (b"longPathAware", b"PerMonitorV2"):
                    self.assertIn(setting, content)
                # The encoding of the system's language stays in force.
                self.assertNotIn(b"<activeCodePage", content)
                for text in ("FileVersion", "5.00", f"{program}"):
                    self.assertIn(text.encode("utf-16-le"), content)

    def test_what_comes_along_is_there(self):
        for name in ("README.md", "README.ja.md", "sarvik-starter.ini", "sarvify-example.qss",
                     "doc/sarvik/index.html", "doc/sarvik/sarvik_regexp.html", "list/cpp.lst",
                     "platforms/qwindows.dll", "licenses/LGPL-3.txt", "Qt5Core.dll"):
            self.assertTrue((FOLDER / name).is_file(), name)
        # It applies as soon as it has this name.
        self.assertFalse((FOLDER / "sarvify.qss").exists())
        self.assertFalse((FOLDER / "sarvik.ini").exists())

    def test_the_console_program_needs_nothing_else(self):
        with tempfile.TemporaryDirectory() as scratch:
            folder = pathlib.Path(scratch) / "展開 した"
            shutil.copytree(FOLDER, folder)
            for name in ("a.txt", "b.txt"):
                (folder / name).write_bytes("灯台守\r\n".encode("cp932"))
            self.assertEqual(search(folder, "--mask", "?.txt", "灯台", windows_path(folder)),
                             [windows_path(folder / name).replace("\\", "/") + ":1:1:灯台守"
                              for name in ("a.txt", "b.txt")])


class WindowsTreeTest(unittest.TestCase):
    """What only the other side of Wine can make: its files have cases, and links."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = pathlib.Path(scratch.name)
        self.tree = self.root / "tree"
        self.tree.mkdir()

    def write(self, name):
        path = self.root / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"keyword {name}\n")

    def found(self, *paths):
        """The names of the files with hits, which their lines hold."""
        lines = search(FOLDER, "--mask", "*.*", "keyword", *map(windows_path, paths))
        return sorted(line.rpartition(" ")[2] for line in lines)

    def test_links_and_loops_of_links_give_each_file_once(self):
        for name in ("tree/a.txt", "tree/real/b.txt", "outside/c.txt"):
            self.write(name)
        for name, target in (("tree/loop", self.tree), ("tree/real/up", ".."),
                             ("tree/again", "real"), ("tree/out", self.root / "outside"),
                             ("outside/back", self.tree), ("tree/self", "self")):
            (self.root / name).symlink_to(target)
        self.assertEqual(self.found(self.tree), ["outside/c.txt", "tree/a.txt", "tree/real/b.txt"])

    def test_a_folder_by_two_paths_is_searched_once(self):
        for name in ("tree/a.txt", "tree/real/b.txt"):
            self.write(name)
        (self.root / "link").symlink_to(self.tree)
        self.assertEqual(self.found(self.tree, self.root / "link", self.tree / "real"),
                         ["tree/a.txt", "tree/real/b.txt"])

    def test_names_that_differ_in_their_case_only_are_two_files(self):
        for name in ("tree/a.txt", "tree/A.txt", "tree/Sub/b.txt", "tree/sub/b.txt"):
            self.write(name)
        names = ["tree/A.txt", "tree/Sub/b.txt", "tree/a.txt", "tree/sub/b.txt"]
        self.assertEqual(self.found(self.tree), names)
        self.assertEqual(self.found(*(self.root / name for name in names)), names)
        self.assertEqual(self.found(self.tree / "Sub", self.tree / "sub"),
                         ["tree/Sub/b.txt", "tree/sub/b.txt"])

    def test_one_file_in_other_letters_is_one(self):
        for name in ("tree/a.txt", "tree/b.txt"):
            self.write(name)
        self.assertEqual(self.found(self.tree / "a.txt", self.tree / "A.TXT", self.tree / "b.txt"),
                         ["tree/a.txt", "tree/b.txt"])

    def test_two_names_of_one_file_are_two_files(self):
        self.write("tree/a.txt")
        (self.tree / "b.txt").hardlink_to(self.tree / "a.txt")
        self.assertEqual(self.found(self.tree / "a.txt", self.tree / "b.txt"),
                         ["tree/a.txt", "tree/a.txt"])


if __name__ == "__main__":
    FOLDER = pathlib.Path(sys.argv.pop())
    unittest.main(verbosity=2)
