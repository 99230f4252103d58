#!/usr/bin/env python3
"""The program in a real window, for the tests that use it as a person does."""

import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest

# Long enough for a loaded machine; nothing here measures time.
PATIENCE_SECONDS = 60

# The editor's stand-in: keeps its arguments, one on each line.
RECORDER = """#!/bin/sh
printf '%s\\n' "$@" >"$(dirname "$0")/arguments.$$"
mv "$(dirname "$0")/arguments.$$" "$(dirname "$0")/arguments"
"""


def portable_folder():
    """The folder that holds the program. It is copied, so nothing is written there."""
    return pathlib.Path(os.environ["SARVIK_PORTABLE_FOLDER"])


def main():
    """For a test file: FILE PORTABLE_FOLDER [what unittest takes]."""
    os.environ["SARVIK_PORTABLE_FOLDER"] = sys.argv.pop(1)
    unittest.main(module="__main__", verbosity=2)


def wait_for(what, condition):
    end = time.monotonic() + PATIENCE_SECONDS
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


def content_of(path):
    """The file's bytes; none while another is just taking its place."""
    try:
        return path.read_bytes()
    except FileNotFoundError:
        return b""


def wants_to_run(pid):
    """Whether any thread of the process runs, or would if the machine let it."""
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        try:
            # After the name, which may hold anything, comes the state.
            state = (task / "stat").read_text(errors="replace").rpartition(")")[2].split()[0]
        except (FileNotFoundError, ProcessLookupError):
            return True
        if state != "S":
            return True
    return False


def escaped(text):
    """A value of an ini file; every character escaped, so none means anything."""
    units = text.encode("utf-16-be")
    pairs = zip(units[::2], units[1::2])
    return '"' + "".join(f"\\x{high:02x}{low:02x}" for high, low in pairs) + '"'


