"""Measures runs of programs and prints tables."""

import os
import statistics
import subprocess
import sys
import tempfile
import time


class Run:
    """The cost of one run of a program."""

    def __init__(self, wall, cpu, memory):
        self.wall = wall      # seconds
        self.cpu = cpu        # seconds, user and system
        self.memory = memory  # peak, KiB


def run(command, **options):
    """Runs a program to its end and discards its output. GNU time measures the memory, because the
    peak of a direct child would include the memory of this program."""
    with tempfile.NamedTemporaryFile('r') as memory:
        start = time.perf_counter()
        child = subprocess.Popen(['/usr/bin/time', '-o', memory.name, '-f', '%M', *command],
                                 stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                 stderr=subprocess.PIPE, **options)
        error = child.stderr.read()
        _, status, usage = os.wait4(child.pid, 0)
        wall = time.perf_counter() - start
        child.returncode = os.waitstatus_to_exitcode(status)
        if child.returncode != 0:
            sys.exit(f'{" ".join(command)}: {error.decode(errors="replace").strip()}')
        return Run(wall, usage.ru_utime + usage.ru_stime, int(memory.read()))


def interleaved(count, *programs):
    """Runs the programs in turn, each count times. Returns the median of every figure for each."""
    runs = [[] for _ in programs]
    for _ in range(count):
        for results, program in zip(runs, programs):
            results.append(program())
    return [Run(*(statistics.median(getattr(each, figure) for each in results)
                  for figure in ('wall', 'cpu', 'memory'))) for results in runs]


def geometric_mean(values):
    return statistics.geometric_mean(values)


def table(header, rows):
    """Prints a table in Markdown with aligned columns."""
    cells = [header, *rows]
    widths = [max(len(row[column]) for row in cells) for column in range(len(header))]
    for number, row in enumerate(cells):
        texts = [text.ljust(width) if column == 0 else text.rjust(width)
                 for column, (text, width) in enumerate(zip(row, widths))]
        print('| ' + ' | '.join(texts) + ' |')
        if number == 0:
            print('|' + '|'.join('-' * (width + 2) for width in widths) + '|')
    print()


def goal(text, holds):
    print(f'{"holds " if holds else "MISSED"}  {text}')
    return holds
