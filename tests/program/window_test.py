#!/usr/bin/env python3
"""Uses the window as a person does, on a virtual screen of its own.

window_test.py PORTABLE_FOLDER: the folder that holds the program. It is copied,
so nothing is written there.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PORTABLE_FOLDER = None

# Long enough for a loaded machine; nothing here measures time.
PATIENCE_SECONDS = 60

# The editor's stand-in: keeps its arguments, one on each line.
RECORDER = """#!/bin/sh
printf '%s\\n' "$@" >"$(dirname "$0")/arguments.new"
mv "$(dirname "$0")/arguments.new" "$(dirname "$0")/arguments"
"""


def wait_for(what, condition):
    end = time.monotonic() + PATIENCE_SECONDS
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


def escaped(text):
    """A value of an ini file; every character escaped, so none means anything."""
    units = text.encode("utf-16-be")
    pairs = zip(units[::2], units[1::2])
    return '"' + "".join(f"\\x{high:02x}{low:02x}" for high, low in pairs) + '"'


class Screen:
    """A virtual screen with a window manager, which gives windows the focus."""

    def __init__(self):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1024x24"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.environment = dict(os.environ, DISPLAY=f":{pipe.readline().strip()}")
        # A platform that was chosen for other tests would need no screen.
        self.environment.pop("QT_QPA_PLATFORM", None)
        self.manager = subprocess.Popen(
            ["openbox"], env=self.environment,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()

    def tool(self, *arguments):
        return subprocess.run(["xdotool", *map(str, arguments)], env=self.environment,
                              check=False, capture_output=True, text=True).stdout.strip()


class Program:
    """The program in a portable folder of its own."""

    def __init__(self, screen, folder):
        self.screen = screen
        self.folder = folder
        self.process = None
        self.window = None

    def start(self):
        # Its memory checks, where it has them, go on; leaks of the platform's
        # libraries are not this test's.
        environment = dict(self.screen.environment, ASAN_OPTIONS="detect_leaks=0")
        self.process = subprocess.Popen([str(self.folder / "sarvik")], env=environment,
                                        cwd=self.folder.parent, stderr=subprocess.DEVNULL)
        self.window = wait_for("the window", self.find_window)
        self.screen.tool("windowactivate", "--sync", self.window)

    def find_window(self):
        found = self.screen.tool("search", "--all", "--onlyvisible", "--pid", self.process.pid,
                                 "--name", "sarvik")
        return found.splitlines()[-1] if found else None

    def title(self):
        return self.screen.tool("getwindowname", self.window)

    def keys(self, *names):
        self.screen.tool("key", "--clearmodifiers", *names)

    def choose(self, menu, entry):
        """From a menu, which needs a moment to open."""
        self.keys(menu)
        time.sleep(0.5)
        self.keys(entry)

    def type(self, text):
        self.screen.tool("type", "--clearmodifiers", text)

    def double_click(self, x_part, y_part):
        """At parts of the window's width and height."""
        geometry = dict(line.split("=") for line in self.screen.tool(
            "getwindowgeometry", "--shell", self.window).splitlines())
        self.screen.tool("mousemove", "--window", self.window,
                         int(int(geometry["WIDTH"]) * x_part),
                         int(int(geometry["HEIGHT"]) * y_part))
        self.screen.tool("click", "--repeat", 2, "--delay", 50, 1)

    def quit(self):
        self.keys("ctrl+q")
        return self.process.wait(PATIENCE_SECONDS)

    def kill(self):
        if self.process and self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def hand_over(self, path, mask, keyword):
        (self.folder / "sarvikpara.ini").write_text(
            f"[General]\npathlist={escaped(path)}\nmask={escaped(mask)}\n"
            f"findword={escaped(keyword)}\n")

    def log(self):
        """The log of the last search, or nothing."""
        try:
            return (self.folder / "sarvik.log").read_text(encoding="utf-8")
        except FileNotFoundError:
            return ""

    def search(self, keys=("Return",)):
        """Presses the keys and waits for the log; returns the result text."""
        before = self.log_files()
        self.keys(*keys)
        wait_for("the search's log", lambda: self.log_files() - before)
        return self.log().split("-----------------------\n", 1)[1]

    def log_files(self):
        folder = self.folder / "sarviklog"
        if not folder.is_dir():
            return set()
        # One that is being written has another name or is empty.
        return {entry.name for entry in folder.iterdir()
                if entry.suffix == ".log" and entry.stat().st_size > 0}

    def recorded_arguments(self):
        path = self.folder / "arguments"
        if not path.exists():
            return None
        arguments = path.read_text(encoding="utf-8").splitlines()
        path.unlink()
        return arguments


