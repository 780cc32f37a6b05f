#!/usr/bin/env python3
"""The parts of scripts/load that are not commands.

  agreements N < JSONL       N agreements made of the given ones, each under a key of its own
  statements LOG FOLDER      what `shared_load once` has sent, cut at its marks from the server's log,
                             as scripts of pgbench: lookup-CODE.sql and save-CODE.sql
  options FOLDER CLIENT CLIENTS   pgbench's options for one of the clients, a line each
  table CLIENTS PGBENCH SECONDS   throughput and percentiles of both, from their files of times
"""
import glob
import json
import os
import re
import sys

LOOK_UPS_A_SAVE = 4
MOST_LOOK_UPS = 100  # pgbench takes 128 scripts
FEWEST = 1000  # times, for a percentile of 99.9


def agreements(count):
    given = [json.loads(line) for line in sys.stdin]
    for i in range(count):
        fields = given[i % len(given)]['fields']
        print(json.dumps({'id': f'{i // 10:05d}{i % 10:03d}', 'fields': fields}, ensure_ascii=False))


def logged(path):
    """Each statement's text; lines that go on begin with a tab."""
    text = None
    with open(path, encoding='utf-8', errors='surrogateescape') as log:
        for line in log:
            if line.startswith('\t') and text is not None:
                text += '\n' + line[1:].rstrip('\n')
                continue
            if text is not None:
                yield text
            found = re.match(r'<\d+> LOG:  statement: (.*)', line)
            text = found.group(1) if found else None
    if text is not None:
        yield text


def marked(text):
    found = re.search(r"'\\{1,2}x(6d617271756520(?:[0-9a-f]{2})*)'", text)
    return bytes.fromhex(found.group(1)).decode()[len('marque '):] if found else None


def blocks(path):
    """(name, statements) of each stretch between a mark and its end, in their order."""
    name, held = None, []
    for text in logged(path):
        mark = marked(text)
        if mark is None:
            held.append(text)
        elif mark == 'end':
            # A cursor is closed with the next message, which is the mark.
            closed = [part for part in text.split(';') if part.startswith('CLOSE ')]
            held[-1] = ';'.join([held[-1], *closed])
            yield name, held
        else:
            name, held = mark, []


def for_pgbench(texts):
    """One message each, as they were sent: several statements of one message stay together."""
    lines = []
    for text in texts:
        parts = [part.strip() for part in text.replace('\n', ' ').split(';') if part.strip()]
        lines.append(' \\;\n'.join(parts) + ';')
    return '\n'.join(lines) + '\n'


def statements(log, folder):
    os.makedirs(folder)
    saves = {}
    for name, texts in blocks(log):
        kind, code = name.split()
        if kind == 'save':
            saves.setdefault(code, []).append(for_pgbench(texts))
            continue
        with open(f'{folder}/lookup-{code}.sql', 'w') as out:
            out.write(for_pgbench(texts))
    for code, (there, back) in saves.items():
        with open(f'{folder}/save-{code}.sql', 'w') as out:
            out.write(f'\\if :there{code}\n{back}\\set there{code} 0\n'
                      f'\\else\n{there}\\set there{code} 1\n\\endif\n')


def options(folder, client, clients):
    look_ups = sorted(glob.glob(f'{folder}/lookup-*.sql'))[:MOST_LOOK_UPS]
    saves = sorted(glob.glob(f'{folder}/save-*.sql'))[client::clients]
    weight = 10 * len(look_ups) // (LOOK_UPS_A_SAVE * len(saves))
    for path in look_ups:
        print(f'-f\n{path}@10')
    for path in saves:
        code = re.search(r'save-(.*)\.sql', path).group(1)
        print(f'-f\n{path}@{weight}\n-D\nthere{code}=0')


def clients_times(folder):
    times = {'lookup': [], 'save': []}
    for path in glob.glob(folder + '/client-*'):
        with open(path) as lines:
            for line in lines:
                action, _, took = line.split()
                times[action].append(int(took))
    return times


def pgbench_times(folder):
    times = {'lookup': [], 'save': []}
    for path in glob.glob(folder + '/client-*'):
        with open(path) as lines:
            for line in lines:
                fields = line.split()
                kind = 'lookup' if int(fields[3]) < MOST_LOOK_UPS else 'save'
                # At a rate, pgbench counts from when it should have begun; how much later it did comes last.
                late = int(fields[6]) if len(fields) > 6 else 0
                times[kind].append(int(fields[2]) - late)
    return times


def percentile(times, share):
    return times[min(len(times) - 1, int(len(times) * share))]


def row(name, ours, theirs):
    print(f'{name:28} {ours:12.2f} {theirs:12.2f} {ours / theirs:8.2f}')


def table(clients, pgbench, seconds):
    ours, theirs = clients_times(clients), pgbench_times(pgbench)
    print(f'{"":28} {"clients":>12} {"pgbench":>12} {"ratio":>8}')
    for action in ('lookup', 'save'):
        mine, bare = sorted(ours[action]), sorted(theirs[action])
        if min(len(mine), len(bare)) < FEWEST:
            sys.exit(f'too few to tell: {len(mine)} and {len(bare)} of {action}')
        row(f'{action}s a second', len(mine) / seconds, len(bare) / seconds)
        for name, share in (('50', 0.5), ('99', 0.99), ('99.9', 0.999)):
            row(f'{action}, {name} %, ms', percentile(mine, share) / 1000, percentile(bare, share) / 1000)


if __name__ == '__main__':
    command, given = sys.argv[1], sys.argv[2:]
    if command == 'agreements':
        agreements(int(given[0]))
    elif command == 'statements':
        statements(*given)
    elif command == 'options':
        options(given[0], int(given[1]), int(given[2]))
    else:
        table(given[0], given[1], float(given[2]))
