#!/usr/bin/env python3
"""Prints the ratio of each benchmark to its baseline, from Google Benchmark's JSON files.

A benchmark `Name` is paired with `Name/baseline` of the same file (arguments may follow either:
`Name/100` with `Name/baseline/100`). A counter `limit` of the benchmark is the ratio that it may
reach, `memory_limit` the same of the memory that stands at its highest, where it was measured, and
`heap_limit` the same of the counter `heap`, the bytes in use at the end. A benchmark that has made its
baseline itself, right beside, says how long that took in `baseline_seconds`: then the median of its
repetitions' own ratios counts.
Of repetitions the median counts, by the processor's time but where the benchmark says "real_time":
so a machine that works on something else meanwhile makes both sides no slower.
Exits with 1 when a limit is passed.
"""
import json
import statistics
import sys


def split(name):
    parts = name.split('/')
    baseline = 'baseline' in parts
    left = [p for p in parts if p not in ('baseline', 'real_time', 'manual_time') and
            not p.startswith('iterations:')]
    return '/'.join(left), baseline


def median(held, run):
    """What is known of one side: its median, and of a single repetition what medians leave out."""
    known = {**(held or {}), **run}
    repeated = known.get('aggregate_name') == 'median'
    real = 'real_time' in known['run_name'].split('/')
    known['time'] = known['cpu_time' if repeated and not real else 'real_time']
    return known


def beside(runs):
    """name: its repetitions, of the benchmarks that have made their baseline themselves."""
    found = {}
    for run in runs:
        if run.get('run_type') == 'iteration' and 'baseline_seconds' in run:
            found.setdefault(split(run['run_name'])[0], []).append(run)
    return found


def row_beside(name, runs):
    per_second = {'s': 1, 'ms': 1e3, 'us': 1e6, 'ns': 1e9}[runs[0]['time_unit']]
    baselines = [run['baseline_seconds'] * per_second for run in runs]
    times = [run['real_time'] for run in runs]
    ratio = statistics.median(time / baseline for time, baseline in zip(times, baselines))
    return row(name, statistics.median(baselines), statistics.median(times), runs[0]['time_unit'],
               runs[0].get('limit'), ratio)


def row(name, baseline, measured, unit, limit, ratio=None):
    """Prints one line of the table. True when the limit is passed."""
    ratio = ratio or measured / baseline
    over = limit is not None and ratio > limit
    print(f'{name:58} {baseline:10.3f}{unit:>2} {measured:10.3f}{unit:>2} '
          f'{ratio:7.2f} {limit if limit is not None else "":>6}{"  OVER" if over else ""}')
    return over


def main(paths):
    missed = 0
    print(f'{"benchmark":58} {"baseline":>12} {"measured":>12} {"ratio":>7} {"limit":>6}')
    for path in paths:
        with open(path, encoding='utf-8') as file:
            runs = json.load(file)['benchmarks']
        pairs = {}
        for name, repetitions in beside(runs).items():
            missed += row_beside(name, repetitions)
        for run in runs:
            if 'baseline_seconds' in run:
                continue
            if run.get('run_type') == 'aggregate' and run.get('aggregate_name') != 'median':
                continue
            name, baseline = split(run['run_name'])
            sides = pairs.setdefault(name, {})
            sides[baseline] = median(sides.get(baseline), run)
        for name, pair in pairs.items():
            run = pair.get(False) or pair[True]
            unit = run['time_unit']
            if True not in pair or False not in pair:
                print(f'{name:58} {"":12} {run["time"]:10.3f}{unit:>2}')
                continue
            base = pair[True]
            missed += row(name, base['time'], run['time'], unit, run.get('limit'))
            if 'max_bytes_used' in run and 'max_bytes_used' in base:
                missed += row(f'{name}, memory', base['max_bytes_used'] / 1e6,
                              run['max_bytes_used'] / 1e6, 'MB', run.get('memory_limit'))
            if 'heap' in run and 'heap' in base:
                missed += row(f'{name}, heap in use', base['heap'] / 1e6, run['heap'] / 1e6, 'MB',
                              run.get('heap_limit'))
    return 1 if missed else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
