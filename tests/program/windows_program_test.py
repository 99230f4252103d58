#!/usr/bin/env python3
"""Uses the window as a person does, built for Windows, in Wine on the virtual
screen that DISPLAY names.

windows_program_test.py FOLDER RECORDER SENDER: the folder that holds the program,
which is copied; the editor's stand-in; the program that sends the broadcast.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

from program_window import Program, Screen, content_of, escaped, wait_for

FOLDER = None
RECORDER = None
SENDER = None


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def contents(folder):
    return {path.relative_to(folder): path.read_bytes() if path.is_file() else None
            for path in folder.rglob("*")}


def may_write(folder):
    try:
        with tempfile.TemporaryFile(dir=folder):
            return True
    except OSError:
        return False


class SharedScreen(Screen):
    """The screen is there already; a window manager gives windows the focus."""

    def __init__(self):
        self.environment = dict(os.environ)
        self.manager = subprocess.Popen(["openbox"], env=self.environment,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait_for_manager()

    def processes(self):
        return []

    def close(self):
        self.manager.terminate()
        self.manager.wait()


class WindowsProgram(Program):
    def start(self):
        self.process = subprocess.Popen(
            ["wine", str(self.folder / "sarvik.exe")], env=self.screen.environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.window = wait_for("the window", self.find_window)
        wait_for("the focus", self.has_focus)
        # What the screen holds for focused needs a moment to reach the program.
        time.sleep(1)

    def has_focus(self):
        self.screen.tool("windowactivate", self.window)
        return self.screen.tool("getactivewindow") == self.window

    def find_window(self):
        found = self.main_windows()
        return found[-1] if found else None

    def press_until(self, what, keys, condition, seconds=15):
        """Keys that come before Wine has handed the focus on are lost: once more when
        nothing has come of them for so long."""
        again = 0

        def is_met():
            nonlocal again
            if condition():
                return True
            if time.monotonic() >= again:
                self.keys(*keys)
                again = time.monotonic() + seconds
            return False
        wait_for(what, is_met)

    def search(self, keys=("Return",)):
        before = self.log_files()
        title = self.title()
        # The keys of a search that runs would end it; its keyword is in the title. One
        # that looks like the last shows there only by taking long.
        self.press_until("the search", keys,
                         lambda: self.title() not in ("", title) or self.log_files() - before,
                         5 if title == "sarvik64" else 15)
        wait_for("the search's log", lambda: self.log_files() - before)
        self.wait_until_at_rest()
        return self.log()

    def quit(self):
        self.press_until("the end", ["ctrl+q"], lambda: self.process.poll() is not None)
        return self.wait_for_end()

    def recorded_arguments(self):
        path = self.folder / "arguments"
        if not path.exists():
            return None
        line = path.read_text(encoding="utf-8")
        path.unlink()
        return line


class WindowsProgramTest(unittest.TestCase):
    def setUp(self):
        # An editor that was started once too often may still be writing.
        self.scratch = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(self.scratch.cleanup)
        root = pathlib.Path(self.scratch.name)
        folder = root / "portable 携帯"
        shutil.copytree(FOLDER, folder,
                        ignore=shutil.ignore_patterns("sarvik*.ini*", "*.log", "sarviklog"))
        shutil.copy(RECORDER, folder / "editor.exe")
        (folder / "sarvik.ini").write_text(
            f"[editor]\neditor={escaped(windows_path(folder / 'editor.exe'))}\n"
            f"editor_para={escaped('-l%l -c%c %f')}\n")
        self.tree = root / "tree 木"
        (self.tree / "sub").mkdir(parents=True)
        (self.tree / "sub" / "sjis.txt").write_bytes("灯台守\r\n何もない\r\n".encode("cp932"))
        (self.tree / "other.none").write_text("nothing\n")
        self.screen = SharedScreen()
        self.addCleanup(self.screen.close)
        self.program = WindowsProgram(self.screen, folder)
        self.addCleanup(self.program.kill)

    def hand_over(self, keyword, mask="*.txt *.none"):
        self.program.hand_over(windows_path(self.tree), mask, keyword)

    def log_bytes(self):
        """Without the mark that says UTF-8 where the system's code page lacks characters."""
        return (self.program.folder / "sarvik.log").read_bytes().removeprefix(b"\xef\xbb\xbf")

    def test_a_request_is_searched_logged_and_opened(self):
        self.hand_over("灯台")
        self.program.start()
        self.program.search()
        tree = windows_path(self.tree)
        log = re.sub(r"(処理時間:) \d+\.\d\d", r"\1 0.00", self.log_bytes().decode("utf-8"))
        self.assertEqual(log.split("\r\n"), [
            "version :5.00", "keyword1:灯台", "case    :1", "word    :0", "regexp  :1",
            "subdir  :1", "groupbox:0", "keyword2:", "plusline:0",
            "pathlist:" + tree.replace("\\", "/") + "/", "mask    :*.txt *.none",
            "ext     :txt", "exclsive:0", "keyword3:", "-" * 23,
            f"::{tree}/sub/sjis.txt", "      1:    1:灯台守", "-" * 49,
            "該当ファイル数 1 / 2", "該当行数 1", "処理時間: 0.00 秒", ""])
        self.program.keys("Down", "Return")
        line = wait_for("the editor", self.program.recorded_arguments)
        self.assertTrue(line.endswith(f' -l1 -c1 "{tree}\\sub\\sjis.txt"'), line)
        self.assertEqual(self.program.quit(), 0)

    def test_a_hit_is_edited_and_saved(self):
        self.hand_over("灯台守")
        self.program.start()
        self.program.search()
        self.program.keys("Down")
        self.program.keys("Tab")
        self.program.type("new ")
        self.program.keys("ctrl+s")
        saved = self.tree / "sub" / "sjis.txt"
        backup = self.tree / "sub" / "sjis.txt.bak"
        wait_for("the backup", backup.exists)
        wait_for("the saved file", lambda: content_of(saved).startswith(b"new "))
        self.assertEqual(saved.read_bytes().decode("cp932"), "new 灯台守\r\n何もない\r\n")
        self.assertEqual(backup.read_bytes().decode("cp932"), "灯台守\r\n何もない\r\n")
        self.assertEqual(self.program.quit(), 0)

    def test_a_broadcast_brings_the_keywords_of_others(self):
        self.hand_over("first")
        self.program.start()
        self.program.search()
        history = self.program.folder / "keywordhistory.ini"
        history.write_text("[keyword]\n001=101first\n002=101fromanother\n")
        subprocess.run(["wine", SENDER], env=self.screen.environment, check=True,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

        def found():
            self.program.keys("ctrl+k")
            self.program.keys("Down")
            self.program.search()
            return "\r\nkeyword1:fromanother\r\n" in self.log_bytes().decode("utf-8")
        wait_for("the other's keyword", found)
        self.assertEqual(self.program.quit(), 0)

    def test_a_share_is_searched_and_opened(self):
        share = pathlib.Path(os.environ["WINEPREFIX"]) / "dosdevices" / "unc" / "sarvikhost" / "share"
        share.parent.mkdir(parents=True, exist_ok=True)
        share.unlink(missing_ok=True)
        share.symlink_to(self.tree)
        self.addCleanup(share.unlink)
        self.program.hand_over("\\\\sarvikhost\\share", "*.txt *.none", "灯台")
        self.program.start()
        self.program.search()
        self.assertIn("\r\n::\\\\sarvikhost\\share/sub/sjis.txt\r\n      1:    1:灯台守\r\n",
                      self.log_bytes().decode("utf-8"))
        self.program.keys("Down", "Return")
        line = wait_for("the editor", self.program.recorded_arguments)
        self.assertTrue(line.endswith(' -l1 -c1 "\\\\sarvikhost\\share\\sub\\sjis.txt"'), line)
        self.assertEqual(self.program.quit(), 0)

    def test_a_program_folder_that_cannot_be_written_loses_nothing(self):
        editors = self.tree.parent / "editor"
        editors.mkdir()
        shutil.copy(RECORDER, editors / "editor.exe")
        folder = self.program.folder
        (folder / "sarvik.ini").write_text(
            f"[editor]\neditor={escaped(windows_path(editors / 'editor.exe'))}\n"
            f"editor_para={escaped('%f')}\n")
        self.hand_over("灯台")
        before = contents(folder)
        folder.chmod(0o555)
        self.addCleanup(folder.chmod, 0o755)
        if may_write(folder):
            self.skipTest("permissions mean nothing here")
        self.program.start()
        self.program.press_until("the search", ["Return"],
                                 lambda: "灯台" in self.program.title())
        arguments = editors / "arguments"

        def opened():
            self.program.keys("Down", "Return")
            time.sleep(1)
            return arguments.exists()
        wait_for("the editor", opened)
        self.assertIn('\\sub\\sjis.txt"', arguments.read_text(encoding="utf-8"))
        self.assertEqual(self.program.quit(), 0)
        self.assertEqual(contents(folder), before)

    def test_a_selected_word_starts_another_search(self):
        self.hand_over("灯台")
        self.program.start()
        self.program.search()
        self.program.keys("Down", "End", "shift+Left", "alt+g")
        second = self.program.second_instance()
        (self.program.folder / "sarvik.log").unlink()
        second.search()
        # The last request is what a start finds.
        log = self.log_bytes().decode("utf-8")
        self.assertIn("\r\nkeyword1:灯台\r\n", log)
        self.assertIn("\r\npathlist:" + windows_path(self.tree).replace("\\", "/") + "/\r\n", log)
        self.assertIn("\r\n      1:    1:灯台守\r\n", log)
        second.press_until("its end", ["ctrl+q"], lambda: not self.program.other_window())
        wait_for("the first one's focus", self.program.has_focus)
        self.assertEqual(self.program.quit(), 0)


if __name__ == "__main__":
    SENDER = sys.argv.pop()
    RECORDER = sys.argv.pop()
    FOLDER = pathlib.Path(sys.argv.pop())
    unittest.main(verbosity=2)