class Screen:
    """A virtual screen with a window manager, which gives windows the focus."""

    def __init__(self, size="1280x1024"):
        read_end, write_end = os.pipe()
        self.frames = tempfile.TemporaryDirectory()
        # Without a reset when the first visitor leaves, in which the next one is
        # refused and the window manager lost.
        self.server = subprocess.Popen(
            # Nor with keys that repeat: a machine that stalls between a press and its
            # release would make many of one.
            ["Xvfb", "-noreset", "-r", "-displayfd", str(write_end), "-screen", "0", f"{size}x24",
             "-dpi", "96",
             "-fbdir", self.frames.name],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.environment = dict(os.environ, DISPLAY=f":{pipe.readline().strip()}")
        # A platform that was chosen for other tests would need no screen.
        self.environment.pop("QT_QPA_PLATFORM", None)
        self.manager = subprocess.Popen(
            ["openbox"], env=self.environment,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait_for_manager()

    def wait_for_manager(self):
        """A window that comes while it starts may stay hidden."""
        wait_for("the window manager", lambda: self.tool("get_num_desktops"))

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()
        self.frames.cleanup()

    def rows(self, geometry):
        """The part of the screen as rows of bytes, and where in the four bytes of a
        pixel red, green and blue are."""
        dump = (pathlib.Path(self.frames.name) / "Xvfb_screen0").read_bytes()
        # A dump of the X window system: numbers of 32 bits, the high byte first,
        # then the table of colours, then the rows, here of four bytes a pixel.
        header = struct.unpack(">25I", dump[:100])
        start = header[0] + 12 * header[19]
        order = slice(2, None, -1) if header[7] == 0 else slice(1, 4)
        rows = []
        for y in range(geometry["Y"], geometry["Y"] + geometry["HEIGHT"]):
            begin = start + y * header[12] + 4 * geometry["X"]
            rows.append(dump[begin:begin + 4 * geometry["WIDTH"]])
        return rows, order

    def pixels(self, geometry):
        """The part of the screen as rows of (red, green, blue)."""
        rows, order = self.rows(geometry)
        return [[tuple(row[i:i + 4][order]) for i in range(0, len(row), 4)] for row in rows]

    def processes(self):
        """The numbers of those that the programs on it wait for."""
        return [self.server.pid]

    def set_dots_per_inch(self, dots):
        """As a desktop tells its programs how large to draw."""
        subprocess.run(["xprop", "-root", "-format", "RESOURCE_MANAGER", "8s",
                        "-set", "RESOURCE_MANAGER", f"Xft.dpi:\t{dots}\n"],
                       env=self.environment, check=True)

    def managed_windows(self):
        """The numbers of the windows that the manager knows."""
        listed = self.output_of("xprop", "-root", "_NET_CLIENT_LIST")
        return [int(number, 16) for number in re.findall(r"0x[0-9a-f]+", listed)]

    def tool(self, *arguments):
        return self.output_of("xdotool", *map(str, arguments))

    def tree(self):
        """All windows, for a person to read."""
        return self.output_of("xwininfo", "-root", "-tree")

    def output_of(self, *command):
        return subprocess.run(command, env=self.environment, check=False,
                              capture_output=True, text=True).stdout.strip()


class Program:
    """The program in a portable folder of its own."""

    def __init__(self, screen, folder):
        self.screen = screen
        self.folder = folder
        self.process = None
        self.window = None
        self.patient_until = 0

    def start(self, *command):
        """By a command that becomes the program, or the program itself."""
        # Its memory checks, where it has them, go on; leaks of the platform's
        # libraries are not this test's.
        environment = dict(self.screen.environment, ASAN_OPTIONS="detect_leaks=0")
        command = command or [str(self.folder / "sarvik")]
        self.patient_until = time.monotonic() + 10
        self.process = subprocess.Popen(command, env=environment,
                                        cwd=self.folder.parent, stderr=subprocess.DEVNULL)
        try:
            self.window = wait_for("the window", self.find_window)
        except AssertionError as error:
            raise AssertionError(f"{error}; there are:\n{self.screen.tree()}\n"
                                 f"and the program waits in {self.waits_in()}") from error
        wait_for("the focus", self.has_focus)

    def waits_in(self):
        """The names of the kernel's functions in which its threads sleep."""
        tasks = pathlib.Path(f"/proc/{self.process.pid}/task")
        return [f"{(task / 'comm').read_text().strip()}: {(task / 'wchan').read_text()}"
                for task in tasks.iterdir()]

    def has_focus(self):
        """Asks for it each time: a manager that is just starting may miss it."""
        self.screen.tool("windowactivate", self.window)
        return self.screen.tool("getwindowfocus") == self.window

    def windows(self, name):
        """The visible windows whose titles match the expression."""
        return self.screen.tool("search", "--all", "--onlyvisible", "--pid", self.process.pid,
                                "--name", name).splitlines()

    def main_windows(self):
        """Those of every instance on the screen."""
        return self.screen.tool("search", "--onlyvisible", "--name",
                                "^sarvik64$|-- sarvik$").splitlines()

    def other_window(self):
        others = [window for window in self.main_windows() if window != self.window]
        return others[0] if others else None

    def second_instance(self):
        """The one that this one has started; it has the keys."""
        second = type(self)(self.screen, self.folder)
        second.window = wait_for("the second window", self.other_window)
        wait_for("its focus", second.has_focus)
        # What the screen holds for focused needs a moment to reach the program, and
        # logs are told apart by their seconds.
        time.sleep(1.1)
        return second

    def find_window(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended with {self.process.returncode}")
        found = self.windows("sarvik")
        if not found and time.monotonic() > self.patient_until:
            # On a busy machine the manager now and then misses a window that wants to
            # be shown; a second request shows it.
            for window in self.screen.tool("search", "--all", "--pid", self.process.pid,
                                           "--name", "^sarvik64$").splitlines():
                self.screen.tool("windowmap", window)
        return found[-1] if found else None

    def wait_for_dialog(self, name):
        """Until it takes the keys; returns it."""
        def active():
            others = [window for window in self.windows(name) if window != self.window]
            window = self.screen.tool("getactivewindow")
            return window if window in others else None
        return wait_for(f"the window {name}", active)

    def wait_until_gone(self, dialog):
        """Until the main window takes the keys again."""
        wait_for("the dialog's end", lambda: dialog not in self.windows("")
                 and self.screen.tool("getactivewindow") == self.window)

    def is_at_rest(self):
        """Whether neither it nor the screen has anything to do at this instant."""
        pid = self.process.pid if self.process else self.screen.tool("getwindowpid", self.window)
        return not any(wants_to_run(of) for of in (pid, *self.screen.processes()))

    def wait_until_at_rest(self):
        """Until it has been at rest for several times. A program that is only kept from
        running by a busy machine is not."""
        times = 0

        def rests():
            nonlocal times
            times = times + 1 if self.is_at_rest() else 0
            return times >= 5
        wait_for("rest", rests)

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

    def geometry(self):
        lines = self.screen.tool("getwindowgeometry", "--shell", self.window).splitlines()
        return {key: int(value) for key, value in (line.split("=") for line in lines)}

    def copied(self):
        """The text of the view that has the keys, through the clipboard."""
        self.keys("ctrl+a", "ctrl+c")
        return subprocess.run(["xsel", "--clipboard", "--output"], env=self.screen.environment,
                              check=False, capture_output=True, text=True,
                              encoding="utf-8").stdout

    def click(self, x_part, y_part, times=1):
        """At parts of the window's width and height."""
        geometry = self.geometry()
        self.screen.tool("mousemove", "--window", self.window,
                         int(geometry["WIDTH"] * x_part), int(geometry["HEIGHT"] * y_part))
        self.screen.tool("click", "--repeat", times, "--delay", 50, 1)

    def double_click(self, x_part, y_part):
        self.click(x_part, y_part, 2)

    def hold(self, name, times):
        """As many presses as a key that is held down makes, and as close together."""
        self.screen.tool("key", "--clearmodifiers", "--delay", 5, "--repeat", times,
                         "--repeat-delay", 5, name)

    def quit(self):
        self.keys("ctrl+q")
        return self.wait_for_end()

    def wait_for_end(self):
        """Returns the exit status."""
        status = self.process.wait(PATIENCE_SECONDS)
        # The next window may get this one's number; a manager that still knows that
        # would leave it hidden.
        wait_for("the window to be forgotten",
                 lambda: int(self.window) not in self.screen.managed_windows())
        return status

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
        """Presses the keys and waits for the log, and the end that comes after it;
        returns the result text."""
        before = self.log_files()
        self.keys(*keys)
        wait_for("the search's log", lambda: self.log_files() - before)
        self.wait_until_at_rest()
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


class ProgramTestCase(unittest.TestCase):
    """A copy of the program, a tree to search and a screen, for each test anew."""

    screen_size = "1280x1024"

    def setUp(self):
        # An editor that was started once too often may still be writing.
        self.scratch = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(self.scratch.cleanup)
        root = pathlib.Path(self.scratch.name)
        folder = root / "portable 携帯"
        shutil.copytree(portable_folder(), folder,
                        ignore=shutil.ignore_patterns("sarvik*.ini*", "*.log", "sarviklog"))
        self.make_editor(folder)
        self.tree = root / "tree"
        self.make_tree()
        screen = Screen(self.screen_size)
        self.addCleanup(screen.close)
        self.program = Program(screen, folder)
        self.addCleanup(self.program.kill)

    def make_editor(self, folder):
        editor = folder / "editor.sh"
        editor.write_text(RECORDER)
        editor.chmod(0o755)
        (folder / "sarvik.ini").write_text(
            f"[General]\nbigsize=8\n[editor]\neditor={escaped(str(editor))}\n"
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
