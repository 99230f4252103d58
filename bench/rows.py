"""What is measured: one table for each kind of row."""

import dataclasses


@dataclasses.dataclass
class LinuxRow:
    """A search in the kernel's sources, beside ripgrep and, where their answer is
    wanted for the comparison or as a peer, ugrep and grep."""

    keyword: str
    goal: str  # told beside the figures, never asserted
    own: list = dataclasses.field(default_factory=list)
    ripgrep: list = dataclasses.field(default_factory=list)
    # Options of ugrep and grep; None: these are not run, because they are slow
    # with such a pattern or read it in another way, and ripgrep's lines count.
    others: list = None
    # What beyond ASCII is a word depends on the code set that a file is read in,
    # which the programs tell in different ways: then only pure ASCII is compared.
    ascii_only: bool = False


WORDS = "ERR_SYS|PME_TURN_OFF|LINK_REQ_RST|CFG_BME_EVT|of_irq_get_byname"
FIXED = ["-F"]

LINUX_ROWS = {
    "linux-literal": LinuxRow("of_irq_get_byname", "at most 1.00", FIXED, FIXED, FIXED),
    "linux-none": LinuxRow("no_such_word_in_here", "at most 1.00", FIXED, FIXED, FIXED),
    "linux-common": LinuxRow("EXPORT_SYMBOL_GPL", "at most 1.00", FIXED, FIXED, FIXED),
    "linux-ignore-case": LinuxRow(
        "spinlock_irqsave", "at most 1.00", ["-F", "-i"], ["-F", "-i"], ["-F", "-i"]
    ),
    "linux-frequent": LinuxRow("return", "at most 1.00", FIXED, ["-F", "--column"], FIXED),
    "linux-suffix": LinuxRow("[A-Z]+_RESUME", "at most 1.50", [], [], ["-E"]),
    "linux-pattern": LinuxRow("devm_[a-z]+_bulk_get", "at most 1.50", [], [], ["-E"]),
    "linux-words": LinuxRow(WORDS, "at most 1.50", [], [], ["-E"]),
    "linux-words-ignore-case": LinuxRow(WORDS, "at most 1.50", ["-i"], ["-i"]),
    "linux-three-words": LinuxRow(r"\w{5}\s+\w{5}\s+\w{5}", "at most 1.50", ascii_only=True),
    "linux-date": LinuxRow("[0-9]{4}-[0-9]{2}", "at most 1.50", [], [], ["-E"]),
}

# keyword1 as a whole word, keyword2 within three lines, keyword3 not on the line:
# compared with linux-literal of the same run, there is no such peer.
NEAR_ROW = "linux-near"
NEAR_GOAL = "at most 1.30 times a plain literal"
NEAR_OPTIONS = ["-F", "-w", "--near", "name", "--within", "3", "--not", "define"]

MIXED_ROW = "mixed"
MIXED_GOAL = "at most 0.05 times the five passes"

# One file of nearly 1 GB. name: ripgrep's options
LARGE_ROWS = {
    "large-utf-8": [],
    "large-shift-jis": ["-E", "sjis"],
    "large-utf-16le": [],
}
LARGE_GOAL = "at most 1.20, peak at most 2.5 times the file (2500 MB)"

COUNT_ROW = "line-count"
COUNT_GOAL = "at most 1.00 times find and wc"

WALK_ROW = "walk-empty"
WALK_GOAL = "at most 1.20, peak at most 250 MB"

GROWTH_ROW = "growth"
GROWTH_GOAL = "time per tree the same within 10 percent"
GROWTH_STEPS = [1, 2, 4, 8]

ALL = [*LINUX_ROWS, NEAR_ROW, MIXED_ROW, *LARGE_ROWS, COUNT_ROW, WALK_ROW, GROWTH_ROW]