class WindowTest(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        root = pathlib.Path(self.scratch.name)
        folder = root / "portable 携帯"
        shutil.copytree(PORTABLE_FOLDER, folder,
                        ignore=shutil.ignore_patterns("sarvik*.ini*", "*.log", "sarviklog"))
        self.make_editor(folder)
        self.tree = root / "tree"
        self.make_tree()
        screen = Screen()
        self.addCleanup(screen.close)
        self.program = Program(screen, folder)
        self.addCleanup(self.program.kill)

    def make_editor(self, folder):
        editor = folder / "editor.sh"
        editor.write_text(RECORDER)
        editor.chmod(0o755)
        (folder / "sarvik.ini").write_text(
            f"[editor]\neditor={escaped(str(editor))}\n"
            f"editor_para={escaped('-l%l -c%c -b%b %f')}\n")

    def make_tree(self):
        files = {
            "utf-8.txt": ("一行目\n灯台が見える\n", "utf-8"),
            "sjis.txt": ("灯台守\r\n何もない\r\n", "cp932"),
            "sub/euc.txt": ("あの灯台と\nこの灯台\n" + "さかなとことりとさくら\n" * 20, "euc-jp"),
        }
        for name, (text, encoding) in files.items():
            path = self.tree / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(text.encode(encoding))

    def sections(self, text):
        """The listed files, whose order is that of the threads, and what follows."""
        listed, summary = text.split("-" * 49 + "\n")
        return sorted(filter(None, listed.split("::"))), summary.splitlines()

    def test_a_request_is_searched_opened_and_left(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        program.start()
        listed, summary = self.sections(program.search())
        self.assertEqual(listed, [
            f"{self.tree}/sjis.txt\n      1:    1:灯台守\n",
            f"{self.tree}/sub/euc.txt\n      1:    5:あの灯台と\n      2:    5:この灯台\n",
            f"{self.tree}/utf-8.txt\n      2:    1:灯台が見える\n"])
        self.assertEqual(summary[:2], ["該当ファイル数 3 / 3", "該当行数 4"])
        self.assertRegex(summary[2], r"^処理時間: \d+\.\d\d 秒$")
        self.assertEqual(program.title(), "灯台 -- sarvik")

        # The result view has the focus, its cursor on the first file's line.
        program.keys("Down", "Return")
        arguments = wait_for("the editor", program.recorded_arguments)
        self.assertIn(arguments, [
            ["-l1", "-c1", "-b1", f"{self.tree}/sjis.txt"],
            ["-l1", "-c5", "-b5", f"{self.tree}/sub/euc.txt"],
            ["-l2", "-c1", "-b1", f"{self.tree}/utf-8.txt"]])
        self.assertEqual(program.quit(), 0)
        self.assertTrue((program.folder / "sarvik.ini").read_bytes().startswith(b"\xef\xbb\xbf"))

    def test_a_double_click_opens_its_line(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "euc.txt *.none", "さ")
        program.start()
        # A walk that finds one file alone loads nothing, so there are two.
        (self.tree / "a.none").write_text("nothing\n")
        text = program.search()
        self.assertIn("該当行数 20\n", text)
        program.double_click(0.5, 0.55)
        arguments = wait_for("the editor", program.recorded_arguments)
        line = int(arguments[0][2:])
        self.assertTrue(3 <= line <= 22, line)
        self.assertEqual(arguments, [f"-l{line}", "-c1", "-b1", f"{self.tree}/sub/euc.txt"])

    def test_escape_ends_a_search(self):
        program = self.program
        program.hand_over("/usr/", "*", "no such text anywhere")
        program.start()
        text = program.search(("Return", "Escape"))
        self.assertTrue(text.startswith("/////////////////////// 中止しました "), text)
        self.assertEqual(program.quit(), 0)

    def test_a_request_of_before_is_there_again(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        program.start()
        program.search()
        self.assertEqual(program.quit(), 0)
        program.start()
        self.assertEqual(program.title(), "sarvik64")
        text = program.search()
        self.assertIn("該当行数 4\n", text)
        # Typed over what stands there selected.
        program.keys("ctrl+k")
        program.keys("ctrl+a")
        program.type("nowhere")
        text = program.search()
        self.assertIn("該当行数 0\n", text)
        self.assertEqual(program.quit(), 0)

    def test_a_hit_is_edited_and_saved(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "sjis.txt utf-8.txt", "灯台守")
        program.start()
        program.search()
        program.keys("Down")
        # To the preview, whose cursor is at the start of the hit's line.
        program.keys("Tab")
        program.type("new ")
        program.keys("ctrl+s")
        saved = self.tree / "sjis.txt"
        wait_for("the backup", (self.tree / "sjis.txt.bak").exists)
        wait_for("the saved file", lambda: saved.exists() and saved.read_bytes().startswith(b"new "))
        self.assertEqual(saved.read_bytes().decode("cp932"), "new 灯台守\r\n何もない\r\n")
        self.assertEqual((self.tree / "sjis.txt.bak").read_bytes().decode("cp932"),
                         "灯台守\r\n何もない\r\n")
        self.assertEqual(program.quit(), 0)

    def test_a_past_search_comes_back(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        program.start()
        program.search()
        # A log that is older by its time, not only by its name.
        time.sleep(1.1)
        program.keys("ctrl+k", "ctrl+a")
        program.type("nowhere")
        self.assertIn("該当行数 0\n", program.search())
        program.keys("alt+Left")
        time.sleep(1.1)
        program.keys("ctrl+k")
        self.assertIn("該当行数 4\n", program.search())
        self.assertTrue(program.log().splitlines()[1] == "keyword1:灯台", program.log())

    def test_a_count_leaves_the_window_well(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        program.start()
        program.choose("alt+t", "l")
        wait_for("the line count", lambda: program.title() == "灯台 -- sarvik")
        self.assertEqual(program.quit(), 0)
        # What was there is there again.
        program.start()
        self.assertIn("該当行数 4\n", program.search())



if __name__ == "__main__":
    PORTABLE_FOLDER = pathlib.Path(sys.argv.pop(1))
    unittest.main(verbosity=2)
