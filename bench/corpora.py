"""The trees that are searched. Both are made once and kept; a stamp file says
from what, so that another version of a package makes them anew."""

import json
import pathlib
import random
import shutil
import subprocess

LINUX_ARCHIVE = pathlib.Path("/usr/src/linux-source-6.1.tar.xz")

# Real Japanese text, all of it in EUC-JP.
TEXTS = [
    pathlib.Path("/usr/share/edict/edict"),
    pathlib.Path("/usr/share/skk/SKK-JISYO.L"),
    *sorted(pathlib.Path("/usr/share/mecab/dic/ipadic").glob("*.csv")),
]

SEED = 20240229
MIXED_FILES = 4000
MIXED_BYTES = 184_000_000
# Detection takes short files by rules of its own, which are no matter of speed.
SMALLEST_FILE = 3000

# name: (codec, byte-order mark)
CODE_SETS = {
    "shift-jis": ("cp932", b""),
    "euc-jp": ("euc_jp", b""),
    "iso-2022-jp": ("iso2022_jp", b""),
    "utf-8": ("utf_8", b"\xef\xbb\xbf"),
    "utf-16be": ("utf_16_be", b"\xfe\xff"),
    "utf-16le": ("utf_16_le", b"\xff\xfe"),
    "utf-32be": ("utf_32_be", b"\x00\x00\xfe\xff"),
    "utf-32le": ("utf_32_le", b"\xff\xfe\x00\x00"),
}

MIXED_KEYWORD = "図書館"


def is_current(folder, stamp):
    file = folder.with_name(folder.name + ".stamp")
    return folder.is_dir() and file.is_file() and file.read_text() == stamp


def finish(partial, folder, stamp):
    """Puts a tree in place that is complete; one that is not never gets there."""
    shutil.rmtree(folder, ignore_errors=True)
    partial.rename(folder)
    folder.with_name(folder.name + ".stamp").write_text(stamp)


def new_partial(folder):
    partial = folder.with_name(folder.name + ".partial")
    shutil.rmtree(partial, ignore_errors=True)
    partial.mkdir(parents=True)
    return partial


def version_of(package):
    command = ["dpkg-query", "-W", "-f=${Version}", package]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def linux_tree(folder):
    target = folder / "linux-source-6.1"
    stamp = version_of("linux-source-6.1")
    if not is_current(target, stamp):
        partial = new_partial(target)
        command = ["tar", "-xJf", LINUX_ARCHIVE, "--strip-components=1", "-C", partial]
        subprocess.run(command, check=True)
        finish(partial, target, stamp)
    return target, stamp


def fits_every_code_set(line):
    try:
        for codec, _ in CODE_SETS.values():
            line.encode(codec)
    except UnicodeEncodeError:
        return False
    return True


def source_lines():
    lines = []
    for text in TEXTS:
        for line in text.read_bytes().split(b"\n"):
            try:
                decoded = line.decode("euc_jp")
            except UnicodeDecodeError:
                continue
            if decoded and "\r" not in decoded and fits_every_code_set(decoded):
                lines.append(decoded)
    return lines


def line_end(name, chance):
    # Shift-JIS files come from where lines end so, and with LF alone detection
    # takes them for UTF-8.
    if name == "shift-jis":
        return "\r\n"
    return "\r\n" if chance.random() < 0.3 else "\n"


def make_file(path, name, size, lines, chance):
    """Writes one file of about size bytes; returns the numbers of the lines that
    hold the keyword."""
    codec, mark = CODE_SETS[name]
    end = line_end(name, chance)
    data = [mark] if mark and chance.random() < 0.5 else []
    index = chance.randrange(len(lines))
    true_lines = []
    number = 0
    written = 0
    while written < size:
        line = lines[index % len(lines)]
        index += 1
        number += 1
        if MIXED_KEYWORD in line:
            true_lines.append(number)
        piece = (line + end).encode(codec)
        data.append(piece)
        written += len(piece)
    path.write_bytes(b"".join(data))
    return true_lines


def file_sizes(chance):
    sizes = [chance.lognormvariate(0, 1) for _ in range(MIXED_FILES)]
    scale = MIXED_BYTES / sum(sizes)
    return [min(max(int(size * scale), SMALLEST_FILE), 900_000) for size in sizes]


def mixed_tree(folder):
    """Returns the tree and {path in it: (code set, true line numbers)}."""
    target = folder / "mixed"
    truth_file = folder / "mixed.json"
    packages = [version_of(name) for name in ("edict", "skkdic", "mecab-ipadic")]
    stamp = " ".join([*packages, str(SEED), str(pathlib.Path(__file__).stat().st_size)])
    if not (is_current(target, stamp) and truth_file.is_file()):
        chance = random.Random(SEED)
        lines = source_lines()
        names = list(CODE_SETS)
        partial = new_partial(target)
        truth = {}
        for index, size in enumerate(file_sizes(chance)):
            name = names[index % len(names)]
            relative = pathlib.Path(f"{index // 100:02}", f"{index:04}-{name}.txt")
            (partial / relative.parent).mkdir(exist_ok=True)
            truth[str(relative)] = (
                name,
                make_file(partial / relative, name, size, lines, chance),
            )
        truth_file.write_text(json.dumps(truth))
        finish(partial, target, stamp)
    return target, json.loads(truth_file.read_text())
