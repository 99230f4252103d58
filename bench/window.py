#!/usr/bin/env python3
"""Measures the window on a virtual screen. scripts/bench --window starts it."""

import argparse
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import linecount

LINES_PER_FILE = 1000
HITS = {"100,000 hits": 100, "1,000,000 hits": 1000}


def make_hits(folder, files):
    if folder.is_dir():
        return folder
    folder.mkdir(parents=True)
    for number in range(files):
        lines = (f"    return needle_{line}(context, &value, {number});\n"
                 for line in range(LINES_PER_FILE))
        (folder / f"f{number:04}.txt").write_text("".join(lines))
    return folder


C_LINES = """\
/* {0}: 図書館 */ static int needle_{0}(struct context *context)
{{
    const char *name = "file {0}"; // a remark
    if (context == NULL || strcmp(context->name, name) != 0)
        return -{0};
    return context->value + {0};
}}
"""


def make_preview_files(folder):
    """Files of known sizes with hits, and 200 files of five hits each."""
    if folder.is_dir():
        return folder
    (folder / "sizes").mkdir(parents=True)
    for name, size in (("100KB.c", 100_000), ("1MiB.c", 1 << 20), ("20MiB.c", 20 << 20)):
        lines = "".join(C_LINES.format(number) for number in range(size // 100))
        (folder / "sizes" / name).write_bytes(lines.encode()[:size])
    line = "needle 図書館 value = context->value; " * 30000
    (folder / "sizes" / "1line.c").write_text("needle\n" + line[:1 << 20] + "\nneedle\n")
    (folder / "many").mkdir()
    for number in range(200):
        lines = "".join(C_LINES.format(line) for line in range(5)) + "int value;\n" * 1000
        (folder / "many" / f"f{number:03}.c").write_text(lines)
    return folder


def start_screen():
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1024x24"],
        pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(write_end)
    with os.fdopen(read_end) as pipe:
        os.environ["DISPLAY"] = f":{pipe.readline().strip()}"
    os.environ.pop("QT_QPA_PLATFORM", None)
    return server


def figures(folder, *arguments):
    """The bench program's figures, and the peak memory in 10^6 bytes."""
    with tempfile.NamedTemporaryFile() as report:
        output = subprocess.run(
            ["/usr/bin/time", "-o", report.name, "-f", "%M", folder / "sarvik-window-bench",
             *map(str, arguments)],
            check=True, capture_output=True, text=True).stdout
        peak = int(report.read().split()[-1]) * 1024 / 1e6
    named = dict(line.split() for line in output.splitlines())
    return {**{name: int(value) for name, value in named.items()}, "peak_mb": peak}


def medians(runs):
    return {name: statistics.median(run[name] for run in runs) for name in runs[0]}


def portable_copy(build, scratch):
    copy = pathlib.Path(scratch, "portable")
    shutil.copytree(build / "bin", copy,
                    ignore=shutil.ignore_patterns("sarvik*.ini*", "*.log", "sarviklog"))
    shutil.copy(build / "bench" / "sarvik-window-bench", copy)
    return copy


def start_once(folder):
    """Seconds from the start of the process to the window on the screen."""
    begin = time.perf_counter()
    process = subprocess.Popen([folder / "sarvik"], stderr=subprocess.DEVNULL)
    # Asked again and again: with --sync xdotool itself sleeps half a second between two looks.
    search = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(process.pid),
              "--name", "sarvik"]
    while subprocess.run(search, capture_output=True, check=False).returncode:
        pass
    seconds = time.perf_counter() - begin
    process.terminate()
    process.wait()
    return seconds


def measure_start(folder, rounds):
    history = "".join(f"{number:03}=101keyword {number}\n" for number in range(1, 101))
    (folder / "keywordhistory.ini").write_text("[keyword]\n" + history)
    header = ["version :5.00", "keyword1:needle"] + ["x"] * 12 + ["-" * 23]
    lines = ["::/some/folder/file.txt"] + ["    1:    1:a needle in a line"] * 9999
    (folder / "sarvik.log").write_text("\n".join(header + lines))
    start_once(folder)
    seconds = statistics.median(start_once(folder) for _ in range(rounds))
    print(f"start: {seconds * 1000:.0f} ms to the window, with 100 keywords and a log of "
          "10,000 lines (goal 400)")


def measure_hits(folder, trees, rounds):
    for name, files in HITS.items():
        tree = make_hits(trees / f"hits-{files}", files)
        found = medians([figures(folder, f"{tree}/", "*.txt", "needle") for _ in range(rounds)])
        print(f"{name}: engine {found['engine_ms']:.0f} ms, from its end to idle "
              f"{found['engine_end_to_idle_ms']:.0f} ms, longest block "
              f"{found['longest_block_ms']:.0f} ms, peak {found['peak_mb']:.0f} MB")
        loaded = medians([figures(folder, "--load") for _ in range(rounds)])
        print(f"  its log loaded: {loaded['load_ms']:.0f} ms, longest block "
              f"{loaded['load_longest_block_ms']:.0f} ms")


def measure_find(folder, trees, rounds):
    for name, files in HITS.items():
        tree = make_hits(trees / f"hits-{files}", files)
        found = medians([figures(folder, f"{tree}/", "*.txt", "needle", "find")
                         for _ in range(rounds)])
        print(f"find without a hit in {name}: {found['find_ms']:.0f} ms, longest block "
              f"{found['find_longest_block_ms']:.0f} ms (goal 100)")


def measure_preview(folder, trees, rounds):
    files = make_preview_files(trees / "preview")
    (folder / "sarvik.ini").write_text("[General]\nbigsize=64\n")
    runs = medians([figures(folder, f"{files}/sizes/", "*.c", "needle", "preview")
                    for _ in range(rounds)])
    for name in sorted(name[11:] for name in runs if name.startswith("preview_ms:")):
        print(f"preview of {name}: {runs['preview_ms:' + name]:.0f} ms, longest block "
              f"{runs['preview_block_ms:' + name]:.0f} ms, next hit in it "
              f"{runs['same_file_ms:' + name]:.0f} ms")
    down = medians([figures(folder, f"{files}/many/", "*.c", "needle", "down")
                    for _ in range(rounds)])
    print(f"Down held: {down['down_presses']:.0f} presses over 200 files in "
          f"{down['down_all_ms']:.0f} ms, longest {down['down_longest_ms']:.0f} ms "
          "(goal 33 ms a press)")


def measure_abort(folder, linux, rounds):
    if not linux.is_dir():
        print("abort: not measured, the Linux sources are not there (scripts/bench)")
        return
    for after in (1, 100, 300):
        runs = [figures(folder, f"{linux}/", "*", "struct", after) for _ in range(rounds)]
        worst = max(run["abort_to_engine_end_ms"] for run in runs)
        print(f"abort {after} ms after the start: at most {worst} ms to the engine's end "
              "(goal 200)")


def main():
    parser = argparse.ArgumentParser(description=__doc__, prog="scripts/bench --window")
    parser.add_argument("--build", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--folder", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--count", type=pathlib.Path, metavar="FOLDER",
                        help="measure nothing, but compare a line count of FOLDER with the line "
                             "feeds of its files")
    options = parser.parse_args()
    screen = start_screen()
    try:
        with tempfile.TemporaryDirectory() as scratch:
            folder = portable_copy(options.build, scratch)
            if options.count:
                # Files beyond the size are reported, not counted.
                (folder / "sarvik.ini").write_text("[General]\nbigsize=64\n")
                right = linecount.compare(folder / "sarvik-window-bench", options.count.resolve())
                sys.exit(0 if right else 1)
            measure_start(folder, options.rounds)
            measure_hits(folder, options.folder, options.rounds)
            measure_find(folder, options.folder, options.rounds)
            measure_preview(folder, options.folder, options.rounds)
            measure_abort(folder, options.folder / "linux-source-6.1", options.rounds)
    finally:
        screen.terminate()
        screen.wait()


if __name__ == "__main__":
    main()
