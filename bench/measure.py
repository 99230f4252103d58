"""Runs programs in turn and takes the medians."""

import dataclasses
import os
import pathlib
import statistics
import subprocess
import tempfile
import time

MEMORY = pathlib.Path("/dev/shm")


@dataclasses.dataclass
class Command:
    name: str
    arguments: list
    # Several runs count as one: a peer may need one pass for each encoding.
    passes: list = dataclasses.field(default_factory=list)

    def runs(self):
        return self.passes or [self.arguments]


@dataclasses.dataclass
class Result:
    seconds: float  # median of the wall times
    cpu: float  # median of user and system time together
    spread: float  # slowest round by fastest round
    peak_mb: float  # largest of all rounds, in 10^6 bytes


def environment():
    # Peers decode by the locale; configuration files of the person who measures
    # must not count.
    kept = {key: os.environ[key] for key in ("PATH", "HOME") if key in os.environ}
    return {**kept, "LC_ALL": "C.UTF-8"}


def run_once(arguments, keep_output):
    """Wall seconds, CPU seconds, peak MB and (if kept) the output. The output
    goes to a file in memory: some programs stop early on /dev/null, and a pipe
    would measure its reader, too."""
    with tempfile.TemporaryDirectory(dir=MEMORY if MEMORY.is_dir() else None) as scratch:
        report = pathlib.Path(scratch, "time")
        with open(pathlib.Path(scratch, "output"), "w+b") as output:
            measured = ["/usr/bin/time", "-o", report, "-f", "%U %S %M", "--", *arguments]
            start = time.perf_counter()
            status = subprocess.run(
                measured,
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=subprocess.DEVNULL,
                env=environment(),
                check=False,
            ).returncode
            wall = time.perf_counter() - start
            if status not in (0, 1):  # with hits, without
                raise RuntimeError(f"status {status} from {arguments}")
            user, system, peak = report.read_text().split("\n")[-2].split()
            output.seek(0)
            text = output.read() if keep_output else b""
    return wall, float(user) + float(system), int(peak) * 1024 / 1e6, text


def outputs_of(command):
    """The outputs of all passes; also warms the cache."""
    return [run_once(arguments, True)[3] for arguments in command.runs()]


def measure(commands, rounds, progress):
    """{name: Result}; the programs run in turn within each round, so that a
    change of the machine's mood meets all of them."""
    samples = {command.name: [] for command in commands}
    for number in range(rounds):
        for command in commands:
            progress(f"round {number + 1} of {rounds}: {command.name}")
            runs = [run_once(arguments, False)[:3] for arguments in command.runs()]
            walls, cpus, peaks = zip(*runs)
            samples[command.name].append((sum(walls), sum(cpus), max(peaks)))
    results = {}
    for name, taken in samples.items():
        walls, cpus, peaks = zip(*taken)
        results[name] = Result(
            statistics.median(walls),
            statistics.median(cpus),
            max(walls) / min(walls),
            max(peaks),
        )
    return results
