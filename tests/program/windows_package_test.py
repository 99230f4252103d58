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
            output = pathlib.Path(scratch) / "output"
            with output.open("wb") as target:
                status = subprocess.run(
                    ["wine", folder / "sarvik-cli.exe", "-F", "--format", "grep", "--sort",
                     "--mask", "?.txt", "灯台", "Z:" + str(folder)], check=False,
                    stdin=subprocess.DEVNULL, stdout=target, stderr=subprocess.DEVNULL).returncode
            self.assertEqual(status, 0)
            lines = output.read_text(encoding="utf-8").splitlines()
            self.assertEqual([line.rpartition("/")[2] for line in lines],
                             ["a.txt:1:1:灯台守", "b.txt:1:1:灯台守"])


if __name__ == "__main__":
    FOLDER = pathlib.Path(sys.argv.pop())
    unittest.main(verbosity=2)
