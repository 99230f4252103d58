#!/usr/bin/env python3
"""Searches, opens, edits and counts in the window as a person does.

window_test.py PORTABLE_FOLDER: the folder that holds the program.
"""

import time

from program_window import ProgramTestCase, content_of, main, wait_for


class WindowTest(ProgramTestCase):
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

        def opened():
            # On a busy machine the clicks may come too far apart for a double one.
            program.double_click(0.5, 0.55)
            time.sleep(1)
            return program.recorded_arguments()
        arguments = wait_for("the editor", opened)
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

    def test_a_window_closes_while_a_line_takes_for_ever(self):
        program = self.program
        (self.tree / "a.log").write_text("b" + 20000 * "a" + "\n")
        # With a single file nothing is searched.
        (self.tree / "b.log").write_text("x\n")
        program.hand_over(str(self.tree) + "/", "*.log", "(a|a)+(?=b)")
        program.start()
        program.keys("Return")
        wait_for("the search", lambda: program.title() == "(a|a)+(?=b) -- sarvik")
        # Until the engine is inside the line, from which nothing takes it.
        time.sleep(2)
        settings = program.folder / "sarvik.ini"
        settings.unlink()
        self.assertEqual(program.quit(), 0)
        self.assertIn("\ngeometry=", settings.read_text(encoding="utf-8"))

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
        wait_for("the saved file", lambda: content_of(saved).startswith(b"new "))
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
        # Each log brings its text and its request.
        program.keys("alt+Left")
        wait_for("the older log", lambda: "該当行数 4\n" in program.copied())
        program.keys("alt+Right")
        wait_for("the newer log", lambda: "該当行数 0\n" in program.copied())
        program.keys("alt+Left")
        wait_for("the older log again", lambda: "該当行数 4\n" in program.copied())
        time.sleep(1.1)
        program.keys("ctrl+k")
        self.assertIn("該当行数 4\n", program.search())
        self.assertEqual(program.log().splitlines()[1], "keyword1:灯台")
        self.assertEqual(program.quit(), 0)

    def test_a_selected_word_starts_another_search(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        program.start()
        program.search()
        program.keys("Down", "End", "shift+Left", "alt+g")
        second = program.second_instance()
        self.assertEqual(second.title(), "sarvik64")
        (program.folder / "sarvik.log").unlink()
        # The last request is what a start finds.
        self.assertIn("該当行数 4\n", second.search())
        head = second.log().splitlines()
        self.assertIn("keyword1:灯台", head)
        self.assertIn(f"pathlist:{self.tree}/", head)
        second.keys("ctrl+q")
        wait_for("its end", lambda: not program.other_window())
        wait_for("the first one's focus", program.has_focus)
        self.assertEqual(program.quit(), 0)

    def test_a_count_leaves_the_window_well(self):
        program = self.program
        program.hand_over(str(self.tree) + "/", "*.txt", "灯台")
        program.start()
        program.choose("alt+t", "l")
        text = wait_for("the end of the count",
                        lambda: (copied := program.copied()).count("合計") == 3 and copied)
        counts = {path: path.read_bytes().count(b"\n") + 1
                  for path in self.tree.rglob("*.txt")}
        for path, count in counts.items():
            self.assertIn(f"{count:7} {path}\n", text)
        self.assertRegex(text, rf"\n合計行数 {sum(counts.values())}  該当ファイル数 3$")
        self.assertEqual(program.title(), "灯台 -- sarvik")
        self.assertEqual(program.quit(), 0)
        # What was there is there again.
        program.start()
        self.assertIn("該当行数 4\n", program.search())


if __name__ == "__main__":
    main()
