#!/usr/bin/env python3
"""Uses the dialogs, the menus and the keys of the window as a person does.

window_dialogs_test.py PORTABLE_FOLDER: the folder that holds the program.
"""

import re
import time

from program_window import ProgramTestCase, content_of, main, wait_for

EDITOR_PAGE = "alt+e"
PARAMETERS = "alt+a"


class WindowDialogsTest(ProgramTestCase):
    def start(self, mask="*.txt", keyword="灯台", path=None):
        self.program.hand_over(path or f"{self.tree}/", mask, keyword)
        self.program.start()

    def settings(self):
        return content_of(self.program.folder / "sarvik.ini").decode("utf-8-sig")

    def open_options(self):
        self.program.choose("alt+t", "o")
        return self.program.wait_for_dialog("^Option$")

    def type_parameters(self, text):
        self.program.keys(EDITOR_PAGE, PARAMETERS, "ctrl+a")
        self.program.type(text)

    def test_options_are_taken_only_when_accepted(self):
        program = self.program
        self.start()
        options = self.open_options()
        self.type_parameters("cancelled")
        program.keys("Escape")
        program.wait_until_gone(options)
        self.assertNotIn("cancelled", self.settings())

        options = self.open_options()
        self.type_parameters("line-%l %f")
        program.keys("Return")
        program.wait_until_gone(options)
        wait_for("the settings", lambda: "line-%l %f" in self.settings())
        self.assertNotIn("cancelled", self.settings())

        # And the editor is started so from now on.
        program.keys("alt+k")
        program.search()
        program.keys("Down", "Return")
        arguments = wait_for("the editor", program.recorded_arguments)
        self.assertRegex(arguments[0], r"^line-[12]$")
        self.assertEqual(program.quit(), 0)

    def test_the_preview_follows_a_key_that_is_held_down(self):
        """Over the hits of many files, one of which takes a moment to be shown."""
        for number in range(30):
            (self.tree / f"{number}.hit").write_text("one\ntwo lines\nrare word\n" * 3)
        large = "nothing to be found in this line\n" * 50000 + "a rare word\n"
        (self.tree / "large.hit").write_text(large)
        program = self.program
        self.start("*.hit", "rare word")
        lines = program.search().splitlines()
        hits = [number for number, line in enumerate(lines) if line.startswith("  ")]
        self.assertEqual(len(hits), 91)
        program.hold("Down", hits[-1])
        self.assert_preview_shows(lines, hits[-1])

        program.keys("shift+Tab")
        of_large = lines.index("  50001:    3:a rare word")
        program.hold("Up", hits[-1] - of_large)
        self.assert_preview_shows(lines, of_large)
        self.assertEqual(program.quit(), 0)

    def assert_preview_shows(self, lines, hit):
        """The editor opens what the preview's cursor is on."""
        line = int(lines[hit].split(":")[0])
        path = next(text for text in reversed(lines[:hit]) if text.startswith("::"))[2:]
        self.program.keys("Tab")

        def is_opened():
            self.program.keys("shift+Return")
            time.sleep(0.5)
            opened = self.program.recorded_arguments()
            return opened and (opened[0], opened[-1]) == (f"-l{line}", path)
        wait_for(f"line {line} of {path}", is_opened)

    def test_ctrl_q_ends_the_program_while_it_searches(self):
        self.start("*", "no such text anywhere", "/usr/")
        self.program.keys("Return")
        wait_for("the run", lambda: self.program.title().endswith(" -- sarvik"))
        self.assertEqual(self.program.quit(), 0)
        self.assertIn("[editor]", self.settings())
        self.assertFalse((self.program.folder / "sarvik.log").exists())

    def test_the_path_dialog_adds_a_path_and_shows_its_notes(self):
        program = self.program
        other = self.tree.parent / "other"
        other.mkdir()
        (other / "x.txt").write_text("灯台\n")
        self.start()
        # Past the buttons of the keyword and the search button.
        program.keys("alt+k", *["Tab"] * 7, "space")
        dialog = program.wait_for_dialog("^追加する検索パス$")
        without = len(program.windows(""))
        program.keys("F1")
        wait_for("the notes", lambda: len(program.windows("")) > without)
        program.keys("F1")
        wait_for("no notes", lambda: len(program.windows("")) == without)
        program.keys("ctrl+a")
        program.type(str(other))
        program.keys("Return")
        program.wait_until_gone(dialog)
        program.keys("alt+k")
        text = program.search()
        self.assertIn("該当行数 5\n", text)
        self.assertIn(f"\npathlist:{self.tree}/, {other}/\n", program.log())
        self.assertEqual(program.quit(), 0)

    def test_ctrl_h_offers_the_past_searches(self):
        program = self.program
        self.start()
        program.search()
        # A log that is older by its time, not only by its name.
        time.sleep(1.1)
        program.keys("ctrl+k", "ctrl+a")
        program.type("nowhere")
        self.assertIn("該当行数 0\n", program.search())
        program.keys("ctrl+h")
        time.sleep(1)
        program.keys("Down", "Down", "Return")
        time.sleep(1.1)
        program.keys("alt+k")
        self.assertIn("該当行数 4\n", program.search())
        self.assertEqual(program.quit(), 0)

    def test_cancel_keeps_the_window_and_the_text(self):
        program = self.program
        self.start("sjis.txt utf-8.txt", "灯台守")
        program.search()
        program.keys("Down", "Tab")
        program.type("new ")
        program.keys("ctrl+q")
        question = program.wait_for_dialog("^sarvik$")
        program.keys("Escape")
        program.wait_until_gone(question)
        saved = self.tree / "sjis.txt"
        self.assertEqual(saved.read_bytes().decode("cp932"), "灯台守\r\n何もない\r\n")
        program.keys("ctrl+s")
        wait_for("the saved file", lambda: content_of(saved).startswith(b"new "))
        self.assertEqual(program.quit(), 0)

    def test_a_click_beside_the_completions_acts(self):
        program = self.program
        (self.tree / "ascii.txt").write_text("a lighthouse\n")
        self.start(keyword="lighthouse")
        program.search()
        # The button's row is a little higher or lower with another font; each try
        # opens the list anew, so that none succeeds without it.
        for height in (0.209, 0.2, 0.218, 0.191, 0.227):
            program.keys("alt+k", "ctrl+a")
            program.type("light")
            time.sleep(1)
            program.click(0.939, height)
            if self.is_titled("light -- sarvik"):
                break
        wait_for("the search", lambda: program.title() == "light -- sarvik")
        self.assertEqual(program.quit(), 0)

    def is_titled(self, title):
        end = time.monotonic() + 5
        while time.monotonic() < end and self.program.title() != title:
            time.sleep(0.05)
        return self.program.title() == title

    def test_everything_is_as_it_was_left(self):
        program = self.program
        self.start()
        program.keys("ctrl+shift+w", "ctrl+shift+o", "ctrl+shift+r")
        program.screen.tool("windowsize", "--sync", program.window, 950, 700)
        program.screen.tool("windowmove", "--sync", program.window, 60, 80)
        # Whole words only, upper and lower case apart, no pattern.
        program.keys("alt+k", "ctrl+a")
        program.type("Word")
        (self.tree / "words.txt").write_text("a Word\nWords\nword\n")
        self.assertIn("該当行数 1\n", program.search())
        left = program.geometry()
        self.assertEqual(program.quit(), 0)

        program.start()
        found = wait_for("the size", lambda: program.geometry() if program.geometry()["WIDTH"]
                         == left["WIDTH"] else None)
        self.assertEqual(found["HEIGHT"], left["HEIGHT"])
        # The window manager's frame may count or not.
        self.assertLess(abs(found["X"] - left["X"]), 40)
        self.assertLess(abs(found["Y"] - left["Y"]), 40)
        # The hits of the last search are there and open.
        program.keys("ctrl+k", "ctrl+Home", "Down", "Return")
        arguments = wait_for("the editor", program.recorded_arguments)
        self.assertEqual(arguments, ["-l1", "-c3", "-b3", f"{self.tree}/words.txt"])
        time.sleep(1.1)
        program.keys("alt+k")
        # Whole words are asked for anew each time.
        self.assertIn("該当行数 2\n", program.search())
        header = program.log().splitlines()[1:11]
        self.assertEqual([re.sub(r"\s*:", ":", line) for line in header[:4]],
                         ["keyword1:Word", "case:0", "word:0", "regexp:0"])
        self.assertEqual(header[8:], [f"pathlist:{self.tree}/", "mask    :*.txt"])
        self.assertEqual(program.quit(), 0)


if __name__ == "__main__":
    main()
