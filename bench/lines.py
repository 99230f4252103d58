"""Which lines a program found, as {(path, line number)}; paths are bytes."""

import os
import re
import subprocess

HIT = re.compile(rb"(.*?):(\d+):")


def parse(output):
    """Output of "path:line:text" or "path:line:column:text"."""
    hits = set()
    for line in output.split(b"\n"):
        match = HIT.match(line)
        if match:
            hits.add((match.group(1), int(match.group(2))))
    return hits


def regular_files(tree):
    """The files that a program meets that follows no links."""
    found = set()
    for folder, _, names in os.walk(os.fsencode(tree)):
        for name in names:
            path = os.path.join(folder, name)
            if not os.path.islink(path) and os.path.isfile(path):
                found.add(path)
    return found


def is_ascii(path):
    with open(path, "rb") as file:
        return file.read().isascii()


def encodings(program, tree, size_options):
    """{path: code-set number} by --encodings; -2 where the file is refused."""
    command = [program, "--no-settings", "--encodings", *size_options, tree]
    output = subprocess.run(command, check=True, capture_output=True).stdout
    found = {}
    for line in output.split(b"\n"):
        if line:
            path, number = line.split(b"\t")[:2]
            found[path] = int(number)
    return found
