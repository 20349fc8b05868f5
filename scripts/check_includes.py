"""Checks the includes against the drawing in docs/architecture.md.

The drawing names rooms, which are folders, and has an arrow from a room to each one right below it.
A file may include headers of its own room, and of those that arrows lead to, over any number of
steps. Every arrow must be in use, and none may lead back.
"""
import os
import re
import subprocess
import sys

PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..')
DRAWING = 'docs/architecture.md'


def drawing():
    """The folder of each room, and the rooms right below it."""
    with open(os.path.join(PROJECT, DRAWING), encoding='utf-8') as file:
        text = ''.join(re.findall(r'```mermaid\n(.*?)```', file.read(), re.DOTALL))
    folders = dict(re.findall(r'(\w+)\["([\w/]+)"\]', text))
    below = {folder: set() for folder in folders.values()}
    for upper, lower in re.findall(r'^ *(\w+)(?:\[.*\])? --> (\w+)', text, re.MULTILINE):
        below[folders[upper]].add(folders[lower])
    return below


def reachable(room, below):
    rooms, new = set(), {room}
    while new:
        rooms |= new
        new = set().union(*(below[one] for one in new)) - rooms
    return rooms


def room_of(path, rooms):
    """The innermost room that the file is in; None for what is not drawn."""
    folder = os.path.dirname(path)
    while folder and folder not in rooms:
        folder = os.path.dirname(folder)
    return folder or None


def includes():
    """Each file with the project's own headers that it includes."""
    listed = subprocess.run(['git', 'ls-files', '*.h', '*.cpp', '*.mm'], cwd=PROJECT, text=True,
                            capture_output=True, check=True).stdout.split()
    for path in listed:
        with open(os.path.join(PROJECT, path), encoding='utf-8') as file:
            for name in re.findall(r'^#(?:include|import) "([^"]+)"', file.read(), re.MULTILINE):
                for candidate in (name, 'src/' + name):
                    if candidate in listed:
                        yield path, candidate


def main():
    below = drawing()
    findings = []
    used = set()
    for room in below:
        if any(room in reachable(lower, below) for lower in below[room]):
            findings.append(f'{DRAWING}: arrows lead from {room} back to it')
    for path, header in includes():
        source, target = room_of(path, below), room_of(header, below)
        if source is None or source == target:
            continue
        used.add((source, target))
        if target not in reachable(source, below):
            findings.append(f'{path} includes {header}: no arrow leads from {source} there')
    for room, lower in ((room, lower) for room in below for lower in below[room]):
        if (room, lower) not in used:
            findings.append(f'{DRAWING}: nothing uses the arrow from {room} to {lower}')
    print('\n'.join(findings) or f'includes: {len(used)} ways between {len(below)} rooms, all downward')
    return 1 if findings else 0


if __name__ == '__main__':
    sys.exit(main())
