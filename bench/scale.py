"""Trees and files that are large in one way: much text, many names, many trees.
Made once and kept, as those of corpora.py."""

import subprocess

import corpora

LARGE_BYTES = 990_000_000
# name: (codec, byte-order mark, line end); sarvik-cli tells the sets by these,
# ripgrep UTF-16 by its mark.
LARGE_FILES = {
    "large-utf-8": ("utf_8", b"", "\n"),
    "large-shift-jis": ("cp932", b"", "\r\n"),
    "large-utf-16le": ("utf_16_le", b"\xff\xfe", "\n"),
}


def large_file(folder, name):
    """One file of LARGE_BYTES: the same lines over and over."""
    target = folder / name
    packages = [corpora.version_of(package) for package in ("edict", "skkdic", "mecab-ipadic")]
    stamp = " ".join([*packages, str(LARGE_BYTES)])
    if not corpora.is_current(target, stamp):
        codec, mark, end = LARGE_FILES[name]
        block = "".join(line + end for line in corpora.source_lines()).encode(codec)
        partial = corpora.new_partial(target)
        with open(partial / "text.txt", "wb") as file:
            file.write(mark)
            while file.tell() + len(block) <= LARGE_BYTES:
                file.write(block)
        corpora.finish(partial, target, stamp)
    return target / "text.txt"


EMPTY_FOLDERS = 10_000
EMPTY_FILES = 100  # in each folder


def empty_tree(folder):
    """A million empty files in ten thousand folders."""
    target = folder / "empty"
    stamp = f"{EMPTY_FOLDERS} {EMPTY_FILES}"
    if not corpora.is_current(target, stamp):
        partial = corpora.new_partial(target)
        for number in range(EMPTY_FOLDERS):
            place = partial / f"{number // 100:02}" / f"{number % 100:02}"
            place.mkdir(parents=True)
            for file in range(EMPTY_FILES):
                (place / f"file{file:02}.txt").touch()
        corpora.finish(partial, target, stamp)
    return target


def linux_copies(folder, count):
    """The kernel's sources count times, as trees of hard links: what grows is
    the number of files, not what the page cache must hold."""
    source, version = corpora.linux_tree(folder)
    copies = []
    for number in range(count):
        target = folder / f"linux-copy-{number}"
        if not corpora.is_current(target, version):
            partial = corpora.new_partial(target)
            subprocess.run(["cp", "-al", f"{source}/.", partial], check=True)
            corpora.finish(partial, target, version)
        copies.append(target)
    return copies
