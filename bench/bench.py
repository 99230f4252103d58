#!/usr/bin/env python3
"""Compares sarvik-cli with its peers. scripts/bench builds and starts it."""

import argparse
import pathlib
import sys

import corpora
import lines
import measure

# Files of any size, as the peers search them.
SIZE = ["--max-size", "1000"]

RIPGREP = ["rg", "--no-config", "-uuu", "-a", "-n", "--no-heading", "--color", "never"]
UGREP = ["ugrep", "-r", "-a", "-n", "--color=never", "--hidden"]
GREP = ["grep", "-r", "-a", "-n", "--color=never"]

RIPGREP_PASSES = ["auto", "sjis", "euc-jp", "iso-2022-jp", "utf-16le"]

# What sarvik-cli is to reach; told beside the figures, never asserted.
GOALS = {
    "linux-literal": "at most 1.50 times ripgrep's time, peak below 150 MB",
    "mixed": "at most 0.20 times the five passes' time",
}

# row: (keyword, sarvik-cli's options, ripgrep's, ugrep's and grep's)
LINUX_ROWS = {
    "linux-literal": ("of_irq_get_byname", ["-F"], ["-F"]),
    "linux-none": ("no_such_word_in_here", ["-F"], ["-F"]),
    "linux-common": ("EXPORT_SYMBOL_GPL", ["-F"], ["-F"]),
    "linux-ignore-case": ("spinlock_irqsave", ["-F", "-i"], ["-F", "-i"]),
    "linux-pattern": ("devm_[a-z]+_bulk_get", [], ["-E"]),
}


class Bench:
    def __init__(self, options):
        self.program = options.program
        self.folder = options.folder
        self.rounds = 3 if options.quick else options.rounds
        self.failures = []

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

    def table(self, row, results, base):
        self.say("")
        if row in GOALS:
            print(f"  goal: {GOALS[row]}")
        print(f"  {'program':<22}{'seconds':>9}{'CPU':>8}{'ratio':>8}{'spread':>8}{'peak MB':>9}")
        for name, result in results.items():
            ratio = result.seconds / results[base].seconds
            print(
                f"  {name:<22}{result.seconds:>9.3f}{result.cpu:>8.2f}{ratio:>8.2f}"
                f"{result.spread:>8.2f}{result.peak_mb:>9.1f}"
            )

    def linux_row(self, row):
        tree, version = corpora.linux_tree(self.folder)
        keyword, own_options, peer_options = LINUX_ROWS[row]
        ripgrep_options = [option for option in peer_options if option != "-E"]
        commands = [
            self.ours(tree, keyword, own_options),
            measure.Command("ripgrep", [*RIPGREP, *ripgrep_options, "-e", keyword, tree]),
            measure.Command("ugrep", [*UGREP, *peer_options, "-e", keyword, tree]),
            measure.Command("grep", [*GREP, *peer_options, "-e", keyword, tree]),
        ]
        print(f"\n{row}: {keyword} in linux-source-6.1 {version}")
        self.compare_with_grep(tree, commands[0], commands[3])
        results = measure.measure(commands, self.rounds, self.say)
        self.table(row, results, "ripgrep")

    def compare_with_grep(self, tree, own, grep):
        self.say("comparing lines")
        regular = lines.regular_files(tree)
        codes = lines.encodings(self.program, tree, SIZE)
        accepted = {path for path in regular if codes.get(path, -2) >= 0}
        found = {hit for hit in lines.parse(measure.outputs_of(own)[0]) if hit[0] in regular}
        expected = {hit for hit in lines.parse(measure.outputs_of(grep)[0]) if hit[0] in accepted}
        self.say("")
        print(
            f"  {len(expected)} lines by grep in the {len(accepted)} of {len(regular)} regular"
            f" files that are accepted, {len(found)} by sarvik-cli"
        )
        self.check("lines of grep", expected - found, found - expected)

    def mixed_row(self):
        self.say("making the mixed tree")
        tree, truth = corpora.mixed_tree(self.folder)
        keyword = corpora.MIXED_KEYWORD
        own = self.ours(tree, keyword, ["-F"])
        passes = [[*RIPGREP, "-F", "-E", code, "-e", keyword, tree] for code in RIPGREP_PASSES]
        ripgrep = measure.Command("ripgrep, five passes", [], passes)
        print(f"\nmixed: {keyword} in {len(truth)} files, eight encodings")
        self.compare_with_truth(tree, truth, own, ripgrep)
        results = measure.measure([own, ripgrep], self.rounds, self.say)
        self.table("mixed", results, "ripgrep, five passes")

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
    rows = [*LINUX_ROWS, "mixed"]
    parser = argparse.ArgumentParser(prog="scripts/bench", description=__doc__)
    parser.add_argument("--program", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--folder", type=pathlib.Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--quick", action="store_true", help="three rounds instead of --rounds")
    parser.add_argument("--rounds", type=int, default=9, help="rounds of each row (default 9)")
    parser.add_argument("--rows", nargs="+", choices=rows, default=rows, help="these rows only")
    options = parser.parse_args()

    bench = Bench(options)
    for row in options.rows:
        if row == "mixed":
            bench.mixed_row()
        else:
            bench.linux_row(row)
    for failure in bench.failures:
        print(f"FAILED: {failure}", file=sys.stderr)
    return 1 if bench.failures else 0


if __name__ == "__main__":
    sys.exit(main())
