#!/usr/bin/env python3
"""How the program looks: what it is to the window system, its colours and style.

look_test.py PORTABLE_FOLDER: the folder that holds the program.
"""

import re
import subprocess
import time

from program_window import ProgramTestCase, main, wait_for

GROUND = (0x10, 0x30, 0x50)
STATUS_BAR = (0x50, 0xA0, 0x10)
WHITE = (0xFF, 0xFF, 0xFF)


class LookTest(ProgramTestCase):
    # For a window of twice the size.
    screen_size = "1920x1080"

    def setUp(self):
        super().setUp()
        settings = self.program.folder / "sarvik.ini"
        settings.write_text(settings.read_text() + "[palette]\nWindow=#103050\n")
        (self.program.folder / "sarvify.qss").write_text(
            "QStatusBar { background-color: #50a010; }\n")

    def pixels(self):
        """Of the window, row by row."""
        return self.program.screen.pixels(self.program.geometry())

    def count(self, colour):
        return sum(row.count(colour) for row in self.pixels())

    def settled_pixels(self):
        """Once it is painted and nothing changes any more but the caret, which blinks."""
        wait_for("a painted window", lambda: self.count(STATUS_BAR) > 5000)
        seen = []

        def is_settled():
            # What it still has to paint on a busy machine would come later.
            if not self.program.is_at_rest():
                return False
            now, _ = self.program.screen.rows(self.program.geometry())
            if seen and differences(seen[0], now) >= 400:
                seen.clear()
            seen.append(now)
            return len(seen) >= 10
        wait_for("a window at rest", is_settled)
        return self.pixels()

    def test_the_window_system_knows_the_program(self):
        program = self.program
        # Where nobody says otherwise, a program is called as its file.
        other = program.folder / "another-name"
        (program.folder / "sarvik").rename(other)
        program.start(str(other))
        # The class alone; the instance is the file's name.
        described = subprocess.run(
            ["xprop", "-id", program.window, "WM_CLASS", "_NET_WM_ICON"],
            env=program.screen.environment, check=True, capture_output=True, text=True).stdout
        self.assertRegex(described, r'WM_CLASS\(STRING\) = "another-name", "[Ss]arvik"')
        # A window without an icon gets one of 48 pixels from the window manager.
        for size in (16, 24, 32, 48, 64):
            self.assertIn(f"Icon ({size} x {size})", described)

    def test_the_palette_and_the_style_sheet_are_applied(self):
        self.program.start()
        wait_for("the palette's colour", lambda: self.count(GROUND) > 20000)
        wait_for("the sheet's colour", lambda: self.count(STATUS_BAR) > 5000)

    def test_no_style_of_the_desktop_is_taken(self):
        program = self.program
        seen = None
        for style in ("Fusion", "Windows"):
            program.screen.environment["QT_STYLE_OVERRIDE"] = style
            program.start()
            if seen is None:
                seen = self.settled_pixels()
            wait_for("the same picture", lambda: differences(seen, self.pixels()) < 100)
            self.assertEqual(program.quit(), 0)

    def test_the_window_is_as_large_as_the_desktop_says(self):
        """Half a step of scaling is half a step, not a whole one."""
        program = self.program
        settings = program.folder / "sarvik.ini"
        settings.write_text(settings.read_text().replace(
            "[General]\n", "[General]\npos=@Point(10 10)\nsize=@Size(760 480)\n"))
        kept = settings.read_bytes()
        for dots in (96, 120, 144, 192):
            with self.subTest(dots=dots):
                # Without what the last window has stored.
                settings.write_bytes(kept)
                program.screen.set_dots_per_inch(dots)
                program.start()
                self.settled_pixels()
                geometry = program.geometry()
                self.assertEqual(geometry["WIDTH"], round(760 * dots / 96))
                self.assertEqual(geometry["HEIGHT"], round(480 * dots / 96))
                self.assertEqual(program.quit(), 0)

    def test_a_window_from_a_larger_desktop_is_on_the_screen(self):
        program = self.program
        settings = program.folder / "sarvik.ini"
        settings.write_text(settings.read_text().replace(
            "[General]\n", "[General]\npos=@Point(2500 1300)\nsize=@Size(900 700)\n"))
        program.start()
        self.settled_pixels()
        described = subprocess.run(
            ["xwininfo", "-id", program.window], env=program.screen.environment, check=True,
            capture_output=True, text=True).stdout

        def number(label):
            return int(re.search(label + r":\s+(-?\d+)", described)[1])
        left, top = number("Absolute upper-left X"), number("Absolute upper-left Y")
        self.assertEqual((number("Width"), number("Height")), (900, 700))
        # A border may be over the edge, of a pixel.
        self.assertTrue(0 <= left <= 1920 - 900 + 1, left)
        self.assertTrue(0 < top <= 1080 - 700, top)

    def test_a_tool_tip_can_be_read(self):
        """The settings' own colours are white on white."""
        program = self.program
        program.start()
        geometry = program.geometry()
        x, y = geometry["WIDTH"] // 2, geometry["HEIGHT"] * 11 // 20
        program.screen.tool("mousemove", "--window", program.window, x, y)

        def tip():
            """The rows of what came up, from its first white pixel to its last."""
            # Each rest of the mouse brings it anew, should something have taken it away.
            program.screen.tool("mousemove_relative", 1, 0)
            time.sleep(1.5)
            rows = [between(WHITE, row) for row in self.pixels() if row.count(WHITE) > 200]
            return rows if len(rows) > 20 else None
        letters = sum(max(pixel) < 0x60 for row in wait_for("the tool tip", tip) for pixel in row)
        self.assertGreater(letters, 200)


def between(colour, row):
    """What is between the first and the last pixel of that colour."""
    return row[row.index(colour):len(row) - row[::-1].index(colour)]


def differences(one, other):
    """How many pixels, or bytes, differ; all when the sizes do."""
    if [len(row) for row in one] != [len(row) for row in other]:
        return sum(len(row) for row in one)
    return sum(a != b for left, right in zip(one, other) if left != right
               for a, b in zip(left, right))


if __name__ == "__main__":
    main()
