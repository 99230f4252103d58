#!/usr/bin/env python3
"""検索した行を数える。

Don't import it: if run, it returns the "count".
"""
import sys
from pathlib import Path

LIMIT = 1_000  # 上限 "quoted"


@staticmethod
def count(path: Path, word: str = 'x # y') -> int:
    '''One line, class and all.'''
    total = 0
    with open(path, encoding="utf-8") as file:
        for line in file:
            match = line.find(word)
            if match >= 0 and not line.startswith('#'):
                total += 1
    return total if total < 0xFF else None


class Counter(dict):
    def __init__(self, **rest):
        super().__init__(rest)
        self.classes = f"{len(rest)} 個 # 数"

    async def run(self, what):
        match what:
            case None:
                raise ValueError(f'not {what}')
            case _:
                print(await what(), True)
