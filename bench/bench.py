#!/usr/bin/env python3
"""Compares sarvik-cli with its peers. scripts/bench builds and starts it."""

import argparse
import dataclasses
import pathlib
import sys

import corpora
import lines
import measure
import rows
import scale

# Files of any size, as the peers search them.
SIZE = ["--max-size", "1000"]

RIPGREP = ["rg", "--no-config", "-uuu", "-a", "-n", "--no-heading", "--color", "never"]
UGREP = ["ugrep", "-r", "-a", "-n", "--color=never", "--hidden"]
GREP = ["grep", "-r", "-a", "-n", "--color=never"]

RIPGREP_PASSES = ["auto", "sjis", "euc-jp", "iso-2022-jp", "utf-16le"]

class Bench:
    def __init__(self, options):
        self.program = options.program
        self.folder = options.folder
        self.rounds = 3 if options.quick else options.rounds
        self.ripgrep_only = options.ripgrep_only
        self.failures = []

    def run(self, row):
        single = {
            rows.NEAR_ROW: self.near_row,
            rows.MIXED_ROW: self.mixed_row,
            rows.COUNT_ROW: self.count_row,
            rows.WALK_ROW: self.walk_row,
            rows.GROWTH_ROW: self.growth_row,
        }
        if row in single:
            single[row]()
        elif row in rows.LARGE_ROWS:
            self.large_row(row)
        else:
            self.linux_row(row)

    def say(self, text):
        if sys.stderr.isatty():
            print(f"\r\x1b[K{text}", end="", file=sys.stderr, flush=True)

    def check(self, what, missing, extra):
        if missing or extra:
            self.failures.append(what)
            print(f"  {what}: {len(missing)} missing, {len(extra)} too many")
            for path, number in sorted(missing)[:5]:
                print(f"    missing {path.decode(errors='replace')}:{number}")
            for path, number in sorted(extra)[:5]:
                print(f"    too many {path.decode(errors='replace')}:{number}")

    def ours(self, tree, keyword, options):
        arguments = [self.program, "--no-settings", "--format", "grep", *SIZE, *options]
        return measure.Command("sarvik-cli", [*arguments, "--", keyword, tree])

    def table(self, goal, results, base):
        self.say("")
        print(f"  goal: {goal}")
        head = ["seconds", "CPU", "ratio", "by CPU", "spread", "peak MB"]
        print(f"  {'program':<22}" + "".join(f"{word:>9}" for word in head))
        for name, result in results.items():
            ratio = result.seconds / results[base].seconds
            cpu_ratio = result.cpu / max(results[base].cpu, 0.01)
            print(
                f"  {name:<22}{result.seconds:>9.3f}{result.cpu:>9.2f}{ratio:>9.2f}"
                f"{cpu_ratio:>9.2f}{result.spread:>9.2f}{result.peak_mb:>9.1f}",
                flush=True,
            )

    def measure(self, goal, commands, base):
        results = measure.measure(commands, self.rounds, self.say)
        self.table(goal, results, base)

    def ripgrep(self, tree, keyword, options):
        return measure.Command("ripgrep", [*RIPGREP, *options, "-e", keyword, tree])

    def linux_row(self, name):
        tree, version = corpora.linux_tree(self.folder)
        row = rows.LINUX_ROWS[name]
        own = self.ours(tree, row.keyword, row.own)
        commands = [own, self.ripgrep(tree, row.keyword, row.ripgrep)]
        print(f"\n{name}: {row.keyword} in linux-source-6.1 {version}")
        if row.others is None or self.ripgrep_only:
            self.compare_lines(tree, own, commands[1], row.ascii_only)
        else:
            grep = measure.Command("grep", [*GREP, *row.others, "-e", row.keyword, tree])
            ugrep = measure.Command("ugrep", [*UGREP, *row.others, "-e", row.keyword, tree])
            self.compare_lines(tree, own, grep, row.ascii_only)
            commands += [ugrep, grep]
        self.measure(row.goal, commands, "ripgrep")

    def near_row(self):
        tree, version = corpora.linux_tree(self.folder)
        literal = rows.LINUX_ROWS["linux-literal"]
        print(f"\n{rows.NEAR_ROW}: {literal.keyword} {' '.join(rows.NEAR_OPTIONS)}, {version}")
        near = self.ours(tree, literal.keyword, rows.NEAR_OPTIONS)
        plain = self.ours(tree, literal.keyword, literal.own)
        commands = [
            dataclasses.replace(near, name="with conditions"),
            dataclasses.replace(plain, name="literal alone"),
        ]
        self.measure(rows.NEAR_GOAL, commands, "literal alone")

    def large_row(self, name):
        self.say(f"making {name}")
        file = scale.large_file(self.folder, name)
        keyword = corpora.MIXED_KEYWORD
        own = self.ours(file, keyword, ["-F"])
        ripgrep = self.ripgrep(file, keyword, ["-F", "--with-filename", *rows.LARGE_ROWS[name]])
        print(f"\n{name}: {keyword} in one file of {file.stat().st_size} bytes")
        found = lines.parse(measure.outputs_of(own)[0])
        expected = lines.parse(measure.outputs_of(ripgrep)[0])
        self.check("lines of ripgrep", expected - found, found - expected)
        self.measure(rows.LARGE_GOAL, [own, ripgrep], "ripgrep")

    def count_row(self):
        tree, version = corpora.linux_tree(self.folder)
        print(f"\n{rows.COUNT_ROW}: linux-source-6.1 {version}")
        own = [self.program, "--no-settings", *SIZE, "--line-count", tree]
        peer = ["find", tree, "-type", "f", "-exec", "wc", "-l", "{}", "+"]
        commands = [measure.Command("sarvik-cli", own), measure.Command("find and wc", peer)]
        self.measure(rows.COUNT_GOAL, commands, "find and wc")

    def walk_row(self):
        self.say("making the empty files")
        tree = scale.empty_tree(self.folder)
        print(f"\n{rows.WALK_ROW}: no file of a million passes the mask")
        own = self.ours(tree, "word", ["-F", "--mask", "*.nothing"])
        peer = ["rg", "--no-config", "--files", "-uuu", "-g", "*.nothing", tree]
        self.measure(rows.WALK_GOAL, [own, measure.Command("ripgrep", peer)], "ripgrep")

    def growth_row(self):
        self.say("making the copies")
        trees = scale.linux_copies(self.folder, max(rows.GROWTH_STEPS))
        literal = rows.LINUX_ROWS["linux-literal"]
        print(f"\n{rows.GROWTH_ROW}: {literal.keyword} in up to {len(trees)} trees")
        commands = []
        for count in rows.GROWTH_STEPS:
            own = self.ours(trees[0], literal.keyword, literal.own)
            own = measure.Command(f"{count} trees", [*own.arguments, *trees[1:count]])
            commands.append(own)
        self.measure(rows.GROWTH_GOAL, commands, commands[0].name)

    def compare_lines(self, tree, own, peer, ascii_only):
        self.say("comparing lines")
        regular = lines.regular_files(tree)
        if ascii_only:
            regular = {path for path in regular if lines.is_ascii(path)}
        codes = lines.encodings(self.program, tree, SIZE)
        accepted = {path for path in regular if codes.get(path, -2) >= 0}
        found = {hit for hit in lines.parse(measure.outputs_of(own)[0]) if hit[0] in regular}
        expected = {hit for hit in lines.parse(measure.outputs_of(peer)[0]) if hit[0] in accepted}
        self.say("")
        print(
            f"  {len(expected)} lines by {peer.name} in the {len(accepted)} of {len(regular)} regular"
            f" files that are accepted, {len(found)} by sarvik-cli"
        )
        self.check(f"lines of {peer.name}", expected - found, found - expected)

    def mixed_row(self):
        self.say("making the mixed tree")
        tree, truth = corpora.mixed_tree(self.folder)
        keyword = corpora.MIXED_KEYWORD
        own = self.ours(tree, keyword, ["-F"])
        passes = [[*RIPGREP, "-F", "-E", code, "-e", keyword, tree] for code in RIPGREP_PASSES]
        ripgrep = measure.Command("ripgrep, five passes", [], passes)
        print(f"\nmixed: {keyword} in {len(truth)} files, eight encodings")
        self.compare_with_truth(tree, truth, own, ripgrep)
        self.measure(rows.MIXED_GOAL, [own, ripgrep], "ripgrep, five passes")

    def compare_with_truth(self, tree, truth, own, ripgrep):
        codes = lines.encodings(self.program, tree, SIZE)
        numbers = {name: index + 1 for index, name in enumerate(corpora.CODE_SETS)}
        true_hits, accepted_hits = set(), set()
        refused, mistaken = 0, 0
        for relative, (name, true_lines) in truth.items():
            path = bytes(tree / relative)
            hits = {(path, number) for number in true_lines}
            true_hits |= hits
            code = codes.get(path, -2)
            refused += code < 0
            mistaken += 0 <= code != numbers[name]
            if code >= 0:
                accepted_hits |= hits
        found = lines.parse(measure.outputs_of(own)[0])
        print(f"  {refused} files refused, {mistaken} taken for another encoding")
        print(
            f"  {len(true_hits)} true lines, {len(accepted_hits)} of them in accepted files,"
            f" {len(found)} found by sarvik-cli"
        )
        self.check("true lines", accepted_hits - found, found - true_hits)
        together = set()
        for code, output in zip(RIPGREP_PASSES, measure.outputs_of(ripgrep)):
            by_pass = lines.parse(output) & true_hits
            together |= by_pass
            print(f"  {len(by_pass)} found by ripgrep -E {code}")
        print(f"  {len(together)} found by the five passes together")


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench", description=__doc__)
    parser.add_argument("--program", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--folder", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--quick", action="store_true", help="three rounds instead of --rounds")
    parser.add_argument("--rounds", type=int, default=9, help="rounds of each row (default 9)")
    parser.add_argument("--rows", nargs="+", choices=rows.ALL, default=rows.ALL, help="these only")
    parser.add_argument(
        "--ripgrep-only", action="store_true", help="leave out ugrep and grep, which take longest"
    )
    options = parser.parse_args()

    bench = Bench(options)
    for row in options.rows:
        bench.run(row)
    for failure in bench.failures:
        print(f"FAILED: {failure}", file=sys.stderr)
    return 1 if bench.failures else 0


if __name__ == "__main__":
    sys.exit(main())
