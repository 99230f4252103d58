"""A line count as the window lists it, beside line feeds counted in the bytes."""

import os
import pathlib
import re
import subprocess
import tempfile

# A count, right-aligned with the locale's grouping, and a path.
LISTED = re.compile(rb"^ *([\d,]+) (/.*)$", re.MULTILINE)
END = re.compile(r"^合計行数 ([\d,]+)  該当ファイル数 ([\d,]+)$".encode(), re.MULTILINE)


def number(text):
    return int(text.replace(b",", b""))


def listed_by_window(bench, tree):
    """{path: lines}, and the totals that stand at the end."""
    with tempfile.TemporaryDirectory() as scratch:
        report = pathlib.Path(scratch, "report")
        subprocess.run([bench, "--count", f"{tree}/", "*", report], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        text = report.read_bytes()
    found = LISTED.findall(text)
    counts = {path: number(count) for count, path in found}
    assert len(counts) == len(found), "a file is listed twice"
    lines, files = map(number, END.findall(text)[-1])
    return counts, lines, files


def files_below(tree):
    """Regular files, without following links to folders."""
    found = set()
    for folder, _, names in os.walk(os.fsencode(tree)):
        for name in names:
            path = os.path.join(folder, name)
            if os.path.isfile(path):
                found.add(path)
    return found


def line_feeds(path):
    with open(path, "rb") as file:
        return file.read().count(b"\n")


def compare(bench, tree):
    """Prints the figures; True when the window counted what is in the bytes."""
    counts, lines, files = listed_by_window(bench, tree)
    below = files_below(tree)
    # What follows the last line feed is a line, too, be it empty.
    expected = {path: line_feeds(path) + 1 for path in counts}
    wrong = sorted(path for path in counts if counts[path] != expected[path])
    print(f"line count over {tree}: {files:,} files, {lines:,} lines; "
          f"line feeds of these files: {sum(expected.values()) - len(expected):,}, and one line "
          f"more in each: {sum(expected.values()):,}; {len(wrong)} files differ")
    for path in wrong[:20]:
        print(f"  {counts[path]:,} for {expected[path]:,}: {os.fsdecode(path)}")
    missing = below - counts.keys()
    print(f"  {len(missing):,} of {len(below):,} files are not listed, with "
          f"{sum(map(line_feeds, missing)):,} line feeds")
    for path in sorted(missing)[:20]:
        print(f"  {os.fsdecode(path)}")
    return (not wrong and sum(counts.values()) == lines and len(counts) == files
            and not counts.keys() - below)
